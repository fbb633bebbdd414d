#pragma once
// Files and drives of the machine the setup runs on. Every path is a Windows path
// ("C:\WINDOWS\", "D:\Setups.ini", "\\server\share\x", or relative to the current folder).
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

/// The values GetDriveType answers.
enum class DriveType : uint32_t {
    Unknown = 0,
    NoRootDir = 1,
    Removable = 2,
    Fixed = 3,
    Remote = 4,
    CdRom = 5,
    RamDisk = 6,
};

struct FileEntry {
    std::string name;        ///< name as stored, without a folder
    bool isFolder = false;
    uint64_t size = 0;
    int64_t modified = 0;    ///< seconds since 1970, UTC
};

/// The version resource of a file: the values of its "\\StringFileInfo\\" block in the
/// language and code page that "\\VarFileInfo\\Translation" names.
struct FileVersionInfo {
    std::string fileVersion;       ///< "FileVersion", as written ("3.1.4000.1823")
    std::string originalFileName;  ///< "OriginalFilename"
    std::string productName;       ///< "ProductName"
    std::string translation;       ///< language and code page as eight hex digits ("040904B0")
};

class clsPlatformFiles {
public:
    virtual ~clsPlatformFiles() = default;

    /// True if a file (not a folder) exists at the path.
    [[nodiscard]] virtual bool FileExists(const std::string& path) = 0;
    /// True if a folder exists at the path; a drive root counts.
    [[nodiscard]] virtual bool FolderExists(const std::string& path) = 0;
    /// Size and time of a file or folder; nullopt if it does not exist.
    [[nodiscard]] virtual std::optional<FileEntry> Stat(const std::string& path) = 0;
    /// Creates the folder and any missing parents; true if it exists afterwards.
    [[nodiscard]] virtual bool CreateFolder(const std::string& path) = 0;
    /// Deletes a file; false if it did not exist or could not be deleted.
    [[nodiscard]] virtual bool DeleteFile(const std::string& path) = 0;
    /// Deletes an empty folder; false otherwise.
    [[nodiscard]] virtual bool DeleteFolder(const std::string& path) = 0;
    /// Copies a file; with failIfExists an existing target makes it fail.
    [[nodiscard]] virtual bool CopyFile(const std::string& from, const std::string& to, bool failIfExists) = 0;
    /// Renames or moves a file, replacing an existing target.
    [[nodiscard]] virtual bool MoveFile(const std::string& from, const std::string& to) = 0;
    /// The whole file as bytes; nullopt if it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> ReadFile(const std::string& path) = 0;
    /// Writes the whole file through a temporary file and a rename, so a reader sees the
    /// old or the new content, never a mix. False if nothing was written.
    [[nodiscard]] virtual bool WriteFileAtomic(const std::string& path, std::string_view bytes) = 0;
    /// Appends bytes to a file, creating it; the file is closed again before returning.
    [[nodiscard]] virtual bool AppendToFile(const std::string& path, std::string_view bytes) = 0;
    /// Entries of a folder without "." and ".."; empty if the folder cannot be listed.
    [[nodiscard]] virtual std::vector<FileEntry> ListFolder(const std::string& path) = 0;
    /// Entries whose names match a pattern with "*" and "?" in the last component
    /// ("D:\Products\*.ssf"), case-insensitively.
    [[nodiscard]] virtual std::vector<FileEntry> FindFiles(const std::string& pattern) = 0;
    /// The version resource of a file; nullopt when the file has none or cannot be read.
    [[nodiscard]] virtual std::optional<FileVersionInfo> FileVersion(const std::string& path) = 0;
    /// The type of the drive a root names ("C:\", "\\server\share\").
    [[nodiscard]] virtual DriveType GetDriveType(const std::string& root) = 0;
    /// Bytes free for the caller on the drive of the path; nullopt if unknown.
    [[nodiscard]] virtual std::optional<uint64_t> FreeSpace(const std::string& path) = 0;
    /// The current folder of the process, as GetCurrentDirectory gives it ("C:\", "D:\Disc").
    [[nodiscard]] virtual std::string CurrentFolder() = 0;
    /// The current folder kept for a drive letter; "X:\" when none was set.
    [[nodiscard]] virtual std::string CurrentFolderOfDrive(char letter) = 0;
    /// Makes a drive current, going to the folder remembered for it. False for a missing drive.
    [[nodiscard]] virtual bool SetCurrentDrive(char letter) = 0;
    /// Sets the current folder of the path's drive (and of the process if that drive is
    /// current, or for a UNC path). False if the folder does not exist.
    [[nodiscard]] virtual bool SetCurrentFolder(const std::string& path) = 0;
};

} // namespace tovel
