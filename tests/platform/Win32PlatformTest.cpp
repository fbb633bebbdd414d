// What the Win32 platform adds to the shared expectations: names beyond ASCII, the folders
// Windows remembers per drive, registry data of every shape, and the processes it follows.
#include <gtest/gtest.h>

#include "platform/win32/Win32Headers.h"

#include <algorithm>
#include <set>

#include "platform/clsCodePageConverter.h"
#include "platform/win32/clsWin32Text.h"
#include "tests/support/TestBed.h"

namespace tovel::test {
namespace {

class Win32Platform : public ::testing::Test {
protected:
    void SetUp() override {
        bed_ = MakeTestBed();
        ASSERT_FALSE(bed_->folder.empty());
    }
    clsPlatformFiles& Files() { return bed_->platform->Files(); }
    clsPlatformRegistry& Registry() { return bed_->platform->Registry(); }
    clsPlatformProcesses& Processes() { return bed_->platform->Processes(); }
    clsPlatformSystem& System() { return bed_->platform->System(); }
    std::string Path(const std::string& name) { return bed_->folder + name; }
    std::string Key(const std::string& below = "") {
        return below.empty() ? bed_->registryKey : bed_->registryKey + "\\" + below;
    }
    std::unique_ptr<TestBed> bed_;
};

std::set<std::string> Names(const std::vector<FileEntry>& entries) {
    std::set<std::string> names;
    for (const auto& entry : entries) names.insert(entry.name);
    return names;
}

TEST(Win32Text, RefusesBrokenUtf8AndKeepsWhatWindowsGives) {
    EXPECT_EQ(clsWin32Text::ToWide("Gr\xc3\xbc\xc3\x9f \xe2\x82\xac \xf0\x9f\x98\x80").value_or(L"-"),
              std::wstring(L"Gr\u00fc\u00df \u20ac \xd83d\xde00"));
    for (const char* broken : {"\xc3", "a\x80", "\xc0\xaf", "\xe0\x80\xaf", "\xf4\x90\x80\x80", "\xff", "\xe2\x82"}) {
        EXPECT_FALSE(clsWin32Text::ToWide(broken).has_value()) << "accepted: " << broken;
    }
    // A lone surrogate in a name from Windows survives the trip to UTF-8 and back.
    const std::wstring lone{L'a', static_cast<wchar_t>(0xD800), L'b'};
    EXPECT_EQ(clsWin32Text::ToWide(clsWin32Text::ToUtf8(lone)).value_or(L"-"), lone);
    EXPECT_FALSE(clsWin32Text::ToUtf8Strict(lone).has_value());
    EXPECT_EQ(clsWin32Text::ToUtf8(std::wstring(L"x\0y", 3)), std::string("x\0y", 3));
}

TEST_F(Win32Platform, NamesBeyondAsciiAndBrokenNames) {
    const std::string name = "Gr\xc3\xbc\xc3\x9f\xc3\xa9 \xd0\x96 \xe2\x82\xac \xf0\x9f\x98\x80.txt";
    ASSERT_TRUE(Files().WriteFileAtomic(Path(name), "u"));
    EXPECT_EQ(Names(Files().ListFolder(bed_->folder)), std::set<std::string>{name});
    EXPECT_EQ(Files().ReadFile(Path(name)).value_or(""), "u");
    // The stored spelling, not the one asked with.
    const auto stat = Files().Stat(Path("GR\xc3\x9c\xc3\x9f\xc3\xa9 \xd0\x96 \xe2\x82\xac \xf0\x9f\x98\x80.TXT"));
    ASSERT_TRUE(stat.has_value());
    EXPECT_EQ(stat->name, name);
    EXPECT_FALSE(stat->isFolder);

    // Bytes that are not UTF-8 name no file; nothing may be created under a mangled name.
    const std::string broken = Path("bad\xff.txt");
    EXPECT_FALSE(Files().WriteFileAtomic(broken, "x"));
    EXPECT_FALSE(Files().AppendToFile(broken, "x"));
    EXPECT_FALSE(Files().CreateFolder(Path("bad\xc3")));
    EXPECT_FALSE(Files().FileExists(broken));
    EXPECT_FALSE(Files().ReadFile(broken).has_value());
    EXPECT_EQ(Files().ListFolder(bed_->folder).size(), 1u);
}

TEST_F(Win32Platform, WildcardsMatchLongNamesOnly) {
    for (const char* name : {"a.ssf", "Setup.ssf~", "Product.ssfx", "README"}) {
        ASSERT_TRUE(Files().WriteFileAtomic(Path(name), "x")) << name;
    }
    EXPECT_EQ(Names(Files().FindFiles(Path("*.ssf"))), std::set<std::string>{"a.ssf"});
    EXPECT_EQ(Names(Files().FindFiles(Path("*.SSF*"))), (std::set<std::string>{"a.ssf", "Product.ssfx", "Setup.ssf~"}));
    EXPECT_EQ(Files().FindFiles(Path("*.*")).size(), 4u);  // names without a dot too
    EXPECT_EQ(Names(Files().FindFiles(Path("readme"))), std::set<std::string>{"README"});
    EXPECT_TRUE(Files().FindFiles(Path("missing\\*.ssf")).empty());
    EXPECT_TRUE(Files().ListFolder(Path("a.ssf")).empty());
    EXPECT_TRUE(Files().ListFolder("").empty());
}

TEST_F(Win32Platform, FailedWritesLeaveTheOldFileAndNoLitter) {
    ASSERT_TRUE(Files().WriteFileAtomic(Path("locked.ini"), "old"));
    const auto locked = clsWin32Text::ToWide(Path("locked.ini")).value();
    ASSERT_TRUE(SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(Files().WriteFileAtomic(Path("locked.ini"), "new"));
    EXPECT_EQ(Files().ReadFile(Path("locked.ini")).value_or(""), "old");
    ASSERT_TRUE(Files().WriteFileAtomic(Path("other.ini"), "other"));
    EXPECT_FALSE(Files().MoveFile(Path("other.ini"), Path("locked.ini")));
    EXPECT_FALSE(Files().CopyFile(Path("other.ini"), Path("locked.ini"), false));
    EXPECT_EQ(Files().ReadFile(Path("locked.ini")).value_or(""), "old");
    ASSERT_TRUE(Files().DeleteFile(Path("other.ini")));
    ASSERT_TRUE(Files().CreateFolder(Path("folder")));
    EXPECT_FALSE(Files().WriteFileAtomic(Path("folder"), "x"));
    EXPECT_FALSE(Files().WriteFileAtomic(bed_->folder, "x"));
    EXPECT_EQ(Names(Files().ListFolder(bed_->folder)), (std::set<std::string>{"folder", "locked.ini"}));
    // A file in the way of a folder to create.
    EXPECT_FALSE(Files().CreateFolder(Path("locked.ini\\sub")));
    EXPECT_FALSE(Files().CreateFolder(Path("locked.ini")));
}

TEST_F(Win32Platform, ReadsFilesOthersHoldOpenAndWholeLargeFiles) {
    const auto log = clsWin32Text::ToWide(Path("open.log")).value();
    const HANDLE writer = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    ASSERT_TRUE(WriteFile(writer, "busy", 4, &written, nullptr));
    EXPECT_EQ(Files().ReadFile(Path("open.log")).value_or(""), "busy");
    CloseHandle(writer);

    std::string big(3 * 1024 * 1024 + 17, '\0');
    for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 7 % 251);
    ASSERT_TRUE(Files().WriteFileAtomic(Path("big.bin"), big));
    EXPECT_EQ(Files().ReadFile(Path("big.bin")).value_or(""), big);
    EXPECT_EQ(Files().Stat(Path("big.bin")).value_or(FileEntry{}).size, big.size());
    EXPECT_FALSE(Files().ReadFile(bed_->folder).has_value());  // a folder has no bytes
}

TEST_F(Win32Platform, RootsAndSpaceOfFoldersNotYetMade) {
    const auto root = Files().Stat("C:\\");
    ASSERT_TRUE(root.has_value());
    EXPECT_TRUE(root->isFolder);
    EXPECT_TRUE(Files().FolderExists("c:\\"));
    EXPECT_EQ(Files().GetDriveType("C:"), DriveType::Fixed);
    const auto space = Files().FreeSpace(Path("not\\made\\yet"));
    ASSERT_TRUE(space.has_value());
    EXPECT_GT(*space, 0u);
    EXPECT_FALSE(Files().FreeSpace("Q:\\").has_value());
    EXPECT_FALSE(Files().Stat(Path("*.txt")).has_value());
}

// A second drive to move between; under Wine that is Z: (the Unix root), the bed is on C:.
char OtherDrive(char bedDrive) {
    const DWORD drives = GetLogicalDrives();
    for (char letter = 'Z'; letter >= 'C'; --letter) {
        if (letter == bedDrive || (drives & (1u << (letter - 'A'))) == 0) continue;
        const wchar_t root[] = {static_cast<wchar_t>(letter), L':', L'\\', 0};
        const UINT type = GetDriveTypeW(root);
        if (type == DRIVE_FIXED || type == DRIVE_REMOTE || type == DRIVE_RAMDISK) return letter;
    }
    return 0;
}

TEST_F(Win32Platform, EachDriveKeepsItsOwnCurrentFolder) {
    ASSERT_EQ(bed_->folder.substr(0, 2), "C:");
    const char other = OtherDrive('C');
    if (other == 0) GTEST_SKIP() << "needs a second drive";
    ASSERT_TRUE(Files().CreateFolder(Path("one\\two")));
    ASSERT_TRUE(Files().WriteFileAtomic(Path("one\\here.txt"), "1"));
    ASSERT_TRUE(Files().SetCurrentDrive(other));
    ASSERT_TRUE(Files().SetCurrentFolder(std::string(1, other) + ":\\"));
    const std::string onOther = Files().CurrentFolder();
    EXPECT_EQ(onOther, std::string(1, other) + ":\\");

    // Another drive: only the folder it returns to changes.
    ASSERT_TRUE(Files().SetCurrentFolder(Path("one")));
    EXPECT_EQ(Files().CurrentFolder(), onOther);
    EXPECT_EQ(Files().CurrentFolderOfDrive('c'), Path("one"));
    EXPECT_TRUE(Files().FileExists("C:here.txt"));  // "X:name" is relative to X's folder
    EXPECT_EQ(Names(Files().ListFolder("C:")), (std::set<std::string>{"here.txt", "two"}));
    EXPECT_EQ(Files().CurrentFolderOfDrive('Y'), "Y:\\");

    ASSERT_TRUE(Files().SetCurrentDrive('C'));
    EXPECT_EQ(Files().CurrentFolder(), Path("one"));
    EXPECT_EQ(Files().CurrentFolderOfDrive(other), onOther);
    ASSERT_TRUE(Files().SetCurrentFolder("two"));
    EXPECT_EQ(Files().CurrentFolder(), Path("one\\two"));
    ASSERT_TRUE(Files().SetCurrentDrive(other));
    EXPECT_EQ(Files().CurrentFolder(), onOther);
    EXPECT_EQ(Files().CurrentFolderOfDrive('C'), Path("one\\two"));

    // A remembered folder that has gone leaves the drive's root.
    ASSERT_TRUE(Files().DeleteFolder(Path("one\\two")));
    ASSERT_TRUE(Files().SetCurrentDrive('C'));
    EXPECT_EQ(Files().CurrentFolder(), "C:\\");
    EXPECT_FALSE(Files().SetCurrentDrive('1'));
    EXPECT_EQ(Files().CurrentFolderOfDrive('1'), "");
}

TEST_F(Win32Platform, RegistryDataOfEveryShape) {
    const std::string big(100 * 1024, '\x5a');
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Big", clsRegValue::Binary(big)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Big").value_or(clsRegValue{}).bytes, big);
    const std::string longText(40000, 'w');
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Long", clsRegValue::String(longText)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Long").value_or(clsRegValue{}).text, longText);

    const auto text = clsRegValue::ExpandString("%ProgramFiles%\\Gr\xc3\xbc\xc3\x9f \xe2\x82\xac");
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "", text));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), ""), text);
    const auto list = clsRegValue::MultiString({"one", "Zw\xc3\xb6lf", "three"});
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "List", list));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "List"), list);
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "None", clsRegValue::MultiString({})));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "None"), clsRegValue::MultiString({}));
    // An empty string would end the list early on reading; it is refused, not cut.
    EXPECT_FALSE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Gap", clsRegValue::MultiString({"a", "", "b"})));
    EXPECT_FALSE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Bad", clsRegValue::String("bad\xff")));
    EXPECT_FALSE(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Gap").has_value());
    EXPECT_FALSE(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Bad").has_value());

    // Data written by other programs: strings without their NUL or with extra ones, DWORDs
    // of another size, types this program has no name for.
    const std::string unterminated("a\0b\0c\0", 6), padded("x\0\0\0\0\0", 6);
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "NoNul", clsRegValue::Raw(1, unterminated)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "NoNul"), clsRegValue::String("abc"));
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Padded", clsRegValue::Raw(1, padded)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Padded"), clsRegValue::String("x"));
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Short", clsRegValue::Raw(4, "ab")));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Short"), clsRegValue::Raw(4, "ab"));
    const std::string qword("\x01\x02\x03\x04\x05\x06\x07\x08", 8);
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "Q", clsRegValue::Raw(11, qword)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "Q"), clsRegValue::Raw(11, qword));
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), "D", clsRegValue::Dword(0xDEADBEEF)));
    EXPECT_EQ(Registry().QueryValue(RegRoot::CurrentUser, Key(), "D"), clsRegValue::Dword(0xDEADBEEF));
}

TEST_F(Win32Platform, RegistryNamesBeyondTheFirstBuffer) {
    const std::string longName(1000, 'n');
    const std::string umlaut = "\xc3\x84nderung";
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), longName, clsRegValue::Dword(1)));
    ASSERT_TRUE(Registry().SetValue(RegRoot::CurrentUser, Key(), umlaut, clsRegValue::Dword(2)));
    const auto values = Registry().EnumValues(RegRoot::CurrentUser, Key());
    ASSERT_TRUE(values.has_value());
    EXPECT_EQ(std::set<std::string>(values->begin(), values->end()), (std::set<std::string>{longName, umlaut}));

    ASSERT_TRUE(Registry().CreateKey(RegRoot::CurrentUser, Key(std::string(255, 'k'))));
    ASSERT_TRUE(Registry().CreateKey(RegRoot::CurrentUser, Key(umlaut + "\\deeper")));
    const auto keys = Registry().EnumKeys(RegRoot::CurrentUser, Key());
    ASSERT_TRUE(keys.has_value());
    EXPECT_EQ(std::set<std::string>(keys->begin(), keys->end()), (std::set<std::string>{std::string(255, 'k'), umlaut}));
    EXPECT_TRUE(Registry().KeyExists(RegRoot::CurrentUser, Key("\xc3\xa4NDERUNG\\DEEPER")));

    EXPECT_FALSE(Registry().DeleteKey(RegRoot::CurrentUser, Key(umlaut)));  // still has a subkey
    EXPECT_TRUE(Registry().KeyExists(RegRoot::CurrentUser, Key(umlaut + "\\deeper")));
    EXPECT_TRUE(Registry().DeleteKey(RegRoot::CurrentUser, Key(umlaut + "\\deeper")));
    EXPECT_TRUE(Registry().DeleteKey(RegRoot::CurrentUser, Key(umlaut)));
    EXPECT_FALSE(Registry().DeleteKey(RegRoot::CurrentUser, ""));
    EXPECT_FALSE(Registry().EnumKeys(RegRoot::CurrentUser, Key("missing")).has_value());
    EXPECT_FALSE(Registry().DeleteValue(RegRoot::CurrentUser, Key(), "missing"));
    EXPECT_TRUE(Registry().KeyExists(RegRoot::LocalMachine, ""));
}

TEST_F(Win32Platform, ProcessesFollowedUntilReleased) {
    const auto started = Processes().Start("\"" + bed_->childProgram + "\" 7 0", bed_->folder);
    ASSERT_TRUE(started.processId.has_value()) << "error " << started.error;
    const uint32_t id = *started.processId;
    ASSERT_TRUE(Processes().Wait(id, 30000));
    // Still answered after the process has ended: the handle keeps it.
    EXPECT_EQ(Processes().ExitCode(id), 7u);
    EXPECT_EQ(Processes().ExitCode(id), 7u);
    Processes().Release(id);
    EXPECT_FALSE(Processes().ExitCode(id).has_value());
    EXPECT_FALSE(Processes().Wait(id, 0));
    Processes().Release(id);  // twice is harmless

    // This very process, as a stranger would follow it.
    const uint32_t self = GetCurrentProcessId();
    ASSERT_TRUE(Processes().Attach(self));
    ASSERT_TRUE(Processes().Attach(self));
    EXPECT_EQ(Processes().ExitCode(self), kStillActive);
    EXPECT_FALSE(Processes().Wait(self, 0));
    Processes().Release(self);
    EXPECT_FALSE(Processes().Attach(0));

    const auto missing = Processes().Start("\"" + Path("missing.exe") + "\"", "");
    EXPECT_FALSE(missing.processId.has_value());
    EXPECT_EQ(missing.error, 2u);
    EXPECT_NE(Processes().Start("", "").error, 0u);
    EXPECT_NE(Processes().Start("\"" + bed_->childProgram + "\" 0 0", Path("no folder")).error, 0u);
}

TEST_F(Win32Platform, OpeningFilesByTheirType) {
    const auto program = Processes().Open(bed_->childProgram, "3 0", bed_->folder);
    ASSERT_TRUE(program.processId.has_value()) << "error " << program.error;
    ASSERT_TRUE(Processes().Wait(*program.processId, 30000));
    EXPECT_EQ(Processes().ExitCode(*program.processId), 3u);
    Processes().Release(*program.processId);

    EXPECT_EQ(Processes().Open(Path("missing.txt"), "", "").error, 2u);
    ASSERT_TRUE(Files().WriteFileAtomic(Path("data.tovelnoassoc"), "x"));
    EXPECT_EQ(Processes().Open(Path("data.tovelnoassoc"), "", "").error, 31u);
    EXPECT_EQ(Processes().FindAssociatedProgram(Path("data.tovelnoassoc")), "");
    EXPECT_EQ(Processes().FindAssociatedProgram(Path("missing.txt")), "");
}

// Under Wine this needs a graphics driver that makes windows: scripts/test-windows.sh sets
// the null driver, so it runs headless.
TEST_F(Win32Platform, FindsTopLevelWindowsByClassAndTitle) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"TovelFinderTest\u00c4";
    ASSERT_TRUE(RegisterClassW(&windowClass) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS);
    const HWND window = CreateWindowExW(0, windowClass.lpszClassName, L"Product B \u00e4 Setup", WS_OVERLAPPEDWINDOW, 0,
                                        0, 200, 100, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (window == nullptr) GTEST_SKIP() << "no windows can be made here (Wine without a graphics driver)";
    auto& windows = bed_->platform->Windows();
    EXPECT_TRUE(windows.FindTopLevelWindow("TovelFinderTest\xc3\x84", "Product B \xc3\xa4 Setup"));
    EXPECT_TRUE(windows.FindTopLevelWindow("tovelfindertest\xc3\xa4", ""));  // case folds beyond ASCII
    EXPECT_TRUE(windows.FindTopLevelWindow("", "*b ? setup"));
    EXPECT_TRUE(windows.FindTopLevelWindow("Tovel*", "Product*"));
    EXPECT_FALSE(windows.FindTopLevelWindow("TovelFinderTest\xc3\x84", "Product C*"));
    EXPECT_FALSE(windows.FindTopLevelWindow("TovelFinderTest", ""));  // the whole class name must match
    DestroyWindow(window);
    EXPECT_FALSE(windows.FindTopLevelWindow("TovelFinderTest*", ""));
    UnregisterClassW(windowClass.lpszClassName, windowClass.hInstance);
}

TEST_F(Win32Platform, EnvironmentFoldersAndFormats) {
    ASSERT_TRUE(SetEnvironmentVariableW(L"TOVEL_EMPTY", L""));
    EXPECT_EQ(System().Environment("TOVEL_EMPTY"), std::optional<std::string>(""));
    ASSERT_TRUE(SetEnvironmentVariableW(L"TOVEL_TEXT", L"Gr\u00fc\u00df"));
    EXPECT_EQ(System().Environment("tovel_text"), std::optional<std::string>("Gr\xc3\xbc\xc3\x9f"));
    SetEnvironmentVariableW(L"TOVEL_EMPTY", nullptr);
    SetEnvironmentVariableW(L"TOVEL_TEXT", nullptr);
    EXPECT_FALSE(System().Environment("TOVEL_EMPTY").has_value());
    EXPECT_FALSE(System().Environment("").has_value());
    EXPECT_FALSE(System().Environment("bad\xff").has_value());

    for (const std::string& folder : {System().WindowsFolder(), System().SystemFolder(), System().TempFolder(),
                                      System().ProgramFolder()}) {
        ASSERT_FALSE(folder.empty());
        EXPECT_EQ(folder.back(), '\\') << folder;
        EXPECT_TRUE(Files().FolderExists(folder)) << folder;
    }
    EXPECT_TRUE(Files().FileExists(bed_->childProgram));

    const auto fonts = System().Fonts();
    EXPECT_FALSE(fonts.empty());
    EXPECT_EQ(std::set<std::string>(fonts.begin(), fonts.end()).size(), fonts.size());

    EXPECT_EQ(System().LongDate({2024, 2, 30, 0, 0, 0, 0}), "");
    EXPECT_EQ(System().LongDate({2024, 13, 1, 0, 0, 0, 0}), "");
    EXPECT_EQ(System().LongTime({2024, 1, 1, 24, 0, 0, 0}), "");
    EXPECT_EQ(System().LongTime({2024, 1, 1, 9, -1, 0, 0}), "");
    // The wrong weekday given is not believed.
    EXPECT_EQ(System().LongDate({2024, 2, 29, 0, 0, 0, 3}), System().LongDate({2024, 2, 29, 0, 0, 0, 4}));
}

TEST(Win32CodePages, WindowsConversions) {
    EXPECT_EQ(clsCodePageConverter::ToUtf8("\xe9t\xe9 \x80", 1252), std::optional<std::string>("\xc3\xa9t\xc3\xa9 \xe2\x82\xac"));
    EXPECT_EQ(clsCodePageConverter::FromUtf8("\xc3\xa9 \xc4\x81 \xe2\x82\xac", 1252), std::optional<std::string>("\xe9 ? \x80"));
    EXPECT_EQ(clsCodePageConverter::FromUtf8("\xe6\x97\xa5\xe6\x9c\xac", 932), std::optional<std::string>("\x93\xfa\x96\x7b"));
    EXPECT_EQ(clsCodePageConverter::ToUtf8("\x93\xfa\x96\x7b", 932), std::optional<std::string>("\xe6\x97\xa5\xe6\x9c\xac"));
    EXPECT_FALSE(clsCodePageConverter::ToUtf8("\x93", 932).has_value());  // a lead byte alone
    EXPECT_FALSE(clsCodePageConverter::FromUtf8("bad\xff", 1252).has_value());
    EXPECT_FALSE(clsCodePageConverter::ToUtf8("x", 12345).has_value());
    EXPECT_FALSE(clsCodePageConverter::FromUtf8("x", 12345).has_value());
    EXPECT_EQ(clsCodePageConverter::ToUtf8("", 1252), std::optional<std::string>(""));
    EXPECT_EQ(clsCodePageConverter::FromUtf8("", 65001), std::optional<std::string>(""));
    EXPECT_EQ(clsCodePageConverter::ToUtf8("\xf0\x9f\x98\x80", 65001), std::optional<std::string>("\xf0\x9f\x98\x80"));
    EXPECT_FALSE(clsCodePageConverter::ToUtf8("\xed\xa0\x80", 65001).has_value());
    // UTF-16 is no page to MultiByteToWideChar, but text files use it.
    EXPECT_EQ(clsCodePageConverter::ToUtf8(std::string("A\0\x3d\xd8\x00\xde", 6), 1200),
              std::optional<std::string>("A\xf0\x9f\x98\x80"));
    EXPECT_EQ(clsCodePageConverter::FromUtf8("A\xf0\x9f\x98\x80", 1200), std::optional<std::string>(std::string("A\0\x3d\xd8\x00\xde", 6)));
    EXPECT_FALSE(clsCodePageConverter::ToUtf8(std::string("A\0B", 3), 1200).has_value());
    EXPECT_FALSE(clsCodePageConverter::ToUtf8(std::string("\x00\xd8", 2), 1200).has_value());
}

} // namespace
} // namespace tovel::test
