#pragma once
// A language text file: texts that an INI reader cannot carry in the right code page (above
// all Japanese), read in the file's own code page and looked up by section and key.
//
// Layout, as an INI file:
//   - A line whose trimmed text begins with "[" starts a section; its name is the text after
//     "[" up to the last "]" (to the line's end without one), trimmed. Lines before the first
//     section belong to none.
//   - Other lines are "key=value", split at the first "=": a value may itself contain "=".
//     Key and value are trimmed of blanks and tabs; quotes are kept as written. Lines whose
//     trimmed text begins with ";" are comments; lines without "=" are ignored.
//   - Section names and keys compare without regard to letter case, as everywhere in the
//     setup's INI files. A section that appears twice is searched block by block in file
//     order; within one section the first line of a key counts.
//
// Code page: a byte-order mark decides first (UTF-8, UTF-16 LE, UTF-16 BE). Otherwise the
// stated code page: the one set with SetCodePage, else the file's own declaration
// "CodePage=" in its section [Language] (read from the bytes before decoding, so it must be
// written in ASCII), else "Detect" (DetectCodePage). Bytes that are not valid in the stated
// code page (or, for a single-byte code page, decode to the C1 controls U+0080..U+009F that
// no real text in it has) make the file be read in the detected code page instead, with a
// log line: the texts are still shown, never lost.
//
// A file that cannot be read answers every look-up with "" (the caller keeps its own text).
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/clsCodePage.h"

namespace tovel {

/// What the code-page detection found.
struct DetectedCodePage {
    uint32_t codePage = 0;
    size_t bomLength = 0;   ///< bytes of a byte-order mark at the start (0 without one)
    bool operator==(const DetectedCodePage&) const = default;
};

class clsLanguageTextFile {
public:
    /// Where lines for the setup log go: problem true for bad input (always worth a line),
    /// false for what was opened (a line when logging is on).
    using Reporter = std::function<void(const std::string& line, bool problem)>;

    inline static constexpr uint32_t kUtf8 = 65001;
    inline static constexpr uint32_t kUtf16Le = kCodePageUtf16Le;
    inline static constexpr uint32_t kUtf16Be = kCodePageUtf16Be;

    [[nodiscard]] const std::string& FileName() const { return fileName_; }
    /// Sets the file and reads it (Windows path, through the platform). False when it cannot
    /// be read; look-ups then give "".
    bool SetFileName(const std::string& path);

    /// The code page as a text: after a file was read the number it was read in ("932");
    /// before, what was stated: a number, "Detect", or "" (the file's declaration decides).
    [[nodiscard]] std::string CodePage() const;
    /// A number ("1252"), "Detect", or "" for the file's declaration. Takes effect at the next
    /// SetFileName. Any other text counts as "Detect", with a log line.
    void SetCodePage(const std::string& codePage);
    /// The number of the code page the file was read in; 0 when no file is read.
    [[nodiscard]] uint32_t CodePageNumber() const { return used_; }
    /// A readable name of that code page ("Japanese (Shift-JIS)"); empty when no file is read.
    [[nodiscard]] std::string CodePageDescription() const;

    [[nodiscard]] const std::string& IniSection() const { return section_; }
    /// The section to look in; "[name]" and "name" mean the same.
    void SetIniSection(const std::string& section) { section_ = section; }
    [[nodiscard]] const std::string& IniProperty() const { return property_; }
    void SetIniProperty(const std::string& key) { property_ = key; }

    /// The value of IniProperty in IniSection; "" when either is missing.
    [[nodiscard]] std::string LoadIniProperty() const;
    /// The value of a key in a section; "" when either is missing.
    [[nodiscard]] std::string LoadIniProperty2(const std::string& section, const std::string& key) const;
    /// The value of a key in a section; defaultText when the key is missing (an empty value
    /// stays empty: a text file may clear a text on purpose).
    [[nodiscard]] std::string LoadIniProperty3(const std::string& section, const std::string& key,
                                               const std::string& defaultText) const;
    /// The value of a key in a section; nullopt when the section or key is missing.
    [[nodiscard]] std::optional<std::string> FindIniProperty(std::string_view section, std::string_view key) const;
    /// True while a file is read and held.
    [[nodiscard]] bool IsOpen() const { return open_; }
    /// Lets go of the file's text; look-ups give "" until a file is set again.
    void TerminateConnectionToText();

    /// The code page of a file's bytes:
    ///  1. a byte-order mark: EF BB BF UTF-8 (65001), FF FE UTF-16 LE (1200), FE FF UTF-16 BE (1201);
    ///  2. only ASCII bytes: the ANSI code page (every reading is the same);
    ///  3. valid UTF-8 with multi-byte sequences: 65001;
    ///  4. Shift-JIS (932) when read as Shift-JIS the bytes are all whole characters of
    ///     ordinary Japanese text: every lead byte (81-84, 87-9F, E0-EA) is followed by a trail
    ///     byte (40-7E, 80-FC); no byte 80, A0, 85, 86 or EB-FF stands anywhere else; there are
    ///     more double-byte characters than half-width katakana (A1-DF); at least one trail
    ///     byte is 80 or above; and the code page converter takes the bytes. Western text
    ///     fails this: its "ü", "ö", "ó", "í" are no lead bytes, and an accented letter before
    ///     a blank or a line end is a lead byte without a trail;
    ///  5. otherwise the ANSI code page, or 1252 where that is itself a multi-byte code page
    ///     (a Japanese machine reading a Western file).
    [[nodiscard]] static DetectedCodePage DetectCodePage(std::string_view bytes, uint32_t ansiCodePage);
    /// A readable name of a code page, as Windows names them; "Code page N" for others.
    [[nodiscard]] static std::string DescribeCodePage(uint32_t codePage);
    /// The name under which a database driver for text files knows the file: its name
    /// without folder, every "." replaced by "#" ("lang.txt" is table [lang#txt]).
    [[nodiscard]] static std::string TableName(const std::string& path);
    /// The file's own declaration: the value of "CodePage" in section [Language], read from
    /// the raw bytes; "" without one.
    [[nodiscard]] static std::string DeclaredCodePage(std::string_view bytes);

    static void SetReporter(Reporter reporter);
    static void Report(const std::string& line, bool problem);

private:
    std::string fileName_;
    std::string stated_;
    uint32_t used_ = 0;
    std::string section_;
    std::string property_;
    std::vector<std::string> lines_;   ///< the decoded file, UTF-8, one entry per line
    bool open_ = false;
};

} // namespace tovel
