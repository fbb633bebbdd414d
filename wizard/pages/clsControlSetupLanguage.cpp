#include "wizard/pages/clsControlSetupLanguage.h"

#include "common/clsString.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr int kLanguageCount = 6;
constexpr const char* kOption = "LanguageOption";

} // namespace

clsControlSetupLanguage::OptionState clsControlSetupLanguage::StateOf(const std::string& setting) {
    const std::string value = clsString::LowerAscii(clsString::Trim(setting));
    if (value == "hide") return {false, false};
    if (value == "disable") return {true, false};
    return {};
}

bool clsControlSetupLanguage::Selectable(int index) {
    const clsFormControl* option = Form().Control(kOption, index);
    return option != nullptr && option->visible && option->enabled;
}

void clsControlSetupLanguage::OnLoad() {
    for (int i = 0; i < kLanguageCount; ++i) {
        const OptionState state = StateOf(gSetupsIni->LanguageSetting(static_cast<int16_t>(i)));
        SetVisible(kOption, state.visible, i);
        SetEnabled(kOption, state.enabled, i);
    }
    // The Japanese option names its language in Japanese: the renderer draws it in a font that
    // has the characters ("MS UI Gothic" on Windows), whatever the setup language is.

    // The current language, unless the disc does not offer it (it may be the fallback of a
    // disc that offers nothing the user speaks): then the first offered one.
    int chosen = DefaultLanguage;
    if (!Selectable(chosen)) {
        for (int i = 0; i < kLanguageCount; ++i) {
            if (Selectable(i)) {
                chosen = i;
                break;
            }
        }
    }
    Form().ChooseOption(kOption, chosen);
    // The note that the choice is for the setup only is wrong when the products follow it.
    SetVisible("SetupLanguageBottomLabel", !gSetupsIni->SetupLanguageIsProgramLanguage());
}

bool clsControlSetupLanguage::OnContinue() {
    int chosen = -1;
    for (int i = 0; i < kLanguageCount; ++i) {
        const clsFormControl* option = Form().Control(kOption, i);
        if (Selectable(i) && option->value == 1) chosen = i;
    }
    if (chosen < 0) {
        LogIfEnabled("No setup language offered is chosen; the setup stays in " + LanguageIndexToCode(DefaultLanguage, 1) + ".");
        return true;
    }
    LogIfEnabled("Setup language chosen: " + LanguageIndexToCode(chosen, 1));
    if (chosen == DefaultLanguage) return true;
    UseSetupLanguage(static_cast<int16_t>(chosen));
    if (!gSetupsIni->AppTitle().empty()) ApplicationTitle = gSetupsIni->AppTitle();
    return true;
}

} // namespace tovel
