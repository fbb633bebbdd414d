#include <gtest/gtest.h>

#include "platform/clsWindowsCommandLine.h"

namespace tovel {
namespace {

TEST(WindowsCommandLine, SplitsAsTheCRuntimeDoes) {
    const struct {
        const char* line;
        std::vector<std::string> args;
    } cases[] = {
        {"a b   c", {"a", "b", "c"}},
        {"\"a b\" c", {"a b", "c"}},
        {"a\\\\b c", {"a\\\\b", "c"}},                  // backslashes without a quote stay
        {"\"C:\\Disc\\\\\" x", {"C:\\Disc\\", "x"}},   // 2n backslashes then a quote: n of them
        {"a\\\"b", {"a\"b"}},                           // 2n+1 backslashes: a literal quote
        {"\"a\"\"b\"", {"a\"b"}},                       // "" inside quotes
        {"/path=\"D:\\My Disc\"", {"/path=D:\\My Disc"}},
        {"\"\"", {""}},
        {"   ", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(clsWindowsCommandLine::SplitArguments(c.line), c.args) << c.line;
}

TEST(WindowsCommandLine, ProgramPartAndQuotingRoundTrip) {
    auto split = clsWindowsCommandLine::SplitProgram("  \"C:\\Program Files\\x.exe\"  /s /v\"a b\"");
    EXPECT_EQ(split.program, "C:\\Program Files\\x.exe");
    EXPECT_EQ(split.rest, "/s /v\"a b\"");
    split = clsWindowsCommandLine::SplitProgram("setup.exe");
    EXPECT_EQ(split.program, "setup.exe");
    EXPECT_EQ(split.rest, "");
    const std::vector<std::string> args = {"plain", "with blank", "quote\"inside", "trail\\", "trail blank\\", "",
                                           "/home/me/logs/disc", "silent"};
    EXPECT_EQ(clsWindowsCommandLine::SplitArguments(clsWindowsCommandLine::Join(args)), args);
}

} // namespace
} // namespace tovel
