#include "ui/console/clsTextWidth.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tovel {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr int kTabStop = 8;

struct Range {
    char32_t first;
    char32_t last;
};

// Wide (two-column) ranges: enough of East Asian Width W/F for Japanese, Chinese and Korean
// text and the common emoji blocks. Half-width katakana (FF61-FF9F) stays narrow.
constexpr std::array kWide = {
    Range{0x1100, 0x115F},  Range{0x231A, 0x231B},  Range{0x2329, 0x232A},  Range{0x23E9, 0x23EC},
    Range{0x2E80, 0x303E},  Range{0x3041, 0x33FF},  Range{0x3400, 0x4DBF},  Range{0x4E00, 0x9FFF},
    Range{0xA000, 0xA4CF},  Range{0xA960, 0xA97F},  Range{0xAC00, 0xD7A3},  Range{0xF900, 0xFAFF},
    Range{0xFE10, 0xFE19},  Range{0xFE30, 0xFE6F},  Range{0xFF00, 0xFF60},  Range{0xFFE0, 0xFFE6},
    Range{0x1F300, 0x1F64F}, Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x2FFFD}, Range{0x30000, 0x3FFFD},
};

// Zero-width: combining marks, zero-width spaces and joiners, variation selectors.
constexpr std::array kZero = {
    Range{0x0300, 0x036F}, Range{0x0483, 0x0489}, Range{0x0591, 0x05BD}, Range{0x0610, 0x061A},
    Range{0x064B, 0x065F}, Range{0x1AB0, 0x1AFF}, Range{0x1DC0, 0x1DFF}, Range{0x200B, 0x200F},
    Range{0x2028, 0x202E}, Range{0x2060, 0x2064}, Range{0x20D0, 0x20FF}, Range{0x3099, 0x309A},
    Range{0xFE00, 0xFE0F}, Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF},
};

template <size_t N>
bool InRanges(const std::array<Range, N>& ranges, char32_t code) {
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range& r) { return code >= r.first && code <= r.last; });
}

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

std::string TrimRight(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

std::string ExpandTabs(std::string_view line) {
    std::string out;
    int column = 0;
    size_t next = 0;
    for (size_t at = 0; at < line.size(); at = next) {
        const auto c = clsTextWidth::At(line, at, next);
        if (c.code == U'\t') {
            const int blanks = kTabStop - column % kTabStop;
            out.append(static_cast<size_t>(blanks), ' ');
            column += blanks;
            continue;
        }
        out.append(c.bytes);
        column += clsTextWidth::Of(c.code);
    }
    return out;
}

// One paragraph (no line breaks) into lines of at most `width` columns.
void WrapParagraph(std::string_view text, int width, std::vector<std::string>& out) {
    std::string line;
    int lineWidth = 0;
    size_t cut = std::string::npos;   // the line may be cut here: what follows moves down
    int cutWidth = 0;
    size_t next = 0;
    for (size_t at = 0; at < text.size(); at = next) {
        const auto c = clsTextWidth::At(text, at, next);
        const int w = clsTextWidth::Of(c.code);
        if (c.code == U' ') {
            if (lineWidth + 1 > width) {   // the blank at a break vanishes
                out.push_back(TrimRight(std::move(line)));
                line.clear();
                lineWidth = 0;
                cut = std::string::npos;
                continue;
            }
            line += ' ';
            ++lineWidth;
            cut = line.size();
            cutWidth = lineWidth;
            continue;
        }
        const bool wide = w == 2;
        if (wide && !line.empty()) {
            cut = line.size();
            cutWidth = lineWidth;
        }
        if (lineWidth + w > width && !line.empty()) {
            if (cut != std::string::npos && cut > 0) {
                std::string rest = line.substr(cut);
                out.push_back(TrimRight(line.substr(0, cut)));
                line = std::move(rest);
                lineWidth -= cutWidth;
            } else {
                out.push_back(std::move(line));
                line.clear();
                lineWidth = 0;
            }
            cut = std::string::npos;
            if (lineWidth + w > width && !line.empty()) {   // a word longer than the line
                out.push_back(std::move(line));
                line.clear();
                lineWidth = 0;
            }
        }
        line.append(c.bytes);
        lineWidth += w;
        if (wide) {
            cut = line.size();
            cutWidth = lineWidth;
        }
    }
    out.push_back(TrimRight(std::move(line)));
}

} // namespace

clsTextWidth::Char clsTextWidth::At(std::string_view text, size_t at, size_t& next) {
    const auto lead = static_cast<unsigned char>(text[at]);
    next = at + 1;
    if (lead < 0x80) return {text.substr(at, 1), lead};
    size_t length = 0;
    char32_t code = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2;
        code = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        code = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        code = lead & 0x07;
    } else {
        return {text.substr(at, 1), kReplacement};
    }
    if (at + length > text.size()) return {text.substr(at, 1), kReplacement};
    for (size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if (!IsContinuation(byte)) return {text.substr(at, 1), kReplacement};
        code = (code << 6) | (byte & 0x3F);
    }
    static constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return {text.substr(at, 1), kReplacement};
    }
    next = at + length;
    return {text.substr(at, length), code};
}

int clsTextWidth::Of(char32_t code) {
    if (code < 0x20 || (code >= 0x7F && code < 0xA0)) return 0;
    if (code < 0x300) return 1;
    if (InRanges(kZero, code)) return 0;
    if (InRanges(kWide, code)) return 2;
    return 1;
}

int clsTextWidth::Width(std::string_view text) {
    int width = 0;
    size_t next = 0;
    for (size_t at = 0; at < text.size(); at = next) width += Of(At(text, at, next).code);
    return width;
}

std::string clsTextWidth::Fit(std::string_view text, int width) {
    int used = 0;
    size_t next = 0;
    for (size_t at = 0; at < text.size(); at = next) {
        const int w = Of(At(text, at, next).code);
        if (used + w > width) return std::string(text.substr(0, at));
        used += w;
    }
    return std::string(text);
}

std::string clsTextWidth::DropLast(std::string_view text) {
    size_t last = 0;
    size_t next = 0;
    for (size_t at = 0; at < text.size(); at = next) {
        (void)At(text, at, next);
        last = at;
    }
    return std::string(text.substr(0, last));
}

std::vector<std::string> clsTextWidth::Lines(std::string_view text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (true) {
        const size_t end = text.find('\n', start);
        std::string_view line = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        lines.emplace_back(line);
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return lines;
}

std::vector<std::string> clsTextWidth::Wrap(std::string_view text, int width) {
    width = std::max(width, 1);
    std::vector<std::string> out;
    for (const auto& paragraph : Lines(text)) WrapParagraph(ExpandTabs(paragraph), width, out);
    return out;
}

std::string clsTextWidth::OneLine(std::string_view text) {
    std::string out;
    for (const auto& line : Lines(text)) {
        if (!out.empty()) out += ' ';
        out += line;
    }
    return out;
}

} // namespace tovel
