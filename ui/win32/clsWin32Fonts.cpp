#include "ui/win32/clsWin32Fonts.h"

#include "language/clsLanguage.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"

namespace tovel {

clsWin32Fonts::~clsWin32Fonts() {
    for (auto& [key, font] : fonts_) DeleteObject(font);
}

LanguageFont clsWin32Fonts::LanguageFontNow() {
    if (!gLanguage || !gLanguageFont) return {"MS Sans Serif", ANSI_CHARSET, 8};
    LanguageFont font = gLanguageFont->GetFont2(gLanguage->LanguageID());
    // A machine without a font of the language still gets the language's character set: the
    // font mapper then picks any font that has its characters.
    font.charSet = gLanguage->CharSet();
    return font;
}

LanguageFont clsWin32Fonts::JapaneseFont() { return {"MS UI Gothic", SHIFTJIS_CHARSET, 9}; }

HFONT clsWin32Fonts::Get(const LanguageFont& font, bool bold, int dpiY) {
    const auto key = std::make_tuple(font.name, static_cast<int>(font.charSet), font.pointSize, bold, dpiY);
    if (const auto found = fonts_.find(key); found != fonts_.end()) return found->second;
    LOGFONTW wanted{};
    wanted.lfHeight = -MulDiv(font.pointSize, dpiY, 72);
    wanted.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    wanted.lfCharSet = font.charSet;
    wanted.lfQuality = DEFAULT_QUALITY;
    const std::wstring face = clsWin32Text::ToWide(font.name).value_or(L"MS Sans Serif");
    lstrcpynW(wanted.lfFaceName, face.c_str(), LF_FACESIZE);
    HFONT made = CreateFontIndirectW(&wanted);
    if (made == nullptr) made = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    fonts_[key] = made;
    return made;
}

} // namespace tovel
