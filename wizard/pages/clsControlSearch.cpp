#include "wizard/pages/clsControlSearch.h"

#include <algorithm>
#include <limits>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSSFSearch.h"
#include "install/clsMSISetup.h"
#include "install/clsdotnet.h"
#include "language/clsBuiltinTexts.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/pages/clsControlLanguage.h"
#include "wizard/clsRenderer.h"

namespace tovel {

std::string clsControlSearch::StatusText(const std::string& folder) {
    const std::string where = clsSSFSearch::StatusLabelText(folder);
    const std::string text = gLanguage ? gLanguage->LoadResString(TextNo::kSearching, {where}) : std::string();
    return text.empty() ? where : text;
}

void clsControlSearch::NoteWhatWasFound() {
    InstalledProductsFound.clear();
    for (const auto& item : gApplications.Items()) {
        if (!item.Versions.installedVersion.empty()) {
            InstalledProductsFound.push_back(item.Description + " " + item.Versions.installedVersion);
        }
    }
    const size_t most = static_cast<size_t>(std::numeric_limits<int16_t>::max());
    OldVersionCount = static_cast<int16_t>(std::min(InstalledProductsFound.size(), most));
    ProductLanguages = clsControlLanguage::AvailableLetters();
    LogIfEnabled("Installed products found: " + std::to_string(InstalledProductsFound.size()));
    for (const auto& line : InstalledProductsFound) LogIfEnabled("  " + line);
}

void clsControlSearch::CheckPrerequisites() {
    if (gSetupsIni->CheckDotNet()) clsdotnet::CheckDotNet(gApplications);
    clsMSISetup::CheckMSI(gApplications);
}

bool clsControlSearch::Search() {
    clsSSFSearch search;
    const bool complete = search.Run([this](const std::string& folder) {
        if (!Form().Shown()) return false;
        SetText("StatusLabel", StatusText(folder));
        Renderer().Refresh(Form());
        Renderer().DoEvents();   // the user's Cancel arrives here
        return Form().Shown();
    });
    NoteWhatWasFound();
    CheckPrerequisites();
    if (!complete) LogIfEnabled("The search was stopped; the catalogue keeps what it had read.");
    return complete;
}

void clsControlSearch::OnActivate() {
    if (!Search() || TestFlag()) return;
    gDialogOrder->NextDialog(Page());
}

} // namespace tovel
