#pragma once
// Conversion between a Windows code page and UTF-8. One header, one implementation per
// platform: iconv on Linux, MultiByteToWideChar / WideCharToMultiByte on Windows.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tovel {

inline constexpr uint32_t kCodePageUtf8 = 65001;

class clsCodePageConverter {
public:
    /// Bytes in a code page as UTF-8; nullopt for an unknown code page or bytes that are
    /// not valid in it.
    [[nodiscard]] static std::optional<std::string> ToUtf8(std::string_view bytes, uint32_t codePage);
    /// UTF-8 text as bytes in a code page; characters the code page lacks become "?".
    /// nullopt for an unknown code page or text that is not UTF-8.
    [[nodiscard]] static std::optional<std::string> FromUtf8(std::string_view text, uint32_t codePage);
};

} // namespace tovel
