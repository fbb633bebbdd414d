#pragma once
// The versions section of a description file as written, kept with the product's record so
// the installed version can be looked for on any machine without reading the file again.
// Both layouts fill the same shape; clsSSFFilesV520 and clsSSFFilesOld read and apply it.
#include <string>
#include <vector>

namespace tovel {

/// One key of a numbered family with its value ("Version2Action1", "$TryUpdate$").
struct VersionsEntry {
    std::string key;
    std::string value;
};

/// A registry value that may hold the installed version.
struct VersionsPlace {
    std::string path;   ///< the key path with its root in full
    std::string name;   ///< the value name ("" is the key's default value)
};

/// A version the file has actions for, with those actions.
struct ListedVersion {
    int number = 0;                      ///< n of Version<n>
    std::string version;
    std::vector<VersionsEntry> actions;
};

/// One versions section ([VERSIONS], [VERSIONS1], ...).
struct VersionsSectionRules {
    std::string name;
    std::string checkPackageValue;                ///< the package type a numbered section holds for
    std::vector<VersionsPlace> places;            ///< tried in order
    std::vector<ListedVersion> versions;          ///< in file order, up to the first empty Version<n>
    std::vector<VersionsEntry> defaultActions;
    std::vector<VersionsEntry> firstInstActions;
    std::string addAction;                        ///< older layout only
};

/// Every versions section of a file; sections[0] is [VERSIONS], the numbered ones follow
/// while they exist without a gap. Empty when the file has no [VERSIONS].
struct VersionsRules {
    std::string checkPackageKey;
    std::string checkPackageName;
    std::vector<VersionsSectionRules> sections;
};

} // namespace tovel
