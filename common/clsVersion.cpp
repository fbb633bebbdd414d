#include "common/clsVersion.h"

#include <cstddef>

namespace tovel {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

// The next part of a version text; rest is left behind its ".", or empty after the last part.
// An exhausted text keeps giving empty parts, which count as 0.
std::string_view NextPart(std::string_view& rest) {
    const size_t dot = rest.find('.');
    const std::string_view part = rest.substr(0, dot);
    rest = dot == std::string_view::npos ? std::string_view() : rest.substr(dot + 1);
    return Trimmed(part);
}

int Sign(int value) { return value < 0 ? -1 : (value > 0 ? 1 : 0); }

// Numbers of any length: as digit strings without leading zeros, the longer is the higher.
int CompareDigits(std::string_view a, std::string_view b) {
    while (!a.empty() && a.front() == '0') a.remove_prefix(1);
    while (!b.empty() && b.front() == '0') b.remove_prefix(1);
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return Sign(a.compare(b));
}

int CompareNoCase(std::string_view a, std::string_view b) {
    const size_t common = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < common; ++i) {
        const auto x = static_cast<unsigned char>(Lower(a[i]));
        const auto y = static_cast<unsigned char>(Lower(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

size_t LeadingDigits(std::string_view part) {
    size_t n = 0;
    while (n < part.size() && IsDigit(part[n])) ++n;
    return n;
}

int ComparePart(std::string_view a, std::string_view b) {
    const size_t digitsA = LeadingDigits(a);
    const size_t digitsB = LeadingDigits(b);
    const int numbers = CompareDigits(a.substr(0, digitsA), b.substr(0, digitsB));
    if (numbers != 0) return numbers;
    return CompareNoCase(a.substr(digitsA), b.substr(digitsB));
}

} // namespace

int clsVersion::Compare(std::string_view a, std::string_view b) {
    // Nothing here allocates, so nothing can throw.
    while (!a.empty() || !b.empty()) {
        const int part = ComparePart(NextPart(a), NextPart(b));
        if (part != 0) return part;
    }
    return 0;
}

} // namespace tovel
