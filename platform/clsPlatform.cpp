#include "platform/clsPlatform.h"

#include <utility>

namespace tovel {

namespace {
std::unique_ptr<clsPlatform>& Installed() {
    static std::unique_ptr<clsPlatform> platform;
    return platform;
}
} // namespace

clsPlatform::clsPlatform(std::unique_ptr<clsPlatformFiles> files, std::unique_ptr<clsPlatformRegistry> registry,
                         std::unique_ptr<clsPlatformProcesses> processes, std::unique_ptr<clsPlatformWindows> windows,
                         std::unique_ptr<clsPlatformSystem> system, std::unique_ptr<clsPlatformClock> clock,
                         std::unique_ptr<clsPlatformLibraries> libraries)
    : files_(std::move(files)), registry_(std::move(registry)), processes_(std::move(processes)),
      windows_(std::move(windows)), system_(std::move(system)), clock_(std::move(clock)),
      libraries_(std::move(libraries)) {}

clsPlatform& Platform() { return *Installed(); }

std::unique_ptr<clsPlatform> InstallPlatform(std::unique_ptr<clsPlatform> platform) {
    std::swap(Installed(), platform);
    return platform;
}

} // namespace tovel
