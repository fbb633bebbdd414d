#pragma once
// The machine the setup runs on, one interface per concern. main() of each build creates
// one and installs it; the core reaches it through Platform().
#include <memory>

#include "platform/clsPlatformClock.h"
#include "platform/clsPlatformFiles.h"
#include "platform/clsPlatformLibraries.h"
#include "platform/clsPlatformProcesses.h"
#include "platform/clsPlatformRegistry.h"
#include "platform/clsPlatformSystem.h"
#include "platform/clsPlatformWindows.h"

namespace tovel {

class clsPlatform {
public:
    clsPlatform(std::unique_ptr<clsPlatformFiles> files, std::unique_ptr<clsPlatformRegistry> registry,
                std::unique_ptr<clsPlatformProcesses> processes, std::unique_ptr<clsPlatformWindows> windows,
                std::unique_ptr<clsPlatformSystem> system, std::unique_ptr<clsPlatformClock> clock,
                std::unique_ptr<clsPlatformLibraries> libraries);
    virtual ~clsPlatform() = default;
    clsPlatform(const clsPlatform&) = delete;
    clsPlatform& operator=(const clsPlatform&) = delete;

    clsPlatformFiles& Files() { return *files_; }
    clsPlatformRegistry& Registry() { return *registry_; }
    clsPlatformProcesses& Processes() { return *processes_; }
    clsPlatformWindows& Windows() { return *windows_; }
    clsPlatformSystem& System() { return *system_; }
    clsPlatformClock& Clock() { return *clock_; }
    clsPlatformLibraries& Libraries() { return *libraries_; }

private:
    std::unique_ptr<clsPlatformFiles> files_;
    std::unique_ptr<clsPlatformRegistry> registry_;
    std::unique_ptr<clsPlatformProcesses> processes_;
    std::unique_ptr<clsPlatformWindows> windows_;
    std::unique_ptr<clsPlatformSystem> system_;
    std::unique_ptr<clsPlatformClock> clock_;
    std::unique_ptr<clsPlatformLibraries> libraries_;
};

/// The installed platform. Only valid after InstallPlatform.
clsPlatform& Platform();
/// Makes a platform the one the core uses; the previous one is returned to the caller.
std::unique_ptr<clsPlatform> InstallPlatform(std::unique_ptr<clsPlatform> platform);

} // namespace tovel
