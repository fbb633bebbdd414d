#pragma once
// Time as the setup sees it: the seconds-since-midnight timer, the local date and time,
// and waiting.
#include <cstdint>

namespace tovel {

struct LocalTime {
    int year = 0, month = 0, day = 0;   ///< month 1..12
    int hour = 0, minute = 0, second = 0;
    int dayOfWeek = 0;                  ///< 0 Sunday .. 6 Saturday
};

class clsPlatformClock {
public:
    virtual ~clsPlatformClock() = default;

    /// Seconds since local midnight with fractions; it starts again at 0 each midnight.
    [[nodiscard]] virtual double SecondsSinceMidnight() = 0;
    /// The local date and time now.
    [[nodiscard]] virtual LocalTime Now() = 0;
    /// Suspends the caller for the given milliseconds.
    virtual void Sleep(uint32_t milliseconds) = 0;
};

} // namespace tovel
