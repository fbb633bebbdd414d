#include "wizard/clsSilentAnswers.h"

#include "catalogue/CatalogueGlobals.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRecordMode.h"

namespace tovel {

bool clsSilentAnswers::Read() {
    clsSilentMode answerFile;
    AutoIniAnswers answers = clsRecordMode::Answers();
    if (!answerFile.ReadAutoIni2(SilentPath, gApplications, answers)) {
        // The name is the default one whatever file was given: scripts search the log for it.
        LogIfEnabled(std::string("<Error> Beim einlesen von ") + clsSilentMode::kFileName);
        return false;
    }
    Apply(answers);
    LogIfEnabled(std::string("Erfolgreich ") + clsSilentMode::kFileName + " eingelesen.");
    return true;
}

void clsSilentAnswers::Apply(const AutoIniAnswers& answers) {
    if (answers.setupLanguage != DefaultLanguage) {
        UseSetupLanguage(answers.setupLanguage);
        if (gSetupsIni && !gSetupsIni->AppTitle().empty()) ApplicationTitle = gSetupsIni->AppTitle();
    }
    ProductLanguages = answers.installLanguage;
    SelectedBusSystem = answers.bus;
    UpdateMode = !answers.newInstallation;
}

} // namespace tovel
