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
#include "tests/support/BedFixture.h"

#ifndef _WIN32
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
}

std::string Analyse(const std::string& line) {
    clsCommandLine commandLine;
    commandLine.SetCommandLine(line);
    commandLine.Start();
    return commandLine.Analysis();
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

TEST_F(CommandLine, SwitchesAnyCaseAnyOrderAreLoggedInTheirOwnOrder) {
    EXPECT_EQ(Analyse("/Record /NOOSCHECK /testmode /NoVersionCheck /log /reg /complete /Level=5 /showconfig"),
              "ShowConfig=True\r\nLevel=5\r\nLorvex Scanmode=-1\r\nLorvex AdditionalCommandLine=-reg\r\n"
              "Log=True\r\nNoVersionCheck=True\r\nTestmode=True\r\nNoOSCheck=True\r\nRecord=True\r\n");
    EXPECT_TRUE(ShowConfig && LorvexScanComplete && RecordMode && NoOSCheck && Testmode && NoVersionCheck);
    EXPECT_EQ(gSetupsIni->Level(), 5);
    EXPECT_TRUE(gSetupsIni->CreateLogFile());
    EXPECT_EQ(LorvexAdditionalCommand, "-reg");
    EXPECT_FALSE(SilentMode);

    // Where two switches set one flag the later test wins, whatever the order typed.
    EXPECT_EQ(Analyse("/noreg /beginend /reg /complete"),
              "Lorvex Scanmode=-1\r\nLorvex Scanmode=0\r\nLorvex AdditionalCommandLine=-reg\r\n"
              "Lorvex AdditionalCommandLine=\r\n");
    EXPECT_FALSE(LorvexScanComplete);
    EXPECT_EQ(LorvexAdditionalCommand, "");
}

TEST_F(CommandLine, SubstringsTriggerAndAbsentSwitchesKeepTheirValues) {
    LorvexAdditionalCommand = "-x ";
    LorvexScanComplete = true;
    NoOSCheck = true;
    // "/test" is not a switch; only /nooscheck resets its flag when absent.
    EXPECT_EQ(Analyse("/test"), "");
    EXPECT_FALSE(Testmode);
    EXPECT_FALSE(NoOSCheck);
    EXPECT_EQ(LorvexAdditionalCommand, "-x ");
    EXPECT_TRUE(LorvexScanComplete);
    EXPECT_FALSE(gSetupsIni->CreateLogFile());

    EXPECT_EQ(Analyse("setup.exe/logfile=x"), "Log=True\r\n");
    EXPECT_TRUE(gSetupsIni->CreateLogFile());
}

TEST_F(CommandLine, LevelReadsOneCharacter) {
    EXPECT_EQ(Analyse("/level=12"), "Level=1\r\n");
    EXPECT_EQ(gSetupsIni->Level(), 1);
    // Not a digit, or nothing at all: 0, and the switches after it are still analysed.
    EXPECT_EQ(Analyse("/LEVEL=x /record"), "Level=0\r\nRecord=True\r\n");
    EXPECT_EQ(gSetupsIni->Level(), 0);
    gSetupsIni->SetLevel(3);
    EXPECT_EQ(Analyse("/level="), "Level=0\r\n");
    EXPECT_EQ(gSetupsIni->Level(), 0);
}

TEST_F(CommandLine, DriveSwitchGoesToTheRootOrRefusesUnc) {
    auto& files = Platform().Files();
    ASSERT_TRUE(files.SetCurrentFolder(bed_->folder));
    const std::string before = files.CurrentFolder();
    EXPECT_EQ(Analyse("/drive=\\\\server\\share /drive=C"), "UNC Pfad wird nicht unterst\xC3\xBCtzt!\r\n");
    EXPECT_EQ(files.CurrentFolder(), before);
    EXPECT_EQ(Analyse("/drive=1 /record"),
              "Error in Modul clsCommandLine Funktion CheckDrive: no drive letter behind /drive=\r\nRecord=True\r\n");
    EXPECT_EQ(files.CurrentFolder(), before);

    EXPECT_EQ(Analyse("/DRIVE=C"), "Drive=C\r\n");
    EXPECT_EQ(files.CurrentFolder(), "C:\\");
}

TEST_F(CommandLine, SilentNeedsAnExistingAnswerFileOfItsName) {
    const std::string other = bed_->folder + "answers.ini";
    const std::string answers = bed_->folder + "My Answers\\Tovel_Auto.ini";
    Write(other);
    Write(answers);

    // Another name is refused on purpose, existing or not; so is a missing answer file.
    EXPECT_EQ(Analyse("/silent=" + other), "");
    EXPECT_FALSE(SilentMode);
    EXPECT_EQ(Analyse("/silent=" + bed_->folder + "Tovel_Auto.ini"), "");
    EXPECT_FALSE(SilentMode);
    EXPECT_EQ(Analyse("/silent="), "");
    EXPECT_FALSE(SilentMode);

    // Quotes and the blanks before the next switch are not part of the path; case is free.
    EXPECT_EQ(Analyse("/SILENT=\"" + answers + "\" /record"),
              "Record=True\r\nSilent=True\r\nSilentpath=" + answers + "\r\n");
    EXPECT_TRUE(SilentMode);
    const std::string lower = bed_->folder + "My Answers\\tovel_auto.INI";
    EXPECT_EQ(Analyse("\"/silent=" + lower + "\""), "Silent=True\r\nSilentpath=" + lower + "\r\n");
    EXPECT_TRUE(SilentMode);
}

TEST_F(CommandLine, AnswerFileBesideTheProgramNeedsNoSwitch) {
    std::string folder = Platform().System().ProgramFolder();
    ASSERT_EQ(folder.back(), '\\');
    folder.pop_back();
    const FileGuard guard{folder + "\\Tovel_Auto.ini"};
    Write(guard.path);
    // It wins over a silent switch naming another answer file.
    EXPECT_EQ(Analyse("/noversioncheck /silent=C:\\elsewhere\\Tovel_Auto.ini"),
              "NoVersionCheck=True\r\nSilent=True\r\nSilentpath=" + guard.path + "\r\n");
    EXPECT_TRUE(SilentMode);
    EXPECT_EQ(SilentPath, guard.path);
}

TEST_F(CommandLine, LogSectionOnlyWhenSomethingWasRecognisedAndLoggingIsOn) {
    WorkFolder = bed_->folder;
    StartLog();
    const std::string logPath = bed_->folder + "TOVELSETUP.LOG";
    const auto log = [&] { return Platform().Files().ReadFile(logPath).value_or("<missing>"); };
    const std::string header = log();

    Analyse("/record");  // logging off
    EXPECT_EQ(log(), header);
    gSetupsIni->SetCreateLogFile(true);
    Analyse("/test");  // nothing recognised
    EXPECT_EQ(log(), header);

    Analyse("/showconfig /drive=\\\\srv\\x /level=7");
    EXPECT_EQ(log(), header + "\r\n" + std::string(84, '-') +
                         "\r\nCommandline analyse:\r\nShowConfig=True \r\nUNC Pfad wird nicht unterst\xFCtzt! \r\n"
                         "Level=7 \r\n");
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
    EXPECT_EQ(Analyse("/drive=Q"), "Error in Modul clsCommandLine Funktion CheckDrive: cannot change to Q:\\\r\n");
    EXPECT_EQ(files.CurrentFolder(), "C:\\WINDOWS");
    EXPECT_EQ(Analyse("/DRIVE=D"), "Drive=D\r\n");
    EXPECT_EQ(files.CurrentFolder(), "D:\\");
}

TEST_F(CommandLineDisc, AnswerFilesOnTheDiscAndInTheWindowsFolder) {
    // A bare switch looks in the Windows folder only.
    EXPECT_EQ(Analyse("/silent"), "");
    EXPECT_FALSE(SilentMode);
    WriteHost("drive_c/WINDOWS/Tovel_Auto.ini", "");
    EXPECT_EQ(Analyse("/silent /log"), "Log=True\r\nSilent=True\r\nSilentpath=C:\\WINDOWS\\Tovel_Auto.ini\r\n");
    EXPECT_TRUE(SilentMode);

    // The disc's file is taken first; a program in a drive's root gets no doubled backslash.
    WriteHost("disc/TOVEL_AUTO.INI", "");
    EXPECT_EQ(Analyse("/record"), "Record=True\r\nSilent=True\r\nSilentpath=D:\\Tovel_Auto.ini\r\n");
    EXPECT_EQ(SilentPath, "D:\\Tovel_Auto.ini");
}

#endif

} // namespace
} // namespace tovel
