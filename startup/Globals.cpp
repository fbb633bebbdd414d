#include "startup/Globals.h"

namespace tovel {

bool ShowConfig = false;
int16_t DefaultLanguage = 1;
bool LorvexScanComplete = false;
bool NoOSCheck = false;
bool NoVersionCheck = false;
bool RecordMode = false;
bool SilentMode = false;
bool LogSwitch = false;
std::string SilentPath;
bool Testmode = false;
std::string LorvexAdditionalCommand;
bool Lorvex = false;
std::string LorvexSearchPath;
std::string LorvexExePath;
bool ContinuedAfterRestart = false;
std::string HomePath;
std::string WorkFolder;
std::string WindowsDir;
std::string SystemDir;
bool UpdateFunctionality = false;
std::string SelectedBusSystem = "4";
int16_t SetupLanguageCount = 0;
int32_t OSPlatformId = 0;
std::string ApplicationTitle = "TovelSetup";
int32_t ExitStatus = 0;

std::unique_ptr<clsCheckEnviroment> gEnvironment;
clsFileDisk gFileDisk;
std::unique_ptr<clsSystem> gSystem;
std::unique_ptr<clsPlaceholder> gPlaceholder;
std::unique_ptr<clsSetupsIni> gSetupsIni;
std::unique_ptr<clsLanguage> gLanguage;
std::unique_ptr<clsLanguageFont> gLanguageFont;
std::unique_ptr<clsLanguageTextFile> gLanguageTextFile;
clsOpenForms gOpenForms;
std::unique_ptr<clsPrintLog> gLog;

} // namespace tovel
