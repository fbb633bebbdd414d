// The versions section of the current layout (SSFVersion set). The rules, in the order they
// are tried; docs/CATALOGUE.md has them for disc authors with an example:
//
// Section. VERSIONS is the default. It may hold CheckPackageKey (a full registry key path)
// and CheckPackageName (a value name): when that value exists and is not empty, the package
// check runs over VERSIONS1, VERSIONS2, ... as long as they exist, and the first whose
// CheckPackageValue equals the value (blanks trimmed, ASCII case ignored) is used. No match:
// VERSIONS1. No such sections, no package keys or no value: VERSIONS. A chosen section that
// does not exist leaves the product without actions.
//
// Installed version. RegPath1/RegKey1, RegPath2/RegKey2, ... until the first empty RegPath;
// the first value that exists and is not blank is the installed version. A path naming no
// known root, a missing key or value count as "not found here".
//
// Actions, with V installed and B = item.Build the version this disc installs. Versions are
// compared by clsVersion, part by part as numbers (5.10 is above 5.9, 5.01 equals 5.1).
//   no V                                 FirstInstAction* to the first-install actions
//   V equals Version<n> (lowest n)       Version<n>Action*
//   B older than V (B not empty)         DefaultAction*; without DefaultAction1 the single
//                                        action "$Warning$"
//   some Version<n> lower than V         FirstInstAction* to the first-install actions: V is
//                                        a later release than the ones the file knows, and
//                                        B is not older, so it installs as if fresh
//   no DefaultAction1                    the single action "$Warning$": V is unknown to the
//                                        file and nothing says what to do with it
//   otherwise                            DefaultAction*
// Every family is read from 1 until the first empty value; an action is stored as written.
#include "catalogue/clsSSFFilesV520.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsVersionsSection.h"
#include "common/clsString.h"
#include "common/clsVersion.h"
#include "startup/mdlLog.h"

namespace tovel {
namespace {

constexpr const char* kDefaultSection = "VERSIONS";
constexpr const char* kWarning = "$Warning$";

using Entry = clsVersionsSection::Entry;

template <typename Step>
void Trapped(const char* function, Step&& step) {
    clsVersionsSection::Trapped("clsSSFFilesV520", function, std::forward<Step>(step));
}

/// The section the rules are read from; "" when the file has none to offer.
std::string ChooseSection(clsIniFile& ini) {
    if (!ini.SectExist(kDefaultSection)) return "";
    ini.SetSectionName(kDefaultSection);
    const std::string packageKey = ini.GetString("CheckPackageKey", "");
    const std::string packageName = ini.GetString("CheckPackageName", "");
    std::optional<clsVersionsSection::RegistryText> package;
    if (!packageKey.empty() && !packageName.empty()) package = clsVersionsSection::ReadRegistryText(packageKey, packageName);

    const std::string first = std::string(kDefaultSection) + "1";
    if (!package || !ini.SectExist(first)) {
        LogIfEnabled("VersionsSection Default");
        return kDefaultSection;
    }
    const std::string wanted = clsString::UpperAscii(package->text);
    for (int n = 1;; ++n) {
        const std::string candidate = std::string(kDefaultSection) + std::to_string(n);
        if (!ini.SectExist(candidate)) break;
        ini.SetSectionName(candidate);
        if (clsString::UpperAscii(ini.GetString("CheckPackageValue", "")) == wanted) {
            LogIfEnabled("VersionsSection gefunden: " + candidate);
            return candidate;
        }
    }
    LogIfEnabled("VersionsSection 1 als Default");
    return first;
}

} // namespace

void clsSSFFilesV520::CheckVersionsSection(clsIniFile& ini, clsSIFApplicationItem& item) {
    clsVersionsSection::Clear(item);
    if (!ini.Registered()) {
        clsVersionsSection::LogError("clsSSFFilesV520", "CheckVersionsSection", "no description file given");
        return;
    }
    const std::string product = clsVersionsSection::ProductName(item);
    const std::string previousSection = ini.SectionName();

    std::string section;
    Trapped("ChooseSection", [&] { section = ChooseSection(ini); });
    if (section.empty()) {
        LogIfEnabled("No versions section in " + ini.FullPath() + ": no version actions for " + product);
        item.Versions.reason = "the file has no VERSIONS section: no actions";
        ini.SetSectionName(previousSection);
        return;
    }
    item.Versions.versionsSection = section;
    ini.SetSectionName(section);

    bool found = false;
    Trapped("FindInstalledVersion", [&] {
        for (int n = 1;; ++n) {
            const std::string path = ini.GetString("RegPath" + std::to_string(n), "");
            if (path.empty()) break;
            if (auto value = clsVersionsSection::ReadRegistryText(path, ini.GetString("RegKey" + std::to_string(n), ""))) {
                item.InstalledVersion = value->text;
                item.Versions.installedVersion = value->text;
                item.Versions.foundAt = value->at;
                found = true;
                break;
            }
        }
    });
    if (found) {
        LogIfEnabled("Installed Version " + product + ": " + item.InstalledVersion);
    } else {
        LogIfEnabled("No Installed Version " + product);
    }

    Trapped("CheckVersionsSection", [&] {
        if (!found) {
            LogIfEnabled("Für das Produkt " + product + " werden folgende FirstInstAction ausgeführt");
            item.Versions.reason = "no installed version found: first-install actions";
            clsVersionsSection::AddFirstInstActions(item, clsVersionsSection::ReadFamily(ini, "FirstInstAction"));
            return;
        }
        const std::string& installed = item.InstalledVersion;
        const std::string& toInstall = item.Build;

        struct Listed {
            int number;
            std::string version;
        };
        std::vector<Listed> listed;
        for (int n = 1;; ++n) {
            std::string version = ini.GetString("Version" + std::to_string(n), "");
            if (version.empty()) break;
            listed.push_back({n, std::move(version)});
        }

        for (const auto& entry : listed) {
            if (!clsVersion::Equal(entry.version, installed)) continue;
            const std::string key = "Version" + std::to_string(entry.number);
            LogIfEnabled("Gleiche Version gefunden für " + product);
            LogIfEnabled("Für das Produkt " + product + " werden folgende Aktionen der Versionskey " + key + " ausgeführt.");
            item.Versions.reason = "installed " + installed + " equals " + key + ": actions of " + key;
            clsVersionsSection::AddActions(item, clsVersionsSection::ReadFamily(ini, key + "Action"));
            return;
        }

        if (!toInstall.empty() && clsVersion::Compare(toInstall, installed) < 0) {
            const auto defaults = clsVersionsSection::ReadFamily(ini, "DefaultAction");
            if (defaults.empty()) {
                // Installing an older version over a newer one unasked is what users fear most.
                LogIfEnabled("Installed version " + installed + " of " + product + " is newer than " + toInstall +
                             " and there is no DefaultAction: " + kWarning);
                item.Versions.reason = "installed " + installed + " is newer than " + toInstall + " on this disc and there is no DefaultAction: " + kWarning;
                item.AddAction(kWarning);
                return;
            }
            LogIfEnabled("Die zu installierende Version ist älter als die installierte Version. Für das Produkt " + product +
                         " werden folgende DefaultAction ausgeführt.");
            item.Versions.reason = "installed " + installed + " is newer than " + toInstall + " on this disc: DefaultAction";
            clsVersionsSection::AddActions(item, defaults);
            return;
        }

        for (const auto& entry : listed) {
            if (clsVersion::Compare(entry.version, installed) >= 0) continue;
            LogIfEnabled("Es ist die Version " + installed +
                         " gibt eine Version in der SSF-Files, die grösser ist als die Installierte abhandeln von "
                         "FirstInstAction. ");
            item.Versions.reason = "installed " + installed + " is not listed but above Version" +
                                   std::to_string(entry.number) + " " + entry.version + ": first-install actions";
            clsVersionsSection::AddFirstInstActions(item, clsVersionsSection::ReadFamily(ini, "FirstInstAction"));
            return;
        }

        const auto defaults = clsVersionsSection::ReadFamily(ini, "DefaultAction");
        if (defaults.empty()) {
            LogIfEnabled("Installed version " + installed + " of " + product +
                         " is not listed and there is no DefaultAction: " + kWarning);
            item.Versions.reason = "installed " + installed + " is not listed and there is no DefaultAction: " + kWarning;
            item.AddAction(kWarning);
            return;
        }
        LogIfEnabled("Installed version " + installed + " of " + product +
                     " is not listed: DefaultAction");
        item.Versions.reason = "installed " + installed + " is not listed: DefaultAction";
        clsVersionsSection::AddActions(item, defaults);
    });

    ini.SetSectionName(previousSection);
}

} // namespace tovel
