// The command line: switch recognition and order, values cut from the line as typed, the
// drive, level and silent switches, and the log section. The first part runs on both builds;
// a disc in drive D: and the Windows folder's answer file need the emulated machine.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsCommandLine.h"
#include "startup/mdlLog.h"
#include "startup/mdlSwitches.h"
#include "tests/support/BedFixture.h"

#ifndef _WIN32
#include <filesystem>

#include "tests/machine/MachineFixture.h"
#endif

namespace tovel {
namespace {

void ResetRunState() {
    ShowConfig = LorvexScanComplete = NoOSCheck = NoVersionCheck = RecordMode = SilentMode = Testmode = false;
    SilentPath.clear();
    LorvexAdditionalCommand.clear();
    clsRegistry::SetReporter(nullptr);
    gLog.reset();
    WorkFolder.clear();
    gSetupsIni.reset();
    SetLogSwitch(false);
}

CommandLineSwitches Analyse(const std::string& line) {
    clsCommandLine commandLine;
    commandLine.SetCommandLine(line);
    return commandLine.Start();
}

// The whole start of the switches: analysis, apply, log section.
void AnalyseAndApply(const std::string& line) {
    CommandLineSwitches found = Analyse(line);
    ApplySwitches(found);
    clsCommandLine::WriteAnalysis(found.analysis);
}

// Removes a file the test put outside its own folder, also when the test fails.
struct FileGuard {
    std::string path;
    ~FileGuard() { (void)Platform().Files().DeleteFile(path); }
};

class CommandLine : public test::BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        ResetRunState();
        gSetupsIni = std::make_unique<clsSetupsIni>();
    }
    void TearDown() override {
        ResetRunState();
        BedFixture::TearDown();
    }
    void Write(const std::string& path) {
        ASSERT_TRUE(Platform().Files().CreateFolder(path.substr(0, path.rfind('\\'))));
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(path, "[GENERAL]\r\n"));
    }
};

TEST_F(CommandLine, SwitchesAnyCaseAnyOrderAreFoundInTheirOwnOrder) {
    auto found = Analyse("/Record /NOOSCHECK /testmode /NoVersionCheck /log /reg /complete /Level=5 /showconfig");
    EXPECT_EQ(found.analysis,
              "ShowConfig=True\r\nLevel=5\r\nLorvex Scanmode=-1\r\nLorvex AdditionalCommandLine=-reg\r\n"
              "Log=True\r\nNoVersionCheck=True\r\nTestmode=True\r\nNoOSCheck=True\r\nRecord=True\r\n");
    EXPECT_TRUE(found.showConfig && found.recordMode && found.noOSCheck && found.testmode && found.noVersionCheck &&
                found.log);
    EXPECT_EQ(found.level, 5);
    EXPECT_EQ(found.lorvexScanComplete, true);
    EXPECT_EQ(found.lorvexAdditionalCommand, "-reg");
    EXPECT_FALSE(found.silentMode);
    EXPECT_FALSE(found.drive);
    // Finding changes nothing.
    EXPECT_FALSE(ShowConfig || RecordMode || LorvexScanComplete);
    EXPECT_FALSE(gSetupsIni->CreateLogFile());

    // Where two switches set one flag the later test wins, whatever the order typed.
    found = Analyse("/noreg /beginend /reg /complete");
    EXPECT_EQ(found.analysis,
              "Lorvex Scanmode=-1\r\nLorvex Scanmode=0\r\nLorvex AdditionalCommandLine=-reg\r\n"
              "Lorvex AdditionalCommandLine=\r\n");
    EXPECT_EQ(found.lorvexScanComplete, false);
    EXPECT_EQ(found.lorvexAdditionalCommand, "");
}

TEST_F(CommandLine, SubstringsTriggerAndAbsentSwitchesKeepTheirValues) {
    LorvexAdditionalCommand = "-x ";
    LorvexScanComplete = true;
    NoOSCheck = true;
    // "/test" is not a switch; only /nooscheck (and silent mode) reset their flags when absent.
    auto found = Analyse("/test");
    EXPECT_EQ(found.analysis, "");
    ApplySwitches(found);
    EXPECT_FALSE(Testmode);
    EXPECT_FALSE(NoOSCheck);
    EXPECT_EQ(LorvexAdditionalCommand, "-x ");
    EXPECT_TRUE(LorvexScanComplete);
    EXPECT_FALSE(found.log);

    found = Analyse("setup.exe/logfile=x");
    EXPECT_EQ(found.analysis, "Log=True\r\n");
    EXPECT_TRUE(found.log);
}

TEST_F(CommandLine, LevelReadsOneCharacter) {
    auto found = Analyse("/level=12");
    EXPECT_EQ(found.analysis, "Level=1\r\n");
    EXPECT_EQ(found.level, 1);
    // Not a digit, or nothing at all: 0, and the switches after it are still analysed.
    found = Analyse("/LEVEL=x /record");
    EXPECT_EQ(found.analysis, "Level=0\r\nRecord=True\r\n");
    EXPECT_EQ(found.level, 0);
    EXPECT_EQ(Analyse("/level=").level, 0);
    EXPECT_FALSE(Analyse("/record").level);
}

TEST_F(CommandLine, DriveSwitchFindsTheRootOrRefusesUnc) {
    auto found = Analyse("/drive=\\\\server\\share /drive=C");
    EXPECT_EQ(found.analysis, "UNC Pfad wird nicht unterst\xC3\xBCtzt!\r\n");
    EXPECT_FALSE(found.drive);
    found = Analyse("/drive=1 /record");
    EXPECT_EQ(found.analysis,
              "Error in Modul clsCommandLine Funktion CheckDrive: no drive letter behind /drive=\r\nRecord=True\r\n");
    EXPECT_FALSE(found.drive);

    found = Analyse("/DRIVE=C");
    EXPECT_EQ(found.analysis, "Drive=C\r\n");
    EXPECT_EQ(found.drive, 'C');
}

// Drive, level, log switch and flags carried out on a fresh machine, and the section they
// leave in the log: one conditional line, so the blank ends the last switch line.
TEST_F(CommandLine, ApplyChangesDriveLevelLogAndFlags) {
    auto& files = Platform().Files();
    ASSERT_TRUE(files.SetCurrentFolder(bed_->folder));
    WorkFolder = bed_->folder;
    StartLog();
    const std::string logPath = bed_->folder + "TOVELSETUP.LOG";
    const auto log = [&] { return files.ReadFile(logPath).value_or("<missing>"); };
    const std::string header = log();

    AnalyseAndApply("/record /level=7");  // logging off: the flags change, the log does not
    EXPECT_TRUE(RecordMode);
    EXPECT_EQ(gSetupsIni->Level(), 7);
    EXPECT_EQ(log(), header);

    AnalyseAndApply("/DRIVE=C /LOG /reg /nooscheck /level=3");
    EXPECT_EQ(files.CurrentFolder(), "C:\\");
    EXPECT_EQ(gSetupsIni->Level(), 3);
    EXPECT_EQ(LorvexAdditionalCommand, "-reg");
    EXPECT_TRUE(NoOSCheck && RecordMode);
    EXPECT_FALSE(gSetupsIni->CreateLogFile()) << "the settings keep what the disc says";
    const std::string section = header + "\r\n" + std::string(84, '-') +
                                "\r\nCommandline analyse:\r\nDrive=C\r\nLevel=3\r\nLorvex AdditionalCommandLine=-reg\r\n"
                                "Log=True\r\nNoOSCheck=True \r\n";
    EXPECT_EQ(log(), section);
    // Nothing recognised: no section; the next line follows the last switch line directly.
    AnalyseAndApply("/test");
    LogIfEnabled("next");
    EXPECT_EQ(log(), section + "next \r\n");
}

TEST_F(CommandLine, SilentNeedsAnExistingAnswerFileOfItsName) {
    const std::string other = bed_->folder + "answers.ini";
    const std::string answers = bed_->folder + "My Answers\\Tovel_Auto.ini";
    Write(other);
    Write(answers);

    // Another name is refused on purpose, existing or not; so is a missing answer file.
    for (const std::string& path : {other, bed_->folder + "Tovel_Auto.ini", std::string()}) {
        const auto found = Analyse("/silent=" + path);
        EXPECT_EQ(found.analysis, "") << path;
        EXPECT_FALSE(found.silentMode) << path;
        EXPECT_EQ(found.silentPath, path) << "the path is kept, refused or not";
    }
    EXPECT_FALSE(Analyse("/record").silentPath);

    // Quotes and the blanks before the next switch are not part of the path; case is free.
    auto found = Analyse("/SILENT=\"" + answers + "\" /record");
    EXPECT_EQ(found.analysis, "Record=True\r\nSilent=True\r\nSilentpath=" + answers + "\r\n");
    EXPECT_TRUE(found.silentMode);
    const std::string lower = bed_->folder + "My Answers\\tovel_auto.INI";
    found = Analyse("\"/silent=" + lower + "\"");
    EXPECT_EQ(found.analysis, "Silent=True\r\nSilentpath=" + lower + "\r\n");
    ApplySwitches(found);
    EXPECT_TRUE(SilentMode);
    EXPECT_EQ(SilentPath, lower);
}

TEST_F(CommandLine, AnswerFileBesideTheProgramNeedsNoSwitch) {
    std::string folder = Platform().System().ProgramFolder();
    ASSERT_EQ(folder.back(), '\\');
    folder.pop_back();
    const FileGuard guard{folder + "\\Tovel_Auto.ini"};
    Write(guard.path);
    // It wins over a silent switch naming another answer file.
    const auto found = Analyse("/noversioncheck /silent=C:\\elsewhere\\Tovel_Auto.ini");
    EXPECT_EQ(found.analysis, "NoVersionCheck=True\r\nSilent=True\r\nSilentpath=" + guard.path + "\r\n");
    EXPECT_TRUE(found.silentMode);
    EXPECT_EQ(found.silentPath, guard.path);
}

#ifndef _WIN32

// A disc in drive D: holds the program.
class CommandLineDisc : public test::MachineFixture {
protected:
    void SetUp() override {
        MachineFixture::SetUp();
        auto config = clsMachineProfile::Default();
        config.drives.push_back({'D', DriveType::CdRom, "disc", std::nullopt});
        WriteHost("disc/SETUP.EXE", "");
        MachineProcess process;
        process.programFolder = "D:\\";
        process.currentFolder = "C:\\WINDOWS";
        Boot(process, config);
        ResetRunState();
        previous_ = InstallPlatform(std::move(platform_));
        gSetupsIni = std::make_unique<clsSetupsIni>();
    }
    void TearDown() override {
        ResetRunState();
        InstallPlatform(std::move(previous_)).reset();
        MachineFixture::TearDown();
    }

    std::unique_ptr<clsPlatform> previous_;
};

TEST_F(CommandLineDisc, DriveSwitchChangesToTheDiscRoot) {
    auto& files = Platform().Files();
    auto found = Analyse("/drive=Q");
    EXPECT_EQ(found.analysis, "Error in Modul clsCommandLine Funktion CheckDrive: cannot change to Q:\\\r\n");
    EXPECT_FALSE(found.drive);
    found = Analyse("/DRIVE=D");
    EXPECT_EQ(found.analysis, "Drive=D\r\n");
    ApplySwitches(found);
    EXPECT_EQ(files.CurrentFolder(), "D:\\");
    EXPECT_EQ(found.analysis, "Drive=D\r\n");

    // The disc taken out between finding and entering: the folder stays, the analysis says why.
    ASSERT_TRUE(files.SetCurrentDrive('C'));
    found = Analyse("/drive=D");
    std::filesystem::remove_all(folder_ + "/disc");
    ApplySwitches(found);
    EXPECT_EQ(files.CurrentFolder(), "C:\\WINDOWS");
    EXPECT_EQ(found.analysis, "Drive=D\r\nError in Modul mdlSwitches Funktion EnterDrive: cannot change to D:\\\r\n");
}

TEST_F(CommandLineDisc, AnswerFilesOnTheDiscAndInTheWindowsFolder) {
    // A bare switch looks in the Windows folder only.
    auto found = Analyse("/silent");
    EXPECT_EQ(found.analysis, "");
    EXPECT_FALSE(found.silentMode);
    EXPECT_EQ(found.silentPath, "C:\\WINDOWS\\Tovel_Auto.ini");
    WriteHost("drive_c/WINDOWS/Tovel_Auto.ini", "");
    found = Analyse("/silent /log");
    EXPECT_EQ(found.analysis, "Log=True\r\nSilent=True\r\nSilentpath=C:\\WINDOWS\\Tovel_Auto.ini\r\n");
    EXPECT_TRUE(found.silentMode);

    // The disc's file is taken first; a program in a drive's root gets no doubled backslash.
    WriteHost("disc/TOVEL_AUTO.INI", "");
    found = Analyse("/record");
    EXPECT_EQ(found.analysis, "Record=True\r\nSilent=True\r\nSilentpath=D:\\Tovel_Auto.ini\r\n");
    EXPECT_EQ(found.silentPath, "D:\\Tovel_Auto.ini");
}

#endif

} // namespace
} // namespace tovel
