#pragma once
// The installation page, for now without the installation run: it says that nothing is
// installed yet and lists the selected products in installation order (the catalogue's
// order), one status line each; its button (and a silent run at once) leaves for the Done
// page. The timer JobTimer1 stays off.
#include <string>
#include <vector>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlInstall : public clsControlPage {
public:
    clsControlInstall() : clsControlPage("frmInstallation") {}

    /// The selected products' descriptions in installation order.
    [[nodiscard]] static std::vector<std::string> SelectedProducts();

protected:
    void OnLoad() override;
    void OnActivate() override;
    void OnClick(const std::string& control, int index) override;

private:
    void Leave();
    bool left_ = false;
};

} // namespace tovel
