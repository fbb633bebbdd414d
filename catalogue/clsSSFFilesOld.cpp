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

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/clsString.h"
#include "common/clsVersion.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {
namespace {

constexpr const char* kSection = "VERSIONS";

void LogError(const char* function, const std::string& why) {
    LogIfEnabled(std::string("Error in Modul clsSSFFilesOld Funktion ") + function + ": " + why);
}

/// Runs one reading step; an error ends that step only, with a log line.
template <typename Step>
void Trapped(const char* function, Step&& step) {
    try {
        step();
    } catch (const std::exception& e) {
        LogError(function, e.what());
    } catch (...) {
        LogError(function, "unknown error");
    }
}

/// The name support staff know the product by.
std::string ProductName(const clsSIFApplicationItem& item) {
    return item.Description.empty() ? item.ProductCode : item.Description;
}

std::string DropOuterBackslashes(std::string path) {
    if (!path.empty() && path.front() == '\\') path.erase(0, 1);
    if (!path.empty() && path.back() == '\\') path.pop_back();
    return path;
}

struct Entry {
    std::string key;
    std::string value;
};

/// prefix1, prefix2, ... up to the first empty value.
std::vector<Entry> ReadFamily(clsIniFile& ini, const std::string& prefix) {
    std::vector<Entry> entries;
    for (int n = 1;; ++n) {
        std::string key = prefix + std::to_string(n);
        std::string value = ini.GetString(key, "");
        if (value.empty()) break;
        entries.push_back({std::move(key), std::move(value)});
    }
    return entries;
}

void LogEntry(const Entry& entry) { LogIfEnabled("   " + entry.key + "=" + entry.value); }

/// AddAction first, then the family, all to the version actions.
void AddActions(clsIniFile& ini, clsSIFApplicationItem& item, const std::vector<Entry>& family) {
    if (std::string extra = ini.GetString("AddAction", ""); !extra.empty()) {
        item.AddAction(extra);
        LogEntry({"AddAction", extra});
    }
    for (const auto& entry : family) {
        item.AddAction(entry.value);
        LogEntry(entry);
    }
}

} // namespace

void clsSSFFilesOld::CheckVersionsSection(clsIniFile& ini, clsSIFApplicationItem& item) {
    item.InstalledVersion.clear();
    item.Versions = VersionDecision{};
    item.ActionsClear();
    if (!ini.Registered()) {
        LogError("CheckVersionsSection", "no description file given");
        return;
    }
    const std::string product = ProductName(item);
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
        const std::string path = DropOuterBackslashes(ini.GetString("RegPath", ""));
        const std::string name = ini.GetString("RegKey", "");
        clsRegistry reg;
        if (path.empty() || !reg.InitWithRegPath(path) || !reg.ValueExist(name)) return;
        std::string text = clsString::Trim(reg.QueryValue(name));
        if (text.empty()) return;
        item.InstalledVersion = text;
        item.Versions.installedVersion = std::move(text);
        item.Versions.foundAt = path + "\\" + name;
    });

    Trapped("CheckVersionsSection", [&] {
        const std::string& installed = item.InstalledVersion;
        if (installed.empty()) {
            LogIfEnabled(product + ": keine Version installiert");
            LogIfEnabled(" Für " + product + " wird mit FirstInstAction abgehandelt.");
            item.Versions.reason = "no installed version found: first-install actions";
            for (const auto& entry : ReadFamily(ini, "FirstInstAction")) {
                item.AddFirstinstAction(entry.value);
                LogEntry(entry);
            }
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
            AddActions(ini, item, ReadFamily(ini, "Action" + std::to_string(n) + "_"));
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
        AddActions(ini, item, ReadFamily(ini, "DefaultAction"));
    });

    ini.SetSectionName(previousSection);
}

} // namespace tovel
