#pragma once
// Placeholders a disc's files write that the setup does not know: "%Name%" with a name of
// letters, digits and "_", and "[Name]" near enough to a known one to be meant as one
// (a text in brackets is often just a text). Placeholders compare exactly, case included,
// so "%windowsfolder%" is unknown and stays in the text as written.
#include <string>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "settings/clsIniText.h"

namespace tovel {

class clsPlaceholderScan {
public:
    /// One warning per unknown placeholder, on the line of its key.
    [[nodiscard]] static std::vector<DiscFinding> Check(const std::string& file, const std::vector<IniLine>& outline);
};

} // namespace tovel
