#include "configtool/clsPageTester.h"

#include <algorithm>
#include <memory>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSSFSearch.h"
#include "common/clsString.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/mdlFormLayouts.h"
#include "wizard/mdlWizard.h"
#include "wizard/pages/clsControlBrowseDir.h"
#include "wizard/pages/clsControlCustomSetup.h"
#include "wizard/pages/clsControlCustomSetupGolden.h"
#include "wizard/pages/clsControlSearch.h"

namespace tovel {

namespace {

constexpr const char* kGolden = "frmMSICustomSetupGolden";
constexpr int kCancelQuestionStyle = mb::kYesNo | mb::kIconQuestion;

bool Same(const std::string& a, const std::string& b) { return clsString::EqualNoCaseAscii(a, b); }

// The controller of a form of either set. The component page is made as the form's own
// (plain or golden) whatever GoldenComponentDialog says: the tester names the form it wants.
std::unique_ptr<clsPageController> MakeController(const std::string& form) {
    if (Same(form, kGolden)) return std::make_unique<clsControlCustomSetupGolden>();
    const std::string classic = FormNameInSet(form, true);
    if (classic == "frmCustomSetup") return std::make_unique<clsControlCustomSetup>();
    if (classic == "frmBrowseDir") {
        const std::string start = WindowsDir.empty() ? "C:\\" : WindowsDir.substr(0, 3);
        return std::make_unique<clsControlBrowseDir>(start, std::vector<char>{start[0]});
    }
    return MakePageController(classic);
}

} // namespace

std::vector<std::string> clsPageTester::Pages(bool oldForms) {
    std::vector<std::string> pages;
    const auto add = [&pages](const std::string& name) {
        if (std::find(pages.begin(), pages.end(), name) == pages.end()) pages.push_back(name);
    };
    const auto all = FormNames();
    // FormNames lists the classic names first; a classic name is its own name in the classic set.
    for (const auto& name : all) {
        if (FormNameInSet(name, true) == name) add(FormNameInSet(name, oldForms));
    }
    if (!oldForms) add(kGolden);
    return pages;
}

bool clsPageTester::Open(const std::string& form, int language) {
    const auto known = Pages(FormNameInSet(form, true) == form);
    const auto page = std::find_if(known.begin(), known.end(), [&](const std::string& name) { return Same(name, form); });
    if (page == known.end()) return false;
    UseLanguage(language);
    LogIfEnabled("Page tester: " + *page + " in " + LanguageIndexToCode(DefaultLanguage, 1));
    if (*page == "frmMessage") {
        const std::string question = gLanguage ? gLanguage->LoadResString(TextNo::kCancelQuestion) : std::string();
        (void)MsgBox(question, kCancelQuestionStyle, ApplicationTitle);
        return true;
    }
    FillCatalogue();
    auto controller = MakeController(*page);
    auto* shown = dynamic_cast<clsControlPage*>(controller.get());
    if (shown == nullptr) return false;
    shown->SetTestFlag(true);
    shown->SetFormSet(FormNameInSet(*page, true) == *page);
    shown->Initialize();
    return true;
}

void clsPageTester::UseLanguage(int language) {
    if (language == DefaultLanguage || language < 0 || language > 5) return;
    UseSetupLanguage(static_cast<int16_t>(language));
    if (!gSetupsIni->AppTitle().empty()) ApplicationTitle = gSetupsIni->AppTitle();
}

void clsPageTester::FillCatalogue() {
    if (filledIn_ == DefaultLanguage) return;
    filledIn_ = DefaultLanguage;
    (void)clsSSFSearch().Run();
    clsControlSearch::NoteWhatWasFound();
    clsControlSearch::CheckPrerequisites();
    gCommonSection.SelectApplicationsFromPackets();
}

} // namespace tovel
