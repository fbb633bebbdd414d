#include "startup/clsCheckEnviroment.h"

#include "common/clsString.h"
#include "common/clsVersion.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsIECheck.h"
#include "startup/clsLorvexCheck.h"
#include "startup/clsVersionInfo.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

const char* const kSessionManager = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";
constexpr int32_t kExitFailed = 1603;
constexpr int kJapaneseLocale = 1041;

// Japanese has no blanks to break a line at: each sentence gets a line of its own.
std::string SplitJapaneseLines(const std::string& text) {
    const std::string stop = "\xE3\x80\x82";   // 。
    std::string lines;
    size_t start = 0;
    for (size_t at; (at = text.find(stop, start)) != std::string::npos; start = at + stop.size()) {
        lines += text.substr(start, at + stop.size() - start);
        if (at + stop.size() < text.size()) lines += "\r\n";
    }
    return lines + text.substr(start);
}

} // namespace

void clsCheckEnviroment::ReadSystemVersion() {
    const OsVersion v = Platform().System().Version();
    os_.major = v.major;
    os_.minor = v.minor;
    os_.build = v.build;
    os_.platformId = v.platformId;
    os_.csdVersion = v.csdVersion;
    os_.productName = v.productName;
    const clsRegistry windows(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion");
    os_.versionNumber = windows.QueryValue("VersionNumber");
    subVersionNumber_ = windows.QueryValue("SubVersionNumber");
    tovel::OSPlatformId = static_cast<int32_t>(os_.platformId);
    if (os_.platformId == 0) LogIfEnabled("Error in Function CheckOSVersion Number: 0");
}

void clsCheckEnviroment::CheckAtStart(const std::string& commandLine) const {
    RemoveWod50t();
    CheckTempFolder("TMP");
    CheckTempFolder("TEMP");
    clsLorvexCheck::Decide(commandLine);
}

void clsCheckEnviroment::RemoveWod50t() {
    auto& files = Platform().Files();
    if (!files.FileExists(SystemDir + "WOD50T.DLL")) return;
    if (files.DeleteFile(SystemDir + "WOD50T.DLL")) LogIfEnabled("   WOD50T.DLL in " + SystemDir + " found and deleted");
}

void clsCheckEnviroment::CheckTempFolder(const std::string& variable) {
    LogHeading("Weitere Checks");
    auto& files = Platform().Files();
    const auto value = Platform().System().Environment(variable);
    std::string path;
    std::string existsLine;
    if (value) {
        LogIfEnabled("Environment found for " + variable + "=" + *value);
        path = *value;
        existsLine = "Temporary path ";
    } else {
        LogIfEnabled("No Environment found for " + variable);
        path = WorkFolder + variable;
        existsLine = "Temporary defaultpath ";
    }
    if (files.FolderExists(path)) {
        LogIfEnabled(existsLine + path + " already exists");
    } else if (!files.CreateFolder(path)) {
        LogIfEnabled("Error in Modul clsCheckEnviroment Funktion CheckTempFolder: " + path + " cannot be created");
    }
}

bool clsCheckEnviroment::CheckPendingRestart(const std::string& languageText) const {
    if (os_.platformId == 1) {
        if (!Platform().Files().FileExists(WindowsDir + "WININIT.INI")) return true;
        LogIfEnabled("Win95: WININIT.INI exists in system directory. TOVEL_SETUP stopped.");
    } else {
        const clsRegistry session(RegRoot::LocalMachine, kSessionManager);
        if (!session.ValueExist("PendingFileRenameOperations")) return true;
        LogIfEnabled("WinNT: Pending File Rename Operations. TOVEL_SETUP stopped.");
    }
    const std::string text = languageText.empty() ? "Please restart Windows before installing new programs!" : languageText;
    MsgBox(text, mb::kOk | mb::kIconInformation, ApplicationTitle);
    ExitStatus = kExitFailed;
    return false;
}

bool clsCheckEnviroment::WizardChecks() const {
    if (!StartCheck() || !PreCheckForIE()) return false;
    gSystem->Refresh();
    return CheckDisc(gSetupsIni->DiscID()) && CheckAdmin() && CheckPackage();
}

bool clsCheckEnviroment::StartCheck() const {
    if (NoOSCheck) return true;
    LogHeading("Current OS");
    LogIfEnabled(clsOSSupport::SystemName(os_));
    if (clsOSSupport::Allowed(os_, *gSetupsIni)) return true;
    LogUnsupportedSystem();
    ShowUnsupportedSystem();
    ExitStatus = kExitFailed;
    return false;
}

void clsCheckEnviroment::LogUnsupportedSystem() const {
    LogIfEnabled("Version of Operating System not supported.");
    LogIfEnabled("   OSMajorVersion: " + std::to_string(os_.major));
    LogIfEnabled("   OSMinorVersion: " + std::to_string(os_.minor));
    LogIfEnabled("   OSPlatformId: " + std::to_string(os_.platformId));
    LogIfEnabled("   CSDVersion: " + os_.csdVersion);
}

void clsCheckEnviroment::ShowUnsupportedSystem() const {
    const std::string& first = gSetupsIni->MsgSupportedOS();
    const std::string& second = gSetupsIni->MsgSupportedOS2();
    std::string text = first + (!first.empty() && !second.empty() ? "\r\n" : "") + second;
    if (text.empty()) text = gLanguage->LoadResString(TextNo::kUnsupportedSystem);
    if (gLanguage->LanguageID() == kJapaneseLocale) text = SplitJapaneseLines(text);
    MsgBox(text, mb::kOk | mb::kIconError, ApplicationTitle);
}

bool clsCheckEnviroment::PreCheckForIE() const { return clsIECheck::Run(*gSetupsIni); }

bool clsCheckEnviroment::CheckDisc(const std::string& expectedDiscID) const {
    if (expectedDiscID.empty()) return true;
    const std::string folder = gSetupsIni->Path().empty() ? HomePath : gSetupsIni->Path();
    // Products beside the program, without a settings file of their own, are on this disc.
    if (!Platform().Files().FileExists(folder + "Setups.ini")) return true;
    clsIniFile disc;
    disc.SetFullPath(folder + "Setups.ini");
    disc.SetSectionName("SETTINGS");
    const std::string found = disc.GetString("DiscID", "");
    if (clsString::EqualNoCaseAscii(clsString::Trim(found), clsString::Trim(expectedDiscID))) return true;
    LogIfEnabled("Abort: Falsche CD eingelegt. Ist: " + found);
    return Fail(TextNo::kWrongDisc, "");
}

bool clsCheckEnviroment::CheckAdmin() const {
    if (os_.platformId != 2 || !gSetupsIni->CheckForAdmin() || gSystem->CheckIfUserIsAdmin()) return true;
    LogIfEnabled("Abort: User has no Admin rights ");
    return Fail(TextNo::kNoAdminRights, "");
}

bool clsCheckEnviroment::CheckPackage() const {
    const std::string& key = gSetupsIni->CheckPackageKey();
    if (key.empty()) return true;
    clsRegistry package(RegRoot::LocalMachine, key);
    if (clsRegistry::ExistRootKeyInPath(key)) (void)package.InitWithRegPath(key);
    const std::string value = package.QueryValue(gSetupsIni->CheckPackageName());
    if (value == gSetupsIni->CheckPackageValue()) return true;
    LogIfEnabled("Package " + key + "\\" + gSetupsIni->CheckPackageName() + " Wert:" + value + " Setup wird abgebrochen");
    return Fail(TextNo::kPackageMissing, gSetupsIni->CheckPackageText());
}

bool clsCheckEnviroment::Fail(int textNumber, const std::string& text) {
    MsgBox(text.empty() ? gLanguage->LoadResString(textNumber) : text, mb::kOk | mb::kIconError, ApplicationTitle);
    ExitStatus = kExitFailed;
    return false;
}

clsCheckEnviroment::FileVersionResult clsCheckEnviroment::CheckFileVersion(
    const std::string& fileName, const std::string& deliveredFolder,
    const std::function<void(const std::string&)>& beforeReplace) {
    auto& files = Platform().Files();
    const std::string from = clsFileDisk::AddBackslash(deliveredFolder) + fileName;
    const std::string to = SystemDir + fileName;
    if (!files.FileExists(to)) {
        LogIfEnabled(fileName + " does not exist in system directory.");
    } else {
        LogIfEnabled(fileName + " already exists in system directory.");
        clsVersionInfo onSystem;
        clsVersionInfo delivered;
        (void)onSystem.GetFileInfo(to);
        (void)delivered.GetFileInfo(from);
        LogIfEnabled(fileName + " Version on System: " + onSystem.NumericVersion());
        LogIfEnabled(fileName + " Version delivered: " + delivered.NumericVersion());
        if (clsVersion::Compare(onSystem.NumericVersion(), delivered.NumericVersion()) >= 0) {
            return FileVersionResult::Current;
        }
        LogIfEnabled("   ==> Version on system is too old!");
        if (beforeReplace) beforeReplace(to);
    }
    LogIfEnabled("   Copy from: " + from + " to: " + to);
    if (files.CopyFile(from, to, false)) return FileVersionResult::Copied;
    LogIfEnabled(fileName + " is in use and cannot be replaced.");
    return FileVersionResult::NotCopied;
}

} // namespace tovel
