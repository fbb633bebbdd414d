#include "catalogue/clsLanguageFilesCheck.h"

#include <map>
#include <optional>

#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniText.h"

namespace tovel {

namespace {

constexpr const char* kLanguageNames[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};

struct LanguageFile {
    int language = 0;
    std::string path;
    bool exists = false;
    std::map<std::string, size_t> numbers;   ///< numbered texts of [Texts] (every block) -> line
};

bool IsNumber(std::string_view key) { return !key.empty() && key.find_first_not_of("0123456789") == std::string_view::npos; }

// The numbered texts of a file. Only the keys matter, and they are ASCII digits in every
// code page the files are written in.
LanguageFile ReadFile(const std::string& root, int language) {
    LanguageFile file{language, root + "Lang\\" + kLanguageNames[language] + ".txt", false, {}};
    const auto bytes = Platform().Files().ReadFile(file.path);
    if (!bytes) return file;
    file.exists = true;
    std::vector<std::string> warnings;
    const clsIniText text = clsIniText::Parse(*bytes, 1252, warnings);
    for (const IniLine& line : text.Outline()) {
        if (!line.header && IsNumber(line.key) && clsIniText::SameName(line.section, clsBuiltinTexts::kTextsSection)) {
            file.numbers.try_emplace(std::string(line.key), line.number);
        }
    }
    return file;
}

} // namespace

std::vector<DiscFinding> clsLanguageFilesCheck::Run(const std::string& root, const std::vector<int>& languages) {
    std::vector<LanguageFile> files;
    for (const int language : languages) files.push_back(ReadFile(root, language));
    std::vector<DiscFinding> findings;
    for (const auto& owner : files) {
        for (const auto& [number, line] : owner.numbers) {
            for (const auto& other : files) {
                if (other.numbers.count(number) != 0) continue;
                if (clsBuiltinTexts::Find(clsBuiltinTexts::kTextsSection, number, static_cast<size_t>(other.language))) continue;
                const std::string where = other.exists ? other.path : owner.path;
                findings.push_back({where, other.exists ? 0 : line, FindingSeverity::Warning,
                                    "text " + number + " of " + owner.path + " is missing in " +
                                        (other.exists ? "this file" : other.path + ", which does not exist") +
                                        ", and the setup has none built in: " + kLanguageNames[other.language] +
                                        " shows nothing there; add " + number + "= to [Texts]"});
            }
        }
    }
    return findings;
}

} // namespace tovel
