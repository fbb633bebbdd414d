#pragma once
// The update-or-new page: update the installed products or install anew.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlUpdateOrNew : public clsControlPage {
public:
    clsControlUpdateOrNew() : clsControlPage("frmUpdateOrNew") {}

protected:
    void OnActivate() override;
    bool OnContinue() override;
};

} // namespace tovel
