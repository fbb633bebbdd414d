// Languages on machines only the emulated machine has: a Japanese Windows, fonts under their
// Japanese names, and the sample disc's own text files.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "language/clsLanguage.h"
#include "language/clsLanguageFont.h"
#include "tests/machine/MachineFixture.h"

namespace tovel::test {
namespace {

class LanguageMachineTest : public MachineFixture {
protected:
    void Start(const MachineConfig& config) {
        Boot({}, config);
        previous_ = InstallPlatform(std::move(platform_));
        installed_ = true;
    }
    void TearDown() override {
        if (installed_) (void)InstallPlatform(std::move(previous_));
        MachineFixture::TearDown();
    }
    static MachineConfig Japanese() { return *clsMachineProfile::Make("xppro", "ja"); }
    // Puts a file of the source tree's sample disc onto the machine's C:\Disc\.
    static void CopySample(const std::string& relative) {
        std::ifstream in(std::filesystem::path(TOVEL_SOURCE_DIR) / "examples/disc" / relative, std::ios::binary);
        ASSERT_TRUE(in) << relative;
        const std::string bytes((std::istreambuf_iterator<char>(in)), {});
        std::string path = "C:\\Disc\\" + relative;
        std::replace(path.begin(), path.end(), '/', '\\');
        ASSERT_TRUE(Platform().Files().CreateFolder(path.substr(0, path.rfind('\\'))));
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(path, bytes));
    }
    void CheckSampleDisc(uint32_t asciiCodePage);

    std::unique_ptr<clsPlatform> previous_;
    bool installed_ = false;
};

TEST_F(LanguageMachineTest, JapaneseWindowsShowsJapaneseDirectlyAndWesternTextByCopy) {
    Start(Japanese());
    clsLanguage language;
    language.SetLanguageID(1041);
    EXPECT_EQ(language.CaptionEx("Label", "日本語", 2).path, CaptionPath::Direct);
    language.SetLanguageID(1031);
    const auto german = language.CaptionEx("Label", "Zurück", 2);
    EXPECT_EQ(german.path, CaptionPath::ByteCopy);
    EXPECT_EQ(german.bytes, "Zur\xFC" "ck");

    // A Western file is no Shift-JIS even where Shift-JIS is the machine's own code page.
    ASSERT_TRUE(Platform().Files().WriteFileAtomic("C:\\de.txt", "[A]\r\nK=f\xFCr alle\r\n"));
    EXPECT_EQ(clsLanguage::DetectCodePageFromFile("C:\\de.txt"), 1252u);
    ASSERT_TRUE(Platform().Files().WriteFileAtomic("C:\\ascii.txt", "[A]\r\nK=plain\r\n"));
    EXPECT_EQ(clsLanguage::DetectCodePageFromFile("C:\\ascii.txt"), 932u);
}

TEST_F(LanguageMachineTest, FontsListedUnderTheirJapaneseNamesCount) {
    MachineConfig config = Japanese();
    config.fonts = {"Tahoma", "ＭＳ Ｐゴシック"};
    Start(config);
    clsLanguageFont fonts;
    EXPECT_FALSE(fonts.ExistFont("MS PGothic"));
    EXPECT_TRUE(fonts.ExistFont2("MS PGothic"));
    EXPECT_TRUE(fonts.ExistFont2("ＭＳ Ｐゴシック"));
    EXPECT_FALSE(fonts.ExistFont2("MS Gothic"));
    EXPECT_EQ(fonts.GetFont(1041), "ＭＳ Ｐゴシック");
    EXPECT_EQ(fonts.GetFont(2057), "Tahoma");
}

void LanguageMachineTest::CheckSampleDisc(uint32_t asciiCodePage) {
    const char* names[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};
    const uint32_t locales[] = {1031, 2057, 1036, 3082, 1040, 1041};
    for (const char* name : names) {
        CopySample(std::string("Lang/") + name + ".txt");
        for (const char* kind : {"License", "Readme", "Info"}) CopySample(std::string("Docs/") + kind + "_" + name + ".txt");
    }
    std::vector<std::string> problems;
    clsLanguageTextFile::SetReporter([&](const std::string& line, bool problem) {
        if (problem) problems.push_back(line);
    });
    clsLanguage language;
    language.SetTextFolder("C:\\Disc\\");
    for (size_t i = 0; i < 6; ++i) {
        language.SetLanguageID(locales[i]);
        EXPECT_EQ(language.IniFilePath(), std::string("C:\\Disc\\Lang\\") + names[i] + ".txt");
        EXPECT_NE(language.LoadResString(402).find("Tovel Automation Suite 2026"), std::string::npos) << names[i];
        EXPECT_NE(language.Caption("frmWelcome2", "WelcomeLabel1").find("Tovel Automation Suite 2026"), std::string::npos)
            << names[i];

        clsLanguageTextFile file;
        ASSERT_TRUE(file.SetFileName(language.IniFilePath()));
        EXPECT_EQ(file.CodePageNumber(), i == 5 ? 932u : 1252u) << names[i];
        for (const char* kind : {"License", "Readme", "Info"}) {
            const std::string doc = std::string("C:\\Disc\\Docs\\") + kind + "_" + names[i] + ".txt";
            const uint32_t expected = i == 5 ? 932 : i == 1 ? asciiCodePage : 1252;
            EXPECT_EQ(clsLanguage::DetectCodePageFromFile(doc), expected) << doc;
        }
    }
    language.SetLanguageID(1031);
    EXPECT_EQ(language.Caption("frmDone", "DoneInstructions"),
              "Tovel Automation Suite 2026 wurde installiert.\r\nKlicken Sie auf \"Fertig stellen\", um das Setup zu beenden.");
    clsLanguageTextFile japanese;
    ASSERT_TRUE(japanese.SetFileName("C:\\Disc\\Lang\\Japanese.txt"));
    EXPECT_EQ(japanese.LoadIniProperty2("JAPANESE", "AppTitle"), "Tovel Automation Suite 2026 セットアップ");
    EXPECT_EQ(japanese.LoadIniProperty2("Japanese", "ReadMeStartMenuPath"), "Tovel Automation Suite 2026\\お読みください");
    clsLanguageTextFile licence;
    licence.SetCodePage("Detect");
    ASSERT_TRUE(licence.SetFileName("C:\\Disc\\Docs\\License_German.txt"));
    EXPECT_EQ(licence.CodePageNumber(), 1252u);
    EXPECT_TRUE(problems.empty()) << problems.front();
    clsLanguageTextFile::SetReporter(nullptr);
}

TEST_F(LanguageMachineTest, SampleDiscTextsReadRightOnAWesternWindows) {
    Start(clsMachineProfile::Default());
    CheckSampleDisc(1252);
}

TEST_F(LanguageMachineTest, SampleDiscTextsReadRightOnAJapaneseWindows) {
    Start(Japanese());
    CheckSampleDisc(932);
}

} // namespace
} // namespace tovel::test
