#pragma once
// The versions section of a product's description file in the older layout (SSFVersion empty): finds
// the installed version and attaches the actions for it to the product's record. The layout
// and the rules stand in docs/CATALOGUE.md.
#include "catalogue/clsSIFApplicationItem.h"
#include "settings/clsIniFile.h"

namespace tovel {

class clsSSFFilesOld {
public:
    /// Reads the versions section of the file the INI object is bound to (its section is
    /// changed), fills item.InstalledVersion, item.Versions and the item's actions, and logs
    /// what it decided. The version this disc installs is item.Build. Never throws.
    void CheckVersionsSection(clsIniFile& ini, clsSIFApplicationItem& item);
};

} // namespace tovel
