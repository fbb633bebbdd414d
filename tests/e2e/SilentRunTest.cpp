// Record and replay with the real program: a walk through the sample disc in record mode
// writes the answer file, and a silent run on a fresh machine installs the same products to
// the same places without reading a line of input.
#include "tests/e2e/ProductDisc.h"

namespace tovel::test {
namespace {

constexpr int kRestartStarted = 194;          // the machine switched off by a restart

// The notice that recording is on, the sample disc's pages with the Web Panel ticked and the
// Designer cleared, the recording's message, the installation run and the Done page.
std::string RecordScript() {
    std::string script = std::string("enter\n") + kSampleDiscToInstallation;
    const std::string products = "click ContinueBtn\n";
    script.insert(script.rfind(products), "toggle WEBPANEL\ntoggle DESIGNER\n");
    return script + "enter\nwait end\nclick DoneBtn\n";
}

class SilentRun : public SetupRun {
protected:
    void SetUp() override {
        SetupRun::SetUp();
        UseSampleDisc();
        UseFakeSetupsOnADrivenClock();
    }

    // Records on a machine of its own, installing as it goes; the answer file's bytes.
    std::string Record() {
        EXPECT_EQ(Run({"/record"}, {"--create=xppro"}, RecordScript()), 0) << Output();
        EXPECT_NE(Output().find("The recording is finished. The file Tovel_AutoFile.ini was created in the windowsfolder."),
                  std::string::npos)
            << Output();
        recordedFakeLog_ = FakeLog();
        return ReadMachine("drive_c/WINDOWS/Tovel_Auto.ini");
    }
    void FreshMachine() {
        std::error_code ec;
        std::filesystem::remove_all(Machine(), ec);
        ASSERT_FALSE(ec) << ec.message();
        UseFakeSetupsOnADrivenClock();
    }
    [[nodiscard]] std::string FakeLog() const { return ReadMachine("drive_c/FAKESETUP.LOG"); }
    // The silent run did what the recorded one did: the same setups, with the same
    // requests, installing to the same folders.
    void ExpectSameInstallation() const {
        EXPECT_EQ(FakeLog(), recordedFakeLog_);
        EXPECT_NE(FakeLog().find("WEBPANEL: start"), std::string::npos) << FakeLog();
        EXPECT_EQ(FakeLog().find("DESIGNER:"), std::string::npos) << FakeLog();
        EXPECT_TRUE(Logged("Erfolgreich Tovel_Auto.ini eingelesen. ")) << Output();
        EXPECT_EQ(Output().find("# end of input"), std::string::npos) << "no page waited for anyone\n" << Output();
        EXPECT_EQ(Output().find("line skipped"), std::string::npos) << "no line of input was read\n" << Output();
    }

    std::string recordedFakeLog_;
};

TEST_F(SilentRun, ARecordedWalkIsReplayedFromAnAnswerFileNamedOnTheCommandLine) {
    const std::string answers = Record();
    ASSERT_NE(answers.find("[WEBPANEL]\r\nDestinationDrive=C:\r\nSelected=True"), std::string::npos) << answers;

    // The Web Panel now asks for a restart at its end.
    WriteDisc("Products/Web Panel/Setup/FAKESETUP.INI",
              ReadDisc("Products/Web Panel/Setup/FAKESETUP.INI") + "RebootRequested=1\r\n");
    const std::string asked = "WEBPANEL: results SetupSucceeded=1 RebootRequested=";
    const size_t result = recordedFakeLog_.find(asked);
    ASSERT_NE(result, std::string::npos) << recordedFakeLog_;
    recordedFakeLog_.replace(result + asked.size(), 1, "1");

    FreshMachine();
    WriteMachine("drive_c/KIT/Tovel_Auto.ini", answers);
    // Lines that would cancel any page: a silent run never reads them.
    ASSERT_EQ(Run({"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"}, {"--create=xppro"}, "esc\nclose\nclick CancelBtn\n"),
              kRestartStarted)
        << Output();
    ExpectSameInstallation();
    EXPECT_TRUE(Logged("Silentpath=C:\\KIT\\Tovel_Auto.ini ")) << Output();
    EXPECT_TRUE(Logged("ReadAutoIni with Path=C:\\KIT\\Tovel_Auto.ini ")) << Output();
    // The restart is carried out on the Done page, which a silent run leaves as it comes.
    EXPECT_TRUE(Logged("Restart Windows. ")) << Output();
    EXPECT_NE(ReadMachine("machine.ini").find("Power=off"), std::string::npos);
}

TEST_F(SilentRun, AnAnswerFileOnTheDiscOrInWindowsWithABareSwitchIsReplayedToo) {
    const std::string answers = Record();
    FreshMachine();
    WriteDisc("Tovel_Auto.ini", answers);
    ASSERT_EQ(Run({"/log"}, {"--create=xppro"}), 0) << Output();
    ExpectSameInstallation();
    EXPECT_TRUE(Logged("Readautoini Fullpath=D:\\Tovel_Auto.ini ")) << Output();

    std::filesystem::remove(Disc() / "Tovel_Auto.ini");
    FreshMachine();
    WriteMachine("drive_c/WINDOWS/Tovel_Auto.ini", answers);
    ASSERT_EQ(Run({"/SILENT", "/log"}, {"--create=xppro"}), 0) << Output();
    ExpectSameInstallation();
    EXPECT_TRUE(Logged("Readautoini Fullpath=C:\\WINDOWS\\Tovel_Auto.ini ")) << Output();
}

TEST_F(SilentRun, AMissingSetupIsAnsweredWithCancelAndSkipped) {
    std::string answers = "[GENERAL]\r\nIdName=Jane Roe\r\n[TOVBASE]\r\nSelected=True\r\n[WEBPANEL]\r\nSelected=True\r\n";
    for (const char* other : {"DOCVIEW", "ETHDRV", "PBDRV", "SER9X", "LICMGR", "OPCSRV", "DESIGNER", "HISTSRV", "HMIRT",
                              "ALARMMGR", "REPORT", "SAMPLES"})
        answers += std::string("[") + other + "]\r\nSelected=False\r\n";
    WriteDisc("Tovel_Auto.ini", answers);
    std::filesystem::remove(Disc() / "Products" / "Web Panel" / "Setup" / "WebSetup.exe");

    EXPECT_EQ(Run({"/log"}, {"--create=xppro"}), 0) << Output();
    EXPECT_NE(FakeLog().find("TOVBASE: start"), std::string::npos) << FakeLog();
    EXPECT_EQ(FakeLog().find("WEBPANEL:"), std::string::npos) << FakeLog();
    EXPECT_TRUE(Logged("File Not Found: D:\\Products\\Web Panel\\Setup\\WebSetup.exe ")) << Output();
    // The disc prompt's default button is Cancel: nobody is asked for ever.
    EXPECT_TRUE(Logged("Sample Disc 1 [OK/Cancel] answer: Cancel (silent) ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_TRUE(Logged("Product WEBPANEL is skipped. ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
}

// A silent installation whose products ask for a restart in the middle goes on by itself after
// each boot, silent and logging as it was started (the disc does not ask for the log), and
// the part after the last restart ends with the status of the whole run.
using SilentResume = ProductDiscRun;

TEST_F(SilentResume, EachRestartIsFollowedBySilentlyAndTheLastPartEndsWithTheRunsStatus) {
    ProductDisc disc;
    disc.products = 5;
    disc.createLog = false;
    for (const char* restart : {"PROD02", "PROD04"}) disc.behaviour[restart] = "RebootRequested=2\r\n";
    WriteProductDisc(disc);
    UseFakeSetupsOnADrivenClock();
    WriteMachine("drive_c/KIT/Tovel_Auto.ini", "[GENERAL]\r\nIdName=Jane Roe\r\n");
    // Lines that would cancel any page: no part of the run reads them.
    const std::string cancel = "esc\nclose\nclick CancelBtn\n";
    ASSERT_EQ(Run({"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"}, {"--create=xppro"}, cancel), kRestartStarted) << Output();
    EXPECT_EQ(FakeLog().find("PROD03:"), std::string::npos) << FakeLog();

    // The second part restarts once more after PROD04; the third ends with 0 (done).
    for (const int status : {kRestartStarted, 0}) {
        ASSERT_EQ(Run({}, {"--boot"}, cancel), 0) << Output();
        EXPECT_NE(Output().find("ZZZ_TovelSetup: D:\\TovelSetup.EXE (exit code " + std::to_string(status) + ")"),
                  std::string::npos)
            << Output();
        EXPECT_EQ(Output().find("# end of input"), std::string::npos) << "no page waited for anyone\n" << Output();
        EXPECT_EQ(Output().find("line skipped"), std::string::npos) << "no line of input was read\n" << Output();
        EXPECT_TRUE(Logged("Read Dumpfile Path = C:\\INSTDUMP.TMP ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
        EXPECT_TRUE(Logged("Erfolgreich Tovel_Auto.ini eingelesen. ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    }
    EXPECT_TRUE(Logged("Page frmDone ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    for (int i = 1; i <= disc.products; ++i) EXPECT_EQ(FakeLogCount(ProductCode(i) + ": results"), 1U) << FakeLog();
    EXPECT_FALSE(std::filesystem::exists(Machine() / "drive_c" / "INSTDUMP.TMP"));
    EXPECT_EQ(ReadMachine("machine.ini").find("Power=off"), std::string::npos);
}

} // namespace
} // namespace tovel::test
