// Language text files: look-ups by section and key, and the code page they are read in.
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "language/clsLanguageTextFile.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {
namespace {

// "セットアップを中止しますか？" and "インストール" in code page 932.
constexpr const char* kCancelQuestion932 =
    "\x83\x5A\x83\x62\x83\x67\x83\x41\x83\x62\x83\x76\x82\xF0\x92\x86\x8E\x7E\x82\xB5\x82\xDC\x82\xB7\x82\xA9\x81\x48";
constexpr const char* kInstall932 = "\x83\x43\x83\x93\x83\x58\x83\x67\x81\x5B\x83\x8B";
constexpr const char* kCancelQuestion = "セットアップを中止しますか？";

// A German text file in code page 1252: "Zurück", "Schließen", "für", "Bestätigen".
const std::string kGerman1252 = "[Common]\r\nBackBtn=< Zur\xFC" "ck\r\ncmdClose=Schlie\xDF" "en\r\n"
                                "[Texts]\r\n104=M\xF6" "chten Sie das Setup wirklich abbrechen?\r\n"
                                "1=Best\xE4" "tigen f\xFC" "r alle\r\n";

// A text as UTF-16 with its byte-order mark.
std::string Utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : text) {
        const auto high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

class LanguageTextFileTest : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        clsLanguageTextFile::SetReporter([this](const std::string& line, bool problem) {
            (problem ? problems_ : notes_).push_back(line);
        });
    }
    void TearDown() override {
        clsLanguageTextFile::SetReporter(nullptr);
        BedFixture::TearDown();
    }
    std::string Write(const std::string& name, const std::string& bytes) {
        const std::string path = bed_->folder + name;
        EXPECT_TRUE(Platform().Files().WriteFileAtomic(path, bytes));
        return path;
    }
    // Opens a file with a stated code page ("" for its own declaration).
    clsLanguageTextFile Open(const std::string& name, const std::string& bytes, const std::string& codePage = "") {
        clsLanguageTextFile file;
        file.SetCodePage(codePage);
        EXPECT_TRUE(file.SetFileName(Write(name, bytes)));
        return file;
    }

    std::vector<std::string> problems_;
    std::vector<std::string> notes_;
};

TEST_F(LanguageTextFileTest, KeysAreFoundOnlyInTheSectionAskedFor) {
    const auto file = Open("lang.txt",
                           "Key=before any section\r\n"
                           "[First]\r\n"
                           "Key = one \r\n"
                           "Formula=a=b=c\r\n"
                           ";Other=commented out\r\n"
                           "Empty=\r\n"
                           "Key=second line of the key\r\n"
                           "no equals sign here\r\n"
                           "  [ Second ]  \r\n"
                           "key=two\r\n"
                           "Other=only in the second\r\n"
                           "[First]\r\n"
                           "Later=in the second block of First\r\n",
                           "1252");
    EXPECT_EQ(file.LoadIniProperty2("First", "Key"), "one");
    EXPECT_EQ(file.LoadIniProperty2("Second", "Key"), "two");
    EXPECT_EQ(file.LoadIniProperty2("second", "KEY"), "two");
    EXPECT_EQ(file.LoadIniProperty2("[Second]", "Other"), "only in the second");
    EXPECT_EQ(file.LoadIniProperty2("First", "Other"), "");         // neither the comment nor Second's key
    EXPECT_EQ(file.LoadIniProperty2("First", "Formula"), "a=b=c");  // split at the first "=" only
    EXPECT_EQ(file.LoadIniProperty2("First", "Later"), "in the second block of First");
    EXPECT_EQ(file.LoadIniProperty2("Missing", "Key"), "");
    EXPECT_EQ(file.LoadIniProperty2("First", "Missing"), "");
    EXPECT_EQ(file.LoadIniProperty2("", "Key"), "");
    // A missing key takes the default; an empty one stays empty.
    EXPECT_EQ(file.LoadIniProperty3("First", "Missing", "default"), "default");
    EXPECT_EQ(file.LoadIniProperty3("First", "Empty", "default"), "");
    EXPECT_FALSE(file.FindIniProperty("First", "no equals sign here"));

    clsLanguageTextFile byProperties = file;
    byProperties.SetIniSection("Second");
    byProperties.SetIniProperty("Other");
    EXPECT_EQ(byProperties.LoadIniProperty(), "only in the second");
    byProperties.TerminateConnectionToText();
    EXPECT_FALSE(byProperties.IsOpen());
    EXPECT_EQ(byProperties.LoadIniProperty(), "");
    EXPECT_TRUE(problems_.empty());
}

TEST_F(LanguageTextFileTest, FileThatCannotBeReadAnswersEveryLookUpEmpty) {
    clsLanguageTextFile file;
    EXPECT_FALSE(file.SetFileName(bed_->folder + "Lang\\Missing.txt"));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.LoadIniProperty2("Texts", "104"), "");
    EXPECT_EQ(file.LoadIniProperty3("Texts", "104", "kept"), "kept");
    EXPECT_EQ(file.CodePageNumber(), 0u);
    EXPECT_EQ(file.CodePageDescription(), "");
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_NE(problems_[0].find("Missing.txt"), std::string::npos) << problems_[0];

    // A file read before is let go when the next one cannot be read.
    clsLanguageTextFile reused = Open("good.txt", "[A]\r\nK=v\r\n", "1252");
    EXPECT_FALSE(reused.SetFileName(bed_->folder + "gone.txt"));
    EXPECT_EQ(reused.LoadIniProperty2("A", "K"), "");
}

TEST_F(LanguageTextFileTest, ByteOrderMarksDecideTheCodePage) {
    const struct {
        const char* name;
        std::string bytes;
        uint32_t codePage;
        const char* description;
    } cases[] = {
        {"utf8.txt", "\xEF\xBB\xBF[A]\r\nK=Zur\xC3\xBC" "ck\r\n", 65001, "Unicode (UTF-8)"},
        {"utf16le.txt", Utf16(u"[A]\r\nK=Zurück", false), 1200, "Unicode"},
        {"utf16be.txt", Utf16(u"[A]\r\nK=Zurück", true), 1201, "Unicode (Big-Endian)"},
    };
    for (const auto& c : cases) {
        // The mark counts even against a stated code page.
        const auto file = Open(c.name, c.bytes, "932");
        EXPECT_EQ(file.CodePageNumber(), c.codePage) << c.name;
        EXPECT_EQ(file.CodePage(), std::to_string(c.codePage)) << c.name;
        EXPECT_EQ(file.CodePageDescription(), c.description) << c.name;
        EXPECT_EQ(file.LoadIniProperty2("A", "K"), "Zurück") << c.name;
        EXPECT_EQ(clsLanguageTextFile::DetectCodePage(c.bytes, 1252).codePage, c.codePage) << c.name;
    }
    EXPECT_TRUE(problems_.empty());
}

TEST_F(LanguageTextFileTest, DamagedUtf16StaysUtf16) {
    // A lone surrogate in one text and half a character at the end: the other texts still read.
    const std::string bytes = Utf16(u"[A]\r\nK=Zurück\r\nL=a\xD800" u"b\r\n", false) + "x";
    const auto file = Open("damaged.txt", bytes);
    EXPECT_EQ(file.CodePageNumber(), 1200u);
    EXPECT_EQ(file.LoadIniProperty2("A", "K"), "Zurück");
    EXPECT_EQ(file.LoadIniProperty2("A", "L"), "a\xEF\xBF\xBD" "b");
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_NE(problems_[0].find("damaged UTF-16"), std::string::npos);
}

TEST_F(LanguageTextFileTest, DetectionTellsJapaneseFromWesternText) {
    const std::string japanese = std::string("[Texts]\r\n104=") + kCancelQuestion932 + "\r\nBtn=" + kInstall932 + "\r\n";
    const auto jp = Open("jp.txt", japanese, "Detect");
    EXPECT_EQ(jp.CodePageNumber(), 932u);
    EXPECT_EQ(jp.CodePageDescription(), "Japanese (Shift-JIS)");
    EXPECT_EQ(jp.LoadIniProperty2("Texts", "104"), kCancelQuestion);
    EXPECT_EQ(jp.LoadIniProperty2("Texts", "Btn"), "インストール");

    const auto de = Open("de.txt", kGerman1252, "Detect");
    EXPECT_EQ(de.CodePageNumber(), 1252u);
    EXPECT_EQ(de.LoadIniProperty2("Common", "BackBtn"), "< Zurück");
    EXPECT_EQ(de.LoadIniProperty2("Texts", "1"), "Bestätigen für alle");

    const auto utf8 = Open("u8.txt", "[A]\r\nK=\xE6\x97\xA5\xE6\x9C\xAC\r\n", "Detect");
    EXPECT_EQ(utf8.CodePageNumber(), 65001u);
    EXPECT_EQ(utf8.LoadIniProperty2("A", "K"), "日本");

    // The rule itself, on the two kinds of machine.
    const struct {
        std::string bytes;
        uint32_t onWestern, onJapanese;
    } cases[] = {
        {"[A]\r\nK=plain ASCII\r\n", 1252, 932},
        {kInstall932, 932, 932},                                          // katakana only
        {std::string("K=") + kCancelQuestion932, 932, 932},
        {kGerman1252, 1252, 1252},
        {"Param\xE8tres \xE0 d\xE9" "finir\r\n", 1252, 1252},             // "è" before a letter, "à" before a blank
        {"Best\xE4" "tigen\r\n", 1252, 1252},                             // a lone pair with a low trail byte
        {"Gr\xF6\xDF" "e\r\n", 1252, 1252},                               // "ö" is no lead byte of ordinary text
        {"Espa\xF1" "ol\r\n", 1252, 1252},
        {"\xB1\xB2\xB3 \x82\xA0", 1252, 1252},                            // more half-width katakana than pairs
        {"\x83\x43", 1252, 1252},                                         // one katakana is no evidence
        {"\x83", 1252, 1252},                                             // a lead byte at the end
    };
    for (const auto& c : cases) {
        EXPECT_EQ(clsLanguageTextFile::DetectCodePage(c.bytes, 1252).codePage, c.onWestern) << c.bytes;
        EXPECT_EQ(clsLanguageTextFile::DetectCodePage(c.bytes, 932).codePage, c.onJapanese) << c.bytes;
    }
    EXPECT_EQ(clsLanguageTextFile::DetectCodePage(kGerman1252, 1250).codePage, 1250u);
    EXPECT_TRUE(problems_.empty());
}

TEST_F(LanguageTextFileTest, WrongStatedCodePageStillGivesTheTexts) {
    const std::string japanese = std::string("[Texts]\r\n104=") + kCancelQuestion932 + "\r\n";

    // Japanese bytes stated as Western: 0x81 is no character of 1252.
    const auto jp = Open("jp.txt", japanese, "1252");
    EXPECT_EQ(jp.CodePageNumber(), 932u);
    EXPECT_EQ(jp.LoadIniProperty2("Texts", "104"), kCancelQuestion);
    // German bytes stated as Japanese: "ü" followed by "c" is no Shift-JIS character.
    const auto de = Open("de.txt", kGerman1252, "932");
    EXPECT_EQ(de.CodePageNumber(), 1252u);
    EXPECT_EQ(de.LoadIniProperty2("Common", "BackBtn"), "< Zurück");
    // Western bytes stated as UTF-8, and a code page that does not exist.
    const auto notUtf8 = Open("u.txt", kGerman1252, "65001");
    EXPECT_EQ(notUtf8.CodePageNumber(), 1252u);
    const auto unknown = Open("x.txt", kGerman1252, "4242");
    EXPECT_EQ(unknown.CodePageNumber(), 1252u);
    EXPECT_EQ(unknown.LoadIniProperty2("Common", "cmdClose"), "Schließen");
    ASSERT_EQ(problems_.size(), 4u);
    EXPECT_NE(problems_[0].find("not written in code page 1252"), std::string::npos) << problems_[0];
    EXPECT_NE(problems_[0].find("932 (Japanese (Shift-JIS))"), std::string::npos) << problems_[0];

    // A stated word that is neither a number nor Detect is told and taken as Detect.
    clsLanguageTextFile file;
    file.SetCodePage("Shift-JIS");
    EXPECT_EQ(file.CodePage(), "Detect");
    EXPECT_EQ(problems_.size(), 5u);
    EXPECT_TRUE(file.SetFileName(Write("jp2.txt", japanese)));
    EXPECT_EQ(file.CodePage(), "932");
    // The statement outlives the file: the next file is detected again.
    EXPECT_TRUE(file.SetFileName(Write("de2.txt", kGerman1252)));
    EXPECT_EQ(file.CodePage(), "1252");
    EXPECT_EQ(problems_.size(), 5u);
}

// Setups.ini: Western sections in 1252 and a Japanese section in Shift-JIS, read as 932. A
// line of katakana alone looks like Western text byte by byte; its section tells.
TEST_F(LanguageTextFileTest, TheJapaneseSectionOfAMixedFileIsShiftJis) {
    const std::string setup932 = "\x83\x5A\x83\x62\x83\x67\x83\x41\x83\x62\x83\x76";   // "セットアップ"
    const std::string mixed = kGerman1252 + "[JAPANESE]\r\nAppTitle=Tovel " + setup932 + "\r\nBtn=" + kInstall932 +
                              "\r\n[French]\r\nAppTitle=Fran\xE7" "ais\r\n";
    const auto file = Open("Setups.ini", mixed, "932");
    EXPECT_EQ(file.LoadIniProperty2("JAPANESE", "AppTitle"), "Tovel \u30bb\u30c3\u30c8\u30a2\u30c3\u30d7");
    EXPECT_EQ(file.LoadIniProperty2("French", "AppTitle"), "Fran\u00e7ais");
    EXPECT_EQ(file.LoadIniProperty2("Common", "BackBtn"), "< Zur\u00fcck");
}

TEST_F(LanguageTextFileTest, FileDeclaresItsOwnCodePage) {
    const std::string header = "[Language]\r\nName=Japanese\r\nCodePage=932\r\n[Texts]\r\n";
    EXPECT_EQ(clsLanguageTextFile::DeclaredCodePage(header), "932");
    EXPECT_EQ(clsLanguageTextFile::DeclaredCodePage("[language]\ncodepage = Detect\n"), "Detect");
    EXPECT_EQ(clsLanguageTextFile::DeclaredCodePage("[Texts]\r\nCodePage=932\r\n"), "");
    EXPECT_EQ(clsLanguageTextFile::DeclaredCodePage(""), "");

    // Declared 1252 for bytes that are Shift-JIS: declared is what is used, bad bytes aside.
    const auto declared = Open("decl.txt", "[Language]\r\nCodePage=1252\r\n[A]\r\nK=\x93\xFA\r\n");
    EXPECT_EQ(declared.CodePageNumber(), 1252u);
    EXPECT_EQ(declared.LoadIniProperty2("A", "K"), "“ú");
    // Declared 932: a file with only a few Japanese characters is read right without detection.
    const auto japanese = Open("decl932.txt", header + "Yes=\x82\xCD\x82\xA2\r\n");
    EXPECT_EQ(japanese.CodePageNumber(), 932u);
    EXPECT_EQ(japanese.LoadIniProperty2("Texts", "Yes"), "はい");
    // A statement by the caller wins over the declaration.
    const auto stated = Open("decl932b.txt", header + "Yes=\x82\xCD\x82\xA2\r\n", "Detect");
    EXPECT_EQ(stated.CodePageNumber(), 932u);
}

TEST_F(LanguageTextFileTest, DriverTableNameAppearsInTheLog) {
    EXPECT_EQ(clsLanguageTextFile::TableName("lang.txt"), "lang#txt");
    EXPECT_EQ(clsLanguageTextFile::TableName("D:\\Lang\\my.lang.txt"), "my#lang#txt");
    EXPECT_EQ(clsLanguageTextFile::TableName("D:\\Lang\\noext"), "noext");
    (void)Open("lang.txt", "[A]\r\n", "1252");
    ASSERT_FALSE(notes_.empty());
    EXPECT_NE(notes_.back().find("[lang#txt]"), std::string::npos) << notes_.back();
    EXPECT_NE(notes_.back().find("code page 1252 (Western European (Windows))"), std::string::npos) << notes_.back();
}

} // namespace
} // namespace tovel::test
