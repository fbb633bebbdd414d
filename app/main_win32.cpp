// The Windows build: the setup on the real Windows API.
#include <string>

#include "common/mdlMessage.h"
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
// Until the setup's own message form exists, Windows' message box shows the question.
int ShowMessage(const std::string& text, int style, const std::string& caption) {
    return MessageBoxW(nullptr, Wide(text).c_str(), Wide(caption).c_str(), static_cast<UINT>(style) | MB_TOPMOST);
}
} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    InstallPlatform(MakeWin32Platform());
    SetMessageBoxHandler(ShowMessage);
    Main();
    const std::string summary = "Setup folder " + HomePath + "\nWork folder " + WorkFolder + "\nWindows folder " +
                                WindowsDir + "\nSystem folder " + SystemDir +
                                "\n\nThe wizard is not built yet; nothing was installed.";
    MessageBoxW(nullptr, Wide(summary).c_str(), L"TovelSetup", MB_OK | MB_ICONINFORMATION);
    return 0;
}
