#pragma once
// The versions section of a product's description file in the older layout (SSFVersion empty):
// read as written, then applied on a machine to find the installed version and attach the
// actions for it to the product's record. The layout and the rules stand in docs/CATALOGUE.md.
#include "catalogue/VersionsRules.h"
#include "catalogue/clsSIFApplicationItem.h"
#include "settings/clsIniFile.h"

namespace tovel {

class clsSSFFilesOld {
public:
    /// The [VERSIONS] section of the file the INI object is bound to, as written, as the one
    /// section of the result (its current section is kept). Reads no registry. Never throws.
    [[nodiscard]] static VersionsRules ReadVersionsSection(clsIniFile& ini);
    /// Applies item.VersionRules to this machine: fills item.InstalledVersion, item.Versions
    /// and the item's actions (replacing earlier ones), and logs what it decided. The version
    /// this disc installs is item.Build. Never throws.
    static void CheckVersionsSection(clsSIFApplicationItem& item);
};

} // namespace tovel
