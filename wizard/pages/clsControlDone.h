#pragma once
// The last page: what happened (installed, cancelled, aborted, which products failed), the
// choice to restart now when the installation asks for it, and the one button that ends the
// program.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlDone : public clsControlPage {
public:
    clsControlDone() : clsControlPage("frmDone") {}
    /// The close box ends the program as the Done button does: there is nothing left to cancel.
    void FormQueryUnload() override { DoneBtnClick(); }

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;

private:
    /// What happened: cancelled, aborted, the products that failed.
    void SetOutcomeTexts();
    void DoneBtnClick();
};

} // namespace tovel
