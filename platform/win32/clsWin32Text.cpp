#include "platform/win32/clsWin32Text.h"

#include "platform/clsUtf8.h"

namespace tovel {

std::optional<std::wstring> clsWin32Text::ToWide(std::string_view text) {
    const auto units = clsUtf8::ToUtf16(text, true);
    if (!units) return std::nullopt;
    return std::wstring(units->begin(), units->end());
}

std::string clsWin32Text::ToUtf8(std::wstring_view text) {
    return *clsUtf8::FromUtf16(std::u16string(text.begin(), text.end()), false);
}

std::optional<std::string> clsWin32Text::ToUtf8Strict(std::wstring_view text) {
    return clsUtf8::FromUtf16(std::u16string(text.begin(), text.end()), true);
}

} // namespace tovel
