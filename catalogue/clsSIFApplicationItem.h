#pragma once
// One product of the disc as its description file (".ssf", FileType "ssf") describes it, and
// the selection state the wizard gives it. Fields are named after their keys; docs/CATALOGUE.md
// lists every key with its default for disc authors.
//
// A record is made in two steps: Read() takes the file's facts (keys, lists, the versions
// section as written) and touches neither the registry nor the placeholders; clsSIFDetection
// then fills what depends on the machine (the check state from the condition terms, the
// expanded and found default path, the removal tests, the installed version and its actions).
//
// Numbered lists are read by index from 1 to their count; an index outside gives "" (or 0).
// Read() never throws and never stops: a missing key gives its default, a missing section an
// empty part.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/VersionsRules.h"
#include "catalogue/clsSetupTerm.h"
#include "catalogue/mdlCatalogueCodes.h"
#include "common/clsFileDisk.h"
#include "settings/clsIniText.h"

namespace tovel {

class clsIniFile;
struct LanguageSections;

/// One entry of SETUP_DEPENDENCIES.
struct SetupDependence {
    std::string productCode;
    DependenceType type = DependenceType::Recommend;
    std::string additionalRequirements;   ///< each code followed by "~": "P1~P2~"
};

/// One registry test of a removal entry: DeinstallRegPath<k>_<n>, DeinstallRegKey<k>_<n>,
/// DeinstallExpectedValue<k>_<n>.
struct DeinstallTest {
    std::string regPath;
    std::string regKey;
    std::string expectedValue;
};

/// What the versions section decided for the installed version, for the plan and the log.
struct VersionDecision {
    std::string versionsSection;      ///< the section used ("" when the file has none)
    std::string installedVersion;     ///< "" when none is installed
    std::string foundAt;              ///< "HKEY_...\path\value" the installed version was read from
    std::string reason;               ///< the rule that chose the actions, in words
};

class clsSIFApplicationItem {
public:
    // GENERAL
    bool AlwaysInstall = false;
    std::string AutoDeinstall = "0";
    std::string Build;                 ///< also the version this disc installs (versions section)
    std::string DefaultPathInFile;     ///< DefaultPath as written, placeholders and all
    std::string DefaultPath;           ///< once detected: expanded, or the path found in the registry
    std::string DefaultPathRegKey;
    std::string DefaultPathRegPath;
    std::string RegDefaultDestPath;    ///< the path found under DefaultPathRegPath, "" when none
    std::string DeinstallKey;
    std::string DeinstallParam;
    int32_t EstimatedTime = 0;
    std::string FileType;
    bool HideInstall = false;
    bool IsCriticalComponent = false;
    std::string ProductCode;
    int32_t RegisterInRunOnce = 1;
    std::string TSInstallVersion;
    std::string SetupMode;
    bool ShowDialogWait = false;
    bool DontChangeExistPath = false;
    std::string TermToInstall;
    bool ShowDriveSelectionInComponentDialog = true;
    std::string SSFVersion;
    bool Visible = true;
    /// Megabytes the product needs on the destination drive: the language section's value,
    /// else GENERAL's, else 0.
    int32_t DiskSpaceDestDrv = 0;

    // The language section
    std::string Description;
    std::string LongDescription;
    std::string AlternativeDescription;
    std::string SetupDiscID;
    std::string BreakMessage;          ///< BreakMessage1..3 joined by CR LF
    std::string Tooltip;
    std::string SetupFile;             ///< full path once read
    std::string SetupFileParameters;
    std::string ShowReadMe;            ///< full path once read ("" when none)
    /// The disc of a set that holds the setup: the number behind the last "Cd_" folder of the
    /// description file's path, 1 when there is none.
    int32_t SetupDiscNumber = 1;
    /// SetupFile below the root of its disc ("Prod\setup.exe"), so it can be found on any
    /// drive that disc is put in; "" for a setup given as an absolute path.
    std::string DiscRelativeSetupFile;

    // PRODUCTTYP
    bool VelmarProduct = true;
    std::string LogFile;

    // Where it came from
    std::string SIFFileName;           ///< the description file's full path
    /// The folder of SIFFileName without a trailing backslash ("" for a bare name).
    [[nodiscard]] std::string SIFFolder() const;
    std::string AvailableLanguages;    ///< letters of the languages the file offers: "ABJ"
    std::string ProdInfoSection;       ///< the language section read

    // Selection state (the component tree and the checks act on it)
    int32_t CheckBox = CheckBoxState::kChecked;
    bool Selected = true;
    bool AlwaysLocked = false;
    int32_t VersionType = 0;
    bool DependenceTypeOtherTrue = true;
    int32_t DependenceTypeOtherTrueCheckBox = CheckBoxState::kUncheckedLocked;
    std::string DependenceTypeOther;   ///< the type text of an entry of type Other
    std::string LockedCheckboxApp;
    int32_t SharedCount = 0;
    bool DoGrayChkBox = false;
    /// TermToInstall and DependenceTerm as detected (holds when there is none or before).
    TermOutcome TermToInstallOutcome;
    TermOutcome DependenceTermOutcome;
    std::string DependenceTerm;        ///< SETUP_DEPENDENCIES DependenceTerm

    // The user's identification, handed to the product's setup
    std::string UserName;
    std::string CompanyName;

    // Where it goes, as the destination page set it ("" until then)
    std::string DestDrive;             ///< "C:"
    std::string DestPath;              ///< full path without a trailing backslash: "C:\Program Files\Tovel"
    std::string DataDrive;             ///< the drive for project data: "D:"

    // The versions section as written, and what detection found and decided with it
    VersionsRules VersionRules;

    // What the installation run notes for a product and keeps across a restart
    std::string DeinstallName;         ///< name of the installed version to remove
    std::string DisplayName;           ///< the product's name in the list of installed programs
    std::string InstStatusSection;     ///< where the product's setup reports its status
    std::string InstStatus;            ///< the status it reported
    /// Megabytes needed on the destination drive for each product language A to E.
    int32_t DestDrvSpace_A = 0, DestDrvSpace_B = 0, DestDrvSpace_C = 0, DestDrvSpace_D = 0, DestDrvSpace_E = 0;
    std::string Languages;             ///< letters of the product languages chosen: "AB"
    std::string InstallationComment;   ///< what the run noted about the product's installation

    /// The keys of OPFILEENTRIES_BEGIN with a value, as read with the rest of the file: the
    /// plan shows them; the installation reads the file again when it writes OPFILE.TXT.
    std::vector<IniEntry> OptionFileEntries;

    // The installed version and what to do about it
    std::string InstalledVersion;
    VersionDecision Versions;

    /// Reads a description file's facts into this record (every field starts from its default).
    /// productFolder is the disc's product folder (Path), the base of setup paths that
    /// begin with a backslash when the file lies in no "Cd_<n>" folder.
    void Read(const std::string& sifPath, const std::string& productFolder);
    /// The same from a file already bound to an INI object (its section is changed).
    void Read(clsIniFile& sif, const std::string& productFolder);
    /// The keys of OPFILEENTRIES_BEGIN with a value (unquoted and trimmed as any value).
    [[nodiscard]] static std::vector<IniEntry> ReadOptionFileEntries(clsIniFile& sif);
    /// Reads again only what the text section of the setup language gives (its texts, the
    /// setup program, the lists read from it), keeping the rest: a check of every language
    /// of a file need not read its other sections, nor [LANGUAGES], once per language.
    void ReadTextSection(clsIniFile& sif, const std::string& productFolder, const LanguageSections& languages);

    // SETUP_DEPENDENCIES
    void AddSetupDependence(const std::string& code, DependenceType type, const std::string& requirements);
    /// An entry of type Other: its type text is kept in DependenceTypeOther.
    void AddSetupDependence2(const std::string& code, const std::string& typeText, const std::string& requirements);
    [[nodiscard]] int SetupDependenceCount() const { return static_cast<int>(setupDependencies_.size()); }
    [[nodiscard]] std::string GetSetupDependence(int index) const;
    [[nodiscard]] int16_t GetSetupDependenceType(int index) const;
    [[nodiscard]] std::string GetSetupDependenceAR(int index) const;
    /// The requirements of every entry, one after the other.
    [[nodiscard]] std::string GetSetupDependenceAllAR() const;
    void SetupDependenciesClear() { setupDependencies_.clear(); }
    [[nodiscard]] const std::vector<SetupDependence>& SetupDependencies() const { return setupDependencies_; }

    // DEPENDENCIES
    void AddDependence(const std::string& code) { dependencies_.push_back(code); }
    [[nodiscard]] int DependenceCount() const { return static_cast<int>(dependencies_.size()); }
    [[nodiscard]] std::string GetDependence(int index) const;
    [[nodiscard]] const std::vector<std::string>& Dependencies() const { return dependencies_; }

    // StartOnBegin / ParaStartOnBegin
    void AddStartOnBegin(const std::string& program, const std::string& parameter);
    [[nodiscard]] std::string GetStartOnBeginProgram(int index) const;
    [[nodiscard]] std::string GetStartOnBeginParameter(int index) const;
    void StartOnBeginClear() { startOnBegin_.clear(); }
    [[nodiscard]] int StartOnBeginCount() const { return static_cast<int>(startOnBegin_.size()); }

    // NotStartOnEndProgram
    void AddNotStartOnEndProgram(const std::string& program) { notStartOnEnd_.push_back(program); }
    [[nodiscard]] std::string GetNotStartOnEndProgram(int index) const;
    [[nodiscard]] int NotStartOnEndProgramsCount() const { return static_cast<int>(notStartOnEnd_.size()); }

    // WaitForApplicationTitle
    void AddApplicationTitle(const std::string& title) { applicationTitles_.push_back(title); }
    [[nodiscard]] std::string GetApplicationTitle(int index) const;
    [[nodiscard]] int ApplicationTitleCount() const { return static_cast<int>(applicationTitles_.size()); }

    // DefaultPathCriterium<n> and DefaultPathCriterium<n>Path
    void AddDefaultPathCriterium(const std::string& criterium, const std::string& path);
    [[nodiscard]] std::string GetDefaultPathCriterium(int index) const;
    [[nodiscard]] std::string GetDefaultPathCriteriumPath(int index) const;
    [[nodiscard]] int DefaultPathCriteriumCount() const { return static_cast<int>(pathCriteria_.size()); }

    // Removal entries: DeinstallParam<k> and the registry tests DeinstallRegPath<k>_<n>
    /// The registry tests of each removal entry, entry k at [k - 1].
    [[nodiscard]] const std::vector<std::vector<DeinstallTest>>& DeinstallTests() const { return deinstallTests_; }
    [[nodiscard]] int DeinstallEntryCount() const { return static_cast<int>(deinstallTests_.size()); }
    /// Whether every registry test of removal entry k (from 1) matched when detected; false
    /// for k outside the entries read and before detection.
    [[nodiscard]] bool DeinstallEntryMatches(int k) const;
    /// What detection found, one flag per entry in DeinstallTests() order.
    void SetDeinstallMatches(std::vector<bool> matches) { deinstallMatches_ = std::move(matches); }

    // Version actions
    void AddAction(const std::string& action) { actions_.push_back(action); }
    [[nodiscard]] std::string GetAction(int index) const;
    [[nodiscard]] int16_t VersionActionsCount() const { return static_cast<int16_t>(actions_.size()); }
    void AddFirstinstAction(const std::string& action) { firstInstActions_.push_back(action); }
    [[nodiscard]] std::string GetFirstInstAction(int index) const;
    [[nodiscard]] int16_t FirstInstActionsCount() const { return static_cast<int16_t>(firstInstActions_.size()); }
    void ActionsClear();

    // Products this one is subject to (the component tree counts the holders)
    void AddSubjectToApp() { ++subjectToAppCount_; }
    void ReduceSubjectToApp() {
        if (subjectToAppCount_ > 0) --subjectToAppCount_;
    }
    [[nodiscard]] int16_t SubjectToAppCount() const { return subjectToAppCount_; }
    void SetSubjectToAppCount(int16_t count) { subjectToAppCount_ = count; }

private:
    void ReadGeneral(clsIniFile& ini);
    void ReadLists(clsIniFile& ini);
    void ReadLanguageSection(clsIniFile& ini, const std::string& sifFolder, const SetupFileBase& base);
    void ReadDeinstallTests(clsIniFile& ini);
    void ReadSetupDependencies(clsIniFile& ini);

    struct StartProgram {
        std::string program;
        std::string parameter;
    };
    struct PathCriterium {
        std::string criterium;
        std::string path;
    };

    std::vector<SetupDependence> setupDependencies_;
    std::vector<std::string> dependencies_;
    std::vector<StartProgram> startOnBegin_;
    std::vector<std::string> notStartOnEnd_;
    std::vector<std::string> applicationTitles_;
    std::vector<PathCriterium> pathCriteria_;
    std::vector<std::vector<DeinstallTest>> deinstallTests_;
    std::vector<bool> deinstallMatches_;
    std::vector<std::string> actions_;
    std::vector<std::string> firstInstActions_;
    int16_t subjectToAppCount_ = 0;
};

} // namespace tovel
