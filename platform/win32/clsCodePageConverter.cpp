// MultiByteToWideChar / WideCharToMultiByte behind the code-page conversion of the Windows build.
#include "platform/clsCodePageConverter.h"

#include "platform/win32/Win32Headers.h"

#include <climits>

#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

constexpr uint32_t kUtf16Le = 1200;
constexpr uint32_t kUtf16Be = 1201;

// UTF-16 is no code page to MultiByteToWideChar; text files with a byte-order mark use it.
std::optional<std::string> Utf16ToUtf8(std::string_view bytes, bool bigEndian) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::wstring text(bytes.size() / 2, L'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]), second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<wchar_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
    }
    return clsWin32Text::ToUtf8Strict(text);
}

std::string Utf16Bytes(const std::wstring& text, bool bigEndian) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (wchar_t c : text) {
        const auto low = static_cast<char>(c & 0xFF), high = static_cast<char>((c >> 8) & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

std::optional<std::wstring> Decode(std::string_view bytes, uint32_t codePage) {
    if (bytes.empty()) return std::wstring();
    if (bytes.size() > INT_MAX) return std::nullopt;
    const int size = static_cast<int>(bytes.size());
    DWORD flags = MB_ERR_INVALID_CHARS;
    int needed = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    if (needed == 0 && GetLastError() == ERROR_INVALID_FLAGS) {
        // Some pages (ISO-2022, UTF-7, symbol) refuse the flag; they convert without a check.
        flags = 0;
        needed = MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
    }
    if (needed <= 0) return std::nullopt;
    std::wstring text(static_cast<size_t>(needed), L'\0');
    if (MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), needed) != needed) return std::nullopt;
    return text;
}

std::optional<std::string> Encode(const std::wstring& text, uint32_t codePage) {
    if (text.empty()) return std::string();
    if (text.size() > INT_MAX) return std::nullopt;
    const int size = static_cast<int>(text.size());
    // No best fit: a character the page lacks becomes "?", never a look-alike ("ā" -> "a").
    DWORD flags = WC_NO_BEST_FIT_CHARS;
    const char* question = "?";
    int needed = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, question, nullptr);
    if (needed == 0 && (GetLastError() == ERROR_INVALID_FLAGS || GetLastError() == ERROR_INVALID_PARAMETER)) {
        // UTF-7 and a few others take neither flags nor a default character.
        flags = 0;
        question = nullptr;
        needed = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, question, nullptr);
    }
    if (needed <= 0) return std::nullopt;
    std::string bytes(static_cast<size_t>(needed), '\0');
    if (WideCharToMultiByte(codePage, flags, text.data(), size, bytes.data(), needed, question, nullptr) != needed) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace

std::optional<std::string> clsCodePageConverter::ToUtf8(std::string_view bytes, uint32_t codePage) {
    if (codePage == kUtf16Le || codePage == kUtf16Be) return Utf16ToUtf8(bytes, codePage == kUtf16Be);
    if (!IsValidCodePage(codePage)) return std::nullopt;
    const auto text = Decode(bytes, codePage);
    if (!text) return std::nullopt;
    return clsWin32Text::ToUtf8Strict(*text);
}

std::optional<std::string> clsCodePageConverter::FromUtf8(std::string_view text, uint32_t codePage) {
    const bool utf16 = codePage == kUtf16Le || codePage == kUtf16Be;
    if (!utf16 && !IsValidCodePage(codePage)) return std::nullopt;
    const auto wide = Decode(text, CP_UTF8);
    if (!wide) return std::nullopt;
    if (utf16) return Utf16Bytes(*wide, codePage == kUtf16Be);
    if (codePage == CP_UTF8) return std::string(text);
    return Encode(*wide, codePage);
}

} // namespace tovel
