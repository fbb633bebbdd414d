#pragma once
// The byte-order mark of a text file and the UTF-16 forms it names, read into the program's
// UTF-8 and written back. Every reader of Windows text files asks here, so a file with a mark
// reads alike wherever it is opened.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tovel {

/// How a file's text is stored; Ansi is a file without a byte-order mark.
enum class TextEncoding : uint8_t { Ansi, Utf8, Utf16Le, Utf16Be };

/// A byte-order mark at the start of a file.
struct ByteOrderMark {
    TextEncoding encoding = TextEncoding::Ansi;
    size_t length = 0;   ///< 0 without a mark
    bool operator==(const ByteOrderMark&) const = default;
};

/// UTF-16 bytes as UTF-8, with what had to be mended on the way.
struct DecodedText {
    std::string text;
    bool replaced = false;   ///< a lone surrogate became U+FFFD
    bool oddByte = false;    ///< a last byte without its partner was left out
    bool operator==(const DecodedText&) const = default;
};

class clsTextDecoder {
public:
    /// EF BB BF is UTF-8, FF FE UTF-16 LE, FE FF UTF-16 BE; anything else has no mark.
    [[nodiscard]] static ByteOrderMark DetectBom(std::string_view bytes);
    [[nodiscard]] static bool IsUtf16(TextEncoding encoding);
    /// The Windows code page of an encoding: 65001, 1200, 1201; 0 for Ansi (the machine's).
    [[nodiscard]] static uint32_t CodePageOf(TextEncoding encoding);
    /// The UTF-16 unit at byte i (i + 1 must lie inside the bytes).
    [[nodiscard]] static uint32_t UnitAt(std::string_view bytes, size_t i, bool bigEndian);
    /// UTF-16 to UTF-8: pairs of surrogates are joined, a lone one becomes U+FFFD.
    [[nodiscard]] static DecodedText FromUtf16(std::string_view bytes, bool bigEndian);
    /// UTF-8 to UTF-16 bytes without a mark. A byte that starts no UTF-8 character stands for
    /// itself, so text a reader mended still writes back.
    [[nodiscard]] static std::string ToUtf16(std::string_view text, bool bigEndian);
};

} // namespace tovel
