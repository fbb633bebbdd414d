// The emulated registry and its file: format, encodings, damaged files, failed writes and
// several processes sharing one file.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/posix/clsMachineRegistry.h"
#include "platform/clsUtf8.h"
#include "platform/posix/clsRegistryHive.h"
#include "tests/support/clsWithoutPermissionOverride.h"

namespace tovel {
namespace {

constexpr RegRoot kUser = RegRoot::CurrentUser;
constexpr RegRoot kMachine = RegRoot::LocalMachine;

std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

void WriteAll(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

class RegistryFile : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/tovel-regfile-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        folder_ = pattern;
        file_ = folder_ + "/registry.reg";
    }
    void TearDown() override {
        chmod(folder_.c_str(), 0755);
        std::error_code ec;
        std::filesystem::remove_all(folder_, ec);
    }

    // A registry on the test's file that collects its reports.
    std::unique_ptr<clsMachineRegistry> Open(uint32_t codePage = 1252) {
        auto reg = std::make_unique<clsMachineRegistry>(file_, codePage);
        reg->SetReporter([this](const std::string& message) { reports_.push_back(message); });
        std::string error;
        EXPECT_TRUE(reg->Load(error)) << error;
        return reg;
    }

    // The error loading the file gives.
    std::string LoadError(const std::string& content, uint32_t codePage = 1252) {
        WriteAll(file_, content);
        clsMachineRegistry reg(file_, codePage);
        std::string error;
        EXPECT_FALSE(reg.Load(error)) << "accepted:\n" << content;
        return error;
    }

    std::string folder_;
    std::string file_;
    std::vector<std::string> reports_;
};

TEST_F(RegistryFile, EveryTypeRoundTrips) {
    auto reg = Open();
    EXPECT_FALSE(std::filesystem::exists(file_)) << "a missing file is an empty registry";
    EXPECT_EQ(reg->EnumKeys(kMachine, ""), std::vector<std::string>{});

    const std::string key = "Software\\Tovel \"Quoted\" [x]\\Sub]key\\Schl\xC3\xBCssel";
    const std::vector<std::pair<std::string, clsRegValue>> values = {
        {"", clsRegValue::String("default")},
        {"quote\" and back\\slash", clsRegValue::String("C:\\Dir\\\"x\"\\")},
        {"Lines", clsRegValue::String("one\r\ntwo\nthree\rfour")},
        {"WithNul", clsRegValue::String(std::string("a\0b\0", 4))},
        {"Empty", clsRegValue::String("")},
        {"Umlaut", clsRegValue::String("Gr\xC3\xBC\xC3\x9F" "e \xE2\x82\xAC \xF0\x9F\x98\x80")},
        {"Expand", clsRegValue::ExpandString("%ProgramFiles%\\Tovel")},
        {"ExpandEmpty", clsRegValue::ExpandString("")},
        {"Multi", clsRegValue::MultiString({"a", "", "b\xC3\xA4"})},
        {"MultiNone", clsRegValue::MultiString({})},
        {"MultiOneEmpty", clsRegValue::MultiString({""})},
        {"Binary", clsRegValue::Binary(std::string("\x00\xff\x10", 3))},
        {"BinaryEmpty", clsRegValue::Binary("")},
        {"DwordMax", clsRegValue::Dword(0xFFFFFFFF)},
        {"DwordZero", clsRegValue::Dword(0)},
        {"DwordOdd", clsRegValue::Raw(4, "abc")},
        {"None", clsRegValue::Raw(0, std::string("\x00\x01", 2))},
        {"Qword", clsRegValue::Raw(11, "12345678")},
        {"Link", clsRegValue::Raw(6, "x")},
        {"Big type", clsRegValue::Raw(0x12345678, "y")},
    };
    for (const auto& [name, value] : values) ASSERT_TRUE(reg->SetValue(kUser, key, name, value)) << name;
    ASSERT_TRUE(reg->SetValue(kUser, "", "AtTheRoot", clsRegValue::Dword(5)));
    ASSERT_TRUE(reg->CreateKey(kMachine, "SOFTWARE\\Empty\\Deeper\\Deepest"));
    ASSERT_TRUE(reg->CreateKey(RegRoot::Users, ".DEFAULT"));
    // A raw DWORD of four bytes is the number it holds.
    ASSERT_TRUE(reg->SetValue(kUser, "Software", "RawDword", clsRegValue::Raw(4, std::string("\x2a\0\0\x01", 4))));

    const std::string firstFile = ReadAll(file_);
    auto again = Open();
    EXPECT_TRUE(reports_.empty());
    for (const auto& [name, value] : values) {
        EXPECT_EQ(again->QueryValue(kUser, key, name), value) << "value \"" << name << "\"";
    }
    EXPECT_EQ(again->QueryValue(kUser, "", "AtTheRoot"), clsRegValue::Dword(5));
    EXPECT_EQ(again->QueryValue(kUser, "Software", "RawDword"), clsRegValue::Dword(0x0100002a));
    EXPECT_TRUE(again->KeyExists(kMachine, "SOFTWARE\\Empty\\Deeper\\Deepest")) << "empty keys are kept";
    EXPECT_TRUE(again->KeyExists(RegRoot::Users, ".default"));
    std::vector<std::string> names;
    for (const auto& entry : values) names.push_back(entry.first);
    EXPECT_EQ(again->EnumValues(kUser, key), names) << "values keep their order";

    // Writing what was read gives the same file.
    ASSERT_TRUE(again->SetValue(kUser, key, "Empty", clsRegValue::String("x")));
    ASSERT_TRUE(again->SetValue(kUser, key, "Empty", clsRegValue::String("")));
    EXPECT_EQ(ReadAll(file_), firstFile);
}

TEST_F(RegistryFile, WritesTheExpectedText) {
    auto reg = Open();
    const std::string key = "SOFTWARE\\Tovel";
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Path", clsRegValue::String("C:\\Tovel \"1\"")));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "", clsRegValue::String("default")));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Count", clsRegValue::Dword(42)));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Flags", clsRegValue::Binary("\x01\xff")));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Exp", clsRegValue::ExpandString("%A%")));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Multi", clsRegValue::MultiString({"a", "b"})));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Lines", clsRegValue::String("a\nb")));
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Count", clsRegValue::Dword(43)));  // keeps its place
    std::string bytes;
    for (int i = 0; i < 30; ++i) bytes += static_cast<char>(i);
    ASSERT_TRUE(reg->SetValue(kMachine, key, "Long", clsRegValue::Binary(bytes)));
    ASSERT_TRUE(reg->CreateKey(kMachine, "SOFTWARE\\Tovel\\b"));
    ASSERT_TRUE(reg->CreateKey(kMachine, "SOFTWARE\\Tovel\\A"));
    ASSERT_TRUE(reg->SetValue(kUser, "Software", "X", clsRegValue::Raw(11, std::string("\x01\0\0\0\0\0\0\0", 8))));

    EXPECT_EQ(ReadAll(file_),
              "REGEDIT4\r\n"
              "\r\n"
              "[HKEY_LOCAL_MACHINE\\SOFTWARE]\r\n"
              "\r\n"
              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel]\r\n"
              "\"Path\"=\"C:\\\\Tovel \\\"1\\\"\"\r\n"
              "@=\"default\"\r\n"
              "\"Count\"=dword:0000002b\r\n"
              "\"Flags\"=hex:01,ff\r\n"
              "\"Exp\"=hex(2):25,41,25,00\r\n"
              "\"Multi\"=hex(7):61,00,62,00,00\r\n"
              "\"Lines\"=hex(1):61,0a,62,00\r\n"
              "\"Long\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,14,15,\\\r\n"
              "  16,17,18,19,1a,1b,1c,1d\r\n"
              "\r\n"
              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\A]\r\n"
              "\r\n"
              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\b]\r\n"
              "\r\n"
              "[HKEY_CURRENT_USER\\Software]\r\n"
              "\"X\"=hex(b):01,00,00,00,00,00,00,00\r\n"
              "\r\n");
}

TEST_F(RegistryFile, ReadsAnsiExportsAndLenientText) {
    // An export of a real Windows in code page 1252: ü=FC, ö=F6, ß=DF, Ä=C4, €=80.
    WriteAll(file_,
             "REGEDIT4\r\n"
             "\r\n"
             "[HKEY_CURRENT_USER\\Software\\M\xFCller]\r\n"
             "\"Gr\xF6\xDF" "e\"=\"Sch\xF6n \x80\"\r\n"
             "\"Exp\"=hex(2):25,54,45,4d,50,25,5c,c4,00\r\n"
             "\"Multi\"=hex(7):e4,00,f6,00,00\r\n");
    auto reg = Open(1252);
    const std::string key = "Software\\M\xC3\xBCller";
    ASSERT_TRUE(reg->KeyExists(kUser, key));
    EXPECT_EQ(reg->EnumKeys(kUser, "Software"), std::vector<std::string>{"M\xC3\xBCller"});
    EXPECT_EQ(reg->QueryValue(kUser, key, "Gr\xC3\xB6\xC3\x9F" "e"), clsRegValue::String("Sch\xC3\xB6n \xE2\x82\xAC"));
    EXPECT_EQ(reg->QueryValue(kUser, key, "Exp"), clsRegValue::ExpandString("%TEMP%\\\xC3\x84"));
    EXPECT_EQ(reg->QueryValue(kUser, key, "Multi"), clsRegValue::MultiString({"\xC3\xA4", "\xC3\xB6"}));

    // The next write turns the file into UTF-8.
    ASSERT_TRUE(reg->SetValue(kUser, key, "New", clsRegValue::Dword(1)));
    const std::string rewritten = ReadAll(file_);
    EXPECT_TRUE(clsUtf8::IsValid(rewritten));
    EXPECT_NE(rewritten.find("[HKEY_CURRENT_USER\\Software\\M\xC3\xBCller]"), std::string::npos);
    EXPECT_NE(rewritten.find("\"Exp\"=hex(2):25,54,45,4d,50,25,5c,c3,84,00"), std::string::npos);

    // An ASCII-only export is valid UTF-8, but its string data may still be ANSI bytes. Also:
    // LF line ends, comments, blanks, indentation, short and upper-case hex, a root value.
    WriteAll(file_,
             "REGEDIT4\n"
             "; a comment\n"
             "\n"
             "  [hkey_local_machine\\A]  \n"
             "\t\"Exp\"=hex(2):c4,00\n"
             "\"D\" = dword:2A\n"
             "\"B\"=HEX:1,A,\\\n"
             "   FF\n"
             "\n"
             "[HKEY_USERS]\n"
             "@=\"root\"\n"
             "[HKEY_LOCAL_MACHINE\\a]\n"
             "\"Second\"=\"merged\"\n");
    auto lenient = Open(1252);
    EXPECT_EQ(lenient->QueryValue(kMachine, "A", "Exp"), clsRegValue::ExpandString("\xC3\x84"));
    EXPECT_EQ(lenient->QueryValue(kMachine, "A", "D"), clsRegValue::Dword(42));
    EXPECT_EQ(lenient->QueryValue(kMachine, "A", "B"), clsRegValue::Binary("\x01\x0a\xff"));
    EXPECT_EQ(lenient->QueryValue(RegRoot::Users, "", ""), clsRegValue::String("root"));
    EXPECT_EQ(lenient->EnumValues(kMachine, "A"), (std::vector<std::string>{"Exp", "D", "B", "Second"}));
    EXPECT_TRUE(reports_.empty());
}

TEST_F(RegistryFile, DamagedFilesNameTheLine) {
    struct Case {
        std::string content;
        int line;
        std::string what;
    };
    const std::string head = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software]\r\n";  // key on line 3
    const std::vector<Case> cases = {
        {"", 1, "REGEDIT4"},
        {"\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n", 1, "REGEDIT4"},
        {"REGEDIT5\r\n", 1, "REGEDIT4"},
        {std::string("\xFF\xFEW\0i\0n\0", 8), 1, "UTF-16"},
        {"Windows Registry Editor Version 5.00\r\n\r\n", 1, "REGEDIT4"},
        {"REGEDIT4\r\n\r\n[HKEY_CLASSES_ROOT\\.txt]\r\n", 3, "unknown root"},
        {"REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A\\\\B]\r\n", 3, "bad key name"},
        {"REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A\\]\r\n", 3, "bad key name"},
        {"REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A\r\n", 3, "]"},
        {"REGEDIT4\r\n\r\n[-HKEY_CURRENT_USER\\A]\r\n", 3, "deleting a key"},
        {"REGEDIT4\r\n\r\n\"a\"=\"b\"\r\n", 3, "before the first [key]"},
        {head + "\"a\"=dword:xyz\r\n", 4, "bad dword"},
        {head + "\"a\"=dword:123456789\r\n", 4, "bad dword"},
        {head + "\"a\"=dword:\r\n", 4, "bad dword"},
        {head + "\"a\"=hex:01,zz\r\n", 4, "bad hex byte \"zz\""},
        {head + "\"a\"=hex:01,,02\r\n", 4, "empty hex byte"},
        {head + "\"a\"=hex:01,\\\r\n  02,\\\r\n  123\r\n", 6, "bad hex byte \"123\""},
        {head + "\"a\"=hex:01,\\\r\n", 4, "past the end"},
        {head + "\"a\"=hex(x):01\r\n", 4, "bad hex type"},
        {head + "\"a\"=hex(2)01\r\n", 4, "expected :"},
        {head + "\"a\"=\"abc\r\n", 4, "unterminated string"},
        {head + "\"a\"=\"abc\\\"\r\n", 4, "unterminated string"},
        {head + "\"abc=\"x\"\r\n", 4, "expected ="},
        {head + "\"abc\r\n", 4, "unterminated string"},
        {head + "\"a\"=\"C:\\Windows\"\r\n", 4, "unknown escape \\W"},
        {head + "\"a\"=\"b\" junk\r\n", 4, "after the closing quote"},
        {head + "\"a\"=-\r\n", 4, "deleting a value"},
        {head + "\"a\"=42\r\n", 4, "bad value data"},
        {head + "\"a\"\r\n", 4, "expected ="},
        {head + "garbage\r\n", 4, "unrecognised line \"garbage\""},
        // LF line ends and comments count as lines too.
        {"REGEDIT4\n;c\n\n[HKEY_CURRENT_USER\\X]\n\"ok\"=\"1\"\nnope\n", 6, "unrecognised line"},
    };
    for (const Case& c : cases) {
        const std::string error = LoadError(c.content);
        const std::string where = file_ + ":" + std::to_string(c.line) + ": ";
        EXPECT_EQ(error.substr(0, where.size()), where) << error;
        EXPECT_NE(error.find(c.what), std::string::npos) << error;
    }

    // Damage found on reloading: reported once, the last good state is kept, and changes are
    // refused rather than written over the damaged file.
    WriteAll(file_, head + "\"a\"=\"good\"\r\n");
    auto reg = Open();
    const std::string damaged = head + "\"a\"=\"bad\r\n";
    WriteAll(file_, damaged);
    EXPECT_EQ(reg->QueryValue(kUser, "Software", "a"), clsRegValue::String("good"));
    EXPECT_EQ(reg->EnumValues(kUser, "Software"), std::vector<std::string>{"a"});
    ASSERT_EQ(reports_.size(), 1u);
    EXPECT_NE(reports_[0].find(file_ + ":4: unterminated string"), std::string::npos) << reports_[0];
    EXPECT_FALSE(reg->SetValue(kUser, "Software", "b", clsRegValue::Dword(1)));
    EXPECT_EQ(ReadAll(file_), damaged);
    EXPECT_FALSE(reg->QueryValue(kUser, "Software", "b").has_value());
    // Once repaired, the file is read again.
    WriteAll(file_, head + "\"a\"=\"repaired\"\r\n");
    EXPECT_EQ(reg->QueryValue(kUser, "Software", "a"), clsRegValue::String("repaired"));
    EXPECT_TRUE(reg->SetValue(kUser, "Software", "b", clsRegValue::Dword(1)));
}

TEST_F(RegistryFile, FailedWriteChangesNothing) {
    auto reg = Open();
    ASSERT_TRUE(reg->SetValue(kUser, "Software\\Tovel", "Kept", clsRegValue::String("before")));
    const std::string before = ReadAll(file_);

    // A write that fails half way, as on a full disk.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit saved = limit;
    limit.rlim_cur = before.size() + 16;
    signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const bool written = reg->SetValue(kUser, "Software\\Tovel", "Big", clsRegValue::Binary(std::string(4096, 'x')));
    setrlimit(RLIMIT_FSIZE, &saved);
    signal(SIGXFSZ, SIG_DFL);
    EXPECT_FALSE(written);
    ASSERT_EQ(reports_.size(), 1u);
    EXPECT_EQ(reports_[0].rfind("cannot write registry file " + file_ + ": ", 0), 0u) << reports_[0];
    EXPECT_FALSE(reg->QueryValue(kUser, "Software\\Tovel", "Big").has_value());
    EXPECT_EQ(ReadAll(file_), before);
    reports_.clear();

    ASSERT_EQ(chmod(folder_.c_str(), 0555), 0);
    test::clsWithoutPermissionOverride guard;
    const std::string probe = folder_ + "/probe";
    if (FILE* f = fopen(probe.c_str(), "w")) {
        fclose(f);
        unlink(probe.c_str());
        GTEST_SKIP() << "this user can write to a read-only folder";
    }

    EXPECT_FALSE(reg->SetValue(kUser, "Software\\Tovel", "Kept", clsRegValue::String("after")));
    EXPECT_FALSE(reg->SetValue(kUser, "Software\\Tovel\\New", "Added", clsRegValue::Dword(1)));
    EXPECT_FALSE(reg->DeleteValue(kUser, "Software\\Tovel", "Kept"));
    EXPECT_FALSE(reg->CreateKey(kUser, "Software\\Other"));
    ASSERT_EQ(reports_.size(), 4u);
    for (const std::string& report : reports_) {
        EXPECT_EQ(report.rfind("cannot write registry file " + file_ + ": ", 0), 0u) << report;
    }
    // What needs no write still works on a read-only machine.
    EXPECT_TRUE(reg->CreateKey(kUser, "Software\\Tovel"));
    EXPECT_TRUE(reg->SetValue(kUser, "Software\\Tovel", "Kept", clsRegValue::String("before")));

    EXPECT_EQ(reg->QueryValue(kUser, "Software\\Tovel", "Kept"), clsRegValue::String("before"));
    EXPECT_FALSE(reg->KeyExists(kUser, "Software\\Tovel\\New"));
    EXPECT_FALSE(reg->KeyExists(kUser, "Software\\Other"));
    EXPECT_EQ(ReadAll(file_), before);
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) left.push_back(entry.path().filename());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"registry.reg", "registry.reg.lock"})) << "no temporary file left";
}

TEST_F(RegistryFile, ObjectsOnOneFileSeeEachOther) {
    auto a = Open();
    auto b = Open();
    ASSERT_TRUE(a->SetValue(kUser, "Software\\Shared", "x", clsRegValue::Dword(1)));
    EXPECT_EQ(b->QueryValue(kUser, "Software\\Shared", "x"), clsRegValue::Dword(1));
    ASSERT_TRUE(b->SetValue(kUser, "Software\\Shared", "y", clsRegValue::Dword(2)));
    EXPECT_EQ(a->QueryValue(kUser, "Software\\Shared", "y"), clsRegValue::Dword(2));
    EXPECT_EQ(b->QueryValue(kUser, "Software\\Shared", "x"), clsRegValue::Dword(1)) << "b's write kept a's value";
    ASSERT_TRUE(a->DeleteValue(kUser, "Software\\Shared", "x"));
    EXPECT_EQ(b->EnumValues(kUser, "Software\\Shared"), std::vector<std::string>{"y"});
    ASSERT_TRUE(b->CreateKey(kUser, "Software\\Shared\\Sub"));
    EXPECT_EQ(a->EnumKeys(kUser, "Software\\Shared"), std::vector<std::string>{"Sub"});
    EXPECT_FALSE(a->DeleteKey(kUser, "Software\\Shared")) << "a sees b's subkey";

    // Quick writes of the same size, each of which the other must notice.
    for (uint32_t i = 0; i < 30; ++i) {
        clsMachineRegistry& writer = i % 3 == 2 ? *b : *a;
        ASSERT_TRUE(writer.SetValue(kUser, "Software\\Shared", "n", clsRegValue::Dword(i)));
        EXPECT_EQ(b->QueryValue(kUser, "Software\\Shared", "n"), clsRegValue::Dword(i));
        EXPECT_EQ(a->QueryValue(kUser, "Software\\Shared", "n"), clsRegValue::Dword(i));
    }

    // Processes writing at once lose none of each other's values.
    constexpr int kChildren = 3;
    constexpr int kWrites = 15;
    std::vector<pid_t> children;
    for (int c = 0; c < kChildren; ++c) {
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            clsMachineRegistry child(file_, 1252);
            child.SetReporter([](const std::string&) {});
            bool ok = true;
            for (int i = 0; i < kWrites; ++i) {
                const std::string name = "c" + std::to_string(c) + "-" + std::to_string(i);
                ok = child.SetValue(kUser, "Software\\Busy", name, clsRegValue::Dword(static_cast<uint32_t>(i))) && ok;
            }
            _exit(ok ? 0 : 1);
        }
        children.push_back(pid);
    }
    for (const pid_t pid : children) {
        int status = 0;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    const auto names = a->EnumValues(kUser, "Software\\Busy");
    ASSERT_TRUE(names.has_value());
    EXPECT_EQ(names->size(), static_cast<size_t>(kChildren * kWrites));
    EXPECT_TRUE(reports_.empty());
}

TEST_F(RegistryFile, LargeValuesRoundTrip) {
    auto reg = Open();
    std::string bytes(20 * 1024, '\0');
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31 + i / 256);
    std::string text;
    while (text.size() < 20 * 1024) text += "Gr\xC3\xBC\xC3\x9F" "e \\ \"x\" ";
    ASSERT_TRUE(reg->SetValue(kUser, "Software\\Big", "bin", clsRegValue::Binary(bytes)));
    ASSERT_TRUE(reg->SetValue(kUser, "Software\\Big", "text", clsRegValue::String(text)));
    ASSERT_TRUE(reg->SetValue(kUser, "Software\\Big", "expand", clsRegValue::ExpandString(text)));

    auto again = Open();
    EXPECT_EQ(again->QueryValue(kUser, "Software\\Big", "bin"), clsRegValue::Binary(bytes));
    EXPECT_EQ(again->QueryValue(kUser, "Software\\Big", "text"), clsRegValue::String(text));
    EXPECT_EQ(again->QueryValue(kUser, "Software\\Big", "expand"), clsRegValue::ExpandString(text));

    // Hex lines are wrapped as regedit wraps them.
    std::istringstream lines(ReadAll(file_));
    std::string line;
    size_t hexLines = 0;
    while (std::getline(lines, line)) {
        if (line.rfind("  ", 0) != 0) continue;
        ++hexLines;
        EXPECT_LE(line.size(), 80u) << line;
    }
    EXPECT_GT(hexLines, 2 * 20 * 1024 / 26u);
}

TEST_F(RegistryFile, KeyPathsAndNamesAreChecked) {
    auto reg = Open();
    EXPECT_TRUE(reg->CreateKey(kUser, "")) << "a root always exists";
    EXPECT_TRUE(reg->KeyExists(kUser, ""));
    EXPECT_FALSE(reg->DeleteKey(kUser, ""));
    for (const char* bad : {"\\A", "A\\", "A\\\\B", "\\", "A\nB"}) {
        EXPECT_FALSE(reg->CreateKey(kUser, bad)) << bad;
        EXPECT_FALSE(reg->SetValue(kUser, bad, "v", clsRegValue::Dword(1))) << bad;
        EXPECT_FALSE(reg->KeyExists(kUser, bad)) << bad;
    }
    ASSERT_TRUE(reg->CreateKey(kUser, "A\\B"));
    EXPECT_FALSE(reg->KeyExists(kUser, "A\\B\\")) << "no trailing backslash";
    EXPECT_TRUE(reg->CreateKey(kUser, std::string(255, 'k')));
    EXPECT_FALSE(reg->CreateKey(kUser, std::string(256, 'k'))) << "Windows limits key names to 255 characters";
    EXPECT_FALSE(reg->SetValue(kUser, "A", "line\nbreak", clsRegValue::Dword(1)));
    EXPECT_FALSE(reg->SetValue(kUser, "A", "bad \xFF utf8", clsRegValue::Dword(1)));
    EXPECT_TRUE(reg->SetValue(kUser, "A", "back\\slash", clsRegValue::Dword(1))) << "value names may hold backslashes";
    EXPECT_EQ(reg->EnumKeys(kUser, ""), (std::vector<std::string>{"A", std::string(255, 'k')}));
    EXPECT_TRUE(reports_.empty());
}

} // namespace
} // namespace tovel
