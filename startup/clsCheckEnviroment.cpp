#include "startup/clsCheckEnviroment.h"

#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
const char* const kSessionManager = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";
} // namespace

void clsCheckEnviroment::ReadSystemVersion() {
    const OsVersion v = Platform().System().Version();
    major_ = v.major;
    minor_ = v.minor;
    platformId_ = v.platformId;
    csdVersion_ = v.csdVersion;
    productName_ = v.productName;
    const clsRegistry windows(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion");
    versionNumber_ = windows.QueryValue("VersionNumber");
    subVersionNumber_ = windows.QueryValue("SubVersionNumber");
    tovel::OSPlatformId = static_cast<int32_t>(platformId_);
    if (platformId_ == 0) LogIfEnabled("Error in Function CheckOSVersion Number: 0");
}

bool clsCheckEnviroment::CheckPendingRestart(const std::string& languageText) const {
    if (platformId_ == 1) {
        if (!Platform().Files().FileExists(WindowsDir + "WININIT.INI")) return true;
        LogIfEnabled("Win95: WININIT.INI exists in system directory. TOVEL_SETUP stopped.");
    } else {
        const clsRegistry session(RegRoot::LocalMachine, kSessionManager);
        if (!session.ValueExist("PendingFileRenameOperations")) return true;
        LogIfEnabled("WinNT: Pending File Rename Operations. TOVEL_SETUP stopped.");
    }
    const std::string text = languageText.empty() ? "Please restart Windows before installing new programs!" : languageText;
    MsgBox(text, mb::kOk | mb::kIconInformation, ApplicationTitle);
    return false;
}

} // namespace tovel
