// The stand-in product setup, started as the run starts a product setup, on a fresh machine
// per test: what it answers in the result file, its exit code, its window, its second
// process, a real installation and its removal through the uninstall command.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "fakesetup/clsFakeArguments.h"
#include "fakesetup/clsFakeBehaviour.h"
#include "fakesetup/clsFakeInstall.h"
#include "platform/posix/clsMachinePlatform.h"
#include "settings/clsIniFile.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {

namespace {

constexpr const char* kSetup = "C:\\Setup\\SETUP.EXE";
constexpr const char* kOpFile = "C:\\OPFILE.TXT";
constexpr const char* kUninstallKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tovel Fake";

// What the run writes before it starts a setup.
constexpr const char* kRequests =
    "[Description]\r\nNote=Option File from TOVEL_SETUP\r\nProductDescription=Fake\r\n"
    "[SETUPREQUESTS]\r\nDestinationDrive=C\r\nDestinationPath=\\Program Files\\Tovel\\Fake\r\n"
    "[RESULTS]\r\nSetupSucceeded=\r\nRebootRequested=\r\n";

class FakeSetupTest : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
        std::filesystem::create_directories(machine.Folder() + "/drive_c/Setup");
        std::filesystem::create_symlink(TOVEL_FAKESETUP_HOST, machine.Folder() + "/drive_c/Setup/SETUP.EXE");
        Write(kOpFile, kRequests);
    }

    static void Write(const std::string& path, const std::string& text) {
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(path, text)) << path;
    }
    static void Behaviour(const std::string& text) { Write("C:\\Setup\\FAKESETUP.INI", text); }

    /// Starts the fake as the run does and lets the first process end; its exit code.
    static uint32_t Run(const std::string& arguments) {
        const auto started = Platform().Processes().Start(std::string("\"") + kSetup + "\" " + arguments, "C:\\Setup\\");
        EXPECT_TRUE(started.processId.has_value());
        if (!started.processId) return 0;
        EXPECT_TRUE(Platform().Processes().Wait(*started.processId, 30000));
        const uint32_t code = Platform().Processes().ExitCode(*started.processId).value_or(0);
        Platform().Processes().Release(*started.processId);
        return code;
    }

    static std::string Result(const std::string& key, const std::string& file = kOpFile) {
        clsIniFile ini;
        ini.SetFullPath(file);
        ini.SetSectionName("RESULTS");
        return ini.GetString(key, "(missing)");
    }
    static std::string Text(const std::string& path) { return Platform().Files().ReadFile(path).value_or(""); }
    static std::string Registry(const std::string& key, const std::string& name) {
        const auto value = Platform().Registry().QueryValue(RegRoot::LocalMachine, key, name);
        return value ? value->text : "(missing)";
    }

    /// Waits (host time, generously) until the window's presence is as wanted.
    static bool WindowBecomes(bool present, const std::string& windowClass, const std::string& title) {
        for (int i = 0; i < 1000; ++i) {
            if (Platform().Windows().FindTopLevelWindow(windowClass, title) == present) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return false;
    }
};

TEST(FakeSetupArguments, ResultFileAndExitCodeTexts) {
    EXPECT_EQ(clsFakeArguments::NamedOpFile("/s of:D:\\TEMP\\OPFILE.TXT /x"), "D:\\TEMP\\OPFILE.TXT");
    EXPECT_EQ(clsFakeArguments::NamedOpFile("\"OPFILE=C:\\Temp Dir\\opfile.txt\""), "C:\\Temp Dir\\opfile.txt");
    EXPECT_EQ(clsFakeArguments::NamedOpFile("OF:C:\\nothing"), "");
    EXPECT_EQ(clsFakeBehaviour::ParseExitCode("-1073741819"), 3221225477u);
    EXPECT_EQ(clsFakeBehaviour::ParseExitCode("4294967295"), 4294967295u);
    EXPECT_EQ(clsFakeBehaviour::ParseExitCode("12x"), 0u);
    EXPECT_EQ(clsFakeBehaviour::ParseExitCode("99999999999"), 0u);
    EXPECT_EQ(clsFakeBehaviour::ParseSeconds("1.5"), 1500u);
    EXPECT_EQ(clsFakeBehaviour::ParseSeconds("-3"), 0u);
    EXPECT_EQ(clsFakeBehaviour::ParseSeconds("soon"), 0u);
    EXPECT_EQ(clsFakeInstall::UninstallString("C:\\Program Files\\X\\SETUP.EXE", "My Key"),
              "\"C:\\Program Files\\X\\SETUP.EXE\" -f\"My Key\"");
}

TEST_F(FakeSetupTest, SucceedsFailsAndAsksForRestartsAsTold) {
    // No behaviour file: a setup that succeeds at once.
    EXPECT_EQ(Run("/lang=2057 /silent"), 0u);
    EXPECT_EQ(Result("SetupSucceeded"), "1");
    EXPECT_EQ(Result("RebootRequested"), "0");
    EXPECT_EQ(Result("StartOnEnd1"), "(missing)");

    Behaviour("[Failing]\r\nName=Broken\r\nSetupSucceeded=0\r\nRebootRequested=1\r\n"
              "StartOnEnd1=C:\\Tools\\Viewer.exe\r\nParaStartOnEnd1=/read\r\nStartOnEnd2=Notes.exe\r\n"
              "[Restart]\r\nRebootRequested=2\r\nParamAfterReboot=/resume\r\n");
    EXPECT_EQ(Run("/fake=Failing"), 0u);
    EXPECT_EQ(Result("SetupSucceeded"), "0");
    EXPECT_EQ(Result("RebootRequested"), "1");
    EXPECT_EQ(Result("StartOnEnd1"), "C:\\Tools\\Viewer.exe");
    EXPECT_EQ(Result("ParaStartOnEnd1"), "/read");
    EXPECT_EQ(Result("StartOnEnd2"), "Notes.exe");

    EXPECT_EQ(Run("/fake=Restart"), 0u);
    EXPECT_EQ(Result("RebootRequested"), "2");
    EXPECT_EQ(Result("ParamAfterReboot"), "/resume");
    // The run's requests stay as they were.
    clsIniFile ini;
    ini.SetFullPath(kOpFile);
    ini.SetSectionName("SETUPREQUESTS");
    EXPECT_EQ(ini.GetString("DestinationDrive", ""), "C");

    EXPECT_EQ(Text("C:\\FAKESETUP.LOG"),
              "Setup: start /lang=2057 /silent\r\nSetup: opfile C:\\OPFILE.TXT\r\n"
              "Setup: results SetupSucceeded=1 RebootRequested=0\r\nSetup: exit 0\r\n"
              "Broken: start /fake=Failing\r\nBroken: opfile C:\\OPFILE.TXT\r\n"
              "Broken: results SetupSucceeded=0 RebootRequested=1 StartOnEnd1=C:\\Tools\\Viewer.exe "
              "StartOnEnd2=Notes.exe\r\nBroken: exit 0\r\n"
              "Restart: start /fake=Restart\r\nRestart: opfile C:\\OPFILE.TXT\r\n"
              "Restart: results SetupSucceeded=1 RebootRequested=2\r\nRestart: exit 0\r\n");
}

TEST_F(FakeSetupTest, ExitCodesKeepAllTheirBits) {
    Behaviour("[Crash]\r\nExitCode=-1073741819\r\n[Pending]\r\nExitCode=259\r\n"
              "[Reboot]\r\nExitCode=3010\r\n[Odd]\r\nExitCode=three\r\n");
    EXPECT_EQ(Run("/fake=Crash"), 3221225477u);
    EXPECT_EQ(Run("/fake=Pending"), 259u);
    EXPECT_EQ(Run("/fake=Reboot"), 3010u);
    EXPECT_EQ(Run("/fake=Odd"), 0u);
    EXPECT_NE(Text("C:\\FAKESETUP.LOG").find("Crash: exit -1073741819\r\n"), std::string::npos);
}

TEST_F(FakeSetupTest, ResultFileWhereTheParametersSay) {
    ASSERT_TRUE(Platform().Files().CreateFolder("C:\\Temp Dir"));
    Write("C:\\Temp Dir\\OPFILE.TXT", kRequests);
    EXPECT_EQ(Run("/s \"OF:C:\\Temp Dir\\OPFILE.TXT\""), 0u);
    EXPECT_EQ(Result("SetupSucceeded", "C:\\Temp Dir\\OPFILE.TXT"), "1");
    EXPECT_EQ(Result("SetupSucceeded"), "");  // the default file is not touched
    EXPECT_NE(Text("C:\\Temp Dir\\FAKESETUP.LOG").find("opfile C:\\Temp Dir\\OPFILE.TXT\r\n"), std::string::npos);

    // A file that is not there is made, as a setup writes its answer anyway.
    EXPECT_EQ(Run("OPFILE=C:\\Temp Dir\\new\\..\\OPFILE.TXT"), 0u);
    EXPECT_NE(Text("C:\\Temp Dir\\FAKESETUP.LOG").find("start OPFILE="), std::string::npos);
}

TEST_F(FakeSetupTest, WindowLivesWhileTheSetupDoes) {
    Write("C:\\hold", "");
    Behaviour("[Setup]\r\nWindowClass=InstallShield_Win\r\nWindowTitle=Setup\r\nHoldWhileFileExists=C:\\hold\r\n");
    const auto started = Platform().Processes().Start(std::string(kSetup), "C:\\Setup\\");
    ASSERT_TRUE(started.processId);
    EXPECT_TRUE(WindowBecomes(true, "InstallShield_Win", "Setup"));
    EXPECT_FALSE(Platform().Windows().FindTopLevelWindow("isdelete", ""));
    EXPECT_EQ(Platform().Processes().ExitCode(*started.processId), kStillActive);
    ASSERT_TRUE(Platform().Files().DeleteFile("C:\\hold"));
    EXPECT_TRUE(Platform().Processes().Wait(*started.processId, 30000));
    EXPECT_FALSE(Platform().Windows().FindTopLevelWindow("InstallShield_Win", "Setup"));
    Platform().Processes().Release(*started.processId);
}

TEST_F(FakeSetupTest, SecondProcessKeepsTheWindowAndAnswers) {
    Write("C:\\hold", "");
    Behaviour("[Setup]\r\nSecondProcess=1\r\nExitCode=7\r\nWindowClass=InstallShieldSetup30\r\n"
              "WindowTitle=InstallShieldSetup30\r\nHoldWhileFileExists=C:\\hold\r\nRebootRequested=1\r\n");
    EXPECT_EQ(Run("/s"), 7u);  // the first process ends at once
    EXPECT_TRUE(WindowBecomes(true, "InstallShieldSetup30", "InstallShieldSetup30"));
    ASSERT_TRUE(Platform().Files().DeleteFile("C:\\hold"));
    EXPECT_TRUE(WindowBecomes(false, "InstallShieldSetup30", ""));
    EXPECT_EQ(Result("RebootRequested"), "1");
    const std::string log = Text("C:\\FAKESETUP.LOG");
    EXPECT_NE(log.find("Setup: handed over to process "), std::string::npos);
    EXPECT_NE(log.find("Setup: second process /s /fakechild\r\n"), std::string::npos);
    EXPECT_LT(log.find("handed over"), log.find("results SetupSucceeded=1 RebootRequested=1"));
}

TEST_F(FakeSetupTest, InstallsForRealAndItsUninstallCommandRemovesIt) {
    ASSERT_TRUE(Platform().Files().CreateFolder("C:\\Setup\\Payload\\bin"));
    Write("C:\\Setup\\Payload\\readme.txt", "hello");
    Write("C:\\Setup\\Payload\\bin\\tool.dll", "MZ");
    Behaviour("[Setup]\r\nPayload=Payload\r\nUninstallKey=Tovel Fake\r\nDisplayName=Tovel Fake 6.0\r\n"
              "VersionRegPath=HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\Fake\r\nVersionRegKey=Version\r\nVersion=6.0.1\r\n");
    EXPECT_EQ(Run(""), 0u);
    EXPECT_EQ(Text("C:\\Program Files\\Tovel\\Fake\\readme.txt"), "hello");
    EXPECT_EQ(Text("C:\\Program Files\\Tovel\\Fake\\bin\\tool.dll"), "MZ");
    EXPECT_EQ(Registry("SOFTWARE\\Tovel\\Fake", "Version"), "6.0.1");
    EXPECT_EQ(Registry(kUninstallKey, "DisplayName"), "Tovel Fake 6.0");
    EXPECT_EQ(Registry(kUninstallKey, "InstallLocation"), "C:\\Program Files\\Tovel\\Fake");
    const std::string command = Registry(kUninstallKey, "UninstallString");
    ASSERT_EQ(command, "\"C:\\Setup\\SETUP.EXE\" -f\"Tovel Fake\"");

    // The run makes such a command unattended before it starts it.
    const auto removal = Platform().Processes().Start("\"C:\\Setup\\SETUP.EXE\" -a -y -f\"Tovel Fake\"", "");
    ASSERT_TRUE(removal.processId);
    ASSERT_TRUE(Platform().Processes().Wait(*removal.processId, 30000));
    EXPECT_EQ(Platform().Processes().ExitCode(*removal.processId), 0u);
    EXPECT_FALSE(Platform().Files().FolderExists("C:\\Program Files\\Tovel\\Fake"));
    EXPECT_FALSE(Platform().Registry().KeyExists(RegRoot::LocalMachine, kUninstallKey));
    EXPECT_EQ(Registry("SOFTWARE\\Tovel\\Fake", "Version"), "(missing)");
    EXPECT_NE(Text("C:\\FAKESETUP.LOG").find("Tovel Fake: remove unattended -a -y \"-fTovel Fake\"\r\n"),
              std::string::npos);

    // Removing again finds nothing and says so.
    EXPECT_EQ(Run("-f\"Tovel Fake\""), 1u);
    EXPECT_NE(Text("C:\\FAKESETUP.LOG").find("Tovel Fake: remove Tovel Fake: not installed"), std::string::npos);
}

TEST_F(FakeSetupTest, InstallWithoutDestinationInstallsNothing) {
    Write(kOpFile, "[RESULTS]\r\n");
    Behaviour("[Setup]\r\nPayload=Payload\r\nUninstallKey=Tovel Fake\r\n");
    EXPECT_EQ(Run(""), 0u);
    EXPECT_FALSE(Platform().Registry().KeyExists(RegRoot::LocalMachine, kUninstallKey));
    EXPECT_NE(Text("C:\\FAKESETUP.LOG").find("no destination in SETUPREQUESTS"), std::string::npos);
    EXPECT_EQ(Result("SetupSucceeded"), "1");
}

TEST_F(FakeSetupTest, GarbageResultsAndABrokenBehaviourFile) {
    Behaviour("[Setup]\r\nGarbage=yes\r\n");
    EXPECT_EQ(Run(""), 0u);
    const std::string text = Text(kOpFile);
    EXPECT_NE(text.find(std::string("\x01\x02\xff\xfe", 4)), std::string::npos);
    EXPECT_NE(text.find(std::string(1, '\0')), std::string::npos);
    EXPECT_EQ(Result("RebootRequested"), "99999999999999999999");
    // What the run wrote before is still there.
    EXPECT_NE(text.find("Note=Option File from TOVEL_SETUP"), std::string::npos);

    // A behaviour file that is no INI file at all gives a setup that succeeds.
    Write(kOpFile, kRequests);
    Write("C:\\Setup\\FAKESETUP.INI", std::string("\xff\xfe\x00[Setup\r\nExitCode\r\n=5\r\n", 21));
    EXPECT_EQ(Run(""), 0u);
    EXPECT_EQ(Result("SetupSucceeded"), "1");
}

TEST_F(FakeSetupTest, TimeIsSpentOnTheMachinesClock) {
    auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
    Write("C:\\Setup\\FAKESETUP.INI", "[Setup]\r\nSeconds=90\r\nWindowClass=InstallShield_Win\r\nWindowTitle=Setup\r\n");
    std::filesystem::path clock = machine.Folder() + "/clock";
    ASSERT_TRUE(Platform().Files().WriteFileAtomic("C:\\x", ""));  // the machine is writable
    {
        std::FILE* f = std::fopen(clock.c_str(), "w");
        ASSERT_NE(f, nullptr);
        std::fputs("2026-11-22 23:59:00\n", f);
        std::fclose(f);
    }
    EXPECT_EQ(Run(""), 0u);
    const LocalTime now = Platform().Clock().Now();
    EXPECT_EQ(now.day, 23);
    EXPECT_EQ(now.hour * 3600 + now.minute * 60 + now.second, 30);
    EXPECT_FALSE(Platform().Windows().FindTopLevelWindow("InstallShield_Win", "Setup"));
    EXPECT_NE(Text("C:\\FAKESETUP.LOG").find("working 90000 ms\r\n"), std::string::npos);
}

} // namespace
} // namespace tovel::test
