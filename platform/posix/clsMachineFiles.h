#pragma once
// Files and drives of an emulated machine: Windows paths resolved through its drive and
// share mappings, names found without regard to case, and the current folder of each drive.
#include <map>

#include "platform/clsPlatformFiles.h"
#include "platform/posix/clsMachine.h"

namespace tovel {

class clsMachineFiles : public clsPlatformFiles {
public:
    /// startFolder: the current folder the process starts in (a Windows path).
    clsMachineFiles(const clsMachine& machine, const std::string& startFolder);

    /// The host path a Windows path (absolute or relative to the current folder) stands for.
    [[nodiscard]] std::optional<std::string> ToHost(const std::string& path) const;
    /// The path made absolute against the current folders.
    [[nodiscard]] std::string Absolute(const std::string& path) const;

    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    std::optional<FileEntry> Stat(const std::string& path) override;
    bool CreateFolder(const std::string& path) override;
    bool DeleteFile(const std::string& path) override;
    bool DeleteFolder(const std::string& path) override;
    bool CopyFile(const std::string& from, const std::string& to, bool failIfExists) override;
    bool MoveFile(const std::string& from, const std::string& to) override;
    std::optional<std::string> ReadFile(const std::string& path) override;
    bool WriteFileAtomic(const std::string& path, std::string_view bytes) override;
    bool AppendToFile(const std::string& path, std::string_view bytes) override;
    std::vector<FileEntry> ListFolder(const std::string& path) override;
    std::vector<FileEntry> FindFiles(const std::string& pattern) override;
    std::optional<FileVersionInfo> FileVersion(const std::string& path) override;
    DriveType GetDriveType(const std::string& root) override;
    std::optional<uint64_t> FreeSpace(const std::string& path) override;
    std::string CurrentFolder() override;
    std::string CurrentFolderOfDrive(char letter) override;
    bool SetCurrentDrive(char letter) override;
    bool SetCurrentFolder(const std::string& path) override;

private:
    const clsMachine& machine_;
    char currentDrive_ = 'C';            // 0 while the current folder is a UNC path
    std::string currentUnc_;
    std::map<char, std::string> driveFolders_;
};

} // namespace tovel
