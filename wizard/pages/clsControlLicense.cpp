#include "wizard/pages/clsControlLicense.h"

#include "startup/Globals.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

clsControlLicense::clsControlLicense()
    : clsControlTextPage("frmLicense", "LicenseText", [](int16_t language) { return gSetupsIni->GetLicenseFile(language); }) {}

void clsControlLicense::OnLoad() {
    clsControlTextPage::OnLoad();
    Form().ChooseOption("optNo");
    UpdateContinue();
}

// Nobody agrees by accident: Continue is there only once "I accept" is chosen.
void clsControlLicense::UpdateContinue() {
    const clsFormControl* yes = Form().Control("optYes");
    SetEnabled("ContinueBtn", yes != nullptr && yes->value == 1);
}

bool clsControlLicense::OnContinue() {
    const clsFormControl* yes = Form().Control("optYes");
    return yes != nullptr && yes->value == 1;
}

void clsControlLicense::OnClick(const std::string& control, int) {
    if (control == "optYes" || control == "optNo") return UpdateContinue();
    if (control == "YesBtn") {
        Form().ChooseOption("optYes");
        return ContinueBtnClick();
    }
    if (control == "NoBtn") CancelBtnClick();
}

} // namespace tovel
