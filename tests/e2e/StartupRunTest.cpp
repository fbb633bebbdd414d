// The setup started on a disc, as a person or a deployment tool starts it.
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

using StartupRun = SetupRun;

TEST_F(StartupRun, FreshMachineAndLogWithHeader) {
    UseSampleDisc();
    ASSERT_EQ(Run(), 0) << Output();
    EXPECT_NE(Output().find("Machine: " + Machine().string()), std::string::npos) << Output();
    const auto lines = LogLines();
    ASSERT_GE(lines.size(), 5u);
    EXPECT_EQ(lines[0], std::string(84, '-'));
    EXPECT_EQ(lines[1], "Logfile Header:");
    EXPECT_EQ(lines[2].rfind(" TovelSetup (Version: ", 0), 0u);
    EXPECT_EQ(lines[3].rfind(" Date created: ", 0), 0u);
    // A second start keeps the first log as the first backup.
    ASSERT_EQ(Run(), 0) << Output();
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

} // namespace
} // namespace tovel::test
