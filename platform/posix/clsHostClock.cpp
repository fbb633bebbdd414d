#include "platform/posix/clsHostClock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace tovel {

namespace {
std::tm LocalNow(double& fraction) {
    const auto now = std::chrono::system_clock::now();
    const auto seconds = std::chrono::system_clock::to_time_t(now);
    fraction = std::chrono::duration<double>(now - std::chrono::system_clock::from_time_t(seconds)).count();
    std::tm tm{};
    localtime_r(&seconds, &tm);
    return tm;
}
} // namespace

double clsHostClock::SecondsSinceMidnight() {
    double fraction = 0;
    const std::tm tm = LocalNow(fraction);
    return tm.tm_hour * 3600.0 + tm.tm_min * 60.0 + tm.tm_sec + fraction;
}

LocalTime clsHostClock::Now() {
    double fraction = 0;
    const std::tm tm = LocalNow(fraction);
    return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec, tm.tm_wday};
}

void clsHostClock::Sleep(uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace tovel
