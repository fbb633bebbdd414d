// Language and locale identifier arithmetic against the values Windows defines.
#include <gtest/gtest.h>

#include "language/clsLanguage.h"
#include "language/clsLanguageLcidCp.h"

namespace tovel::test {
namespace {

using L = clsLanguageLcidCp;

TEST(LcidCpTest, LanguageIdsMatchTheWindowsValues) {
    const struct {
        uint16_t primary, sub, id;
    } cases[] = {
        {0x07, 1, 0x0407},   // German (Germany), 1031
        {0x09, 2, 0x0809},   // English (United Kingdom), 2057
        {0x0C, 1, 0x040C},   // French (France), 1036
        {0x0A, 3, 0x0C0A},   // Spanish (modern sort), 3082
        {0x10, 1, 0x0410},   // Italian (Italy), 1040
        {0x11, 1, 0x0411},   // Japanese, 1041
        {0x00, 0, 0x0000},   // LANG_NEUTRAL, SUBLANG_NEUTRAL
        {0x3FF, 0x3F, 0xFFFF},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(L::MakeLangId(c.primary, c.sub), c.id) << c.primary << "/" << c.sub;
        EXPECT_EQ(L::PrimaryLangId(c.id), c.primary);
        EXPECT_EQ(L::SubLangId(c.id), c.sub);
    }
    EXPECT_EQ(L::MakeLangId(0x09, 2), 2057);
    EXPECT_EQ(L::MakeLangId(0x0A, 3), 3082);
    // Bits beyond each field are cut off, as the macros' casts do.
    EXPECT_EQ(L::MakeLangId(0x407, 0), 0x0007);
    EXPECT_EQ(L::MakeLangId(0x07, 0x41), 0x0407);
}

TEST(LcidCpTest, LocaleIdsCarrySortIdAndSortVersion) {
    EXPECT_EQ(L::MakeLcid(0x0407, 0), 0x0407u);
    EXPECT_EQ(L::MakeLcid(0x0407, 1), 0x10407u);        // German phone book sort
    EXPECT_EQ(L::MakeLcid(0x0411, 1), 0x10411u);        // Japanese Unicode sort
    EXPECT_EQ(L::MakeSortLcid(0x0411, 1, 2), 0x210411u);
    EXPECT_EQ(L::LangIdFromLcid(0x210411), 0x0411);
    EXPECT_EQ(L::SortIdFromLcid(0x210411), 1);
    EXPECT_EQ(L::SortVersionFromLcid(0x210411), 2);
    EXPECT_EQ(L::SortIdFromLcid(0x0809), 0);
    // Fields wider than four bits do not run into their neighbours.
    EXPECT_EQ(L::MakeSortLcid(0x0407, 0x1F, 0x1F), 0xFF0407u);
}

TEST(LcidCpTest, ShiftsBehaveLikeA32BitRegister) {
    EXPECT_EQ(L::LLeftShift(1, 0), 1u);
    EXPECT_EQ(L::LLeftShift(1, 31), 0x80000000u);
    EXPECT_EQ(L::LLeftShift(0x80000001u, 1), 2u);
    EXPECT_EQ(L::LLeftShift(1, 32), 0u);
    EXPECT_EQ(L::LLeftShift(1, 100), 0u);
    // Right shifts bring in zeros, never the sign.
    EXPECT_EQ(L::LRightShift(0x80000000u, 31), 1u);
    EXPECT_EQ(L::LRightShift(0xFFFFFFFFu, 28), 0xFu);
    EXPECT_EQ(L::LRightShift(0xFFFFFFFFu, 32), 0u);
    EXPECT_EQ(L::LRightShift(0x210411u, 20), 2u);
}

TEST(LcidCpTest, CodePageAndCharacterSetOfLocales) {
    const struct {
        uint32_t lcid, codePage;
        uint8_t charSet;
    } cases[] = {
        {1031, 1252, 0},   {2057, 1252, 0},   {1036, 1252, 0},   {3082, 1252, 0},  {1040, 1252, 0},
        {1041, 932, 128},  {0x10411, 932, 128},                  {1033, 1252, 0},  {2055, 1252, 0},
        {1049, 1251, 204}, {1045, 1250, 238}, {1028, 950, 136},  {2052, 936, 134}, {1042, 949, 129},
        {1037, 1255, 177}, {1025, 1256, 178}, {1032, 1253, 161}, {1055, 1254, 162}, {1054, 874, 222},
        {3098, 1251, 204},  // Serbian (Cyrillic)
        {2074, 1250, 238},  // Serbian (Latin)
        {0x0436, 1252, 0},  // Afrikaans: not in the table, Western
    };
    for (const auto& c : cases) {
        EXPECT_EQ(L::AnsiCodePageFromLcid(c.lcid), c.codePage) << c.lcid;
        EXPECT_EQ(clsLanguage::ChsFromLocale(c.lcid), c.charSet) << c.lcid;
    }
    EXPECT_EQ(L::CharsetFromCodePage(65001), 1);  // DEFAULT_CHARSET
}

TEST(LcidCpTest, RightToLeftNeedsNt5OrAHebrewOrArabicEdition) {
    const auto os = [](uint32_t platform, uint32_t major, uint32_t minor) {
        OsVersion v;
        v.platformId = platform;
        v.major = major;
        v.minor = minor;
        return v;
    };
    EXPECT_TRUE(L::FOnBiDiPlatform(os(2, 5, 0), 1252));    // Windows 2000
    EXPECT_TRUE(L::FOnBiDiPlatform(os(2, 5, 1), 932));     // Windows XP, Japanese
    EXPECT_TRUE(L::FOnBiDiPlatform(os(2, 5, 2), 1252));    // Server 2003
    EXPECT_FALSE(L::FOnBiDiPlatform(os(2, 4, 0), 1252));   // NT 4
    EXPECT_TRUE(L::FOnBiDiPlatform(os(2, 4, 0), 1255));    // NT 4, Hebrew edition
    EXPECT_FALSE(L::FOnBiDiPlatform(os(1, 4, 10), 1252));  // Windows 98
    EXPECT_TRUE(L::FOnBiDiPlatform(os(1, 4, 90), 1256));   // Windows Me, Arabic edition
    EXPECT_FALSE(L::FOnBiDiPlatform(os(1, 5, 0), 1252));   // a 9x platform id never counts as NT
}

} // namespace
} // namespace tovel::test
