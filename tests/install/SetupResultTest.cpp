// What a finished setup's results mean for the run.
#include <gtest/gtest.h>

#include "install/clsSetupResult.h"

namespace tovel::test {
namespace {

OptionFileResults Results(const std::string& succeeded, int32_t reboot) {
    OptionFileResults results;
    results.SetupSucceeded = succeeded;
    results.RebootRequested = reboot;
    return results;
}

TEST(SetupResultTest, FailureStopAndRestartByTheResultFile) {
    struct Case {
        std::string succeeded;
        int32_t reboot;
        uint32_t exitCode;
        bool critical;
        bool failed;
        bool stop;
        RestartRule restart;
    };
    const Case cases[] = {
        {"1", 0, 0, true, false, false, RestartRule::None},
        {"0", 0, 0, false, true, false, RestartRule::None},
        {"0", 1, 0, true, true, true, RestartRule::AtEnd},
        {" 0 ", 0, 0, true, true, true, RestartRule::None},
        {"", 0, 1603, true, false, false, RestartRule::None},      // nothing written: no failure
        {"yes", 2, 0, false, false, false, RestartRule::Now},      // any other text is success
        {"1", 0, 0xFFFFFFFFu, true, false, false, RestartRule::None}, // the exit code alone decides nothing
        {"1", 7, 0, false, false, false, RestartRule::None},
        {"1", -1, 0, false, false, false, RestartRule::None},
    };
    for (const auto& c : cases) {
        const SetupOutcome outcome = clsSetupResult::Interpret(Results(c.succeeded, c.reboot), c.exitCode, c.critical, {});
        const std::string label = "\"" + c.succeeded + "\" reboot " + std::to_string(c.reboot);
        EXPECT_EQ(outcome.failed, c.failed) << label;
        EXPECT_EQ(outcome.stopRun, c.stop) << label;
        EXPECT_EQ(outcome.restart, c.restart) << label;
        EXPECT_EQ(outcome.exitCode, c.exitCode) << label;
    }
    const auto odd = clsSetupResult::Interpret(Results("1", 7), 0, false, {});
    EXPECT_EQ(odd.logLines.back(), "RebootRequested=7 ist ungültig und wird als 0 behandelt.");
}

TEST(SetupResultTest, StartAtEndProgramsListedByAProductAreLeftOut) {
    OptionFileResults results = Results("1", 0);
    results.startOnEndPrograms = {"c:\\tools\\viewer.exe", "c:\\tools\\monitor.exe", "notepad.exe"};
    results.startOnEndParameters = {"/a", "", "x.txt"};
    const SetupOutcome outcome =
        clsSetupResult::Interpret(results, 0, false, {"C:\\Tools\\Monitor.EXE", " NOTEPAD.exe "});
    const std::vector<StartOnEndProgram> kept{{"c:\\tools\\viewer.exe", "/a"}};
    EXPECT_EQ(outcome.startOnEnd, kept);
    const std::vector<std::string> filtered{"c:\\tools\\monitor.exe", "notepad.exe"};
    EXPECT_EQ(outcome.filtered, filtered);
    EXPECT_EQ(outcome.logLines[1], "     c:\\tools\\monitor.exe laut SSF-File nicht starten");
    EXPECT_EQ(outcome.logLines[2], "     notepad.exe laut SSF-File nicht starten");
    EXPECT_EQ(outcome.Text(), "succeeded; exit code 0; restart none; start at end c:\\tools\\viewer.exe /a; "
                              "not started c:\\tools\\monitor.exe; not started notepad.exe");
}

} // namespace
} // namespace tovel::test
