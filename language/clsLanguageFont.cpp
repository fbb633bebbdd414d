#include "language/clsLanguageFont.h"

#include <array>
#include <span>

#include "language/clsLanguageLcidCp.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsIniText.h"

namespace tovel {

namespace {

// The English and the Japanese face name of the same font.
struct FontAlias {
    const char* english;
    const char* japanese;
};

constexpr FontAlias kAliases[] = {
    {"MS Gothic", "\xEF\xBC\xAD\xEF\xBC\xB3 \xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF"},                  // ＭＳ ゴシック
    {"MS PGothic", "\xEF\xBC\xAD\xEF\xBC\xB3 \xEF\xBC\xB0\xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF"},     // ＭＳ Ｐゴシック
    {"MS Mincho", "\xEF\xBC\xAD\xEF\xBC\xB3 \xE6\x98\x8E\xE6\x9C\x9D"},                                          // ＭＳ 明朝
    {"MS PMincho", "\xEF\xBC\xAD\xEF\xBC\xB3 \xEF\xBC\xB0\xE6\x98\x8E\xE6\x9C\x9D"},                             // ＭＳ Ｐ明朝
};

constexpr std::array<const char*, 4> kJapaneseFonts = {"MS UI Gothic", "MS PGothic", "MS Gothic", "Arial Unicode MS"};
constexpr std::array<const char*, 3> kWesternFonts = {"MS Sans Serif", "Tahoma", "Arial"};


// The installed font of that name, under the name the list gives it.
std::optional<std::string> Find(const std::string& name, const std::vector<std::string>& installed, bool aliases) {
    for (const auto& font : installed) {
        if (clsWindowsPath::EqualNoCase(font, name)) return font;
    }
    if (!aliases) return std::nullopt;
    for (const auto& alias : kAliases) {
        const char* other = clsWindowsPath::EqualNoCase(name, alias.english) ? alias.japanese : clsWindowsPath::EqualNoCase(name, alias.japanese) ? alias.english : nullptr;
        if (other == nullptr) continue;
        for (const auto& font : installed) {
            if (clsWindowsPath::EqualNoCase(font, other)) return font;
        }
    }
    return std::nullopt;
}

std::optional<std::string> FirstInstalled(std::span<const char* const> wishes, const std::vector<std::string>& installed) {
    for (const char* wish : wishes) {
        if (auto found = Find(wish, installed, true)) return found;
    }
    return std::nullopt;
}

} // namespace

const std::vector<std::string>& clsLanguageFont::Installed() {
    if (!fonts_) fonts_ = Platform().System().Fonts();
    return *fonts_;
}

bool clsLanguageFont::ExistFont(const std::string& name) { return Find(name, Installed(), false).has_value(); }

bool clsLanguageFont::ExistFont2(const std::string& name) { return Find(name, Installed(), true).has_value(); }

LanguageFont clsLanguageFont::ChooseFont(uint32_t lcid, const std::vector<std::string>& installed) {
    const uint32_t codePage = clsLanguageLcidCp::AnsiCodePageFromLcid(lcid);
    LanguageFont font;
    font.charSet = clsLanguageLcidCp::CharsetFromCodePage(codePage);
    if (codePage == 932) {
        font.pointSize = 9;
        if (installed.empty()) {
            font.name = kJapaneseFonts[0];
            return font;
        }
        if (auto found = FirstInstalled(kJapaneseFonts, installed)) {
            font.name = *found;
            return font;
        }
        // No Japanese font: the page opens in the Western font; its Japanese texts cannot show.
        font.pointSize = 8;
    }
    font.name = installed.empty() ? kWesternFonts[0] : FirstInstalled(kWesternFonts, installed).value_or(kWesternFonts[0]);
    return font;
}

LanguageFont clsLanguageFont::GetFont2(uint32_t lcid) {
    LanguageFont font = ChooseFont(lcid, Installed());
    actual_ = font.name;
    return font;
}

std::string clsLanguageFont::GetFont(uint32_t lcid) { return GetFont2(lcid).name; }

} // namespace tovel
