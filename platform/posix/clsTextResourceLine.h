#pragma once
// What the emulated machine's files say of themselves in place of a Windows image's
// resources: one line of their own text, anywhere in their first 64 KiB, that begins with a
// marker and holds "Key=Value" pairs separated by ";" (blanks around keys and values ignored).
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tovel {

class clsTextResourceLine {
public:
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    /// The pairs of the first line with the marker, in their order; nullopt without one.
    [[nodiscard]] static std::optional<Pairs> Parse(std::string_view bytes, std::string_view marker);
};

} // namespace tovel
