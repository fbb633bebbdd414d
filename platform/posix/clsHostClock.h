#pragma once
// The host's clock in local time.
#include "platform/clsPlatformClock.h"

namespace tovel {

class clsHostClock : public clsPlatformClock {
public:
    double SecondsSinceMidnight() override;
    LocalTime Now() override;
    void Sleep(uint32_t milliseconds) override;
};

} // namespace tovel
