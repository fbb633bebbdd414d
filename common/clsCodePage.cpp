#include "common/clsCodePage.h"

#include "platform/clsCodePageConverter.h"

namespace tovel {

namespace {

void AppendUtf8(uint32_t cp, std::string& out) {
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

// Decodes the UTF-8 sequence at i; nullopt when it is malformed.
std::optional<uint32_t> NextUtf8(std::string_view s, size_t& i) {
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
    static const uint32_t kMinimum[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMinimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return std::nullopt;
    i += extra + 1;
    return cp;
}

std::optional<std::string> FromUtf16Le(std::string_view bytes) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::string out;
    for (size_t i = 0; i < bytes.size(); i += 2) {
        uint32_t unit = static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8);
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 3 < bytes.size()) {
            const uint32_t low = static_cast<unsigned char>(bytes[i + 2]) | (static_cast<unsigned char>(bytes[i + 3]) << 8);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        AppendUtf8(unit, out);
    }
    return out;
}

std::optional<std::string> ToUtf16Le(std::string_view text) {
    std::string out;
    for (size_t i = 0; i < text.size();) {
        const auto cp = NextUtf8(text, i);
        if (!cp) return std::nullopt;
        auto put = [&out](uint32_t unit) {
            out += static_cast<char>(unit & 0xFF);
            out += static_cast<char>(unit >> 8);
        };
        if (*cp < 0x10000) {
            put(*cp);
        } else {
            put(0xD800 + ((*cp - 0x10000) >> 10));
            put(0xDC00 + ((*cp - 0x10000) & 0x3FF));
        }
    }
    return out;
}

} // namespace

bool clsCodePage::IsUtf8(std::string_view bytes) {
    for (size_t i = 0; i < bytes.size();) {
        if (!NextUtf8(bytes, i)) return false;
    }
    return true;
}

std::optional<std::string> clsCodePage::ToUtf8(std::string_view bytes, uint32_t codePage) {
    if (codePage == kCodePageUtf16Le) return FromUtf16Le(bytes);
    if (codePage == kCodePageUtf8) return IsUtf8(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
    return clsCodePageConverter::ToUtf8(bytes, codePage);
}

std::optional<std::string> clsCodePage::FromUtf8(std::string_view text, uint32_t codePage) {
    if (codePage == kCodePageUtf16Le) return ToUtf16Le(text);
    if (codePage == kCodePageUtf8) return IsUtf8(text) ? std::optional<std::string>(text) : std::nullopt;
    return clsCodePageConverter::FromUtf8(text, codePage);
}

} // namespace tovel
