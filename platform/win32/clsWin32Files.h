#pragma once
// Files and drives through the wide Win32 file API.
#include "platform/clsPlatformFiles.h"

namespace tovel {

class clsWin32Files : public clsPlatformFiles {
public:
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
};

} // namespace tovel
