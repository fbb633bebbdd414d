#include "language/clsLanguageLcidCp.h"

#include "platform/clsPlatform.h"

namespace tovel {

namespace {

// Primary language ids (winnt.h LANG_*) of the languages whose code page is not 1252.
struct LanguageCodePage {
    uint16_t primary;
    uint32_t codePage;
};

constexpr LanguageCodePage kCodePages[] = {
    {0x01, 1256},  // Arabic
    {0x02, 1251},  // Bulgarian
    {0x04, 936},   // Chinese (Taiwan and Hong Kong: 950, by sublanguage below)
    {0x05, 1250},  // Czech
    {0x08, 1253},  // Greek
    {0x0D, 1255},  // Hebrew
    {0x0E, 1250},  // Hungarian
    {0x11, 932},   // Japanese
    {0x12, 949},   // Korean
    {0x15, 1250},  // Polish
    {0x18, 1250},  // Romanian
    {0x19, 1251},  // Russian
    {0x1A, 1250},  // Croatian (Serbian Cyrillic: 1251, by sublanguage below)
    {0x1B, 1250},  // Slovak
    {0x1C, 1250},  // Albanian
    {0x1E, 874},   // Thai
    {0x1F, 1254},  // Turkish
    {0x20, 1256},  // Urdu
    {0x22, 1251},  // Ukrainian
    {0x23, 1251},  // Belarusian
    {0x24, 1250},  // Slovenian
    {0x25, 1257},  // Estonian
    {0x26, 1257},  // Latvian
    {0x27, 1257},  // Lithuanian
    {0x29, 1256},  // Farsi
    {0x2A, 1258},  // Vietnamese
    {0x2F, 1251},  // Macedonian
};

} // namespace

uint32_t clsLanguageLcidCp::AnsiCodePageFromLcid(uint32_t lcid) {
    const uint16_t langId = LangIdFromLcid(lcid);
    const uint16_t primary = PrimaryLangId(langId);
    const uint16_t sub = SubLangId(langId);
    if (primary == 0x04 && (sub == 0x01 || sub == 0x03 || sub == 0x05)) return 950;  // Taiwan, Hong Kong, Macao
    if (primary == 0x1A && sub == 0x03) return 1251;                                 // Serbian (Cyrillic)
    for (const auto& entry : kCodePages) {
        if (entry.primary == primary) return entry.codePage;
    }
    return 1252;
}

uint8_t clsLanguageLcidCp::CharsetFromCodePage(uint32_t codePage) {
    switch (codePage) {
    case 1252: return 0;    // ANSI_CHARSET
    case 932: return 128;   // SHIFTJIS_CHARSET
    case 949: return 129;   // HANGUL_CHARSET
    case 936: return 134;   // GB2312_CHARSET
    case 950: return 136;   // CHINESEBIG5_CHARSET
    case 1253: return 161;  // GREEK_CHARSET
    case 1254: return 162;  // TURKISH_CHARSET
    case 1258: return 163;  // VIETNAMESE_CHARSET
    case 1255: return 177;  // HEBREW_CHARSET
    case 1256: return 178;  // ARABIC_CHARSET
    case 1257: return 186;  // BALTIC_CHARSET
    case 1251: return 204;  // RUSSIAN_CHARSET
    case 874: return 222;   // THAI_CHARSET
    case 1250: return 238;  // EASTEUROPE_CHARSET
    default: return 1;      // DEFAULT_CHARSET
    }
}

bool clsLanguageLcidCp::FOnBiDiPlatform(const OsVersion& version, uint32_t ansiCodePage) {
    if (version.platformId == 2 && version.major >= 5) return true;
    return ansiCodePage == 1255 || ansiCodePage == 1256;
}

bool clsLanguageLcidCp::FOnBiDiPlatform() {
    auto& system = Platform().System();
    return FOnBiDiPlatform(system.Version(), system.AnsiCodePage());
}

} // namespace tovel
