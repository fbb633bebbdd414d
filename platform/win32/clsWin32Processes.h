#pragma once
// Processes through CreateProcess / ShellExecuteEx / OpenProcess. The process handle is kept
// per id until Release, so the id cannot be reused by Windows while it is followed and the
// exit code stays readable after the process has ended.
#include <cstdint>
#include <map>
#include <mutex>

#include "platform/clsPlatformProcesses.h"

namespace tovel {

class clsWin32Processes : public clsPlatformProcesses {
public:
    clsWin32Processes() = default;
    clsWin32Processes(const clsWin32Processes&) = delete;
    clsWin32Processes& operator=(const clsWin32Processes&) = delete;
    ~clsWin32Processes() override;

    StartResult Start(const std::string& commandLine, const std::string& folder) override;
    StartResult Open(const std::string& file, const std::string& parameters, const std::string& folder) override;
    std::string FindAssociatedProgram(const std::string& file) override;
    bool Attach(uint32_t processId) override;
    std::optional<uint32_t> ExitCode(uint32_t processId) override;
    bool Wait(uint32_t processId, uint32_t timeoutMs) override;
    void Release(uint32_t processId) override;

private:
    /// Keeps a handle for an id; a second handle for a followed id is closed.
    void Keep(uint32_t processId, void* handle);
    /// A duplicate of the kept handle (the caller closes it), so a Release from another
    /// thread cannot close the handle under a wait; nullptr for an unknown id.
    void* Borrow(uint32_t processId);

    std::mutex mutex_;
    std::map<uint32_t, void*> handles_;
};

} // namespace tovel
