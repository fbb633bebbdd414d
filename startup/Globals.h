#pragma once
// The run state every part of the setup shares, fixed during start-up, and the objects that
// live for the whole run.
#include <cstdint>
#include <memory>
#include <string>

#include "common/clsFileDisk.h"
#include "common/clsOpenForms.h"
#include "language/clsLanguage.h"
#include "language/clsLanguageFont.h"
#include "language/clsLanguageTextFile.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "startup/clsCheckEnviroment.h"
#include "startup/clsPrintLog.h"
#include "startup/clsSystem.h"

namespace tovel {

// Run state, with the defaults a run starts from.
extern bool ShowConfig;                      ///< /showconfig: the configuration tool instead of the wizard
extern int16_t DefaultLanguage;              ///< setup language: 0 German .. 5 Japanese
extern bool LorvexScanComplete;              ///< scan mode handed to the version-display tool
extern bool NoOSCheck;                       ///< /nooscheck
extern bool NoVersionCheck;                  ///< /noversioncheck
extern bool RecordMode;                      ///< /record: record the answers to an answer file
extern bool SilentMode;                      ///< run without dialogs from an answer file
extern std::string SilentPath;               ///< full path of the answer file
extern bool LogSwitch;                       ///< /log: the log is written whatever the disc's settings say
extern bool Testmode;                        ///< /testmode
extern std::string LorvexAdditionalCommand;  ///< extra arguments for the version-display tool
extern bool Lorvex;                          ///< the version-display tool runs after the installation
extern std::string LorvexSearchPath;         ///< the folder the tool starts its scan in
extern std::string LorvexExePath;            ///< the tool's program
extern bool ContinuedAfterRestart;           ///< a state file was found: an interrupted run resumes
extern std::string HomePath;                 ///< folder the program was started from, with a trailing backslash
extern std::string WorkFolder;               ///< root of the Windows drive: holds the log and the state file
extern std::string WindowsDir;               ///< Windows folder with a trailing backslash
extern std::string SystemDir;                ///< system folder with a trailing backslash
extern bool UpdateFunctionality;             ///< the update functions of the setup are available
extern std::string SelectedBusSystem;        ///< the chosen bus system's number as text; "4" until chosen
extern int16_t SetupLanguageCount;           ///< number of setup languages offered
extern int32_t OSPlatformId;                 ///< 1 Windows 95/98/Me, 2 NT family
extern std::string ApplicationTitle;         ///< title of the task bar button and the message boxes
/// The process's exit status for deployment tools: 0 done, 1602 cancelled by the user,
/// 1603 a critical product failed or the setup could not run, 3010 done but a restart is still needed, 1641 a restart
/// was started.
extern int32_t ExitStatus;

extern std::unique_ptr<clsCheckEnviroment> gEnvironment;
extern clsFileDisk gFileDisk;
extern std::unique_ptr<clsSystem> gSystem;
extern std::unique_ptr<clsPlaceholder> gPlaceholder;
extern std::unique_ptr<clsSetupsIni> gSetupsIni;
extern std::unique_ptr<clsLanguage> gLanguage;
extern std::unique_ptr<clsLanguageFont> gLanguageFont;
extern std::unique_ptr<clsLanguageTextFile> gLanguageTextFile;
extern clsOpenForms gOpenForms;              ///< the forms on the screen
extern std::unique_ptr<clsPrintLog> gLog;    ///< the setup log, made by StartLog (mdlLog)

} // namespace tovel
