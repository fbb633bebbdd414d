#include "install/clsInstallContext.h"

#include <cctype>

#include "install/clsDeinstall.h"
#include "install/clsOptionFile.h"
#include "platform/clsPlatform.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"
#include "startup/Main.h"

namespace tovel {

namespace {

bool HasDriveLetter(const std::string& path) {
    return path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) != 0 && path[1] == ':';
}

/// The drive of the maker's shared folder; the Windows drive when the machine has none.
std::string CommonDrive() {
    const std::string shared = gPlaceholder ? gPlaceholder->CheckForPlaceholder("[SharedPath]") : "";
    if (HasDriveLetter(shared)) return shared.substr(0, 1);
    return HasDriveLetter(WorkFolder) ? WorkFolder.substr(0, 1) : "C";
}

} // namespace

InstallContext clsInstallContext::Current(const std::string& productLanguages) {
    InstallContext context;
    context.workFolder = WorkFolder;
    context.setupLanguage = LanguageIndexToCode(DefaultLanguage, 0);
    context.productLanguages = productLanguages;
    if (gSetupsIni) {
        context.discSetupMode = gSetupsIni->SetupMode();
        context.instType = gSetupsIni->InstType();
        context.jumpOverParam = gSetupsIni->JumpOverParam();
    }
    context.noOSCheck = NoOSCheck;
    context.commonDrive = CommonDrive();
    if (gPlaceholder) context.expand = [](const std::string& text) { return gPlaceholder->CheckForPlaceholder(text); };
    context.uninstallString = clsDeinstall::UninstallString;
    context.extraEntries = clsOptionFile::ExtraEntries;
    context.driveUsable = DriveUsable;
    return context;
}

bool clsInstallContext::DriveUsable(const std::string& root) {
    if (!HasDriveLetter(root)) return false;
    switch (Platform().Files().GetDriveType(root.substr(0, 2) + "\\")) {
    case DriveType::Fixed:
    case DriveType::Removable:
    case DriveType::Remote:
    case DriveType::RamDisk:
        return true;
    default:
        return false;
    }
}

} // namespace tovel
