#include "install/clsSilentMode.h"

#include "catalogue/clsSIFApplication.h"
#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsPlaceholder.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

std::string clsSilentMode::RecordPath() const {
    return (targetPath_.empty() ? WindowsDir : targetPath_) + kFileName;
}

bool clsSilentMode::CreateAutoIni(const AutoIniAnswers& answers, const clsSIFApplication& catalogue) {
    const std::string path = RecordPath();
    auto& files = Platform().Files();
    if (files.FileExists(path) && !files.DeleteFile(path)) {
        LogIfEnabled("Error in Modul clsSilentMode Funktion CreateAutoIni: " + path + " can not be deleted.");
        return false;
    }
    clsIniFile ini;
    ini.SetFullPath(path);
    WriteGeneral(ini, answers);
    // DIALOGS carries nothing a silent run reads; it names the page the answers were taken on.
    ini.SetSectionName("DIALOGS");
    ini.PutString("LastDialog", "frmCustomSetup");
    for (const auto& item : catalogue.Items()) WriteApplication(ini, item);
    if (files.FileExists(path)) return true;
    LogIfEnabled("Error in Modul clsSilentMode Funktion CreateAutoIni: " + path + " can not be written.");
    return false;
}

bool clsSilentMode::CreateAutoIni2(const AutoIniAnswers& answers, const clsSIFApplication& catalogue) {
    return CreateAutoIni(answers, catalogue);
}

void clsSilentMode::ShowRecordedMessage() {
    MsgBox(kRecordedMessage, mb::kOk | mb::kIconInformation, ApplicationTitle);
}

void clsSilentMode::WriteGeneral(clsIniFile& ini, const AutoIniAnswers& answers) const {
    ini.SetSectionName("GENERAL");
    ini.PutString("CreatedWith", answers.createdWith);
    ini.PutString("TovelSetupVersion", answers.setupVersion);
    ini.PutInt("Setuplanguage", answers.setupLanguage);
    ini.PutString("IdName", answers.idName);
    ini.PutString("IdCompany", answers.idCompany);
    ini.PutString("GeneralDrive", answers.generalDrive);
    ini.PutString("InstallLanguage", answers.installLanguage);
    ini.PutString("Bus", answers.bus);
    ini.PutTF("NewInstallation", answers.newInstallation);
}

void clsSilentMode::WriteApplication(clsIniFile& ini, const clsSIFApplicationItem& item) {
    ini.SetSectionName(item.ProductCode);
    ini.PutString("DestinationDrive", item.DestDrive);
    ini.PutTF("Selected", item.Selected);
    ini.PutString("DestinationPath", item.DestPath);
}

void clsSilentMode::ReadApplications(clsIniFile& answers, clsSIFApplication& catalogue, const clsPlaceholder* placeholders) {
    for (auto& item : catalogue.Items()) {
        if (answers.SectExist(item.ProductCode)) ReadApplication(answers, item, placeholders);
    }
}

void clsSilentMode::ReadApplication(clsIniFile& ini, clsSIFApplicationItem& item, const clsPlaceholder* placeholders) {
    ini.SetSectionName(item.ProductCode);
    const std::string drive = ini.GetString("DestinationDrive", "");
    if (!drive.empty()) {
        const std::string path = ini.GetString("DestinationPath", "");
        item.DestDrive = drive;
        item.DestPath = placeholders != nullptr ? placeholders->CheckForPlaceholder(path) : path;
    }
    MarkSelected(item, ini.GetTF("Selected", false));
}

void clsSilentMode::MarkSelected(clsSIFApplicationItem& item, bool selectedInFile) {
    if (!selectedInFile) {
        item.Selected = false;
    } else if (item.CheckBox != CheckBoxState::kUncheckedLocked) {
        // A box the disc or a link locked cleared stays cleared whatever the file says.
        item.Selected = !DoNotInstall(item);
    }
    // The box follows the mark, so the installation and the state file see one answer.
    if (item.Selected && item.CheckBox == CheckBoxState::kUnchecked) item.CheckBox = CheckBoxState::kChecked;
    if (!item.Selected && item.CheckBox == CheckBoxState::kChecked) item.CheckBox = CheckBoxState::kUnchecked;
}

bool clsSilentMode::DoNotInstall(const clsSIFApplicationItem& item) {
    for (int n = 1; n <= item.VersionActionsCount(); ++n) {
        if (item.GetAction(n) == "$DoNotInstall$") return true;
    }
    return false;
}

} // namespace tovel
