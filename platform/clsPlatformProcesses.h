#pragma once
// Programs started by the setup. A process is known by its id; the platform keeps what it
// needs to answer for it until Release.
#include <cstdint>
#include <optional>
#include <string>

namespace tovel {

/// GetExitCodeProcess answers this while a process runs; a process that ends with this
/// code therefore looks as if it were still running.
inline constexpr uint32_t kStillActive = 259;

struct StartResult {
    std::optional<uint32_t> processId; ///< set when a process was started
    uint32_t error = 0;                ///< otherwise the Windows error code (2 file not found, 5 access denied, 31 no association)
};

class clsPlatformProcesses {
public:
    virtual ~clsPlatformProcesses() = default;

    /// Starts a Windows command line in a folder (empty: the current one).
    [[nodiscard]] virtual StartResult Start(const std::string& commandLine, const std::string& folder) = 0;
    /// Opens a file with the program associated with its type (ShellExecuteEx, verb "open").
    [[nodiscard]] virtual StartResult Open(const std::string& file, const std::string& parameters,
                                           const std::string& folder) = 0;
    /// The program associated with a file's type; empty if there is none.
    [[nodiscard]] virtual std::string FindAssociatedProgram(const std::string& file) = 0;
    /// Starts to follow a process that this program did not start (OpenProcess). False if
    /// there is no such process.
    [[nodiscard]] virtual bool Attach(uint32_t processId) = 0;
    /// The exit code: kStillActive while the process runs; nullopt for an unknown id.
    [[nodiscard]] virtual std::optional<uint32_t> ExitCode(uint32_t processId) = 0;
    /// Waits up to timeoutMs for the process to end; true if it has ended.
    [[nodiscard]] virtual bool Wait(uint32_t processId, uint32_t timeoutMs) = 0;
    /// Forgets a process (CloseHandle). The process itself goes on.
    virtual void Release(uint32_t processId) = 0;
};

} // namespace tovel
