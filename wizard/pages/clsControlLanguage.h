#pragma once
// The product-language page: one check box per language the products on the disc offer
// (LanguageCheckBox 0 to 5 for the letters A, B, C, D, E, J); Continue keeps the letters
// chosen in ProductLanguages for the products' setups.
//
// Preset on each visit: the setup language when the products offer it, else English when
// they offer that, else the first language offered. An empty choice is refused.
#include <string>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlLanguage : public clsControlPage {
public:
    clsControlLanguage() : clsControlPage("frmLanguages") {}

    /// The letters the catalogue's products offer, each once, in the order A, B, C, D, E, J.
    [[nodiscard]] static std::string AvailableLetters();
    /// The letter preset among the available ones ("" when none is available).
    [[nodiscard]] static std::string PresetLetter(const std::string& available);

protected:
    void OnLoad() override;
    bool OnContinue() override;
};

} // namespace tovel
