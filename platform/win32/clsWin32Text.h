#pragma once
// UTF-8 <-> UTF-16 at the boundary to the wide Windows API. A lone surrogate in a name
// Windows gives us is kept (as its three-byte form), so the name can be handed back and
// still reaches the same file or key.
#include <optional>
#include <string>
#include <string_view>

namespace tovel {

class clsWin32Text {
public:
    /// UTF-8 as UTF-16; nullopt for bytes that are not UTF-8 (callers fail rather than
    /// reach a different name).
    [[nodiscard]] static std::optional<std::wstring> ToWide(std::string_view text);
    /// UTF-16 as UTF-8; never fails.
    [[nodiscard]] static std::string ToUtf8(std::wstring_view text);
    /// Like ToUtf8, but nullopt for a lone surrogate.
    [[nodiscard]] static std::optional<std::string> ToUtf8Strict(std::wstring_view text);

    /// Calls an API of the GetCurrentDirectoryW kind, fill(buffer, size in characters),
    /// which answers the characters written, or the size needed when the buffer is too
    /// small, or 0 on failure; the buffer grows until the text fits.
    template <typename Fill>
    [[nodiscard]] static std::optional<std::wstring> Fetch(Fill fill) {
        std::wstring buffer(260, L'\0');
        for (int attempt = 0; attempt < 8; ++attempt) {
            const auto size = static_cast<unsigned long>(buffer.size());
            const auto n = static_cast<unsigned long>(fill(buffer.data(), size));
            if (n == 0) return std::nullopt;
            if (n < size) {
                buffer.resize(n);
                return buffer;
            }
            // The text may have grown between calls; retry with what was asked for.
            buffer.resize(static_cast<size_t>(n) + 1);
        }
        return std::nullopt;
    }
};

} // namespace tovel
