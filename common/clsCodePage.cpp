#include "common/clsCodePage.h"

#include "common/clsTextDecoder.h"
#include "platform/clsCodePageConverter.h"
#include "platform/clsUtf8.h"

namespace tovel {

namespace {

bool IsUtf16(uint32_t codePage) { return codePage == kCodePageUtf16Le || codePage == kCodePageUtf16Be; }

std::optional<std::string> FromUtf16(std::string_view bytes, uint32_t codePage) {
    auto decoded = clsTextDecoder::FromUtf16(bytes, codePage == kCodePageUtf16Be);
    if (decoded.oddByte || decoded.replaced) return std::nullopt;
    return std::move(decoded.text);
}

} // namespace

bool clsCodePage::IsUtf8(std::string_view bytes) { return clsUtf8::IsValid(bytes); }

std::optional<std::string> clsCodePage::ToUtf8(std::string_view bytes, uint32_t codePage) {
    if (IsUtf16(codePage)) return FromUtf16(bytes, codePage);
    if (codePage == kCodePageUtf8) return IsUtf8(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
    return clsCodePageConverter::ToUtf8(bytes, codePage);
}

std::optional<std::string> clsCodePage::FromUtf8(std::string_view text, uint32_t codePage) {
    if (IsUtf16(codePage)) {
        if (!IsUtf8(text)) return std::nullopt;
        return clsTextDecoder::ToUtf16(text, codePage == kCodePageUtf16Be);
    }
    if (codePage == kCodePageUtf8) return IsUtf8(text) ? std::optional<std::string>(text) : std::nullopt;
    return clsCodePageConverter::FromUtf8(text, codePage);
}

} // namespace tovel
