#include "wizard/pages/clsControlInstall.h"

#include <algorithm>

#include "catalogue/CatalogueGlobals.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

namespace {

constexpr int kLineStep = 300;   // twips from one status line to the next

} // namespace

std::vector<std::string> clsControlInstall::SelectedProducts() {
    std::vector<std::string> products;
    for (const auto& item : gApplications.Items()) {
        if (item.Selected) products.push_back(item.Description.empty() ? item.ProductCode : item.Description);
    }
    return products;
}

void clsControlInstall::OnLoad() {
    const std::vector<std::string> products = SelectedProducts();
    SetText("InstallationLabel", "The installation run is not part of this version yet: nothing is installed. "
                                 "These products were chosen, in installation order:");
    // The layout has the first status line; the others go below it as far as the progress
    // line leaves room, the last of them counting what does not fit.
    const clsFormControl* first = Form().Control("StatusLabel", 0);
    const clsFormControl* progress = Form().Control("ProgressLabel");
    if (first != nullptr && !products.empty()) {
        const clsFormControl model = *first;
        const int bottom = progress != nullptr ? progress->top : model.top + kLineStep;
        const size_t room = static_cast<size_t>(std::max(1, (bottom - model.top) / kLineStep));
        const size_t fits = products.size() <= room ? products.size() : room - 1;
        const size_t lines = fits < products.size() ? fits + 1 : fits;
        for (size_t i = 0; i < lines; ++i) {
            clsFormControl line = model;
            line.index = static_cast<int>(i);
            line.top = model.top + static_cast<int>(i) * kLineStep;
            line.visible = true;
            line.caption = i < fits ? products[i] : "... and " + std::to_string(products.size() - fits) + " more";
            if (clsFormControl* existing = Form().Control("StatusLabel", line.index)) {
                *existing = line;
            } else {
                Form().Add(line);
            }
        }
    }
    SetText("ProgressLabel", "0 / " + std::to_string(products.size()));
    // Its button leaves the page rather than aborting anything: it carries the caption of Next.
    if (gLanguage) {
        const std::string next = gLanguage->Caption(Form().Name(), "ContinueBtn");
        if (!next.empty()) SetText("AbordBtn", next);
    }
    LogIfEnabled("Installation page: the installation run is not built yet; " + std::to_string(products.size()) +
                 " products chosen.");
}

void clsControlInstall::OnActivate() {
    if (SilentMode) Leave();   // nobody is there to press the button
}

void clsControlInstall::OnClick(const std::string& control, int) {
    if (control == "AbordBtn") Leave();
}

void clsControlInstall::Leave() {
    if (left_ || TestFlag()) return;
    left_ = true;
    gDialogOrder->NextDialog(Page());
}

} // namespace tovel
