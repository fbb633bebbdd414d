#pragma once
// The component page, for now without its tree: it lists the products shown in the tree
// (Visible and not HideInstall), one line each with its check state as the catalogue holds
// it ("[x] Base (checkbox)"), and the long description of the line chosen. Nothing can be
// changed here yet; Continue goes on with the selection as it is.
#include <vector>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlCustomSetup : public clsControlPage {
public:
    clsControlCustomSetup() : clsControlPage("frmCustomSetup") {}

    /// The lines the page shows, in catalogue order.
    [[nodiscard]] static std::vector<std::string> ProductLines();

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;

private:
    std::vector<int> products_;   ///< the catalogue index (from 1) of each line
};

} // namespace tovel
