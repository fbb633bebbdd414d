#include "startup/Main.h"

#include <cstdlib>

#include "common/clsSecondsTimer.h"
#include "common/clsString.h"
#include "common/mdlEvents.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "startup/RunState.h"
#include "startup/Globals.h"
#include "startup/clsCommandLine.h"
#include "startup/clsLorvexCheck.h"
#include "startup/mdlLog.h"
#include "startup/mdlSwitches.h"

namespace tovel {

namespace {

const char* const kLetters[] = {"A", "B", "C", "D", "E", "J"};
const char* const kNames[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};
const char* const kLocales[] = {"1031", "2057", "1036", "3082", "1040", "1041"};
constexpr int kEnglish = 1;
constexpr int kJapanese = 5;
// The bus system until the user chooses one on its page.
const std::string kNoBusSystemChosen = "4";
constexpr int32_t kExitFailed = 1603;

// The root of the Windows drive; Windows on a network path is not supported, and C:\ stands in.
std::string WorkFolderOf() {
    const std::string root = gFileDisk.WindowsDriveRoot();
    if (!root.empty()) return root;
    MsgBox("Setup don't support net installation.", mb::kOk | mb::kIconInformation, ApplicationTitle);
    return "C:\\";
}

void EnterHomePath() {
    auto& files = Platform().Files();
    // A share is used in place: there is no drive to change to.
    if (HomePath.rfind("\\\\", 0) != 0) (void)files.SetCurrentDrive(HomePath[0]);
    (void)files.SetCurrentFolder(HomePath);
}

clsSetupsIni::Hooks SettingsHooks() {
    return {[](const std::string& line) { LogIfEnabled(line); }, [](const std::string& heading) { LogHeading(heading); },
            [](const std::string& text) { return gPlaceholder->CheckForPlaceholder(text); }};
}

// The Japanese texts of Setups.ini are Shift-JIS inside a file the INI reader takes as ANSI;
// the language text reader reads the file once in code page 932.
clsSetupsIni::TextLookup JapaneseLookup() {
    gLanguageTextFile->SetCodePage("932");
    if (!gLanguageTextFile->SetFileName(gSetupsIni->FilePath())) return {};
    return [](const std::string& section, const std::string& key) {
        return gLanguageTextFile->LoadIniProperty2(section, key);
    };
}

// The version-display tool lies on the disc beside the products, in its folder "Lorvex".
void ReadLorvexCommand() {
    clsIniFile ini;
    ini.SetFullPath(clsLorvexCheck::ToolFolder() + "Lorvex.ini");
    ini.SetSectionName("LORVEX");
    const std::string command = ini.GetString("AdditionalCommand", "");
    if (!command.empty()) LorvexAdditionalCommand = command + " ";
}

// A run resumed from RunOnce starts without switches of its own: it takes those of the
// interrupted run (silent mode and its answer file, /log, /nooscheck) from the state file, so
// that a silent installation stays silent across the restart. A command line given to this
// start is read later and still decides.
void TakeSwitchesOfInterruptedRun(const std::string& stateFile) {
    const auto bytes = Platform().Files().ReadFile(stateFile);
    if (!bytes) return;
    std::vector<std::string> warnings;
    RestoreStartSwitches(clsIniText::Parse(*bytes, Platform().System().AnsiCodePage(), warnings));
}

void LookForRunToResume() {
    const std::string stateFile = WorkFolder + "INSTDUMP.TMP";
    if (!Platform().Files().FileExists(stateFile)) {
        ContinuedAfterRestart = false;
        return;
    }
    WaitSeconds(5);
    for (const auto& link : clsFileDisk::RemoveResumeLink()) LogIfEnabled("Resume link deleted: " + link);
    ContinuedAfterRestart = true;
    TakeSwitchesOfInterruptedRun(stateFile);
}

void AnalyseCommandLine(const std::string& line) {
    if (line.empty()) return;
    clsCommandLine commandLine;
    commandLine.SetCommandLine(line);
    CommandLineSwitches found = commandLine.Start();
    ApplySwitches(found);
    clsCommandLine::WriteAnalysis(found.analysis);
    if (RecordMode) MsgBox("The record function is activ.", mb::kOk | mb::kIconInformation, "Record");
}

} // namespace

std::string LanguageIndexToCode(int index, int form) {
    const int i = (index >= 0 && index <= 5) ? index : kEnglish;
    switch (form) {
    case 0: return kLetters[i];
    case 1: return kNames[i];
    case 2: return kLocales[i];
    default: return {};
    }
}

void UseSetupLanguage(int16_t index) {
    DefaultLanguage = (index >= 0 && index <= kJapanese) ? index : static_cast<int16_t>(kEnglish);
    gSetupsIni->ReadLanguagePart(DefaultLanguage, DefaultLanguage == kJapanese ? JapaneseLookup() : nullptr);
    gLanguage->SetLanguageID(static_cast<uint32_t>(std::stoul(LanguageIndexToCode(DefaultLanguage, 2))));
}

void WaitSeconds(int seconds) {
    clsSecondsTimer timer;
    timer.Start();
    timer.WaitUntil(seconds, [] {
        DoEvents();
        return true;
    });
}

bool CreateGlobalObjects() {
    gEnvironment = std::make_unique<clsCheckEnviroment>();
    gSystem = std::make_unique<clsSystem>();
    gPlaceholder = std::make_unique<clsPlaceholder>();
    gLanguage = std::make_unique<clsLanguage>();
    gLanguageFont = std::make_unique<clsLanguageFont>();
    gLanguageTextFile = std::make_unique<clsLanguageTextFile>();
    // Reads Setups.ini at once; its lines reach no log yet, which is created only later.
    gSetupsIni = std::make_unique<clsSetupsIni>(SettingsHooks());
    gPlaceholder->SetSettings(gSetupsIni.get());
    return true;
}

void InitGlobals() {
    if (!CreateGlobalObjects() || gSetupsIni->PathFailed()) EndSetupFailed();
    const int16_t language = gSetupsIni->GetDefaultLanguage();
    const std::string programFolder = clsFileDisk::AddBackslash(Platform().System().ProgramFolder());
    gLanguage->SetTextFolder(programFolder);
    UseSetupLanguage(language);
    gLanguage->SetLibrary(programFolder + "Setup.ex_");
    gEnvironment->ReadSystemVersion();
    UpdateFunctionality = true;
    SelectedBusSystem = kNoBusSystemChosen;
    HomePath = programFolder;
    WorkFolder = WorkFolderOf();
    // Every start begins a fresh log, also one that resumes: the resume test comes after it.
    StartLog();
    LogIfEnabled("CDTitle: " + gSetupsIni->CDTitle());
    EnterHomePath();
    HomePath = clsFileDisk::AddBackslash(HomePath);
    WindowsDir = gFileDisk.WindowsFolder();
    SystemDir = gFileDisk.SystemFolder();
    gPlaceholder->SetFolders({SystemDir, WindowsDir, WorkFolder, HomePath});
    SetupLanguageCount = gSetupsIni->SetupLanguageCount();
    LookForRunToResume();
    if (!gSetupsIni->AppTitle().empty()) ApplicationTitle = gSetupsIni->AppTitle();
    ReadLorvexCommand();
}

void Main() {
    InitGlobals();
    const std::string line = Platform().System().CommandLine();
    if (clsString::LowerAscii(line).find("/showconfig") != std::string::npos) {
        // The tool lies above start-up: the caller opens it (app/mdlSetupRun).
        ShowConfig = true;
        return;
    }
    gEnvironment->CheckAtStart(line);
    AnalyseCommandLine(line);
    if (!gEnvironment->CheckPendingRestart(gLanguage->LoadResString(TextNo::kRestartBeforeInstall))) EndSetupFailed();
}

void EndSetupFailed() {
    if (ExitStatus == 0) ExitStatus = kExitFailed;
    EndProgram();
}

void UnloadAllForms() {
    for (const auto& name : gOpenForms.Names()) {
        if (name != "frmInstallation" && name != "frmGradientBackground") (void)gOpenForms.Unload(name);
    }
}

void EndProgram() {
    UnloadAllForms();
    DoEvents();
    (void)gOpenForms.Unload("frmInstallation");
    DoEvents();
    (void)gOpenForms.Unload("frmGradientBackground");
    DoEvents();
    Platform().System().EndProcess(static_cast<uint32_t>(ExitStatus));
    std::abort();  // no platform returns from EndProcess; this keeps the promise if one did
}

} // namespace tovel
