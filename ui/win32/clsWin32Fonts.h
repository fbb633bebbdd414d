#pragma once
// The fonts the windows draw their texts in: the setup language's font (its face, character
// set and size from clsLanguageFont), bold for titles, and "MS UI Gothic" for a Japanese
// text on a page of another language. Made once per kind and kept until the renderer goes.
#include <map>
#include <string>
#include <tuple>

#include "language/clsLanguageFont.h"
#include "platform/win32/Win32Headers.h"

namespace tovel {

class clsWin32Fonts {
public:
    clsWin32Fonts() = default;
    clsWin32Fonts(const clsWin32Fonts&) = delete;
    clsWin32Fonts& operator=(const clsWin32Fonts&) = delete;
    ~clsWin32Fonts();

    /// The font of the setup language as it stands now; "MS Sans Serif" 8 pt before one is known.
    [[nodiscard]] static LanguageFont LanguageFontNow();
    /// The font that shows Japanese whatever the system's code page.
    [[nodiscard]] static LanguageFont JapaneseFont();
    /// A font of that face, character set and size at the screen's resolution.
    [[nodiscard]] HFONT Get(const LanguageFont& font, bool bold, int dpiY);

private:
    std::map<std::tuple<std::string, int, int, bool, int>, HFONT> fonts_;
};

} // namespace tovel
