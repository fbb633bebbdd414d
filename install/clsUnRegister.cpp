#include "install/clsUnRegister.h"

#include <cstdio>

#include "platform/clsPlatform.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {
std::string Hex(uint32_t code) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(code));
    return text;
}
} // namespace

bool clsUnRegister::RegServer(const std::string& libraryPath) { return Call(libraryPath, "DllRegisterServer"); }

bool clsUnRegister::UnRegServer(const std::string& libraryPath) { return Call(libraryPath, "DllUnregisterServer"); }

bool clsUnRegister::Call(const std::string& libraryPath, const std::string& entryPoint) {
    if (!Platform().Files().FileExists(libraryPath)) return false;
    const std::string line = "   " + entryPoint + " " + libraryPath;
    const EntryPointCall call = Platform().Libraries().CallEntryPoint(libraryPath, entryPoint, kWaitMs);
    switch (call.outcome) {
    case EntryPointCall::Outcome::NoLibrary:
        LogIfEnabled(line + ": no library");
        return false;
    case EntryPointCall::Outcome::NoEntryPoint:
        LogIfEnabled(line + ": no entry point");
        return false;
    case EntryPointCall::Outcome::Hung:
        LogIfEnabled(line + ": no answer within " + std::to_string(kWaitMs) + " ms, ended with " + Hex(call.code));
        Platform().Libraries().EndThread(call.code);
    case EntryPointCall::Outcome::Returned:
        break;
    }
    LogIfEnabled(line + " = " + Hex(call.code));
    // An HRESULT with its high bit set is a failure.
    return (call.code & 0x80000000U) == 0;
}

} // namespace tovel
