#pragma once
// The registry of an emulated machine in memory, and its REGEDIT4 text form (registry.reg).
// Names compare without regard to case and keep the case they were created with; subkeys
// are kept in case-insensitive alphabetical order (the order NT enumerates them in), values
// in the order they were created.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clsPlatformRegistry.h"
#include "platform/clsRegValue.h"

namespace tovel {

struct RegistryValueEntry {
    std::string name;   ///< as created; empty for the default value
    std::string folded; ///< the name as compared
    clsRegValue value;
};

class clsRegistryKey {
public:
    clsRegistryKey() = default;
    explicit clsRegistryKey(std::string name);

    [[nodiscard]] const std::string& Name() const { return name_; }

    [[nodiscard]] const clsRegistryKey* FindSubkey(std::string_view name) const;
    [[nodiscard]] clsRegistryKey* FindSubkey(std::string_view name);
    /// The subkey of that name, created when missing.
    clsRegistryKey& CreateSubkey(const std::string& name);
    /// Removes a subkey that has no subkeys of its own; false otherwise.
    bool DeleteSubkey(std::string_view name);
    [[nodiscard]] const std::vector<clsRegistryKey>& Subkeys() const { return subkeys_; }

    [[nodiscard]] const clsRegValue* FindValue(std::string_view name) const;
    /// Adds a value at the end, or replaces one of the same name where it stands.
    void SetValue(const std::string& name, clsRegValue value);
    bool DeleteValue(std::string_view name);
    [[nodiscard]] const std::vector<RegistryValueEntry>& Values() const { return values_; }

private:
    std::string name_;
    std::string folded_;
    std::vector<clsRegistryKey> subkeys_;
    std::vector<RegistryValueEntry> values_;
};

class clsRegistryHive {
public:
    /// "HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER", "HKEY_USERS".
    [[nodiscard]] static const char* RootName(RegRoot root);
    /// The names of a key path "A\B\C"; an empty path is the root itself. nullopt when a name
    /// is empty (leading, trailing or doubled backslash) or cannot be a key name.
    [[nodiscard]] static std::optional<std::vector<std::string>> SplitPath(std::string_view path);
    /// True for a name a value can have here (the empty name is the default value).
    [[nodiscard]] static bool IsValidValueName(std::string_view name);
    /// The form a value is stored and read back in (a 4-byte raw DWORD becomes a number, the
    /// fields its type does not use are cleared).
    [[nodiscard]] static clsRegValue Canonical(const clsRegValue& value);

    [[nodiscard]] clsRegistryKey& Root(RegRoot root);
    [[nodiscard]] const clsRegistryKey& Root(RegRoot root) const;
    [[nodiscard]] const clsRegistryKey* Find(RegRoot root, const std::vector<std::string>& path) const;
    [[nodiscard]] clsRegistryKey* Find(RegRoot root, const std::vector<std::string>& path);
    /// The key, created with its missing parents.
    clsRegistryKey& Create(RegRoot root, const std::vector<std::string>& path);

    /// Reads REGEDIT4 text. A file that is not UTF-8 is taken to be in ansiCodePage. On
    /// failure returns false with "<fileName>:<line>: <what is wrong>" in error and leaves
    /// the hive as it was.
    [[nodiscard]] bool Parse(std::string_view content, const std::string& fileName, uint32_t ansiCodePage,
                             std::string& error);
    /// The REGEDIT4 text of the hive: UTF-8, CR LF line ends.
    [[nodiscard]] std::string Serialize() const;

private:
    clsRegistryKey roots_[3];
};

} // namespace tovel
