#include "platform/clsUtf8.h"

#include <cstring>

namespace tovel {

namespace {
bool IsSurrogate(uint32_t cp) { return cp >= 0xD800 && cp <= 0xDFFF; }
} // namespace

bool clsUtf8::IsAscii(std::string_view text) {
    // Eight bytes at a time: names and keys are tested on every look-up.
    constexpr uint64_t kHighBits = 0x8080808080808080ull;
    size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        uint64_t word = 0;
        std::memcpy(&word, text.data() + i, 8);
        if ((word & kHighBits) != 0) return false;
    }
    for (; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) return false;
    }
    return true;
}

void clsUtf8::Append(uint32_t cp, std::string& out) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::optional<uint32_t> clsUtf8::Next(std::string_view s, size_t& i, bool allowSurrogates) {
    const auto b = static_cast<unsigned char>(s[i]);
    if (b < 0x80) {
        ++i;
        return b;
    }
    const size_t extra = (b & 0xE0) == 0xC0 ? 1 : (b & 0xF0) == 0xE0 ? 2 : (b & 0xF8) == 0xF0 ? 3 : 0;
    if (extra == 0 || i + extra >= s.size()) return std::nullopt;
    uint32_t cp = b & (0x3F >> extra);
    for (size_t k = 1; k <= extra; ++k) {
        const auto c = static_cast<unsigned char>(s[i + k]);
        if ((c & 0xC0) != 0x80) return std::nullopt;
        cp = (cp << 6) | (c & 0x3F);
    }
    static const uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kSmallest[extra] || cp > 0x10FFFF || (IsSurrogate(cp) && !allowSurrogates)) return std::nullopt;
    i += extra + 1;
    return cp;
}

uint32_t clsUtf8::NextLenient(std::string_view s, size_t& i) {
    if (auto cp = Next(s, i)) return *cp;
    return static_cast<unsigned char>(s[i++]);
}

bool clsUtf8::IsValid(std::string_view s) {
    for (size_t i = 0; i < s.size();) {
        if (!Next(s, i)) return false;
    }
    return true;
}

std::optional<std::u16string> clsUtf8::ToUtf16(std::string_view s, bool allowSurrogates) {
    std::u16string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        const auto cp = Next(s, i, allowSurrogates);
        if (!cp) return std::nullopt;
        if (*cp < 0x10000) {
            out += static_cast<char16_t>(*cp);
            continue;
        }
        out += static_cast<char16_t>(0xD800 + ((*cp - 0x10000) >> 10));
        out += static_cast<char16_t>(0xDC00 + ((*cp - 0x10000) & 0x3FF));
    }
    return out;
}

std::optional<std::string> clsUtf8::FromUtf16(std::u16string_view text, bool strict) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (strict && IsSurrogate(cp)) {
            return std::nullopt;
        }
        Append(cp, out);
    }
    return out;
}

} // namespace tovel
