#pragma once
// The registry of an emulated machine, kept in one REGEDIT4 file that several processes share
// (the setup and the product setups it starts). Every operation first picks up changes other
// processes made to the file; every change is a read-modify-write under an exclusive lock on
// "<file>.lock", written atomically, so the file always holds a whole registry.
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/clsPlatformRegistry.h"
#include "platform/posix/clsRegistryHive.h"

struct stat;

namespace tovel {

class clsMachineRegistry : public clsPlatformRegistry {
public:
    clsMachineRegistry(std::string hostFile, uint32_t ansiCodePage);

    /// Reads the file; a missing file is an empty registry. False with "<file>:<line>: what"
    /// in error when it is damaged or cannot be read.
    [[nodiscard]] bool Load(std::string& error);
    /// Where problems that an operation cannot return go (a damaged file found on reloading,
    /// a change that could not be written). It must not call back into this registry.
    void SetReporter(std::function<void(const std::string&)> reporter);

    [[nodiscard]] bool KeyExists(RegRoot root, const std::string& key) override;
    [[nodiscard]] bool CreateKey(RegRoot root, const std::string& key) override;
    [[nodiscard]] std::optional<clsRegValue> QueryValue(RegRoot root, const std::string& key,
                                                        const std::string& name) override;
    [[nodiscard]] bool SetValue(RegRoot root, const std::string& key, const std::string& name,
                                const clsRegValue& value) override;
    [[nodiscard]] std::optional<std::vector<std::string>> EnumKeys(RegRoot root, const std::string& key) override;
    [[nodiscard]] std::optional<std::vector<std::string>> EnumValues(RegRoot root, const std::string& key) override;
    [[nodiscard]] bool DeleteKey(RegRoot root, const std::string& key) override;
    [[nodiscard]] bool DeleteValue(RegRoot root, const std::string& key, const std::string& name) override;

private:
    /// What identifies one version of the file. Writers here make every new version's
    /// modification time later than the one it replaces, so equal stamps mean equal files.
    struct FileStamp {
        bool exists = false;
        uint64_t device = 0;
        uint64_t inode = 0;
        int64_t size = 0;
        int64_t modifiedSeconds = 0;
        int64_t modifiedNanoseconds = 0;
        bool operator==(const FileStamp&) const = default;
    };
    enum class Outcome { Unchanged, Changed, Refused };

    static FileStamp StampOf(const struct stat& st);
    /// The stamp of the file as it is now.
    static FileStamp Stat(const std::string& path);
    bool ReadFile(std::string& error);
    const clsRegistryKey* FindKey(RegRoot root, const std::string& key);
    void Refresh();
    template <typename Check, typename Apply>
    bool Modify(Check check, Apply apply);
    bool WriteFile(const std::string& bytes, FileStamp& written, std::string& reason);
    void Report(const std::string& message);

    std::mutex mutex_;
    std::string hostFile_;
    uint32_t ansiCodePage_;
    clsRegistryHive hive_;
    std::optional<FileStamp> loaded_;    ///< the file version hive_ holds; nullopt before the first read
    std::optional<FileStamp> reported_;  ///< a damaged version already reported
    std::function<void(const std::string&)> reporter_;
};

} // namespace tovel
