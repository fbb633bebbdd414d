#pragma once
// Version texts as products write them ("6.0.1.12"), compared part by part as numbers.
//
// Both texts are split at "." and compared part by part from the left; the first unequal
// part decides.
//   - A part missing from the shorter text counts as 0: "1.0" equals "1.0.0", "1" is lower
//     than "1.0.1". An empty text is 0 and so equals "0" and "0.0".
//   - Blanks and tabs around a part are ignored: " 1. 2 " equals "1.2".
//   - The number of a part is its leading digits, of any length (compared as digit strings
//     without leading zeros, so "007" equals "7" and 30-digit parts do not overflow); a part
//     without leading digits counts as 0.
//   - When the numbers are equal, the rest of the two parts decides, compared as text
//     without regard to ASCII case: "2a" < "2b", "2" < "2a", "2B" equals "2b". So "beta"
//     (0 with rest "beta") is higher than "0" and lower than "1".
#include <string_view>

namespace tovel {

class clsVersion {
public:
    /// -1 when a is lower than b, 0 when equal, 1 when higher. Never throws.
    [[nodiscard]] static int Compare(std::string_view a, std::string_view b);
    [[nodiscard]] static bool Equal(std::string_view a, std::string_view b) { return Compare(a, b) == 0; }
};

} // namespace tovel
