// The installation run on a fresh machine (emulated on Linux, Wine's on Windows), each product
// a stand-in setup with its own behaviour file, ticked by hand as the page's timer ticks it:
// real processes, exit codes and windows. A recording view stands in for the page.
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <thread>

#include "catalogue/clsSIFDetection.h"
#include "catalogue/CatalogueGlobals.h"
#include "install/clsInstallContext.h"
#include "install/clsInstallRun.h"
#include "common/mdlMessage.h"
#include "install/clsDcomCheck.h"
#include "install/clsDumpFile.h"
#include "install/clsLorvexRun.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {

namespace {

constexpr const char* kFakeLog = "C:\\FAKESETUP.LOG";
constexpr const char* kRunOnce = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
constexpr const char* kCurrentVersion = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr const char* kOle = "SOFTWARE\\Microsoft\\OLE";
constexpr const char* kSharedKey = "SOFTWARE\\QUARLO\\DRELSW\\GLOBAL";
// What a run leaves in the root of the Windows drive, where products find their result file.
// On Windows one machine serves every test, so each test starts and ends without them.
constexpr const char* kRootFiles[] = {"C:\\FAKESETUP.LOG", "C:\\OPFILE.TXT", "C:\\INSTDUMP.TMP"};
// ... and the machine-wide values it writes.
constexpr const char* kMachineValues[][2] = {{kRunOnce, "ZZZ_TovelSetup"},
                                             {kRunOnce, "ZZ_Lorvex"},
                                             {kOle, "LegacyAuthenticationLevel"},
                                             {kOle, "LegacyImpersonationLevel"},
                                             {kOle, "LegacyAuthenticationLevelOld"},
                                             {kOle, "LegacyImpersonationLevelOld"},
                                             {kSharedKey, "SharedPath"}};

class RecordingView : public clsInstallView {
public:
    void ShowProductStatus(int line, const std::string& text) override { status[line] = text; }
    void MarkRunning(int line) override { running = line; }
    void ShowProgress(int d, int t) override {
        done = d;
        total = t;
    }
    void ShowStartOnBegin(const std::string& command) override { begin.push_back(command); }
    void ShowEndControls() override { endControls = true; }
    void LeavePage() override { ++left; }
    void ClosePage() override { ++closed; }

    std::map<int, std::string> status;
    std::vector<std::string> begin;
    int running = 0, done = -1, total = -1, left = 0, closed = 0;
    bool endControls = false;
};

struct Product {
    std::string code{};
    std::string behaviour{};      ///< lines of the stand-in's [Setup] section
    std::string general{};        ///< extra lines of GENERAL
    std::string english{};        ///< extra lines of the language section
    bool selected = true;
};

class InstallRunTest : public CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        // The stand-in finds its result file in the root of the Windows drive, as products do.
        WorkFolder = "C:\\";
        HomePath = bed_->folder;
        OSPlatformId = 2;
        ExitStatus = 0;
        gApplications.RemoveAllItem();
        ClearMachine();
    }
    void TearDown() override {
        ClearMachine();
        Lorvex = false;
        LorvexAdditionalCommand.clear();
        gApplications.RemoveAllItem();
        ExitStatus = 0;
        CatalogueFixture::TearDown();
    }

    static void ClearMachine() {
        for (const char* file : kRootFiles) (void)Platform().Files().DeleteFile(file);
        for (const auto& value : kMachineValues) (void)clsRegistry(RegRoot::LocalMachine, value[0]).DeleteValue(value[1]);
    }

    void Settings(const std::string& lines) {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n" + lines);
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder->SetSettings(gSetupsIni.get());
    }

    /// Puts the products on the "disc" (the test's folder) and in the catalogue, in order.
    void Disc(const std::vector<Product>& products) {
        for (const auto& p : products) {
            WriteFile(p.code + "\\FAKESETUP.INI", "[Setup]\r\nName=" + p.code + "\r\n" + p.behaviour);
            ASSERT_TRUE(Platform().Files().CopyFile(bed_->fakeSetup, bed_->folder + p.code + "\\SETUP.EXE", false));
            const std::string ssf = WriteFile(
                p.code + "\\" + p.code + ".ssf",
                "[GENERAL]\r\nFileType=ssf\r\nProductCode=" + p.code + "\r\nBuild=1.0\r\n" + p.general +
                    "[LANGUAGES]\r\nLanguageB=English\r\n[English]\r\nDescription=Product " + p.code + "\r\nSetupFile=" +
                    bed_->folder + p.code + "\\SETUP.EXE\r\nSetupFileParameters=/silent\r\n" + p.english);
            clsSIFApplicationItem item;
            item.Read(ssf, bed_->folder);
            clsSIFDetection(gPlaceholder.get()).Detect(item);
            item.Selected = p.selected;
            gApplications.Add(std::move(item));
            codes_.push_back(p.code);
        }
    }

    clsInstallRun& Run() {
        if (!run_) run_ = std::make_unique<clsInstallRun>(view_, clsInstallPlan::Make(gApplications, codes_, clsInstallContext::Current("B")), gApplications);
        return *run_;
    }

    /// Ticks until the run stops or a condition holds, waiting a little host time between
    /// ticks for the setups, which run as real processes. The ticks done.
    template <typename Condition>
    int TickUntil(Condition done, int limit = 400) {
        int ticks = 0;
        while (ticks < limit && !done()) {
            ++ticks;
            if (!Run().Tick()) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return ticks;
    }
    int TickToEnd() {
        return TickUntil([&] { return Run().Stopped(); });
    }
    static std::string FakeLog() { return Platform().Files().ReadFile(kFakeLog).value_or(""); }
    /// Waits host time until the stand-in's log holds a text.
    static bool FakeLogged(const std::string& text) {
        for (int i = 0; i < 2000; ++i) {
            if (FakeLog().find(text) != std::string::npos) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
    static std::string HklmValue(const std::string& key, const std::string& name) {
        const clsRegistry reg(RegRoot::LocalMachine, key);
        return reg.ValueExist(name) ? reg.QueryValue(name) : "(missing)";
    }
    static bool WindowGone(const std::string& windowClass) {
        for (int i = 0; i < 2000; ++i) {
            if (!Platform().Windows().FindTopLevelWindow(windowClass, "*")) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
    static bool Exists(const std::string& path) { return Platform().Files().FileExists(path); }

    RecordingView view_;
    std::vector<std::string> codes_;
    std::unique_ptr<clsInstallRun> run_;
};

TEST_F(InstallRunTest, ProductsSucceedFailAndAreSkippedInTheirOrder) {
    Disc({{"ALPHA", "StartOnEnd1=C:\\Tools\\Viewer.exe\r\nParaStartOnEnd1=/Show\r\n"},
          {"BETA", "SetupSucceeded=0\r\n"},
          {"GAMMA", "", "", "", false},
          {"DELTA", "RebootRequested=1\r\n"}});
    // A state file of an earlier restart is void once a setup runs.
    ASSERT_TRUE(Platform().Files().WriteFileAtomic("C:\\INSTDUMP.TMP", "[Info]\r\n"));

    TickToEnd();

    EXPECT_TRUE(Run().Complete());
    EXPECT_FALSE(Run().CriticalFailed());
    EXPECT_EQ(view_.left, 1);
    EXPECT_TRUE(view_.endControls);
    EXPECT_EQ(Run().FailedLines(), "Product BETA\r\n");
    EXPECT_TRUE(Run().RestartNeeded());
    EXPECT_FALSE(Exists("C:\\INSTDUMP.TMP"));
    // Each started setup in the order of the list; the skipped one never.
    const std::string fake = FakeLog();
    EXPECT_LT(fake.find("ALPHA: start"), fake.find("BETA: start"));
    EXPECT_LT(fake.find("BETA: start"), fake.find("DELTA: start"));
    EXPECT_EQ(fake.find("GAMMA:"), std::string::npos);
    const std::string log = LogText();
    EXPECT_NE(log.find("Product GAMMA is skipped."), std::string::npos);
    EXPECT_NE(log.find("Aufruf mit Parameter: " + bed_->folder + "ALPHA\\SETUP.EXE /silent"), std::string::npos);
    EXPECT_NE(log.find("TimeStamp - Start: "), std::string::npos);
    ASSERT_EQ(Run().StartOnEndPrograms().size(), 1U);
    EXPECT_EQ(Run().StartOnEndPrograms()[0].program, "c:\\tools\\viewer.exe");
    EXPECT_EQ(view_.done, 4);
    EXPECT_EQ(view_.total, 4);
    EXPECT_EQ(view_.running, 0);
    EXPECT_FALSE(Run().Tick());   // a stopped run stays stopped
}

TEST_F(InstallRunTest, AMissingSetupFileAsksForTheDiscAndCancelSkipsTheProduct) {
    Disc({{"GONE", ""}, {"THERE", ""}});
    ASSERT_TRUE(Platform().Files().DeleteFile(bed_->folder + "GONE\\SETUP.EXE"));
    int asked = 0;
    SetMessageBoxHandler([&](const std::string&, int style, const std::string&) {
        ++asked;
        EXPECT_EQ(DefaultButtonResult(style), mb::kIdCancel);
        // OK once: the file is looked for again; then Cancel.
        return asked == 1 ? mb::kIdOk : mb::kIdCancel;
    });
    TickToEnd();
    SetMessageBoxHandler(nullptr);
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(Run().Complete());
    const std::string log = LogText();
    EXPECT_NE(log.find("File Not Found: " + bed_->folder + "GONE\\SETUP.EXE"), std::string::npos);
    EXPECT_NE(log.find("Product GONE is skipped."), std::string::npos);
    EXPECT_NE(FakeLog().find("THERE: start"), std::string::npos);
}

TEST_F(InstallRunTest, SsfMessageActionsShowTheProductsTextsBeforeItsSetup) {
    Disc({{"NOTE", "",
           "SSFVersion=5.2\r\n[VERSIONS]\r\nRegPath1=HKEY_LOCAL_MACHINE\\SOFTWARE\\TovelTest\\Note\r\nRegKey1=Version\r\n"
           "FirstInstAction1=$SSFMessageBox02\r\nFirstInstAction2=$ssfmessagebox07\r\n",
           "SSFMessageBox2=Close the plant viewer first.\r\n"}});
    std::vector<std::string> shown;
    SetMessageBoxHandler([&](const std::string& text, int, const std::string&) {
        shown.push_back(text);
        return mb::kIdOk;
    });
    TickToEnd();
    SetMessageBoxHandler(nullptr);
    EXPECT_EQ(shown, (std::vector<std::string>{"Close the plant viewer first.", "Error"}));
    EXPECT_NE(FakeLog().find("NOTE: start"), std::string::npos);
}

TEST_F(InstallRunTest, ACriticalProductThatFailsStopsTheRun) {
    Disc({{"BASE", "SetupSucceeded=0\r\n", "IsCriticalComponent=True\r\n"}, {"AFTER", ""}});
    TickToEnd();
    EXPECT_TRUE(Run().Stopped());
    EXPECT_FALSE(Run().Complete());
    EXPECT_TRUE(Run().CriticalFailed());
    EXPECT_EQ(ExitStatus, 1603);
    EXPECT_EQ(view_.left, 1);
    EXPECT_EQ(FakeLog().find("AFTER:"), std::string::npos);
    EXPECT_EQ(Run().FailedLines(), "Product BASE\r\n");
}

TEST_F(InstallRunTest, AnEmptyListEndsOnTheFirstTickAndTheCounterStartsAgainAfter20000) {
    Run().SetTickCounter(clsInstallRun::kTickCounterLimit);
    EXPECT_FALSE(Run().Tick());
    EXPECT_EQ(Run().TickCounter(), 1);
    EXPECT_NE(LogText().find("Timer zurückgesetzt."), std::string::npos);
    EXPECT_TRUE(Run().Complete());
    EXPECT_EQ(view_.left, 1);
    EXPECT_EQ(bed_->restarts, 0);
}

TEST_F(InstallRunTest, ASetupWithoutWindowsCountsAsRunningFor20TicksWhenMoreProductsFollow) {
    const std::string hold = bed_->folder + "hold-one.txt";
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(hold, "x"));
    Disc({{"ONE", "HoldWhileFileExists=" + hold + "\r\n"}, {"TWO", ""}});
    // The first tick starts ONE; the next ones see it running.
    TickUntil([&] { return Run().NextPosition() == 2; });
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(Run().Tick());
    ASSERT_TRUE(Platform().Files().DeleteFile(hold));
    ASSERT_TRUE(FakeLogged("ONE: exit"));
    // Its process is gone, yet TWO starts only on the 20th tick since ONE started.
    while (Run().NextPosition() == 2) {
        const int32_t before = Run().TickCounter();
        ASSERT_LT(before, 400);
        ASSERT_TRUE(Run().Tick());
        if (Run().NextPosition() == 3) {
            EXPECT_EQ(before + 1, 20);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    TickToEnd();
    EXPECT_TRUE(Run().Complete());
}

TEST_F(InstallRunTest, ASecondProcessWithAnInstallShieldWindowKeepsTheSetupRunning) {
    const std::string hold = bed_->folder + "hold-engine.txt";
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(hold, "x"));
    Disc({{"ENGINE", "SecondProcess=True\r\nWindowClass=InstallShield_Win\r\nWindowTitle=Setup\r\nHoldWhileFileExists=" + hold +
                         "\r\n"}});
    TickUntil([&] { return Run().NextPosition() == 2; });
    ASSERT_TRUE(FakeLogged("handed over to process"));
    ASSERT_TRUE(FakeLogged("ENGINE: window"));
    // The first process has ended; past the 20 ticks the window alone holds the run.
    for (int i = 0; i < 30; ++i) ASSERT_TRUE(Run().Tick());
    EXPECT_FALSE(Run().Stopped());
    ASSERT_TRUE(Platform().Files().DeleteFile(hold));
    TickToEnd();
    EXPECT_TRUE(Run().Complete());
    EXPECT_EQ(Run().FailedLines(), "");
}

TEST_F(InstallRunTest, AProductWindowTitleHoldsTheSetupThreeTicksAfterItCloses) {
    const std::string hold = bed_->folder + "hold-tool.txt";
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(hold, "x"));
    Disc({{"TOOL",
           "SecondProcess=True\r\nWindowClass=ToolMain\r\nWindowTitle=Tool Configuration 2.0\r\nHoldWhileFileExists=" +
               hold + "\r\n",
           "", "WaitForApplicationTitle1=Tool Config*\r\n"}});
    TickUntil([&] { return Run().NextPosition() == 2; });
    ASSERT_TRUE(FakeLogged("TOOL: window"));
    // The first process hands over and ends a moment later (longer on a busy machine); from
    // the tick that sees it ended, the window found sets the count back on every tick.
    int checks = 0;
    TickUntil([&] { return ++checks > 1 && Run().TickCounter() == 0; });
    for (int i = 0; i < 25; ++i) ASSERT_TRUE(Run().Tick());
    EXPECT_EQ(Run().TickCounter(), 0);   // the window sets the count back on every tick
    ASSERT_TRUE(Platform().Files().DeleteFile(hold));
    ASSERT_TRUE(WindowGone("ToolMain"));
    ASSERT_TRUE(Run().Tick());
    ASSERT_TRUE(Run().Tick());
    EXPECT_FALSE(Run().Tick());   // the third tick without the window takes the setup as ended
    EXPECT_TRUE(Run().Complete());
}

TEST_F(InstallRunTest, ARestartNowSavesTheStateRegistersTheResumeAndRestartsTheMachine) {
    Settings("AutoResumeAfterRestart=True\r\n");
    Disc({{"FIRST", ""}, {"REBOOT", "RebootRequested=2\r\nExitCode=3010\r\n"}, {"LAST", ""}});
    TickToEnd();

    EXPECT_EQ(bed_->restarts, 1);
    EXPECT_EQ(ExitStatus, 1641);
    EXPECT_TRUE(Run().Stopped());
    EXPECT_FALSE(Run().Complete());
    EXPECT_EQ(view_.closed, 1);
    EXPECT_EQ(view_.left, 0);
    EXPECT_EQ(FakeLog().find("LAST:"), std::string::npos);
    EXPECT_FALSE(Exists("C:\\OPFILE.TXT"));
    EXPECT_EQ(HklmValue(kRunOnce, "ZZZ_TovelSetup"), clsDumpFile::ProgramPath());
    // The state names the product that asked, so the resumed run starts with it.
    clsIniFile dump;
    dump.SetFullPath("C:\\INSTDUMP.TMP");
    dump.SetSectionName("Parameters");
    EXPECT_EQ(dump.GetString("RunningSetupIndex", ""), "2");
    EXPECT_EQ(dump.GetString("SetupStatus", ""), "3010");
}

TEST_F(InstallRunTest, ARestartOfTheFirstProductWithoutRunOnceKeepsItsPosition) {
    Settings("AutoResumeAfterRestart=True\r\n");
    Disc({{"FIRST", "RebootRequested=2\r\n", "RegisterInRunOnce=0\r\n"}, {"LAST", ""}});
    TickToEnd();
    EXPECT_EQ(bed_->restarts, 1);
    EXPECT_EQ(HklmValue(kRunOnce, "ZZZ_TovelSetup"), "(missing)");
    clsIniFile dump;
    dump.SetFullPath("C:\\INSTDUMP.TMP");
    dump.SetSectionName("Parameters");
    EXPECT_EQ(dump.GetString("RunningSetupIndex", ""), "1");
}

TEST_F(InstallRunTest, AWrongDcomDefaultIsChangedAndRestartsBeforeAnyProduct) {
    Settings("CheckDCOM=True\r\n");
    ASSERT_TRUE(clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\OLE").SetKeyValue("LegacyAuthenticationLevel", "2", RegType::Dword));
    ASSERT_TRUE(clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\OLE").SetKeyValue("LegacyImpersonationLevel", "3", RegType::Dword));
    Disc({{"ONLY", ""}});

    EXPECT_FALSE(Run().Tick());
    EXPECT_EQ(bed_->restarts, 1);
    EXPECT_EQ(FakeLog(), "");
    EXPECT_EQ(HklmValue("SOFTWARE\\Microsoft\\OLE", "LegacyImpersonationLevel"), "2");
    EXPECT_EQ(HklmValue("SOFTWARE\\Microsoft\\OLE", "LegacyImpersonationLevelOld"), "3");
    EXPECT_EQ(HklmValue("SOFTWARE\\Microsoft\\OLE", "LegacyAuthenticationLevelOld"), "2");
    EXPECT_EQ(HklmValue(kRunOnce, "ZZZ_TovelSetup"), clsDumpFile::ProgramPath());
    clsIniFile dump;
    dump.SetFullPath("C:\\INSTDUMP.TMP");
    dump.SetSectionName("Parameters");
    EXPECT_EQ(dump.GetString("RunningSetupIndex", ""), "0");   // nothing started yet
    // Once set, the check lets the resumed run go on; on the 9x family it never acts.
    EXPECT_FALSE(clsDcomCheck::ChangedForRestart(true, 2));
    ASSERT_TRUE(clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\OLE").DeleteValue("LegacyImpersonationLevel"));
    EXPECT_FALSE(clsDcomCheck::ChangedForRestart(true, 1));
}

TEST_F(InstallRunTest, AResumedRunGoesOnAfterTheProductThatAskedAndCountsOnlyItsOwnProducts) {
    Disc({{"DONE", ""}, {"ASKED", ""}, {"NEXT", ""}, {"REST", ""}});
    Run().ResumeAt(2, 3010, "Product DONE\r\n");
    TickToEnd();
    EXPECT_TRUE(Run().Complete());
    EXPECT_EQ(FakeLog().find("DONE:"), std::string::npos);
    EXPECT_EQ(FakeLog().find("ASKED:"), std::string::npos);
    EXPECT_NE(FakeLog().find("NEXT: start"), std::string::npos);
    EXPECT_NE(FakeLog().find("REST: start"), std::string::npos);
    EXPECT_NE(LogText().find("Setup Exitcode: 3010"), std::string::npos);
    EXPECT_EQ(view_.total, 2);
    EXPECT_EQ(Run().FailedLines(), "Product DONE\r\n");
}

TEST_F(InstallRunTest, ARunResumedBeforeAnyProductStartsWithTheFirst) {
    Disc({{"FIRST", ""}});
    Run().ResumeAt(0, 0, "");
    TickToEnd();
    EXPECT_NE(FakeLog().find("FIRST: start"), std::string::npos);
    EXPECT_TRUE(Run().Complete());
}

TEST_F(InstallRunTest, TheDiscsSystemFilesAreBroughtInOnceBeforeTheFirstProduct) {
    const std::string savedSystemDir = SystemDir;
    SystemDir = bed_->folder + "system32\\";
    ASSERT_TRUE(Platform().Files().CreateFolder(SystemDir));
    WriteFile("System\\runtime.txt", "delivered");
    Disc({{"FIRST", ""}, {"SECOND", ""}});
    TickToEnd();
    SystemDir = savedSystemDir;

    EXPECT_TRUE(Run().Complete());
    EXPECT_TRUE(Exists(bed_->folder + "system32\\runtime.txt"));
    const std::string log = LogText();
    EXPECT_LT(log.find("System files from " + bed_->folder + "System\\"), log.find("Aufruf mit Parameter: "));
    EXPECT_EQ(log.find("runtime.txt does not exist"), log.rfind("runtime.txt does not exist"));
    EXPECT_EQ(log.find("runtime.txt already exists"), std::string::npos);
}

} // namespace

TEST_F(InstallRunTest, ProgramsToStartBeforeASetupRunAndEndFirstEvenWhenOneIsMissing) {
    const std::string prepare = bed_->folder + "PREP\\SETUP.EXE";
    Disc({{"PREP", "\r\n[Begin]\r\nName=BEGIN\r\nWriteResults=False\r\nSeconds=0.2\r\n", "",
           "StartOnBegin1=" + prepare + "\r\nParaStartOnBegin1=/fake=Begin\r\nStartOnBegin2=C:\\Gone\\nothing.exe\r\n"},
          {"LATER", "", "", "StartOnBegin1=" + prepare + "\r\nParaStartOnBegin1=/fake=Begin\r\n", false}});
    TickToEnd();

    EXPECT_TRUE(Run().Complete());
    EXPECT_EQ(Run().FailedLines(), "");
    const std::string fake = FakeLog();
    // The program has ended before the setup starts; the skipped product's never runs.
    EXPECT_LT(fake.find("BEGIN: exit"), fake.find("PREP: start"));
    EXPECT_EQ(fake.find("BEGIN: start"), fake.rfind("BEGIN: start"));
    const std::string log = LogText();
    EXPECT_NE(log.find("StartOnBegin: " + prepare + " /fake=Begin"), std::string::npos);
    EXPECT_NE(log.find("Error: Could not start program: C:\\Gone\\nothing.exe"), std::string::npos);
    EXPECT_EQ(view_.begin, (std::vector<std::string>{prepare + " /fake=Begin", "C:\\Gone\\nothing.exe", ""}));
}

TEST(LorvexRunTest, ResultFileNamesJoinTheirPartsAndAreCutTo48Characters) {
    struct Row {
        const char* base;
        const char* pack;
        const char* tag;
        int counter;
        const char* suffix;
        const char* expected;
    };
    const Row rows[] = {
        {"Setup", "V1.2", "", 0, "", "SetupV1.2_00.csv"},
        {"Setup", "V1.2", "", 7, "", "SetupV1.2_07.csv"},
        {"Setup", "V1.2", "", 123, "", "SetupV1.2_123.csv"},   // more runs than two digits hold
        {"Setup", "V1.2", "", clsLorvexRun::kFinalCounter, "_end", "SetupV1.2_98_end.csv"},
        {"Setup", "V1.2", "_reboot", clsLorvexRun::kRestartCounter, "", "SetupV1.2_reboot_99.csv"},
        {"", "", "", 1, "", "_01.csv"},
        // Cut before ".csv": the counter of a long name is lost, the extension never.
        {"TovelSetupLog_Workstation_Hall7", "2026.11.25-Service-Pack-3", "", 5, "",
         "TovelSetupLog_Workstation_Hall72026.11.25-Servic.csv"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefg", "", "", 98, "_end",
         "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefg_98_e.csv"},
    };
    for (const Row& row : rows) {
        const std::string name = clsLorvexRun::ResultFileName(row.base, row.pack, row.tag, row.counter, row.suffix);
        EXPECT_EQ(name, row.expected) << row.base << " " << row.counter;
        EXPECT_LE(name.size(), clsLorvexRun::kNameLength + 4);
    }
}

class LorvexInstallRunTest : public InstallRunTest {
protected:
    /// The tool on the disc is the stand-in setup; its behaviour file leaves the products'
    /// results alone and names it in the stand-in's log.
    void ToolOnDisc() {
        WriteFile("Lorvex\\Lorvex.ini", "[LORVEX]\r\nExecute=lorvex\r\n");
        ASSERT_TRUE(Platform().Files().CopyFile(bed_->fakeSetup, bed_->folder + "Lorvex\\Lorvex.exe", false));
        WriteFile("LORVEXFAKE.INI", "[Setup]\r\nName=LORVEX\r\nWriteResults=False\r\n");
        Lorvex = true;
        LorvexSearchPath = "C:\\";
        LorvexAdditionalCommand = "/fakeini=" + bed_->folder + "LORVEXFAKE.INI ";
        // The machine's common files folder, where the tool is copied, is the test's own.
        commonFiles_ = CurrentVersion().QueryValue("CommonFilesDir");
        ASSERT_TRUE(CurrentVersion().SetKeyValue("CommonFilesDir", bed_->folder + "Common Files", RegType::Sz));
    }
    void TearDown() override {
        if (!commonFiles_.empty()) (void)CurrentVersion().SetKeyValue("CommonFilesDir", commonFiles_, RegType::Sz);
        InstallRunTest::TearDown();
    }
    static clsRegistry CurrentVersion() { return clsRegistry(RegRoot::LocalMachine, kCurrentVersion); }
    std::string SharedFolder() const { return bed_->folder + "Shared"; }
    /// The stand-in's start lines of the tool, in order.
    static std::vector<std::string> ToolRuns() {
        std::vector<std::string> runs;
        for (const auto& line : clsString::Split(FakeLog(), "\n")) {
            if (line.find("LORVEX: start") != std::string::npos) runs.push_back(line);
        }
        return runs;
    }

    std::string commonFiles_;
};

TEST_F(LorvexInstallRunTest, TheToolRunsAfterEachProductWhenAskedAndOnceMoreAtTheEnd) {
    Settings("LorvexAfterEachProduct=True\r\nPackversion=PV7\r\n");
    ASSERT_TRUE(clsRegistry(RegRoot::LocalMachine, kSharedKey).SetKeyValue("SharedPath", SharedFolder(), RegType::Sz));
    WriteFile("Shared\\Quarlo\\Common\\placeholder.txt", "");
    ToolOnDisc();
    Disc({{"ALPHA", ""}, {"BETA", "SetupSucceeded=0\r\n"}});
    TickToEnd();

    EXPECT_TRUE(Run().Complete());
    const std::vector<std::string> runs = ToolRuns();
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_NE(runs[0].find("PV7_00.csv"), std::string::npos);
    EXPECT_NE(runs[1].find("PV7_01.csv"), std::string::npos);
    EXPECT_NE(runs[2].find("PV7_98_end.csv"), std::string::npos);
    const std::string fake = FakeLog();
    EXPECT_LT(fake.find("ALPHA: start"), fake.find("PV7_00.csv"));
    EXPECT_LT(fake.find("PV7_00.csv"), fake.find("BETA: start"));
    // The tool's runs change nothing of the products' own results.
    EXPECT_EQ(Run().FailedLines(), "Product BETA\r\n");
    EXPECT_EQ(view_.status[1], "");   // the product's own status (no texts loaded here), not the tool's
    EXPECT_EQ(view_.status[2], "final Lorvex ... ");
    EXPECT_TRUE(Exists(SharedFolder() + "\\Quarlo\\Common\\Lorvex.ini"));
    const std::string log = LogText();
    EXPECT_NE(log.find("Lorvex: Common in Registry gefunden. "), std::string::npos);
    EXPECT_NE(log.find("Lorvex: \"" + SharedFolder() + "\\Quarlo\\Common\\Lorvex.exe\" /fakeini=" + bed_->folder +
                       "LORVEXFAKE.INI /beginend \"C:\\\" \""),
              std::string::npos);
    EXPECT_EQ(log.find("Lorvex: Common angelegt. "), std::string::npos);
}

TEST_F(LorvexInstallRunTest, WithoutTheSharedPathTheCommonFolderIsMadeAndOnlyTheFinalRunHappens) {
    Settings("");
    ToolOnDisc();
    Disc({{"ALPHA", ""}});
    TickToEnd();

    const std::vector<std::string> runs = ToolRuns();
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_NE(runs[0].find("_98_end.csv"), std::string::npos);
    const std::string common = bed_->folder + "Common Files\\Quarlo\\Common\\";
    EXPECT_TRUE(Exists(common + "Lorvex.exe"));
    const std::string log = LogText();
    EXPECT_LT(log.find("Lorvex: Common nicht in Registry gefunden. "), log.find("Lorvex: Common angelegt. "));

    // A restart pending at the end leaves the tool's run after it to RunOnce.
    clsLorvexRun::RegisterAfterRestart();
    const std::string value = HklmValue(kRunOnce, "ZZ_Lorvex");
    EXPECT_EQ(value.find("\"" + common + "Lorvex.exe\""), 0U) << value;
    EXPECT_NE(value.find("_reboot_99.csv\" -message"), std::string::npos) << value;
}

TEST_F(LorvexInstallRunTest, AToolThatIsOffNeitherRunsNorRegisters) {
    Settings("LorvexAfterEachProduct=True\r\n");
    ToolOnDisc();
    Lorvex = false;
    Disc({{"ALPHA", ""}});
    TickToEnd();
    clsLorvexRun::RegisterAfterRestart();
    EXPECT_TRUE(ToolRuns().empty());
    EXPECT_EQ(HklmValue(kRunOnce, "ZZ_Lorvex"), "(missing)");
    EXPECT_EQ(LogText().find("Lorvex:"), std::string::npos);
}

} // namespace tovel::test
