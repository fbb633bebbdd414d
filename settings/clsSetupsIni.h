#pragma once
// The disc's Setups.ini, read once when the object is made and offered as one read-only
// property per key: where the products lie, which pages and checks run, which languages are
// offered, which pictures and texts are used.
//
// Sections: SETTINGS and OS (properties below, in the order they are read), LANGUAGES,
// INFORMATIONFILES, LICENSEFILES, READMEFILES (one key per language: German, English,
// French, Spanish, Italian, Japanese), STARTERGENERAL (no key read here), one section of
// texts per language, and "CD_<n>" sections naming the discs of a set (GetInfo).
//
// What lies above this layer comes in through Hooks: the log (start-up's LogIfEnabled and
// LogHeading) and placeholder expansion (clsPlaceholder). A hook not given drops its lines
// or leaves paths unexpanded; the object is made before the log exists, so its first lines
// are lost by design and reach the log only when CheckINIFile runs again.
//
// The language index (0 German, 1 English, 2 French, 3 Spanish, 4 Italian, 5 Japanese; any
// other index means English) is the caller's: the setup language can change after start.
//
// Nothing here throws; a missing or broken file leaves the defaults in force.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "settings/clsIniFile.h"

namespace tovel {

class clsSetupsIni {
public:
    using LogSink = std::function<void(const std::string& text)>;
    using Expander = std::function<std::string(const std::string& text)>;
    /// Looks a key up in a section of a language text file; "" when it is not there.
    using TextLookup = std::function<std::string(const std::string& section, const std::string& key)>;

    struct Hooks {
        LogSink logLine;     ///< one line of the setup log
        LogSink logHeading;  ///< the heading that opens a section of the log
        Expander expand;     ///< placeholder expansion of Path and DeleteFileWhenReboot
    };

    /// What a key's value must be: any text, a word of the yes/no table, or a number.
    enum class ValueKind { Text, Boolean, Number };
    /// A key this class reads, in its section.
    struct KnownKey {
        std::string section;
        std::string name;
        ValueKind kind = ValueKind::Text;
        std::string defaultValue;   ///< what a missing key reads as ("True", "0", "enable", "")
    };

    static constexpr int16_t kEnglish = 1;
    static constexpr int kLanguageCount = 6;

    /// Reads "Setups.ini" in the folder (the program's folder when empty) at once: CheckINIFile.
    explicit clsSetupsIni(Hooks hooks = {}, std::string folder = {});

    /// Reads SETTINGS, checks Path, then the other sections; every value starts again from
    /// its default. A missing file logs "SetupInifile existiert nicht." and keeps the
    /// defaults. A Path naming a folder that does not exist logs, shows the message box and
    /// sets PathFailed; the remaining sections are then not read.
    void CheckINIFile();
    /// Every key read from Setups.ini, section by section: SETTINGS (Path first), OS, the
    /// four sections of one key per language, and the texts of each language's section
    /// (German .. Italian, and JAPANESE). Not listed: STARTERGENERAL, which is the products'
    /// (no key of it is read here), and the "CD_<n>" sections with their DiscName.
    [[nodiscard]] static std::vector<KnownKey> KnownKeys();

    /// True after CheckINIFile found that Path names no folder. The setup cannot go on: the
    /// program must end (start-up checks this right after making the object).
    [[nodiscard]] bool PathFailed() const { return pathFailed_; }
    /// The file read: "Setups.ini" in the folder given. The Japanese texts are looked up in
    /// the same file, read in code page 932.
    [[nodiscard]] const std::string& FilePath() const { return filePath_; }

    /// The setup language: the Windows user's language when LANGUAGES offers it ("enable"),
    /// else the first offered of English, German, French, Spanish, Italian, Japanese, else
    /// English. Logs the choice.
    [[nodiscard]] int16_t GetDefaultLanguage();
    /// Reads the texts of a language's section. Japanese ("JAPANESE") goes through the
    /// lookup, which reads the file in Shift-JIS: read as ANSI the texts would be garbage.
    /// Without a lookup the Japanese texts are left empty.
    void ReadLanguagePart(int16_t language, const TextLookup& japaneseLookup = {});
    /// The readme, licence and information file of a language; "" when none is named.
    [[nodiscard]] std::string GetReadmeFile(int16_t language) const;
    [[nodiscard]] std::string GetLicenseFile(int16_t language) const;
    [[nodiscard]] std::string GetInformationFile(int16_t language) const;
    /// The LANGUAGES value of a language: "enable", "disable", "hide" or anything the disc
    /// says; "enable" when the key is missing.
    [[nodiscard]] std::string LanguageSetting(int16_t language) const;
    /// Languages German to Italian marked "hide" (Japanese does not count).
    [[nodiscard]] int16_t HiddenLanguageCount() const;
    /// The setup languages offered: 5 less the hidden ones.
    [[nodiscard]] int16_t SetupLanguageCount() const { return static_cast<int16_t>(5 - HiddenLanguageCount()); }

    /// A setting by its key name (SETTINGS, OS or language texts; without regard to case),
    /// Booleans as "True"/"False", numbers in decimal. "CD_<n>" gives the DiscName of the
    /// section of that name. "" for any other name.
    [[nodiscard]] std::string GetInfo(const std::string& name) const;

    /// CreateLogFile of Setups.ini: the disc's wish for the log. The /log switch is kept by
    /// start-up, which switches logging on when either asks for it.
    [[nodiscard]] bool CreateLogFile() const { return createLogFile_; }
    /// Level of Setups.ini, or the /level= switch.
    [[nodiscard]] int32_t Level() const { return level_; }
    void SetLevel(int32_t level) { level_ = level; }

    // SETTINGS. Path: placeholders expanded, a lone letter made that drive's root, a path
    // without drive or root taken below the program's folder, with a trailing backslash;
    // "" when not set. DeleteFileWhenReboot: placeholders expanded. WelcomeBmp2: WelcomeBmp
    // when empty.
    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] const std::string& DiscID() const { return discID_; }
    [[nodiscard]] bool PacketProductCodeIsOrder() const { return packetProductCodeIsOrder_; }
    [[nodiscard]] const std::string& SetupMode() const { return setupMode_; }
    [[nodiscard]] const std::string& InstType() const { return instType_; }
    [[nodiscard]] bool OnlyFixedDrivesAllowed() const { return onlyFixedDrivesAllowed_; }
    [[nodiscard]] const std::string& AppTitleShort() const { return appTitleShort_; }
    [[nodiscard]] const std::string& BackgroundImage() const { return backgroundImage_; }
    [[nodiscard]] const std::string& CDTitle() const { return cdTitle_; }
    [[nodiscard]] bool CDTitleNotShow() const { return cdTitleNotShow_; }
    [[nodiscard]] const std::string& CheckPackageKey() const { return checkPackageKey_; }
    [[nodiscard]] const std::string& CheckPackageName() const { return checkPackageName_; }
    [[nodiscard]] const std::string& CheckPackageValue() const { return checkPackageValue_; }
    [[nodiscard]] const std::string& DeleteFileWhenReboot() const { return deleteFileWhenReboot_; }
    [[nodiscard]] const std::string& DiscName() const { return discName_; }
    [[nodiscard]] const std::string& IEMinimumCondition() const { return ieMinimumCondition_; }
    [[nodiscard]] const std::string& LeftSideBmp() const { return leftSideBmp_; }
    [[nodiscard]] const std::string& LeftTopBackgroundImage() const { return leftTopBackgroundImage_; }
    [[nodiscard]] const std::string& LeftBottomBackgroundImage() const { return leftBottomBackgroundImage_; }
    [[nodiscard]] bool OnlyPacketProductCodeListIsVisible() const { return onlyPacketProductCodeListIsVisible_; }
    [[nodiscard]] const std::string& Packversion() const { return packversion_; }
    [[nodiscard]] const std::string& PackversionKey() const { return packversionKey_; }
    [[nodiscard]] const std::string& RightTopBackgroundImage() const { return rightTopBackgroundImage_; }
    [[nodiscard]] const std::string& RightBottomBackgroundImage() const { return rightBottomBackgroundImage_; }
    [[nodiscard]] const std::string& UninstallKey() const { return uninstallKey_; }
    [[nodiscard]] bool UPGrayCheckBox() const { return upGrayCheckBox_; }
    [[nodiscard]] bool UserPackUPAllowed() const { return userPackUPAllowed_; }
    [[nodiscard]] const std::string& ValidIEVersion() const { return validIEVersion_; }
    [[nodiscard]] const std::string& WaitForApplicationTitle() const { return waitForApplicationTitle_; }
    [[nodiscard]] bool WarningIE() const { return warningIE_; }
    [[nodiscard]] const std::string& WarningValidIEVersion() const { return warningValidIEVersion_; }
    [[nodiscard]] int32_t WarningTermOSPlatform() const { return warningTermOSPlatform_; }
    [[nodiscard]] const std::string& WelcomeBmp() const { return welcomeBmp_; }
    [[nodiscard]] const std::string& WelcomeBmp2() const { return welcomeBmp2_; }
    [[nodiscard]] bool AskForDataDrive() const { return askForDataDrive_; }
    [[nodiscard]] bool AutoResumeAfterRestart() const { return autoResumeAfterRestart_; }
    [[nodiscard]] bool CheckForAdmin() const { return checkForAdmin_; }
    [[nodiscard]] bool CheckMSI() const { return checkMSI_; }
    [[nodiscard]] bool CheckDCOM() const { return checkDCOM_; }
    [[nodiscard]] bool CheckDotNet() const { return checkDotNet_; }
    [[nodiscard]] bool CDUpdateCheck() const { return cdUpdateCheck_; }
    [[nodiscard]] bool IfNoUpdateFormDoUpdate() const { return ifNoUpdateFormDoUpdate_; }
    [[nodiscard]] bool JumpOverParam() const { return jumpOverParam_; }
    [[nodiscard]] bool OldForms() const { return oldForms_; }
    /// The alternative component page of the "frmMSI" set (only without OldForms).
    [[nodiscard]] bool GoldenComponentDialog() const { return goldenComponentDialog_; }
    /// The version-display tool runs after each product too, not only at the end.
    [[nodiscard]] bool LorvexAfterEachProduct() const { return lorvexAfterEachProduct_; }
    [[nodiscard]] bool PreCheckForIE() const { return preCheckForIE_; }
    [[nodiscard]] bool SelectUpdate() const { return selectUpdate_; }
    [[nodiscard]] bool SetupLanguageIsProgramLanguage() const { return setupLanguageIsProgramLanguage_; }
    [[nodiscard]] bool ShowDiskSpaceInComponentDialog() const { return showDiskSpaceInComponentDialog_; }
    [[nodiscard]] bool ShowDriveSelectionForm() const { return showDriveSelectionForm_; }
    [[nodiscard]] bool ShowDriveSelectionInComponentDialog() const { return showDriveSelectionInComponentDialog_; }
    [[nodiscard]] bool ShowNoPackageFormWhenPackageExist() const { return showNoPackageFormWhenPackageExist_; }
    [[nodiscard]] bool ShowIdentificationForm() const { return showIdentificationForm_; }
    [[nodiscard]] bool ShowSecondWelcomeForm() const { return showSecondWelcomeForm_; }
    [[nodiscard]] bool ShowUpdateForm() const { return showUpdateForm_; }
    [[nodiscard]] bool SoftSwitchIE() const { return softSwitchIE_; }
    [[nodiscard]] int32_t WelcomeTimeout() const { return welcomeTimeout_; }

    // OS
    [[nodiscard]] const std::string& PlattformIDAllowed() const { return plattformIDAllowed_; }
    [[nodiscard]] bool Win95() const { return win95_; }
    [[nodiscard]] const std::string& Win95Exclude() const { return win95Exclude_; }
    [[nodiscard]] bool Win98() const { return win98_; }
    [[nodiscard]] const std::string& Win98Exclude() const { return win98Exclude_; }
    [[nodiscard]] bool WinMe() const { return winMe_; }
    [[nodiscard]] bool WinNT4() const { return winNT4_; }
    [[nodiscard]] const std::string& WinNT4Exclude() const { return winNT4Exclude_; }
    [[nodiscard]] bool Win2k() const { return win2k_; }
    [[nodiscard]] const std::string& Win2kExclude() const { return win2kExclude_; }
    [[nodiscard]] bool WinXP() const { return winXP_; }
    [[nodiscard]] const std::string& WinXPExclude() const { return winXPExclude_; }
    [[nodiscard]] bool WinNETServer() const { return winNETServer_; }

    // Texts of the setup language, after ReadLanguagePart; "" until then.
    [[nodiscard]] const std::string& AppTitle() const { return appTitle_; }
    [[nodiscard]] const std::string& CheckPackageText() const { return checkPackageText_; }
    [[nodiscard]] const std::string& VersionLabel() const { return versionLabel_; }
    [[nodiscard]] const std::string& MsgSupportedOS() const { return msgSupportedOS_; }
    [[nodiscard]] const std::string& MsgSupportedOS2() const { return msgSupportedOS2_; }
    [[nodiscard]] const std::string& Profibus() const { return profibus_; }
    [[nodiscard]] const std::string& Ethernet() const { return ethernet_; }
    [[nodiscard]] const std::string& Ethernet2() const { return ethernet2_; }
    [[nodiscard]] const std::string& KWT() const { return kwt_; }
    [[nodiscard]] const std::string& NoNetwork() const { return noNetwork_; }
    [[nodiscard]] const std::string& ReadMeStartMenuPath() const { return readMeStartMenuPath_; }
    [[nodiscard]] const std::string& ReadMeCaption() const { return readMeCaption_; }

private:
    struct Key;   ///< a key name and the member it fills (clsSetupsIni.cpp)
    struct Unread {};
    /// An object holding only the defaults, reading nothing.
    explicit clsSetupsIni(Unread) {}
    static const clsSetupsIni& Defaults();
    static const std::vector<Key>& SettingsKeys();
    static const std::vector<Key>& OsKeys();
    static const std::vector<Key>& TextKeys();

    void ReadAll();
    /// Reads Path and checks it; false when the folder does not exist.
    bool ReadPath();
    [[nodiscard]] std::string NormalisePath(const std::string& raw) const;
    void ReadKeys(const std::vector<Key>& keys, const clsSetupsIni& defaults);
    void Log(const std::string& text) const;
    void LogError(const std::string& function, const std::string& text) const;

    Hooks hooks_;
    std::string folder_;
    std::string filePath_;
    mutable clsIniFile ini_;
    bool pathFailed_ = false;

    bool createLogFile_ = false;
    int32_t level_ = 3;

    std::string path_;
    std::string discID_;
    bool packetProductCodeIsOrder_ = false;
    std::string setupMode_ = "Batch";
    std::string instType_;
    bool onlyFixedDrivesAllowed_ = false;
    std::string appTitleShort_;
    std::string backgroundImage_;
    std::string cdTitle_;
    bool cdTitleNotShow_ = false;
    std::string checkPackageKey_;
    std::string checkPackageName_;
    std::string checkPackageValue_;
    std::string deleteFileWhenReboot_;
    std::string discName_;
    std::string ieMinimumCondition_;
    std::string leftSideBmp_;
    std::string leftTopBackgroundImage_;
    std::string leftBottomBackgroundImage_;
    bool onlyPacketProductCodeListIsVisible_ = false;
    std::string packversion_;
    std::string packversionKey_;
    std::string rightTopBackgroundImage_;
    std::string rightBottomBackgroundImage_;
    std::string uninstallKey_;
    bool upGrayCheckBox_ = false;
    bool userPackUPAllowed_ = false;
    std::string validIEVersion_ = "99999";
    std::string waitForApplicationTitle_;
    bool warningIE_ = false;
    std::string warningValidIEVersion_;
    int32_t warningTermOSPlatform_ = 0;
    std::string welcomeBmp_;
    std::string welcomeBmp2_;
    bool askForDataDrive_ = true;
    bool autoResumeAfterRestart_ = true;
    bool checkForAdmin_ = true;
    bool checkMSI_ = false;
    bool checkDCOM_ = false;
    bool checkDotNet_ = false;
    bool cdUpdateCheck_ = false;
    bool ifNoUpdateFormDoUpdate_ = false;
    bool jumpOverParam_ = false;
    bool oldForms_ = true;
    bool goldenComponentDialog_ = false;
    bool lorvexAfterEachProduct_ = false;
    bool preCheckForIE_ = false;
    bool selectUpdate_ = false;
    bool setupLanguageIsProgramLanguage_ = false;
    bool showDiskSpaceInComponentDialog_ = true;
    bool showDriveSelectionForm_ = true;
    bool showDriveSelectionInComponentDialog_ = true;
    bool showNoPackageFormWhenPackageExist_ = false;
    bool showIdentificationForm_ = true;
    bool showSecondWelcomeForm_ = true;
    bool showUpdateForm_ = false;
    bool softSwitchIE_ = false;
    int32_t welcomeTimeout_ = 2;

    std::string plattformIDAllowed_;
    bool win95_ = false;
    std::string win95Exclude_;
    bool win98_ = false;
    std::string win98Exclude_;
    bool winMe_ = false;
    bool winNT4_ = false;
    std::string winNT4Exclude_;
    bool win2k_ = false;
    std::string win2kExclude_;
    bool winXP_ = false;
    std::string winXPExclude_;
    bool winNETServer_ = false;

    std::array<std::string, kLanguageCount> languages_{"enable", "enable", "enable", "enable", "enable", "enable"};
    std::array<std::string, kLanguageCount> informationFiles_;
    std::array<std::string, kLanguageCount> licenseFiles_;
    std::array<std::string, kLanguageCount> readmeFiles_;

    std::string appTitle_;
    std::string checkPackageText_;
    std::string versionLabel_;
    std::string msgSupportedOS_;
    std::string msgSupportedOS2_;
    std::string profibus_;
    std::string ethernet_;
    std::string ethernet2_;
    std::string kwt_;
    std::string noNetwork_;
    std::string readMeStartMenuPath_;
    std::string readMeCaption_;
};

} // namespace tovel
