#pragma once
// The window of a stand-in setup on Windows: a real top-level window of the asked class,
// whose messages are handled while the setup waits.
#include <string>

#include "fakesetup/clsFakeWindow.h"

namespace tovel {

class clsFakeWindowWin32 : public clsFakeWindow {
public:
    clsFakeWindowWin32() = default;
    ~clsFakeWindowWin32() override { Close(); }
    clsFakeWindowWin32(const clsFakeWindowWin32&) = delete;
    clsFakeWindowWin32& operator=(const clsFakeWindowWin32&) = delete;

    bool Open(const std::string& windowClass, const std::string& title) override;
    void Wait(uint32_t milliseconds) override;
    void Close() override;

private:
    void* window_ = nullptr;   ///< HWND
    std::wstring class_;
};

} // namespace tovel
