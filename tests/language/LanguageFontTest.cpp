// Fonts for the languages, from the fonts the machine has.
#include <gtest/gtest.h>

#include "language/clsLanguageFont.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {
namespace {

const std::vector<std::string> kWestern = {"Arial", "Courier New", "MS Sans Serif", "Tahoma", "Times New Roman"};
// What a Japanese Windows lists: some faces only under their Japanese names.
const std::vector<std::string> kJapanese = {"Arial", "MS Sans Serif", "Tahoma", "MS UI Gothic",
                                            "ＭＳ ゴシック", "ＭＳ Ｐゴシック", "ＭＳ 明朝"};

TEST(LanguageFontChoiceTest, EachLanguageGetsAFontTheMachineHas) {
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, kJapanese), (LanguageFont{"MS UI Gothic", 128, 9}));
    EXPECT_EQ(clsLanguageFont::ChooseFont(1031, kJapanese), (LanguageFont{"MS Sans Serif", 0, 8}));
    EXPECT_EQ(clsLanguageFont::ChooseFont(2057, kWestern), (LanguageFont{"MS Sans Serif", 0, 8}));

    // Without "MS UI Gothic" the next Japanese font, under the name the machine lists.
    std::vector<std::string> withoutUi = kJapanese;
    std::erase(withoutUi, "MS UI Gothic");
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, withoutUi).name, "ＭＳ Ｐゴシック");
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, {"Arial", "MS Gothic"}).name, "MS Gothic");
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, {"Arial Unicode MS", "Arial"}).name, "Arial Unicode MS");
    // No Japanese font at all: the page still opens, in the Western font.
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, kWestern), (LanguageFont{"MS Sans Serif", 128, 8}));
    // Western fallbacks, and letter case as the machine writes it.
    EXPECT_EQ(clsLanguageFont::ChooseFont(1036, {"TAHOMA", "Arial"}).name, "TAHOMA");
    EXPECT_EQ(clsLanguageFont::ChooseFont(1036, {"Verdana"}).name, "MS Sans Serif");
    // Nothing known about the machine: the first wish.
    EXPECT_EQ(clsLanguageFont::ChooseFont(1041, {}).name, "MS UI Gothic");
    EXPECT_EQ(clsLanguageFont::ChooseFont(1049, {}), (LanguageFont{"MS Sans Serif", 204, 8}));
}

using LanguageFontTest = BedFixture;

TEST_F(LanguageFontTest, FontsComeFromTheMachine) {
    const auto installed = Platform().System().Fonts();
    ASSERT_FALSE(installed.empty());
    clsLanguageFont fonts;
    EXPECT_TRUE(fonts.ExistFont(installed.front()));
    EXPECT_FALSE(fonts.ExistFont2("No Such Font Anywhere"));
    const LanguageFont japanese = fonts.GetFont2(1041);
    EXPECT_EQ(japanese, clsLanguageFont::ChooseFont(1041, installed));
    EXPECT_EQ(fonts.ActualFont(), japanese.name);
}

} // namespace
} // namespace tovel::test
