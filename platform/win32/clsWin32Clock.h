#pragma once
// Local time from GetLocalTime; waiting with Sleep.
#include "platform/clsPlatformClock.h"

namespace tovel {

class clsWin32Clock : public clsPlatformClock {
public:
    double SecondsSinceMidnight() override;
    LocalTime Now() override;
    void Sleep(uint32_t milliseconds) override;
};

} // namespace tovel
