#pragma once
// The second welcome page: five lines of greeting, the second with its placeholders expanded.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlWelcome2 : public clsControlPage {
public:
    clsControlWelcome2() : clsControlPage("frmWelcome2") {}

protected:
    void OnLoad() override;
};

} // namespace tovel
