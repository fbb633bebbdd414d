#include "catalogue/clsSIFPacketItem.h"

#include <algorithm>
#include <exception>

#include "catalogue/CatalogueGlobals.h"
#include "common/clsString.h"
#include "settings/clsIniFile.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr const char* kBusKeys[kBusSystemCount] = {"ProfibusAction", "EthernetAction", "Ethernet2Action", "KWTAction", "NoBusAction"};

// PreSelect takes the four check-box words and the words of the Boolean table; empty means
// not preselected. Anything else is logged and not preselected.
int32_t PreSelectCode(const std::string& text, const std::string& packet) {
    if (text.empty()) return CheckBoxState::kUnchecked;
    if (const auto yes = clsIniFile::ParseBoolean(text)) return *yes ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
    const int32_t code = CheckBoxStateCode(text);
    if (code == CheckBoxState::kUnchecked && !clsString::EqualNoCaseAscii(text, "uncheckbox")) {
        LogIfEnabled("Packet " + packet + ": PreSelect=" + text + " is no known value; the packet is not preselected.");
    }
    return code;
}

} // namespace

void clsSIFPacketItem::Read(const std::string& sifPath) {
    clsIniFile ini;
    ini.SetFullPath(sifPath);
    ini.SetReadOnce(true);
    Read(ini);
}

void clsSIFPacketItem::Read(clsIniFile& ini) {
    *this = clsSIFPacketItem();
    const std::string sifPath = ini.FullPath();
    SIFFileName = sifPath;
    try {
        ini.SetSectionName("GENERAL");
        ProductCode = clsString::UpperAscii(ini.GetString("ProductCode", ""));
        for (int bus = 0; bus < kBusSystemCount; ++bus) SetBusAction(static_cast<BusSystem>(bus), ini.GetString(kBusKeys[bus], ""));
        Visible = ini.GetTF("Visible", true);
        PreSelectText = ini.GetString("PreSelect", "");
        PreSelect = PreSelectCode(PreSelectText, ProductCode);
        PreSelectReason = "PreSelect=" + PreSelectText;
        RegPath = ini.GetString("RegPath", "");
        RegKey = ini.GetString("RegKey", "");
        RegValue = ini.GetString("RegValue", "");
        if (!RegPath.empty() && !RegKey.empty() && !RegValue.empty()) DecidePreselectionByRegistry();
        Selected = CheckBoxIsChecked(PreSelect);
        for (int n = 1;; ++n) {
            const std::string code = ini.GetString("ProductCode" + std::to_string(n), "");
            if (code.empty()) break;
            Add(code);
        }
        std::string letters;
        const std::string section = gCommonSection.ProdInfoSection(ini, letters);
        Description = gCommonSection.LanguageText(ini, section, "Description");
        LongDescription = gCommonSection.LanguageText(ini, section, "LongDescription");
        AlternativeDescription = gCommonSection.LanguageText(ini, section, "AlternativeDescription");
        ini.SetSectionName("DEPENDENCIES");
        for (int n = 1;; ++n) {
            const std::string code = ini.GetString("Dependence" + std::to_string(n), "");
            if (code.empty()) break;
            AddDependence(code);
        }
    } catch (const std::exception& e) {
        LogIfEnabled("Error in Modul clsSIFPacketItem Funktion Read: " + sifPath + ": " + e.what());
    } catch (...) {
        LogIfEnabled("Error in Modul clsSIFPacketItem Funktion Read: " + sifPath);
    }
}

// The packet is preselected exactly when the value is there and equals RegValue (letters
// without regard to case, blanks around either ignored): the machine shows what it has.
void clsSIFPacketItem::DecidePreselectionByRegistry() {
    clsRegistry reg;
    const std::string found = reg.InitWithRegPath(RegPath) ? reg.QueryValue(RegKey) : "";
    const bool match = clsString::EqualNoCaseAscii(clsString::Trim(found), clsString::Trim(RegValue));
    PreSelect = match ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
    const std::string value = RegPath + "\\" + RegKey;
    PreSelectReason = found.empty() ? value + " is not there"
                                    : value + " = \"" + found + "\"" + (match ? " equals " : " is not ") + "\"" + RegValue + "\"";
}

void clsSIFPacketItem::SetBusAction(BusSystem bus, const std::string& text) {
    busText_[Index(bus)] = text;
    busActions_[Index(bus)] = ParseBusAction(text);
}

std::vector<BusAction> clsSIFPacketItem::ParseBusAction(const std::string& text) {
    std::string separated = text;
    std::replace(separated.begin(), separated.end(), ';', ',');
    std::vector<BusAction> actions;
    for (const std::string& part : clsString::Split(separated, ",")) {
        std::string code = clsString::Trim(part);
        bool select = true;
        if (!code.empty() && (code.front() == '+' || code.front() == '-')) {
            select = code.front() == '+';
            code = clsString::Trim(code.substr(1));
        }
        if (!code.empty()) actions.push_back({code, select});
    }
    return actions;
}

void clsSIFPacketItem::RemovePacket(const std::string& code) {
    const auto found = std::find_if(products_.begin(), products_.end(),
                                    [&](const std::string& product) { return clsString::EqualNoCaseAscii(product, code); });
    if (found != products_.end()) products_.erase(found);
}

void clsSIFPacketItem::Sort() { std::sort(products_.begin(), products_.end()); }

std::string clsSIFPacketItem::ProdCode(int index) const {
    return index >= 1 && index <= Count() ? products_[static_cast<size_t>(index - 1)] : std::string();
}

std::string clsSIFPacketItem::GetDependence(int index) const {
    return index >= 1 && index <= DependenceCount() ? dependencies_[static_cast<size_t>(index - 1)] : std::string();
}

} // namespace tovel
