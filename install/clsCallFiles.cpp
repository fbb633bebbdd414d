#include "install/clsCallFiles.h"

#include "common/mdlEvents.h"
#include "platform/clsPlatform.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
constexpr uint32_t kPollMs = 20;
} // namespace

CallFileError clsCallFiles::ErrorOf(uint32_t shellError) {
    switch (shellError) {
    case 2: return {5, "ShellExecuteEx", "File not found."};
    case 5: return {5, "ShellExecuteEx", "Access denied."};
    case 31: return {5, "ShellExecuteEx", "Could not find associated Exe."};
    default: return {};
    }
}

CallFileError clsCallFiles::CallFile(const std::string& file, const std::string& parameters) {
    LogIfEnabled("Readme Call: " + file + " " + parameters);
    auto& processes = Platform().Processes();
    const StartResult started = processes.Open(file, parameters, "");
    if (!started.processId) return ErrorOf(started.error);
    // Short waits rather than bare polls, so a run without a window does not spin.
    while (!processes.Wait(*started.processId, kPollMs)) DoEvents();
    processes.Release(*started.processId);
    return {};
}

} // namespace tovel
