#pragma once
// A new INI file written in one pass: the same bytes clsIniText gives when the same keys are
// set one by one into an empty file in an ANSI code page (CR LF line ends, no byte-order
// mark), without the cost of finding each key's place. For files that are written whole,
// such as the installation state file.
//
// The caller gives the keys of a section together and each key once; a section given again
// after another one, which a key-by-key writer would reopen, is refused.
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace tovel {

class clsIniWriter {
public:
    explicit clsIniWriter(uint32_t ansiCodePage) : codePage_(ansiCodePage) {}

    /// Appends key=value to the section, starting the section when it is not the current
    /// one. False, with the reason in error and nothing written, for what clsIniText would
    /// refuse (clsIniText::WriteRefusal, a name the code page cannot hold) and for a section
    /// that was closed before.
    bool Put(std::string_view section, std::string_view key, std::string_view value, std::string& error);
    /// The file's bytes so far.
    [[nodiscard]] const std::string& Bytes() const { return bytes_; }

private:
    /// True when the name reads back as written in the code page.
    [[nodiscard]] bool Writable(std::string_view name) const;
    /// Appends text in the code page.
    void Append(std::string_view text);
    bool StartSection(std::string_view name, std::string& error);

    uint32_t codePage_;
    std::string current_;                     ///< the open section, as written
    std::unordered_set<std::string> closed_;  ///< folded names of the sections written before
    std::string bytes_;
};

} // namespace tovel
