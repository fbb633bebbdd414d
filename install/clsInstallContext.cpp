#include "install/clsInstallContext.h"

namespace tovel {

InstallContext clsInstallContext::Current(const std::string& productLanguages) {
    InstallContext context;
    context.productLanguages = productLanguages;
    return context;
}

bool clsInstallContext::DriveUsable(const std::string&) { return true; }

} // namespace tovel
