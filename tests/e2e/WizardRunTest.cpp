// The sample disc's wizard walked by the real program, as a person would: forwards to the
// end, back and forth, cancelled, in German and in the second form set.
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

using Pages = std::vector<std::string>;

// Through every page of the sample disc to Done (the welcome page goes on by itself), the
// installation aborted before its first product.
const std::string kForwards = std::string(kSampleDiscToInstallation) +
                              "click AbordBtn\n"          // installation
                              "click MessageButton 0\n"   // Yes
                              "click DoneBtn\n";

const Pages kAllPages = {"frmWelcome",        "frmSetupLanguage", "frmWelcome2",    "frmReadme",   "frmSearch",    "frmLicense",
                         "frmInformation",   "frmIdentification", "frmDestination", "frmLanguages", "frmSetupType",
                         "frmBusSystem",     "frmCustomSetup", "frmInstallation", "frmMessage", "frmDone"};

// The installation aborted by the user ends as cancelled.
constexpr int kAborted = 1602 & 0xFF;

class WizardRun : public SetupRun {
protected:
    void SetUp() override {
        SetupRun::SetUp();
        UseSampleDisc();
    }
};

TEST_F(WizardRun, ForwardsThroughEveryPageToDone) {
    ASSERT_EQ(Run({}, {"--create=xppro"}, kForwards), kAborted) << Output();
    Pages shown = PagesShown();
    std::erase(shown, "frmIdentification");   // printed again after each typed text
    Pages expected = kAllPages;
    std::erase(expected, "frmIdentification");
    EXPECT_EQ(shown, expected) << Output();
    EXPECT_EQ(Output().find("\n! "), std::string::npos) << Output();
    EXPECT_TRUE(Logged("Page frmOldVersion skipped "));
    EXPECT_TRUE(Logged("Log file closed. "));
}

TEST_F(WizardRun, BackAndForthAndCancelAnsweredNoThenYes) {
    const std::string script =
        "click ContinueBtn\n"      // setup language
        "click ContinueBtn\n"      // second welcome
        "click BackBtn\n"          // readme: back to the second welcome
        "click BackBtn\n"          // back to the setup language
        "click ContinueBtn\n"
        "click ContinueBtn\n"
        "click ContinueBtn\n"      // readme; search
        "click BackBtn\n"          // licence: back passes the old-version page and the search
        "click CancelBtn\n"        // readme: cancel?
        "click MessageButton 1\n"  // No
        "click CancelBtn\n"
        "click MessageButton 0\n"  // Yes
        "click DoneBtn\n";
    EXPECT_EQ(Run({}, {"--create=xppro"}, script), 1602 & 0xFF) << Output();
    const Pages expected = {"frmWelcome",  "frmSetupLanguage", "frmWelcome2", "frmReadme", "frmWelcome2", "frmSetupLanguage", "frmWelcome2",
                            "frmReadme",        "frmSearch",   "frmLicense", "frmReadme", "frmMessage", "frmReadme",
                            "frmMessage",       "frmDone"};
    EXPECT_EQ(PagesShown(), expected) << Output();
    EXPECT_TRUE(Logged("Setup cancelled on page frmReadme "));
}

TEST_F(WizardRun, GermanAndTheSecondFormSet) {
    std::string settings = ReadDisc("Setups.ini");
    const size_t at = settings.find("[SETTINGS]\r\n");
    ASSERT_NE(at, std::string::npos);
    settings.insert(at + 12, "OldForms=False\r\n");
    WriteDisc("Setups.ini", settings);
    // The frmMSI licence page accepts with its option and Next instead of Yes.
    std::string script = kForwards;
    script.replace(script.find("click YesBtn\n"), 13, "click optYes\nclick ContinueBtn\n");
    ASSERT_EQ(Run({}, {"--create=xppro,de"}, script), kAborted) << Output();
    const Pages shown = PagesShown();
    ASSERT_GE(shown.size(), 2U);
    EXPECT_EQ(shown.front(), "frmMSIWelcome");
    EXPECT_EQ(shown[1], "frmMSISetupLanguage");
    EXPECT_EQ(shown.back(), "frmMSIDone");
    EXPECT_NE(Output().find("Weiter >"), std::string::npos) << Output();
    EXPECT_EQ(Output().find("\n! "), std::string::npos) << Output();
}

// The product tree of the sample disc clicked through: a box cleared, a locked box refused
// with the status line naming why, the tree printed, and the choice logged on Install.
class ProductTreeRun : public WizardRun, public ::testing::WithParamInterface<bool> {};

TEST_P(ProductTreeRun, IsClickedThroughInEitherFormSet) {
    const bool oldForms = GetParam();
    std::string disc = ReadDisc("Setups.ini");
    disc.insert(disc.find("[SETTINGS]\r\n") + 12, oldForms ? "OldForms=True\r\n" : "OldForms=False\r\n");
    WriteDisc("Setups.ini", disc);
    std::string script = kForwards;
    if (!oldForms) script.replace(script.find("click YesBtn\n"), 13, "click optYes\nclick ContinueBtn\n");
    const std::string products = "click ContinueBtn\nclick AbordBtn\n";   // products, then installation
    script.replace(script.find(products), products.size(),
                   "focus DESIGNER\ntoggle DESIGNER\ntoggle TOVBASE\nprint\n" + products);
    ASSERT_EQ(Run({}, {"--create=xppro"}, script), kAborted) << Output();
    EXPECT_NE(Output().find(oldForms ? "== frmCustomSetup" : "== frmMSICustomSetup"), std::string::npos) << Output();
    EXPECT_NE(Output().find("  >   [ ] Tovel Designer 2026"), std::string::npos) << Output();
    EXPECT_NE(Output().find("[#] selected, locked"), std::string::npos) << Output();
    EXPECT_NE(Output().find("cannot be changed"), std::string::npos) << Output();
    EXPECT_EQ(Output().find("\n! "), std::string::npos) << Output();
    const std::string log = ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_NE(log.find("Component DESIGNER cleared by the user."), std::string::npos) << log;
    EXPECT_NE(log.find("Component TOVBASE is locked"), std::string::npos) << log;
    const size_t chosen = log.find("Selected products: TOVBASE");
    ASSERT_NE(chosen, std::string::npos) << log;
    EXPECT_EQ(log.substr(chosen, log.find('\r', chosen) - chosen).find("DESIGNER"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(BothSets, ProductTreeRun, ::testing::Bool());

} // namespace
} // namespace tovel::test
