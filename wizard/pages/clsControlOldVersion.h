#pragma once
// The old-version page: the installed versions the search found, one per line.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlOldVersion : public clsControlPage {
public:
    clsControlOldVersion() : clsControlPage("frmOldVersion") {}

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;
};

} // namespace tovel
