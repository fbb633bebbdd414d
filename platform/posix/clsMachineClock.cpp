#include "platform/posix/clsMachineClock.h"

#include <cstdio>

#include "platform/posix/clsHostFile.h"

namespace tovel {

namespace {

constexpr int64_t kDayMs = 86400000;

// Days since 0001-01-01 of a civil date (proleptic Gregorian).
int64_t DaysFromCivil(int y, int m, int d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const int64_t yoe = y - era * 400;
    const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468 + 719162;
}

LocalTime CivilFromMs(int64_t ms) {
    const int64_t days = ms / kDayMs;
    const int64_t z = days - 719162 + 719468;
    const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const int64_t doe = z - era * 146097;
    const int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const int64_t mp = (5 * doy + 2) / 153;
    LocalTime t;
    t.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    t.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    t.year = static_cast<int>(yoe + era * 400 + (t.month <= 2));
    const int64_t msOfDay = ms % kDayMs;
    t.hour = static_cast<int>(msOfDay / 3600000);
    t.minute = static_cast<int>(msOfDay / 60000 % 60);
    t.second = static_cast<int>(msOfDay / 1000 % 60);
    t.dayOfWeek = static_cast<int>((days + 1) % 7);  // 0001-01-01 was a Monday
    return t;
}

} // namespace

std::optional<int64_t> clsMachineClock::ParseMilliseconds(const std::string& text) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0, ms = 0, used = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%n", &y, &mo, &d, &h, &mi, &s, &used) != 6) return std::nullopt;
    if (text[static_cast<size_t>(used)] == '.' && std::sscanf(text.c_str() + used, ".%3d", &ms) != 1) return std::nullopt;
    if (y < 1 || mo < 1 || mo > 12 || d < 1 || d > 31 || h > 23 || mi > 59 || s > 59 || ms < 0) return std::nullopt;
    return DaysFromCivil(y, mo, d) * kDayMs + ((h * 60 + mi) * 60 + s) * int64_t{1000} + ms;
}

std::string clsMachineClock::FormatMilliseconds(int64_t milliseconds) {
    const LocalTime t = CivilFromMs(milliseconds);
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d.%03d\n", t.year, t.month, t.day, t.hour, t.minute,
                  t.second, static_cast<int>(milliseconds % 1000));
    return buffer;
}

std::optional<int64_t> clsMachineClock::Driven() const {
    const auto text = clsHostFile::Read(file_);
    if (!text) return std::nullopt;
    return ParseMilliseconds(*text);
}

double clsMachineClock::SecondsSinceMidnight() {
    const auto ms = Driven();
    return ms ? static_cast<double>(*ms % kDayMs) / 1000.0 : host_.SecondsSinceMidnight();
}

LocalTime clsMachineClock::Now() {
    const auto ms = Driven();
    return ms ? CivilFromMs(*ms) : host_.Now();
}

void clsMachineClock::Sleep(uint32_t milliseconds) {
    const auto ms = Driven();
    if (!ms) {
        host_.Sleep(milliseconds);
        return;
    }
    std::string error;
    (void)clsHostFile::WriteAtomic(file_, FormatMilliseconds(*ms + milliseconds), error);
}

} // namespace tovel
