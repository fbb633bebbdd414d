#include "wizard/pages/clsControlWelcome.h"

#include "startup/Globals.h"
#include "startup/Main.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

void clsControlWelcome::OnLoad() {
    if (clsFormControl* image = Form().Control("Image1")) image->picture = gSetupsIni->WelcomeBmp();
    SetVisible("cmdClose", TestFlag());
}

void clsControlWelcome::OnActivate() {
    if (TestFlag()) return;
    WaitSeconds(gSetupsIni->WelcomeTimeout());
    gDialogOrder->NextDialog(Page());
}

void clsControlWelcome::OnClick(const std::string& control, int) {
    if (control == "cmdClose") FormQueryUnload2();
}

} // namespace tovel
