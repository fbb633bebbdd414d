#pragma once
// How wide UTF-8 text is on a terminal, and how it breaks into lines. Japanese captions and
// licence texts must line up with the frame, so every cell count goes through here: CJK
// ideographs, kana and full-width forms take two columns, combining marks none.
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

class clsTextWidth {
public:
    /// One character of a UTF-8 text: its bytes and its code point. A byte that starts no
    /// valid sequence comes back alone as U+FFFD.
    struct Char {
        std::string_view bytes;
        char32_t code = 0;
    };

    /// The character at byte offset `at`; `next` is set to the offset after it.
    [[nodiscard]] static Char At(std::string_view text, size_t at, size_t& next);
    /// Columns a code point takes: 2 for wide East Asian ones, 0 for combining marks and
    /// control characters, 1 for the rest.
    [[nodiscard]] static int Of(char32_t code);
    /// Columns a UTF-8 text takes on one line.
    [[nodiscard]] static int Width(std::string_view text);
    /// The longest start of a text that takes at most `width` columns (a wide character that
    /// does not fit whole is left out).
    [[nodiscard]] static std::string Fit(std::string_view text, int width);
    /// The text without its last character (for Backspace); "" stays "".
    [[nodiscard]] static std::string DropLast(std::string_view text);
    /// The text broken into lines of at most `width` columns: at line breaks ("\n", "\r\n"),
    /// between words, before and after wide characters, and inside a word longer than a line.
    /// Tabs become blanks to the next multiple of 8. An empty text gives one empty line.
    [[nodiscard]] static std::vector<std::string> Wrap(std::string_view text, int width);
    /// The hard lines of a text ("\n" or "\r\n"), nothing wrapped.
    [[nodiscard]] static std::vector<std::string> Lines(std::string_view text);
    /// The lines of a text joined by blanks: a caption that stands on one line.
    [[nodiscard]] static std::string OneLine(std::string_view text);
};

} // namespace tovel
