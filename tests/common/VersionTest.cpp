// Version comparison as the description files use it: parts as numbers, missing parts as 0,
// letters after the digits as a tie-breaker, no overflow on long parts.
#include <gtest/gtest.h>

#include <string>

#include "common/clsVersion.h"

namespace tovel {
namespace {

TEST(Version, ComparesPartByPartFromTheLeft) {
    struct Case {
        const char* a;
        const char* b;
        int expected;  // sign of Compare(a, b)
    };
    const Case cases[] = {
        // Parts are numbers, not text: 10 is higher than 9, the first unequal part decides.
        {"6.0.1.12", "6.0.1.12", 0},
        {"1.10", "1.9", 1},
        {"2.0", "10.0", -1},
        {"1.2.9", "1.3.0", -1},
        {"5.1.0.0", "5.0.9.9", 1},
        // Missing parts count as 0.
        {"1.0", "1.0.0", 0},
        {"1", "1.0.1", -1},
        {"1.0.0.1", "1", 1},
        {"", "0.0", 0},
        {"", "0.1", -1},
        {"1.", "1", 0},
        {"..", "0", 0},
        // Leading zeros and blanks around parts do not count.
        {"007.01", "7.1", 0},
        {" 1 . 2 ", "1.2", 0},
        {"\t3.0", "3", 0},
        // Parts that are not numbers: leading digits are the number, the rest breaks ties
        // without regard to case.
        {"2a", "2b", -1},
        {"2B", "2b", 0},
        {"2", "2a", -1},
        {"10a", "9z", 1},
        {"1.0.beta", "1.0", 1},
        {"1.0.beta", "1.0.1", -1},
        {"abc", "0", 1},
        {"SP2", "SP10", 1},  // no leading digits: both 0, then "sp2" > "sp10" as text
        // Numbers far beyond 64 bits neither overflow nor wrap.
        {"123456789012345678901234567890", "123456789012345678901234567889", 1},
        {"99999999999999999999", "100000000000000000000", -1},
        {"1.000000000000000000000000000001", "1.1", 0},
        {"4294967296", "4294967295", 1},
    };
    for (const auto& c : cases) {
        const int forward = clsVersion::Compare(c.a, c.b);
        EXPECT_EQ(forward, c.expected) << '"' << c.a << "\" vs \"" << c.b << '"';
        // The order is antisymmetric, and Equal agrees with Compare.
        EXPECT_EQ(clsVersion::Compare(c.b, c.a), -c.expected) << '"' << c.b << "\" vs \"" << c.a << '"';
        EXPECT_EQ(clsVersion::Equal(c.a, c.b), c.expected == 0) << c.a << " / " << c.b;
    }
    // Bytes beyond ASCII and NULs are just text.
    EXPECT_EQ(clsVersion::Compare(std::string("1\0a", 3), std::string("1\0b", 3)), -1);
    EXPECT_EQ(clsVersion::Compare("1.\xFF", "1.\x01"), 1);
}

} // namespace
} // namespace tovel
