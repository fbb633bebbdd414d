#include "platform/posix/clsMachineFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsHostFile.h"
#include "platform/posix/clsVersionResource.h"

namespace fs = std::filesystem;

namespace tovel {

namespace {

std::optional<FileEntry> HostStat(const std::string& host, std::string name) {
    struct stat st {};
    if (::stat(host.c_str(), &st) != 0) return std::nullopt;
    FileEntry e;
    e.name = std::move(name);
    e.isFolder = S_ISDIR(st.st_mode);
    e.size = e.isFolder ? 0 : static_cast<uint64_t>(st.st_size);
    e.modified = st.st_mtime;
    return e;
}

bool IsKind(const std::optional<std::string>& host, bool folder) {
    if (!host) return false;
    const auto e = HostStat(*host, {});
    return e && e->isFolder == folder;
}

} // namespace

clsMachineFiles::clsMachineFiles(const clsMachine& machine, const std::string& startFolder) : machine_(machine) {
    if (!SetCurrentFolder(startFolder)) (void)SetCurrentFolder("C:\\");
    if (clsWindowsPath::DriveLetter(startFolder) != 0) (void)SetCurrentDrive(clsWindowsPath::DriveLetter(startFolder));
}

std::string clsMachineFiles::Absolute(const std::string& path) const {
    return clsWindowsPath::Join(clsWindowsPath::Resolve(path, currentDrive_, currentUnc_, [this](char letter) {
        const auto it = driveFolders_.find(letter);
        return it != driveFolders_.end() ? it->second : std::string(1, letter) + ":\\";
    }));
}

std::optional<std::string> clsMachineFiles::ToHost(const std::string& path) const {
    if (path.empty()) return std::nullopt;
    return machine_.HostPath(Absolute(path));
}

bool clsMachineFiles::FileExists(const std::string& path) { return IsKind(ToHost(path), false); }

bool clsMachineFiles::FolderExists(const std::string& path) { return IsKind(ToHost(path), true); }

std::optional<FileEntry> clsMachineFiles::Stat(const std::string& path) {
    const auto host = ToHost(path);
    if (!host) return std::nullopt;
    return HostStat(*host, fs::path(*host).filename().string());
}

bool clsMachineFiles::CreateFolder(const std::string& path) {
    const auto host = ToHost(path);
    if (!host) return false;
    std::error_code ec;
    fs::create_directories(*host, ec);
    return IsKind(host, true);
}

bool clsMachineFiles::DeleteFile(const std::string& path) {
    const auto host = ToHost(path);
    return IsKind(host, false) && ::unlink(host->c_str()) == 0;
}

bool clsMachineFiles::DeleteFolder(const std::string& path) {
    const auto host = ToHost(path);
    return host && ::rmdir(host->c_str()) == 0;
}

bool clsMachineFiles::CopyFile(const std::string& from, const std::string& to, bool failIfExists) {
    const auto src = ToHost(from);
    const auto dst = ToHost(to);
    if (!IsKind(src, false) || !dst) return false;
    std::error_code ec;
    const auto option = failIfExists ? fs::copy_options::none : fs::copy_options::overwrite_existing;
    return fs::copy_file(*src, *dst, option, ec) && !ec;
}

bool clsMachineFiles::MoveFile(const std::string& from, const std::string& to) {
    const auto src = ToHost(from);
    const auto dst = ToHost(to);
    if (!src || !dst || !HostStat(*src, {})) return false;
    std::error_code ec;
    fs::rename(*src, *dst, ec);
    if (!ec) return true;
    // Across host file systems a rename fails; Windows moves the file anyway.
    if (!fs::copy_file(*src, *dst, fs::copy_options::overwrite_existing, ec) || ec) return false;
    return fs::remove(*src, ec);
}

std::optional<std::string> clsMachineFiles::ReadFile(const std::string& path) {
    const auto host = ToHost(path);
    if (!IsKind(host, false)) return std::nullopt;
    return clsHostFile::Read(*host);
}

std::optional<FileVersionInfo> clsMachineFiles::FileVersion(const std::string& path) {
    const auto bytes = ReadFile(path);
    return bytes ? clsVersionResource::Parse(*bytes) : std::nullopt;
}

bool clsMachineFiles::WriteFileAtomic(const std::string& path, std::string_view bytes) {
    const auto host = ToHost(path);
    std::string error;
    return host && !IsKind(host, true) && clsHostFile::WriteAtomic(*host, bytes, error);
}

bool clsMachineFiles::AppendToFile(const std::string& path, std::string_view bytes) {
    const auto host = ToHost(path);
    if (!host) return false;
    const int fd = ::open(host->c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    return ::close(fd) == 0 && done == bytes.size();
}

std::vector<FileEntry> clsMachineFiles::ListFolder(const std::string& path) {
    std::vector<FileEntry> out;
    const auto host = ToHost(path);
    if (!host) return out;
    DIR* dir = opendir(host->c_str());
    if (dir == nullptr) return out;
    while (const dirent* d = readdir(dir)) {
        const std::string name = d->d_name;
        if (name == "." || name == "..") continue;
        if (auto e = HostStat(*host + "/" + name, name)) out.push_back(std::move(*e));
    }
    closedir(dir);
    return out;
}

std::vector<FileEntry> clsMachineFiles::FindFiles(const std::string& pattern) {
    const std::string absolute = Absolute(pattern);
    const size_t slash = absolute.find_last_of('\\');
    std::string mask = absolute.substr(slash + 1);
    if (mask == "*.*") mask = "*";  // Windows lets "*.*" match names without a dot too
    std::vector<FileEntry> out;
    for (auto& e : ListFolder(absolute.substr(0, slash + 1))) {
        if (clsWindowsPath::MatchWildcard(mask, e.name)) out.push_back(std::move(e));
    }
    return out;
}

DriveType clsMachineFiles::GetDriveType(const std::string& root) {
    if (clsWindowsPath::IsUnc(root)) return ToHost(root) && FolderExists(root) ? DriveType::Remote : DriveType::NoRootDir;
    const char letter = clsWindowsPath::DriveLetter(root.empty() ? CurrentFolder() : root);
    const auto* drive = machine_.Drive(letter);
    return drive != nullptr ? drive->type : DriveType::NoRootDir;
}

std::optional<uint64_t> clsMachineFiles::FreeSpace(const std::string& path) {
    const std::string absolute = Absolute(path);
    if (const auto* drive = machine_.Drive(clsWindowsPath::DriveLetter(absolute))) {
        if (drive->freeBytes) return drive->freeBytes;
        if (drive->type == DriveType::CdRom) return 0;
    }
    const auto root = clsWindowsPath::Resolve(absolute, 0, {}, [](char) { return std::string(); }).root;
    const auto host = machine_.HostPath(root);
    struct statvfs st {};
    if (!host || ::statvfs(host->c_str(), &st) != 0) return std::nullopt;
    return static_cast<uint64_t>(st.f_bavail) * st.f_frsize;
}

std::string clsMachineFiles::CurrentFolder() {
    return currentDrive_ == 0 ? currentUnc_ : CurrentFolderOfDrive(currentDrive_);
}

std::string clsMachineFiles::CurrentFolderOfDrive(char letter) {
    const auto it = driveFolders_.find(letter);
    return it != driveFolders_.end() ? it->second : std::string(1, letter) + ":\\";
}

bool clsMachineFiles::SetCurrentDrive(char letter) {
    const char upper = clsWindowsPath::DriveLetter(std::string(1, letter) + ":");
    if (!FolderExists(std::string(1, upper) + ":\\")) return false;
    currentDrive_ = upper;
    return true;
}

bool clsMachineFiles::SetCurrentFolder(const std::string& path) {
    if (path.empty() || !FolderExists(path)) return false;
    std::string absolute = Absolute(path);
    if (clsWindowsPath::IsUnc(absolute)) {
        currentDrive_ = 0;
        currentUnc_ = absolute;
        return true;
    }
    driveFolders_[clsWindowsPath::DriveLetter(absolute)] = absolute;
    return true;
}

} // namespace tovel
