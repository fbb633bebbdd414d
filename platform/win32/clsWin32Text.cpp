#include "platform/win32/clsWin32Text.h"

#include <cstdint>

namespace tovel {

namespace {

void PutUtf8(uint32_t cp, std::string& out) {
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

std::optional<std::string> Encode(std::wstring_view text, bool strict) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = static_cast<uint16_t>(text[i]);
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size()) {
            const uint32_t low = static_cast<uint16_t>(text[i + 1]);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        if (strict && cp >= 0xD800 && cp <= 0xDFFF) return std::nullopt;
        PutUtf8(cp, out);
    }
    return out;
}

} // namespace

std::optional<std::wstring> clsWin32Text::ToWide(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out += static_cast<wchar_t>(lead);
            ++i;
            continue;
        }
        size_t extra = 0;
        uint32_t cp = 0, min = 0;
        if (lead >= 0xC2 && lead <= 0xDF) {
            extra = 1, cp = lead & 0x1F, min = 0x80;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            extra = 2, cp = lead & 0x0F, min = 0x800;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            extra = 3, cp = lead & 0x07, min = 0x10000;
        } else {
            return std::nullopt;
        }
        if (i + extra >= text.size()) return std::nullopt;
        for (size_t k = 1; k <= extra; ++k) {
            const auto b = static_cast<unsigned char>(text[i + k]);
            if ((b & 0xC0) != 0x80) return std::nullopt;
            cp = (cp << 6) | (b & 0x3F);
        }
        if (cp < min || cp > 0x10FFFF) return std::nullopt;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<wchar_t>(0xD800 + (cp >> 10));
            out += static_cast<wchar_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<wchar_t>(cp);
        }
        i += extra + 1;
    }
    return out;
}

std::string clsWin32Text::ToUtf8(std::wstring_view text) { return *Encode(text, false); }

std::optional<std::string> clsWin32Text::ToUtf8Strict(std::wstring_view text) { return Encode(text, true); }

} // namespace tovel
