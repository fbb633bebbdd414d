// The setup started on a disc, as a person or a deployment tool starts it.
#include "platform/posix/clsMachineRegistry.h"
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

using StartupRun = SetupRun;

TEST_F(StartupRun, FreshMachineAndLogWithHeader) {
    UseSampleDisc();
    ASSERT_EQ(Run(), kEndedWithoutAnswers) << Output();
    EXPECT_NE(Output().find("Machine: " + Machine().string()), std::string::npos) << Output();
    const auto lines = LogLines();
    ASSERT_GE(lines.size(), 5u);
    EXPECT_EQ(lines[0], std::string(84, '-'));
    EXPECT_EQ(lines[1], "Logfile Header:");
    EXPECT_EQ(lines[2].rfind(" TovelSetup (Version: ", 0), 0u);
    EXPECT_EQ(lines[3].rfind(" Date created: ", 0), 0u);
    // A second start keeps the first log as the first backup.
    ASSERT_EQ(Run(), kEndedWithoutAnswers) << Output();
    EXPECT_FALSE(ReadMachine("drive_c/TOVELSETUP1.LOG").empty());
}

TEST_F(StartupRun, LinuxOptionsNeverReachTheWindowsCommandLine) {
    UseSampleDisc();
    EXPECT_EQ(Run({}, {"--bogus"}), 2);
    EXPECT_NE(Output().find("unknown option --bogus"), std::string::npos) << Output();
    // A machine.ini that cannot be read stops the program with its file and line.
    WriteMachine("machine.ini", "[System]\nMajorVersion=x\n[Drives]\nC=fixed,drive_c\n");
    EXPECT_EQ(Run(), 2);
    EXPECT_NE(Output().find("machine.ini:2: bad value for MajorVersion"), std::string::npos) << Output();
}


// A disc whose Setups.ini switches the log on, so every line of the start shows.
const char* const kLoggingDisc =
    "[SETTINGS]\r\nCDTitle=Test Disc\r\nCreateLogFile=1\r\n[LANGUAGES]\r\nEnglish=enable\r\nGerman=enable\r\n";

TEST_F(StartupRun, CommandLineSwitchesAsTheLogShowsThem) {
    WriteDisc("Setups.ini", kLoggingDisc);
    const struct {
        std::vector<std::string> switches;
        std::vector<std::string> lines;  // expected after the heading, in order
    } cases[] = {
        {{"/DRIVE=C"}, {"Drive=C "}},
        {{"/drive=\\\\server\\share"}, {"UNC Pfad wird nicht unterst\xFCtzt! "}},
        {{"/reg", "/noreg"}, {"Lorvex AdditionalCommandLine=-reg", "Lorvex AdditionalCommandLine= "}},
        {{"/level=12"}, {"Level=1 "}},
        {{"/silent=C:\\answers.ini", "/log"}, {"Log=True "}},
        {{"/silent", "/log"}, {"Log=True "}},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(Run(c.switches), kEndedWithoutAnswers) << Output();
        const auto lines = LogLines();
        const auto heading = std::find(lines.begin(), lines.end(), "Commandline analyse:");
        ASSERT_NE(heading, lines.end()) << c.switches[0];
        // The section ends where the wizard begins with its page list.
        const auto wizard = std::find_if(heading, lines.end(), [](const std::string& l) { return l.rfind("Pages: ", 0) == 0; });
        EXPECT_EQ(std::vector<std::string>(heading + 1, wizard), c.lines) << c.switches[0];
    }
    // "/test" alone is no switch at all: no section.
    ASSERT_EQ(Run({"/test"}), kEndedWithoutAnswers);
    EXPECT_FALSE(Logged("Commandline analyse:"));
    EXPECT_TRUE(Logged("CDTitle: Test Disc "));
}

// The analysis reaches the log as one conditional line: the blank it gets ends the last switch
// line, and no line holds that blank alone.
TEST_F(StartupRun, CommandLineSectionBytes) {
    WriteDisc("Setups.ini", kLoggingDisc);
    ASSERT_EQ(Run({"/noreg", "/Record", "/nooscheck"}), kEndedWithoutAnswers) << Output();
    const std::string log = ReadMachine("drive_c/TOVELSETUP.LOG");
    const std::string section = "\r\n" + std::string(84, '-') +
                                "\r\nCommandline analyse:\r\nLorvex AdditionalCommandLine=\r\nNoOSCheck=True\r\n"
                                "Record=True \r\n";
    const size_t at = log.find(section);
    ASSERT_NE(at, std::string::npos) << log;
    EXPECT_EQ(log.find("\r\n \r\n"), std::string::npos) << log;
    EXPECT_EQ(log.compare(at + section.size(), 17, "Message [Record] "), 0) << log.substr(at);
}

TEST_F(StartupRun, RecordNoticeAndConfigurationMode) {
    WriteDisc("Setups.ini", kLoggingDisc);
    ASSERT_EQ(Run({"/record"}), kEndedWithoutAnswers) << Output();
    EXPECT_TRUE(ShowedMessage("Record", "The record function is activ.")) << Output();
    EXPECT_TRUE(Logged("Record=True "));
    // Configuration mode in any case: no analysis of the switches, no checks.
    ASSERT_EQ(Run({"/SHOWCONFIG", "/record"}), 0) << Output();
    EXPECT_EQ(Output().find("== frmMessage: Record =="), std::string::npos) << Output();
    EXPECT_NE(Output().find("== frmConfigTool: "), std::string::npos) << Output();
    EXPECT_FALSE(Logged("Commandline analyse:"));
}

TEST_F(StartupRun, AnswerFileBesideTheProgramStartsSilentMode) {
    WriteDisc("Setups.ini", kLoggingDisc);
    WriteDisc("Tovel_Auto.ini", "[General]\r\n");
    // Silent: the pages go on by themselves up to the Done page.
    ASSERT_EQ(Run({"/nooscheck"}), 0) << Output();
    EXPECT_TRUE(Logged("Silent=True"));
    EXPECT_TRUE(Logged("Silentpath=D:\\Tovel_Auto.ini "));
}

// Renames waiting for a restart make the setup stop with a message: a message that shows
// which language and title the start chose.
void SeedPendingRenames(const std::filesystem::path& machine) {
    clsMachineRegistry registry((machine / "registry.reg").string(), 1252);
    std::string error;
    ASSERT_TRUE(registry.Load(error)) << error;
    ASSERT_TRUE(registry.SetValue(RegRoot::LocalMachine, "SYSTEM\\CurrentControlSet\\Control\\Session Manager",
                                  "PendingFileRenameOperations", clsRegValue::MultiString({"C:\\a.tmp", ""})));
}

TEST_F(StartupRun, SetupLanguageFollowsTheUserWhereTheDiscOffersIt) {
    ASSERT_EQ(Run({}, {"--create=xppro,de"}), kEndedWithoutAnswers) << Output();
    SeedPendingRenames(Machine());
    WriteDisc("Setups.ini", "[LANGUAGES]\r\nGerman=disable\r\nEnglish=enable\r\n");
    EXPECT_EQ(Run(), 1603 & 0xFF);
    EXPECT_NE(Output().find("Please restart Windows before installing new programs!"), std::string::npos) << Output();
    WriteDisc("Setups.ini", "[LANGUAGES]\r\nGerman=enable\r\nEnglish=enable\r\n");
    EXPECT_EQ(Run(), 1603 & 0xFF);
    EXPECT_NE(Output().find("Bitte starten Sie Windows neu"), std::string::npos) << Output();
}

TEST_F(StartupRun, JapaneseTextsOfTheSampleDiscOnAJapaneseWindows) {
    UseSampleDisc();
    ASSERT_EQ(Run({}, {"--create=xppro,ja"}), kEndedWithoutAnswers) << Output();
    SeedPendingRenames(Machine());
    EXPECT_EQ(Run(), 1603 & 0xFF);
    // The title comes from the disc's Shift-JIS section, the text from the built-in Japanese.
    EXPECT_TRUE(ShowedMessage("Tovel Automation Suite 2026 \xE3\x82\xBB\xE3\x83\x83\xE3\x83\x88\xE3\x82\xA2\xE3\x83\x83"
                              "\xE3\x83\x97",
                              "\xE6\x96\xB0\xE3\x81\x97\xE3\x81\x84"))
        << Output();
}

TEST_F(StartupRun, MissingSettingsFileAndMissingProductFolder) {
    // No Setups.ini: the defaults hold and the run goes on.
    ASSERT_EQ(Run({"/log"}), kEndedWithoutAnswers) << Output();
    EXPECT_TRUE(Logged("Log=True "));
    // A Path that names no folder: the message, and the end before any log is begun.
    WriteDisc("Setups.ini", "[SETTINGS]\r\nPath=NoSuchFolder\r\n");
    const std::string logBefore = ReadMachine("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(Run({"/log"}), 1603 & 0xFF);
    EXPECT_NE(Output().find("Der Parameter in Setup.Ini 'Path'='D:\\NoSuchFolder\\' stimmt nicht. Der Pfad existiert "
                            "nicht!"),
              std::string::npos)
        << Output();
    EXPECT_EQ(ReadMachine("drive_c/TOVELSETUP.LOG"), logBefore);
}

TEST_F(StartupRun, StateFileMakesTheStartWaitFiveSeconds) {
    WriteDisc("Setups.ini", kLoggingDisc);
    ASSERT_EQ(Run(), kEndedWithoutAnswers);
    WriteMachine("clock", "2026-11-22 12:00:00\n");
    WriteMachine("drive_c/INSTDUMP.TMP", "[General]\r\n");
    // A state file that cannot be read ends the resumed run unfinished, on the Done page.
    ASSERT_EQ(Run(), 1603 & 0xFF) << Output();
    // The machine's clock only moves while the program waits.
    EXPECT_EQ(ReadMachine("clock"), "2026-11-22 12:00:05.000\n");
    EXPECT_TRUE(Logged(" Time created: 12:00:00"));
}

TEST_F(StartupRun, StartFromANetworkShareUsesItInPlace) {
    WriteDisc("Setups.ini", kLoggingDisc);
    ASSERT_EQ(Run({"/log"}, {"--disc=" + Disc().string(), "--disc-share=\\\\fileserver\\cd"}), kEndedWithoutAnswers) << Output();
    EXPECT_NE(Output().find("Setup folder \\\\fileserver\\cd\\,"), std::string::npos) << Output();
    EXPECT_TRUE(Logged("CDTitle: Test Disc "));
}

} // namespace
} // namespace tovel::test
