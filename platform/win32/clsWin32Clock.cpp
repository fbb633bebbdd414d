#include "platform/win32/clsWin32Clock.h"

#include "platform/win32/Win32Headers.h"

namespace tovel {

double clsWin32Clock::SecondsSinceMidnight() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return now.wHour * 3600.0 + now.wMinute * 60.0 + now.wSecond + now.wMilliseconds / 1000.0;
}

LocalTime clsWin32Clock::Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    LocalTime time;
    time.year = now.wYear;
    time.month = now.wMonth;
    time.day = now.wDay;
    time.hour = now.wHour;
    time.minute = now.wMinute;
    time.second = now.wSecond;
    time.dayOfWeek = now.wDayOfWeek;
    return time;
}

void clsWin32Clock::Sleep(uint32_t milliseconds) { ::Sleep(milliseconds); }

} // namespace tovel
