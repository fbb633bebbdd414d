#include "wizard/mdlWizard.h"

#include <functional>
#include <map>

#include "catalogue/CatalogueGlobals.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "wizard/WizardGlobals.h"
#include "wizard/pages/clsControlBusSystem.h"
#include "wizard/pages/clsControlCustomSetup.h"
#include "wizard/pages/clsControlCustomSetupGolden.h"
#include "wizard/pages/clsControlDestination.h"
#include "wizard/pages/clsControlDone.h"
#include "wizard/pages/clsControlIdentification.h"
#include "wizard/pages/clsControlInformation.h"
#include "wizard/pages/clsControlInstall.h"
#include "wizard/pages/clsControlLanguage.h"
#include "wizard/pages/clsControlLicense.h"
#include "wizard/pages/clsControlOldVersion.h"
#include "wizard/pages/clsControlReadMe.h"
#include "wizard/pages/clsControlSearch.h"
#include "wizard/pages/clsControlSetupLanguage.h"
#include "wizard/pages/clsControlSetupType.h"
#include "wizard/pages/clsControlUpdateOrNew.h"
#include "wizard/pages/clsControlWelcome.h"
#include "wizard/pages/clsControlWelcome2.h"

namespace tovel {

namespace {

template <typename Controller>
std::unique_ptr<clsPageController> Make() {
    return std::make_unique<Controller>();
}

// The golden component page belongs to the "frmMSI" set: the classic set keeps its own.
std::unique_ptr<clsPageController> MakeCustomSetup() {
    const bool golden = gSetupsIni != nullptr && !gSetupsIni->OldForms() && gSetupsIni->GoldenComponentDialog();
    return golden ? Make<clsControlCustomSetupGolden>() : Make<clsControlCustomSetup>();
}

} // namespace

std::unique_ptr<clsPageController> MakePageController(const std::string& page) {
    static const std::map<std::string, std::function<std::unique_ptr<clsPageController>()>> kPages = {
        {"frmWelcome", Make<clsControlWelcome>},
        {"frmSetupLanguage", Make<clsControlSetupLanguage>},
        {"frmWelcome2", Make<clsControlWelcome2>},
        {"frmReadme", Make<clsControlReadMe>},
        {"frmSearch", Make<clsControlSearch>},
        {"frmOldVersion", Make<clsControlOldVersion>},
        {"frmLicense", Make<clsControlLicense>},
        {"frmInformation", Make<clsControlInformation>},
        {"frmIdentification", Make<clsControlIdentification>},
        {"frmDestination", Make<clsControlDestination>},
        {"frmLanguages", Make<clsControlLanguage>},
        {"frmUpdateOrNew", Make<clsControlUpdateOrNew>},
        {"frmSetupType", Make<clsControlSetupType>},
        {"frmBusSystem", Make<clsControlBusSystem>},
        {"frmCustomSetup", MakeCustomSetup},
        {"frmInstallation", Make<clsControlInstall>},
        {"frmDone", Make<clsControlDone>},
    };
    const auto found = kPages.find(page);
    return found == kPages.end() ? nullptr : found->second();
}

void RunWizard() {
    clsDialogOrder::Hooks hooks;
    hooks.controllers = MakePageController;
    hooks.environmentChecks = [] { return gEnvironment->WizardChecks(); };
    hooks.selectFromPackets = [] { gCommonSection.SelectApplicationsFromPackets(); };
    hooks.applyBusSystem = [] { gCommonSection.ApplyBusSystemSelection(); };
    hooks.endProgram = [] { EndSetupFailed(); };
    gDialogOrder = std::make_unique<clsDialogOrder>(std::move(hooks));
    gDialogOrder->Initialize();
    gDialogOrder->NextDialog("");
}

} // namespace tovel
