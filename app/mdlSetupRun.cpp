#include "app/mdlSetupRun.h"

#include "configtool/clsControlConfigTool.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/clsMessage.h"
#include "wizard/clsRenderer.h"
#include "wizard/mdlWizard.h"

namespace tovel {

namespace {
constexpr int32_t kExitCancelled = 1602;
} // namespace

void RunSetup(clsRenderer* renderer, const std::function<void()>& started) {
    if (renderer != nullptr) {
        SetRenderer(renderer);
        UseMessageForm();
    }
    Main();
    // Configuration mode: the tool instead of the wizard; its end is the program's end.
    if (ShowConfig) {
        ShowConfigurationTool();
        EndProgram();
    }
    if (started) started();
    RunWizard();
    // Only input that ran out before the Done page gets here: the user never finished. The
    // renderer has nothing more to show while the forms close.
    SetRenderer(nullptr);
    LogIfEnabled("The input ended before the setup did: the setup is cancelled.");
    ExitStatus = kExitCancelled;
    EndProgram();
}

} // namespace tovel
