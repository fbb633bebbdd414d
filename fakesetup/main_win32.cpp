// The stand-in product setup of the Windows build: the real API, a real window.
#include <string>

#include "fakesetup/clsFakeSetup.h"
#include "fakesetup/clsFakeWindowWin32.h"
#include "platform/clsWindowsCommandLine.h"
#include "platform/win32/MakeWin32Platform.h"
#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"

using namespace tovel;

namespace {

std::string SelfPath() {
    const auto path = clsWin32Text::Fetch([](wchar_t* buffer, unsigned long size) {
        return GetModuleFileNameW(nullptr, buffer, size);
    });
    return path ? clsWin32Text::ToUtf8(*path) : std::string();
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    InstallPlatform(MakeWin32Platform());
    const auto arguments = clsWindowsCommandLine::SplitArguments(Platform().System().CommandLine());
    clsFakeWindowWin32 window;
    // Windows keeps all 32 bits of what WinMain returns.
    return static_cast<int>(clsFakeSetup(SelfPath(), arguments, window).Run());
}
