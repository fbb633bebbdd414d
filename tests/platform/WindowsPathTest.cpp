#include <gtest/gtest.h>

#include "platform/clsWindowsPath.h"

namespace tovel {
namespace {

std::string Resolve(const std::string& path, char drive = 'C', const std::string& unc = "") {
    return clsWindowsPath::Join(clsWindowsPath::Resolve(path, drive, unc, [](char letter) {
        return letter == 'C' ? std::string("C:\\Work\\Sub") : std::string(1, letter) + ":\\";
    }));
}

TEST(WindowsPath, ResolvesEveryKindOfPath) {
    const struct {
        const char* path;
        char drive;
        const char* unc;
        const char* expected;
    } cases[] = {
        {"C:\\WINDOWS\\system32", 'C', "", "C:\\WINDOWS\\system32"},
        {"c:/windows//system32/", 'C', "", "C:\\windows\\system32"},
        {"Setups.ini", 'C', "", "C:\\Work\\Sub\\Setups.ini"},
        {"..\\x\\.\\y", 'C', "", "C:\\Work\\x\\y"},
        {"\\Top", 'C', "", "C:\\Top"},
        {"C:name", 'D', "", "C:\\Work\\Sub\\name"},  // the current folder of drive C
        {"D:name", 'C', "", "D:\\name"},
        {"C:\\..\\..", 'C', "", "C:\\"},
        {"\\\\server\\share\\dir\\f.txt", 'C', "", "\\\\server\\share\\dir\\f.txt"},
        {"\\\\server\\share\\..\\..", 'C', "", "\\\\server\\share\\"},
        {"setup.exe", 0, "\\\\srv\\cd\\disk1", "\\\\srv\\cd\\disk1\\setup.exe"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Resolve(c.path, c.drive, c.unc), c.expected) << c.path;
    }
}

TEST(WindowsPath, LettersDrivesAndBackslashes) {
    EXPECT_EQ(clsWindowsPath::DriveLetter("d:\\x"), 'D');
    EXPECT_EQ(clsWindowsPath::DriveLetter("\\\\s\\x"), 0);
    EXPECT_EQ(clsWindowsPath::DriveLetter("1:"), 0);
    EXPECT_TRUE(clsWindowsPath::IsUnc("//server/share"));
    EXPECT_EQ(clsWindowsPath::AddBackslash("C:\\A"), "C:\\A\\");
    EXPECT_EQ(clsWindowsPath::AddBackslash("C:\\A\\"), "C:\\A\\");
}

TEST(WindowsPath, CaseAndWildcards) {
    EXPECT_FALSE(clsWindowsPath::EqualNoCase("Grüße.TXT", "GRÜSSE.txt"));  // no expansion of ß
    EXPECT_TRUE(clsWindowsPath::EqualNoCase("größe.txt", "GRÖßE.TXT"));
    EXPECT_TRUE(clsWindowsPath::EqualNoCase("ÉTÉ", "été"));
    EXPECT_TRUE(clsWindowsPath::EqualNoCase("Привет", "ПРИВЕТ"));
    EXPECT_TRUE(clsWindowsPath::MatchWildcard("*.ssf", "Product.SSF"));
    EXPECT_TRUE(clsWindowsPath::MatchWildcard("*32770*", "#32770"));
    EXPECT_TRUE(clsWindowsPath::MatchWildcard("Setup*", "Setup"));
    EXPECT_TRUE(clsWindowsPath::MatchWildcard("?b*d", "abxxd"));
    EXPECT_FALSE(clsWindowsPath::MatchWildcard("?b*d", "bxd"));
    EXPECT_FALSE(clsWindowsPath::MatchWildcard("*.ssf", "a.ssf.bak"));
    EXPECT_TRUE(clsWindowsPath::MatchWildcard("*4.01 SP1*", "Setup 4.01 SP1 (German)"));
    // Many stars on a long text must not take exponential time.
    EXPECT_FALSE(clsWindowsPath::MatchWildcard("*a*a*a*a*a*a*a*b", std::string(2000, 'a')));
}

} // namespace
} // namespace tovel
