// The setup log: its header, the numbered backups of earlier runs, the switch for optional
// lines, the code page and line ends, and logs that cannot be written. The first part runs on
// both builds; the part that needs machine profiles or host permissions is Linux-only.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "common/mdlMessage.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsPrintLog.h"
#include "startup/mdlLog.h"
#include "tests/support/BedFixture.h"

#ifndef _WIN32

#include <filesystem>

#include "common/clsCodePage.h"
#include "tests/machine/MachineFixture.h"
#include "tests/support/clsWithoutPermissionOverride.h"
#endif

namespace tovel {
namespace {

std::vector<std::string> Lines(const std::string& bytes) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = bytes.find("\r\n", start)) != std::string::npos; start = end + 2) {
        lines.push_back(bytes.substr(start, end - start));
    }
    if (start < bytes.size()) lines.push_back(bytes.substr(start));  // a last line without CR LF
    return lines;
}

// Checks the five header lines from lines[at].
void ExpectHeader(const std::vector<std::string>& lines, size_t at, const std::string& dateBefore,
                  const std::string& dateAfter) {
    ASSERT_GE(lines.size(), at + 5);
    EXPECT_EQ(lines[at], std::string(84, '-'));
    EXPECT_EQ(lines[at + 1], "Logfile Header:");
    EXPECT_TRUE(std::regex_match(lines[at + 2], std::regex(R"( TovelSetup \(Version: \d+\.\d+\.\d+\))")))
        << lines[at + 2];
    EXPECT_TRUE(lines[at + 3] == " Date created: " + dateBefore || lines[at + 3] == " Date created: " + dateAfter)
        << lines[at + 3];
    EXPECT_TRUE(std::regex_match(lines[at + 4], std::regex(R"( Time created: .*\d.*)"))) << lines[at + 4];
}

// Counts messages, which the log must never show.
class MessageCounter {
public:
    MessageCounter() {
        SetMessageBoxHandler([this](const std::string&, int style, const std::string&) {
            ++count;
            return DefaultButtonResult(style);
        });
    }
    ~MessageCounter() { SetMessageBoxHandler(nullptr); }
    MessageCounter(const MessageCounter&) = delete;
    MessageCounter& operator=(const MessageCounter&) = delete;
    int count = 0;
};

// One run of the setup that logs a line of its own.
void RunSetup(const std::string& line) {
    StartLog();
    gLog->PrintLog(line);
}

// Puts the run state the log reads back after each test.
void ResetLogState() {
    clsRegistry::SetReporter(nullptr);
    gLog.reset();
    WorkFolder.clear();
    ContinuedAfterRestart = false;
    gSetupsIni.reset();
    SetLogSwitch(false);
}

// The /log switch; a disc without Setups.ini leaves every other default (and the log off).
void SwitchLogging(bool on) {
    if (!gSetupsIni) gSetupsIni = std::make_unique<clsSetupsIni>();
    SetLogSwitch(on);
}

class PrintLog : public test::BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        ResetLogState();
        WorkFolder = bed_->folder;
    }
    void TearDown() override {
        ResetLogState();
        BedFixture::TearDown();
    }

    clsPlatformFiles& Files() { return Platform().Files(); }
    std::string LogPath() const { return bed_->folder + "TOVELSETUP.LOG"; }
    std::string BackupPath(int n) const { return bed_->folder + "TOVELSETUP" + std::to_string(n) + ".LOG"; }
    std::string Read(const std::string& path) { return Files().ReadFile(path).value_or("<missing>"); }
    std::string Today() { return Platform().System().LongDate(Platform().Clock().Now()); }

};

TEST_F(PrintLog, NewLogStartsWithTheHeaderAndEndsLinesWithCrLf) {
    const std::string before = Today();
    StartLog();
    const std::string after = Today();
    ASSERT_TRUE(gLog);
    EXPECT_EQ(gLog->LogfileFullPath(), LogPath());
    gLog->PrintLog("Step one");
    gLog->PrintLog("");

    const std::string bytes = Read(LogPath());
    const auto lines = Lines(bytes);
    ASSERT_EQ(lines.size(), 7u) << bytes;
    ExpectHeader(lines, 0, before, after);
    EXPECT_EQ(lines[5], "Step one");
    EXPECT_EQ(lines[6], "");
    EXPECT_EQ(bytes.substr(bytes.size() - 12), "Step one\r\n\r\n");
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), std::count(bytes.begin(), bytes.end(), '\r'));
    EXPECT_EQ(Files().ListFolder(bed_->folder).size(), 1u) << "no old log, no backup";
}

TEST_F(PrintLog, SuccessiveRunsKeepTheLastFiveLogs) {
    ASSERT_TRUE(Files().WriteFileAtomic(BackupPath(7), "not ours"));
    for (int run = 1; run <= 7; ++run) RunSetup("run " + std::to_string(run));

    // Runs 2..6 took 1..5; run 7 moved them down, losing run 1's log. Above 5 nothing moves.
    for (int n = 1; n <= 5; ++n) {
        const auto lines = Lines(Read(BackupPath(n)));
        ASSERT_FALSE(lines.empty()) << n;
        EXPECT_EQ(lines.back(), "run " + std::to_string(n + 1)) << "backup " << n;
    }
    EXPECT_FALSE(Files().FileExists(BackupPath(6)));
    EXPECT_EQ(Read(BackupPath(7)), "not ours");
    const auto lines = Lines(Read(LogPath()));
    EXPECT_EQ(lines.size(), 7u) << "empty line, header, own line";
    EXPECT_EQ(lines.front(), "");
}

TEST_F(PrintLog, OldLogTakesTheFirstFreeNumber) {
    ASSERT_TRUE(Files().WriteFileAtomic(LogPath(), "old log\r\n"));
    for (int n : {1, 2, 4}) ASSERT_TRUE(Files().WriteFileAtomic(BackupPath(n), "backup " + std::to_string(n)));
    const std::string before = Today();
    StartLog();
    EXPECT_EQ(Read(BackupPath(3)), "old log\r\n");
    EXPECT_EQ(Read(BackupPath(4)), "backup 4");
    EXPECT_EQ(Read(BackupPath(1)), "backup 1");
    EXPECT_FALSE(Files().FileExists(BackupPath(5)));
    const auto lines = Lines(Read(LogPath()));
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[0], "");
    ExpectHeader(lines, 1, before, Today());
}

TEST_F(PrintLog, ContinuedRunAppendsToTheOldLog) {
    ASSERT_TRUE(Files().WriteFileAtomic(LogPath(), "before the restart\r\n"));
    ContinuedAfterRestart = true;
    RunSetup("after the restart");
    EXPECT_EQ(Read(LogPath()), "before the restart\r\nafter the restart\r\n");
    EXPECT_EQ(Files().ListFolder(bed_->folder).size(), 1u);
}

TEST_F(PrintLog, SwitchDecidesOnlyTheOptionalLines) {
    LogIfEnabled("before the log exists");  // no log yet: nothing, and no crash
    LogHeading("Nowhere");
    ASSERT_TRUE(Files().WriteFileAtomic(LogPath(), "old\r\n"));

    StartLog();
    LogIfEnabled("hidden");
    LogHeading("Hidden");
    EXPECT_EQ(Read(BackupPath(1)), "old\r\n") << "the log is backed up with logging off too";
    EXPECT_EQ(Lines(Read(LogPath())).size(), 6u) << "empty line and header only";
    // Bad input is logged whatever the switch says.
    EXPECT_FALSE(clsRegistry().InitWithRegPath("HKEY_CLASSES_ROOT\\.txt"));
    EXPECT_NE(Lines(Read(LogPath())).back().find("HKEY_CLASSES_ROOT\\.txt"), std::string::npos);

    SwitchLogging(true);
    LogIfEnabled("Product found");
    LogHeading("Installing");
    const auto lines = Lines(Read(LogPath()));
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[7], "Product found ");
    EXPECT_EQ(lines[8], "");
    EXPECT_EQ(lines[9], std::string(84, '-'));
    EXPECT_EQ(lines[10], "Installing:");
}

TEST_F(PrintLog, WritesTheAnsiCodePage) {
    ASSERT_EQ(Platform().System().AnsiCodePage(), 1252u);
    StartLog();
    const size_t header = Read(LogPath()).size();
    gLog->PrintLog("Gr\xC3\xB6\xC3\x9F" "e \xC3\x84\xC3\x96\xC3\x9C \xE2\x82\xAC");  // Größe ÄÖÜ €
    gLog->PrintLog("\xC5\x81\xC3\xB3\x64\xC5\xBA");                              // Łódź: Ł and ź are missing
    gLog->PrintLog("bad\xFF\xC3 bytes");                                          // not UTF-8
    EXPECT_EQ(Read(LogPath()).substr(header),
              "Gr\xF6\xDF" "e \xC4\xD6\xDC \x80\r\n"
              "?\xF3" "d?\r\n"
              "bad?? bytes\r\n");
}

TEST_F(PrintLog, UnwritableLogIsSkippedSilently) {
    MessageCounter messages;
    // A work folder that does not exist.
    WorkFolder = bed_->folder + "missing\\deeper\\";
    RunSetup("lost");
    SwitchLogging(true);
    LogHeading("lost");
    EXPECT_FALSE(Files().FolderExists(WorkFolder));

    // A backup name taken by a folder: the old log is kept whole and the new run follows it.
    gLog.reset();
    WorkFolder = bed_->folder;
    ASSERT_TRUE(Files().WriteFileAtomic(LogPath(), "last run\r\n"));
    ASSERT_TRUE(Files().CreateFolder(BackupPath(1)));
    RunSetup("this run");
    const auto lines = Lines(Read(LogPath()));
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[0], "last run");
    EXPECT_EQ(lines[1], std::string(84, '-'));
    EXPECT_EQ(lines[6], "this run");

    // No folder at all: nothing is written anywhere.
    gLog.reset();
    WorkFolder.clear();
    RunSetup("nowhere");
    EXPECT_EQ(gLog->LogfileFullPath(), "");
    EXPECT_EQ(messages.count, 0);
}

#ifndef _WIN32

class PrintLogMachine : public test::MachineFixture {
protected:
    void Start(const MachineConfig& config) {
        Boot({}, config);
        ResetLogState();
        WorkFolder = "C:\\";
        previous_ = InstallPlatform(std::move(platform_));
    }
    void TearDown() override {
        ResetLogState();
        InstallPlatform(std::move(previous_)).reset();
        MachineFixture::TearDown();
    }

    std::unique_ptr<clsPlatform> previous_;
};

TEST_F(PrintLogMachine, JapaneseMachineWritesShiftJis) {
    Start(*clsMachineProfile::Make("xppro", "ja"));
    const std::string before = Platform().System().LongDate(Platform().Clock().Now());
    StartLog();
    const std::string after = Platform().System().LongDate(Platform().Clock().Now());
    gLog->PrintLog("\xE3\x82\xBB\xE3\x83\x83\xE3\x83\x88\xE3\x82\xA2\xE3\x83\x83\xE3\x83\x97");  // セットアップ

    const std::string bytes = ReadHost("drive_c/TOVELSETUP.LOG");
    EXPECT_EQ(bytes.substr(bytes.size() - 14), "\x83\x5A\x83\x62\x83\x67\x83\x41\x83\x62\x83\x76\r\n");
    // The date of the header ("2026年3月1日") is in the code page too.
    const auto text = clsCodePage::ToUtf8(bytes, 932);
    ASSERT_TRUE(text.has_value());
    ExpectHeader(Lines(*text), 0, before, after);
}

TEST_F(PrintLogMachine, ReadOnlyDriveKeepsEverythingAndSaysNothing) {
    Start(clsMachineProfile::Default());
    WriteHost("drive_c/TOVELSETUP.LOG", "last run\r\n");
    const std::string drive = folder_ + "/drive_c";
    std::filesystem::permissions(drive + "/TOVELSETUP.LOG", std::filesystem::perms::owner_read);
    std::filesystem::permissions(drive, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    MessageCounter messages;
    {
        test::clsWithoutPermissionOverride readOnly;
        SwitchLogging(true);
        RunSetup("this run");
        LogIfEnabled("more");
        LogHeading("Heading");
    }
    std::filesystem::permissions(drive, std::filesystem::perms::owner_all);
    EXPECT_EQ(ReadHost("drive_c/TOVELSETUP.LOG"), "last run\r\n");
    EXPECT_FALSE(std::filesystem::exists(drive + "/TOVELSETUP1.LOG"));
    EXPECT_EQ(messages.count, 0);
}

#endif

} // namespace
} // namespace tovel
