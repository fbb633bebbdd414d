#include "wizard/pages/clsControlLanguage.h"

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

namespace {

// Element i of the check boxes stands for the letter at i.
constexpr std::string_view kLetters = "ABCDEJ";
constexpr const char* kCheckBox = "LanguageCheckBox";

// A disc's language text file may word the refusal in [frmLanguages]; English otherwise.
std::string NoLanguageText() {
    std::string text = gLanguage ? gLanguage->Caption("frmLanguages", "NoLanguageChosen") : std::string();
    return text.empty() ? "Please choose at least one language." : text;
}

} // namespace

std::string clsControlLanguage::AvailableLetters() {
    std::string available;
    for (const char letter : kLetters) {
        for (const auto& item : gApplications.Items()) {
            if (item.AvailableLanguages.find(letter) != std::string::npos) {
                available += letter;
                break;
            }
        }
    }
    return available;
}

std::string clsControlLanguage::PresetLetter(const std::string& available) {
    if (available.empty()) return {};
    for (const std::string& letter : {LanguageIndexToCode(DefaultLanguage, 0), std::string("B")}) {
        if (available.find(letter) != std::string::npos) return letter;
    }
    return available.substr(0, 1);
}

void clsControlLanguage::OnLoad() {
    const std::string available = AvailableLetters();
    LogIfEnabled("Verfügbare Sprachen=" + available);
    const std::string preset = PresetLetter(available);
    for (size_t i = 0; i < kLetters.size(); ++i) {
        clsFormControl* box = Form().Control(kCheckBox, static_cast<int>(i));
        if (box == nullptr) continue;
        box->visible = available.find(kLetters[i]) != std::string::npos;
        box->value = box->visible && preset.find(kLetters[i]) != std::string::npos ? 1 : 0;
    }
}

bool clsControlLanguage::OnContinue() {
    std::string chosen;
    for (size_t i = 0; i < kLetters.size(); ++i) {
        const clsFormControl* box = Form().Control(kCheckBox, static_cast<int>(i));
        if (box != nullptr && box->visible && box->value == 1) chosen += kLetters[i];
    }
    if (chosen.empty()) {
        LogIfEnabled("No product language chosen: the page stays.");
        (void)MsgBox(NoLanguageText(), mb::kOk | mb::kIconWarning, ApplicationTitle);
        return false;
    }
    ProductLanguages = chosen;
    LogIfEnabled("Gewählte Sprachen=" + chosen);
    return true;
}

} // namespace tovel
