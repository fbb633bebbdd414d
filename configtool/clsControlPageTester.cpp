#include "configtool/clsControlPageTester.h"

#include "common/clsString.h"
#include "startup/Globals.h"
#include "startup/Main.h"

namespace tovel {

namespace {
constexpr int kLanguages = 6;
}

void clsControlPageTester::OnLoad() {
    std::vector<std::string> languages;
    for (int i = 0; i < kLanguages; ++i) {
        const bool offered = clsString::EqualNoCaseAscii(gSetupsIni->LanguageSetting(static_cast<int16_t>(i)), "enable");
        languages.push_back(LanguageIndexToCode(i, 1) + (offered ? "" : " (not offered by this disc)"));
    }
    SetLines("LanguageList", languages, DefaultLanguage);
    Form().ChooseOption("FormSetOption", gSetupsIni->OldForms() ? 0 : 1);
    ListPages();
}

bool clsControlPageTester::OldFormsChosen() const {
    const clsFormControl* classic = Form().Control("FormSetOption", 0);
    return classic == nullptr || classic->value == 1;
}

void clsControlPageTester::ListPages() {
    // The same page stays chosen when the set changes: its twin takes its line.
    SetLines("PageList", clsPageTester::Pages(OldFormsChosen()), ChosenLine("PageList"));
}

void clsControlPageTester::OnClick(const std::string& control, int) {
    if (control == "FormSetOption") return ListPages();
    if (control == "ShowBtn") ShowPage();
}

void clsControlPageTester::ShowPage() {
    const int page = ChosenLine("PageList");
    if (page < 0) {
        SetText("StatusLabel", "Choose a page first.");
        return;
    }
    const std::string form = Form().Control("PageList")->items[static_cast<size_t>(page)];
    const int language = ChosenLine("LanguageList");
    const bool shown = tester_.Open(form, language < 0 ? DefaultLanguage : language);
    SetText("StatusLabel", shown ? form + " was shown in " + LanguageIndexToCode(DefaultLanguage, 1) + " and closed."
                                 : form + " cannot be shown.");
}

} // namespace tovel
