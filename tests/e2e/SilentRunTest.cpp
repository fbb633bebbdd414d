// Record and replay with the real program: a walk through the sample disc in record mode
// writes the answer file, and a silent run on a fresh machine installs the same products to
// the same places without reading a line of input. Every silent run gets no input at all: a
// page that waited for someone would end the run as one without answers (1602), and the
// exit status checked fails the test.
#include "platform/posix/clsMachineRegistry.h"
#include "tests/e2e/ProductDisc.h"

#include <sstream>
#include <utility>
#include <vector>

namespace tovel::test {
namespace {

constexpr int kRestartStarted = 194;          // the machine switched off by a restart
constexpr int kFailed = 1603 & 0xFF;

// The answer file with the value of `key` in its first line for it (after `from`) replaced.
std::string WithValue(std::string answers, const std::string& key, const std::string& value, const std::string& from = "") {
    const size_t start = answers.find("\r\n" + key + "=", answers.find(from)) + 2 + key.size() + 1;
    answers.replace(start, answers.find("\r\n", start) - start, value);
    return answers;
}

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
    // Replays the answer file from C:\KIT on a fresh machine of this profile; the exit status.
    int Replay(const std::string& answers, const std::string& profile, std::vector<std::string> switches = {}) {
        FreshMachine();
        WriteMachine("drive_c/KIT/Tovel_Auto.ini", answers);
        switches.insert(switches.begin(), {"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"});
        return Run(switches, {"--create=" + profile});
    }
    [[nodiscard]] std::string FakeLog() const { return ReadMachine("drive_c/FAKESETUP.LOG"); }
    // The recorded run's setups without those of `product`, asked in the machine's language.
    [[nodiscard]] std::string RecordedWithout(const std::string& product, const std::string& locale = "2057") const {
        std::string expected;
        std::istringstream recorded(recordedFakeLog_);
        for (std::string line; std::getline(recorded, line);) {
            if (!product.empty() && line.rfind(product + ":", 0) == 0) continue;
            const size_t lang = line.find("/lang=2057");
            if (lang != std::string::npos) line.replace(lang + 6, 4, locale);
            expected += line + "\n";
        }
        return expected;
    }
    // The silent run did these setups, read its answers and no line of input.
    void ExpectInstallation(const std::string& fakeLog) const {
        EXPECT_EQ(FakeLog(), fakeLog);
        EXPECT_TRUE(Logged("Erfolgreich Tovel_Auto.ini eingelesen. ")) << Output();
        EXPECT_EQ(Output().find("# end of input"), std::string::npos) << "no page waited for anyone\n" << Output();
        EXPECT_EQ(Output().find("line skipped"), std::string::npos) << "no line of input was read\n" << Output();
    }
    // The silent run did what the recorded one did: the same setups, with the same
    // requests, installing to the same folders.
    void ExpectSameInstallation() const {
        ExpectInstallation(recordedFakeLog_);
        EXPECT_NE(FakeLog().find("WEBPANEL: start"), std::string::npos) << FakeLog();
        EXPECT_EQ(FakeLog().find("DESIGNER:"), std::string::npos) << FakeLog();
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

    ASSERT_EQ(Replay(answers, "xppro"), kRestartStarted) << Output();
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

// One recording replayed on every system the emulated machine offers, German and Japanese
// ones among them: the same setups with the same requests and folders, asked in the machine's
// language, less what the disc's own terms refuse there (the Web Panel needs Windows XP or
// 2000, the Ethernet driver no NT4). A silent run does not pass the second welcome page where
// the machine is checked, so the disc's refusal of Windows 95 does not stop it.
TEST_F(SilentRun, TheRecordedWalkIsReplayedOnEverySystem) {
    const std::string answers = Record();
    const struct {
        const char* profile;
        const char* leftOut;
        const char* locale;
    } systems[] = {{"win95", "WEBPANEL", "2057"},   {"win98", "WEBPANEL", "2057"}, {"win98,de", "WEBPANEL", "1031"},
                   {"winme", "WEBPANEL", "2057"},   {"nt4", "ETHDRV+PBDRV", "2057"}, {"win2000", "", "2057"},
                   {"win2000,ja", "", "2057"},      {"xphome", "", "2057"},        {"xppro,de", "", "1031"},
                   {"win2003", "", "2057"},         {"win2003,ja", "", "2057"}};
    for (const auto& system : systems) {
        SCOPED_TRACE(system.profile);
        ASSERT_EQ(Replay(answers, system.profile), 0) << Output();
        ExpectInstallation(RecordedWithout(system.leftOut, system.locale));
        EXPECT_FALSE(Logged("Version of Operating System not supported. "));
    }
    // A pending restart is checked at start-up: it stops a silent run as well.
    FreshMachine();
    WriteMachine("drive_c/WINDOWS/WININIT.INI", "[rename]\r\n");
    WriteMachine("drive_c/KIT/Tovel_Auto.ini", answers);
    EXPECT_EQ(Run({"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"}, {"--create=win98"}), kFailed) << Output();
    EXPECT_TRUE(Logged("Win95: WININIT.INI exists in system directory. TOVEL_SETUP stopped. ")) << Output();
    EXPECT_EQ(FakeLog(), "");
}

// A bare /silent without an answer file in the Windows folder leaves the setup interactive:
// with no one to answer, its first page ends the run. An empty answer file is a silent run
// with the disc's own selection: the Designer and the licence manager among it.
TEST_F(SilentRun, AMissingAnswerFileLeavesTheSetupInteractiveAndAnEmptyOneKeepsTheDiscsSelection) {
    UseFakeSetupsOnADrivenClock();
    EXPECT_EQ(Run({"/silent", "/log"}, {"--create=xppro"}), kEndedWithoutAnswers) << Output();
    EXPECT_FALSE(Logged("Silent=True ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(FakeLog(), "");

    FreshMachine();
    WriteMachine("drive_c/WINDOWS/Tovel_Auto.ini", "");
    // The disc's selection holds the licence manager, whose restart at the end is carried out.
    ASSERT_EQ(Run({"/silent", "/log"}, {"--create=xppro"}), kRestartStarted) << Output();
    EXPECT_TRUE(Logged("Erfolgreich Tovel_Auto.ini eingelesen. ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    for (const char* chosen : {"TOVBASE: start", "DESIGNER: start", "LICMGR: start"})
        EXPECT_NE(FakeLog().find(chosen), std::string::npos) << chosen << "\n" << FakeLog();
}

// Values no one can mean: each keeps the run's own (which the walk took), with a log line; a
// product's Selected that is no Boolean reads as False. The rest is the recorded installation.
TEST_F(SilentRun, GarbageInTheAnswerFileKeepsEachDefaultAndIsLogged) {
    std::string answers = Record();
    const std::vector<std::pair<std::string, std::string>> garbage = {
        {"Setuplanguage", "9"}, {"GeneralDrive", "Laufwerk D"}, {"InstallLanguage", "AZ"}, {"Bus", "12"},
        {"NewInstallation", "Vielleicht"}};
    for (const auto& [key, value] : garbage) answers = WithValue(answers, key, value);
    answers = WithValue(answers, "Selected", "Vielleicht", "[WEBPANEL]");
    ASSERT_EQ(Replay(answers, "xppro"), 0) << Output();
    for (const auto& [key, value] : garbage) {
        EXPECT_TRUE(Logged("Readautoini: " + key + "=" + value + " is not a valid value; the setting stays as it was. "))
            << key << "\n" << ReadMachine("drive_c/TOVELSETUP.LOG");
    }
    EXPECT_TRUE(Logged("Readautoini: [WEBPANEL] Selected=Vielleicht is not a valid value; the setting stays as it was. "))
        << ReadMachine("drive_c/TOVELSETUP.LOG");
    ExpectInstallation(RecordedWithout("WEBPANEL"));
}

// The Web Panel's version 1.2.0 is installed: its versions say $DoNotInstall$, and the answer
// file's Selected=True does not install it again.
TEST_F(SilentRun, AProductWhoseVersionSaysDoNotInstallIsNotInstalledThoughTheFileSelectsIt) {
    const std::string answers = Record();
    FreshMachine();
    ASSERT_EQ(Run({}, {"--create=xppro"}), kEndedWithoutAnswers) << Output();
    clsMachineRegistry registry((Machine() / "registry.reg").string(), 1252);
    std::string error;
    ASSERT_TRUE(registry.Load(error)) << error;
    ASSERT_TRUE(registry.SetValue(RegRoot::LocalMachine, "SOFTWARE\\Tovel\\WebPanel", "Version", clsRegValue::String("1.2.0")));
    WriteMachine("drive_c/KIT/Tovel_Auto.ini", answers);
    ASSERT_EQ(Run({"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"}), 0) << Output();
    EXPECT_TRUE(Logged("Erfolgreich Tovel_Auto.ini eingelesen. ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(FakeLog().find("WEBPANEL:"), std::string::npos) << FakeLog();
    EXPECT_NE(FakeLog().find("TOVBASE: start"), std::string::npos) << FakeLog();
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
    // No part of the run gets any input: a page that waited would end it with 1602.
    ASSERT_EQ(Run({"/silent=C:\\KIT\\Tovel_Auto.ini", "/log"}, {"--create=xppro"}), kRestartStarted) << Output();
    EXPECT_EQ(FakeLog().find("PROD03:"), std::string::npos) << FakeLog();

    // The second part restarts once more after PROD04; the third ends with 0 (done).
    for (const int status : {kRestartStarted, 0}) {
        ASSERT_EQ(Run({}, {"--boot"}), 0) << Output();
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
