#include "fakesetup/clsFakeInstall.h"

#include "fakesetup/clsFakeTree.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsCommandLine.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsIniFile.h"
#include "settings/clsRegistry.h"

namespace tovel {

namespace {

// Where the remover finds the version value it has to take away again.
constexpr const char* kVersionPathValue = "TovelFakeVersionPath";
constexpr const char* kVersionKeyValue = "TovelFakeVersionKey";

std::string StringValue(const std::string& key, const std::string& name) {
    const auto value = Platform().Registry().QueryValue(RegRoot::LocalMachine, key, name);
    return value ? clsRegistry::TrimNull(value->text) : std::string();
}

bool SetString(const std::string& key, const std::string& name, const std::string& text) {
    return Platform().Registry().SetValue(RegRoot::LocalMachine, key, name, clsRegValue::String(text));
}

} // namespace

std::string clsFakeInstall::UninstallKeyPath(const std::string& key) {
    return "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + key;
}

std::string clsFakeInstall::UninstallString(const std::string& selfPath, const std::string& key) {
    // The form an InstallShield uninstaller has: the run makes it unattended with "-a -y".
    return "\"" + selfPath + "\" -f" + clsWindowsCommandLine::Quote(key);
}

std::string clsFakeInstall::Destination(const std::string& opFile) {
    clsIniFile ini;
    ini.SetFullPath(opFile);
    ini.SetSectionName("SETUPREQUESTS");
    const std::string drive = ini.GetString("DestinationDrive", "");
    if (drive.empty()) return {};
    return drive.substr(0, 1) + ":" + ini.GetString("DestinationPath", "\\");
}

std::string clsFakeInstall::PayloadFolder(const std::string& payload) const {
    if (clsWindowsPath::DriveLetter(payload) != 0 || clsWindowsPath::IsUnc(payload)) return payload;
    return selfPath_.substr(0, selfPath_.find_last_of('\\') + 1) + payload;
}

bool clsFakeInstall::CopyPayload(const FakeBehaviour& behaviour, const std::string& destination) {
    if (behaviour.payload.empty()) return true;
    const std::string from = PayloadFolder(behaviour.payload);
    const int copied = clsFakeTree::Copy(from, destination);
    log_.Line(copied < 0 ? "copy failed: " + from + " to " + destination
                         : "copied " + std::to_string(copied) + " files to " + destination);
    return copied >= 0;
}

bool clsFakeInstall::WriteUninstallEntry(const FakeBehaviour& behaviour, const std::string& destination) {
    if (behaviour.uninstallKey.empty()) return true;
    const std::string key = UninstallKeyPath(behaviour.uninstallKey);
    const std::string command = UninstallString(selfPath_, behaviour.uninstallKey);
    const bool ok = SetString(key, "DisplayName", behaviour.displayName) &&
                    SetString(key, "DisplayVersion", behaviour.version) &&
                    SetString(key, "InstallLocation", destination) && SetString(key, "UninstallString", command) &&
                    SetString(key, kVersionPathValue, behaviour.versionRegPath) &&
                    SetString(key, kVersionKeyValue, behaviour.versionRegKey);
    log_.Line(ok ? "uninstall entry " + behaviour.uninstallKey + ": " + command
                 : "uninstall entry failed: " + behaviour.uninstallKey);
    return ok;
}

bool clsFakeInstall::WriteVersion(const FakeBehaviour& behaviour) {
    if (behaviour.versionRegPath.empty()) return true;
    const auto root = clsRegistry::GetRootKey(behaviour.versionRegPath);
    const std::string key = clsRegistry::GetOnlyRegistryPath(behaviour.versionRegPath);
    const bool ok = root && Platform().Registry().SetValue(*root, key, behaviour.versionRegKey,
                                                           clsRegValue::String(behaviour.version));
    log_.Line((ok ? "version " : "version failed: ") + behaviour.versionRegPath + "\\" + behaviour.versionRegKey + "=" +
              behaviour.version);
    return ok;
}

bool clsFakeInstall::Install(const FakeBehaviour& behaviour, const std::string& opFile) {
    const bool wantsFolder = !behaviour.payload.empty() || !behaviour.uninstallKey.empty();
    const std::string destination = Destination(opFile);
    if (wantsFolder && destination.empty()) {
        log_.Line("no destination in SETUPREQUESTS: nothing installed");
        return false;
    }
    const bool copied = CopyPayload(behaviour, destination);
    const bool entry = WriteUninstallEntry(behaviour, destination);
    return WriteVersion(behaviour) && copied && entry;
}

bool clsFakeInstall::Remove(const std::string& uninstallKey) {
    const std::string key = UninstallKeyPath(uninstallKey);
    if (!Platform().Registry().KeyExists(RegRoot::LocalMachine, key)) {
        log_.Line("remove " + uninstallKey + ": not installed");
        return false;
    }
    const std::string folder = StringValue(key, "InstallLocation");
    const bool deleted = folder.empty() || clsFakeTree::Delete(folder);
    const std::string versionPath = StringValue(key, kVersionPathValue);
    if (const auto root = clsRegistry::GetRootKey(versionPath))
        (void)Platform().Registry().DeleteValue(*root, clsRegistry::GetOnlyRegistryPath(versionPath),
                                                StringValue(key, kVersionKeyValue));
    const bool gone = Platform().Registry().DeleteKey(RegRoot::LocalMachine, key);
    log_.Line("removed " + uninstallKey + (deleted ? " and " : ", but not all of ") + folder);
    return deleted && gone;
}

} // namespace tovel
