// The first welcome page in a scripted run on a machine with a driven clock: on view at
// once, a script line for it acts during the wait, a line for the next page waits its turn,
// an absurd timeout is cut, and a wait begun just before midnight ends.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/posix/clsMachinePlatform.h"
#include "tests/catalogue/CatalogueFixture.h"
#include "ui/console/clsConsoleRenderer.h"
#include "wizard/WizardGlobals.h"
#include "wizard/mdlWizard.h"

namespace tovel {
namespace {

class WelcomePage : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        gLanguage = std::make_unique<clsLanguage>();
    }
    void TearDown() override {
        SetRenderer(nullptr);
        gDialogOrder.reset();
        gLanguage.reset();
        CatalogueFixture::TearDown();
    }
    std::string ClockFile() const {
        return static_cast<clsMachinePlatform&>(Platform()).Machine().Folder() + "/clock";
    }
    void SetClock(const std::string& time) const { std::ofstream(ClockFile()) << time << '\n'; }
    std::string Clock() const {
        std::ifstream in(ClockFile());
        std::string line;
        std::getline(in, line);
        return line;
    }
    // The wizard from its start with the given timeout; only the two welcome pages have
    // controllers, every other page is passed. The script's output.
    std::string Run(const std::string& timeout, const std::string& script) {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\nWelcomeTimeout=" + timeout + "\r\n");
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        std::istringstream in(script);
        std::ostringstream out;
        clsConsoleRenderer renderer(in, out, ConsoleMode::Script);
        SetRenderer(&renderer);
        clsDialogOrder::Hooks hooks;
        hooks.controllers = [](const std::string& name) -> std::unique_ptr<clsPageController> {
            return name == "frmWelcome" || name == "frmWelcome2" ? MakePageController(name) : nullptr;
        };
        gDialogOrder = std::make_unique<clsDialogOrder>(hooks);
        gDialogOrder->Initialize();
        gDialogOrder->NextDialog("");
        SetRenderer(nullptr);
        return out.str();
    }
};

TEST_F(WelcomePage, AHugeTimeoutIsCutAndTheCloseBoxGoesOnAtOnce) {
    SetClock("2026-11-22 12:00:00");
    const std::string out = Run("999999", "close\nclick ContinueBtn\n");
    // The page is printed before the wait, the close box is heard in it, no time passes.
    EXPECT_EQ(out.rfind("== frmWelcome: ", 0), 0U) << out;
    const size_t closed = out.find("> close\n== frmWelcome2: ");
    EXPECT_NE(closed, std::string::npos) << out;
    EXPECT_NE(out.find("> click ContinueBtn\n", closed), std::string::npos) << out;
    EXPECT_EQ(Clock(), "2026-11-22 12:00:00");
    EXPECT_NE(LogText().find("WelcomeTimeout=999999 is too long: the welcome page waits 3600 seconds."), std::string::npos)
        << LogText();

    // A timeout within the bound is not logged; the end of the input closes the page, which
    // goes on as well, and the next page is closed at once.
    SetClock("2026-11-22 12:00:00");
    const std::string ended = Run("3600", "");
    EXPECT_NE(ended.find("# end of input: the close box of frmWelcome\n== frmWelcome2: "), std::string::npos) << ended;
    EXPECT_NE(ended.find("# end of input: frmWelcome2 closed\n"), std::string::npos) << ended;
    EXPECT_EQ(Clock(), "2026-11-22 12:00:00");
    EXPECT_EQ(LogText().find("WelcomeTimeout=3600 "), std::string::npos) << LogText();
}

TEST_F(WelcomePage, ALineForTheNextPageWaitsUntilTheTimeIsUpAlsoAcrossMidnight) {
    SetClock("2026-11-22 23:59:58");
    const std::string out = Run("3", "click ContinueBtn\n");
    EXPECT_EQ(out.find("!"), std::string::npos) << out;   // not a wrong line for the first page
    EXPECT_NE(out.find("  WelcomeLabel\n\n== frmWelcome2: "), std::string::npos) << out;
    EXPECT_NE(out.find("> click ContinueBtn\n"), std::string::npos) << out;
    EXPECT_EQ(Clock(), "2026-11-23 00:00:01.000");
}

} // namespace
} // namespace tovel
