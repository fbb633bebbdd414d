#include "catalogue/clsPlaceholderScan.h"

#include <string_view>
#include <unordered_set>

#include "common/clsNearestName.h"
#include "settings/clsPlaceholder.h"

namespace tovel {

namespace {

bool IsNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsName(std::string_view name) {
    if (name.empty() || (name[0] >= '0' && name[0] <= '9')) return false;
    for (const char c : name) {
        if (!IsNameCharacter(c)) return false;
    }
    return true;
}

const std::vector<std::string>& Known() {
    static const std::vector<std::string> known = [] {
        std::vector<std::string> names;
        for (const auto spelling : clsPlaceholder::KnownSpellings()) names.emplace_back(spelling);
        return names;
    }();
    return known;
}

bool IsKnown(std::string_view token) {
    static const std::unordered_set<std::string_view> known(Known().begin(), Known().end());
    return known.count(token) != 0;
}

// The placeholders of one value, as the expansion finds them: "%" or "[" opens, the next "%"
// or "]" closes.
std::vector<std::string_view> Tokens(std::string_view value) {
    std::vector<std::string_view> tokens;
    size_t from = 0;
    while (from < value.size()) {
        const size_t open = value.find_first_of("%[", from);
        if (open == std::string_view::npos) break;
        const size_t close = value.find(value[open] == '%' ? '%' : ']', open + 1);
        if (close == std::string_view::npos) break;
        tokens.push_back(value.substr(open, close - open + 1));
        from = close + 1;
    }
    return tokens;
}

} // namespace

std::vector<DiscFinding> clsPlaceholderScan::Check(const std::string& file, const std::vector<IniLine>& outline) {
    std::vector<DiscFinding> findings;
    for (const IniLine& line : outline) {
        // Two searches for one character each are far quicker than one for either of two.
        if (line.header || (line.value.find('%') == std::string::npos && line.value.find('[') == std::string::npos)) continue;
        for (const auto& token : Tokens(line.value)) {
            if (IsKnown(token) || !IsName(token.substr(1, token.size() - 2))) continue;
            const std::string nearest = clsNearestName::Find(token, Known());
            if (token[0] == '[' && nearest.empty()) continue;
            findings.push_back({file, line.number, FindingSeverity::Warning,
                                std::string(token) + " in \"" + std::string(line.key) + "\" is no placeholder of the setup and stays as written" +
                                    (nearest.empty() ? "" : "; did you mean " + nearest + "?")});
        }
    }
    return findings;
}

} // namespace tovel
