#pragma once
// One finding of the disc check: where it is, how bad, and what to do about it.
#include <cstddef>
#include <string>
#include <string_view>

namespace tovel {

enum class FindingSeverity {
    Warning,   ///< the setup goes on, but not as the author may think
    Error,     ///< the setup cannot do what the disc asks
};

struct DiscFinding {
    std::string file;     ///< the file's Windows path
    size_t line = 0;      ///< 1-based; 0 when the finding concerns the whole file
    FindingSeverity severity = FindingSeverity::Warning;
    std::string text;
    bool operator==(const DiscFinding&) const = default;
};

/// "error" or "warning", as the check prints it.
[[nodiscard]] constexpr std::string_view SeverityText(FindingSeverity severity) {
    return severity == FindingSeverity::Error ? "error" : "warning";
}

} // namespace tovel
