#pragma once
// The registry of the machine. Keys are named by a root and a path below it
// ("SOFTWARE\Microsoft\Windows\CurrentVersion\RunOnce"), without leading or trailing
// backslash; names are case-insensitive and keep the case they were created with.
#include <optional>
#include <string>
#include <vector>

#include "platform/clsRegValue.h"

namespace tovel {

enum class RegRoot {
    LocalMachine,
    CurrentUser,
    Users,
};

class clsPlatformRegistry {
public:
    virtual ~clsPlatformRegistry() = default;

    /// True if the key can be opened for reading.
    [[nodiscard]] virtual bool KeyExists(RegRoot root, const std::string& key) = 0;
    /// Creates the key and missing parents; true if it exists afterwards.
    [[nodiscard]] virtual bool CreateKey(RegRoot root, const std::string& key) = 0;
    /// The value; the empty name is the key's default value. nullopt if key or value is missing.
    [[nodiscard]] virtual std::optional<clsRegValue> QueryValue(RegRoot root, const std::string& key,
                                                                const std::string& name) = 0;
    /// Writes a value, creating the key if needed. False if nothing was written.
    [[nodiscard]] virtual bool SetValue(RegRoot root, const std::string& key, const std::string& name,
                                        const clsRegValue& value) = 0;
    /// Names of the subkeys; nullopt if the key cannot be opened.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> EnumKeys(RegRoot root, const std::string& key) = 0;
    /// Names of the values in the order the registry gives them; nullopt if the key cannot be opened.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> EnumValues(RegRoot root, const std::string& key) = 0;
    /// Deletes a key that has no subkeys. False if it is missing or still has subkeys.
    [[nodiscard]] virtual bool DeleteKey(RegRoot root, const std::string& key) = 0;
    /// Deletes a value. False if it is missing.
    [[nodiscard]] virtual bool DeleteValue(RegRoot root, const std::string& key, const std::string& name) = 0;
};

} // namespace tovel
