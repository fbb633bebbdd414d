#include "install/clsSetupLauncher.h"

#include "common/mdlMessage.h"
#include "install/clsTimeStamp.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

std::string SourceSetting(const std::string& section, const std::string& key) {
    clsIniFile ini;
    ini.SetFullPath(HomePath + "Setups.ini");
    ini.SetSectionName(section);
    return ini.GetString(key, "");
}

std::string Text(int number) { return gLanguage ? gLanguage->LoadResString(number) : std::string(); }

std::string FolderOf(const std::string& path) {
    const size_t slash = path.find_last_of('\\');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

} // namespace

std::string clsSetupLauncher::DiscName(const std::string& discId) {
    if (discId.empty()) return {};
    return SourceSetting(discId, "DiscName");
}

bool clsSetupLauncher::SetupFileThere(const InstallStep& step) {
    if (step.msi) return true;   // the system's msiexec.exe is never on the disc
    const std::string expected = gSetupsIni ? gSetupsIni->Packversion() : std::string();
    return Platform().Files().FileExists(step.setupFile) && SourceSetting("SETTINGS", "Packversion") == expected;
}

bool clsSetupLauncher::AskForDisc(const InstallStep& step, const std::string& discName) {
    LogIfEnabled("File Not Found: " + step.setupFile);
    const std::string text = discName.empty() ? step.setupFile + "\r\n\r\n" + Text(TextNo::kSetupFileMissing)
                                              : Text(TextNo::kInsertDisc) + "\r\n\r\n" + discName;
    // Cancel is the default, so that an unattended run skips the product rather than asking
    // for ever.
    if (MsgBox(text, mb::kOkCancel | mb::kIconWarning | mb::kDefaultButton2, ApplicationTitle) != mb::kIdOk) return false;
    // Listing the folder makes Windows read a drive whose disc was changed.
    if (discName.empty()) (void)Platform().Files().ListFolder(FolderOf(step.setupFile));
    return true;
}

bool clsSetupLauncher::CheckSetupFile(const InstallStep& step, const std::string& discName) {
    while (!SetupFileThere(step)) {
        if (!AskForDisc(step, discName)) return false;
    }
    return true;
}

std::optional<uint32_t> clsSetupLauncher::Start(const InstallStep& step) {
    LogIfEnabled(clsTimeStamp::Line("Start"));
    auto& files = Platform().Files();
    // Setups rely on being started from their own folder.
    if (step.startFolder.size() >= 2 && step.startFolder[1] == ':') (void)files.SetCurrentDrive(step.startFolder[0]);
    if (!step.startFolder.empty()) (void)files.SetCurrentFolder(step.startFolder);
    LogIfEnabled("Aufruf mit Parameter: " + step.commandLine);
    return Platform().Processes().Start(step.commandLine, step.startFolder).processId;
}

} // namespace tovel
