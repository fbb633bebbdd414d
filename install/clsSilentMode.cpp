#include "install/clsSilentMode.h"

#include <cctype>
#include <optional>
#include <string_view>

#include "catalogue/clsSIFApplication.h"
#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsPlaceholder.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr int16_t kLastSetupLanguage = 5;
constexpr const char* kProductLanguageLetters = "ABCDE";
constexpr const char* kBusNumbers = "01234";

void ReportBadValue(const std::string& key, const std::string& value) {
    LogIfEnabled("Readautoini: " + key + "=" + value + " is not a valid value; the setting stays as it was.");
}

// A value the file gives, or nothing when the key is missing or empty.
std::optional<std::string> Given(clsIniFile& ini, const std::string& key) {
    std::string value = ini.GetString(key, "");
    if (value.empty()) return std::nullopt;
    return value;
}

// Takes a non-empty value when `valid` accepts it; logs one that it refuses.
template <typename Valid>
void Take(clsIniFile& ini, const std::string& key, std::string& target, Valid valid) {
    const auto value = Given(ini, key);
    if (!value) return;
    if (valid(*value)) target = *value;
    else ReportBadValue(key, *value);
}

bool Anything(const std::string&) { return true; }

bool IsDrive(const std::string& value) {
    return value.size() == 2 && std::isalpha(static_cast<unsigned char>(value[0])) != 0 && value[1] == ':';
}

// Each character one of `allowed`, none twice.
bool LettersOf(const std::string& value, std::string_view allowed) {
    for (size_t i = 0; i < value.size(); ++i) {
        if (allowed.find(value[i]) == std::string_view::npos || value.find(value[i], i + 1) != std::string::npos) return false;
    }
    return true;
}

} // namespace

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

std::string clsSilentMode::ReadPath() const {
    if (!targetPath_.empty()) return targetPath_;
    const std::string onDisc = HomePath + kFileName;
    return Platform().Files().FileExists(onDisc) ? onDisc : WindowsDir + kFileName;
}

bool clsSilentMode::ReadAutoIni2(const std::string& path, clsSIFApplication& catalogue, AutoIniAnswers& answers) {
    LogIfEnabled("ReadAutoIni with Path=" + path);
    targetPath_ = path;
    LogIfEnabled("ReadAutoIni initilized Path=" + targetPath_);
    return ReadAutoIni(catalogue, answers);
}

bool clsSilentMode::ReadAutoIni(clsSIFApplication& catalogue, AutoIniAnswers& answers) {
    const std::string path = ReadPath();
    LogIfEnabled("Readautoini Fullpath=" + path);
    if (!Platform().Files().FileExists(path)) {
        LogIfEnabled("Error in Modul clsSilentMode Funktion ReadAutoIni: " + path + " does not exist.");
        return false;
    }
    clsIniFile ini;
    ini.SetFullPath(path);
    ReadGeneral(ini, answers);
    for (auto& item : catalogue.Items()) {
        if (!answers.idName.empty()) item.UserName = answers.idName;
        if (!answers.idCompany.empty()) item.CompanyName = answers.idCompany;
        if (!answers.generalDrive.empty()) item.DestDrive = answers.generalDrive;
    }
    // DIALOGS holds nothing a silent run acts on.
    ReadApplications(ini, catalogue, gPlaceholder.get());
    return true;
}

void clsSilentMode::ReadGeneral(clsIniFile& ini, AutoIniAnswers& answers) {
    ini.SetSectionName("GENERAL");
    cdTitle_ = ini.GetString("CreatedWith", "");
    setupVersion_ = ini.GetString("TovelSetupVersion", "");
    answers.createdWith = cdTitle_;
    answers.setupVersion = setupVersion_;
    std::string language = std::to_string(answers.setupLanguage);
    Take(ini, "Setuplanguage", language, [](const std::string& v) {
        return v.size() == 1 && v[0] >= '0' && v[0] <= '0' + kLastSetupLanguage;
    });
    answers.setupLanguage = static_cast<int16_t>(language[0] - '0');
    Take(ini, "IdName", answers.idName, Anything);
    Take(ini, "IdCompany", answers.idCompany, Anything);
    Take(ini, "GeneralDrive", answers.generalDrive, IsDrive);
    Take(ini, "InstallLanguage", answers.installLanguage, [](const std::string& v) { return LettersOf(v, kProductLanguageLetters); });
    Take(ini, "Bus", answers.bus, [](const std::string& v) { return v.size() == 1 && LettersOf(v, kBusNumbers); });
    const auto fresh = Given(ini, "NewInstallation");
    if (!fresh) return;
    const auto parsed = clsIniFile::ParseBoolean(*fresh);
    if (parsed) answers.newInstallation = *parsed;
    else ReportBadValue("NewInstallation", *fresh);
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
    const std::string selected = ini.GetString("Selected", "");
    const auto parsed = clsIniFile::ParseBoolean(selected);
    if (!parsed && !selected.empty()) ReportBadValue("[" + item.ProductCode + "] Selected", selected);
    MarkSelected(item, parsed.value_or(false));
}

void clsSilentMode::MarkSelected(clsSIFApplicationItem& item, bool selectedInFile) {
    if (!selectedInFile) {
        item.Selected = false;
    } else {
        switch (item.CheckBox) {
            case CheckBoxState::kChecked:
            case CheckBoxState::kUnchecked:
            case CheckBoxState::kCheckedLocked: item.Selected = !DoNotInstall(item); break;
            // Codes no box of this program carries; an answer file never installs them.
            case 3:
            case 5: item.Selected = false; break;
            // A box the disc or a link locked cleared stays as it is whatever the file says.
            default: break;
        }
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
