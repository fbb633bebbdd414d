// The Windows build: the setup on the real Windows API.
#include <string>

#include "platform/win32/MakeWin32Platform.h"
#include "platform/win32/Win32Headers.h"
#include "startup/Globals.h"
#include "startup/Main.h"

using namespace tovel;

namespace {
std::wstring Wide(const std::string& text) {
    const int n = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), n);
    return out;
}
} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    InstallPlatform(MakeWin32Platform());
    Main();
    const std::string summary = "Setup folder " + HomePath + "\nWork folder " + WorkFolder + "\nWindows folder " +
                                WindowsDir + "\nSystem folder " + SystemDir +
                                "\n\nThe wizard is not built yet; nothing was installed.";
    MessageBoxW(nullptr, Wide(summary).c_str(), L"TovelSetup", MB_OK | MB_ICONINFORMATION);
    return 0;
}
