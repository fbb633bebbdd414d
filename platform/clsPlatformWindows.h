#pragma once
// Top-level windows of other programs, which a product setup may still show after its
// first process has ended.
#include <string>

namespace tovel {

class clsPlatformWindows {
public:
    virtual ~clsPlatformWindows() = default;

    /// True if a top-level window exists whose class and title match the patterns; "*"
    /// matches any run of characters, an empty pattern matches everything, letters match
    /// without regard to case.
    [[nodiscard]] virtual bool FindTopLevelWindow(const std::string& classPattern, const std::string& titlePattern) = 0;
};

} // namespace tovel
