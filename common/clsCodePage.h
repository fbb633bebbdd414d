#pragma once
// Text in the code pages of Windows files, turned into the program's UTF-8 and back.
// 1200 is UTF-16 LE, 1201 UTF-16 BE, 65001 UTF-8; the rest (1252, 1250, 932, ...) go through
// the platform.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovel {

inline constexpr uint32_t kCodePageUtf16Le = 1200;
inline constexpr uint32_t kCodePageUtf16Be = 1201;

class clsCodePage {
public:
    /// Bytes in a code page as UTF-8; nullopt for an unknown code page or invalid bytes (in
    /// UTF-16 an odd number of bytes or a lone surrogate).
    [[nodiscard]] static std::optional<std::string> ToUtf8(std::string_view bytes, uint32_t codePage);
    /// UTF-8 as bytes of a code page; characters it lacks become "?". nullopt for an unknown
    /// code page or text that is not UTF-8.
    [[nodiscard]] static std::optional<std::string> FromUtf8(std::string_view text, uint32_t codePage);
    /// True if the bytes are well-formed UTF-8 (no overlong forms, no surrogates).
    [[nodiscard]] static bool IsUtf8(std::string_view bytes);
};

} // namespace tovel
