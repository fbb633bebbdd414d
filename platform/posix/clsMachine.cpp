#include "platform/posix/clsMachine.h"

#include <dirent.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsHostFile.h"
#include "platform/posix/clsMachineIni.h"
#include "platform/posix/clsMachineProfile.h"
#include "platform/posix/clsMachineRegistry.h"

namespace tovel {

namespace {

// The entry of a host folder whose name equals name without regard to case; an exact match wins.
std::optional<std::string> FindEntry(const std::string& folder, const std::string& name) {
    struct stat st {};
    // The common case, a name spelt as it is stored, needs no listing of the folder.
    if (::lstat((folder + "/" + name).c_str(), &st) == 0) return name;
    DIR* dir = opendir(folder.c_str());
    if (dir == nullptr) return std::nullopt;
    std::optional<std::string> found;
    while (const dirent* e = readdir(dir)) {
        const std::string entry = e->d_name;
        if (entry == name) {
            found = entry;
            break;
        }
        if (!found && clsWindowsPath::EqualNoCase(entry, name)) found = entry;
    }
    closedir(dir);
    return found;
}

bool StartsWithFolder(const std::string& path, const std::string& folder) {
    return path == folder || (path.size() > folder.size() && path.compare(0, folder.size(), folder) == 0 &&
                              path[folder.size()] == '/');
}

} // namespace

std::unique_ptr<clsMachine> clsMachine::Open(const std::string& hostFolder, std::string& error) {
    const std::string folder = std::filesystem::absolute(hostFolder).lexically_normal().string();
    const auto text = clsHostFile::Read(folder + "/machine.ini");
    if (!text) {
        if (std::filesystem::exists(folder + "/machine.ini")) {
            error = folder + "/machine.ini: cannot be read";
            return nullptr;
        }
        return Create(folder, clsMachineProfile::Default(), error);
    }
    MachineConfig config;
    if (!clsMachineIni::Parse(*text, folder + "/machine.ini", config, error)) return nullptr;
    return std::unique_ptr<clsMachine>(new clsMachine(folder, std::move(config)));
}

std::unique_ptr<clsMachine> clsMachine::Create(const std::string& hostFolder, MachineConfig config,
                                               std::string& error) {
    const std::string folder = std::filesystem::absolute(hostFolder).lexically_normal().string();
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    auto machine = std::unique_ptr<clsMachine>(new clsMachine(folder, std::move(config)));
    for (const auto& d : machine->config_.drives) {
        if (d.type == DriveType::Fixed) std::filesystem::create_directories(machine->HostRoot(d.hostFolder), ec);
    }
    for (const auto& windowsFolder : clsMachineProfile::FoldersToCreate(machine->config_)) {
        if (auto host = machine->HostPath(windowsFolder)) std::filesystem::create_directories(*host, ec);
    }
    if (ec) {
        error = folder + ": cannot create the machine's folders: " + ec.message();
        return nullptr;
    }
    if (!machine->Save(error)) return nullptr;
    clsMachineRegistry registry(machine->RegistryFile(), machine->config_.ansiCodePage);
    if (!registry.Load(error)) return nullptr;
    if (!clsMachineProfile::SeedRegistry(registry, machine->config_)) {
        error = machine->RegistryFile() + ": cannot be written";
        return nullptr;
    }
    return machine;
}

bool clsMachine::Save(std::string& error) const {
    std::string reason;
    if (clsHostFile::WriteAtomic(IniFile(), clsMachineIni::Write(config_), reason)) return true;
    error = IniFile() + ": cannot be written: " + reason;
    return false;
}

const DriveMapping* clsMachine::Drive(char letter) const {
    for (const auto& d : config_.drives) {
        if (d.letter == letter) return &d;
    }
    return nullptr;
}

std::string clsMachine::HostRoot(const std::string& mappedFolder) const {
    std::filesystem::path p(mappedFolder);
    if (p.is_relative()) p = std::filesystem::path(folder_) / p;
    std::string out = p.lexically_normal().string();
    while (out.size() > 1 && out.back() == '/') out.pop_back();
    return out;
}

std::optional<std::string> clsMachine::HostPath(const std::string& absoluteWindowsPath) const {
    const auto parts = clsWindowsPath::Resolve(absoluteWindowsPath, 0, {}, [](char) { return std::string(); });
    std::optional<std::string> root;
    if (const char letter = clsWindowsPath::DriveLetter(parts.root)) {
        if (const auto* d = Drive(letter)) root = HostRoot(d->hostFolder);
    } else if (clsWindowsPath::IsUnc(parts.root)) {
        const std::string unc = parts.root.substr(0, parts.root.size() - 1);
        for (const auto& s : config_.shares) {
            if (clsWindowsPath::EqualNoCase(s.unc, unc)) root = HostRoot(s.hostFolder);
        }
    }
    if (!root) return std::nullopt;
    std::string host = *root;
    bool exists = true;
    for (const auto& name : parts.components) {
        const auto entry = exists ? FindEntry(host, name) : std::nullopt;
        exists = entry.has_value();
        host += "/" + (entry ? *entry : name);
    }
    return host;
}

std::optional<std::string> clsMachine::WindowsPath(const std::string& hostPath) const {
    const std::string path = std::filesystem::path(hostPath).lexically_normal().string();
    auto under = [&](const std::string& mapped, const std::string& root) -> std::optional<std::string> {
        const std::string host = HostRoot(mapped);
        if (!StartsWithFolder(path, host)) return std::nullopt;
        std::string rest = path.substr(host.size());
        for (auto& c : rest) c = c == '/' ? '\\' : c;
        if (!rest.empty() && rest.front() == '\\') rest.erase(0, 1);
        return root + rest;
    };
    for (const auto& d : config_.drives) {
        if (auto p = under(d.hostFolder, std::string(1, d.letter) + ":\\")) return p;
    }
    for (const auto& s : config_.shares) {
        if (auto p = under(s.hostFolder, s.unc + "\\")) return p;
    }
    return std::nullopt;
}

} // namespace tovel
