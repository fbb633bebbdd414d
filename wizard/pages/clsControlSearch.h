#pragma once
// The search page: when it becomes active it searches the disc for the description files
// (clsSSFSearch), telling the user which drive or server is being searched, then notes what
// the later pages decide on and goes on by itself:
//   InstalledProductsFound  "Description installedVersion" of each product found installed
//   OldVersionCount         how many those are
//   ProductLanguages        the letters the products offer (the product-language page is
//                           shown only when there are two or more)
//
// Cancel is heard between two folders. Answered Yes, the dialog order has already gone to the
// Done page; the search stops there and keeps what it had read.
#include <string>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlSearch : public clsControlPage {
public:
    clsControlSearch() : clsControlPage("frmSearch") {}

    /// The status line for a folder being searched: "Searching D: ..." in the setup language.
    [[nodiscard]] static std::string StatusText(const std::string& folder);
    /// Fills InstalledProductsFound, OldVersionCount and ProductLanguages from the catalogue.
    static void NoteWhatWasFound();
    /// Lets the prerequisite probes mark their entries once the catalogue is filled: .NET
    /// (when CheckDotNet is on) and Windows Installer (when CheckMSI is on).
    static void CheckPrerequisites();

protected:
    void OnActivate() override;

private:
    /// False when the search was stopped (the page was closed while it ran).
    bool Search();
};

} // namespace tovel
