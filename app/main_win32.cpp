// The Windows build: the setup on the real Windows API, its wizard in native windows.
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "app/mdlSetupRun.h"
#include "common/mdlEvents.h"
#include "platform/clsPlatform.h"
#include "platform/win32/MakeWin32Platform.h"
#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "ui/win32/clsWin32PageTest.h"
#include "ui/win32/clsWin32Renderer.h"
#include "ui/win32/clsWin32Walk.h"

using namespace tovel;

namespace {

// A disc or share may hold a DLL named like a system one: libraries load from the system
// folder only, and never from the current folder (which is the disc).
void HardenDllSearch() {
    using SetDefaultDirs = BOOL(WINAPI*)(DWORD);
    constexpr DWORD kSearchSystem32 = 0x00000800;   // LOAD_LIBRARY_SEARCH_SYSTEM32
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    FARPROC found = kernel != nullptr ? GetProcAddress(kernel, "SetDefaultDllDirectories") : nullptr;
    if (found != nullptr && reinterpret_cast<SetDefaultDirs>(reinterpret_cast<void*>(found))(kSearchSystem32) != 0) return;
    using SetDirectory = BOOL(WINAPI*)(LPCWSTR);
    found = kernel != nullptr ? GetProcAddress(kernel, "SetDllDirectoryW") : nullptr;   // XP SP1 and later
    if (found != nullptr) (void)reinterpret_cast<SetDirectory>(reinterpret_cast<void*>(found))(L"");
}

std::string Environment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value != nullptr ? clsWin32Text::ToUtf8(value) : std::string();
}

// The scripted walk of the tests: TOVEL_WALK names its file.
void StartWalk(clsWin32Renderer& renderer, std::unique_ptr<clsWin32Walk>& walk) {
    const std::string file = Environment(L"TOVEL_WALK");
    if (file.empty()) return;
    const std::optional<std::string> script = Platform().Files().ReadFile(file);
    if (!script) {
        LogIfEnabled("Walk: " + file + " cannot be read.");
        return;
    }
    walk = std::make_unique<clsWin32Walk>(renderer, *script);
    walk->Start();
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    HardenDllSearch();
    InstallPlatform(MakeWin32Platform());
    static clsWin32Renderer renderer;
    // The waits of the start and the end let the windows answer meanwhile.
    SetDoEventsHandler([] { renderer.DoEvents(); });
    const std::string pageTest = Environment(L"TOVEL_PAGE_TEST");
    static std::unique_ptr<clsWin32Walk> walk;
    RunSetup(&renderer, [&] {
        if (pageTest.empty()) {
            StartWalk(renderer, walk);
            return renderer.ShowBackground();
        }
        // One page on its own instead of the wizard; its findings are the exit status.
        clsWin32PageTest test(renderer, pageTest, Environment(L"TOVEL_PAGE_TEST_OUT"));
        ExitStatus = test.Run();
        EndProgram();
    });
}
