#include "startup/mdlSwitches.h"

#include <string>

#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

// The analysis found the drive; it may still be gone by now (a disc taken out).
void EnterDrive(char letter, std::string& analysis) {
    auto& files = Platform().Files();
    const std::string root = std::string(1, letter) + ":\\";
    if (files.SetCurrentDrive(letter) && files.SetCurrentFolder(root)) return;
    analysis += "Error in Modul mdlSwitches Funktion EnterDrive: cannot change to " + root + "\r\n";
}

} // namespace

void ApplySwitches(CommandLineSwitches& found) {
    if (found.showConfig) ShowConfig = true;
    if (found.drive) EnterDrive(*found.drive, found.analysis);
    if (found.level && gSetupsIni) gSetupsIni->SetLevel(*found.level);
    if (found.lorvexScanComplete) LorvexScanComplete = *found.lorvexScanComplete;
    if (found.lorvexAdditionalCommand) LorvexAdditionalCommand = *found.lorvexAdditionalCommand;
    if (found.log) SetLogSwitch(true);
    if (found.noVersionCheck) NoVersionCheck = true;
    if (found.testmode) Testmode = true;
    NoOSCheck = found.noOSCheck;
    if (found.recordMode) RecordMode = true;
    if (found.silentPath) SilentPath = *found.silentPath;
    SilentMode = found.silentMode;
}

} // namespace tovel
