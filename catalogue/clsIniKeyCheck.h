#pragma once
// Which lines of an INI file the setup never reads: sections and keys it does not know
// (with the known name nearest to each), keys before the first section, a section's second
// block, a key's second line. What is known comes from the readers: Setups.ini's key table,
// or, for a description file, the lines its reader read and the keys it asked for in vain
// while reading that very file (those are the names a misspelt key most likely meant).
#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "settings/clsIniText.h"

namespace tovel {

class clsIniKeyCheck {
public:
    clsIniKeyCheck() = default;
    // A copy would point into the other's map; a move keeps the map's nodes.
    clsIniKeyCheck(const clsIniKeyCheck&) = delete;
    clsIniKeyCheck& operator=(const clsIniKeyCheck&) = delete;
    clsIniKeyCheck(clsIniKeyCheck&&) = default;
    clsIniKeyCheck& operator=(clsIniKeyCheck&&) = default;

    /// A key the setup reads; an empty key makes only the section known.
    void AddKnown(const std::string& section, const std::string& key);
    /// A line (1-based) a reader read: it and its section are known.
    void MarkRead(size_t line);
    /// A section whose keys are someone else's: any key in it is fine.
    void AllowAnyKey(const std::string& section);

    /// One warning per line never read.
    [[nodiscard]] std::vector<DiscFinding> Check(const std::string& file, const std::vector<IniLine>& outline) const;

private:
    struct Known {
        std::string name;
        bool anyKey = false;
        std::vector<std::string> names;   ///< as the reader asked for them, in that order
        std::vector<size_t> hashes;       ///< clsIniText::NameHash of each name: a section has a few dozen
        /// hash: clsIniText::NameHash of the key.
        [[nodiscard]] bool Has(std::string_view key, size_t hash) const;
    };
    [[nodiscard]] std::string UnknownKeyText(const Known& section, const IniLine& line) const;
    [[nodiscard]] std::string UnknownSectionText(const IniLine& line) const;

    [[nodiscard]] bool Read(size_t line) const { return line < read_.size() && read_[line]; }
    /// The first-block headers (by line) with a line read below them.
    [[nodiscard]] std::vector<size_t> HeadersRead(const std::vector<IniLine>& outline) const;

    std::unordered_map<std::string, Known> sections_;   ///< by folded name
    std::vector<bool> read_;                            ///< by line number
    std::string lastSection_;                           ///< as AddKnown was last given it
    Known* last_ = nullptr;                             ///< its entry (nodes of the map stay put)
};

} // namespace tovel
