#include "common/clsFileDisk.h"

#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

std::string clsFileDisk::WindowsFolder() const { return AddBackslash(Platform().System().WindowsFolder()); }

std::string clsFileDisk::SystemFolder() const { return AddBackslash(Platform().System().SystemFolder()); }

std::string clsFileDisk::TempFolder() const { return AddBackslash(Platform().System().TempFolder()); }

std::vector<std::string> clsFileDisk::RemoveResumeLink() {
    static constexpr const char* kShellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    static const std::pair<RegRoot, const char*> kFolders[] = {{RegRoot::CurrentUser, "Startup"},
                                                               {RegRoot::CurrentUser, "Desktop"},
                                                               {RegRoot::LocalMachine, "Common Startup"},
                                                               {RegRoot::LocalMachine, "Common Desktop"}};
    std::vector<std::string> removed;
    for (const auto& [root, name] : kFolders) {
        const auto folder = Platform().Registry().QueryValue(root, kShellFolders, name);
        if (!folder || folder->text.empty()) continue;
        const std::string link = AddBackslash(folder->text) + "ZZ_TSetup.lnk";
        if (Platform().Files().FileExists(link) && Platform().Files().DeleteFile(link)) removed.push_back(link);
    }
    return removed;
}

std::string clsFileDisk::WindowsDriveRoot() const {
    const std::string windows = WindowsFolder();
    const size_t colon = windows.find(':');
    if (colon == std::string::npos || colon == 0) return {};
    return windows.substr(colon - 1, 2) + "\\";
}

std::string clsFileDisk::AddBackslash(std::string path) { return clsWindowsPath::AddBackslash(std::move(path)); }

std::vector<DriveInfo> clsFileDisk::Drives() {
    std::vector<DriveInfo> drives;
    auto& files = Platform().Files();
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        DriveInfo drive{letter, DriveType::Unknown};
        drive.type = files.GetDriveType(drive.Root());
        if (drive.type != DriveType::Unknown && drive.type != DriveType::NoRootDir) drives.push_back(drive);
    }
    return drives;
}

std::optional<uint64_t> clsFileDisk::FreeMegabytes(const std::string& path) {
    const auto bytes = Platform().Files().FreeSpace(path);
    if (!bytes) return std::nullopt;
    return *bytes / (1024 * 1024);
}

namespace {

std::string WithoutTrailingBackslash(std::string path) {
    while (path.size() > 1 && path.back() == '\\') path.pop_back();
    return path;
}

bool StartsWithFolder(const std::string& path, const std::string& folder) {
    if (folder.empty() || path.size() < folder.size()) return false;
    if (!clsWindowsPath::EqualNoCase(std::string_view(path).substr(0, folder.size()), folder)) return false;
    return path.size() == folder.size() || path[folder.size()] == '\\';
}

// "D:" for a drive path, "\\server\share" for a UNC path, "" otherwise.
std::string RootOf(const std::string& path) {
    if (path.size() >= 2 && path[1] == ':') return path.substr(0, 2);
    if (path.rfind("\\\\", 0) != 0) return {};
    const size_t server = path.find('\\', 2);
    if (server == std::string::npos) return path;
    const size_t share = path.find('\\', server + 1);
    return share == std::string::npos ? path : path.substr(0, share);
}

// The number of a "Cd_<n>" path component; 0 for any other component.
int DiscNumberOf(std::string_view component) {
    if (component.size() < 4 || !clsWindowsPath::EqualNoCase(component.substr(0, 3), "Cd_")) return 0;
    int number = 0;
    for (char c : component.substr(3)) {
        if (c < '0' || c > '9' || number > 99999) return 0;
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

SetupFileBase clsFileDisk::SetupFileBaseOf(const std::string& sifFolder, const std::string& productFolder) {
    const std::string folder = WithoutTrailingBackslash(sifFolder);
    for (size_t end = folder.size(); end > 0;) {
        const size_t slash = folder.rfind('\\', end - 1);
        const size_t begin = slash == std::string::npos ? 0 : slash + 1;
        const int number = DiscNumberOf(std::string_view(folder).substr(begin, end - begin));
        if (number > 0) return {folder.substr(0, end), number};
        if (slash == std::string::npos || slash == 0) break;
        end = slash;
    }
    const std::string products = WithoutTrailingBackslash(productFolder);
    if (StartsWithFolder(folder, products)) return {products, 1};
    return {RootOf(folder), 1};
}

std::string clsFileDisk::ResolveSetupFile(const std::string& file, const std::string& sifFolder, const SetupFileBase& base) {
    if (file.empty() || file.find(":\\") != std::string::npos || file.rfind("\\\\", 0) == 0) return file;
    if (file.front() == '\\') return base.discRoot + file;
    return WithoutTrailingBackslash(sifFolder) + "\\" + file;
}

std::string clsFileDisk::DiscRelativePath(const std::string& fullPath, const SetupFileBase& base) {
    if (base.discRoot.empty() || !StartsWithFolder(fullPath, base.discRoot) || fullPath.size() == base.discRoot.size()) return {};
    return fullPath.substr(base.discRoot.size() + 1);
}

} // namespace tovel
