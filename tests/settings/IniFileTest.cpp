// INI files through clsIniFile on a fresh machine per test: reading as the profile functions
// read, writes that leave every other byte alone, encodings, change detection and broken files.
// Runs on the emulated machine and, cross-built, under Wine.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "common/clsCodePage.h"
#include "common/clsTextDecoder.h"
#include "common/mdlMessage.h"
#include "settings/clsIniFile.h"
#include "tests/support/TestBed.h"

#ifndef _WIN32
#include <filesystem>
#include <fstream>

#include "platform/posix/clsMachinePlatform.h"
#endif

namespace tovel {
namespace {

class IniFile : public ::testing::Test {
protected:
    void SetUp() override {
        bed_ = test::MakeTestBed();
        previous_ = InstallPlatform(std::move(bed_->platform));
        clsIniFile::SetReporter([this](const std::string& message) { reports_.push_back(message); });
        SetMessageBoxHandler([this](const std::string& text, int style, const std::string& caption) {
            boxes_.push_back(caption + "|" + text + "|" + std::to_string(style));
            return mb::kIdOk;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler(nullptr);
        clsIniFile::SetReporter(nullptr);
        bed_->platform = InstallPlatform(std::move(previous_));
        bed_.reset();
    }
    std::string Path(const std::string& name) const { return bed_->folder + name; }
    void Put(const std::string& name, std::string_view bytes) {
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(Path(name), bytes));
    }
    std::string Bytes(const std::string& name) { return Platform().Files().ReadFile(Path(name)).value_or("<missing>"); }
    clsIniFile Open(const std::string& name, const std::string& section) {
        clsIniFile ini;
        ini.SetFullPath(Path(name));
        ini.SetSectionName(section);
        return ini;
    }
    bool Reported(const std::string& part) const {
        return std::any_of(reports_.begin(), reports_.end(), [&](const std::string& r) { return r.find(part) != std::string::npos; });
    }

    std::unique_ptr<test::TestBed> bed_;
    std::unique_ptr<clsPlatform> previous_;
    std::vector<std::string> reports_;
    std::vector<std::string> boxes_;
};

std::string Utf16(std::string_view text, bool bigEndian) {
    const auto bytes = clsCodePage::FromUtf8(text, kCodePageUtf16Le).value();
    std::string out = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        out += bigEndian ? bytes[i + 1] : bytes[i];
        out += bigEndian ? bytes[i] : bytes[i + 1];
    }
    return out;
}

TEST_F(IniFile, UnregisteredObjectShowsTheBoxAndGivesDefaults) {
    clsIniFile ini;
    ini.SetSectionName("S");
    EXPECT_FALSE(ini.Registered());
    EXPECT_EQ(ini.GetString("k", " d "), " d ");
    EXPECT_EQ(ini.GetInt("k", -7), -7);
    EXPECT_TRUE(ini.GetTF("k", true));
    EXPECT_TRUE(ini.GetSectionsEx().empty());
    EXPECT_TRUE(ini.GetSectEntriesEx().empty());
    EXPECT_FALSE(ini.SectExist("S"));
    ini.PutString("k", "v");
    ini.DeleteSection();
    ASSERT_EQ(boxes_.size(), 8u);
    for (const auto& box : boxes_) EXPECT_EQ(box, "IniFile Logic Error|[Section] and FileName Not Registered!|64");

    // A bare file name is the file in the Windows folder, as for the profile functions.
    ini.SetFullPath("TovelIniTest.ini");
    EXPECT_TRUE(ini.Registered());
    const std::string windows = Platform().System().WindowsFolder();
    EXPECT_EQ(ini.FullPath(), windows + "TovelIniTest.ini");
    ini.PutString("k", "bare");
    EXPECT_EQ(Platform().Files().ReadFile(windows + "TovelIniTest.ini").value_or(""), "[S]\r\nk=bare\r\n");
    EXPECT_TRUE(Platform().Files().DeleteFile(windows + "TovelIniTest.ini"));

    clsIniFile win;
    win.SetUseWinINI(true);
    EXPECT_TRUE(win.Registered());
    EXPECT_EQ(win.FullPath(), windows + "WIN.INI");
    EXPECT_EQ(win.FullPath().find("\\\\"), std::string::npos);
    win.SetSectionName("TovelIniTest");
    win.PutTF("flag", true);
    EXPECT_TRUE(win.GetTF("FLAG", false));
    win.DeleteSection();
    EXPECT_FALSE(win.SectExist("TovelIniTest"));
    win.SetFullPath(Path("other.ini"));
    EXPECT_FALSE(win.UseWinINI());
    EXPECT_EQ(boxes_.size(), 8u);
}

TEST_F(IniFile, ReadsNamesAndValuesAsTheProfileFunctions) {
    Put("r.ini",
        "top=before any section\r\n"
        "[ Main ]\r\n"
        " Name = Value with  inner  blanks \r\n"
        "\tTabbed\t=\tx\t\r\n"
        "Double=\"quoted\"\r\nSingle='quoted'\r\nPadded=\"  padded  \"\r\n"
        "Mixed=\"open'\r\nLone=\"\r\nOneQuote=\"a\r\n"
        "Equation=a=b=c\r\nJustText\r\n;Comment=not a key\r\n  ;Indented=no\r\n"
        "Name=the first one wins\r\nEmpty=\r\n"
        "[x]y]\r\nk=last bracket ends the name\r\n[open\r\n"
        "[main]\r\nHidden=second block\r\n"
        "[]\r\nnameless=1\r\n");
    struct Case {
        const char* section;
        const char* key;
        const char* expected;
    };
    const std::string dflt = "  dflt ";
    const Case cases[] = {
        {"main", "name", "Value with  inner  blanks"}, {" MAIN ", "NAME\t", "Value with  inner  blanks"},
        {"Main", "tabbed", "x"}, {"Main", "Double", "quoted"}, {"Main", "Single", "quoted"},
        {"Main", "Padded", "padded"}, {"Main", "Mixed", "\"open'"}, {"Main", "Lone", "\""},
        {"Main", "OneQuote", "\"a"}, {"Main", "Equation", "a=b=c"}, {"Main", "Empty", ""},
        {"Main", "JustText", nullptr}, {"Main", ";Comment", nullptr}, {"Main", "Comment", nullptr},
        {"Main", ";Indented", nullptr}, {"Main", "Hidden", nullptr}, {"x]y", "k", "last bracket ends the name"},
        {"x", "k", nullptr}, {"x]y", "[open", nullptr}, {"open", "k", nullptr}, {"", "top", nullptr},
        {"", "nameless", nullptr}, {"Missing", "Name", nullptr}, {"Main", "Missing", nullptr},
    };
    auto ini = Open("r.ini", "");
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.section) + " / " + c.key);
        ini.SetSectionName(c.section);
        EXPECT_EQ(ini.GetString(c.key, dflt), c.expected != nullptr ? c.expected : dflt);
    }
    EXPECT_EQ(Open("missing.ini", "Main").GetString("Name", dflt), dflt);
    EXPECT_TRUE(reports_.empty());
}

TEST_F(IniFile, EveryKindOfLineEnd) {
    Put("e.ini", "[S]\ra=1\rb=2\n[T]\nc=3\r\n\r\n\n\rd=4");
    auto ini = Open("e.ini", "S");
    EXPECT_EQ(ini.GetString("a", ""), "1");
    EXPECT_EQ(ini.GetString("b", ""), "2");
    ini.SetSectionName("T");
    EXPECT_EQ(ini.GetString("c", ""), "3");
    EXPECT_EQ(ini.GetString("d", ""), "4");
    EXPECT_EQ(ini.GetSectionsEx(), (std::vector<std::string>{"S", "T"}));
}

TEST_F(IniFile, IntegersAsGetPrivateProfileIntReadsThem) {
    Put("i.ini",
        "[I]\r\na=12\r\nb=-5\r\nc=+7\r\nd=0x1A\r\ne=0X1A\r\nf= 12abc\r\ng=abc\r\nh=\r\ni=4294967297\r\n"
        "j=2147483648\r\nk=-2147483649\r\nl=0b101\r\nm=0o17\r\nn=012\r\no=\"42\"\r\np=- 5\r\nq=1 2\r\n"
        "r=0x\r\ns=-0x10\r\nt=99999999999999999999\r\nu=\"  \"\r\nv=ff\r\nw=0xfF\r\n");
    // Negative numbers stay negative, as Windows returns them; "-2147483649" wraps at 2^32.
    const std::pair<const char*, int32_t> cases[] = {
        {"a", 12}, {"b", -5}, {"c", 7}, {"d", 26}, {"e", 0}, {"f", 12}, {"g", 0}, {"h", 77}, {"i", 1},
        {"j", INT32_MIN}, {"k", INT32_MAX}, {"l", 5}, {"m", 15}, {"n", 12}, {"o", 42}, {"p", 0}, {"q", 1}, {"r", 0},
        {"s", -16}, {"t", 1661992959}, {"u", 0}, {"v", 0}, {"w", 255}, {"missing", 77},
    };
    auto ini = Open("i.ini", "i");
    for (const auto& [key, expected] : cases) EXPECT_EQ(ini.GetInt(key, 77), expected) << key;
}

TEST_F(IniFile, TrueFalseWordsAndDefaults) {
    Put("t.ini",
        "[T]\r\na=yes\r\nb=Y\r\nc=true\r\nd=t\r\ne=On\r\nf=1\r\ng=-1\r\nh=\" on \"\r\n"
        "n1=no\r\nn2=n\r\nn3=False\r\nn4=F\r\nn5=off\r\nn6=0\r\n"
        "x1=2\r\nx2=maybe\r\nx3=\r\nx4=yes please\r\n");
    auto ini = Open("t.ini", "T");
    for (const char* key : {"a", "b", "c", "d", "e", "f", "g", "h"}) EXPECT_TRUE(ini.GetTF(key, false)) << key;
    for (const char* key : {"n1", "n2", "n3", "n4", "n5", "n6"}) EXPECT_FALSE(ini.GetTF(key, true)) << key;
    for (const char* key : {"x1", "x2", "x3", "x4", "missing"}) {
        EXPECT_TRUE(ini.GetTF(key, true)) << key;
        EXPECT_FALSE(ini.GetTF(key, false)) << key;
    }
}

TEST_F(IniFile, ListsSectionsAndEntries) {
    Put("l.ini",
        "[One]\r\na=1\r\n;c=2\r\n\r\nb = \"x\" \r\nplain\r\nc=d=e\r\n=novalue\r\n"
        "[two]\r\n[ONE]\r\nhidden=1\r\n[ Three ]\r\n");
    auto ini = Open("l.ini", "one");
    EXPECT_EQ(ini.GetSectionsEx(), (std::vector<std::string>{"One", "two", "ONE", "Three"}));
    const std::vector<IniEntry> expected = {{"a", "1"}, {"b", "\"x\""}, {"plain", ""}, {"c", "d=e"}, {"", "novalue"}};
    EXPECT_EQ(ini.GetSectEntriesEx(), expected);
    EXPECT_TRUE(ini.SectExist("ONE"));
    EXPECT_TRUE(ini.SectExist("three"));
    EXPECT_FALSE(ini.SectExist("four"));
    EXPECT_FALSE(ini.SectExist(""));
    ini.SetSectionName("two");
    EXPECT_TRUE(ini.GetSectEntriesEx().empty());
    ini.SetSectionName("four");
    EXPECT_TRUE(ini.GetSectEntriesEx().empty());
}

TEST_F(IniFile, ValuesAreCutToTheBuffer) {
    std::string wide;
    for (int i = 0; i < 2100; ++i) wide += "\xC3\xA4";  // ä
    Put("b.ini", "\xEF\xBB\xBF[L]\r\nexact=" + std::string(2047, 'a') + "\r\nover=" + std::string(2048, 'b') +
                     "\r\nwide=" + wide + "\r\nquoted=\"" + std::string(2047, 'q') + "\"\r\n");
    auto ini = Open("b.ini", "L");
    EXPECT_EQ(ini.GetString("exact", ""), std::string(2047, 'a'));
    EXPECT_EQ(ini.GetString("over", ""), std::string(2047, 'b'));
    EXPECT_EQ(ini.GetString("wide", ""), wide.substr(0, 2 * 2047));
    EXPECT_EQ(ini.GetString("quoted", ""), std::string(2047, 'q'));
    EXPECT_TRUE(Reported("line 3 (and 1 more) holds a value longer than 2047 characters"));
}

TEST_F(IniFile, ReplacingAKeyChangesOnlyItsLine) {
    const std::string before = "; Setups\r\n[Setup]\r\n  Path = C:\\Old  \r\n\r\nOther=1\r\n[Next]\r\nPath=keep\r\n";
    Put("w.ini", before);
    auto ini = Open("w.ini", "setup");
    ini.PutString("PATH", "D:\\New");
    EXPECT_EQ(Bytes("w.ini"), "; Setups\r\n[Setup]\r\n  Path = D:\\New\r\n\r\nOther=1\r\n[Next]\r\nPath=keep\r\n");
    ini.PutInt("other", -3);
    EXPECT_EQ(ini.GetString("Other", ""), "-3");
    ini.PutTF("other", true);
    EXPECT_EQ(Bytes("w.ini"), "; Setups\r\n[Setup]\r\n  Path = D:\\New\r\n\r\nOther=True\r\n[Next]\r\nPath=keep\r\n");
    ini.PutTF("other", true);  // the same value again leaves the file as it is
    EXPECT_EQ(Bytes("w.ini"), "; Setups\r\n[Setup]\r\n  Path = D:\\New\r\n\r\nOther=True\r\n[Next]\r\nPath=keep\r\n");
    EXPECT_TRUE(reports_.empty());
}

TEST_F(IniFile, NewKeysGoAfterTheLastKeyOfTheirSection) {
    Put("k.ini", "[A]\r\nk1=1\r\n\r\n; about B\r\n[B]\r\n[A]\r\nk9=9");
    auto ini = Open("k.ini", "a");
    ini.PutString("k2", "2");
    ini.PutString("k9", "first block");   // the second [A] is not read, so not written either
    ini.SetSectionName("B");
    ini.PutString("new", "x");
    EXPECT_EQ(Bytes("k.ini"), "[A]\r\nk1=1\r\nk2=2\r\nk9=first block\r\n\r\n; about B\r\n[B]\r\nnew=x\r\n[A]\r\nk9=9");

    Put("end.ini", "[A]\r\nk=1");
    Open("end.ini", "A").PutString("k2", "2");
    EXPECT_EQ(Bytes("end.ini"), "[A]\r\nk=1\r\nk2=2\r\n");
}

TEST_F(IniFile, NewSectionsGoAtTheEndInTheFilesLineEnds) {
    Put("lf.ini", "[A]\nk=1");
    Open("lf.ini", "B").PutString("x", "1");
    EXPECT_EQ(Bytes("lf.ini"), "[A]\nk=1\n[B]\nx=1\n");
    Put("cr.ini", "[A]\rk=1\r");
    Open("cr.ini", "B").PutString("x", "1");
    EXPECT_EQ(Bytes("cr.ini"), "[A]\rk=1\r[B]\rx=1\r");
    Open("new.ini", " S ").PutString(" k ", "v");
    EXPECT_EQ(Bytes("new.ini"), "[S]\r\nk=v\r\n");

    auto lost = Open("no such folder\\x.ini", "S");
    lost.PutString("k", "v");
    EXPECT_EQ(lost.GetString("k", "gone"), "gone");
    EXPECT_TRUE(Reported("cannot set [S] k: the file cannot be written"));
}

TEST_F(IniFile, DeletingRemovesExactlyThoseLines) {
    Put("d.ini", "; head\r\n[A]\r\na=1\r\n; about a\r\n\r\n[B]\r\nb=1\r\nB=2\r\nc=3\r\n[a]\r\nagain=1\r\n[C]\r\nc=1");
    auto ini = Open("d.ini", "b");
    ini.DeleteKey("B");
    EXPECT_EQ(Bytes("d.ini"), "; head\r\n[A]\r\na=1\r\n; about a\r\n\r\n[B]\r\nc=3\r\n[a]\r\nagain=1\r\n[C]\r\nc=1");
    ini.SetSectionName("A");
    ini.DeleteSection();   // both blocks, so the second cannot come to light
    EXPECT_EQ(Bytes("d.ini"), "; head\r\n[B]\r\nc=3\r\n[C]\r\nc=1");
    EXPECT_FALSE(ini.SectExist("a"));
    ini.SetSectionName("C");
    ini.DeleteSection();
    EXPECT_EQ(Bytes("d.ini"), "; head\r\n[B]\r\nc=3\r\n");
    ini.SetSectionName("Missing");
    ini.DeleteSection();
    ini.DeleteKey("c");
    EXPECT_EQ(Bytes("d.ini"), "; head\r\n[B]\r\nc=3\r\n");
    Open("none.ini", "A").DeleteSection();
    EXPECT_FALSE(Platform().Files().FileExists(Path("none.ini")));
}

TEST_F(IniFile, WritesThatWouldNotReadBackAreRefused) {
    const std::string before = "[S]\r\nk=1\r\n";
    Put("x.ini", before);
    auto ini = Open("x.ini", "S");
    ini.PutString("a=b", "x");
    ini.PutString(";c", "x");
    ini.PutString("[k", "x");
    ini.PutString("k", "two\r\nlines");
    ini.PutString("k", std::string("nul\0byte", 8));
    ini.PutString("  ", "x");
    ini.PutString("k", "\xFF not UTF-8");
    ini.SetSectionName(" ");
    ini.PutString("k", "x");
    EXPECT_EQ(Bytes("x.ini"), before);
    EXPECT_EQ(reports_.size(), 8u);
    EXPECT_TRUE(Reported("cannot set [S] a=b: the key name \"a=b\" would not read back as a key"));
    EXPECT_TRUE(Reported("cannot set [ ] k: no section name"));
}

TEST_F(IniFile, AnsiFilesAreConvertedBothWays) {
    if (Platform().System().AnsiCodePage() != 1252) GTEST_SKIP() << "needs code page 1252";
    Put("a.ini", "[Gr\xF6\xDF" "e]\r\nName=M\xFCller\r\nKeep=\xE9t\xE9\r\n");
    auto ini = Open("a.ini", "GR\xC3\x96\xC3\x9F" "E");
    EXPECT_EQ(ini.GetSectionsEx(), std::vector<std::string>{"Gr\xC3\xB6\xC3\x9F" "e"});
    EXPECT_EQ(ini.GetString("name", ""), "M\xC3\xBCller");
    ini.PutString("Name", "Zo\xC3\xAB \xCE\xA9");   // Ω is not in the code page
    EXPECT_EQ(Bytes("a.ini"), "[Gr\xF6\xDF" "e]\r\nName=Zo\xEB ?\r\nKeep=\xE9t\xE9\r\n");
    EXPECT_EQ(ini.GetString("Name", ""), "Zo\xC3\xAB ?");   // from memory, as from the file
    // A name it cannot hold would be written as one that is never found again.
    ini.PutString("\xCE\xA9", "x");
    ini.SetSectionName("\xCE\xA9");
    ini.PutString("k", "x");
    EXPECT_EQ(Bytes("a.ini"), "[Gr\xF6\xDF" "e]\r\nName=Zo\xEB ?\r\nKeep=\xE9t\xE9\r\n");
    EXPECT_TRUE(Reported("cannot set [GR\xC3\x96\xC3\x9F" "E] \xCE\xA9: the key name cannot be written in code page 1252"));
    EXPECT_TRUE(Reported("cannot set [\xCE\xA9] k: the section name cannot be written in code page 1252"));
}

TEST_F(IniFile, UnicodeFilesKeepTheirEncoding) {
    Put("le.ini", Utf16("[\xC3\x9C]\r\nk=\xC3\xA4\r\n", false));
    auto le = Open("le.ini", "\xC3\xBC");
    EXPECT_EQ(le.GetString("K", ""), "\xC3\xA4");
    le.PutString("n", "\xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_EQ(Bytes("le.ini"), Utf16("[\xC3\x9C]\r\nk=\xC3\xA4\r\nn=\xE2\x82\xAC \xF0\x9F\x98\x80\r\n", false));

    Put("be.ini", Utf16("[S]\nk=\xC3\xA4", true));
    auto be = Open("be.ini", "S");
    EXPECT_EQ(be.GetString("k", ""), "\xC3\xA4");
    be.PutString("k", "b");
    EXPECT_EQ(Bytes("be.ini"), Utf16("[S]\nk=b", true));

    const std::string broken = "\xEF\xBB\xBF[S]\r\nbad=\xFF\xFE x\r\nk=\xC3\xA9\r\n";
    Put("u8.ini", broken);
    auto u8 = Open("u8.ini", "S");
    EXPECT_EQ(u8.GetString("k", ""), "\xC3\xA9");
    EXPECT_EQ(u8.GetString("bad", ""), "\xEF\xBF\xBD\xEF\xBF\xBD x");
    EXPECT_TRUE(Reported("u8.ini: line 2 is not valid text in UTF-8"));
    u8.PutString("n", "1");
    EXPECT_EQ(Bytes("u8.ini"), broken + "n=1\r\n");

    // A lone surrogate and half a character at the end: read as U+FFFD, written back as they were.
    const std::string head = Utf16("[S]\r\nbad=", true) + std::string("\xD8\x00", 2);
    Put("d16.ini", head + Utf16("\r\nk=1\r\n", true).substr(2) + "\x41");
    auto d16 = Open("d16.ini", "S");
    EXPECT_EQ(d16.GetString("bad", ""), "\xEF\xBF\xBD");
    EXPECT_TRUE(Reported("d16.ini: line 2 is not valid text in UTF-16 BE"));
    EXPECT_TRUE(Reported("ends in half a UTF-16 character"));
    d16.PutString("k", "2");
    EXPECT_EQ(Bytes("d16.ini"), head + Utf16("\r\nk=2\r\n", true).substr(2) + "\x41");
}

TEST_F(IniFile, ChangesOnDiskAreSeen) {
    auto ini = Open("c.ini", "S");
    EXPECT_EQ(ini.GetString("k", "none"), "none");
    Put("c.ini", "[S]\r\nk=1\r\n");
    EXPECT_EQ(ini.GetString("k", "none"), "1");
    // Same size, most likely the same second: only the bytes tell.
    Put("c.ini", "[S]\r\nk=2\r\n");
    EXPECT_EQ(ini.GetString("k", "none"), "2");
    Open("c.ini", "S").PutString("k", "33");
    EXPECT_EQ(ini.GetString("k", "none"), "33");
    ini.PutString("k", "4");
    EXPECT_EQ(Open("c.ini", "S").GetString("k", "none"), "4");
    ASSERT_TRUE(Platform().Files().DeleteFile(Path("c.ini")));
    EXPECT_EQ(ini.GetString("k", "none"), "none");
    ini.SetFullPath(Path("folder"));
    ASSERT_TRUE(Platform().Files().CreateFolder(Path("folder")));
    EXPECT_EQ(ini.GetString("k", "none"), "none");
    ini.PutString("k", "x");
    EXPECT_TRUE(Reported("folder: cannot be read (it is a folder)"));
    EXPECT_TRUE(Reported("cannot set [S] k: the file cannot be read"));
}

#ifndef _WIN32
// The host file's time can be set back here, so the file changes while its stamp stays: the
// object keeps answering from memory, a new object reads the new bytes.
TEST_F(IniFile, ServedFromMemoryWhileSizeAndTimeStay) {
    Put("m.ini", "[S]\r\nk=1\r\n");
    auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
    const std::string host = machine.HostPath(Path("m.ini")).value();
    const auto old = std::filesystem::last_write_time(host) - std::chrono::hours(1);
    std::filesystem::last_write_time(host, old);
    auto ini = Open("m.ini", "S");
    EXPECT_EQ(ini.GetString("k", ""), "1");
    std::ofstream(host, std::ios::binary | std::ios::trunc) << "[S]\r\nk=2\r\n";
    std::filesystem::last_write_time(host, old);
    EXPECT_EQ(ini.GetString("k", ""), "1");
    EXPECT_EQ(Open("m.ini", "S").GetString("k", ""), "2");
    std::filesystem::last_write_time(host, old + std::chrono::seconds(1));
    EXPECT_EQ(ini.GetString("k", ""), "2");
}
#endif

TEST_F(IniFile, BrokenFilesReadSafelyAndKeepTheirBytes) {
    std::string garbage;
    uint32_t seed = 12345;
    for (int i = 0; i < 65536; ++i) {
        seed = seed * 1103515245u + 12345u;
        garbage += static_cast<char>(seed >> 24);
    }
    Put("g.ini", garbage);
    auto g = Open("g.ini", "New");
    EXPECT_EQ(g.GetString("k", "d"), "d");
    (void)g.GetSectionsEx();
    g.PutString("k", "v");
    EXPECT_EQ(Bytes("g.ini").substr(0, garbage.size()), garbage);
    EXPECT_EQ(Open("g.ini", "New").GetString("k", "d"), "v");

    // Not "nul.ini": Windows takes that for the NUL device.
    Put("zero.ini", std::string("[N\0x]\r\na=x\0y\r\nb\0c=2\r\n", 21));
    auto zero = Open("zero.ini", "n");
    EXPECT_EQ(zero.GetString("a", ""), "x");
    EXPECT_EQ(zero.GetString("b", ""), "2");
    EXPECT_TRUE(Reported("zero.ini: line 1 (and 2 more) holds a NUL byte"));

    Put("long.ini", "[L]\r\nk=" + std::string(100000, 'x') + "\r\nz=1\r\n" + std::string(100000, '['));
    auto longLine = Open("long.ini", "L");
    EXPECT_EQ(longLine.GetString("k", "").size(), 2047u);
    EXPECT_EQ(longLine.GetString("z", ""), "1");

    std::string many;
    for (int i = 0; i < 100000; ++i) many += "[S" + std::to_string(i) + "]\r\nk=" + std::to_string(i) + "\r\n";
    Put("many.ini", many);
    auto m = Open("many.ini", "s99999");
    EXPECT_EQ(m.GetString("K", ""), "99999");
    EXPECT_EQ(m.GetSectionsEx().size(), 100000u);
    m.SetSectionName("S50000");
    m.PutString("k", "changed");
    EXPECT_EQ(Bytes("many.ini").size(), many.size() + 2);
    EXPECT_EQ(m.GetString("k", ""), "changed");
}

// Code page 932: a trail byte may be "]" or "[", so lines are read as text, never as bytes.
TEST(IniText, DoubleByteCodePageIsDecodedBeforeItIsParsed) {
    const std::string bytes = "[A\x81\x5D]\r\nk=\x82\xA0\r\n[\x81\x5D\r\nbad=\x81\x20x\r\n\x81 k=1\r\n";
    std::vector<std::string> warnings;
    auto text = clsIniText::Parse(bytes, 932, warnings);
    const std::string section = "A\xE2\x80\x90";   // A‐
    EXPECT_EQ(text.SectionNames(), std::vector<std::string>{section});
    EXPECT_EQ(text.Value(section, "k").value_or(""), "\xE3\x81\x82");
    EXPECT_EQ(text.Value(section, "bad").value_or(""), "\xEF\xBF\xBD x");
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].rfind("line 4 (and 1 more) is not valid text in code page 932", 0), 0u);
    EXPECT_EQ(text.Bytes(), bytes);
    std::string error;
    EXPECT_TRUE(text.SetValue(section, "n", "\xE3\x81\x84", error));
    EXPECT_EQ(text.Bytes(), bytes + "n=\x82\xA2\r\n");
    // A new value leaves the bytes before it as they were, even those that are no text.
    EXPECT_TRUE(text.SetValue(section, "\xEF\xBF\xBD k", "2", error));
    EXPECT_EQ(text.Bytes(), "[A\x81\x5D]\r\nk=\x82\xA0\r\n[\x81\x5D\r\nbad=\x81\x20x\r\n\x81 k=2\r\nn=\x82\xA2\r\n");
}

// Edits add each new line to the end of the text's store and leave the rest in place: every
// way of reading a file (as its bytes, converted whole, line by line, from UTF-16) must keep
// pointing at the right bytes after edits of edited lines, removals and new sections.
TEST(IniText, EditsInARowKeepEveryEncodingByteForByte) {
    struct Case {
        const char* name;
        uint32_t codePage;
        std::string bom, firstLine;   // firstLine: raw bytes, kept as they are
        std::string section, value1, value2;
        std::function<std::string(std::string_view)> encode;
    };
    auto ansi = [](uint32_t codePage) { return [codePage](std::string_view t) { return clsIniText::AnsiBytes(t, codePage); }; };
    auto utf16 = [](bool bigEndian) { return [bigEndian](std::string_view t) { return clsTextDecoder::ToUtf16(t, bigEndian); }; };
    const std::string loneSurrogate = clsTextDecoder::ToUtf16("; ", false) + std::string("\x00\xD8", 2) + clsTextDecoder::ToUtf16("\r\n", false);
    const Case cases[] = {
        {"1252", 1252, "", "; ok\r\n", "Gr\xC3\xB6\xC3\x9F" "e", "Z\xC3\xBCrich", "M\xC3\xBCnchen", ansi(1252)},
        {"932", 932, "", "; ok\r\n", "\xE6\x97\xA5\xE6\x9C\xAC", "\xE6\x9D\xB1\xE4\xBA\xAC", "\xE5\xA4\xA7\xE9\x98\xAA", ansi(932)},
        {"932, a lone lead byte", 932, "", "; \x81\r\n", "\xE6\x97\xA5\xE6\x9C\xAC", "\xE6\x9D\xB1\xE4\xBA\xAC", "\xE5\xA4\xA7\xE9\x98\xAA", ansi(932)},
        {"UTF-8, a broken line", 1252, "\xEF\xBB\xBF", "; \xFF\r\n", "\xCE\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", [](std::string_view t) { return std::string(t); }},
        {"UTF-16 LE, a lone surrogate", 1252, "\xFF\xFE", loneSurrogate, "\xCE\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", utf16(false)},
        {"UTF-16 BE", 1252, "\xFE\xFF", clsTextDecoder::ToUtf16("; ok\r\n", true), "\xCE\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", utf16(true)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string source = "[" + c.section + "]\r\nName = " + c.value1 + "\r\nKeep=1\r\n[Old]\r\nx=1\r\n";
        std::vector<std::string> warnings;
        auto text = clsIniText::Parse(c.bom + c.firstLine + c.encode(source), c.codePage, warnings);
        ASSERT_EQ(text.Value(c.section, "name").value_or(""), c.value1);
        std::string error;
        EXPECT_TRUE(text.SetValue(c.section, "Name", c.value2, error)) << error;
        EXPECT_TRUE(text.SetValue(c.section, "Name", c.value1 + c.value2, error)) << error;
        EXPECT_TRUE(text.SetValue(c.section, "New", c.value2, error)) << error;
        EXPECT_TRUE(text.RemoveSection("old"));
        EXPECT_TRUE(text.SetValue("Old", "y", c.value1, error)) << error;
        EXPECT_TRUE(text.RemoveKey(c.section, "KEEP"));
        EXPECT_FALSE(text.SetValue(c.section, "Name", c.value1 + c.value2, error));
        const std::string expected = "[" + c.section + "]\r\nName = " + c.value1 + c.value2 + "\r\nNew=" + c.value2 +
                                     "\r\n[Old]\r\ny=" + c.value1 + "\r\n";
        EXPECT_EQ(text.Bytes(), c.bom + c.firstLine + c.encode(expected));
        const auto again = clsIniText::Parse(text.Bytes(), c.codePage, warnings);
        EXPECT_EQ(again.Bytes(), text.Bytes());
        EXPECT_EQ(again.Value(c.section, "name"), text.Value(c.section, "name"));
        EXPECT_EQ(again.Value("old", "Y").value_or(""), c.value1);
        EXPECT_EQ(again.Entries(c.section), text.Entries(c.section));
    }
}

// A text holds no pointers into itself: copies and moves read and change on their own.
TEST(IniText, ACopyIsEditedApartFromItsOriginal) {
    std::vector<std::string> warnings;
    auto original = clsIniText::Parse("\xFF\xFE" + clsTextDecoder::ToUtf16("[S]\r\nk=\xC3\xA4\r\n", false), 1252, warnings);
    std::string error;
    ASSERT_TRUE(original.SetValue("S", "k", "\xC3\xB6", error));
    auto copy = original;
    ASSERT_TRUE(copy.SetValue("S", "k", "copy", error));
    ASSERT_TRUE(copy.SetValue("S", "n", "new", error));
    EXPECT_EQ(original.Value("S", "k").value_or(""), "\xC3\xB6");
    EXPECT_FALSE(original.Value("S", "n").has_value());
    ASSERT_TRUE(original.SetValue("S", "k", "own", error));
    const clsIniText moved = std::move(copy);
    EXPECT_EQ(moved.Value("S", "k").value_or(""), "copy");
    EXPECT_EQ(moved.Bytes(), "\xFF\xFE" + clsTextDecoder::ToUtf16("[S]\r\nk=copy\r\nn=new\r\n", false));
    EXPECT_EQ(original.Bytes(), "\xFF\xFE" + clsTextDecoder::ToUtf16("[S]\r\nk=own\r\n", false));
}

// Edits leave what they replace behind in the store until it is written anew: a long run of
// them, changing one line and adding and removing another, keeps every other line as it was.
TEST(IniText, ALongRunOfEditsKeepsEveryOtherLine) {
    auto utf16 = [](std::string_view text) { return "\xFF\xFE" + clsTextDecoder::ToUtf16(text, false); };
    std::vector<std::string> warnings;
    auto text = clsIniText::Parse(utf16("[S]\r\nk=0\r\nkeep=\xC3\xA4\r\n[T]\r\nx=\xC3\xB6\r\n"), 1252, warnings);
    std::string error;
    std::string value;
    for (int i = 0; i < 3000; ++i) {
        value = std::string(100, 'v') + std::to_string(i);
        ASSERT_TRUE(text.SetValue("S", "k", value, error));
        if (i % 10 == 0) {
            ASSERT_TRUE(text.SetValue("T", "gone", value, error));
            ASSERT_TRUE(text.RemoveKey("T", "gone"));
        }
    }
    EXPECT_EQ(text.Value("S", "keep").value_or(""), "\xC3\xA4");
    EXPECT_EQ(text.Value("T", "x").value_or(""), "\xC3\xB6");
    EXPECT_EQ(text.Bytes(), utf16("[S]\r\nk=" + value + "\r\nkeep=\xC3\xA4\r\n[T]\r\nx=\xC3\xB6\r\n"));
}

// Readers ask for many keys of one section in a row, and the text remembers the block asked
// for last: a section asked for before it was written, or removed after, reads as it now is,
// and so do names that fold alike only beyond ASCII.
TEST(IniText, LookUpsFollowTheTextThroughEdits) {
    std::vector<std::string> warnings;
    auto text = clsIniText::Parse("\xEF\xBB\xBF[Old]\r\nKey=1\r\nKey=2\r\n[\xC3\xA4nderung]\r\nStra\xC3\x9F" "e=3\r\n", 1252, warnings);
    EXPECT_FALSE(text.Value("New", "Key").has_value());
    std::string error;
    ASSERT_TRUE(text.SetValue("New", "Key", "fresh", error));
    EXPECT_EQ(text.Value("New", "key").value_or(""), "fresh");
    EXPECT_EQ(text.Value("OLD", "KEY").value_or(""), "1");
    ASSERT_TRUE(text.RemoveSection("New"));
    EXPECT_FALSE(text.Value("New", "Key").has_value());
    EXPECT_EQ(text.FindValue("old", "key")->line, 2u);
    EXPECT_EQ(text.Value("\xC3\x84NDERUNG", "stra\xC3\x9F" "e").value_or(""), "3");
    EXPECT_EQ(clsIniText::NameHash(" \xC3\xA4nderung"), clsIniText::NameHash("\xC3\x84NDERUNG\t"));
    EXPECT_TRUE(clsIniText::SameName("Key ", "kEY"));
    EXPECT_FALSE(clsIniText::SameName("Key[", "Key{"));   // hashed alike, told apart
}

} // namespace
} // namespace tovel
