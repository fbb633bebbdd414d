// The versions section of the current layout (SSFVersion set). The rules, in the order they
// are tried; docs/CATALOGUE.md has them for disc authors with an example:
//
// Section. VERSIONS is the default. It may hold CheckPackageKey (a full registry key path)
// and CheckPackageName (a value name): when that value exists and is not empty, the package
// check runs over VERSIONS1, VERSIONS2, ... as long as they exist, and the first whose
// CheckPackageValue equals the value (blanks trimmed, ASCII case ignored) is used. No match
// (also when there are no numbered sections): "VersionsSection 1 als Default" and VERSIONS1,
// or VERSIONS when it is the only section. No package keys or no value: VERSIONS. A file
// without VERSIONS leaves the product without actions.
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

VersionsSectionRules ReadSection(clsIniFile& ini, const std::string& name) {
    VersionsSectionRules section;
    section.name = name;
    ini.SetSectionName(name);
    section.checkPackageValue = ini.GetString("CheckPackageValue", "");
    for (int n = 1;; ++n) {
        std::string path = ini.GetString("RegPath" + std::to_string(n), "");
        if (path.empty()) break;
        section.places.push_back({std::move(path), ini.GetString("RegKey" + std::to_string(n), "")});
    }
    section.versions = clsVersionsSection::ReadListed(ini, [](int n) { return "Version" + std::to_string(n) + "Action"; });
    clsVersionsSection::ReadDefaultAndFirstInst(ini, section);
    return section;
}

/// The section the rules are taken from; rules.sections is not empty.
const VersionsSectionRules& ChooseSection(const VersionsRules& rules) {
    std::optional<clsVersionsSection::RegistryText> package;
    if (!rules.checkPackageKey.empty() && !rules.checkPackageName.empty()) {
        package = clsVersionsSection::ReadRegistryText(rules.checkPackageKey, rules.checkPackageName);
    }
    if (!package) {
        LogIfEnabled("VersionsSection Default");
        return rules.sections.front();
    }
    const std::string wanted = clsString::UpperAscii(package->text);
    for (size_t n = 1; n < rules.sections.size(); ++n) {
        if (clsString::UpperAscii(rules.sections[n].checkPackageValue) != wanted) continue;
        LogIfEnabled("VersionsSection gefunden: " + rules.sections[n].name);
        return rules.sections[n];
    }
    // A package value that no section names: the first numbered section, which holds for
    // the most common package; a file with none has only VERSIONS to offer.
    LogIfEnabled("VersionsSection 1 als Default");
    return rules.sections[rules.sections.size() > 1 ? 1 : 0];
}

/// Gives the product the actions for the installed version (none: first-install actions).
void ChooseActions(const VersionsSectionRules& section, clsSIFApplicationItem& item, const std::string& product) {
    const std::string& installed = item.InstalledVersion;
    if (installed.empty()) {
        LogIfEnabled("Für das Produkt " + product + " werden folgende FirstInstAction ausgeführt");
        item.Versions.reason = "no installed version found: first-install actions";
        clsVersionsSection::AddFirstInstActions(item, section.firstInstActions);
        return;
    }
    const std::string& toInstall = item.Build;

    for (const auto& entry : section.versions) {
        if (!clsVersion::Equal(entry.version, installed)) continue;
        const std::string key = "Version" + std::to_string(entry.number);
        LogIfEnabled("Gleiche Version gefunden für " + product);
        LogIfEnabled("Für das Produkt " + product + " werden folgende Aktionen der Versionskey " + key + " ausgeführt.");
        item.Versions.reason = "installed " + installed + " equals " + key + ": actions of " + key;
        clsVersionsSection::AddActions(item, entry.actions);
        return;
    }

    if (!toInstall.empty() && clsVersion::Compare(toInstall, installed) < 0) {
        if (section.defaultActions.empty()) {
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
        clsVersionsSection::AddActions(item, section.defaultActions);
        return;
    }

    for (const auto& entry : section.versions) {
        if (clsVersion::Compare(entry.version, installed) >= 0) continue;
        LogIfEnabled("Es ist die Version " + installed +
                     " gibt eine Version in der SSF-Files, die grösser ist als die Installierte abhandeln von "
                     "FirstInstAction. ");
        item.Versions.reason = "installed " + installed + " is not listed but above Version" +
                               std::to_string(entry.number) + " " + entry.version + ": first-install actions";
        clsVersionsSection::AddFirstInstActions(item, section.firstInstActions);
        return;
    }

    if (section.defaultActions.empty()) {
        LogIfEnabled("Installed version " + installed + " of " + product +
                     " is not listed and there is no DefaultAction: " + kWarning);
        item.Versions.reason = "installed " + installed + " is not listed and there is no DefaultAction: " + kWarning;
        item.AddAction(kWarning);
        return;
    }
    LogIfEnabled("Installed version " + installed + " of " + product + " is not listed: DefaultAction");
    item.Versions.reason = "installed " + installed + " is not listed: DefaultAction";
    clsVersionsSection::AddActions(item, section.defaultActions);
}

} // namespace

VersionsRules clsSSFFilesV520::ReadVersionsSection(clsIniFile& ini) {
    return clsVersionsSection::ReadRules(ini, "clsSSFFilesV520", [&](VersionsRules& rules) {
        rules.checkPackageKey = ini.GetString("CheckPackageKey", "");
        rules.checkPackageName = ini.GetString("CheckPackageName", "");
        rules.sections.push_back(ReadSection(ini, kDefaultSection));
        for (int n = 1;; ++n) {
            const std::string candidate = std::string(kDefaultSection) + std::to_string(n);
            if (!ini.SectExist(candidate)) break;
            rules.sections.push_back(ReadSection(ini, candidate));
        }
    });
}

void clsSSFFilesV520::CheckVersionsSection(clsSIFApplicationItem& item) {
    clsVersionsSection::Clear(item);
    const VersionsRules& rules = item.VersionRules;
    const VersionsSectionRules* section = nullptr;
    if (!rules.sections.empty()) Trapped("ChooseSection", [&] { section = &ChooseSection(rules); });
    if (!section) {
        clsVersionsSection::NoSection(item);
        return;
    }
    const std::string product = clsVersionsSection::ProductName(item);
    item.Versions.versionsSection = section->name;

    Trapped("FindInstalledVersion", [&] {
        for (const auto& place : section->places) {
            const auto value = clsVersionsSection::ReadRegistryText(place.path, place.name);
            if (!value) continue;
            item.InstalledVersion = value->text;
            item.Versions.installedVersion = value->text;
            item.Versions.foundAt = value->at;
            return;
        }
    });
    if (!item.InstalledVersion.empty()) {
        LogIfEnabled("Installed Version " + product + ": " + item.InstalledVersion);
    } else {
        LogIfEnabled("No Installed Version " + product);
    }
    Trapped("CheckVersionsSection", [&] { ChooseActions(*section, item, product); });
}

} // namespace tovel
