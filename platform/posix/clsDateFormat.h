#pragma once
// Date and time pictures as Windows locales write them:
//   d dd ddd dddd   day, two digits, short and long day name
//   M MM MMM MMMM   month, two digits, short and long month name
//   y yy yyyy       year;   h hh H HH m mm s ss  hours (12/24), minutes, seconds
//   t tt            A/AM or P/PM;   '...' literal text ('' is a quote)
#include <cstdint>
#include <string>

#include "platform/clsPlatformClock.h"

namespace tovel {

class clsDateFormat {
public:
    /// The time written with a picture in the names of a language (1031, 2057, 1036, 3082,
    /// 1040, 1041; English for others).
    [[nodiscard]] static std::string Format(const std::string& picture, const LocalTime& time, uint16_t language);
};

} // namespace tovel
