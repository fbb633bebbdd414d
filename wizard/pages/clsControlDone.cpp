#include "wizard/pages/clsControlDone.h"

#include "install/clsLorvexRun.h"
#include "install/clsRestartNow.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

namespace {
constexpr int32_t kCancelled = 1602;
constexpr int32_t kRestartLater = 3010;
} // namespace

void clsControlDone::OnLoad() {
    if (gLanguage) SetOutcomeTexts();
    SetVisible("RestartNote", RestartNeeded);
    SetVisible("RestartWindowsYes", RestartNeeded);
    SetVisible("RestartWindowsNo", RestartNeeded);
    if (!RestartNeeded) return;
    Form().ChooseOption("RestartWindowsYes");
    // The versions are shown once the products' restart has taken effect.
    clsLorvexRun::RegisterAfterRestart();
}

void clsControlDone::SetOutcomeTexts() {
    if (SetupCancelled || InstallationAborted) SetText("TitleLabel", gLanguage->LoadResString(TextNo::kDoneTitleCancelled));
    std::string instructions;
    if (SetupCancelled) instructions = gLanguage->Caption(Form().Name(), "DoneInstructionsCancelled");
    else if (InstallationAborted) instructions = gLanguage->LoadResString(TextNo::kDoneAborted);
    if (!FailedProducts.empty()) {
        const std::string logFile = gLog ? gLog->LogfileFullPath() : std::string();
        if (!instructions.empty()) instructions += "\r\n";
        instructions += gLanguage->LoadResString(TextNo::kDoneSomeFailed, {logFile}) + "\r\n" + FailedProducts;
    }
    if (!instructions.empty()) SetText("DoneInstructions", instructions);
}

void clsControlDone::OnClick(const std::string& control, int) {
    if (control == "DoneBtn") DoneBtnClick();
}

void clsControlDone::DoneBtnClick() {
    if (TestFlag()) {
        FormQueryUnload2();
        return;
    }
    auto& files = Platform().Files();
    for (const char* name : {"OPFILE.TXT", "INSTDUMP.TMP"}) {
        if (files.FileExists(WorkFolder + name)) (void)files.DeleteFile(WorkFolder + name);
    }
    const clsFormControl* restart = Form().Control("RestartWindowsYes");
    const bool restartNow = restart != nullptr && restart->visible && restart->value == 1;
    if (restartNow) {
        LogIfEnabled("Restart Windows.");
        (void)clsRestartNow::RestartWindows();
    } else if (RestartNeeded && ExitStatus == 0) {
        ExitStatus = kRestartLater;
    }
    if ((SetupCancelled || InstallationAborted) && ExitStatus == 0) ExitStatus = kCancelled;
    LogIfEnabled("Log file closed.");
    FormQueryUnload2();
    EndProgram();
}

} // namespace tovel
