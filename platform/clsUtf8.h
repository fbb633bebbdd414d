#pragma once
// UTF-8, the program's own text form, and its conversion to and from UTF-16, the form of the
// Windows W functions and of UTF-16 LE files.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovel {

class clsUtf8 {
public:
    /// Appends one code point.
    static void Append(uint32_t codePoint, std::string& out);
    /// The code point at i, advancing i; nullopt (i unchanged) for a malformed, overlong or
    /// (unless allowed) surrogate sequence.
    [[nodiscard]] static std::optional<uint32_t> Next(std::string_view text, size_t& i, bool allowSurrogates = false);
    /// As Next, but a byte that does not start a well-formed sequence stands for itself.
    [[nodiscard]] static uint32_t NextLenient(std::string_view text, size_t& i);
    [[nodiscard]] static bool IsValid(std::string_view text);
    /// Whether every byte is below 0x80: such text reads alike in UTF-8 and every ANSI code page.
    [[nodiscard]] static bool IsAscii(std::string_view text);
    /// nullopt when the text is not UTF-8. allowSurrogates takes back the three-byte form of
    /// a lone surrogate that FromUtf16 keeps, so a name Windows gave goes back unchanged.
    [[nodiscard]] static std::optional<std::u16string> ToUtf16(std::string_view text, bool allowSurrogates = false);
    /// Pairs of surrogates are joined; with strict a lone surrogate gives nullopt, otherwise
    /// it is kept as its own code point.
    [[nodiscard]] static std::optional<std::string> FromUtf16(std::u16string_view text, bool strict);
};

} // namespace tovel
