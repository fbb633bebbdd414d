// The system: version data of the machine's profile, folders, language, clock.
#include <gtest/gtest.h>

#include "tests/support/TestBed.h"

namespace tovel::test {
namespace {

TEST(SystemContract, VersionOfTheProfile) {
    auto bed = MakeTestBed();
    const OsVersion v = bed->platform->System().Version();
    EXPECT_EQ(v.major, bed->expectedVersion.major);
    EXPECT_EQ(v.minor, bed->expectedVersion.minor);
    EXPECT_EQ(v.build & 0xFFFF, bed->expectedVersion.build & 0xFFFF);
    EXPECT_EQ(v.platformId, bed->expectedVersion.platformId);
    EXPECT_EQ(v.csdVersion, bed->expectedVersion.csdVersion);
    EXPECT_EQ(v.productType, bed->expectedVersion.productType);
    EXPECT_EQ(bed->platform->System().UserDefaultLanguage(), bed->expectedLanguage);
    EXPECT_EQ(bed->platform->System().AnsiCodePage(), 1252u);
}

TEST(SystemContract, FoldersEndInABackslashAndExist) {
    auto bed = MakeTestBed();
    auto& system = bed->platform->System();
    for (const std::string& folder : {system.WindowsFolder(), system.SystemFolder(), system.TempFolder(),
                                      system.ProgramFolder()}) {
        ASSERT_FALSE(folder.empty());
        EXPECT_EQ(folder.back(), '\\') << folder;
        EXPECT_TRUE(bed->platform->Files().FolderExists(folder)) << folder;
    }
    EXPECT_EQ(system.SystemFolder().rfind(system.WindowsFolder(), 0), 0u);
    EXPECT_TRUE(system.Environment("windir").has_value());
    EXPECT_TRUE(system.Environment("WINDIR").has_value());
    EXPECT_FALSE(system.Environment("TOVEL_NO_SUCH_VARIABLE").has_value());
    EXPECT_GT(system.Screen().width, 0);
    EXPECT_FALSE(system.Fonts().empty());
}

TEST(SystemContract, ClockAndLocaleFormats) {
    auto bed = MakeTestBed();
    auto& clock = bed->platform->Clock();
    const double seconds = clock.SecondsSinceMidnight();
    EXPECT_GE(seconds, 0.0);
    EXPECT_LT(seconds, 86400.0);
    const LocalTime now = clock.Now();
    EXPECT_GE(now.year, 2000);
    LocalTime t{2026, 11, 22, 14, 5, 9, 0};
    const std::string date = bed->platform->System().LongDate(t);
    EXPECT_NE(date.find("November"), std::string::npos) << date;
    EXPECT_NE(date.find("2026"), std::string::npos) << date;
    EXPECT_EQ(bed->platform->System().LongTime(t), "14:05:09");
}

} // namespace
} // namespace tovel::test
