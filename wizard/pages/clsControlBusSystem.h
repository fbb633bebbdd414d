#pragma once
// The bus-system page: PROFIBUS, Ethernet, a second Ethernet, KWT or no network; the chosen
// bus system's entry of each selected packet brings products in or takes them out.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlBusSystem : public clsControlPage {
public:
    clsControlBusSystem() : clsControlPage("frmBusSystem") {}

protected:
    void OnLoad() override;
    bool OnContinue() override;
    void OnClick(const std::string& control, int index) override;
};

} // namespace tovel
