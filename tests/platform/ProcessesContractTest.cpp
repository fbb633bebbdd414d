// Processes: started from a Windows command line, polled, waited for.
#include <gtest/gtest.h>

#include "platform/clsWindowsCommandLine.h"
#include "tests/support/TestBed.h"

namespace tovel::test {
namespace {

class ProcessesContract : public ::testing::Test {
protected:
    void SetUp() override { bed_ = MakeTestBed(); }
    clsPlatformProcesses& Processes() { return bed_->platform->Processes(); }
    std::string Child(uint32_t exitCode, uint32_t sleepMs) {
        return clsWindowsCommandLine::Quote(bed_->childProgram) + " " + std::to_string(exitCode) + " " +
               std::to_string(sleepMs);
    }
    std::unique_ptr<TestBed> bed_;
};

TEST_F(ProcessesContract, RunningThenRealExitCode) {
    const auto started = Processes().Start(Child(3010, 1500), bed_->folder);
    ASSERT_TRUE(started.processId.has_value()) << "error " << started.error;
    const uint32_t pid = *started.processId;
    EXPECT_EQ(Processes().ExitCode(pid), kStillActive);
    EXPECT_FALSE(Processes().Wait(pid, 10));
    EXPECT_TRUE(Processes().Wait(pid, 30000));
    EXPECT_EQ(Processes().ExitCode(pid), 3010u);  // more than the 8 bits of a host exit status
    Processes().Release(pid);
}

TEST_F(ProcessesContract, ChildEndingWith259LooksRunning) {
    const auto started = Processes().Start(Child(kStillActive, 0), "");
    ASSERT_TRUE(started.processId.has_value());
    EXPECT_TRUE(Processes().Wait(*started.processId, 30000));
    // The process has ended, but its code is the one that means "still running".
    EXPECT_EQ(Processes().ExitCode(*started.processId), kStillActive);
    Processes().Release(*started.processId);
}

TEST_F(ProcessesContract, MissingProgramAndUnknownProcess) {
    const auto started = Processes().Start("\"" + bed_->folder + "no such setup.exe\" /s", "");
    EXPECT_FALSE(started.processId.has_value());
    EXPECT_EQ(started.error, 2u);
    EXPECT_FALSE(Processes().ExitCode(12345678).has_value());
    EXPECT_FALSE(Processes().Wait(12345678, 0));
    const auto opened = Processes().Open(bed_->folder + "missing.txt", "", "");
    EXPECT_EQ(opened.error, 2u);
    EXPECT_EQ(Processes().FindAssociatedProgram(bed_->folder + "missing.txt"), "");
}

TEST_F(ProcessesContract, OpenRunsAProgramWithItsParameters) {
    const auto opened = Processes().Open(bed_->childProgram, "7 0", bed_->folder);
    ASSERT_TRUE(opened.processId.has_value()) << "error " << opened.error;
    EXPECT_TRUE(Processes().Wait(*opened.processId, 30000));
    EXPECT_EQ(Processes().ExitCode(*opened.processId), 7u);
    Processes().Release(*opened.processId);
}

} // namespace
} // namespace tovel::test
