#include "wizard/pages/clsControlSetupType.h"

#include "catalogue/CatalogueGlobals.h"
#include "common/clsString.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

namespace {

constexpr const char* kList = "SetupTypeList";
constexpr const char* kUserDefined = "USERDEF";

bool InCatalogue(const std::string& code) {
    for (const auto& item : gApplications.Items()) {
        if (clsString::EqualNoCaseAscii(item.ProductCode, code)) return true;
    }
    return false;
}

} // namespace

void clsControlSetupType::DecideRunFlags() {
    bool any = false;
    bool onlyUserDefined = true;
    for (const auto& packet : gPackets.Items()) {
        if (!packet.Selected) continue;
        any = true;
        onlyUserDefined = onlyUserDefined && clsString::EqualNoCaseAscii(packet.ProductCode, kUserDefined);
    }
    UserPacketOnly = any && onlyUserDefined;
    UpdatePacketsAllowed = UserPacketOnly ? gSetupsIni->UserPackUPAllowed() : true;
}

int clsControlSetupType::PacketOfLine(int line) const {
    return line >= 0 && static_cast<size_t>(line) < packets_.size() ? packets_[static_cast<size_t>(line)] : 0;
}

void clsControlSetupType::OnLoad() {
    clsFormControl* list = Form().Control(kList);
    if (list == nullptr) return;
    packets_.clear();
    list->items.clear();
    int preset = -1;
    for (int i = 1; i <= gPackets.Count(); ++i) {
        const clsSIFPacketItem& packet = *gPackets.Item(i);
        if (!packet.Visible) continue;
        if (preset < 0 && packet.Selected) preset = static_cast<int>(packets_.size());
        packets_.push_back(i);
        list->items.push_back(packet.Description.empty() ? packet.ProductCode : packet.Description);
    }
    if (preset < 0 && !packets_.empty()) preset = 0;
    list->value = preset;
    ShowDescription();
}

void clsControlSetupType::ShowDescription() {
    const clsFormControl* list = Form().Control(kList);
    const clsSIFPacketItem* packet = list != nullptr ? gPackets.Item(PacketOfLine(list->value)) : nullptr;
    SetText("DescriptionLabel", packet != nullptr ? packet->LongDescription : std::string());
}

void clsControlSetupType::OnClick(const std::string& control, int) {
    if (control == kList) ShowDescription();
}

bool clsControlSetupType::OnContinue() {
    const clsFormControl* list = Form().Control(kList);
    const int chosen = list != nullptr ? PacketOfLine(list->value) : 0;
    if (chosen == 0) {
        LogIfEnabled("No setup type chosen: the packets keep their preselection.");
    } else {
        for (int i = 1; i <= gPackets.Count(); ++i) gPackets.Item(i)->Selected = i == chosen;
    }
    std::string codes;
    for (const auto& packet : gPackets.Items()) {
        if (!packet.Selected) continue;
        codes += (codes.empty() ? "" : ", ") + packet.ProductCode;
        for (const auto& code : packet.ProductCodes()) {
            if (!InCatalogue(code)) LogIfEnabled("I'm missing a product with the description '" + code + "'");
        }
    }
    gCommonSection.SelectApplicationsFromPackets();
    DecideRunFlags();
    LogIfEnabled("Setup type: " + codes + " (UserPacketOnly=" + (UserPacketOnly ? "True" : "False") +
                 ", UpdatePacketsAllowed=" + (UpdatePacketsAllowed ? "True" : "False") + ")");
    return true;
}

} // namespace tovel
