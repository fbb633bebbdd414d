#pragma once
// The system of an emulated machine, as its machine.ini describes it. A restart switches the
// machine off (machine.ini Power=off) and ends this process with kMachineRestartStatus, as
// Windows ends the programs of a session; booting the machine switches it on again.
#include <functional>

#include "platform/clsPlatformSystem.h"
#include "platform/posix/clsMachine.h"

namespace tovel {

/// The exit status of a process whose machine was restarted.
inline constexpr int kMachineRestartStatus = 194;

class clsMachineSystem : public clsPlatformSystem {
public:
    /// programFolder and commandLine: what this process is on the machine. onRestart runs after
    /// the machine is switched off; by default it ends the process with kMachineRestartStatus.
    clsMachineSystem(clsMachine& machine, std::string programFolder, std::string commandLine,
                     std::function<void()> onRestart = {});

    OsVersion Version() override;
    uint16_t UserDefaultLanguage() override;
    uint32_t AnsiCodePage() override;
    std::string WindowsFolder() override;
    std::string SystemFolder() override;
    std::string TempFolder() override;
    std::string ProgramFolder() override;
    std::string CommandLine() override;
    std::optional<std::string> Environment(const std::string& name) override;
    bool IsAdministrator() override;
    ScreenSize Screen() override;
    std::vector<std::string> Fonts() override;
    bool EnableShutdownPrivilege() override;
    bool Restart(uint32_t flags) override;
    /// Host exit statuses have 8 bits; a program started on the machine also leaves its full
    /// code in TOVEL_EXIT_CODE_FILE for the program that waits for it.
    [[noreturn]] void EndProcess(uint32_t exitCode) override;
    std::string LongDate(const LocalTime& time) override;
    std::string LongTime(const LocalTime& time) override;

private:
    clsMachine& machine_;
    std::string programFolder_;
    std::string commandLine_;
    std::function<void()> onRestart_;
};

} // namespace tovel
