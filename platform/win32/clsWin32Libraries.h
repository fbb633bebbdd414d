#pragma once
// Entry points of libraries through LoadLibraryExW, GetProcAddress and a thread of their own.
#include "platform/clsPlatformLibraries.h"

namespace tovel {

class clsWin32Libraries : public clsPlatformLibraries {
public:
    EntryPointCall CallEntryPoint(const std::string& path, const std::string& entryPoint, uint32_t timeoutMs) override;
    [[noreturn]] void EndThread(uint32_t exitCode) override;
};

} // namespace tovel
