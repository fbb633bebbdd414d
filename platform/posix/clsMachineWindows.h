#pragma once
// Top-level windows on an emulated machine. A program that shows a window writes a file
// <machine>/run/windows/<pid>-<any>.win with the class on its first line and the title on
// its second; the window exists while that process lives.
#include "platform/clsPlatformWindows.h"
#include "platform/posix/clsMachine.h"

namespace tovel {

class clsMachineWindows : public clsPlatformWindows {
public:
    explicit clsMachineWindows(const clsMachine& machine) : machine_(machine) {}

    bool FindTopLevelWindow(const std::string& classPattern, const std::string& titlePattern) override;

private:
    const clsMachine& machine_;
};

} // namespace tovel
