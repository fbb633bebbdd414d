#include "install/clsWaitedProgram.h"

#include "common/mdlEvents.h"
#include "platform/clsPlatform.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
constexpr uint32_t kPollMs = 100;
} // namespace

bool clsWaitedProgram::RunAndWait(const std::string& commandLine, const std::string& folder) {
    auto& processes = Platform().Processes();
    const StartResult started = processes.Start(commandLine, folder);
    if (!started.processId) {
        LogIfEnabled("Error: Could not start program: " + commandLine);
        return false;
    }
    while (processes.ExitCode(*started.processId).value_or(0) == kStillActive) {
        (void)processes.Wait(*started.processId, kPollMs);
        DoEvents();
    }
    processes.Release(*started.processId);
    return true;
}

} // namespace tovel
