#pragma once
// The text of one INI file in memory, read and changed the way the Windows profile functions
// (GetPrivateProfileString and its kin) read and change it, but with no file and no Windows
// behind it: clsIniFile feeds it the bytes and writes back what Bytes() gives.
//
// Reading:
//   - A file starting with EF BB BF is UTF-8, with FF FE UTF-16 LE, with FE FF UTF-16 BE;
//     any other file is in the ANSI code page given to Parse. Lines end in CR LF, LF or a lone
//     CR; the last line needs no line end.
//   - "[name]" (blanks before "[" allowed) starts a section; the name runs to the last "]" of
//     the line and is trimmed of blanks and tabs. A "[" line without "]" is an ordinary line.
//   - A line whose first non-blank character is ";" is a comment. Other lines are entries:
//     the name runs to the first "=" and the value follows it, both trimmed of blanks and
//     tabs. A line without "=" is listed by Entries but is no key.
//   - Names compare without regard to case (as Windows compares file names). Where a section
//     appears twice only its first block is read, and where a key appears twice in that block
//     only its first line. Lines before the first section belong to no section.
//   - Value() strips one pair of matching quotes (" or ') around a value of two or more
//     characters and cuts it to kMaxValueChars characters, as GetPrivateProfileString with a
//     buffer of kBufferChars does. A NUL byte ends a name or value as it ends a C string.
//   - Text that is not valid in its encoding is read as far as it goes (a character that
//     cannot be read becomes U+FFFD) and told in a warning; its bytes are kept as they are.
//
// Changing: only the lines concerned change; every other line, its line end, the byte-order
// mark and bytes that are not valid text are written back byte for byte. New lines take the
// line end of the file's first line (CR LF in a file that has none) and the file's encoding.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "common/clsTextDecoder.h"

namespace tovel {

/// One line of a section as GetPrivateProfileSection lists it, split at its first "=".
struct IniEntry {
    std::string key;
    std::string value;   ///< as written, quotes kept; "" for a line without "="
    bool operator==(const IniEntry&) const = default;
};

/// A header or key line as a checker sees it: where it stands and what it says. The texts
/// are views into the clsIniText that made the line: it must outlive the line, unchanged.
struct IniLine {
    size_t number = 0;             ///< 1-based line number in the file
    bool header = false;           ///< a "[name]" line; else a key line (with or without "=")
    std::string_view section;      ///< the section it belongs to, as written; "" before the first
    std::string_view key;          ///< "" for a header
    std::string_view value;        ///< as written, quotes kept
    bool firstBlock = true;        ///< in the block of its section that is read
};

class clsIniText {
public:
    /// The value buffer the profile functions are given: values keep at most one character
    /// less than this.
    static constexpr size_t kBufferChars = 2048;
    static constexpr size_t kMaxValueChars = kBufferChars - 1;

    /// An empty file in the ANSI code page.
    explicit clsIniText(uint32_t ansiCodePage = 1252);

    /// Reads a file's bytes. Each problem found adds one line (without the file name) to
    /// warnings; nothing is ever refused.
    [[nodiscard]] static clsIniText Parse(std::string_view bytes, uint32_t ansiCodePage,
                                          std::vector<std::string>& warnings);

    /// The value as GetPrivateProfileString gives it; nullopt when the section or key is missing.
    [[nodiscard]] std::optional<std::string> Value(std::string_view section, std::string_view key) const;
    /// The same without a copy: a view into the text, valid until the text changes.
    [[nodiscard]] std::optional<std::string_view> ValueView(std::string_view section, std::string_view key) const;
    /// A value as ValueView gives it, with the 1-based number of the line it was read from.
    struct FoundValue {
        size_t line = 0;
        std::string_view value;
    };
    [[nodiscard]] std::optional<FoundValue> FindValue(std::string_view section, std::string_view key) const;
    /// The names of all sections in file order, a name that appears twice twice; "[]" is left out.
    [[nodiscard]] std::vector<std::string> SectionNames() const;
    /// The entries of the first block of a section; comment and blank lines are left out.
    [[nodiscard]] std::vector<IniEntry> Entries(std::string_view section) const;
    [[nodiscard]] bool HasSection(std::string_view section) const;
    /// Every header and key line in file order, with its line number: what a check of a
    /// file needs to point at a line. Comments and blank lines are left out. The lines view
    /// this text: they hold while it lives and does not change.
    [[nodiscard]] std::vector<IniLine> Outline() const;

    /// Sets a key: its line in the first block is rewritten after the "=" (the blanks that
    /// followed the "=" stay); a new key goes after the last entry of that block, a new
    /// section at the end of the file. True if the text changed. What would not read back
    /// (a line break or NUL, a key name with "=" or starting with ";" or "[", a name the
    /// encoding cannot hold) is refused with the reason in error; a character of a value the
    /// code page lacks is written, and from then on read, as "?".
    bool SetValue(std::string_view section, std::string_view key, std::string_view value, std::string& error);
    /// Why SetValue refuses to write this section, key and value in any file ("" when it
    /// does not): what would not read back as written.
    [[nodiscard]] static std::string WriteRefusal(std::string_view section, std::string_view key, std::string_view value);
    /// UTF-8 text as bytes of an ANSI code page; a character the code page lacks becomes "?".
    [[nodiscard]] static std::string AnsiBytes(std::string_view text, uint32_t codePage);
    /// Bytes of an ANSI code page as UTF-8 text.
    [[nodiscard]] static std::string AnsiText(std::string_view bytes, uint32_t codePage);
    /// Removes every line of the key in every block of the section. True if any was removed.
    bool RemoveKey(std::string_view section, std::string_view key);
    /// Removes every block of the section, from its "[name]" line to the next section. True
    /// if any was removed.
    bool RemoveSection(std::string_view section);

    /// The whole file as bytes in its encoding.
    [[nodiscard]] std::string Bytes() const;

    /// A value read as GetPrivateProfileInt reads it: blanks, then "+" or "-", then "0x",
    /// "0o" or "0b" for hexadecimal, octal or binary, then as many digits as there are,
    /// wrapping at 2^32, then negated after a "-"; no digits give 0. A negative number stays
    /// negative, as Windows and Wine return it (an exit code such as -1073741819 survives),
    /// whatever the function's documentation says.
    [[nodiscard]] static int32_t ProfileInt(std::string_view value);
    /// Names as the profile functions compare them: trimmed of blanks and tabs, case folded.
    [[nodiscard]] static std::string FoldName(std::string_view name);
    /// The text without blanks and tabs at either end.
    [[nodiscard]] static std::string_view Trim(std::string_view text);
    /// A hash of a name as FoldName folds it, without a folded copy of an ASCII name.
    [[nodiscard]] static size_t NameHash(std::string_view name);
    /// True if two names are the same name once folded.
    [[nodiscard]] static bool SameName(std::string_view a, std::string_view b);

private:
    enum class Kind : uint8_t { Blank, Comment, Header, Entry, Text };
    enum class End : uint8_t { None, CrLf, Lf, Cr };

    /// Where a line lies in store_: its bytes, and its UTF-8 text where that differs (else
    /// text == raw). Offsets, not pointers, so a copy or move of the text stays valid.
    struct Line {
        size_t raw = 0, rawLength = 0;      ///< the file's bytes of the line, without the line end
        size_t text = 0, textLength = 0;    ///< UTF-8
        uint32_t nameBegin = 0, nameLength = 0;    ///< key, or section name, in the text
        uint32_t valueBegin = 0, valueLength = 0;  ///< in the text; valueBegin follows "=" and blanks
        End end = End::None;
        Kind kind = Kind::Blank;
    };

    struct Section {
        size_t header = 0;   ///< index of its "[name]" line
        size_t end = 0;      ///< one past its last line
    };
    /// Hash and comparison of folded names that fold ASCII letters on the way, so that an
    /// ASCII name is looked up without a folded copy of it.
    struct FoldedHash {
        using is_transparent = void;
        size_t operator()(std::string_view name) const;
    };
    struct FoldedEqual {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const;
    };
    using NameIndex = std::unordered_map<std::string, size_t, FoldedHash, FoldedEqual>;
    /// The keys of one block: (hash of the folded name, line), sorted, so that the first line
    /// of a name comes first among its equals. Lines are indices, so a copy of the text keeps
    /// a valid index; building one costs no string per key.
    using KeyIndex = std::vector<std::pair<size_t, uint32_t>>;
    /// The index entry of a name; end() when there is none.
    [[nodiscard]] static NameIndex::const_iterator Find(const NameIndex& index, std::string_view name);
    /// NameHash and SameName of names without blanks at either end.
    [[nodiscard]] static size_t TrimmedNameHash(std::string_view name);
    [[nodiscard]] static bool SameTrimmedName(std::string_view a, std::string_view b);

    [[nodiscard]] std::string_view TextOf(const Line& line) const { return {store_.data() + line.text, line.textLength}; }
    [[nodiscard]] std::string_view RawOf(const Line& line) const { return {store_.data() + line.raw, line.rawLength}; }
    [[nodiscard]] std::string_view Name(const Line& line) const { return TextOf(line).substr(line.nameBegin, line.nameLength); }
    [[nodiscard]] std::string_view Val(const Line& line) const { return TextOf(line).substr(line.valueBegin, line.valueLength); }
    /// Points the line's text at text: at its bytes when they read the same, else at a copy
    /// added to the store. text must not lie in the store.
    void PutText(Line& line, std::string_view text);

    /// Points each line's text at its decoded text, adding to the store what differs from the
    /// bytes; body is the file's text part (the store's start, which the adding may move).
    /// Gives the numbers of the lines that are not valid in the encoding.
    std::vector<size_t> DecodeLines(std::string_view body);
    std::vector<size_t> DecodeUtf16(std::string_view body);
    std::vector<size_t> DecodeUtf8(std::string_view body);
    std::vector<size_t> DecodeAnsi(std::string_view body);
    /// The whole body through the converter; false, with nothing changed, where it fails or
    /// its lines do not match the bytes' lines.
    bool DecodeWhole(std::string_view body);
    /// Finds the line's kind, name and value; holdsNul says whether text may hold a NUL.
    static void Classify(Line& line, std::string_view text, bool holdsNul);
    void Reindex();
    [[nodiscard]] const Section* FirstBlock(std::string_view section) const;
    [[nodiscard]] std::optional<size_t> FindKey(const Section& section, std::string_view key) const;
    /// Text as bytes in the file's encoding.
    [[nodiscard]] std::string EncodeText(std::string_view text) const;
    /// What the bytes EncodeText made of text read back as (they differ only where the code
    /// page lacks a character).
    [[nodiscard]] std::string DecodeBack(std::string_view bytes, std::string_view text) const;
    /// True if a name reads back as written.
    [[nodiscard]] bool Writable(std::string_view name) const;
    /// Adds a line's new bytes and text to the store and points the line at them.
    void SetLine(Line& line, std::string_view text, std::string_view raw);
    /// The line's bytes up to its value.
    [[nodiscard]] std::string RawPrefix(const Line& line) const;
    [[nodiscard]] Line MakeLine(std::string_view text);
    void InsertLine(size_t at, Line line);
    void DropLines(const std::vector<bool>& drop);
    /// SetValue but for tidying the store.
    bool ChangeValue(std::string_view section, std::string_view key, std::string_view value, std::string& error);
    /// The bytes of the store a line points at.
    [[nodiscard]] static size_t Footprint(const Line& line);
    /// Writes the store anew, only what the lines point at, once edits have left more of it
    /// unused than used. Only between changes: every line must be in lines_.
    void CompactIfWasteful();
    [[nodiscard]] std::string EndBytes(End end) const;

    uint32_t ansiCodePage_ = 1252;
    TextEncoding encoding_ = TextEncoding::Ansi;
    std::string bom_;
    std::string tail_;          ///< a last odd byte of a UTF-16 file
    End newLine_ = End::CrLf;   ///< the line end new lines get
    /// The file's body bytes, then the text of the lines whose text differs from their bytes,
    /// then what edits add. An edit moves nothing; what it replaces stays unused until that
    /// outweighs the rest, and CompactIfWasteful writes the store anew.
    std::string store_;
    size_t dropped_ = 0;        ///< bytes of the store that no line points at any more
    std::vector<Line> lines_;
    std::vector<Section> sections_;                         ///< every "[name]" line, in order
    NameIndex firstBlock_;                                  ///< folded name -> first of sections_
    mutable std::vector<std::optional<KeyIndex>> keys_;     ///< of the blocks read so far, by index in sections_
    /// The section name asked for last and its block (index in sections_; none when missing).
    struct LastSection {
        std::string name;
        bool valid = false;
        std::optional<size_t> index;
    };
    mutable LastSection lastSection_;
};

} // namespace tovel
