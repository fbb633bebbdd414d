// The emulated machine: its configuration file, profiles, paths, drives and processes.
#include <filesystem>

#include "platform/posix/clsMachineClock.h"
#include "platform/posix/clsMachineIni.h"
#include "platform/posix/clsMachineSystem.h"
#include "tests/machine/MachineFixture.h"

namespace tovel::test {
namespace {

using MachineTest = MachineFixture;

TEST_F(MachineTest, MissingFolderBecomesTheDefaultMachine) {
    std::string error;
    auto machine = clsMachine::Open(folder_ + "/new/deeper", error);
    ASSERT_TRUE(machine) << error;
    EXPECT_EQ(machine->Config().version.major, 5u);
    EXPECT_EQ(machine->Config().version.csdVersion, "Service Pack 2");
    EXPECT_EQ(machine->Config().userLanguage, 2057);
    EXPECT_TRUE(std::filesystem::is_directory(folder_ + "/new/deeper/drive_c/WINDOWS/system32"));
    // Opened again, it is the same machine read back from its file.
    auto again = clsMachine::Open(folder_ + "/new/deeper", error);
    ASSERT_TRUE(again) << error;
    EXPECT_EQ(clsMachineIni::Write(again->Config()), clsMachineIni::Write(machine->Config()));
}

TEST_F(MachineTest, DamagedMachineIniNamesFileAndLine) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"[System]\nMajorVersion=five\n[Drives]\nC=fixed,drive_c\n", "machine.ini:2: bad value for MajorVersion"},
        {"[System]\n\nNoSuchKey=1\n", "machine.ini:3: unknown key NoSuchKey"},
        {"MajorVersion=5\n", "machine.ini:1: a value before the first section"},
        {"[Drives]\nC=floppy,x\n", "machine.ini:2: unknown drive type \"floppy\""},
        {"[Drives]\nC=fixed\n", "machine.ini:2: drive C needs a host folder"},
        {"[Drives]\nC=fixed,a\nC=fixed,b\n", "machine.ini:3: drive C is given twice"},
        {"[Drives]\nCD=fixed,a\n", "machine.ini:2: a drive must be a letter"},
        {"[Drives]\nC=fixed,a\njust text\n", "machine.ini:3: expected Key=Value"},
        {"[Disks]\n", "machine.ini:1: unknown section [Disks]"},
        {"[System]\nPower=maybe\n[Drives]\nC=fixed,a\n", "machine.ini:2: bad value for Power"},
        {"[Drives]\nC=fixed,a\n[FreeSpace]\nE=5\n", "machine.ini:4: free space for drive E"},
        {"[System]\n", "machine.ini:0: no drive in [Drives]"},
        {"\x7f\x45LF\x01\x02\x00\x00", "machine.ini:1: expected Key=Value"},
    };
    for (const auto& c : cases) {
        std::filesystem::create_directories(folder_);
        WriteHost("machine.ini", c.text);
        std::string error;
        EXPECT_EQ(clsMachine::Open(folder_, error), nullptr) << c.text;
        EXPECT_NE(error.find(c.message), std::string::npos) << error;
    }
}

TEST_F(MachineTest, DamagedRegistryStopsTheMachine) {
    Boot();
    platform_.reset();
    WriteHost("registry.reg", "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\n\"x\"=dword:zz\n");
    std::string error;
    auto machine = clsMachine::Open(folder_, error);
    ASSERT_TRUE(machine);
    EXPECT_EQ(clsMachinePlatform::Make(std::move(machine), {}, error), nullptr);
    EXPECT_NE(error.find("registry.reg:4:"), std::string::npos) << error;
}

TEST_F(MachineTest, EveryProfileCreatesAWorkingMachine) {
    for (const auto& system : clsMachineProfile::SystemNames()) {
        for (const auto& language : clsMachineProfile::LanguageNames()) {
            SCOPED_TRACE(system + "," + language);
            TearDown();
            auto config = clsMachineProfile::Make(system, language);
            ASSERT_TRUE(config);
            auto& p = Boot({}, *config);
            const auto v = p.System().Version();
            EXPECT_EQ(v.platformId == 1, system == "win95" || system == "win98" || system == "winme");
            EXPECT_TRUE(p.Files().FolderExists(p.System().SystemFolder()));
            EXPECT_TRUE(p.Files().FolderExists(clsMachineProfile::ProgramFilesFolder(*config)));
            EXPECT_EQ(p.System().AnsiCodePage(), language == "ja" ? 932u : 1252u);
            const char* versionKey = v.platformId == 2 ? "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"
                                                       : "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
            EXPECT_TRUE(p.Registry().QueryValue(RegRoot::LocalMachine, versionKey, "RegisteredOwner"));
        }
    }
    EXPECT_FALSE(clsMachineProfile::Make("win31", "en"));
    EXPECT_FALSE(clsMachineProfile::Make("xppro", "nl"));
    EXPECT_TRUE(clsMachineProfile::Make("xppro", "1031"));
}

TEST_F(MachineTest, LongDatesInTheMachinesLanguage) {
    const LocalTime t{2026, 3, 1, 9, 7, 5, 0};
    const struct {
        const char* language;
        const char* date;
        const char* time;
    } cases[] = {
        {"de", "Sonntag, 1. M\xC3\xA4rz 2026", "09:07:05"},
        {"en", "01 March 2026", "09:07:05"},
        {"fr", "dimanche 1 mars 2026", "09:07:05"},
        {"es", "domingo, 1 de marzo de 2026", "9:07:05"},
        {"it", "domenica 1 marzo 2026", "9.07.05"},
        {"ja", "2026\xE5\xB9\xB4" "3\xE6\x9C\x88" "1\xE6\x97\xA5", "9:07:05"},
    };
    for (const auto& c : cases) {
        TearDown();
        auto& p = Boot({}, *clsMachineProfile::Make("xppro", c.language));
        EXPECT_EQ(p.System().LongDate(t), c.date);
        EXPECT_EQ(p.System().LongTime(t), c.time);
    }
}

TEST_F(MachineTest, DrivesSharesAndHostPaths) {
    auto config = clsMachineProfile::Default();
    config.drives.push_back({'D', DriveType::CdRom, "disc", std::nullopt});
    config.drives.push_back({'E', DriveType::Fixed, "drive_e", uint64_t{123456}});
    config.drives.push_back({'N', DriveType::Remote, "net", std::nullopt});
    config.shares.push_back({"\\\\Server\\Share", "share"});
    WriteHost("disc/Setups.ini", "[SETTINGS]\n");
    WriteHost("share/Products/A.ssf", "x");
    auto& p = Boot({}, config);
    auto& files = p.Files();
    EXPECT_EQ(files.GetDriveType("D:\\"), DriveType::CdRom);
    EXPECT_EQ(files.GetDriveType("a:\\"), DriveType::Removable);
    EXPECT_EQ(files.GetDriveType("N:\\"), DriveType::Remote);
    EXPECT_EQ(files.GetDriveType("\\\\server\\SHARE\\"), DriveType::Remote);
    EXPECT_EQ(files.GetDriveType("\\\\server\\other\\"), DriveType::NoRootDir);
    EXPECT_EQ(files.FreeSpace("E:\\x"), 123456u);
    EXPECT_EQ(files.FreeSpace("D:\\"), 0u);  // a disc has no room
    EXPECT_TRUE(files.FileExists("d:\\SETUPS.INI"));
    EXPECT_TRUE(files.FileExists("\\\\SERVER\\share\\products\\a.SSF"));
    EXPECT_EQ(p.Machine().HostPath("D:\\SETUPS.INI"), folder_ + "/disc/Setups.ini");
    EXPECT_EQ(p.Machine().HostPath("D:\\New Folder\\x"), folder_ + "/disc/New Folder/x");
    EXPECT_EQ(p.Machine().HostPath("Q:\\x"), std::nullopt);
    EXPECT_EQ(p.Machine().WindowsPath(folder_ + "/share/Products"), "\\\\Server\\Share\\Products");
    // A share is used in place: it becomes the current folder without any drive.
    ASSERT_TRUE(files.SetCurrentFolder("\\\\server\\share\\Products"));
    EXPECT_EQ(files.CurrentFolder(), "\\\\server\\share\\Products");
    EXPECT_TRUE(files.FileExists("A.ssf"));
    // Each drive keeps its own current folder; changing drives goes back to it.
    ASSERT_TRUE(files.CreateFolder("C:\\Temp\\Deep"));
    ASSERT_TRUE(files.SetCurrentFolder("C:\\Temp\\Deep"));
    ASSERT_TRUE(files.SetCurrentDrive('D'));
    EXPECT_EQ(files.CurrentFolder(), "D:\\");
    EXPECT_FALSE(files.FileExists("C:setups.ini"));
    EXPECT_TRUE(files.WriteFileAtomic("C:here.txt", "x"));
    EXPECT_TRUE(files.FileExists("C:\\Temp\\Deep\\here.txt"));
    ASSERT_TRUE(files.SetCurrentDrive('c'));
    EXPECT_EQ(files.CurrentFolder(), "C:\\Temp\\Deep");
}

TEST_F(MachineTest, CommandLinesFindProgramsAsCreateProcessDoes) {
    WriteHost("drive_c/Program Files/My Tool/run.exe",
              "#!/bin/sh\nprintf '%s|' \"$@\" > \"$(dirname \"$0\")/args.txt\"\npwd > \"$(dirname \"$0\")/cwd.txt\"\n"
              "echo 42 > \"$TOVEL_EXIT_CODE_FILE\"\n",
              true);
    WriteHost("drive_c/WINDOWS/system32/helper.exe", "#!/bin/sh\nexit 3\n", true);
    auto& p = Boot();
    auto run = [&](const std::string& line) {
        const auto started = p.Processes().Start(line, "C:\\WINDOWS");
        if (!started.processId) return started.error + 100000u;
        EXPECT_TRUE(p.Processes().Wait(*started.processId, 10000));
        return p.Processes().ExitCode(*started.processId).value_or(99999u);
    };
    // Unquoted with blanks: each blank is tried as the end of the program.
    EXPECT_EQ(run("C:\\Program Files\\My Tool\\run.exe /s \"a b\" c\\\"d"), 42u);
    EXPECT_EQ(ReadHost("drive_c/Program Files/My Tool/args.txt"), "/s|a b|c\"d|");
    EXPECT_EQ(ReadHost("drive_c/Program Files/My Tool/cwd.txt"), folder_ + "/drive_c/WINDOWS\n");
    EXPECT_EQ(run("\"c:\\program files\\my tool\\RUN.EXE\""), 42u);
    // Blanks after an unquoted program with blanks in its path are no arguments.
    EXPECT_EQ(run("C:\\Program Files\\My Tool\\run.exe   "), 42u);
    EXPECT_EQ(ReadHost("drive_c/Program Files/My Tool/args.txt"), "|");  // printf's format once, no argument
    // A bare name is searched in the system folder, ".exe" added.
    EXPECT_EQ(run("helper /x"), 3u);
    EXPECT_EQ(run("nothere.exe"), 100002u);
    // A file that cannot be run as a program.
    WriteHost("drive_c/plain.exe", "not a program", false);
    EXPECT_GE(run("C:\\plain.exe"), 100000u);
}

TEST_F(MachineTest, WindowsOfLivingProcessesAreFound) {
    auto& p = Boot();
    WriteHost("run/windows/" + std::to_string(getpid()) + "-1.win", "InstallShield_Win\nSetup\n");
    WriteHost("run/windows/999999999-1.win", "#32770\nOld Setup 4.01 SP1\n");  // its process is gone
    EXPECT_TRUE(p.Windows().FindTopLevelWindow("InstallShield_Win", "Setup"));
    EXPECT_TRUE(p.Windows().FindTopLevelWindow("", "set*"));
    EXPECT_FALSE(p.Windows().FindTopLevelWindow("*32770*", "*4.01 SP1*"));
}

TEST_F(MachineTest, DrivenClockMovesOnlyWhenAProgramSleeps) {
    auto& p = Boot();
    WriteHost("clock", "2026-11-22 23:59:58\n");
    EXPECT_DOUBLE_EQ(p.Clock().SecondsSinceMidnight(), 86398.0);
    EXPECT_DOUBLE_EQ(p.Clock().SecondsSinceMidnight(), 86398.0);  // it stands still
    const LocalTime before = p.Clock().Now();
    EXPECT_EQ(before.dayOfWeek, 0);  // a Sunday
    p.Clock().Sleep(3500);
    // Past midnight the timer starts again at 0, and the date moves on.
    EXPECT_DOUBLE_EQ(p.Clock().SecondsSinceMidnight(), 1.5);
    const LocalTime after = p.Clock().Now();
    EXPECT_EQ(after.day, 23);
    EXPECT_EQ(after.dayOfWeek, 1);
    EXPECT_EQ(ReadHost("clock"), "2026-11-23 00:00:01.500\n");
    // Leap day and year end come out right.
    EXPECT_EQ(clsMachineClock::FormatMilliseconds(*clsMachineClock::ParseMilliseconds("2024-02-29 12:00:00")),
              "2024-02-29 12:00:00.000\n");
    EXPECT_EQ(clsMachineClock::FormatMilliseconds(*clsMachineClock::ParseMilliseconds("2025-12-31 23:59:59.999") + 1),
              "2026-01-01 00:00:00.000\n");
    // A clock file that is no time leaves the host's clock in charge.
    WriteHost("clock", "soon");
    EXPECT_GT(p.Clock().Now().year, 2000);
    EXPECT_FALSE(clsMachineClock::ParseMilliseconds("2026-13-01 00:00:00"));
}

TEST_F(MachineTest, RestartSwitchesTheMachineOffAndEndsTheProcess) {
    auto& p = Boot();
    EXPECT_EXIT((void)p.System().Restart(2), ::testing::ExitedWithCode(kMachineRestartStatus), "");
    std::string error;
    auto machine = clsMachine::Open(folder_, error);
    ASSERT_TRUE(machine);
    EXPECT_EQ(machine->Config().powerState, "off");
}

} // namespace
} // namespace tovel::test
