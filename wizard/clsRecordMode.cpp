#include "wizard/clsRecordMode.h"

#include "catalogue/CatalogueGlobals.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"
#include "startup/clsPrintLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

AutoIniAnswers clsRecordMode::Answers() {
    AutoIniAnswers answers;
    if (gSetupsIni) answers.createdWith = gSetupsIni->CDTitle();
    answers.setupVersion = clsPrintLog::ProgramVersion();
    answers.setupLanguage = DefaultLanguage;
    if (const clsSIFApplicationItem* first = gApplications.Item(1)) {
        answers.idName = first->UserName;
        answers.idCompany = first->CompanyName;
        answers.generalDrive = first->DestDrive;
    }
    answers.installLanguage = ProductLanguages;
    answers.bus = SelectedBusSystem;
    answers.newInstallation = !UpdateMode;
    return answers;
}

bool clsRecordMode::Record() {
    clsSilentMode answerFile;
    if (!answerFile.CreateAutoIni2(Answers(), gApplications)) return false;
    clsSilentMode::ShowRecordedMessage();
    return true;
}

} // namespace tovel
