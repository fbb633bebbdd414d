#include "startup/clsSystem.h"

#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
constexpr uint32_t kRebootForce = 2 | 4;   // EWX_REBOOT | EWX_FORCE
} // namespace

void clsSystem::Refresh() {
    administrator_ = Platform().System().IsAdministrator();
    read_ = true;
}

bool clsSystem::CheckIfUserIsAdmin() {
    if (OSPlatformId == 1) return true;
    if (!read_) Refresh();
    return administrator_;
}

bool clsSystem::DoRestart() {
    auto& system = Platform().System();
    if (!system.EnableShutdownPrivilege()) {
        LogIfEnabled("Error in Modul clsSystem Funktion DoRestart: SeShutdownPrivilege not granted");
    }
    if (system.Restart(kRebootForce)) return true;
    LogIfEnabled("Error in Modul clsSystem Funktion DoRestart: Windows refused to restart");
    return false;
}

} // namespace tovel
