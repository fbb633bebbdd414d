#include "wizard/pages/clsControlDone.h"

#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

void clsControlDone::OnLoad() {
    if (clsFormControl* image = Form().Control("Image1")) image->picture = gSetupsIni->WelcomeBmp();
    if (SetupCancelled && gLanguage) {
        const std::string cancelled = gLanguage->Caption(Form().Name(), "DoneInstructionsCancelled");
        if (!cancelled.empty()) SetText("DoneInstructions", cancelled);
    }
    SetVisible("RestartNote", RestartNeeded);
    SetVisible("RestartWindowsYes", RestartNeeded);
    SetVisible("RestartWindowsNo", RestartNeeded);
    if (RestartNeeded) Form().ChooseOption("RestartWindowsYes");
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
        if (gSystem->DoRestart()) ExitStatus = 1641;
    } else if (RestartNeeded && ExitStatus == 0) {
        ExitStatus = 3010;
    }
    if (SetupCancelled && ExitStatus == 0) ExitStatus = 1602;
    LogIfEnabled("Log file closed.");
    FormQueryUnload2();
    EndProgram();
}

} // namespace tovel
