#pragma once
// An emulated Windows machine: a host folder much like a Wine prefix.
//   <folder>/machine.ini    the system: version, language, code page, folders, drives, ...
//   <folder>/registry.reg   the registry, a REGEDIT4 text file written on every change
//   <folder>/drive_c/       C:\ (and drive_<x> for other local drives unless mapped elsewhere)
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/clsPlatformFiles.h"
#include "platform/clsPlatformSystem.h"

namespace tovel {

struct DriveMapping {
    char letter = 'C';
    DriveType type = DriveType::Fixed;
    std::string hostFolder;               ///< absolute, or relative to the machine folder
    std::optional<uint64_t> freeBytes;    ///< when set, the free space the drive reports
};

struct ShareMapping {
    std::string unc;                      ///< "\\server\share"
    std::string hostFolder;
};

/// Everything machine.ini holds.
struct MachineConfig {
    OsVersion version;
    uint16_t userLanguage = 2057;
    uint32_t ansiCodePage = 1252;
    bool administrator = true;
    ScreenSize screen{1024, 768};
    std::string windowsFolder = "C:\\WINDOWS";
    std::string systemFolder = "C:\\WINDOWS\\system32";
    std::string tempFolder = "C:\\WINDOWS\\TEMP";
    std::string longDateFormat = "dd MMMM yyyy";
    std::string timeFormat = "HH:mm:ss";
    std::string powerState = "on";        ///< "off" after a restart until the machine boots
    std::vector<std::string> fonts;
    std::vector<std::pair<std::string, std::string>> environment;
    std::vector<std::pair<std::string, std::string>> associations;  ///< ".txt" -> program path
    std::vector<DriveMapping> drives;
    std::vector<ShareMapping> shares;
};

class clsMachine {
public:
    /// Opens the machine in a host folder, creating it from the default profile when the
    /// folder has no machine.ini. nullptr with "file:line: what" in error when a file is damaged.
    [[nodiscard]] static std::unique_ptr<clsMachine> Open(const std::string& hostFolder, std::string& error);
    /// Creates a machine in a host folder from a configuration (folders, registry seeds).
    [[nodiscard]] static std::unique_ptr<clsMachine> Create(const std::string& hostFolder, MachineConfig config,
                                                            std::string& error);

    [[nodiscard]] const std::string& Folder() const { return folder_; }
    [[nodiscard]] std::string IniFile() const { return folder_ + "/machine.ini"; }
    [[nodiscard]] std::string RegistryFile() const { return folder_ + "/registry.reg"; }
    [[nodiscard]] MachineConfig& Config() { return config_; }
    [[nodiscard]] const MachineConfig& Config() const { return config_; }

    /// Writes machine.ini (atomically). False with the reason in error.
    [[nodiscard]] bool Save(std::string& error) const;

    /// The host path of an absolute Windows path ("C:\x", "\\server\share\x"): existing
    /// components are found without regard to case, missing ones keep the given spelling.
    /// nullopt when no drive or share maps the root.
    [[nodiscard]] std::optional<std::string> HostPath(const std::string& absoluteWindowsPath) const;
    /// The Windows path of a host path inside a mapped drive or share; nullopt if none maps it.
    [[nodiscard]] std::optional<std::string> WindowsPath(const std::string& hostPath) const;
    /// The mapping of a drive letter, or nullptr.
    [[nodiscard]] const DriveMapping* Drive(char letter) const;
    /// The host folder behind a drive or share, made absolute.
    [[nodiscard]] std::string HostRoot(const std::string& mappedFolder) const;

private:
    clsMachine(std::string folder, MachineConfig config) : folder_(std::move(folder)), config_(std::move(config)) {}

    std::string folder_;
    MachineConfig config_;
};

} // namespace tovel
