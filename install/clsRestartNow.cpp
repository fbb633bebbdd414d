#include "install/clsRestartNow.h"

#include "common/mdlEvents.h"
#include "common/mdlMessage.h"
#include "install/clsDumpFile.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsSystem.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
constexpr int32_t kRestartStarted = 1641;
} // namespace

void clsRestartNow::Prepare(const RestartState& state) {
    const int text = state.registerRunOnce ? TextNo::kRestartResumes : TextNo::kRestartStartAgain;
    (void)MsgBox(gLanguage ? gLanguage->LoadResString(text) : std::string(), mb::kOk | mb::kIconWarning,
                 ApplicationTitle);
    SaveForResume(state);
    (void)RestartWindows();
    DoEvents();
}

void clsRestartNow::SaveForResume(const RestartState& state) {
    clsDumpFile dump;
    dump.SetRunningSetupIndex(state.position);
    dump.SetSetupStatus(state.setupStatus);
    dump.SetRunningSetupFileName(state.commandLine);
    dump.SetSetupFailed(state.setupFailed);
    dump.CreateDumpFile();
    if (state.registerRunOnce) {
        const clsRegistry runOnce(RegRoot::LocalMachine, kRunOnceKey);
        (void)runOnce.SetKeyValue(kRunOnceValue, clsDumpFile::ProgramPath(), RegType::Sz);
    }
    const std::string opfile = WorkFolder + "OPFILE.TXT";
    if (Platform().Files().FileExists(opfile)) (void)Platform().Files().DeleteFile(opfile);
}

void clsRestartNow::ForgetResume() {
    const clsRegistry runOnce(RegRoot::LocalMachine, kRunOnceKey);
    if (runOnce.ValueExist(kRunOnceValue) && runOnce.DeleteValue(kRunOnceValue)) {
        LogIfEnabled(std::string("Resume entry deleted: ") + kRunOnceValue);
    }
}

bool clsRestartNow::RestartWindows() {
    if (!clsSystem::DoRestart()) return false;
    ExitStatus = kRestartStarted;
    return true;
}

} // namespace tovel
