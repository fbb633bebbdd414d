#include "wizard/pages/clsControlWelcome.h"

#include "common/clsSecondsTimer.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRenderer.h"

namespace tovel {

void clsControlWelcome::OnLoad() {
    SetVisible("cmdClose", TestFlag());
}

void clsControlWelcome::OnActivate() {
    if (TestFlag()) return;
    clsSecondsTimer timer;
    timer.Start();
    // The wait ends early when the user closes the page.
    timer.WaitUntil(Timeout(), [this] {
        Renderer().WhileWaiting(Form());
        return Form().Shown();
    });
    gDialogOrder->NextDialog(Page());
}

void clsControlWelcome::OnClick(const std::string& control, int) {
    if (control == "cmdClose") FormQueryUnload2();
}

int clsControlWelcome::Timeout() {
    const int seconds = gSetupsIni->WelcomeTimeout();
    if (seconds <= kMaxTimeoutSeconds) return seconds;
    LogIfEnabled("WelcomeTimeout=" + std::to_string(seconds) + " is too long: the welcome page waits " +
                 std::to_string(kMaxTimeoutSeconds) + " seconds.");
    return kMaxTimeoutSeconds;
}

} // namespace tovel
