#pragma once
// The setup-language page: one option per language (German, English, French, Spanish,
// Italian, Japanese: LanguageOption 0 to 5), each shown, greyed or hidden as the LANGUAGES
// section of Setups.ini says. Continue makes the chosen language the setup language.
//
// How the choice reaches the later pages: every page is made fresh when it is shown and takes
// its captions from gLanguage as it loads, the message box reads its button captions for each
// message, and the settings' texts (AppTitle, bus names, ...) are read again for the new
// language; so changing gLanguage, DefaultLanguage and those texts here is all it takes.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlSetupLanguage : public clsControlPage {
public:
    clsControlSetupLanguage() : clsControlPage("frmSetupLanguage") {}

    /// What an option shows for a LANGUAGES value: "hide" hides it, "disable" greys it, any
    /// other value (or none) offers it. Without regard to case.
    struct OptionState {
        bool visible = true;
        bool enabled = true;
    };
    [[nodiscard]] static OptionState StateOf(const std::string& setting);

protected:
    void OnLoad() override;
    bool OnContinue() override;

private:
    [[nodiscard]] bool Selectable(int index);
};

} // namespace tovel
