#pragma once
// Processes on an emulated machine. A Windows command line runs the host program found at
// its Windows path (a script with a "#!" line or a host executable), with the arguments
// split as the C runtime would. The program learns its machine from the environment:
//   TOVEL_MACHINE         the machine's host folder
//   TOVEL_PROGRAM         the program's Windows path
//   TOVEL_CURRENT_FOLDER  the Windows folder it was started in
//   TOVEL_EXIT_CODE_FILE  a file it may write its full 32-bit exit code into (host exit
//                         statuses have only 8 bits; Windows codes such as 3010 need more)
#include <map>
#include <optional>
#include <string>

#include "platform/clsPlatformProcesses.h"
#include "platform/posix/clsMachine.h"
#include "platform/posix/clsMachineFiles.h"

namespace tovel {

class clsMachineProcesses : public clsPlatformProcesses {
public:
    struct Options {
        /// The Windows path of this program ("D:\TOVELSETUP.EXE") and the host binary that
        /// runs when that path is started, so the setup can start itself again.
        std::string selfWindowsPath;
        std::string selfHostPath;
        /// Children share this process's terminal (the boot's RunOnce commands); otherwise
        /// their input is empty and their output goes to a file beside the machine.
        bool shareConsole = false;
    };

    clsMachineProcesses(const clsMachine& machine, clsMachineFiles& files, Options options);
    ~clsMachineProcesses() override;
    clsMachineProcesses(const clsMachineProcesses&) = delete;
    clsMachineProcesses& operator=(const clsMachineProcesses&) = delete;

    StartResult Start(const std::string& commandLine, const std::string& folder) override;
    StartResult Open(const std::string& file, const std::string& parameters, const std::string& folder) override;
    std::string FindAssociatedProgram(const std::string& file) override;
    bool Attach(uint32_t processId) override;
    std::optional<uint32_t> ExitCode(uint32_t processId) override;
    bool Wait(uint32_t processId, uint32_t timeoutMs) override;
    void Release(uint32_t processId) override;

    /// The Windows path of the program a command line starts, found the way CreateProcess
    /// finds it; empty when there is none.
    [[nodiscard]] std::string FindProgram(const std::string& commandLine, std::string& arguments);

private:
    struct Child {
        bool ownChild = true;       // started here, so waitpid can reap it
        bool ended = false;
        uint32_t exitCode = kStillActive;
        std::string exitCodeFile;
    };
    [[nodiscard]] std::optional<std::string> HostProgram(const std::string& windowsPath);
    [[nodiscard]] std::string SearchProgram(const std::string& name);
    void Poll(uint32_t processId, Child& child);

    const clsMachine& machine_;
    clsMachineFiles& files_;
    Options options_;
    std::map<uint32_t, Child> children_;
    unsigned counter_ = 0;
};

} // namespace tovel
