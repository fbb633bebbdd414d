#pragma once
// The platform of the Linux build: every interface served by one emulated machine.
#include <functional>
#include <memory>
#include <string>

#include "platform/clsPlatform.h"
#include "platform/posix/clsMachine.h"

namespace tovel {

/// What the running process is on its machine.
struct MachineProcess {
    std::string programFolder = "C:\\";   ///< the folder the program was started from
    std::string commandLine;              ///< its Windows command line, without the program
    std::string currentFolder;            ///< the current folder at start; empty: programFolder
    std::string selfWindowsPath;          ///< see clsMachineProcesses::Options
    std::string selfHostPath;
    bool shareConsole = false;
    std::function<void()> onRestart;      ///< see clsMachineSystem
};

namespace detail {
struct MachineHolder {
    std::unique_ptr<clsMachine> machine;
};
} // namespace detail

class clsMachinePlatform : private detail::MachineHolder, public clsPlatform {
public:
    /// The platform of a machine; nullptr with "file:line: what" in error when its registry
    /// file is damaged.
    [[nodiscard]] static std::unique_ptr<clsMachinePlatform> Make(std::unique_ptr<clsMachine> machine,
                                                                  const MachineProcess& process, std::string& error);
    [[nodiscard]] clsMachine& Machine() { return *machine; }

private:
    clsMachinePlatform(detail::MachineHolder holder, std::unique_ptr<clsPlatformFiles> files,
                       std::unique_ptr<clsPlatformRegistry> registry, std::unique_ptr<clsPlatformProcesses> processes,
                       std::unique_ptr<clsPlatformWindows> windows, std::unique_ptr<clsPlatformSystem> system,
                       std::unique_ptr<clsPlatformClock> clock, std::unique_ptr<clsPlatformLibraries> libraries);
};

} // namespace tovel
