// The Windows build: the setup on the real Windows API.
#include <string>

#include "app/mdlSetupRun.h"
#include "common/mdlMessage.h"
#include "platform/win32/MakeWin32Platform.h"
#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"

using namespace tovel;

namespace {
// Text the program made itself is UTF-8; a stray byte must not cost the whole message.
std::wstring Wide(const std::string& text) { return clsWin32Text::ToWide(text).value_or(L"?"); }

// Until the Windows renderer exists, Windows' message box shows the question.
int ShowMessage(const std::string& text, int style, const std::string& caption) {
    return MessageBoxW(nullptr, Wide(text).c_str(), Wide(caption).c_str(), static_cast<UINT>(style) | MB_TOPMOST);
}

// Where the start put the setup; without a renderer no page follows.
void ShowStart() {
    const std::string summary = "Setup folder " + HomePath + "\nWork folder " + WorkFolder + "\nWindows folder " +
                                WindowsDir + "\nSystem folder " + SystemDir +
                                "\n\nThe wizard is not built yet; nothing was installed.";
    MessageBoxW(nullptr, Wide(summary).c_str(), L"TovelSetup", MB_OK | MB_ICONINFORMATION);
}
} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    InstallPlatform(MakeWin32Platform());
    SetMessageBoxHandler(ShowMessage);
    RunSetup(nullptr, ShowStart);
}
