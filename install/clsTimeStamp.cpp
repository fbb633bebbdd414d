#include "install/clsTimeStamp.h"

#include <cstdio>

#include "platform/clsPlatform.h"

namespace tovel {

std::string clsTimeStamp::Line(const std::string& word) {
    const LocalTime now = Platform().Clock().Now();
    char clock[16];
    std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", now.hour % 100, now.minute % 100, now.second % 100);
    return "TimeStamp - " + word + ": " + clock + " (hh:mm:ss)";
}

} // namespace tovel
