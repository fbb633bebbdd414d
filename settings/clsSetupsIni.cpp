#include "settings/clsSetupsIni.h"

#include <exception>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "common/clsFileDisk.h"
#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

struct clsSetupsIni::Key {
    const char* name;
    std::variant<std::string clsSetupsIni::*, bool clsSetupsIni::*, int32_t clsSetupsIni::*> member;
};

namespace {

constexpr std::array<const char*, clsSetupsIni::kLanguageCount> kLanguageNames{
    "German", "English", "French", "Spanish", "Italian", "Japanese"};
constexpr int kJapanese = 5;

int IndexOrEnglish(int16_t language) {
    return language >= 0 && language < clsSetupsIni::kLanguageCount ? language : clsSetupsIni::kEnglish;
}

bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsDigits(std::string_view text) {
    if (text.empty()) return false;
    for (const char c : text) {
        if (c < '0' || c > '9') return false;
    }
    return true;
}

} // namespace

const clsSetupsIni& clsSetupsIni::Defaults() {
    static const clsSetupsIni defaults{Unread{}};
    return defaults;
}

// In the order the keys are read. Path comes first and is read on its own (ReadPath).
const std::vector<clsSetupsIni::Key>& clsSetupsIni::SettingsKeys() {
    static const std::vector<Key> keys{
        {"DiscID", &clsSetupsIni::discID_},
        {"PacketProductCodeIsOrder", &clsSetupsIni::packetProductCodeIsOrder_},
        {"SetupMode", &clsSetupsIni::setupMode_},
        {"InstType", &clsSetupsIni::instType_},
        {"Level", &clsSetupsIni::level_},
        {"OnlyFixedDrivesAllowed", &clsSetupsIni::onlyFixedDrivesAllowed_},
        {"AppTitleShort", &clsSetupsIni::appTitleShort_},
        {"BackgroundImage", &clsSetupsIni::backgroundImage_},
        {"CDTitle", &clsSetupsIni::cdTitle_},
        {"CDTitleNotShow", &clsSetupsIni::cdTitleNotShow_},
        {"CheckPackageKey", &clsSetupsIni::checkPackageKey_},
        {"CheckPackageName", &clsSetupsIni::checkPackageName_},
        {"CheckPackageValue", &clsSetupsIni::checkPackageValue_},
        {"DeleteFileWhenReboot", &clsSetupsIni::deleteFileWhenReboot_},
        {"DiscName", &clsSetupsIni::discName_},
        {"IEMinimumCondition", &clsSetupsIni::ieMinimumCondition_},
        {"LeftSideBmp", &clsSetupsIni::leftSideBmp_},
        {"LeftTopBackgroundImage", &clsSetupsIni::leftTopBackgroundImage_},
        {"LeftBottomBackgroundImage", &clsSetupsIni::leftBottomBackgroundImage_},
        {"OnlyPacketProductCodeListIsVisible", &clsSetupsIni::onlyPacketProductCodeListIsVisible_},
        {"Packversion", &clsSetupsIni::packversion_},
        {"PackversionKey", &clsSetupsIni::packversionKey_},
        {"RightTopBackgroundImage", &clsSetupsIni::rightTopBackgroundImage_},
        {"RightBottomBackgroundImage", &clsSetupsIni::rightBottomBackgroundImage_},
        {"UninstallKey", &clsSetupsIni::uninstallKey_},
        {"UPGrayCheckBox", &clsSetupsIni::upGrayCheckBox_},
        {"UserPackUPAllowed", &clsSetupsIni::userPackUPAllowed_},
        {"ValidIEVersion", &clsSetupsIni::validIEVersion_},
        {"WaitForApplicationTitle", &clsSetupsIni::waitForApplicationTitle_},
        {"WarningIE", &clsSetupsIni::warningIE_},
        {"WarningValidIEVersion", &clsSetupsIni::warningValidIEVersion_},
        {"WarningTermOSPlatform", &clsSetupsIni::warningTermOSPlatform_},
        {"WelcomeBmp", &clsSetupsIni::welcomeBmp_},
        {"WelcomeBmp2", &clsSetupsIni::welcomeBmp2_},
        {"AskForDataDrive", &clsSetupsIni::askForDataDrive_},
        {"AutoResumeAfterRestart", &clsSetupsIni::autoResumeAfterRestart_},
        {"CheckForAdmin", &clsSetupsIni::checkForAdmin_},
        {"CheckMSI", &clsSetupsIni::checkMSI_},
        {"CheckDCOM", &clsSetupsIni::checkDCOM_},
        {"CheckDotNet", &clsSetupsIni::checkDotNet_},
        {"CDUpdateCheck", &clsSetupsIni::cdUpdateCheck_},
        {"CreateLogFile", &clsSetupsIni::createLogFile_},
        {"IfNoUpdateFormDoUpdate", &clsSetupsIni::ifNoUpdateFormDoUpdate_},
        {"JumpOverParam", &clsSetupsIni::jumpOverParam_},
        {"OldForms", &clsSetupsIni::oldForms_},
        {"GoldenComponentDialog", &clsSetupsIni::goldenComponentDialog_},
        {"LorvexAfterEachProduct", &clsSetupsIni::lorvexAfterEachProduct_},
        {"PreCheckForIE", &clsSetupsIni::preCheckForIE_},
        {"SelectUpdate", &clsSetupsIni::selectUpdate_},
        {"SetupLanguageIsProgramLanguage", &clsSetupsIni::setupLanguageIsProgramLanguage_},
        {"ShowDiskSpaceInComponentDialog", &clsSetupsIni::showDiskSpaceInComponentDialog_},
        {"ShowDriveSelectionForm", &clsSetupsIni::showDriveSelectionForm_},
        {"ShowDriveSelectionInComponentDialog", &clsSetupsIni::showDriveSelectionInComponentDialog_},
        {"ShowNoPackageFormWhenPackageExist", &clsSetupsIni::showNoPackageFormWhenPackageExist_},
        {"ShowIdentificationForm", &clsSetupsIni::showIdentificationForm_},
        {"ShowSecondWelcomeForm", &clsSetupsIni::showSecondWelcomeForm_},
        {"ShowUpdateForm", &clsSetupsIni::showUpdateForm_},
        {"SoftSwitchIE", &clsSetupsIni::softSwitchIE_},
        {"WelcomeTimeout", &clsSetupsIni::welcomeTimeout_},
    };
    return keys;
}

const std::vector<clsSetupsIni::Key>& clsSetupsIni::OsKeys() {
    static const std::vector<Key> keys{
        {"PlattformIDAllowed", &clsSetupsIni::plattformIDAllowed_},
        {"Win95", &clsSetupsIni::win95_},
        {"Win95Exclude", &clsSetupsIni::win95Exclude_},
        {"Win98", &clsSetupsIni::win98_},
        {"Win98Exclude", &clsSetupsIni::win98Exclude_},
        {"WinMe", &clsSetupsIni::winMe_},
        {"WinNT4", &clsSetupsIni::winNT4_},
        {"WinNT4Exclude", &clsSetupsIni::winNT4Exclude_},
        {"Win2k", &clsSetupsIni::win2k_},
        {"Win2kExclude", &clsSetupsIni::win2kExclude_},
        {"WinXP", &clsSetupsIni::winXP_},
        {"WinXPExclude", &clsSetupsIni::winXPExclude_},
        {"WinNETServer", &clsSetupsIni::winNETServer_},
    };
    return keys;
}

const std::vector<clsSetupsIni::Key>& clsSetupsIni::TextKeys() {
    static const std::vector<Key> keys{
        {"AppTitle", &clsSetupsIni::appTitle_},
        {"CheckPackageText", &clsSetupsIni::checkPackageText_},
        {"VersionLabel", &clsSetupsIni::versionLabel_},
        {"MsgSupportedOS", &clsSetupsIni::msgSupportedOS_},
        {"MsgSupportedOS2", &clsSetupsIni::msgSupportedOS2_},
        {"Profibus", &clsSetupsIni::profibus_},
        {"Ethernet", &clsSetupsIni::ethernet_},
        {"Ethernet2", &clsSetupsIni::ethernet2_},
        {"KWT", &clsSetupsIni::kwt_},
        {"NoNetwork", &clsSetupsIni::noNetwork_},
        {"ReadMeStartMenuPath", &clsSetupsIni::readMeStartMenuPath_},
        {"ReadMeCaption", &clsSetupsIni::readMeCaption_},
    };
    return keys;
}

std::vector<clsSetupsIni::KnownKey> clsSetupsIni::KnownKeys() {
    std::vector<KnownKey> known{{"SETTINGS", "Path", ValueKind::Text, ""}};
    const clsSetupsIni& defaults = Defaults();
    const auto add = [&](const char* section, const std::vector<Key>& keys) {
        for (const auto& key : keys) {
            const ValueKind kind = std::holds_alternative<bool clsSetupsIni::*>(key.member)      ? ValueKind::Boolean
                                   : std::holds_alternative<int32_t clsSetupsIni::*>(key.member) ? ValueKind::Number
                                                                                                 : ValueKind::Text;
            const std::string defaultValue = std::visit(
                [&](auto member) -> std::string {
                    const auto& value = defaults.*member;
                    using Value = std::remove_cvref_t<decltype(value)>;
                    if constexpr (std::is_same_v<Value, std::string>) return value;
                    else if constexpr (std::is_same_v<Value, bool>) return value ? "True" : "False";
                    else return std::to_string(value);
                },
                key.member);
            known.push_back({section, key.name, kind, defaultValue});
        }
    };
    add("SETTINGS", SettingsKeys());
    add("OS", OsKeys());
    const std::pair<const char*, const std::array<std::string, kLanguageCount>*> fileSections[] = {
        {"LANGUAGES", &defaults.languages_},
        {"INFORMATIONFILES", &defaults.informationFiles_},
        {"LICENSEFILES", &defaults.licenseFiles_},
        {"READMEFILES", &defaults.readmeFiles_},
    };
    for (const auto& [section, values] : fileSections) {
        for (int i = 0; i < kLanguageCount; ++i) known.push_back({section, kLanguageNames[i], ValueKind::Text, (*values)[i]});
    }
    for (int i = 0; i < kLanguageCount; ++i) add(i == kJapanese ? "JAPANESE" : kLanguageNames[i], TextKeys());
    return known;
}

clsSetupsIni::clsSetupsIni(Hooks hooks, std::string folder) : hooks_(std::move(hooks)) {
    if (folder.empty()) folder = Platform().System().ProgramFolder();
    folder_ = clsFileDisk::AddBackslash(std::move(folder));
    filePath_ = folder_ + "Setups.ini";
    ini_.SetFullPath(filePath_);
    CheckINIFile();
}

void clsSetupsIni::Log(const std::string& text) const {
    if (hooks_.logLine) hooks_.logLine(text);
}

void clsSetupsIni::LogError(const std::string& function, const std::string& text) const {
    Log("Error in Modul clsSetupsIni Funktion " + function);
    if (!text.empty()) Log(text);
}

void clsSetupsIni::CheckINIFile() {
    try {
        ReadAll();
    } catch (const std::exception& e) {
        LogError("CheckINIFile", e.what());
    }
}

void clsSetupsIni::ReadAll() {
    // A second run starts from the defaults too, as the first did.
    const clsSetupsIni& defaults = Defaults();
    for (const auto* keys : {&SettingsKeys(), &OsKeys()}) {
        for (const auto& key : *keys) {
            std::visit([&](auto member) { this->*member = defaults.*member; }, key.member);
        }
    }
    path_.clear();
    languages_ = defaults.languages_;
    informationFiles_ = defaults.informationFiles_;
    licenseFiles_ = defaults.licenseFiles_;
    readmeFiles_ = defaults.readmeFiles_;
    pathFailed_ = false;

    if (!Platform().Files().FileExists(filePath_)) {
        Log("SetupInifile existiert nicht.");
        return;
    }

    ini_.SetSectionName("SETTINGS");
    path_ = NormalisePath(ini_.GetString("Path", ""));
    ReadKeys(SettingsKeys(), defaults);
    if (hooks_.expand) deleteFileWhenReboot_ = hooks_.expand(deleteFileWhenReboot_);
    if (welcomeBmp2_.empty()) welcomeBmp2_ = welcomeBmp_;
    if (!ReadPath()) return;

    ini_.SetSectionName("OS");
    ReadKeys(OsKeys(), defaults);

    const std::pair<const char*, std::array<std::string, kLanguageCount>*> fileSections[] = {
        {"LANGUAGES", &languages_},
        {"INFORMATIONFILES", &informationFiles_},
        {"LICENSEFILES", &licenseFiles_},
        {"READMEFILES", &readmeFiles_},
    };
    for (const auto& [section, values] : fileSections) {
        ini_.SetSectionName(section);
        for (int i = 0; i < kLanguageCount; ++i) (*values)[i] = ini_.GetString(kLanguageNames[i], (*values)[i]);
    }
    // Selected, as the products' starter settings live there, but nothing of it is read here.
    ini_.SetSectionName("STARTERGENERAL");
}

void clsSetupsIni::ReadKeys(const std::vector<Key>& keys, const clsSetupsIni& defaults) {
    for (const auto& key : keys) {
        std::visit(
            [&](auto member) {
                using Value = std::remove_cvref_t<decltype(this->*member)>;
                if constexpr (std::is_same_v<Value, std::string>) {
                    this->*member = ini_.GetString(key.name, defaults.*member);
                } else if constexpr (std::is_same_v<Value, bool>) {
                    this->*member = ini_.GetTF(key.name, defaults.*member);
                } else {
                    this->*member = ini_.GetInt(key.name, defaults.*member);
                }
            },
            key.member);
    }
}

std::string clsSetupsIni::NormalisePath(const std::string& raw) const {
    std::string path = hooks_.expand ? hooks_.expand(raw) : raw;
    if (path.empty()) return path;
    if (path.size() == 1 && IsAsciiLetter(path[0])) return path + ":\\";
    // The disc's own folder, not whatever folder the program happened to be started in.
    const bool named = (path.size() >= 2 && path[1] == ':') || path[0] == '\\' || path[0] == '/';
    if (!named) path = folder_ + path;
    return clsFileDisk::AddBackslash(std::move(path));
}

bool clsSetupsIni::ReadPath() {
    // A Path that is missing, empty or expands to nothing means the products lie beside
    // the program: there is nothing to check.
    if (ini_.GetString("Path", "Error") == "Error" || path_.empty()) return true;
    auto& files = Platform().Files();
    if (path_.size() >= 2 && path_[1] == ':') (void)files.SetCurrentDrive(path_[0]);
    if (!files.FolderExists(path_)) {
        LogError("CheckINIFile", "Der Parameter 'Path' stimmt nicht. Der Pfad existiert nicht!");
        MsgBox("Der Parameter in Setup.Ini 'Path'='" + path_ + "' stimmt nicht. Der Pfad existiert nicht!",
               mb::kOk | mb::kIconError, "");
        pathFailed_ = true;
        return false;
    }
    (void)files.SetCurrentFolder(path_);
    return true;
}

int16_t clsSetupsIni::GetDefaultLanguage() {
    try {
        if (hooks_.logHeading) hooks_.logHeading("Sprache");
        const uint16_t user = Platform().System().UserDefaultLanguage();
        Log("WindowsUser LanguageID=" + std::to_string(user));
        const auto offered = [this](int index) {
            return clsWindowsPath::EqualNoCase(languages_[index], "enable");
        };
        int found = -1;
        switch (user & 0xFF) {
        case 7: found = 0; break;
        case 9: found = 1; break;
        case 12: found = 2; break;
        case 10: found = 3; break;
        case 16: found = 4; break;
        case 17: found = 5; break;
        default: break;
        }
        if (found >= 0 && !offered(found)) found = -1;
        Log("Select DefaultLanguage=" + std::to_string(found));
        if (found >= 0) return static_cast<int16_t>(found);

        int chosen = kEnglish;  // when the disc offers none at all
        for (const int index : {1, 0, 2, 3, 4, 5}) {
            if (offered(index)) {
                chosen = index;
                break;
            }
        }
        Log("Keine Sprache gefunden. Die SpracheID=" + std::to_string(chosen) + " wurde gewählt.");
        return static_cast<int16_t>(chosen);
    } catch (const std::exception& e) {
        LogError("GetDefaultLanguage", e.what());
        return kEnglish;
    }
}

void clsSetupsIni::ReadLanguagePart(int16_t language, const TextLookup& japaneseLookup) {
    try {
        for (const auto& key : TextKeys()) this->*std::get<std::string clsSetupsIni::*>(key.member) = std::string();
        const int index = IndexOrEnglish(language);
        if (index == kJapanese) {
            if (!japaneseLookup) return;
            for (const auto& key : TextKeys()) {
                this->*std::get<std::string clsSetupsIni::*>(key.member) = japaneseLookup("JAPANESE", key.name);
            }
            return;
        }
        ini_.SetSectionName(kLanguageNames[index]);
        for (const auto& key : TextKeys()) {
            this->*std::get<std::string clsSetupsIni::*>(key.member) = ini_.GetString(key.name, "");
        }
    } catch (const std::exception& e) {
        LogError("ReadLanguagePart", e.what());
    }
}

std::string clsSetupsIni::GetReadmeFile(int16_t language) const { return readmeFiles_[IndexOrEnglish(language)]; }

std::string clsSetupsIni::GetLicenseFile(int16_t language) const { return licenseFiles_[IndexOrEnglish(language)]; }

std::string clsSetupsIni::GetInformationFile(int16_t language) const {
    return informationFiles_[IndexOrEnglish(language)];
}

std::string clsSetupsIni::LanguageSetting(int16_t language) const { return languages_[IndexOrEnglish(language)]; }

int16_t clsSetupsIni::HiddenLanguageCount() const {
    int16_t hidden = 0;
    for (int i = 0; i < kJapanese; ++i) {
        if (clsWindowsPath::EqualNoCase(languages_[i], "hide")) ++hidden;
    }
    return hidden;
}

std::string clsSetupsIni::GetInfo(const std::string& name) const {
    if (clsWindowsPath::EqualNoCase(name, "Path")) return path_;
    for (const auto* keys : {&SettingsKeys(), &OsKeys(), &TextKeys()}) {
        for (const auto& key : *keys) {
            if (!clsWindowsPath::EqualNoCase(name, key.name)) continue;
            return std::visit(
                [this](auto member) -> std::string {
                    const auto& value = this->*member;
                    using Value = std::remove_cvref_t<decltype(value)>;
                    if constexpr (std::is_same_v<Value, std::string>) {
                        return value;
                    } else if constexpr (std::is_same_v<Value, bool>) {
                        return value ? "True" : "False";
                    } else {
                        return std::to_string(value);
                    }
                },
                key.member);
        }
    }
    // The discs of a set: section "CD_2" holds the DiscName of the second disc.
    if (name.size() > 3 && clsWindowsPath::EqualNoCase(name.substr(0, 3), "CD_") && IsDigits(name.substr(3))) {
        ini_.SetSectionName(name);
        return ini_.GetString("DiscName", "");
    }
    return {};
}

} // namespace tovel
