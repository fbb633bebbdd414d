// Code pages on both builds: iconv on Linux, the Windows conversion functions under Wine.
#include <gtest/gtest.h>

#include "common/clsCodePage.h"

namespace tovel {
namespace {

const std::string kGerman = "Gr\xC3\xBC\xC3\x9F" "e \xC3\x84pfel \xC3\xB6l \xE2\x82\xAC";  // Grüße Äpfel öl €
const std::string kGerman1252 = "Gr\xFC\xDF" "e \xC4pfel \xF6l \x80";
const std::string kJapanese = "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE3\x81\xAE\xE3\x82\xBB\xE3\x83\x83\xE3\x83\x88"
                              "\xE3\x82\xA2\xE3\x83\x83\xE3\x83\x97";  // 日本語のセットアップ
const std::string kJapanese932 = "\x93\xFA\x96\x7B\x8C\xEA\x82\xCC\x83\x5A\x83\x62\x83\x67\x83\x41\x83\x62\x83\x76";

TEST(CodePage, WesternAndJapaneseRoundTrip) {
    EXPECT_EQ(clsCodePage::ToUtf8(kGerman1252, 1252).value_or("?"), kGerman);
    EXPECT_EQ(clsCodePage::FromUtf8(kGerman, 1252).value_or("?"), kGerman1252);
    EXPECT_EQ(clsCodePage::ToUtf8(kJapanese932, 932).value_or("?"), kJapanese);
    EXPECT_EQ(clsCodePage::FromUtf8(kJapanese, 932).value_or("?"), kJapanese932);
    // Central European: ł and ő exist in 1250 but not in 1252.
    const std::string polish = "\xC5\x82\xC3\xB3\xC5\x91";  // łóő
    EXPECT_EQ(clsCodePage::FromUtf8(polish, 1250).value_or("?"), "\xB3\xF3\xF5");
    EXPECT_EQ(clsCodePage::ToUtf8("\xB3\xF3\xF5", 1250).value_or("?"), polish);
    EXPECT_EQ(clsCodePage::FromUtf8(polish, 1252).value_or("!"), "?\xF3?");
}

TEST(CodePage, UnicodeFormsAndBadInput) {
    EXPECT_EQ(clsCodePage::ToUtf8(std::string("G\0r\0\xFC\0", 6), kCodePageUtf16Le).value_or("?"), "Gr\xC3\xBC");
    EXPECT_EQ(clsCodePage::FromUtf8(kJapanese, kCodePageUtf16Le).value_or("").size(), 20u);
    EXPECT_EQ(clsCodePage::ToUtf8(*clsCodePage::FromUtf8(kJapanese, kCodePageUtf16Le), kCodePageUtf16Le), kJapanese);
    EXPECT_TRUE(clsCodePage::IsUtf8(kJapanese));
    EXPECT_FALSE(clsCodePage::IsUtf8(kGerman1252));
    EXPECT_FALSE(clsCodePage::IsUtf8("\xC0\xAF"));  // overlong
    EXPECT_FALSE(clsCodePage::IsUtf8("\xED\xA0\x80"));  // surrogate
    EXPECT_FALSE(clsCodePage::ToUtf8("\x82", 932).has_value());  // a lead byte without its trail
    EXPECT_FALSE(clsCodePage::FromUtf8(kGerman1252, 1252).has_value());  // not UTF-8
    EXPECT_FALSE(clsCodePage::ToUtf8("abc", 4242).has_value());
    EXPECT_EQ(clsCodePage::ToUtf8("", 1252).value_or("?"), "");
}

} // namespace
} // namespace tovel
