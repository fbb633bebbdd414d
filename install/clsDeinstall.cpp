#include "install/clsDeinstall.h"

#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

/// WaitForSingleObject's INFINITE: the removal is the one wait of the run without a limit.
constexpr uint32_t kNoTimeLimit = 0xFFFFFFFFu;

void RunAndWait(const std::string& command) {
    auto& processes = Platform().Processes();
    const StartResult started = processes.Start(command, "");
    if (!started.processId) {
        LogIfEnabled("Error: Could not start program: " + command);
        return;
    }
    (void)processes.Wait(*started.processId, kNoTimeLimit);
    processes.Release(*started.processId);
}

} // namespace

std::string clsDeinstall::WithAutoAnswers(const std::string& command) {
    const size_t at = clsString::LowerAscii(command).find(" -f");
    if (at == std::string::npos) return command;
    std::string changed = command;
    changed.insert(at + 1, "-a -y ");
    return changed;
}

std::string clsDeinstall::KeyPath(const std::string& deinstallKey) {
    return std::string("HKEY_LOCAL_MACHINE\\") + kUninstallPath + deinstallKey;
}

std::string clsDeinstall::UninstallString(const std::string& deinstallKey) {
    const std::string key = clsString::Trim(deinstallKey);
    if (key.empty()) return {};
    return clsRegistry(RegRoot::LocalMachine, kUninstallPath + key).QueryValue("UninstallString");
}

void clsDeinstall::Run(const std::string& deinstallKey) {
    const std::string key = clsString::Trim(deinstallKey);
    if (key.empty()) return;
    const std::string command = UninstallString(key);
    LogIfEnabled("-------------b e g i n D e i n s t a l l ------------");
    LogIfEnabled("Deinstalliere  : " + key);
    if (!command.empty()) {
        const std::string automatic = WithAutoAnswers(command);
        LogIfEnabled("DeinstallAufruf: " + automatic);
        RunAndWait(automatic);
    }
    LogIfEnabled("---------------e n d e D e i n s t a l l ------------");
}

} // namespace tovel
