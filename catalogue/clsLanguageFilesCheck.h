#pragma once
// The check of a disc's language text files (Lang\<Language>.txt): a numbered text of the
// disc's own, one the setup has not built in, must be in the file of every offered
// language, or that language shows nothing where the text belongs.
#include <string>
#include <vector>

#include "catalogue/DiscFinding.h"

namespace tovel {

class clsLanguageFilesCheck {
public:
    /// root: the disc's root folder with a trailing "\"; languages: those offered.
    [[nodiscard]] static std::vector<DiscFinding> Run(const std::string& root, const std::vector<int>& languages);
};

} // namespace tovel
