// The sample disc installed by the real program, its products being the stand-in setup: the
// wizard walked, the products installed one after the other, and a restart in the middle
// resumed by the machine's boot.
#include "tests/e2e/ProductDisc.h"

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

// The run's rules on a disc of small products, by the real program: what stops it, what it
// skips, what it waits for, and the restart it asks for itself.
class ProductRun : public ProductDiscRun {
protected:
    static constexpr int kFailed = 1603 & 0xFF;
    static constexpr int kCancelled = 1602 & 0xFF;

    /// The machine time of each setup's start, in seconds since midnight, in the log's order.
    [[nodiscard]] std::vector<int> SetupStarts() const {
        std::vector<int> starts;
        for (const auto& line : LogLines()) {
            int h = 0, m = 0, sec = 0;
            if (std::sscanf(line.c_str(), "TimeStamp - Start: %d:%d:%d", &h, &m, &sec) == 3) starts.push_back(h * 3600 + m * 60 + sec);
        }
        return starts;
    }
};

TEST_F(ProductRun, AProductItsVersionActionsRefuseIsSkippedAndACriticalFailureStopsTheRest) {
    ProductDisc disc;
    disc.products = 4;
    disc.general["PROD02"] = "SSFVersion=5.2\r\n";
    disc.sections["PROD02"] = "[VERSIONS]\r\nRegPath1=HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\P02\r\nRegKey1=Version\r\n"
                              "Version1=1.0\r\nVersion1Action1=$DoNotInstall$\r\n";
    disc.general["PROD03"] = "IsCriticalComponent=True\r\n";
    disc.behaviour["PROD03"] = "SetupSucceeded=0\r\n";
    WriteProductDisc(disc);
    UseFakeSetupsOnADrivenClock();
    ASSERT_EQ(Run({}, {"--create=xppro", "--plan"}), 0) << Output();   // the machine, with PROD02 on it
    WriteMachine("registry.reg", ReadMachine("registry.reg") + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\P02]\r\n\"Version\"=\"1.0\"\r\n\r\n");

    // The page of installed versions lists it before the products are chosen.
    std::string script = kProductDiscToInstallation;
    script.insert(script.find('\n') + 1, "click OKBtn\n");
    ASSERT_EQ(Run({}, {}, script + "wait end\nclick DoneBtn\n"), kFailed) << Output();
    EXPECT_TRUE(Logged("Product PROD02 is skipped. ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(FakeLog().find("PROD02:"), std::string::npos) << FakeLog();
    EXPECT_NE(FakeLog().find("PROD03: results SetupSucceeded=0"), std::string::npos) << FakeLog();
    EXPECT_EQ(FakeLog().find("PROD04:"), std::string::npos) << FakeLog();
    EXPECT_EQ(PagesShown().back(), "frmDone") << Output();
}

// The setups end on the host's time while the driven clock's ticks take none, so each run
// asks its question while the first setup may still run and then lets the run go to its end.
class ProductRunAbort : public ProductRun {
protected:
    /// Three products that each ask for the waiting dialog: a setup without windows then counts
    /// as running for 20 ticks after its start, so the products start 40 seconds apart.
    int RunAnsweringAbort(int button) {
        ProductDisc disc;
        disc.products = 3;
        for (int i = 1; i <= disc.products; ++i) disc.general[ProductCode(i)] = "ShowDialogWait=True\r\n";
        WriteProductDisc(disc);
        UseFakeSetupsOnADrivenClock();
        return Run({}, {"--create=xppro"},
                   std::string(kProductDiscToInstallation) + "wait 1\nclick AbordBtn\nclick MessageButton " +
                       std::to_string(button) + "\nwait end\nclick DoneBtn\n");
    }
    static constexpr int kDone = 0;
};

TEST_F(ProductRunAbort, AnAbortAnsweredNoGoesOnWithEveryProduct) {
    ASSERT_EQ(RunAnsweringAbort(1), kDone) << Output();
    EXPECT_TRUE(Logged("clsControlInstallation AbordBtn_Click nach unload me ")) << Output();
    const auto starts = SetupStarts();
    ASSERT_EQ(starts.size(), 3U) << ReadMachine("drive_c/TOVELSETUP.LOG");
    // At least 20 ticks each; more when a setup still runs on the host's time after them.
    EXPECT_GE(starts[1] - starts[0], 40);
    EXPECT_GE(starts[2] - starts[1], 40);
}

TEST_F(ProductRunAbort, AnAbortAnsweredYesStartsNoOtherSetup) {
    ASSERT_EQ(RunAnsweringAbort(0), kCancelled) << Output();
    EXPECT_EQ(SetupStarts().size(), 1U) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(FakeLog().find("PROD02:"), std::string::npos) << FakeLog();
    EXPECT_EQ(PagesShown().back(), "frmDone") << Output();
}

TEST_F(ProductRun, ASetupThatHandsOverToAProcessWithAnInstallShieldWindowRunsUntilTheWindowCloses) {
    // On the host's clock: the second process keeps its window for three real seconds, over
    // ticks of two, while the first ends at once.
    ProductDisc disc;
    disc.products = 2;
    disc.behaviour["PROD01"] = "SecondProcess=True\r\nWindowClass=InstallShield_Win\r\nWindowTitle=Setup\r\nSeconds=3\r\n";
    WriteProductDisc(disc);
    const std::string path = std::string(TOVEL_FAKESETUP_DIR) + ":" + std::getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    ASSERT_EQ(Run({}, {"--create=xppro"}, std::string(kProductDiscToInstallation) + "wait end\nclick DoneBtn\n"), 0)
        << Output();
    const std::string fake = FakeLog();
    ASSERT_NE(fake.find("PROD01: handed over to process"), std::string::npos) << fake;
    EXPECT_LT(fake.rfind("PROD01: exit"), fake.find("PROD02: start")) << fake;
}

TEST_F(ProductRun, AWrongDcomDefaultRestartsBeforeTheFirstProductAndTheResumeInstallsThemAll) {
    ProductDisc disc;
    disc.products = 2;
    disc.settings = "CheckDCOM=True\r\n";
    WriteProductDisc(disc);
    UseFakeSetupsOnADrivenClock();
    ASSERT_EQ(Run({}, {"--create=xppro"}, std::string(kProductDiscToInstallation) + "wait end\nclick MessageButton 0\n"),
              kRestartStarted)
        << Output();
    EXPECT_TRUE(Logged("Changed to LegacyImpersonationLevel=2 ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_TRUE(FakeLog().empty()) << FakeLog();
    EXPECT_NE(ReadMachine("drive_c/INSTDUMP.TMP").find("\r\nRunningSetupIndex=0\r\n"), std::string::npos);

    ASSERT_EQ(Run({}, {"--boot"}, "wait end\nclick DoneBtn\n"), 0) << Output();
    EXPECT_NE(Output().find("(exit code 0)"), std::string::npos) << Output();
    for (int i = 1; i <= disc.products; ++i) EXPECT_EQ(FakeLogCount(ProductCode(i) + ": results"), 1U) << FakeLog();
    EXPECT_FALSE(Logged("Reboot ")) << "the value is right now";
}

} // namespace
} // namespace tovel::test
