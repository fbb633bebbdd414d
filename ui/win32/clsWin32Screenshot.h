#pragma once
// The screen as a PNG file's bytes, as a person sees it.
#include <string>

namespace tovel {

class clsWin32Screenshot {
public:
    /// The whole screen; "" when it cannot be read.
    [[nodiscard]] static std::string CapturePng();
};

} // namespace tovel
