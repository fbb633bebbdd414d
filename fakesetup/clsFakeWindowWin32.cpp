#include "fakesetup/clsFakeWindowWin32.h"

#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel {

bool clsFakeWindowWin32::Open(const std::string& windowClass, const std::string& title) {
    Close();
    const auto className = clsWin32Text::ToWide(windowClass);
    const auto caption = clsWin32Text::ToWide(title);
    if (!className || className->empty() || !caption) return false;
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = className->c_str();
    if (RegisterClassW(&wc) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    HWND window = CreateWindowExW(0, className->c_str(), caption->c_str(), WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                  CW_USEDEFAULT, 400, 200, nullptr, nullptr, wc.hInstance, nullptr);
    if (window == nullptr) return false;
    ShowWindow(window, SW_SHOWNOACTIVATE);
    window_ = window;
    class_ = *className;
    return true;
}

void clsFakeWindowWin32::Wait(uint32_t milliseconds) {
    // Windows XP has only the 32-bit tick count; differences survive its wrap.
    const DWORD start = GetTickCount();
    for (DWORD passed = 0; passed < milliseconds; passed = GetTickCount() - start) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - passed, QS_ALLINPUT);
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
}

void clsFakeWindowWin32::Close() {
    if (window_ == nullptr) return;
    DestroyWindow(static_cast<HWND>(window_));
    UnregisterClassW(class_.c_str(), GetModuleHandleW(nullptr));
    window_ = nullptr;
}

} // namespace tovel
