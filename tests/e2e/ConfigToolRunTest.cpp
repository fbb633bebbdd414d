// The configuration tool as a disc author starts it: the real tovelsetup with /showconfig on
// the sample disc, driven by a script through its three parts.
#include <string>

#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

class ConfigToolRun : public SetupRun {};

TEST_F(ConfigToolRun, PageTesterDiscCheckAndSettingsOnTheSampleDisc) {
    UseSampleDisc();
    const std::string before = ReadDisc("Setups.ini");
    const std::string script =
        "click PageTesterBtn\n"
        "select LanguageList = German\n"
        "select PageList = frmLicense\n"
        "click ShowBtn\n"
        "click NoBtn\n"                     // under test: closes the page, asks nothing
        "choose FormSetOption 1\n"
        "select LanguageList = English\n"
        "select PageList = frmMSIWelcome\n"
        "click ShowBtn\n"
        "click cmdClose\n"
        "select PageList = frmInstallation\n"
        "click ShowBtn\n"
        "close\n"
        "click CloseBtn\n"
        "click DiscCheckBtn\n"
        "click CloseBtn\n"
        "click SettingsBtn\n"
        "select KeyList = [SETTINGS] Level\n"
        "type ValueText = 4\n"
        "click WriteBtn\n"
        "click CloseBtn\n"
        "click CloseBtn\n";
    ASSERT_EQ(Run({"/showconfig"}, {}, script), 0) << Output();
    const auto pages = PagesShown();
    const std::vector<std::string> expected = {"frmConfigTool", "frmPageTester", "frmLicense", "frmPageTester", "frmMSIWelcome",
                                               "frmPageTester", "frmInstallation", "frmPageTester", "frmConfigTool",
                                               "frmDiscCheck", "frmConfigTool", "frmSettings", "frmConfigTool"};
    EXPECT_EQ(pages, expected) << Output();
    // The licence in German, the sample disc's, with the test flag: no cancel question.
    EXPECT_EQ(Output().find("== frmMessage"), std::string::npos) << Output();
    EXPECT_NE(Output().find("frmLicense was shown in German and closed."), std::string::npos) << Output();
    // The settings view wrote the one value and nothing else; nothing was installed.
    std::string changed = before;
    changed.replace(changed.find("\r\nLevel=3\r\n"), 11, "\r\nLevel=4\r\n");
    EXPECT_EQ(ReadDisc("Setups.ini"), changed);
    EXPECT_TRUE(Logged("Page tester: frmInstallation in English "));
    EXPECT_FALSE(Logged("Installation:"));
    EXPECT_TRUE(Logged("Configuration tool closed. "));
}

} // namespace
} // namespace tovel::test
