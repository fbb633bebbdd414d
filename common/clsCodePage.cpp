#include "common/clsCodePage.h"

#include "platform/clsCodePageConverter.h"
#include "platform/clsUtf8.h"

namespace tovel {

namespace {

std::optional<std::string> FromUtf16Le(std::string_view bytes) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::u16string units(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                         (static_cast<unsigned char>(bytes[2 * i + 1]) << 8));
    }
    return clsUtf8::FromUtf16(units, false);
}

std::optional<std::string> ToUtf16Le(std::string_view text) {
    const auto units = clsUtf8::ToUtf16(text);
    if (!units) return std::nullopt;
    std::string out;
    out.reserve(units->size() * 2);
    for (const char16_t unit : *units) {
        out += static_cast<char>(unit & 0xFF);
        out += static_cast<char>(unit >> 8);
    }
    return out;
}

} // namespace

bool clsCodePage::IsUtf8(std::string_view bytes) { return clsUtf8::IsValid(bytes); }

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
