#include "install/clsMSISetup.h"

#include "catalogue/clsSIFApplication.h"
#include "common/clsVersion.h"
#include "install/mdlPrerequisite.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/clsVersionInfo.h"
#include "startup/mdlLog.h"

namespace tovel {

void clsMSISetup::CheckMSI(clsSIFApplication& catalogue) {
    if (!gSetupsIni->CheckMSI()) return;
    const char* const code = OSPlatformId == 1 ? "MSIINSTA" : "MSIINSTW";
    clsSIFApplicationItem* entry = catalogue.Item(catalogue.IndexOfProductCode(code));
    if (entry == nullptr) return;
    const std::string program = SystemDir + "MSIExec.exe";
    if (!Platform().Files().FileExists(program)) {
        LogIfEnabled(program + " not found: " + code + " is installed first");
        MarkPrerequisite(*entry, true);
        return;
    }
    clsVersionInfo version;
    (void)version.GetFileInfo(program);
    LogIfEnabled("MSIExec.exe Version=" + version.NumericVersion() + ", " + code + " Build=" + entry->Build);
    MarkPrerequisite(*entry, clsVersion::Compare(version.NumericVersion(), entry->Build) < 0);
}

} // namespace tovel
