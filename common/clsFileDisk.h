#pragma once
// Drive and folder helpers the setup needs from start-up to the destination page.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/clsPlatformFiles.h"

namespace tovel {

/// Where the setup files of a description file lie: the root of its disc and the disc's number.
struct SetupFileBase {
    std::string discRoot;   ///< without a trailing backslash: "D:\Cd_2", "D:\Products"
    int discNumber = 1;
};

/// A drive of the machine and what kind it is.
struct DriveInfo {
    char letter = 'C';
    DriveType type = DriveType::Unknown;
    /// "C:\"
    [[nodiscard]] std::string Root() const { return std::string(1, letter) + ":\\"; }
};

class clsFileDisk {
public:
    /// The Windows folder with a trailing backslash.
    [[nodiscard]] std::string WindowsFolder() const;
    /// The Windows system folder with a trailing backslash.
    [[nodiscard]] std::string SystemFolder() const;
    /// The temporary folder with a trailing backslash.
    [[nodiscard]] std::string TempFolder() const;
    /// The root of the drive Windows is on ("C:\"); empty when Windows lies on a network path.
    [[nodiscard]] std::string WindowsDriveRoot() const;
    /// Deletes the resume link "ZZ_TSetup.lnk" that an interrupted run may have left in the
    /// start-up folders or on the desktops (the user's and all users', as the registry's
    /// "Shell Folders" name them); the paths of the links deleted.
    static std::vector<std::string> RemoveResumeLink();
    /// The path with a trailing backslash, added only when missing.
    [[nodiscard]] static std::string AddBackslash(std::string path);

    /// The drives of the machine from A to Z with their types; a letter without a drive is
    /// left out. Only the type is asked for, so an empty floppy or CD drive is not touched.
    [[nodiscard]] static std::vector<DriveInfo> Drives();
    /// Megabytes (of 1,048,576 bytes, rounded down) free for the caller on the drive of a
    /// path; nullopt when the machine cannot tell.
    [[nodiscard]] static std::optional<uint64_t> FreeMegabytes(const std::string& path);

    /// The disc a description file's folder belongs to. A folder inside a disc folder
    /// "Cd_<n>" (the last such component of the path, any case) belongs to disc n, whose root
    /// is that folder. Any other folder belongs to disc 1, whose root is the product folder
    /// when the file lies below it, else the drive or share the file lies on.
    [[nodiscard]] static SetupFileBase SetupFileBaseOf(const std::string& sifFolder, const std::string& productFolder);
    /// A setup (or readme) path of a description file made full: "" stays "", a path with
    /// ":\" or a UNC path stays as it is, one that begins with "\" is below the disc's root,
    /// any other is below the description file's folder.
    [[nodiscard]] static std::string ResolveSetupFile(const std::string& file, const std::string& sifFolder,
                                                      const SetupFileBase& base);
    /// A full path below the disc's root without that root ("Prod\setup.exe"); "" when the
    /// path does not lie below it.
    [[nodiscard]] static std::string DiscRelativePath(const std::string& fullPath, const SetupFileBase& base);
};

} // namespace tovel
