#pragma once
// The time-stamp lines of the log around a product's setup.
#include <string>

namespace tovel {

class clsTimeStamp {
public:
    /// "TimeStamp - <word>: " with the time of day as hh:mm:ss and " (hh:mm:ss)" behind it.
    [[nodiscard]] static std::string Line(const std::string& word);
};

} // namespace tovel
