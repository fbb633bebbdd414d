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

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsVersionsSection.h"
#include "common/clsVersion.h"
#include "startup/mdlLog.h"

namespace tovel {
namespace {

constexpr const char* kSection = "VERSIONS";

using Entry = clsVersionsSection::Entry;

template <typename Step>
void Trapped(const char* function, Step&& step) {
    clsVersionsSection::Trapped("clsSSFFilesOld", function, std::forward<Step>(step));
}

/// AddAction first, then the family, all to the version actions.
void AddActions(clsIniFile& ini, clsSIFApplicationItem& item, const std::vector<Entry>& family) {
    if (std::string extra = ini.GetString("AddAction", ""); !extra.empty()) {
        item.AddAction(extra);
        clsVersionsSection::LogEntry({"AddAction", extra});
    }
    clsVersionsSection::AddActions(item, family);
}

} // namespace

void clsSSFFilesOld::CheckVersionsSection(clsIniFile& ini, clsSIFApplicationItem& item) {
    clsVersionsSection::Clear(item);
    if (!ini.Registered()) {
        clsVersionsSection::LogError("clsSSFFilesOld", "CheckVersionsSection", "no description file given");
        return;
    }
    const std::string product = clsVersionsSection::ProductName(item);
    const std::string previousSection = ini.SectionName();

    bool hasSection = false;
    Trapped("CheckVersionsSection", [&] { hasSection = ini.SectExist(kSection); });
    if (!hasSection) {
        LogIfEnabled("No versions section in " + ini.FullPath() + ": no version actions for " + product);
        item.Versions.reason = "the file has no VERSIONS section: no actions";
        return;
    }
    item.Versions.versionsSection = kSection;
    ini.SetSectionName(kSection);

    Trapped("FindInstalledVersion", [&] {
        const auto found = clsVersionsSection::ReadRegistryText(ini.GetString("RegPath", ""), ini.GetString("RegKey", ""));
        if (!found) return;
        item.InstalledVersion = found->text;
        item.Versions.installedVersion = found->text;
        item.Versions.foundAt = found->at;
    });

    Trapped("CheckVersionsSection", [&] {
        const std::string& installed = item.InstalledVersion;
        if (installed.empty()) {
            LogIfEnabled(product + ": keine Version installiert");
            LogIfEnabled(" Für " + product + " wird mit FirstInstAction abgehandelt.");
            item.Versions.reason = "no installed version found: first-install actions";
            clsVersionsSection::AddFirstInstActions(item, clsVersionsSection::ReadFamily(ini, "FirstInstAction"));
            return;
        }
        LogIfEnabled("Installierte Version " + product + ": " + installed);

        for (int n = 1;; ++n) {
            const std::string key = "Version" + std::to_string(n);
            const std::string version = ini.GetString(key, "");
            if (version.empty()) break;
            if (!clsVersion::Equal(version, installed)) continue;
            LogIfEnabled(" Für " + product + " wird die Version " + version + " abgehandelt.");
            item.Versions.reason = "installed " + installed + " equals " + key + ": actions of " + key;
            AddActions(ini, item, clsVersionsSection::ReadFamily(ini, "Action" + std::to_string(n) + "_"));
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
        AddActions(ini, item, clsVersionsSection::ReadFamily(ini, "DefaultAction"));
    });

    ini.SetSectionName(previousSection);
}

} // namespace tovel
