#pragma once
// What concerns the description files as a whole: which section holds the texts of the setup
// language, and the orderings of the catalogue and the packet list.
#include <array>
#include <cstdint>
#include <string>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFPacket.h"
#include "settings/clsIniFile.h"

namespace tovel {

/// What [LANGUAGES] of a description file names: the text section of each setup language
/// (LanguageA..E, J, else LanguageX) by language index, and the letters of the languages
/// the file names itself.
struct LanguageSections {
    std::array<std::string, 6> names;
    std::string offeredLetters;
    /// The text section of the setup language (DefaultLanguage); "" for an index outside 0..5.
    [[nodiscard]] std::string ForSetupLanguage() const;
};

class clsSIFCommonSection {
public:
    clsSIFCommonSection(clsSIFApplication& applications, clsSIFPacket& packets)
        : applications_(applications), packets_(packets) {}

    /// The product-information section of a description file for the setup language
    /// (DefaultLanguage): LanguageA..E, J of LANGUAGES, else LanguageX; "" for a language
    /// index outside 0..5. offeredLetters gets the letters of the languages the file names.
    [[nodiscard]] std::string ProdInfoSection(clsIniFile& sif, std::string& offeredLetters) const;
    /// The text section of every setup language, as ProdInfoSection names it for that
    /// language: a reader of all languages reads [LANGUAGES] once.
    [[nodiscard]] static LanguageSections ProdInfoSections(clsIniFile& sif);

    /// A text key of a description file's language section. The INI reader works in the
    /// machine's ANSI code page, so the texts of a section named "Japanese" come from the
    /// language text file instead, read in Shift-JIS, under "[Japanese]".
    [[nodiscard]] std::string LanguageText(clsIniFile& sif, const std::string& section, const std::string& key) const;

    /// Orders a list so that every entry stands behind what it depends on: the packet list
    /// when the selector is non-zero (true), else the catalogue. A cycle is logged.
    void SortItemsDependencies(int16_t listSelector);
    /// Selects the products of the selected packets and clears the others. A product whose
    /// box is locked (AlwaysInstall, or a locked state from its condition) keeps its state.
    void SelectApplicationsFromPackets();
    /// The selection for an update: the products found installed are selected, the others
    /// cleared; a locked product keeps its state.
    void SelectInstalledApplications();
    /// Applies the chosen bus system's entry (SelectedBusSystem: 0 PROFIBUS .. 4 no bus) of
    /// each selected packet: its products are brought in or taken out; a locked product keeps
    /// its state, and a code that names no product is logged.
    void ApplyBusSystemSelection();

    /// Orders the catalogue after the packets: the products of each packet, in packet order;
    /// products in no packet keep their order behind them.
    void SortItemsInPacketOrder();

private:
    clsSIFApplication& applications_;
    clsSIFPacket& packets_;
};

} // namespace tovel
