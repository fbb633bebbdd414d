// Files and drives: the same expectations on the emulated machine and on Windows.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/clsWindowsPath.h"
#include "tests/support/TestBed.h"

namespace tovel::test {
namespace {

class FilesContract : public ::testing::Test {
protected:
    void SetUp() override { bed_ = MakeTestBed(); }
    clsPlatformFiles& Files() { return bed_->platform->Files(); }
    std::string Path(const std::string& name) { return bed_->folder + name; }
    std::unique_ptr<TestBed> bed_;
};

TEST_F(FilesContract, NamesAreFoundWithoutRegardToCase) {
    ASSERT_TRUE(Files().CreateFolder(Path("Products\\Sub")));
    ASSERT_TRUE(Files().WriteFileAtomic(Path("Products\\Setups.ini"), "[SETTINGS]\r\n"));
    EXPECT_TRUE(Files().FileExists(Path("PRODUCTS\\setups.INI")));
    EXPECT_TRUE(Files().FolderExists(Path("products\\SUB")));
    EXPECT_FALSE(Files().FileExists(Path("products\\sub")));  // a folder is not a file
    EXPECT_FALSE(Files().FolderExists(Path("products\\setups.ini")));
    EXPECT_EQ(Files().ReadFile(Path("pRoDuCtS/SETUPS.ini")).value_or(""), "[SETTINGS]\r\n");
    // A write through another spelling replaces the file instead of adding a second one.
    ASSERT_TRUE(Files().WriteFileAtomic(Path("PRODUCTS\\SETUPS.INI"), "new"));
    const auto entries = Files().ListFolder(Path("Products"));
    ASSERT_EQ(entries.size(), 2u);
    const auto file = std::find_if(entries.begin(), entries.end(), [](const FileEntry& e) { return !e.isFolder; });
    ASSERT_NE(file, entries.end());
    EXPECT_EQ(file->name, "Setups.ini");
    EXPECT_EQ(file->size, 3u);
}

TEST_F(FilesContract, AtomicWriteReplacesWholeAndLeavesNoTemporaryFiles) {
    const std::string big(300000, 'x');
    ASSERT_TRUE(Files().WriteFileAtomic(Path("state.tmp"), big));
    ASSERT_TRUE(Files().WriteFileAtomic(Path("state.tmp"), "short"));
    EXPECT_EQ(Files().ReadFile(Path("state.tmp")).value_or(""), "short");
    EXPECT_EQ(Files().ListFolder(bed_->folder).size(), 1u);
    const std::string binary("a\0b\r\n\xff", 6);
    ASSERT_TRUE(Files().WriteFileAtomic(Path("bin.dat"), binary));
    EXPECT_EQ(Files().ReadFile(Path("bin.dat")).value_or(""), binary);
    EXPECT_FALSE(Files().WriteFileAtomic(Path("no such folder\\x.txt"), "x"));
    EXPECT_FALSE(Files().ReadFile(Path("missing.txt")).has_value());
}

TEST_F(FilesContract, AppendCreatesAndExtends) {
    ASSERT_TRUE(Files().AppendToFile(Path("setup.log"), "line 1\r\n"));
    ASSERT_TRUE(Files().AppendToFile(Path("SETUP.LOG"), "line 2\r\n"));
    EXPECT_EQ(Files().ReadFile(Path("setup.log")).value_or(""), "line 1\r\nline 2\r\n");
    EXPECT_FALSE(Files().AppendToFile(Path("no such folder\\a.log"), "x"));
}

TEST_F(FilesContract, CopyMoveDeleteAndFind) {
    ASSERT_TRUE(Files().WriteFileAtomic(Path("a.ssf"), "A"));
    ASSERT_TRUE(Files().WriteFileAtomic(Path("b.SSF"), "B"));
    ASSERT_TRUE(Files().WriteFileAtomic(Path("c.txt"), "C"));
    EXPECT_TRUE(Files().CopyFile(Path("a.ssf"), Path("copy.ssf"), true));
    EXPECT_FALSE(Files().CopyFile(Path("b.ssf"), Path("copy.ssf"), true));
    EXPECT_TRUE(Files().CopyFile(Path("b.ssf"), Path("copy.ssf"), false));
    EXPECT_EQ(Files().ReadFile(Path("copy.ssf")).value_or(""), "B");
    auto found = Files().FindFiles(Path("*.ssf"));
    EXPECT_EQ(found.size(), 3u);
    EXPECT_EQ(Files().FindFiles(Path("?.txt")).size(), 1u);
    EXPECT_EQ(Files().FindFiles(Path("*.*")).size(), 4u);
    EXPECT_TRUE(Files().MoveFile(Path("c.txt"), Path("moved.txt")));
    EXPECT_FALSE(Files().FileExists(Path("c.txt")));
    EXPECT_TRUE(Files().DeleteFile(Path("moved.txt")));
    EXPECT_FALSE(Files().DeleteFile(Path("moved.txt")));
    ASSERT_TRUE(Files().CreateFolder(Path("empty")));
    EXPECT_TRUE(Files().DeleteFolder(Path("empty")));
    EXPECT_FALSE(Files().FolderExists(Path("empty")));
    const auto stat = Files().Stat(Path("a.ssf"));
    ASSERT_TRUE(stat.has_value());
    EXPECT_EQ(stat->size, 1u);
    EXPECT_GT(stat->modified, 0);
}

TEST_F(FilesContract, DrivesAndCurrentFolders) {
    EXPECT_EQ(Files().GetDriveType("C:\\"), DriveType::Fixed);
    EXPECT_EQ(Files().GetDriveType("Q:\\"), DriveType::NoRootDir);
    EXPECT_GT(Files().FreeSpace("C:\\").value_or(0), 0u);
    ASSERT_TRUE(Files().CreateFolder(Path("cur")));
    ASSERT_TRUE(Files().SetCurrentDrive('C'));
    ASSERT_TRUE(Files().SetCurrentFolder(Path("cur")));
    EXPECT_TRUE(clsWindowsPath::EqualNoCase(Files().CurrentFolder(), bed_->folder + "cur"))
        << Files().CurrentFolder();
    // Relative names resolve against the current folder.
    ASSERT_TRUE(Files().WriteFileAtomic("rel.txt", "r"));
    EXPECT_TRUE(Files().FileExists(Path("cur\\rel.txt")));
    EXPECT_TRUE(Files().FileExists("..\\cur\\REL.TXT"));
    EXPECT_FALSE(Files().SetCurrentFolder(Path("missing")));
    EXPECT_FALSE(Files().SetCurrentDrive('Q'));
}

// A version resource is read where the file carries one; a text file or a missing file has none.
TEST_F(FilesContract, VersionResourceOfAFile) {
    const auto info = Files().FileVersion(bed_->versionedFile);
    ASSERT_TRUE(info.has_value()) << bed_->versionedFile;
    ASSERT_FALSE(info->fileVersion.empty());
    EXPECT_TRUE(info->fileVersion[0] >= '0' && info->fileVersion[0] <= '9') << info->fileVersion;
    // Windows' own libraries add a build label behind a blank: "5.1.2600.2180 (xpsp_sp2_rtm.040803-2158)".
    const std::string numbers = info->fileVersion.substr(0, info->fileVersion.find(' '));
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), '.'), 3) << info->fileVersion;
    EXPECT_EQ(info->translation.size(), 8u) << info->translation;
    ASSERT_TRUE(Files().WriteFileAtomic(Path("readme.txt"), "FileVersion=1.2.3.4\r\n"));
    EXPECT_FALSE(Files().FileVersion(Path("readme.txt")).has_value());
    EXPECT_FALSE(Files().FileVersion(Path("missing.dll")).has_value());
}

} // namespace
} // namespace tovel::test
