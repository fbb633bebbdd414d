// The versions section of the older layout (SSFVersion empty). It knows one section and one
// place to look; docs/CATALOGUE.md has it for disc authors with an example:
//
//   [VERSIONS]
//   RegPath=HKEY_LOCAL_MACHINE\SOFTWARE\...   one key path, not numbered
//   RegKey=Version                            its value holding the installed version
//   Version1=4.0, Version2=...                the versions the file has actions for
//   Action1_1=..., Action1_2=...              the actions for Version1 (Action<n>_<m>)
//   DefaultAction1=..., FirstInstAction1=...  as in the current layout
//   AddAction=...                             one action put before the others whenever a
//                                             version is installed; before, because the
//                                             wizard looks at the last action for
//                                             $DoNotInstall$
//
// Rules, with V installed and B = item.Build, compared by clsVersion (part by part as
// numbers): no V gives FirstInstAction*; V equal to Version<n> (lowest n) gives
// AddAction and Action<n>_*; anything else gives AddAction and DefaultAction*, with a line
// saying so when B is older than V. This layout has no package check, no rule for versions
// between the listed ones and no "$Warning$". Families end at the first empty value.
#include "catalogue/clsSSFFilesOld.h"

#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsVersionsSection.h"
#include "common/clsVersion.h"
#include "startup/mdlLog.h"

namespace tovel {
namespace {

constexpr const char* kSection = "VERSIONS";

template <typename Step>
void Trapped(const char* function, Step&& step) {
    clsVersionsSection::Trapped("clsSSFFilesOld", function, std::forward<Step>(step));
}

/// AddAction first, then the family, all to the version actions.
void AddActions(const VersionsSectionRules& section, clsSIFApplicationItem& item, const std::vector<VersionsEntry>& family) {
    if (!section.addAction.empty()) {
        item.AddAction(section.addAction);
        clsVersionsSection::LogEntry({"AddAction", section.addAction});
    }
    clsVersionsSection::AddActions(item, family);
}

void ChooseActions(const VersionsSectionRules& section, clsSIFApplicationItem& item, const std::string& product) {
    const std::string& installed = item.InstalledVersion;
    if (installed.empty()) {
        LogIfEnabled(product + ": keine Version installiert");
        LogIfEnabled(" Für " + product + " wird mit FirstInstAction abgehandelt.");
        item.Versions.reason = "no installed version found: first-install actions";
        clsVersionsSection::AddFirstInstActions(item, section.firstInstActions);
        return;
    }
    LogIfEnabled("Installierte Version " + product + ": " + installed);

    for (const auto& entry : section.versions) {
        if (!clsVersion::Equal(entry.version, installed)) continue;
        LogIfEnabled(" Für " + product + " wird die Version " + entry.version + " abgehandelt.");
        const std::string key = "Version" + std::to_string(entry.number);
        item.Versions.reason = "installed " + installed + " equals " + key + ": actions of " + key;
        AddActions(section, item, entry.actions);
        return;
    }

    const std::string& toInstall = item.Build;
    if (!toInstall.empty() && clsVersion::Compare(toInstall, installed) < 0) {
        LogIfEnabled("Die zu installierende Version ist älter als die Version die installiert ist.");
        item.Versions.reason = "installed " + installed + " is newer than " + toInstall + " on this disc: DefaultAction";
    } else {
        item.Versions.reason = "installed " + installed + " is not listed: DefaultAction";
    }
    LogIfEnabled(" Für " + product + " wird mit DefaultAction abgehandelt.");
    AddActions(section, item, section.defaultActions);
}

} // namespace

VersionsRules clsSSFFilesOld::ReadVersionsSection(clsIniFile& ini) {
    return clsVersionsSection::ReadRules(ini, "clsSSFFilesOld", [&](VersionsRules& rules) {
        VersionsSectionRules section;
        section.name = kSection;
        section.places.push_back({ini.GetString("RegPath", ""), ini.GetString("RegKey", "")});
        section.versions = clsVersionsSection::ReadListed(ini, [](int n) { return "Action" + std::to_string(n) + "_"; });
        clsVersionsSection::ReadDefaultAndFirstInst(ini, section);
        section.addAction = ini.GetString("AddAction", "");
        rules.sections.push_back(std::move(section));
    });
}

void clsSSFFilesOld::CheckVersionsSection(clsSIFApplicationItem& item) {
    clsVersionsSection::Clear(item);
    if (item.VersionRules.sections.empty()) {
        clsVersionsSection::NoSection(item);
        return;
    }
    const VersionsSectionRules& section = item.VersionRules.sections.front();
    const std::string product = clsVersionsSection::ProductName(item);
    item.Versions.versionsSection = section.name;

    Trapped("FindInstalledVersion", [&] {
        const auto found = clsVersionsSection::ReadRegistryText(section.places.front().path, section.places.front().name);
        if (!found) return;
        item.InstalledVersion = found->text;
        item.Versions.installedVersion = found->text;
        item.Versions.foundAt = found->at;
    });
    Trapped("CheckVersionsSection", [&] { ChooseActions(section, item, product); });
}

} // namespace tovel
