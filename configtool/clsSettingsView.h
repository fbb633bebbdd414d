#pragma once
// One settings file of the disc as the setup reads it, key by key: Setups.ini against the key
// table of clsSetupsIni (with each key's default), or a description file against the keys
// its readers ask for (the product's or packet's reader in each of the six languages). Every
// key of the file's first block of each section is listed, and every key the setup reads
// that the file lacks; each with the value the setup gets and where it comes from. Findings
// of the disc check about a key's line are kept with it.
//
// Changes go through the INI layer (clsIniFile): a value changed rewrites only what follows
// its "=", a new key gets a line of its own, and the default is had by removing the key; the
// author's comments, blank lines and order stay. Nothing is written for a value that reads as
// it did, so a file nobody changed stays byte for byte.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "settings/clsSetupsIni.h"

namespace tovel {

struct SettingsEntry {
    enum class State {
        Default,         ///< not in the file: the setup uses its default
        SameAsDefault,   ///< in the file, reading as the default would
        Set,             ///< in the file, and it counts
        NotRead,         ///< in the file, but the setup never asks for it
    };
    std::string section;
    std::string key;
    size_t line = 0;                  ///< 1-based line in the file; 0 when the file lacks the key
    std::string written;              ///< as written after "=", quotes kept
    std::string value;                ///< what the setup reads (for Yes/No and numbers, as it understands them)
    std::optional<std::string> defaultValue;   ///< when the setup's default is known (Setups.ini)
    State state = State::Default;
    std::vector<std::string> notes;   ///< the disc check's findings on this line
};

class clsSettingsView {
public:
    /// Setups.ini of the disc whose root (with a trailing "\") is given.
    [[nodiscard]] static clsSettingsView SetupsIni(const std::string& root);
    /// A description file (a Windows path) of the disc.
    [[nodiscard]] static clsSettingsView Description(const std::string& path, const std::string& root);

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] const std::vector<SettingsEntry>& Entries() const { return entries_; }
    /// The entry of a section and key (without regard to case); nullptr when not listed.
    [[nodiscard]] const SettingsEntry* Find(std::string_view section, std::string_view key) const;

    /// Writes a value to the entry's key; nothing when it reads as before. False, with the
    /// reason, when the INI layer would refuse it or the file does not read it back.
    bool Write(size_t entry, const std::string& value, std::string& error);
    /// Removes the entry's key, so the setup's default counts again.
    bool UseDefault(size_t entry, std::string& error);

    /// One line for a list: "[SECTION] Key = value  (where it comes from)".
    [[nodiscard]] static std::string LineText(const SettingsEntry& entry);

private:
    explicit clsSettingsView(std::string path, std::string root) : path_(std::move(path)), root_(std::move(root)) {}
    /// Lists the file's keys and the known keys, then reads each entry's value.
    void Build();
    /// The keys the description file's readers ask for; the check's findings on the file.
    void ObserveDescription(std::vector<DiscFinding>& findings);
    void ListEntries(const std::vector<DiscFinding>& findings);
    void ReadValues();

    struct Known {
        std::string section;
        std::string key;
        std::optional<std::string> defaultValue;
        clsSetupsIni::ValueKind kind = clsSetupsIni::ValueKind::Text;
    };
    std::string path_;
    std::string root_;
    bool setupsIni_ = false;   ///< Setups.ini: the key table, and [JAPANESE] in Shift-JIS
    std::string bytes_;       ///< the file as last read
    std::vector<Known> known_;
    std::vector<SettingsEntry> entries_;
};

} // namespace tovel
