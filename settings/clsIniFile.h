#pragma once
// The program's one way to read and write INI files (Setups.ini, product files, WIN.INI).
// An object is bound to one file (FullPath, or WIN.INI with UseWinINI) and one section
// (SectionName) at a time. The file is read the way the Windows profile functions read it,
// by clsIniText, in both builds; docs/INI.md tells disc authors the rules.
//
// Every operation first checks that a file was given; if not it shows "[Section] and FileName
// Not Registered!" and gives the default. No operation throws: a missing or broken file
// gives the defaults, a write that cannot be done leaves the file as it was, and what went
// wrong goes to the reporter.
//
// Cost: the file is read and parsed once and served from memory while its size and time of
// change (Stat) stay the same, so each operation costs one Stat. A file changed less than
// two seconds before it was read could change again within the same second at the same size
// without Stat telling; until those two seconds have passed, each operation also compares
// the file's bytes with the ones read (still no new parse unless they differ).
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <string>
#include <string_view>
#include <vector>

#include "settings/clsIniText.h"

namespace tovel {

class clsIniFile {
public:
    using Reporter = std::function<void(const std::string& message)>;
    /// Told each section and key a reader asks for ("" as the key when it asks whether a
    /// section exists), with the 1-based number of the line the value was read from (0 when
    /// the key was not there): a check of a file learns from it which lines are ever read.
    using KeyObserver = std::function<void(const std::string& section, const std::string& key, size_t line)>;

    clsIniFile() = default;

    /// The file; with UseWinINI the Windows folder's WIN.INI. A bare file name without a
    /// folder means the file in the Windows folder, as for the profile functions.
    [[nodiscard]] std::string FullPath() const;
    /// Binds the object to a file (and ends UseWinINI); the object counts as registered.
    void SetFullPath(const std::string& path);
    /// The current section, without brackets.
    [[nodiscard]] const std::string& SectionName() const { return section_; }
    void SetSectionName(const std::string& section) { section_ = section; }
    [[nodiscard]] bool UseWinINI() const { return useWinIni_; }
    /// True binds the object to WIN.INI in the Windows folder; the object counts as registered.
    void SetUseWinINI(bool use);
    /// True once FullPath or UseWinINI was set.
    [[nodiscard]] bool Registered() const { return registered_; }

    /// The key's value (one pair of quotes stripped, blanks trimmed, at most
    /// clsIniText::kMaxValueChars characters); the default, exactly as given, when the key
    /// is missing.
    [[nodiscard]] std::string GetString(const std::string& key, const std::string& defaultValue);
    /// The key's value as GetPrivateProfileInt reads it (clsIniText::ProfileInt); the default
    /// when the key is missing or empty.
    [[nodiscard]] int32_t GetInt(const std::string& key, int32_t defaultValue);
    /// YES, Y, TRUE, T, ON, 1 and -1 are true; NO, N, FALSE, F, OFF and 0 false, in any case;
    /// anything else gives the default.
    [[nodiscard]] bool GetTF(const std::string& key, bool defaultValue);
    /// A text read by the same table as GetTF; nullopt for any other text.
    [[nodiscard]] static std::optional<bool> ParseBoolean(std::string_view value);
    void PutString(const std::string& key, const std::string& value);
    void PutInt(const std::string& key, int32_t value);
    /// Writes "True" or "False".
    void PutTF(const std::string& key, bool value);
    /// Removes the key from the current section.
    void DeleteKey(const std::string& key);
    /// Removes the current section, every block of it if it appears more than once.
    void DeleteSection();

    /// The names of all sections of the file, in file order.
    [[nodiscard]] std::vector<std::string> GetSectionsEx();
    /// Key and value of each line of the current section, split at the first "=", values as
    /// written (quotes kept, no cut); comment and blank lines are left out.
    [[nodiscard]] std::vector<IniEntry> GetSectEntriesEx();
    /// True if the file has a section of that name.
    [[nodiscard]] bool SectExist(const std::string& section);
    /// The 1-based number of the line a key is read from; 0 when it is not there. A question
    /// about the file, not a read of the setup: the observer is not told.
    [[nodiscard]] size_t KeyLine(const std::string& section, const std::string& key);

    /// For files that do not change while they are read (the description files of a disc):
    /// the file is read at the first operation and answered from memory from then on, with
    /// no Stat per read. Writing still goes to the file.
    void SetReadOnce(bool readOnce) { readOnce_ = readOnce; }
    /// Serves a text parsed elsewhere as the file's, read once: a caller that parsed the
    /// bytes itself (to see their warnings and lines) need not have them parsed again.
    void AdoptText(clsIniText text);
    void SetKeyObserver(KeyObserver observer) { observer_ = std::move(observer); }

    /// Where problems with files are told (the setup log once it runs); none by default.
    static void SetReporter(Reporter reporter);

private:
    struct Stamp {
        bool exists = false;
        uint64_t size = 0;
        int64_t modified = 0;
    };

    [[nodiscard]] bool CheckRegistered() const;
    /// The key's value in the current section as written, told to the observer.
    std::optional<std::string_view> Lookup(const std::string& key);
    /// A key's value and line, not told to the observer; nullopt when it cannot be read.
    std::optional<clsIniText::FoundValue> Find(const std::string& section, const std::string& key);
    /// Notes whether the text just read is the read-once text of the bound path.
    void HoldOnce();
    /// The file's text, read again if it changed; nullptr when it cannot be read.
    const clsIniText* Current();
    const clsIniText* Load(const std::string& path);
    /// Keeps the text of the bytes read, reporting what the parser warned of.
    const clsIniText* Parsed(const std::string& path, std::string_view bytes, uint32_t codePage);
    /// Applies a change to the current text and writes the file if it changed.
    template <typename Change>
    void Write(const std::string& action, Change change);
    static void Report(const std::string& message);

    std::string path_;
    std::string section_;
    bool useWinIni_ = false;
    bool registered_ = false;
    bool readOnce_ = false;
    bool heldOnce_ = false;   ///< text_ is the read-once text of path_: no look-up of the path per read

    // The file as last read.
    std::optional<clsIniText> text_;
    std::string loadedPath_;
    Stamp stamp_;
    bool settled_ = false;   ///< the stamp alone tells a change (see above)
    std::string bytes_;      ///< the bytes read, kept while not settled
    bool reportedUnreadable_ = false;
    KeyObserver observer_;
};

} // namespace tovel
