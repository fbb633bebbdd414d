#include "app/clsPlanJson.h"

#include <nlohmann/json.hpp>

namespace tovel {

namespace {

using nlohmann::json;

json CheckBox(int32_t code, bool selected) {
    return {{"state", code}, {"text", std::string(CheckBoxStateText(code))}, {"selected", selected}};
}

json Links(const clsSIFApplicationItem& item) {
    json links = json::array();
    for (const auto& link : item.SetupDependencies()) {
        const std::string type = link.type == DependenceType::Other ? item.DependenceTypeOther : std::string(DependenceTypeText(link.type));
        links.push_back({{"type", type}, {"code", link.productCode}, {"requirements", link.additionalRequirements}});
    }
    return links;
}

std::vector<std::string> Actions(int count, const auto& get) {
    std::vector<std::string> actions;
    for (int i = 1; i <= count; ++i) actions.push_back(get(i));
    return actions;
}

json Requests(const std::vector<OptionRequest>& requests) {
    json list = json::array();
    for (const auto& r : requests) list.push_back({{"key", r.key}, {"value", r.value}});
    return list;
}

json Step(const InstallStep& s) {
    return {{"position", s.position},
            {"skip", s.skip},
            {"skipReason", s.skipReason},
            {"actions", s.actions},
            {"removal", {{"wanted", s.removal.wanted}, {"deinstallKey", s.removal.deinstallKey},
                         {"uninstallKeyPath", s.removal.uninstallKeyPath}, {"commandKnown", s.removal.commandKnown},
                         {"command", s.removal.command}}},
            {"msi", s.msi},
            {"program", s.program},
            {"parameters", s.parameters},
            {"commandLine", s.commandLine},
            {"startFolder", s.startFolder},
            {"optionFile", s.optionFilePath},
            {"optionFileRewritten", s.optionPathRewritten},
            {"requests", Requests(s.requests)},
            {"extraEntries", Requests(s.extraEntries)},
            {"critical", s.critical},
            {"registerInRunOnce", s.registerInRunOnce},
            {"deinstallListEntry", s.deinstallListEntry}};
}

const InstallStep* StepOf(const std::vector<InstallStep>& steps, int catalogueIndex) {
    for (const auto& step : steps) {
        if (step.catalogueIndex == catalogueIndex) return &step;
    }
    return nullptr;
}

json Product(const clsSIFApplicationItem& item, int index, const std::vector<InstallStep>& steps) {
    const auto& v = item.Versions;
    const InstallStep* step = StepOf(steps, index);
    return {{"order", index},
            {"code", item.ProductCode},
            {"description", item.Description},
            {"build", item.Build},
            {"file", item.SIFFileName},
            {"setupFile", item.SetupFile},
            {"setupParameters", item.SetupFileParameters},
            {"disc", item.SetupDiscNumber},
            {"destination", item.DefaultPath},
            {"destinationFromRegistry", !item.RegDefaultDestPath.empty()},
            {"diskSpaceMB", item.DiskSpaceDestDrv},
            {"languages", item.AvailableLanguages},
            {"textSection", item.ProdInfoSection},
            {"checkBox", CheckBox(item.CheckBox, item.Selected)},
            {"alwaysInstall", item.AlwaysInstall},
            {"termToInstall", item.TermToInstall},
            {"visible", item.Visible},
            {"hideInstall", item.HideInstall},
            {"after", item.Dependencies()},
            {"links", Links(item)},
            {"installed", {{"version", v.installedVersion}, {"foundAt", v.foundAt}, {"section", v.versionsSection}, {"reason", v.reason}}},
            {"actions", Actions(item.VersionActionsCount(), [&item](int i) { return item.GetAction(i); })},
            {"firstInstallActions", Actions(item.FirstInstActionsCount(), [&item](int i) { return item.GetFirstInstAction(i); })},
            {"step", step != nullptr ? Step(*step) : json(nullptr)}};
}

json Packet(const clsSIFPacketItem& packet) {
    return {{"code", packet.ProductCode},
            {"description", packet.Description},
            {"visible", packet.Visible},
            {"preselect", CheckBox(packet.PreSelect, packet.Selected)},
            {"preselectReason", packet.PreSelectReason},
            {"products", packet.ProductCodes()},
            {"after", packet.Dependencies()}};
}

json Missing(const std::vector<MissingCode>& missing) {
    json list = json::array();
    for (const auto& m : missing) list.push_back({{"from", m.from}, {"code", m.code}, {"kind", m.kind}});
    return list;
}

} // namespace

std::string clsPlanJson::Text(const clsSIFApplication& applications, const clsSIFPacket& packets,
                              const std::string& productFolder, const std::vector<InstallStep>& steps) {
    json products = json::array();
    for (int i = 1; i <= applications.Count(); ++i) products.push_back(Product(*applications.Item(i), i, steps));
    json packetList = json::array();
    for (const auto& packet : packets.Items()) packetList.push_back(Packet(packet));
    const CatalogueLinks links = clsCatalogueLinks::Find(applications, packets);
    const json document = {{"schema", kSchema},
                           {"productFolder", productFolder},
                           {"products", products},
                           {"packets", packetList},
                           {"cycles", {{"products", links.productCycles}, {"packets", links.packetCycles}}},
                           {"missing", Missing(links.missing)}};
    // Text that is not UTF-8 (a damaged file) is replaced, never a reason to fail.
    return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

} // namespace tovel
