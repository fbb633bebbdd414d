#pragma once
// Top-level windows through EnumWindows.
#include "platform/clsPlatformWindows.h"

namespace tovel {

class clsWin32Windows : public clsPlatformWindows {
public:
    bool FindTopLevelWindow(const std::string& classPattern, const std::string& titlePattern) override;
};

} // namespace tovel
