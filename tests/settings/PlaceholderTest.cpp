// Placeholders in both spellings, the join rule for folders, texts inserted as they stand,
// unknown and unclosed placeholders, and where each value comes from. Runs on the emulated
// machine and under Wine.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "common/clsFileDisk.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsRegistry.h"
#include "settings/clsSetupsIni.h"
#include "tests/support/BedFixture.h"

namespace tovel {
namespace {

constexpr const char* kSharedKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\QUARLO\\DRELSW\\GLOBAL";

class Placeholder : public test::BedFixture {
protected:
    void TearDown() override {
        // HKEY_LOCAL_MACHINE is not the bed's own: put it back as it was.
        (void)clsRegistry::DeleteKey2(kSharedKey);
        (void)clsRegistry::DeleteKey2("HKEY_LOCAL_MACHINE\\SOFTWARE\\QUARLO\\DRELSW");
        (void)clsRegistry::DeleteKey2("HKEY_LOCAL_MACHINE\\SOFTWARE\\QUARLO");
        BedFixture::TearDown();
    }
    void SetSharedPath(const std::string& path) {
        clsRegistry shared;
        ASSERT_TRUE(shared.InitWithRegPath(kSharedKey));
        ASSERT_TRUE(shared.SetKeyValue("SharedPath", path, RegType::Sz));
    }
    std::unique_ptr<clsSetupsIni> Settings(const std::string& settings) {
        EXPECT_TRUE(Platform().Files().CreateFolder(bed_->folder + "Products"));
        EXPECT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "Setups.ini", settings));
        return std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
    }
    static std::string ProgramFiles() {
        return clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion").QueryValue("ProgramFilesDir");
    }
};

TEST_F(Placeholder, TableOfPlaceholders) {
    SetSharedPath("E:\\Shared\\Tovel");
    const auto settings = Settings(
        "[SETTINGS]\r\nPath=Products\r\nAppTitleShort=TAS [TempFolder]\r\nIEMinimumCondition=>=6.0 SP1\r\n"
        "[CD_2]\r\nDiscName=Disc Two\r\n");
    ASSERT_FALSE(settings->PathFailed());
    clsPlaceholder placeholder;
    placeholder.SetFolders({"C:\\WINNT\\system32\\", "C:\\WINNT\\", "C:\\", "D:\\"});
    placeholder.SetSettings(settings.get());
    placeholder.SetAppSSFSourcePath("D:\\Products\\App1");
    placeholder.SetDiscNumber(2);

    const std::string pf = ProgramFiles();
    ASSERT_FALSE(pf.empty());
    ASSERT_NE(pf.back(), '\\');
    const std::string temp = clsFileDisk().TempFolder();
    const std::string source = bed_->folder + "Products\\";
    struct Row {
        std::string text;
        std::string expected;
    };
    const Row rows[] = {
        {"", ""},
        {"no placeholder here", "no placeholder here"},
        // Each placeholder in each of its spellings; folders joined with one backslash.
        {"%ProgramPath%Tovel", pf + "\\Tovel"},
        {"%ProgramPath%\\Tovel", pf + "\\Tovel"},
        {"[ProgramFilesFolder]Tovel", pf + "\\Tovel"},
        {"[ProgramPath]\\Tovel", pf + "\\Tovel"},
        {"%SystemFolder%x.dll", "C:\\WINNT\\system32\\x.dll"},
        {"[SystemFolder]\\x.dll", "C:\\WINNT\\system32\\x.dll"},
        {"%SystemRoot%TOVEL.LOG", "C:\\TOVEL.LOG"},
        {"[SystemRoot]\\\\x", "C:\\\\x"},   // only one backslash is dropped
        {"%SharedPath%Bin", "E:\\Shared\\Tovel\\Bin"},
        {"[SharedPath]\\Bin", "E:\\Shared\\Tovel\\Bin"},
        {"%SharedRoot%\\Data", "E:\\Data"},
        {"%SharedRoot%Data", "E:\\Data"},
        {"%WindowsFolder%Fonts", "C:\\WINNT\\Fonts"},
        {"[WindowsFolder]\\Fonts", "C:\\WINNT\\Fonts"},
        {"%TempFolder%a.tmp", temp + "a.tmp"},
        {"[TempFolder]\\a.tmp", temp + "a.tmp"},
        {"%AppSSFSourcePath%setup.exe", "D:\\Products\\App1\\setup.exe"},
        {"[AppSSFSourcePath]\\setup.exe", "D:\\Products\\App1\\setup.exe"},
        {"[TOVELSETUPFOLDER]Lang", "D:\\Lang"},
        {"[TOVELSOURCEFOLDER]App1", source + "App1"},
        // Texts go in as they stand, and what they hold is not expanded again.
        {"%AppTitleShort%2026", "TAS [TempFolder]2026"},
        {"%IEMinimumCondition%", ">=6.0 SP1"},
        {"Disc: %CD_%!", "Disc: Disc Two!"},
        // No backslash before the end, a blank or a quote: a quoted path stays quoted.
        {"%ProgramPath%", pf},
        {"\"%ProgramPath%\" /s", "\"" + pf + "\" /s"},
        {"%ProgramPath% x", pf + " x"},
        {"%ProgramPath%,%ProgramPath%;", pf + "," + pf + ";"},
        {"[WindowsFolder]%TempFolder%", "C:\\WINNT\\" + temp},
        // Exact spelling only.
        {"%windowsfolder%\\Fonts", "%windowsfolder%\\Fonts"},
        {"%WINDOWSFOLDER%", "%WINDOWSFOLDER%"},
        {"[WindowsFolder ]", "[WindowsFolder ]"},
        {"[AppTitleShort]", "[AppTitleShort]"},
        {"%TOVELSETUPFOLDER%", "%TOVELSETUPFOLDER%"},
        // Unknown ones stay; the scan goes on behind them.
        {"%Unknown%%TempFolder%x", "%Unknown%" + temp + "x"},
        {"[Unknown][TempFolder]x", "[Unknown]" + temp + "x"},
        {"%Unknown%WindowsFolder%", "%Unknown%WindowsFolder%"},
        {"[a%b]%TempFolder%", "[a%b]" + temp},
        // An opening character without its closing one leaves the rest as it stands.
        {"100% [TempFolder]", "100% [TempFolder]"},
        {"[TempFolder]x 50%", temp + "x 50%"},
        {"[TempFolder", "[TempFolder"},
        {"%TempFolder%[x", temp + "[x"},
    };
    for (const auto& row : rows) EXPECT_EQ(placeholder.CheckForPlaceholder(row.text), row.expected) << row.text;
}

TEST_F(Placeholder, ValuesNotGivenComeFromTheMachineOrAreEmpty) {
    clsPlaceholder placeholder;
    const clsFileDisk disk;
    const std::string program = clsFileDisk::AddBackslash(Platform().System().ProgramFolder());
    EXPECT_EQ(placeholder.CheckForPlaceholder("[WindowsFolder]"), disk.WindowsFolder());
    EXPECT_EQ(placeholder.CheckForPlaceholder("[SystemFolder]"), disk.SystemFolder());
    EXPECT_EQ(placeholder.CheckForPlaceholder("[SystemRoot]"), disk.WindowsDriveRoot());
    EXPECT_EQ(placeholder.CheckForPlaceholder("[TOVELSETUPFOLDER]"), program);
    // No settings: the source is the program's folder and the texts are empty.
    EXPECT_EQ(placeholder.CheckForPlaceholder("[TOVELSOURCEFOLDER]x"), program + "x");
    EXPECT_EQ(placeholder.CheckForPlaceholder("<%AppTitleShort%|%IEMinimumCondition%|%CD_%>"), "<||>");
    // A value that cannot be found is empty and joins nothing.
    EXPECT_EQ(placeholder.CheckForPlaceholder("%SharedPath%Bin"), "Bin");
    EXPECT_EQ(placeholder.CheckForPlaceholder("%SharedRoot%\\Data"), "\\Data");
    EXPECT_EQ(placeholder.CheckForPlaceholder("%AppSSFSourcePath%setup.exe"), "setup.exe");

    // Settings without Path: the source is still the program's folder.
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "Setups.ini", "[SETTINGS]\r\nDiscName=One\r\n"));
    const clsSetupsIni settings(clsSetupsIni::Hooks{}, bed_->folder);
    placeholder.SetSettings(&settings);
    placeholder.SetFolders({"", "", "", "X:\\Disc"});
    EXPECT_EQ(placeholder.CheckForPlaceholder("[TOVELSOURCEFOLDER]"), "X:\\Disc\\");
    EXPECT_EQ(placeholder.CheckForPlaceholder("[TOVELSETUPFOLDER]"), "X:\\Disc\\");
    // The first disc of a set without a section of its own has no name.
    EXPECT_EQ(placeholder.DiscNumber(), 1);
    EXPECT_EQ(placeholder.CheckForPlaceholder("%CD_%"), "");
}

} // namespace
} // namespace tovel
