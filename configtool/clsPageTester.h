#pragma once
// The page tester: any form of either set opened on its own, with the test flag, in any of
// the six setup languages, filled from the disc as the wizard fills it. Before the first page
// (and again after a change of language, as products describe themselves per language) the
// disc is searched as the search page searches it, and the selection the packets give is
// made, as the dialog order makes it on its way.
//
// The page itself never calls the dialog order: Continue checks and keeps the page, Back
// does nothing, Cancel, No and the close box close it, the first welcome page shows its
// close button instead of going on, and the installation page shows the plan without
// installing anything.
#include <string>
#include <vector>

namespace tovel {

class clsPageTester {
public:
    /// The forms of one set (true: classic, false: "frmMSI") in the wizard's order, then the
    /// forms beside it: the folder dialog and the message box (one look in both sets), and in
    /// the "frmMSI" set the golden component page.
    [[nodiscard]] static std::vector<std::string> Pages(bool oldForms);

    /// Shows the form (a name from Pages, either set) in a language (0 German .. 5 Japanese)
    /// and returns when it is closed. False, with nothing shown, for a name of no page.
    bool Open(const std::string& form, int language);

private:
    void UseLanguage(int language);
    void FillCatalogue();

    int filledIn_ = -1;   ///< the language the catalogue was filled in; -1 not yet
};

} // namespace tovel
