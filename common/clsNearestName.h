#pragma once
// The name of a list nearest to a misspelt one, for messages that say "did you mean ...".
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

class clsNearestName {
public:
    /// The candidate with the fewest letters to change (without regard to case), if that
    /// is at most a third of the name's length (at least 1); "" when none is that near.
    [[nodiscard]] static std::string Find(std::string_view name, const std::vector<std::string>& candidates);
    /// Single letters inserted, removed or changed, or two neighbours swapped, to turn one
    /// name into the other, without regard to ASCII case; limit + 1 for any count above limit.
    [[nodiscard]] static size_t Distance(std::string_view a, std::string_view b, size_t limit = SIZE_MAX);
};

} // namespace tovel
