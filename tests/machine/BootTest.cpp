// Booting an emulated machine: pending renames, then RunOnce.
#include <sstream>

#include "platform/posix/clsMachineBoot.h"
#include "tests/machine/MachineFixture.h"

namespace tovel::test {
namespace {

using BootTest = MachineFixture;

const char* const kRunOnce = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
const char* const kSessionManager = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";

TEST_F(BootTest, RenamesFromWinInitAndPendingOperations) {
    auto& p = Boot();
    auto& f = p.Files();
    for (const char* name : {"C:\\new.dll", "C:\\old.dll", "C:\\gone.tmp", "C:\\src.txt", "C:\\dst.txt", "C:\\keep.txt",
                             "C:\\blocked.txt", "C:\\win.new", "C:\\win.del"}) {
        ASSERT_TRUE(f.WriteFileAtomic(name, name));
    }
    ASSERT_TRUE(f.WriteFileAtomic("C:\\WINDOWS\\WININIT.INI",
                                  "[rename]\r\nC:\\win.dll=C:\\win.new\r\nNUL=C:\\win.del\r\n"));
    ASSERT_TRUE(p.Registry().SetValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations",
                                      clsRegValue::MultiString({"\\??\\C:\\new.dll", "!\\??\\C:\\old.dll",  //
                                                                "\\??\\C:\\gone.tmp", "",                 //
                                                                "C:\\src.txt", "!C:\\dst.txt",            //
                                                                "C:\\keep.txt", "C:\\blocked.txt"})));
    std::vector<std::string> report;
    ASSERT_TRUE(clsMachineBoot::Run(p, report));
    EXPECT_EQ(f.ReadFile("C:\\old.dll").value_or(""), "C:\\new.dll");
    EXPECT_FALSE(f.FileExists("C:\\new.dll"));
    EXPECT_FALSE(f.FileExists("C:\\gone.tmp"));
    EXPECT_EQ(f.ReadFile("C:\\dst.txt").value_or(""), "C:\\src.txt");
    // Without "!" an existing target is not replaced.
    EXPECT_TRUE(f.FileExists("C:\\keep.txt"));
    EXPECT_EQ(f.ReadFile("C:\\blocked.txt").value_or(""), "C:\\blocked.txt");
    EXPECT_EQ(f.ReadFile("C:\\win.dll").value_or(""), "C:\\win.new");
    EXPECT_FALSE(f.FileExists("C:\\win.del"));
    EXPECT_FALSE(f.FileExists("C:\\WINDOWS\\WININIT.INI"));
    EXPECT_TRUE(f.FileExists("C:\\WINDOWS\\WININIT.BAK"));
    EXPECT_FALSE(p.Registry().QueryValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations"));
}

TEST_F(BootTest, RunOnceValuesRunInNameOrderEachDeletedBeforeItRuns) {
    // Each program notes which RunOnce names are still in the registry when it runs.
    const std::string script =
        "#!/bin/sh\n"
        "echo \"$1: $(grep -o 'ZZZ_Tovel\\|A_First\\|!M_Keep' \"$TOVEL_MACHINE/registry.reg\" | tr '\\n' ' ')\" "
        ">> \"$TOVEL_MACHINE/drive_c/order.txt\"\n"
        "exit 5\n";
    WriteHost("drive_c/Tools/note.exe", script, true);
    auto& p = Boot();
    p.Machine().Config().powerState = "off";
    for (const char* name : {"ZZZ_Tovel", "A_First", "!M_Keep"}) {
        ASSERT_TRUE(p.Registry().SetValue(RegRoot::LocalMachine, kRunOnce, name,
                                          clsRegValue::String(std::string("C:\\Tools\\note.exe ") + name)));
    }
    std::vector<std::string> report;
    ASSERT_TRUE(clsMachineBoot::Run(p, report));
    std::istringstream order(ReadHost("drive_c/order.txt"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(order, line);) lines.push_back(line);
    ASSERT_EQ(lines.size(), 3u);
    // In the order of their names; each gone while it ran, but "!M_Keep" only after it ran.
    EXPECT_EQ(lines[0], "!M_Keep: ZZZ_Tovel ZZZ_Tovel A_First A_First !M_Keep !M_Keep ");
    EXPECT_EQ(lines[1], "A_First: ZZZ_Tovel ZZZ_Tovel ");
    EXPECT_EQ(lines[2], "ZZZ_Tovel: ");
    EXPECT_EQ(p.Registry().EnumValues(RegRoot::LocalMachine, kRunOnce).value_or(std::vector<std::string>{"?"}).size(), 0u);
    EXPECT_EQ(p.Machine().Config().powerState, "on");
    EXPECT_NE(std::find(report.begin(), report.end(), "RunOnce A_First: C:\\Tools\\note.exe A_First (exit code 5)"),
              report.end());
}

TEST_F(BootTest, UnstartableRunOnceIsReportedAndRemoved) {
    auto& p = Boot();
    ASSERT_TRUE(p.Registry().SetValue(RegRoot::LocalMachine, kRunOnce, "Broken", clsRegValue::String("C:\\nothing.exe")));
    std::vector<std::string> report;
    ASSERT_TRUE(clsMachineBoot::Run(p, report));
    EXPECT_EQ(report.back(), "RunOnce Broken: cannot start C:\\nothing.exe");
    EXPECT_FALSE(p.Registry().QueryValue(RegRoot::LocalMachine, kRunOnce, "Broken"));
}

} // namespace
} // namespace tovel::test
