#include "platform/posix/clsMachineRegistry.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <utility>

#include "platform/posix/clsHostFile.h"

namespace tovel {

namespace {

std::string ErrnoText(int error) {
    return std::strerror(error);
}

// Held for one read-modify-write; closing the descriptor releases the lock.
class LockFile {
public:
    LockFile() = default;
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    ~LockFile() {
        if (fd_ >= 0) ::close(fd_);
    }

    bool Acquire(const std::string& path, std::string& reason) {
        fd_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd_ < 0) {
            const int createError = errno;
            // An existing lock file can be locked through a read-only descriptor.
            fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
            if (fd_ < 0) {
                reason = "cannot create lock file " + path + ": " + ErrnoText(createError);
                return false;
            }
        }
        while (::flock(fd_, LOCK_EX) != 0) {
            if (errno != EINTR) {
                reason = "cannot lock " + path + ": " + ErrnoText(errno);
                return false;
            }
        }
        return true;
    }

private:
    int fd_ = -1;
};


} // namespace

clsMachineRegistry::clsMachineRegistry(std::string hostFile, uint32_t ansiCodePage)
    : hostFile_(std::move(hostFile)), ansiCodePage_(ansiCodePage) {
    reporter_ = [](const std::string& message) { std::cerr << "tovelsetup: " << message << std::endl; };
}

void clsMachineRegistry::SetReporter(std::function<void(const std::string&)> reporter) {
    std::lock_guard lock(mutex_);
    reporter_ = std::move(reporter);
}

void clsMachineRegistry::Report(const std::string& message) {
    if (reporter_) reporter_(message);
}

clsMachineRegistry::FileStamp clsMachineRegistry::StampOf(const struct stat& st) {
    return {true, static_cast<uint64_t>(st.st_dev), static_cast<uint64_t>(st.st_ino), static_cast<int64_t>(st.st_size),
            static_cast<int64_t>(st.st_mtim.tv_sec), static_cast<int64_t>(st.st_mtim.tv_nsec)};
}

// A stat failure other than "missing" gives a stamp no read produces, so the file is read
// (and the failure reported) again.
clsMachineRegistry::FileStamp clsMachineRegistry::Stat(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) == 0) return StampOf(st);
    FileStamp stamp;
    if (errno != ENOENT) stamp.size = -1;
    return stamp;
}

// Reads the file as it is now into hive_ and loaded_. On failure the state stays, error holds
// the reason, and reported_ the version that could not be read.
bool clsMachineRegistry::ReadFile(std::string& error) {
    FileStamp stamp;
    const int fd = ::open(hostFile_.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            hive_ = clsRegistryHive();
            loaded_ = stamp;
            return true;
        }
        error = "cannot read registry file " + hostFile_ + ": " + ErrnoText(errno);
        reported_ = Stat(hostFile_);
        return false;
    }
    struct stat st {};
    std::string content;
    bool readOk = ::fstat(fd, &st) == 0;
    if (readOk) {
        stamp = StampOf(st);
        char buffer[65536];
        for (;;) {
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n < 0 && errno == EINTR) continue;
            if (n < 0) readOk = false;
            if (n <= 0) break;
            content.append(buffer, static_cast<size_t>(n));
        }
    }
    const int readError = errno;
    ::close(fd);
    if (!readOk) {
        error = "cannot read registry file " + hostFile_ + ": " + ErrnoText(readError);
        reported_ = stamp;
        return false;
    }
    clsRegistryHive parsed;
    if (!parsed.Parse(content, hostFile_, ansiCodePage_, error)) {
        reported_ = stamp;
        return false;
    }
    hive_ = std::move(parsed);
    loaded_ = stamp;
    return true;
}

bool clsMachineRegistry::Load(std::string& error) {
    std::lock_guard lock(mutex_);
    return ReadFile(error);
}

void clsMachineRegistry::Refresh() {
    const FileStamp now = Stat(hostFile_);
    if (loaded_ && *loaded_ == now) return;
    if (reported_ && *reported_ == now) return;
    std::string error;
    if (!ReadFile(error)) Report(error + " (keeping the registry as last read)");
}

const clsRegistryKey* clsMachineRegistry::FindKey(RegRoot root, const std::string& key) {
    const std::optional<std::vector<std::string>> path = clsRegistryHive::SplitPath(key);
    return path ? hive_.Find(root, *path) : nullptr;
}

bool clsMachineRegistry::WriteFile(const std::string& bytes, FileStamp& written, std::string& reason) {
    struct stat st {};
    if (!clsHostFile::WriteAtomic(hostFile_, bytes, reason, &st)) return false;
    written = StampOf(st);
    return true;
}

// check(const hive&) says whether the operation changes anything; apply(hive&) makes the
// change. A change is made on a copy, written, and only then becomes the state.
template <typename Check, typename Apply>
bool clsMachineRegistry::Modify(Check check, Apply apply) {
    std::lock_guard lock(mutex_);
    Refresh();
    // Nothing to write: no lock, and a read-only machine still answers.
    const Outcome first = check(std::as_const(hive_));
    if (first != Outcome::Changed) return first == Outcome::Unchanged;

    LockFile fileLock;
    std::string reason;
    if (!fileLock.Acquire(hostFile_ + ".lock", reason)) {
        Report("cannot write registry file " + hostFile_ + ": " + reason);
        return false;
    }
    // Another process may have written since the check.
    if (!loaded_ || *loaded_ != Stat(hostFile_)) {
        std::string error;
        if (!ReadFile(error)) {
            Report(error + " (the change was not written)");
            return false;
        }
        const Outcome again = check(std::as_const(hive_));
        if (again != Outcome::Changed) return again == Outcome::Unchanged;
    }
    clsRegistryHive changed = hive_;
    apply(changed);
    FileStamp written;
    if (!WriteFile(changed.Serialize(), written, reason)) {
        Report("cannot write registry file " + hostFile_ + ": " + reason);
        return false;
    }
    hive_ = std::move(changed);
    loaded_ = written;
    return true;
}

bool clsMachineRegistry::KeyExists(RegRoot root, const std::string& key) {
    std::lock_guard lock(mutex_);
    Refresh();
    return FindKey(root, key) != nullptr;
}

bool clsMachineRegistry::CreateKey(RegRoot root, const std::string& key) {
    const std::optional<std::vector<std::string>> path = clsRegistryHive::SplitPath(key);
    if (!path) return false;
    return Modify(
        [&](const clsRegistryHive& hive) { return hive.Find(root, *path) ? Outcome::Unchanged : Outcome::Changed; },
        [&](clsRegistryHive& hive) { hive.Create(root, *path); });
}

std::optional<clsRegValue> clsMachineRegistry::QueryValue(RegRoot root, const std::string& key,
                                                          const std::string& name) {
    std::lock_guard lock(mutex_);
    Refresh();
    const clsRegistryKey* found = FindKey(root, key);
    if (found == nullptr) return std::nullopt;
    const clsRegValue* value = found->FindValue(name);
    if (value == nullptr) return std::nullopt;
    return *value;
}

bool clsMachineRegistry::SetValue(RegRoot root, const std::string& key, const std::string& name,
                                  const clsRegValue& value) {
    const std::optional<std::vector<std::string>> path = clsRegistryHive::SplitPath(key);
    if (!path || !clsRegistryHive::IsValidValueName(name)) return false;
    const clsRegValue stored = clsRegistryHive::Canonical(value);
    return Modify(
        [&](const clsRegistryHive& hive) {
            const clsRegistryKey* found = hive.Find(root, *path);
            const clsRegValue* old = found ? found->FindValue(name) : nullptr;
            return old != nullptr && *old == stored ? Outcome::Unchanged : Outcome::Changed;
        },
        [&](clsRegistryHive& hive) { hive.Create(root, *path).SetValue(name, stored); });
}

std::optional<std::vector<std::string>> clsMachineRegistry::EnumKeys(RegRoot root, const std::string& key) {
    std::lock_guard lock(mutex_);
    Refresh();
    const clsRegistryKey* found = FindKey(root, key);
    if (found == nullptr) return std::nullopt;
    std::vector<std::string> names;
    names.reserve(found->Subkeys().size());
    for (const clsRegistryKey& sub : found->Subkeys()) names.push_back(sub.Name());
    return names;
}

std::optional<std::vector<std::string>> clsMachineRegistry::EnumValues(RegRoot root, const std::string& key) {
    std::lock_guard lock(mutex_);
    Refresh();
    const clsRegistryKey* found = FindKey(root, key);
    if (found == nullptr) return std::nullopt;
    std::vector<std::string> names;
    names.reserve(found->Values().size());
    for (const RegistryValueEntry& entry : found->Values()) names.push_back(entry.name);
    return names;
}

bool clsMachineRegistry::DeleteKey(RegRoot root, const std::string& key) {
    const std::optional<std::vector<std::string>> path = clsRegistryHive::SplitPath(key);
    if (!path || path->empty()) return false;  // a root cannot be deleted
    std::vector<std::string> parent(path->begin(), path->end() - 1);
    return Modify(
        [&](const clsRegistryHive& hive) {
            const clsRegistryKey* found = hive.Find(root, *path);
            return found != nullptr && found->Subkeys().empty() ? Outcome::Changed : Outcome::Refused;
        },
        [&](clsRegistryHive& hive) { (void)hive.Find(root, parent)->DeleteSubkey(path->back()); });
}

bool clsMachineRegistry::DeleteValue(RegRoot root, const std::string& key, const std::string& name) {
    const std::optional<std::vector<std::string>> path = clsRegistryHive::SplitPath(key);
    if (!path) return false;
    return Modify(
        [&](const clsRegistryHive& hive) {
            const clsRegistryKey* found = hive.Find(root, *path);
            return found != nullptr && found->FindValue(name) != nullptr ? Outcome::Changed : Outcome::Refused;
        },
        [&](clsRegistryHive& hive) { (void)hive.Find(root, *path)->DeleteValue(name); });
}

} // namespace tovel
