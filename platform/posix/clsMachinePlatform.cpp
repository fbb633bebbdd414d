#include "platform/posix/clsMachinePlatform.h"

#include "platform/posix/clsMachineClock.h"
#include "platform/posix/clsMachineFiles.h"
#include "platform/posix/clsMachineLibraries.h"
#include "platform/posix/clsMachineProcesses.h"
#include "platform/posix/clsMachineRegistry.h"
#include "platform/posix/clsMachineSystem.h"
#include "platform/posix/clsMachineWindows.h"

namespace tovel {

namespace {
// The parts are made in one go so that the processes can share the files' current folders.
struct Parts {
    std::unique_ptr<clsMachineFiles> files;
    std::unique_ptr<clsMachineProcesses> processes;
};

Parts MakeParts(clsMachine& machine, const MachineProcess& process) {
    Parts parts;
    parts.files = std::make_unique<clsMachineFiles>(
        machine, process.currentFolder.empty() ? process.programFolder : process.currentFolder);
    parts.processes = std::make_unique<clsMachineProcesses>(
        machine, *parts.files,
        clsMachineProcesses::Options{process.selfWindowsPath, process.selfHostPath, process.shareConsole});
    return parts;
}
} // namespace

std::unique_ptr<clsMachinePlatform> clsMachinePlatform::Make(std::unique_ptr<clsMachine> machine,
                                                             const MachineProcess& process, std::string& error) {
    auto registry = std::make_unique<clsMachineRegistry>(machine->RegistryFile(), machine->Config().ansiCodePage);
    if (!registry->Load(error)) return nullptr;
    auto parts = MakeParts(*machine, process);
    auto system = std::make_unique<clsMachineSystem>(*machine, process.programFolder, process.commandLine,
                                                     process.onRestart);
    auto windows = std::make_unique<clsMachineWindows>(*machine);
    auto clock = std::make_unique<clsMachineClock>(machine->Folder());
    auto libraries = std::make_unique<clsMachineLibraries>(*parts.files, *registry, *clock);
    return std::unique_ptr<clsMachinePlatform>(new clsMachinePlatform(
        detail::MachineHolder{std::move(machine)}, std::move(parts.files), std::move(registry),
        std::move(parts.processes), std::move(windows), std::move(system), std::move(clock), std::move(libraries)));
}

clsMachinePlatform::clsMachinePlatform(detail::MachineHolder holder, std::unique_ptr<clsPlatformFiles> files,
                                       std::unique_ptr<clsPlatformRegistry> registry,
                                       std::unique_ptr<clsPlatformProcesses> processes,
                                       std::unique_ptr<clsPlatformWindows> windows,
                                       std::unique_ptr<clsPlatformSystem> system,
                                       std::unique_ptr<clsPlatformClock> clock,
                                       std::unique_ptr<clsPlatformLibraries> libraries)
    : detail::MachineHolder(std::move(holder)),
      clsPlatform(std::move(files), std::move(registry), std::move(processes), std::move(windows), std::move(system),
                  std::move(clock), std::move(libraries)) {}

} // namespace tovel
