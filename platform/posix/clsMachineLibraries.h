#pragma once
// Libraries on an emulated machine. Its files are no Windows images, so a file makes itself a
// library with one line of its own text, anywhere in its first 64 KiB, that names its
// registration entry points and what they do:
//   DLL_EXPORTS DllRegisterServer=ok; DllUnregisterServer=ok; RegistryKey=HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Tovel.Chart
// An entry point's value: "ok" returns 0 and does its registry work (DllRegisterServer sets
// the default value of RegistryKey to the library's Windows path, DllUnregisterServer deletes
// that key); a number (decimal or 0x hex) is returned with nothing done; "hang" never returns
// (the wait for it passes on the machine's clock). An entry point the line does not name, or
// names with any other value, is not exported; a file without the line cannot be loaded.
#include <optional>
#include <string>
#include <string_view>

#include "platform/clsPlatformClock.h"
#include "platform/clsPlatformFiles.h"
#include "platform/clsPlatformLibraries.h"
#include "platform/clsPlatformRegistry.h"

namespace tovel {

class clsMachineLibraries : public clsPlatformLibraries {
public:
    clsMachineLibraries(clsPlatformFiles& files, clsPlatformRegistry& registry, clsPlatformClock& clock)
        : files_(files), registry_(registry), clock_(clock) {}

    EntryPointCall CallEntryPoint(const std::string& path, const std::string& entryPoint, uint32_t timeoutMs) override;
    /// Ends the calling host thread (pthread_exit).
    [[noreturn]] void EndThread(uint32_t exitCode) override;

private:
    /// The value of one key of a file's "DLL_EXPORTS" line; nullopt when the line or the key
    /// is missing.
    [[nodiscard]] static std::optional<std::string> ExportValue(std::string_view bytes, std::string_view key);
    [[nodiscard]] static bool HasExportsLine(std::string_view bytes);
    void Register(const std::string& path, std::string_view bytes, bool add);

    clsPlatformFiles& files_;
    clsPlatformRegistry& registry_;
    clsPlatformClock& clock_;
};

} // namespace tovel
