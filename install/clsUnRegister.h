#pragma once
// Registers or unregisters a COM library by calling its own registration entry point
// ("DllRegisterServer", "DllUnregisterServer"), as regsvr32 does, on a thread of its own that
// is waited for at most ten seconds. A registration that hangs ends the calling thread with
// that thread's exit code: the hard stop is the defined behaviour and stays. Each call is
// logged with its outcome.
#include <cstdint>
#include <string>

namespace tovel {

class clsUnRegister {
public:
    static constexpr uint32_t kWaitMs = 10000;

    /// True when the library's DllRegisterServer ran and returned success (0 or above).
    static bool RegServer(const std::string& libraryPath);
    /// True when the library's DllUnregisterServer ran and returned success.
    static bool UnRegServer(const std::string& libraryPath);

private:
    static bool Call(const std::string& libraryPath, const std::string& entryPoint);
};

} // namespace tovel
