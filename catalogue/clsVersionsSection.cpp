#include "catalogue/clsVersionsSection.h"

#include "common/clsString.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

std::string clsVersionsSection::ProductName(const clsSIFApplicationItem& item) {
    return item.Description.empty() ? item.ProductCode : item.Description;
}

std::vector<clsVersionsSection::Entry> clsVersionsSection::ReadFamily(clsIniFile& ini, const std::string& prefix) {
    std::vector<Entry> entries;
    for (int n = 1;; ++n) {
        std::string key = prefix + std::to_string(n);
        std::string value = ini.GetString(key, "");
        if (value.empty()) break;
        entries.push_back({std::move(key), std::move(value)});
    }
    return entries;
}

std::vector<ListedVersion> clsVersionsSection::ReadListed(clsIniFile& ini, const std::function<std::string(int)>& actionPrefix) {
    std::vector<ListedVersion> listed;
    for (int n = 1;; ++n) {
        std::string version = ini.GetString("Version" + std::to_string(n), "");
        if (version.empty()) break;
        listed.push_back({n, std::move(version), ReadFamily(ini, actionPrefix(n))});
    }
    return listed;
}

VersionsRules clsVersionsSection::ReadRules(clsIniFile& ini, const char* module, const std::function<void(VersionsRules&)>& read) {
    VersionsRules rules;
    const std::string previousSection = ini.SectionName();
    Trapped(module, "ReadVersionsSection", [&] {
        if (!ini.SectExist("VERSIONS")) return;
        ini.SetSectionName("VERSIONS");
        read(rules);
    });
    ini.SetSectionName(previousSection);
    return rules;
}

void clsVersionsSection::ReadDefaultAndFirstInst(clsIniFile& ini, VersionsSectionRules& section) {
    section.defaultActions = ReadFamily(ini, "DefaultAction");
    section.firstInstActions = ReadFamily(ini, "FirstInstAction");
}

std::optional<clsVersionsSection::RegistryText> clsVersionsSection::ReadRegistryText(const std::string& fullPath,
                                                                                     const std::string& name) {
    std::string path = fullPath;
    if (!path.empty() && path.front() == '\\') path.erase(0, 1);
    if (!path.empty() && path.back() == '\\') path.pop_back();
    clsRegistry reg;
    if (path.empty() || !reg.InitWithRegPath(path) || !reg.ValueExist(name)) return std::nullopt;
    std::string text = clsString::Trim(reg.QueryValue(name));
    if (text.empty()) return std::nullopt;
    return RegistryText{std::move(text), path + "\\" + name};
}

void clsVersionsSection::LogEntry(const Entry& entry) { LogIfEnabled("   " + entry.key + "=" + entry.value); }

void clsVersionsSection::AddActions(clsSIFApplicationItem& item, const std::vector<Entry>& family) {
    for (const auto& entry : family) {
        item.AddAction(entry.value);
        LogEntry(entry);
    }
}

void clsVersionsSection::AddFirstInstActions(clsSIFApplicationItem& item, const std::vector<Entry>& family) {
    for (const auto& entry : family) {
        item.AddFirstinstAction(entry.value);
        LogEntry(entry);
    }
}

void clsVersionsSection::NoSection(clsSIFApplicationItem& item) {
    LogIfEnabled("No versions section in " + item.SIFFileName + ": no version actions for " + ProductName(item));
    item.Versions.reason = "the file has no VERSIONS section: no actions";
}

void clsVersionsSection::Clear(clsSIFApplicationItem& item) {
    item.InstalledVersion.clear();
    item.Versions = VersionDecision{};
    item.ActionsClear();
}

void clsVersionsSection::LogError(const char* module, const char* function, const std::string& why) {
    LogIfEnabled(std::string("Error in Modul ") + module + " Funktion " + function + ": " + why);
}

} // namespace tovel
