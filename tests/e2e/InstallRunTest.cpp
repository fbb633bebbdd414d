// The sample disc installed by the real program, its products being the stand-in setup: the
// wizard walked, the products installed one after the other, and a restart in the middle
// resumed by the machine's boot.
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

// Through the sample disc's pages with their defaults and the Document Viewer ticked (its
// Windows Installer package cannot start on the machine: one product that fails), then the
// installation to its end.
std::string InstallScript() {
    std::string script = kSampleDiscToInstallation;
    const std::string products = "click ContinueBtn\n";
    script.insert(script.rfind(products), "toggle DOCVIEW\n");
    return script + "wait end\n";
}
const std::string kInstall = InstallScript();

constexpr int kRestartStarted = 194;          // the machine switched off by a restart
constexpr int kRestartLater = 3010 & 0xFF;

class InstallRun : public SetupRun {
protected:
    void SetUp() override {
        SetupRun::SetUp();
        UseSampleDisc();
        UseFakeSetupsOnADrivenClock();
    }
    [[nodiscard]] std::string FakeLog() const { return ReadMachine("drive_c/FAKESETUP.LOG"); }
    [[nodiscard]] std::string Hklm(const std::string& fragment) const {
        const std::string registry = ReadMachine("registry.reg");
        return registry.find(fragment) != std::string::npos ? fragment : "(not in registry.reg)";
    }
};

TEST_F(InstallRun, TheSampleDiscIsInstalledProductByProduct) {
    ASSERT_EQ(Run({}, {"--create=xppro"}, kInstall + "choose RestartWindowsNo\nclick DoneBtn\n"),
              kRestartLater)
        << Output();
    const auto pages = PagesShown();
    ASSERT_GE(pages.size(), 2U);
    EXPECT_EQ(pages[pages.size() - 2], "frmInstallation");
    EXPECT_EQ(pages.back(), "frmDone");
    // Each chosen product's setup ran, in the order of the catalogue, and installed.
    const std::string fake = FakeLog();
    EXPECT_LT(fake.find("TOVBASE: start"), fake.find("LICMGR: start")) << fake;
    EXPECT_LT(fake.find("LICMGR: start"), fake.find("DESIGNER: start")) << fake;
    EXPECT_EQ(fake.find("HISTSRV:"), std::string::npos);   // not chosen
    EXPECT_FALSE(ReadMachine("drive_c/Program Files/Tovel/Base Services/README.TXT").empty());
    EXPECT_EQ(Hklm("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tovel Base Services]"),
              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tovel Base Services]");
    EXPECT_TRUE(Logged("Aufruf mit Parameter: D:\\Products\\Base Services\\Setup\\Setup.exe /lang=2057 /silent "));
    // The viewer's Windows Installer is not on this machine: the Done page names it.
    EXPECT_TRUE(Logged("Error: Could not start program: C:\\WINDOWS\\system32\\msiexec.exe /i "
                       "\"D:\\Products\\Document Viewer\\DocViewer.msi\" /qb ProductLanguage=2057 "));
    EXPECT_NE(Output().find("Not all products could be installed."), std::string::npos) << Output();
    // The licence manager asks for a restart at the end, which the user leaves for later.
    EXPECT_NE(Output().find("(o) Yes, restart the computer now."), std::string::npos) << Output();
    EXPECT_FALSE(std::filesystem::exists(Machine() / "drive_c" / "OPFILE.TXT"));
    EXPECT_TRUE(Logged("Log file closed. "));
}

TEST_F(InstallRun, ARestartInTheMiddleIsResumedByTheBootAndTheRestInstalled) {
    // The licence manager needs Windows restarted before the next product.
    std::string behaviour = ReadDisc("Products/License Manager/Setup/FAKESETUP.INI");
    const size_t at = behaviour.find("RebootRequested=1");
    ASSERT_NE(at, std::string::npos) << behaviour;
    behaviour.replace(at, 17, "RebootRequested=2");
    WriteDisc("Products/License Manager/Setup/FAKESETUP.INI", behaviour);

    ASSERT_EQ(Run({}, {"--create=xppro"}, kInstall + "click MessageButton 0\n"), kRestartStarted) << Output();
    EXPECT_NE(Output().find("The installation will carry on automatically after the restart."), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(Machine() / "drive_c" / "INSTDUMP.TMP"));
    EXPECT_NE(ReadMachine("registry.reg").find("\"ZZZ_TovelSetup\"="), std::string::npos);
    EXPECT_EQ(FakeLog().find("DESIGNER:"), std::string::npos);

    // The boot runs the setup from RunOnce; it goes on after the licence manager.
    ASSERT_EQ(Run({}, {"--boot"}, "wait end\nclick DoneBtn\n"), 0) << Output();
    EXPECT_EQ(PagesShown(), (std::vector<std::string>{"frmInstallation", "frmDone"})) << Output();
    // The page shows what was done before the restart.
    EXPECT_NE(Output().find("Installed  StatusLabel2(0)"), std::string::npos) << Output();
    EXPECT_NE(Output().find("Failed  StatusLabel2(1)"), std::string::npos) << Output();
    EXPECT_NE(Output().find("Installed  StatusLabel2(2)"), std::string::npos) << Output();
    const std::string fake = FakeLog();
    size_t licence = 0;
    for (size_t from = 0; (from = fake.find("LICMGR: start", from)) != std::string::npos; ++from) ++licence;
    EXPECT_EQ(licence, 1U) << fake;
    EXPECT_NE(fake.find("DESIGNER: start"), std::string::npos) << fake;
    EXPECT_NE(fake.find("SAMPLES: start"), std::string::npos) << fake;
    EXPECT_FALSE(std::filesystem::exists(Machine() / "drive_c" / "INSTDUMP.TMP"));
    EXPECT_EQ(ReadMachine("registry.reg").find("\"ZZZ_TovelSetup\"="), std::string::npos);
    // The product that failed before the restart is still reported.
    EXPECT_NE(Output().find("Tovel Document Viewer"), std::string::npos) << Output();
}

} // namespace
} // namespace tovel::test
