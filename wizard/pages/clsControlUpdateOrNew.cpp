#include "wizard/pages/clsControlUpdateOrNew.h"

#include "catalogue/CatalogueGlobals.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRenderer.h"

namespace tovel {

void clsControlUpdateOrNew::OnActivate() { Form().ChooseOption(gSetupsIni->SelectUpdate() ? "UpdateOption" : "NewInstOption"); }

bool clsControlUpdateOrNew::OnContinue() {
    Renderer().SetHourglass(true);
    Renderer().DoEvents();
    const clsFormControl* fresh = Form().Control("NewInstOption");
    UpdateMode = fresh == nullptr || fresh->value == 0;
    if (UpdateMode) gCommonSection.SelectInstalledApplications();
    LogIfEnabled(UpdateMode ? "Update of the installed products chosen." : "New installation chosen.");
    Renderer().SetHourglass(false);
    return true;
}

} // namespace tovel
