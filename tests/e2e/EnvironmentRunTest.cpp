// The checks of the machine, each failing in turn on a machine of its kind: the message, the
// log lines and the exit status a deployment tool sees.
#include "platform/posix/clsMachineRegistry.h"
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

constexpr int kFailed = 1603 & 0xFF;

class EnvironmentRun : public SetupRun {
protected:
    /// A disc whose first page is the second welcome page, so the wizard's checks run at once.
    void WriteCheckDisc(const std::string& language, const std::string& settings, const std::string& os) {
        WriteDisc("Setups.ini", "[SETTINGS]\r\nCreateLogFile=1\r\nWelcomeTimeout=0\r\n" + settings +
                                    "[OS]\r\nWin95=1\r\nWin98=1\r\nWinMe=1\r\nWinNT4=1\r\nWin2k=1\r\nWinXP=1\r\n"
                                    "WinNETServer=1\r\n" + os + "[LANGUAGES]\r\n" + Languages(language));
    }
    /// Only this language offered: no setup-language page.
    static std::string Languages(const std::string& offered) {
        std::string lines;
        for (const char* name : {"German", "English", "French", "Spanish", "Italian", "Japanese"})
            lines += std::string(name) + (offered == name ? "=enable\r\n" : "=hide\r\n");
        return lines;
    }
    void CreateMachine(const std::string& profile) { ASSERT_EQ(Run({"/nooscheck"}, {"--create=" + profile}), kEndedWithoutAnswers) << Output(); }
    void SetMachineValue(const std::string& key, const std::string& name, const clsRegValue& value) {
        clsMachineRegistry registry((Machine() / "registry.reg").string(), 1252);
        std::string error;
        ASSERT_TRUE(registry.Load(error)) << error;
        ASSERT_TRUE(registry.SetValue(RegRoot::LocalMachine, key, name, value));
    }
    /// The log lines from the first that equals `first`, as many as `expected` has.
    void ExpectLogFrom(const std::vector<std::string>& expected) {
        const auto lines = LogLines();
        const auto at = std::find(lines.begin(), lines.end(), expected.front());
        ASSERT_NE(at, lines.end()) << expected.front();
        ASSERT_GE(static_cast<size_t>(lines.end() - at), expected.size());
        EXPECT_EQ(std::vector<std::string>(at, at + static_cast<long>(expected.size())), expected);
    }
};

TEST_F(EnvironmentRun, UnsupportedSystemOnXP) {
    CreateMachine("xppro");
    WriteCheckDisc("English", "", "WinXPExclude=service pack 2\r\n");
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(ShowedMessage("TovelSetup", "This version of Windows is not supported by the setup.")) << Output();
    ExpectLogFrom({"Windows XP ", "Version of Operating System not supported. ", "   OSMajorVersion: 5 ",
                   "   OSMinorVersion: 1 ", "   OSPlatformId: 2 ", "   CSDVersion: Service Pack 2 "});
    // /nooscheck passes the check: the wizard waits on its first page.
    EXPECT_EQ(Run({"/nooscheck"}), kEndedWithoutAnswers) << Output();
    EXPECT_FALSE(Logged("Version of Operating System not supported. "));
}

TEST_F(EnvironmentRun, ExcludedGerman98) {
    CreateMachine("win98,de");
    WriteCheckDisc("German", "", "Win98Exclude=4.10.1998; A\r\n[German]\r\nMsgSupportedOS=Nur Windows 98 Erstausgabe fehlt.\r\n");
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(ShowedMessage("TovelSetup", "Nur Windows 98 Erstausgabe fehlt.")) << Output();
    EXPECT_TRUE(Logged("   CSDVersion: A "));
}

TEST_F(EnvironmentRun, PendingRestartOn95) {
    CreateMachine("win95");
    WriteCheckDisc("English", "", "");
    WriteMachine("drive_c/WINDOWS/WININIT.INI", "[rename]\r\n");
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(Logged("Win95: WININIT.INI exists in system directory. TOVEL_SETUP stopped. "));
    EXPECT_TRUE(ShowedMessage("TovelSetup", "Please restart Windows before installing new programs!")) << Output();
}

TEST_F(EnvironmentRun, PendingRenamesOnAJapanese2000) {
    CreateMachine("win2000,ja");
    WriteCheckDisc("Japanese", "", "");
    SetMachineValue("SYSTEM\\CurrentControlSet\\Control\\Session Manager", "PendingFileRenameOperations",
                    clsRegValue::MultiString({"C:\\a.tmp", ""}));
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(Logged("WinNT: Pending File Rename Operations. TOVEL_SETUP stopped. "));
}

TEST_F(EnvironmentRun, NoAdministratorRightsOnNT4) {
    CreateMachine("nt4");
    std::string ini = ReadMachine("machine.ini");
    const size_t at = ini.find("Administrator=1");
    ASSERT_NE(at, std::string::npos) << ini;
    ini.replace(at, 15, "Administrator=0");
    WriteMachine("machine.ini", ini);
    WriteCheckDisc("English", "", "");
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(Logged("Abort: User has no Admin rights  "));
    EXPECT_TRUE(ShowedMessage("TovelSetup", "You need administrator rights")) << Output();
    // Without CheckForAdmin the same user may go on.
    WriteCheckDisc("English", "CheckForAdmin=0\r\n", "");
    EXPECT_EQ(Run(), kEndedWithoutAnswers) << Output();
}

TEST_F(EnvironmentRun, MissingPackageOnAJapanese2003) {
    CreateMachine("win2003,ja");
    WriteCheckDisc("Japanese", "CheckPackageKey=SOFTWARE\\Tovel\\Base\r\nCheckPackageName=Version\r\nCheckPackageValue=26.0\r\n", "");
    EXPECT_EQ(Run(), kFailed) << Output();
    EXPECT_TRUE(Logged("Package SOFTWARE\\Tovel\\Base\\Version Wert: Setup wird abgebrochen "));
    // The built-in Japanese text: "これらの製品に必要な".
    EXPECT_NE(Output().find("\xE3\x81\x93\xE3\x82\x8C\xE3\x82\x89\xE3\x81\xAE\xE8\xA3\xBD\xE5\x93\x81"), std::string::npos)
        << Output();
    SetMachineValue("SOFTWARE\\Tovel\\Base", "Version", clsRegValue::String("26.0"));
    EXPECT_EQ(Run(), kEndedWithoutAnswers) << Output();
}

TEST_F(EnvironmentRun, InternetExplorerMissingOlderAndTooOld) {
    CreateMachine("xppro");
    const std::string explorer = "SOFTWARE\\Microsoft\\Internet Explorer";
    WriteCheckDisc("English", "PreCheckForIE=1\r\nValidIEVersion=62900\r\n", "");
    EXPECT_EQ(Run(), kEndedWithoutAnswers) << Output();
    EXPECT_TRUE(Logged("Internet Explorer not found. Setup continued. Expected version: 62900 "));
    SetMachineValue(explorer, "Build", clsRegValue::String("55.4807"));
    EXPECT_EQ(Run(), kFailed) << Output();
    ExpectLogFrom({"Check Warning IE:", "Internet-Explorer Version:  ", "  Installed version: 55.4807 ",
                   "The installed internet explorer is not the expected version. Setup is terminated. Expected version: "
                   "62900 "});
    // A warning only: Yes goes on.
    WriteCheckDisc("English", "PreCheckForIE=1\r\nSoftSwitchIE=1\r\nValidIEVersion=62900\r\n", "");
    EXPECT_EQ(Run({}, {}, "click MessageButton 0\n"), kEndedWithoutAnswers) << Output();
    EXPECT_TRUE(Logged("The installed internet explorer is not the expected version. Setup continued. Expected version: 62900 "));
    // No (the close box too): the user stopped the setup.
    EXPECT_EQ(Run({}, {}, "click MessageButton 1\n"), kEndedWithoutAnswers) << Output();
    EXPECT_TRUE(Logged("The installed internet explorer is not the expected version. Setup abort of user. Expected version: 62900 "));
    SetMachineValue(explorer, "Build", clsRegValue::String("62900.2180"));
    EXPECT_EQ(Run(), kEndedWithoutAnswers) << Output();
    EXPECT_FALSE(Logged("The installed internet explorer is not the expected version. Setup continued. Expected version: 62900 "));
}

} // namespace
} // namespace tovel::test
