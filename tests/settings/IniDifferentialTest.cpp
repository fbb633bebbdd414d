// clsIniFile against the Windows profile functions themselves (GetPrivateProfileStringA and
// its kin), on the same bytes: strings, numbers, lists and the files writes leave behind.
// Windows build only; CI runs it under Wine.
//
// Where they part, the case says why and checks clsIniFile's own answer:
//   - Documentation over Wine: names compare without regard to case beyond ASCII too.
//   - Wine's writer rewrites the whole file (blank lines go, "k = v" becomes "k=v", CR LF
//     everywhere), where Windows leaves other lines alone; such cases compare the files after
//     normalising both, and always what reads back.
//   - Choices of clsIniFile: lines before the first section belong to no section, ";" lines
//     are never keys, deleting removes every block or line of the name, and a new key goes
//     after the last key of its section rather than after a trailing comment.
#include "platform/win32/Win32Headers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/clsCodePage.h"
#include "settings/clsIniFile.h"
#include "tests/support/TestBed.h"

namespace tovel {
namespace {

enum class Op { String, Int, Names, Entries, Put, DeleteKey, DeleteSection };
// How the files after a write compare; what reads back is compared for every write.
enum class Check { Same, Bytes, Normalised, Ours };

struct Case {
    const char* name;
    const char* file;       ///< the file's bytes in the ANSI code page; nullptr: no file
    Op op;
    const char* section;    ///< UTF-8, as for clsIniFile
    const char* key = "";
    const char* value = "";
    Check check = Check::Same;
    const char* ours = nullptr;   ///< Check::Ours: clsIniFile's answer (number as text, or file bytes)
};

constexpr const char* kMain =
    "top=before\r\n[ Main ]\r\n Name = Value with  inner  blanks \r\n\tTabbed\t=\tx\t\r\n"
    "Double=\"quoted\"\r\nSingle='quoted'\r\nPadded=\"  padded  \"\r\nMixed=\"open'\r\nLone=\"\r\n"
    "OneQuote=\"a\r\nInner=a \"b\" c\r\nEquation=a=b=c\r\nJustText\r\n;Comment=1\r\nName=second\r\n"
    "Empty=\r\nSpaces=   \r\n[x]y]\r\nk=bracket\r\n[open\r\n[main]\r\nHidden=dup\r\n"
    "[Other]\r\nHigh=\xE4\xF6\xFC\xDF\x80\xFF\r\n[\xC4rger]\r\nk=umlaut section\r\n";
constexpr const char* kEnds = "[S]\ra=1\rb=2\n[T]\nc=3\r\n\r\n\n\rd=4";
constexpr const char* kInts =
    "[I]\r\na=12\r\nb=-5\r\nc=+7\r\nd=0x1A\r\ne=0X1A\r\nf= 12abc\r\ng=abc\r\nh=\r\ni=4294967297\r\n"
    "j=2147483648\r\nk=-2147483649\r\nl=0b101\r\nm=0o17\r\nn=012\r\no=\"42\"\r\np=- 5\r\nq=1 2\r\nr=0x\r\n"
    "s=-0x10\r\nt=99999999999999999999\r\nu=\"  \"\r\nv=ff\r\nw=0xfF\r\nx=-1073741819\r\n";
const std::string kLong = "[L]\r\nexact=" + std::string(2047, 'a') + "\r\nover=" + std::string(2048, 'b') +
                          "\r\nhuge=" + std::string(5000, 'c') + "\r\n";

const Case kCases[] = {
    // Names and values.
    {"NameTrimmedNoCase", kMain, Op::String, "main", "name"},
    {"QueryTrimmed", kMain, Op::String, " MAIN ", "NAME "},
    {"Tabs", kMain, Op::String, "Main", "TABBED"},
    {"DoubleQuotes", kMain, Op::String, "Main", "Double"},
    {"SingleQuotes", kMain, Op::String, "Main", "Single"},
    {"BlanksInsideQuotes", kMain, Op::String, "Main", "Padded"},
    {"MismatchedQuotes", kMain, Op::String, "Main", "Mixed"},
    {"LoneQuote", kMain, Op::String, "Main", "Lone"},
    {"OpeningQuoteOnly", kMain, Op::String, "Main", "OneQuote"},
    {"InnerQuotes", kMain, Op::String, "Main", "Inner"},
    {"EqualsInValue", kMain, Op::String, "Main", "Equation"},
    {"LineWithoutEquals", kMain, Op::String, "Main", "JustText"},
    {"EmptyValue", kMain, Op::String, "Main", "Empty"},
    {"BlankValue", kMain, Op::String, "Main", "Spaces"},
    {"FirstKeyWins", kMain, Op::String, "Main", "Name"},
    {"FirstSectionOnly", kMain, Op::String, "Main", "Hidden"},
    {"LastBracketEndsName", kMain, Op::String, "x]y", "k"},
    {"NotTheFirstBracket", kMain, Op::String, "x", "k"},
    {"OpenBracketLine", kMain, Op::String, "x]y", "[open"},
    {"HighBytes", kMain, Op::String, "Other", "High"},
    {"SectionWithUmlaut", kMain, Op::String, "\xC3\x84rger", "k"},
    // "Not case-sensitive" (the documentation) covers letters beyond ASCII, as Windows
    // compares them; Wine folds ASCII letters only and gives the default.
    {"UmlautNoCase", kMain, Op::String, "\xC3\xA4RGER", "K", "", Check::Ours, "umlaut section"},
    {"MissingSection", kMain, Op::String, "Missing", "k"},
    {"MissingKey", kMain, Op::String, "Main", "Missing"},
    {"MissingFile", nullptr, Op::String, "Main", "Name"},
    // Wine reads a ";" line as a key; clsIniFile keeps to comments (Wine gives "1").
    {"CommentIsNoKey", kMain, Op::String, "Main", ";Comment", "", Check::Ours, "\x01"},
    // Wine gives lines before the first section to the section ""; clsIniFile to none.
    {"BeforeFirstSection", kMain, Op::String, "", "top", "", Check::Ours, "\x01"},
    // Line ends.
    {"LoneCr", kEnds, Op::String, "S", "a"},
    {"LoneCrAgain", kEnds, Op::String, "S", "b"},
    {"LfAfterCr", kEnds, Op::String, "T", "c"},
    {"BlankLinesOfEachEnd", kEnds, Op::String, "T", "d"},
    {"NoLastLineEnd", "[S]\r\nlast=end", Op::String, "S", "last"},
    // The buffer of 2,048 characters.
    {"ValueFillsBuffer", kLong.c_str(), Op::String, "L", "exact"},
    {"ValueOneOver", kLong.c_str(), Op::String, "L", "over"},
    {"ValueFarOver", kLong.c_str(), Op::String, "L", "huge"},
    // Numbers.
    {"IntPlain", kInts, Op::Int, "I", "a"},
    {"IntPlus", kInts, Op::Int, "I", "c"},
    {"IntHex", kInts, Op::Int, "I", "d"},
    {"IntUpperX", kInts, Op::Int, "I", "e"},
    {"IntLeadingDigits", kInts, Op::Int, "I", "f"},
    {"IntNoDigits", kInts, Op::Int, "I", "g"},
    {"IntEmpty", kInts, Op::Int, "I", "h"},
    {"IntWraps", kInts, Op::Int, "I", "i"},
    {"IntPastInt32", kInts, Op::Int, "I", "j"},
    {"IntBinary", kInts, Op::Int, "I", "l"},
    {"IntOctal", kInts, Op::Int, "I", "m"},
    {"IntLeadingZero", kInts, Op::Int, "I", "n"},
    {"IntQuoted", kInts, Op::Int, "I", "o"},
    {"IntBlankAfterSign", kInts, Op::Int, "I", "p"},
    {"IntBlankInside", kInts, Op::Int, "I", "q"},
    {"IntBarePrefix", kInts, Op::Int, "I", "r"},
    {"IntHuge", kInts, Op::Int, "I", "t"},
    {"IntQuotedBlanks", kInts, Op::Int, "I", "u"},
    {"IntHexWithoutPrefix", kInts, Op::Int, "I", "v"},
    {"IntHexMixedCase", kInts, Op::Int, "I", "w"},
    {"IntMissing", kInts, Op::Int, "I", "zz"},
    // The documentation says a negative number gives zero; Windows and Wine return it as it
    // is, and a setup's crash code (-1073741819) must read back.
    {"IntNegative", kInts, Op::Int, "I", "b"},
    {"IntNegativeWraps", kInts, Op::Int, "I", "k"},
    {"IntNegativeHex", kInts, Op::Int, "I", "s"},
    {"IntCrashCode", kInts, Op::Int, "I", "x"},
    // Lists.
    {"SectionNames", kMain, Op::Names, ""},
    {"SectionNamesLineEnds", kEnds, Op::Names, ""},
    {"SectionNamesEmptyFile", "", Op::Names, ""},
    {"SectionNamesNoFile", nullptr, Op::Names, ""},
    {"EntriesOfFirstBlock", kMain, Op::Entries, "main"},
    {"EntriesWithBracketLine", kMain, Op::Entries, "x]y"},
    {"EntriesAfterLoneCr", kEnds, Op::Entries, "T"},
    {"EntriesMissingSection", kMain, Op::Entries, "Missing"},
    // Writes.
    {"ReplaceKeyOtherCase", "[S]\r\nKey=old\r\nOther=1\r\n", Op::Put, "S", "KEY", "new", Check::Bytes},
    {"ReplaceSpacedKey", "[S]\r\nKey = old\r\n", Op::Put, "S", "Key", "new", Check::Normalised},
    {"AddKey", "[S]\r\na=1\r\n[T]\r\nb=2\r\n", Op::Put, "s", "c", "3", Check::Bytes},
    {"AddKeyBeforeTrailingComment", "[S]\r\na=1\r\n\r\n; note\r\n[T]\r\n", Op::Put, "S", "c", "3", Check::Ours,
     "[S]\r\na=1\r\nc=3\r\n\r\n; note\r\n[T]\r\n"},
    {"AddSection", "[S]\r\na=1\r\n", Op::Put, "N", "k", "v", Check::Bytes},
    {"AddSectionNoLastLineEnd", "[S]\r\na=1", Op::Put, "N", "k", "v", Check::Bytes},
    {"CreateFile", nullptr, Op::Put, "N", "k", "v", Check::Bytes},
    {"DeleteKey", "[S]\r\na=1\r\nb=2\r\n", Op::DeleteKey, "S", "A", "", Check::Bytes},
    {"DeleteMissingKey", "[S]\r\na=1\r\n", Op::DeleteKey, "S", "zz", "", Check::Bytes},
    {"DeleteSection", "[S]\r\na=1\r\n[T]\r\nb=2\r\n[U]\r\nc=3\r\n", Op::DeleteSection, "t", "", "", Check::Bytes},
    {"DeleteLastSection", "[S]\r\na=1\r\n[T]\r\nb=2", Op::DeleteSection, "T", "", "", Check::Bytes},
    {"WriteToFirstOfTwoBlocks", "[D]\r\na=1\r\n[d]\r\nb=2\r\n", Op::Put, "D", "b", "3", Check::Bytes},
    // Wine deletes the first block only, so the second one comes to light.
    {"DeleteBothBlocks", "[D]\r\na=1\r\n[d]\r\nb=2\r\n[E]\r\n", Op::DeleteSection, "D", "", "", Check::Ours, "[E]\r\n"},
    // Wine deletes the first line only, so the second one comes to light.
    {"DeleteBothKeyLines", "[S]\r\na=1\r\nA=2\r\nb=3\r\n", Op::DeleteKey, "S", "a", "", Check::Ours, "[S]\r\nb=3\r\n"},
    {"LfFile", "[S]\na=1\n", Op::Put, "S", "b", "2", Check::Normalised},
    {"KeepBlankLinesAndComments", "; c\r\n\r\n[S]\r\na=1\r\n", Op::Put, "S", "a", "2", Check::Normalised},
    {"HighBytesValue", "[S]\r\n", Op::Put, "S", "k", "\xC3\xA4\xE2\x82\xAC", Check::Bytes},
    {"EqualsInWrittenValue", "[S]\r\n", Op::Put, "S", "k", "a=b", Check::Bytes},
    {"QuotedValue", "[S]\r\n", Op::Put, "S", "k", "\"q\"", Check::Bytes},
    {"LeadingBlanksInValue", "[S]\r\n", Op::Put, "S", "k", " v", Check::Normalised},
    {"EmptyWrittenValue", "[S]\r\nk=1\r\n", Op::Put, "S", "k", "", Check::Bytes},
};

std::string Ansi(const std::string& text) { return clsCodePage::FromUtf8(text, GetACP()).value_or(text); }
std::string FromAnsi(const std::string& bytes) { return clsCodePage::ToUtf8(bytes, GetACP()).value_or(bytes); }

std::string TrimSpaces(const std::string& text) {
    const size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// NUL-separated strings of the profile functions, each split at its first "=" if asked.
std::vector<std::string> SplitNul(const char* buffer, DWORD length) {
    std::vector<std::string> parts;
    for (DWORD i = 0; i < length;) {
        const std::string part(buffer + i);
        if (part.empty()) break;
        parts.push_back(FromAnsi(part));
        i += static_cast<DWORD>(part.size()) + 1;
    }
    return parts;
}

// The file as Wine's writer would put it: trimmed lines, no blank lines, "k=v".
std::string Normalised(const std::string& bytes) {
    std::string out, line;
    auto flush = [&] {
        const size_t begin = line.find_first_not_of(" \t");
        if (begin != std::string::npos) {
            std::string t = line.substr(begin, line.find_last_not_of(" \t") - begin + 1);
            const size_t eq = t.find('=');
            if (t[0] != '[' && t[0] != ';' && eq != std::string::npos) {
                std::string name = t.substr(0, eq), value = t.substr(eq + 1);
                name.erase(name.find_last_not_of(" \t") + 1);
                value.erase(0, value.find_first_not_of(" \t") == std::string::npos ? value.size() : value.find_first_not_of(" \t"));
                t = name + "=" + value;
            }
            out += t + "\n";
        }
        line.clear();
    };
    for (const char c : bytes) {
        if (c == '\r' || c == '\n') flush();
        else line += c;
    }
    flush();
    return out;
}

class IniDifferential : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        bed_ = test::MakeTestBed();
        previous_ = InstallPlatform(std::move(bed_->platform));
        clsIniFile::SetReporter([](const std::string&) {});
        api_ = bed_->folder + "api.ini";
        obj_ = bed_->folder + "obj.ini";
        const Case& c = GetParam();
        if (c.file != nullptr) {
            ASSERT_TRUE(Platform().Files().WriteFileAtomic(api_, c.file));
            ASSERT_TRUE(Platform().Files().WriteFileAtomic(obj_, c.file));
        }
        ini_.SetFullPath(obj_);
        ini_.SetSectionName(c.section);
    }
    void TearDown() override {
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, Ansi(api_).c_str());   // drops Wine's cache
        clsIniFile::SetReporter(nullptr);
        bed_->platform = InstallPlatform(std::move(previous_));
        bed_.reset();
    }

    std::optional<std::string> ApiString(const std::string& section, const std::string& key) {
        std::vector<char> buffer(clsIniText::kBufferChars);
        GetPrivateProfileStringA(Ansi(section).c_str(), Ansi(key).c_str(), "\x01", buffer.data(),
                                 static_cast<DWORD>(buffer.size()), Ansi(api_).c_str());
        const std::string value = buffer.data();
        if (value == "\x01") return std::nullopt;
        return TrimSpaces(FromAnsi(value));
    }
    std::vector<std::string> ApiNames() {
        std::vector<char> buffer(1 << 16);
        const DWORD n = GetPrivateProfileSectionNamesA(buffer.data(), static_cast<DWORD>(buffer.size()), Ansi(api_).c_str());
        return SplitNul(buffer.data(), n);
    }
    std::vector<IniEntry> ApiEntries(const std::string& section) {
        std::vector<char> buffer(1 << 16);
        const DWORD n = GetPrivateProfileSectionA(Ansi(section).c_str(), buffer.data(), static_cast<DWORD>(buffer.size()),
                                                  Ansi(api_).c_str());
        std::vector<IniEntry> entries;
        for (const auto& line : SplitNul(buffer.data(), n)) {
            const size_t eq = line.find('=');
            entries.push_back(eq == std::string::npos ? IniEntry{line, ""} : IniEntry{line.substr(0, eq), line.substr(eq + 1)});
        }
        return entries;
    }
    std::string FileBytes(const std::string& path) { return Platform().Files().ReadFile(path).value_or("<missing>"); }

    std::unique_ptr<test::TestBed> bed_;
    std::unique_ptr<clsPlatform> previous_;
    std::string api_, obj_;
    clsIniFile ini_;
};

TEST_P(IniDifferential, SameAnswer) {
    const Case& c = GetParam();
    const std::string section = c.section, key = c.key, value = c.value;
    switch (c.op) {
    case Op::String: {
        const std::string ours = ini_.GetString(key, "\x01");
        const auto api = ApiString(section, key);
        if (c.check == Check::Ours) {
            EXPECT_EQ(ours, c.ours) << "Wine: " << api.value_or("(default)");
        } else {
            EXPECT_EQ(ours, api.value_or("\x01"));
        }
        return;
    }
    case Op::Int: {
        const int32_t ours = ini_.GetInt(key, 77);
        const auto api = static_cast<int32_t>(GetPrivateProfileIntA(Ansi(section).c_str(), Ansi(key).c_str(), 77, Ansi(api_).c_str()));
        if (c.check == Check::Ours) {
            EXPECT_EQ(std::to_string(ours), c.ours) << "Wine: " << api;
        } else {
            EXPECT_EQ(ours, api);
        }
        return;
    }
    case Op::Names: EXPECT_EQ(ini_.GetSectionsEx(), ApiNames()); return;
    case Op::Entries: EXPECT_EQ(ini_.GetSectEntriesEx(), ApiEntries(section)); return;
    case Op::Put:
        ini_.PutString(key, value);
        WritePrivateProfileStringA(Ansi(section).c_str(), Ansi(key).c_str(), Ansi(value).c_str(), Ansi(api_).c_str());
        break;
    case Op::DeleteKey:
        ini_.DeleteKey(key);
        WritePrivateProfileStringA(Ansi(section).c_str(), Ansi(key).c_str(), nullptr, Ansi(api_).c_str());
        break;
    case Op::DeleteSection:
        ini_.DeleteSection();
        WritePrivateProfileStringA(Ansi(section).c_str(), nullptr, nullptr, Ansi(api_).c_str());
        break;
    }
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, Ansi(api_).c_str());
    const std::string ours = FileBytes(obj_), api = FileBytes(api_);
    switch (c.check) {
    case Check::Bytes: EXPECT_EQ(ours, api); break;
    case Check::Normalised: EXPECT_EQ(Normalised(ours), Normalised(api)); break;
    case Check::Ours: EXPECT_EQ(ours, c.ours) << "Wine's file: " << api; return;
    case Check::Same: break;
    }
    // What reads back: every section and its entries.
    clsIniFile fresh;
    fresh.SetFullPath(obj_);
    const auto names = fresh.GetSectionsEx();
    EXPECT_EQ(names, ApiNames());
    for (const auto& name : names) {
        fresh.SetSectionName(name);
        EXPECT_EQ(fresh.GetSectEntriesEx(), ApiEntries(name)) << name;
    }
    if (c.op == Op::Put) {
        fresh.SetSectionName(section);
        EXPECT_EQ(fresh.GetString(key, "\x01"), ApiString(section, key).value_or("\x01"));
    }
}

INSTANTIATE_TEST_SUITE_P(Profile, IniDifferential, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<Case>& param) { return std::string(param.param.name); });

} // namespace
} // namespace tovel
