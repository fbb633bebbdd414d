#include "platform/win32/clsWin32Libraries.h"

#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {
using RegistrationFunction = HRESULT(STDAPICALLTYPE*)();

struct PendingCall {
    RegistrationFunction function;
};

// The entry points take no argument and return an HRESULT; the thread's exit code carries it.
// The thread owns its call, as a hung one outlives the caller's wait.
DWORD WINAPI RunEntryPoint(LPVOID parameter) {
    const RegistrationFunction function = static_cast<PendingCall*>(parameter)->function;
    delete static_cast<PendingCall*>(parameter);
    return static_cast<DWORD>(function());
}
} // namespace

EntryPointCall clsWin32Libraries::CallEntryPoint(const std::string& path, const std::string& entryPoint,
                                                 uint32_t timeoutMs) {
    const auto wide = clsWin32Text::ToWide(path);
    // The library's own folder first for the libraries it needs, as regsvr32 loads it.
    HMODULE library = wide ? LoadLibraryExW(wide->c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH) : nullptr;
    if (library == nullptr) return {EntryPointCall::Outcome::NoLibrary, 0};
    const FARPROC function = GetProcAddress(library, entryPoint.c_str());
    if (function == nullptr) {
        FreeLibrary(library);
        return {EntryPointCall::Outcome::NoEntryPoint, 0};
    }
    // Through void(*)(), the type GCC takes as any function's, to the entry point's own type.
    auto* call = new PendingCall{reinterpret_cast<RegistrationFunction>(reinterpret_cast<void (*)()>(function))};
    HANDLE thread = CreateThread(nullptr, 0, RunEntryPoint, call, 0, nullptr);
    if (thread == nullptr) {
        delete call;
        FreeLibrary(library);
        return {EntryPointCall::Outcome::NoEntryPoint, 0};
    }
    const bool ended = WaitForSingleObject(thread, timeoutMs) == WAIT_OBJECT_0;
    DWORD code = 0;
    GetExitCodeThread(thread, &code);
    CloseHandle(thread);
    if (!ended) return {EntryPointCall::Outcome::Hung, code};
    FreeLibrary(library);
    return {EntryPointCall::Outcome::Returned, code};
}

void clsWin32Libraries::EndThread(uint32_t exitCode) { ExitThread(exitCode); }

} // namespace tovel
