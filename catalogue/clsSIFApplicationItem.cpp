#include "catalogue/clsSIFApplicationItem.h"

#include <exception>
#include <functional>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSIFCommonSection.h"
#include "catalogue/clsSSFFilesOld.h"
#include "catalogue/clsSSFFilesV520.h"
#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "settings/clsIniFile.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

template <typename T>
T At(const std::vector<T>& list, int index) {
    return index >= 1 && index <= static_cast<int>(list.size()) ? list[static_cast<size_t>(index - 1)] : T{};
}

// A reading step that fails ends that step only: the record keeps what was read so far.
void Step(const std::string& sifPath, const char* step, const std::function<void()>& read) {
    try {
        read();
    } catch (const std::exception& e) {
        LogIfEnabled("Error in Modul clsSIFApplicationItem Funktion Read (" + std::string(step) + "): " + sifPath + ": " + e.what());
    } catch (...) {
        LogIfEnabled("Error in Modul clsSIFApplicationItem Funktion Read (" + std::string(step) + "): " + sifPath);
    }
}

// Reads Key1, Key2, ... until the first empty value.
void ReadFamily(clsIniFile& ini, const std::string& key, const std::function<void(int, const std::string&)>& take) {
    for (int n = 1;; ++n) {
        const std::string value = ini.GetString(key + std::to_string(n), "");
        if (value.empty()) return;
        take(n, value);
    }
}

} // namespace

void clsSIFApplicationItem::Read(const std::string& sifPath, const std::string& productFolder) {
    clsIniFile ini;
    ini.SetFullPath(sifPath);
    ini.SetReadOnce(true);
    Read(ini, productFolder);
}

std::string clsSIFApplicationItem::SIFFolder() const {
    const size_t slash = SIFFileName.find_last_of('\\');
    return slash == std::string::npos ? std::string() : SIFFileName.substr(0, slash);
}

void clsSIFApplicationItem::Read(clsIniFile& ini, const std::string& productFolder) {
    *this = clsSIFApplicationItem();
    const std::string sifPath = ini.FullPath();
    Step(sifPath, "GENERAL", [&] { ReadGeneral(ini); });
    ReadTextSection(ini, productFolder, clsSIFCommonSection::ProdInfoSections(ini));
    Step(sifPath, "DEPENDENCIES", [&] {
        ini.SetSectionName("DEPENDENCIES");
        ReadFamily(ini, "Dependence", [&](int, const std::string& code) { AddDependence(code); });
    });
    Step(sifPath, "SETUP_DEPENDENCIES", [&] { ReadSetupDependencies(ini); });
    Step(sifPath, "PRODUCTTYP", [&] {
        ini.SetSectionName("PRODUCTTYP");
        VelmarProduct = ini.GetTF("VelmarProduct", true);
        LogFile = ini.GetString("LogFile", "");
    });
    Step(sifPath, "versions section", [&] {
        VersionRules = SSFVersion.empty() ? clsSSFFilesOld::ReadVersionsSection(ini) : clsSSFFilesV520::ReadVersionsSection(ini);
    });
    Step(sifPath, "OPFILEENTRIES_BEGIN", [&] { OptionFileEntries = ReadOptionFileEntries(ini); });
}

std::vector<IniEntry> clsSIFApplicationItem::ReadOptionFileEntries(clsIniFile& sif) {
    sif.SetSectionName("OPFILEENTRIES_BEGIN");
    std::vector<IniEntry> entries;
    for (const auto& entry : sif.GetSectEntriesEx()) {
        const std::string key = clsString::Trim(entry.key);
        if (key.empty()) continue;
        // Read through GetString so a value is unquoted and trimmed as every other value is.
        const std::string value = sif.GetString(key, "");
        if (!value.empty()) entries.push_back({key, value});
    }
    return entries;
}

void clsSIFApplicationItem::ReadTextSection(clsIniFile& ini, const std::string& productFolder, const LanguageSections& languages) {
    SIFFileName = ini.FullPath();
    ProdInfoSection = languages.ForSetupLanguage();
    AvailableLanguages = languages.offeredLetters;
    const std::string sifFolder = SIFFolder();
    const SetupFileBase base = clsFileDisk::SetupFileBaseOf(sifFolder, productFolder);
    SetupDiscNumber = base.discNumber;
    Step(SIFFileName, "language section", [&] { ReadLanguageSection(ini, sifFolder, base); });
    Step(SIFFileName, "lists", [&] { ReadLists(ini); });
}

void clsSIFApplicationItem::ReadGeneral(clsIniFile& ini) {
    ini.SetSectionName("GENERAL");
    AlwaysInstall = ini.GetTF("AlwaysInstall", false);
    AutoDeinstall = ini.GetString("AutoDeinstall", "0");
    Build = ini.GetString("Build", "");
    DefaultPathInFile = ini.GetString("DefaultPath", "");
    DefaultPath = DefaultPathInFile;
    DefaultPathRegKey = ini.GetString("DefaultPathRegKey", "");
    DefaultPathRegPath = ini.GetString("DefaultPathRegPath", "");
    DeinstallKey = ini.GetString("DeinstallKey", "");
    DeinstallParam = ini.GetString("DeinstallParam", "");
    if (DeinstallParam.empty()) DeinstallParam = ini.GetString("DeinstallParam1", "");
    EstimatedTime = ini.GetInt("EstimatedTime", 0);
    FileType = ini.GetString("FileType", "");
    HideInstall = ini.GetTF("HideInstall", false);
    IsCriticalComponent = ini.GetTF("IsCriticalComponent", false);
    ProductCode = ini.GetString("ProductCode", "");
    RegisterInRunOnce = ini.GetInt("RegisterInRunOnce", 1);
    TSInstallVersion = ini.GetString("TSInstallVersion", "");
    SetupMode = ini.GetString("SetupMode", "");
    ShowDialogWait = ini.GetTF("ShowDialogWait", false);
    DontChangeExistPath = ini.GetTF("DontChangeExistPath", false);
    TermToInstall = ini.GetString("TermToInstall", "");
    ShowDriveSelectionInComponentDialog = ini.GetTF("ShowDriveSelectionInComponentDialog", true);
    SSFVersion = ini.GetString("SSFVersion", "");
    Visible = ini.GetTF("Visible", true);
    DiskSpaceDestDrv = ini.GetInt("DiskSpaceDestDrv", 0);
}

void clsSIFApplicationItem::ReadLists(clsIniFile& ini) {
    ini.SetSectionName(ProdInfoSection);
    startOnBegin_.clear();
    notStartOnEnd_.clear();
    applicationTitles_.clear();
    pathCriteria_.clear();
    deinstallTests_.clear();
    deinstallMatches_.clear();
    ReadFamily(ini, "StartOnBegin", [&](int n, const std::string& program) {
        AddStartOnBegin(program, ini.GetString("ParaStartOnBegin" + std::to_string(n), ""));
    });
    ReadFamily(ini, "NotStartOnEndProgram", [&](int, const std::string& program) { AddNotStartOnEndProgram(program); });
    ReadFamily(ini, "WaitForApplicationTitle", [&](int, const std::string& title) { AddApplicationTitle(title); });
    ReadFamily(ini, "DefaultPathCriterium", [&](int n, const std::string& criterium) {
        AddDefaultPathCriterium(criterium, ini.GetString("DefaultPathCriterium" + std::to_string(n) + "Path", ""));
    });
    ReadDeinstallTests(ini);
}

void clsSIFApplicationItem::ReadLanguageSection(clsIniFile& ini, const std::string& sifFolder, const SetupFileBase& base) {
    ini.SetSectionName(ProdInfoSection);
    const auto text = [&](const std::string& key) { return gCommonSection.LanguageText(ini, ProdInfoSection, key); };
    Description = text("Description");
    LongDescription = text("LongDescription");
    AlternativeDescription = text("AlternativeDescription");
    SetupDiscID = text("SetupDiscID");
    BreakMessage = text("BreakMessage1") + "\r\n" + text("BreakMessage2") + "\r\n" + text("BreakMessage3");
    Tooltip = text("Tooltip");
    const std::string setupFile = ini.GetString("SetupFile", "");
    SetupFile = clsFileDisk::ResolveSetupFile(setupFile, sifFolder, base);
    DiscRelativeSetupFile = clsFileDisk::DiscRelativePath(SetupFile, base);
    SetupFileParameters = ini.GetString("SetupFileParameters", "");
    ShowReadMe = clsFileDisk::ResolveSetupFile(ini.GetString("ShowReadMe", ""), sifFolder, base);
    // A language's own figure wins: its product may be larger in one language than another.
    DiskSpaceDestDrv = ini.GetInt("DiskSpaceDestDrv", DiskSpaceDestDrv);
}

void clsSIFApplicationItem::ReadDeinstallTests(clsIniFile& ini) {
    for (int k = 1;; ++k) {
        const std::string entry = std::to_string(k) + "_";
        std::vector<DeinstallTest> tests;
        for (int n = 1;; ++n) {
            const std::string test = entry + std::to_string(n);
            std::string path = ini.GetString("DeinstallRegPath" + test, "");
            if (path.empty()) break;
            tests.push_back({std::move(path), ini.GetString("DeinstallRegKey" + test, ""), ini.GetString("DeinstallExpectedValue" + test, "")});
        }
        if (tests.empty()) return;
        deinstallTests_.push_back(std::move(tests));
    }
}

void clsSIFApplicationItem::ReadSetupDependencies(clsIniFile& ini) {
    ini.SetSectionName("SETUP_DEPENDENCIES");
    for (int n = 1;; ++n) {
        const std::string number = std::to_string(n);
        const std::string typeText = clsString::LowerAscii(ini.GetString("Type" + number, "recommend"));
        const std::string code = ini.GetString("ProductCode" + number, "");
        if (code.empty()) break;
        std::string requirements;
        ReadFamily(ini, "ProductCode" + number + "AdditionalRequirement", [&](int, const std::string& other) { requirements += other + "~"; });
        const DependenceType type = DependenceTypeCode(typeText);
        if (type == DependenceType::Other) {
            AddSetupDependence2(code, typeText, requirements);
        } else {
            AddSetupDependence(code, type, requirements);
        }
    }
    DependenceTerm = ini.GetString("DependenceTerm", "");
}

void clsSIFApplicationItem::AddSetupDependence(const std::string& code, DependenceType type, const std::string& requirements) {
    setupDependencies_.push_back({code, type, requirements});
}

void clsSIFApplicationItem::AddSetupDependence2(const std::string& code, const std::string& typeText, const std::string& requirements) {
    setupDependencies_.push_back({code, DependenceType::Other, requirements});
    DependenceTypeOther = typeText;
}

std::string clsSIFApplicationItem::GetSetupDependence(int index) const { return At(setupDependencies_, index).productCode; }

int16_t clsSIFApplicationItem::GetSetupDependenceType(int index) const {
    if (index < 1 || index > SetupDependenceCount()) return 0;
    return static_cast<int16_t>(setupDependencies_[static_cast<size_t>(index - 1)].type);
}

std::string clsSIFApplicationItem::GetSetupDependenceAR(int index) const { return At(setupDependencies_, index).additionalRequirements; }

std::string clsSIFApplicationItem::GetSetupDependenceAllAR() const {
    std::string all;
    for (const auto& entry : setupDependencies_) all += entry.additionalRequirements;
    return all;
}

std::string clsSIFApplicationItem::GetDependence(int index) const { return At(dependencies_, index); }

void clsSIFApplicationItem::AddStartOnBegin(const std::string& program, const std::string& parameter) {
    startOnBegin_.push_back({program, parameter});
}

std::string clsSIFApplicationItem::GetStartOnBeginProgram(int index) const { return At(startOnBegin_, index).program; }
std::string clsSIFApplicationItem::GetStartOnBeginParameter(int index) const { return At(startOnBegin_, index).parameter; }

std::string clsSIFApplicationItem::GetNotStartOnEndProgram(int index) const { return At(notStartOnEnd_, index); }
std::string clsSIFApplicationItem::GetApplicationTitle(int index) const { return At(applicationTitles_, index); }

void clsSIFApplicationItem::AddDefaultPathCriterium(const std::string& criterium, const std::string& path) {
    pathCriteria_.push_back({criterium, path});
}

std::string clsSIFApplicationItem::GetDefaultPathCriterium(int index) const { return At(pathCriteria_, index).criterium; }
std::string clsSIFApplicationItem::GetDefaultPathCriteriumPath(int index) const { return At(pathCriteria_, index).path; }

bool clsSIFApplicationItem::DeinstallEntryMatches(int k) const {
    return k >= 1 && k <= static_cast<int>(deinstallMatches_.size()) && deinstallMatches_[static_cast<size_t>(k - 1)];
}

std::string clsSIFApplicationItem::GetAction(int index) const { return At(actions_, index); }
std::string clsSIFApplicationItem::GetFirstInstAction(int index) const { return At(firstInstActions_, index); }

void clsSIFApplicationItem::ActionsClear() {
    actions_.clear();
    firstInstActions_.clear();
}

} // namespace tovel
