#include "catalogue/clsSIFCommonSection.h"

#include <algorithm>

#include <unordered_map>
#include <vector>

#include "catalogue/clsDependencyOrder.h"
#include "common/clsString.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr const char* kLetters[] = {"A", "B", "C", "D", "E", "J"};

// Puts the list into the order found and logs what held entries back.
template <typename Record, typename IsKnownElsewhere>
void ApplyOrder(std::vector<Record>& items, const std::string& listName, IsKnownElsewhere knownElsewhere) {
    std::vector<OrderEntry> entries;
    entries.reserve(items.size());
    for (const Record& item : items) entries.push_back({item.ProductCode, item.Dependencies()});
    const OrderResult result = clsDependencyOrder::Order(entries);
    for (const auto& [index, code] : result.missing) {
        if (knownElsewhere(code)) continue;
        LogIfEnabled(listName + " " + items[index].ProductCode + " depends on " + code +
                     ", which is not on this disc: the dependency does not hold up the order.");
    }
    if (result.placed < items.size()) {
        LogIfEnabled("Error in Modul clsSIFApplication Funktion SortItemDependencies");
        LogIfEnabled("Error Message: eventuell Circularer Vorgang.");
        LogIfEnabled("Folgende Produkte werden in der Liste nicht aufgeführt:");
        for (size_t i = result.placed; i < result.order.size(); ++i) LogIfEnabled(items[result.order[i]].ProductCode);
        LogIfEnabled("(These entries are installed last, in the order they were found.)");
    }
    std::vector<Record> ordered;
    ordered.reserve(items.size());
    for (size_t index : result.order) ordered.push_back(std::move(items[index]));
    items = std::move(ordered);
}

} // namespace

std::string LanguageSections::ForSetupLanguage() const {
    if (DefaultLanguage < 0 || DefaultLanguage > 5) return {};
    return names[static_cast<size_t>(DefaultLanguage)];
}

LanguageSections clsSIFCommonSection::ProdInfoSections(clsIniFile& sif) {
    LanguageSections sections;
    sif.SetSectionName("LANGUAGES");
    const std::string fallback = sif.GetString("LanguageX", "");
    for (size_t i = 0; i < sections.names.size(); ++i) {
        std::string value = sif.GetString(std::string("Language") + kLetters[i], "Error");
        if (value != "Error") sections.offeredLetters += kLetters[i];
        sections.names[i] = value == "Error" ? fallback : std::move(value);
    }
    return sections;
}

std::string clsSIFCommonSection::ProdInfoSection(clsIniFile& sif, std::string& offeredLetters) const {
    LanguageSections sections = ProdInfoSections(sif);
    offeredLetters = std::move(sections.offeredLetters);
    return sections.ForSetupLanguage();
}

std::string clsSIFCommonSection::LanguageText(clsIniFile& sif, const std::string& section, const std::string& key) const {
    if (!clsString::EqualNoCaseAscii(section, "Japanese")) {
        sif.SetSectionName(section);
        return sif.GetString(key, "");
    }
    return gLanguage ? gLanguage->TextFileValue("[" + section + "]", key) : std::string();
}

void clsSIFCommonSection::SortItemsDependencies(int16_t listSelector) {
    if (listSelector != 0) {
        // A packet may depend on a product: that is no packet, but it is on the disc.
        ApplyOrder(packets_.Items(), "Packet", [&](const std::string& code) {
            for (const auto& item : applications_.Items()) {
                if (clsString::EqualNoCaseAscii(item.ProductCode, code)) return true;
            }
            return false;
        });
        return;
    }
    ApplyOrder(applications_.Items(), "Product", [](const std::string&) { return false; });
}

namespace {

bool Locked(const clsSIFApplicationItem& item) {
    return item.AlwaysInstall || item.CheckBox == CheckBoxState::kCheckedLocked || item.CheckBox == CheckBoxState::kUncheckedLocked;
}

void Choose(clsSIFApplicationItem& item, bool selected) {
    if (Locked(item)) return;
    item.Selected = selected;
    item.CheckBox = selected ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
}

} // namespace

void clsSIFCommonSection::SelectApplicationsFromPackets() {
    for (auto& item : applications_.Items()) {
        bool inSelected = false;
        for (const auto& packet : packets_.Items()) {
            if (!packet.Selected) continue;
            for (const auto& code : packet.ProductCodes()) inSelected = inSelected || clsString::EqualNoCaseAscii(code, item.ProductCode);
        }
        Choose(item, inSelected);
    }
}

void clsSIFCommonSection::SelectInstalledApplications() {
    for (auto& item : applications_.Items()) Choose(item, !item.Versions.installedVersion.empty());
}

void clsSIFCommonSection::ApplyBusSystemSelection() {
    int bus = static_cast<int>(BusSystem::NoBus);
    try {
        bus = std::stoi(SelectedBusSystem);
    } catch (...) {
        LogIfEnabled("Bus system \"" + SelectedBusSystem + "\" is no choice of the bus page: no bus system is applied.");
        return;
    }
    if (bus < 0 || bus >= kBusSystemCount) return;
    for (const auto& packet : packets_.Items()) {
        if (!packet.Selected) continue;
        for (const auto& action : packet.BusActions(static_cast<BusSystem>(bus))) {
            // Codes compare without regard to case here as in the packets' product lists.
            auto& items = applications_.Items();
            const auto found = std::find_if(items.begin(), items.end(), [&](const clsSIFApplicationItem& candidate) {
                return clsString::EqualNoCaseAscii(candidate.ProductCode, action.productCode);
            });
            clsSIFApplicationItem* item = found == items.end() ? nullptr : &*found;
            if (item == nullptr) {
                LogIfEnabled("Could not find specified package with ProductCode: " + action.productCode);
                continue;
            }
            Choose(*item, action.select);
        }
    }
}

void clsSIFCommonSection::SortItemsInPacketOrder() {
    auto& items = applications_.Items();
    std::vector<bool> taken(items.size(), false);
    std::vector<clsSIFApplicationItem> ordered;
    ordered.reserve(items.size());
    // Several records may share a code: each packet entry takes the first one not yet taken.
    std::unordered_map<std::string, std::vector<size_t>> byCode;
    for (size_t i = 0; i < items.size(); ++i) byCode[clsString::UpperAscii(items[i].ProductCode)].push_back(i);
    for (const auto& packet : packets_.Items()) {
        for (const std::string& code : packet.ProductCodes()) {
            const auto found = byCode.find(clsString::UpperAscii(code));
            if (found == byCode.end()) continue;
            for (size_t index : found->second) {
                if (taken[index]) continue;
                taken[index] = true;
                ordered.push_back(std::move(items[index]));
                break;
            }
        }
    }
    for (size_t i = 0; i < items.size(); ++i) {
        if (!taken[i]) ordered.push_back(std::move(items[i]));
    }
    items = std::move(ordered);
}

} // namespace tovel
