#pragma once
// The check of one description file on its own: does it read, which of its lines are never
// read, do its conditions and placeholders read, and has it, for every language the disc
// offers, a text section with a setup program that is there. The file is read by the
// setup's own readers, once per text section it names, and what they asked for is what
// counts as known.
#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/clsSIFPacketItem.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"

namespace tovel {

class clsFolderListing;
class clsIniKeyCheck;
struct LanguageSections;

/// A description file as the checks across files need it: its code and links as its record
/// reads them, nothing else, so that a disc of a thousand files is held lightly.
struct DescribedFile {
    enum class Kind { Skipped, Product, Packet };
    std::string path;
    Kind kind = Kind::Skipped;
    std::string code;                                   ///< ProductCode
    std::vector<std::string> dependencies;              ///< Dependence1, 2, ...
    std::vector<SetupDependence> setupDependencies;     ///< of a product
    std::vector<std::string> members;                   ///< of a packet: its ProductCode1, 2, ...
    std::array<std::vector<BusAction>, kBusSystemCount> busActions;   ///< of a packet
};

class clsDescriptionCheck {
public:
    /// languages: the setup languages the disc offers (0 German .. 5 Japanese). listing: what
    /// the search saw of the disc's folders, asked first whether a setup program is there.
    clsDescriptionCheck(std::vector<int> languages, std::string productFolder, const clsFolderListing* listing = nullptr);

    /// Reads and checks one file; its findings are appended.
    [[nodiscard]] DescribedFile Read(const std::string& path, std::vector<DiscFinding>& findings) const;

private:
    struct TextSection {
        std::string name;
        std::vector<int> languages;
    };
    /// Whether setup programs are there, each looked for once per file: the languages of a
    /// file mostly name the same one.
    class SetupPresence {
    public:
        explicit SetupPresence(const clsFolderListing* listing) : listing_(listing) {}
        [[nodiscard]] bool Exists(const std::string& path);

    private:
        const clsFolderListing* listing_;
        std::unordered_map<std::string, bool> known_;
    };

    [[nodiscard]] std::vector<TextSection> TextSections(const LanguageSections& named) const;
    void ReadProduct(clsIniFile& ini, const LanguageSections& named, const std::vector<IniLine>& outline, clsIniKeyCheck& known,
                     DescribedFile& file, std::vector<DiscFinding>& findings) const;
    void ReadPacket(clsIniFile& ini, const LanguageSections& named, DescribedFile& file, std::vector<DiscFinding>& findings) const;
    /// Where the lines of the file being read are told: its reader, and its outline.
    struct FileLines {
        clsIniFile& ini;
        const std::vector<IniLine>& outline;
    };
    void CheckTextSection(const clsSIFApplicationItem& item, const TextSection& section, FileLines lines,
                          const DescribedFile& file, SetupPresence& present, std::vector<DiscFinding>& findings) const;
    void AllowUnofferedSections(const LanguageSections& named, clsIniKeyCheck& known) const;
    static void MessageTexts(const std::string& path, const clsSIFApplicationItem& product, const std::vector<std::string>& textSections,
                             clsIniFile& ini, clsIniKeyCheck& known, std::vector<DiscFinding>& findings);
    static void CheckTerm(const DescribedFile& file, clsIniFile& ini, const char* section, const char* key, const std::string& term,
                          std::vector<DiscFinding>& findings);

    std::vector<int> languages_;
    std::string productFolder_;
    const clsFolderListing* listing_;
};

} // namespace tovel
