// Pieces of the start that need no disc: the language codes, the resume pause and the
// switches a resumed run takes from the state file.
#include <gtest/gtest.h>

#include "settings/clsIniText.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/RunState.h"
#ifndef _WIN32
#include "tests/machine/MachineFixture.h"
#endif

namespace tovel {
namespace {

// The switches of the interrupted run come back; a value that is no Boolean, and a key that
// is missing, leave the switch as it is; the run's progress is no switch.
TEST(RestoreStartSwitches, TakesTheSwitchesItCanReadAndLeavesTheOthers) {
    SilentMode = LogSwitch = false;
    NoOSCheck = true;
    SilentPath = "before";
    DefaultLanguage = 1;
    std::vector<std::string> warnings;
    const auto state = clsIniText::Parse("[Parameters]\r\nDefaultLanguage=0\r\nNoOSCheck=maybe\r\nSilentMode=True\r\n"
                                         "SilentPath= C:\\KIT\\Tovel_Auto.ini \r\n",
                                         1252, warnings);
    RestoreStartSwitches(state);
    EXPECT_TRUE(SilentMode);
    EXPECT_EQ(SilentPath, "C:\\KIT\\Tovel_Auto.ini");
    EXPECT_TRUE(NoOSCheck);
    EXPECT_FALSE(LogSwitch);
    EXPECT_EQ(DefaultLanguage, 1);   // applied with the whole file, on the installation page
    SilentMode = NoOSCheck = false;
    SilentPath.clear();
}

TEST(LanguageIndexToCode, EveryFormAndEnglishForAnythingElse) {
    const char* const letters[] = {"A", "B", "C", "D", "E", "J"};
    const char* const names[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};
    const char* const locales[] = {"1031", "2057", "1036", "3082", "1040", "1041"};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(LanguageIndexToCode(i, 0), letters[i]);
        EXPECT_EQ(LanguageIndexToCode(i, 1), names[i]);
        EXPECT_EQ(LanguageIndexToCode(i, 2), locales[i]);
    }
    for (int index : {-1, 6, 1033}) {
        EXPECT_EQ(LanguageIndexToCode(index, 0), "B");
        EXPECT_EQ(LanguageIndexToCode(index, 2), "2057");  // British English, never 1033
    }
    EXPECT_EQ(LanguageIndexToCode(0, 3), "");
}

#ifndef _WIN32
// The pause runs on the machine's driven clock: it takes no real time and its end is exact.
class WaitSecondsTest : public test::MachineFixture {
protected:
    void SetUp() override {
        MachineFixture::SetUp();
        Boot();
        previous_ = InstallPlatform(std::move(platform_));
    }
    void TearDown() override {
        platform_.reset(static_cast<clsMachinePlatform*>(InstallPlatform(std::move(previous_)).release()));
        MachineFixture::TearDown();
    }
    std::unique_ptr<clsPlatform> previous_;
};

TEST_F(WaitSecondsTest, EndsOnTheRoundedStartPlusTheSeconds) {
    WriteHost("clock", "2026-11-22 00:01:40.400\n");  // 100.4 s: rounded to 100, so the end is 105
    WaitSeconds(5);
    EXPECT_EQ(ReadHost("clock"), "2026-11-22 00:01:45.000\n");
    WriteHost("clock", "2026-11-22 00:01:40.600\n");  // rounded up to 101: the pause is 5.4 s
    WaitSeconds(5);
    EXPECT_EQ(ReadHost("clock"), "2026-11-22 00:01:46.000\n");
}
#endif

} // namespace
} // namespace tovel
