#pragma once
// Libraries loaded into the setup's own process to run one of their entry points: the
// registration functions of COM libraries ("DllRegisterServer", "DllUnregisterServer").
#include <cstdint>
#include <string>

namespace tovel {

/// How a call of an entry point ended.
struct EntryPointCall {
    enum class Outcome {
        NoLibrary,     ///< the file is missing or cannot be loaded as a library
        NoEntryPoint,  ///< the library has no such entry point
        Returned,      ///< the entry point returned; code is what it returned (an HRESULT)
        Hung,          ///< it did not return in time; code is its thread's exit code (259, still active)
    };
    Outcome outcome = Outcome::NoLibrary;
    uint32_t code = 0;
};

class clsPlatformLibraries {
public:
    virtual ~clsPlatformLibraries() = default;

    /// Loads a library (LoadLibraryEx), runs an entry point that takes no arguments on a
    /// thread of its own, waits for it up to timeoutMs and frees the library again. A hung
    /// entry point keeps its library loaded: its thread still runs in it.
    [[nodiscard]] virtual EntryPointCall CallEntryPoint(const std::string& path, const std::string& entryPoint,
                                                        uint32_t timeoutMs) = 0;
    /// Ends the calling thread with an exit code (ExitThread); the process goes on while
    /// other threads of it run.
    [[noreturn]] virtual void EndThread(uint32_t exitCode) = 0;
};

} // namespace tovel
