#include "common/clsString.h"

namespace tovel {

namespace {
char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
} // namespace

std::string clsString::LowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = Lower(c);
    return lower;
}

std::string clsString::UpperAscii(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) c = Upper(c);
    return upper;
}

bool clsString::EqualNoCaseAscii(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (Lower(a[i]) != Lower(b[i])) return false;
    }
    return true;
}

std::vector<std::string> clsString::Split(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    if (separator.empty()) return {std::string(text)};
    size_t start = 0;
    for (size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, start)) {
        parts.emplace_back(text.substr(start, at - start));
        start = at + separator.size();
    }
    parts.emplace_back(text.substr(start));
    return parts;
}

std::string clsString::Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

} // namespace tovel
