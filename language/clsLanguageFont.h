#pragma once
// Which fonts the machine has and which one the texts of a language are drawn in.
//
// Western languages use "MS Sans Serif" 8 pt, the font of the classic dialogs, then
// "Tahoma" and "Arial". Japanese uses "MS UI Gothic" 9 pt, then "MS PGothic", "MS Gothic"
// and "Arial Unicode MS"; a machine with none of them (a Western Windows without East
// Asian support) cannot show Japanese at all, and gets the Western font so that the page
// still opens. Japanese Windows lists some fonts under their Japanese names
// ("ＭＳ Ｐゴシック" for "MS PGothic"); both names count as the same font.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tovel {

/// A font for the texts of a language.
struct LanguageFont {
    std::string name;
    uint8_t charSet = 0;    ///< GDI character set (ANSI_CHARSET 0, SHIFTJIS_CHARSET 128, ...)
    int pointSize = 8;
    bool operator==(const LanguageFont&) const = default;
};

class clsLanguageFont {
public:
    /// True if a font of exactly that face name (letter case aside) is installed.
    [[nodiscard]] bool ExistFont(const std::string& name);
    /// As ExistFont, but a font installed under its other name (Japanese or English) counts too.
    [[nodiscard]] bool ExistFont2(const std::string& name);
    /// The face name for the texts of a locale, as the machine has it installed; remembered
    /// as ActualFont.
    [[nodiscard]] std::string GetFont(uint32_t lcid);
    /// The whole font (face, character set, size) for a locale; remembered as ActualFont.
    [[nodiscard]] LanguageFont GetFont2(uint32_t lcid);
    /// The face name chosen last; empty before the first choice.
    [[nodiscard]] const std::string& ActualFont() const { return actual_; }

    /// The choice itself, for a given list of installed fonts: the first of the language's
    /// fonts that is installed, under the name the list gives it; the language's first
    /// wish when the list is empty (nothing is known about the machine).
    [[nodiscard]] static LanguageFont ChooseFont(uint32_t lcid, const std::vector<std::string>& installed);

    /// Forgets the installed fonts, so the next question asks the machine again.
    void Refresh() { fonts_.reset(); }

private:
    const std::vector<std::string>& Installed();

    std::optional<std::vector<std::string>> fonts_;
    std::string actual_;
};

} // namespace tovel
