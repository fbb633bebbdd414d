#pragma once
// The licence agreement: the licence text, accepted with Yes (or the "I accept" option and
// Continue); No asks whether to cancel.
#include "wizard/pages/clsControlTextPage.h"

namespace tovel {

class clsControlLicense : public clsControlTextPage {
public:
    clsControlLicense();

protected:
    void OnLoad() override;
    bool OnContinue() override;
    void OnClick(const std::string& control, int index) override;

private:
    void UpdateContinue();
};

} // namespace tovel
