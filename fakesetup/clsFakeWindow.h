#pragma once
// The window a stand-in setup shows while it works, as the run's window check sees it. Each
// build makes its own: a window file on the emulated machine, a real window on Windows.
#include <cstdint>
#include <string>

namespace tovel {

class clsFakeWindow {
public:
    virtual ~clsFakeWindow() = default;

    /// Shows a top-level window of the class and title; false when it could not be shown.
    virtual bool Open(const std::string& windowClass, const std::string& title) = 0;
    /// Lets the given milliseconds pass on the machine's clock, the window staying alive.
    virtual void Wait(uint32_t milliseconds) = 0;
    /// Takes the window away; nothing when none is open.
    virtual void Close() = 0;
};

} // namespace tovel
