#pragma once
// The registry as the rest of the setup sees it: one key named by a root and a path, values
// read and written as text. Product versions and install paths, the resume entry, uninstall
// keys and prerequisite probes all come through here.
//
// Paths. A full path is "HKEY_LOCAL_MACHINE\SOFTWARE\x"; one leading and one trailing
// backslash are dropped. Only HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER and HKEY_USERS are
// known, in any case, and only as a whole component. The first component that names one is
// the root: "Computer\HKEY_CURRENT_USER\x" works, and in "HKEY_CURRENT_USER\Software\X"
// followed by "\HKEY_LOCAL_MACHINE" the second is part of the key path. ExistRootKeyInPath
// wants the root at the start. A path naming no known root (HKEY_CLASSES_ROOT, "SOFTWARE\x") gives no root and
// an empty key path, and InitWithRegPath leaves the object as it was.
//
// Reading. Every key is opened for the one operation and closed again; nothing is kept
// open. A key or value that cannot be opened or read gives an empty text, false or an empty
// list, and nothing is shown: most reads are probes whose answer may well be "not there".
//
// Value texts:
//   REG_SZ, REG_EXPAND_SZ  the string up to its first NUL, not expanded
//   REG_BINARY             each byte in decimal with at least two digits, separated by one
//                          blank: 05 00 255 (an empty value gives "")
//   REG_DWORD              unsigned decimal: 4294967295, not -1
//   REG_MULTI_SZ           the strings joined by "," (GetMultiSZ keeps them apart)
//   anything else          "" (QWORD, REG_NONE, a DWORD that is not four bytes long)
//
// Writing (SetKeyValue) takes the same texts back, so what was read can be written again:
//   Sz, ExpandSz  the text up to its first NUL
//   Dword         a decimal number 0..4294967295, blanks around it allowed
//   Binary        decimal numbers 0..255 separated by blanks; "" is an empty value
//   MultiSz       the text split at ","; empty parts are dropped, since an empty string
//                 would end the list ("" writes a multi-string with no strings)
// A text the type cannot take, or any other type, writes nothing and returns false; that is
// bad input from a setup file or a program fault, so it goes to the reporter.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/clsPlatformRegistry.h"

namespace tovel {

class clsRegistry {
public:
    using Reporter = std::function<void(const std::string& message)>;

    /// HKEY_LOCAL_MACHINE, empty key path: the caller sets the key before use.
    clsRegistry() = default;
    clsRegistry(RegRoot root, const std::string& keyPath);

    [[nodiscard]] RegRoot RootKey() const { return root_; }
    void SetRootKey(RegRoot root) { root_ = root; }
    [[nodiscard]] const std::string& KeyPath() const { return keyPath_; }
    /// Drops one leading and one trailing backslash.
    void SetKeyPath(const std::string& keyPath);

    /// Binds the object to the root and key path of a full path. False (object unchanged)
    /// when the path names no known root.
    bool InitWithRegPath(const std::string& fullPath);
    /// True if the path begins with a known root name (after one leading backslash).
    [[nodiscard]] static bool ExistRootKeyInPath(const std::string& fullPath);
    /// The root a full path names; nullopt when it names none.
    [[nodiscard]] static std::optional<RegRoot> GetRootKey(const std::string& fullPath);
    /// The key path of a full path without its root; "" when it names no known root.
    [[nodiscard]] static std::string GetOnlyRegistryPath(const std::string& fullPath);

    [[nodiscard]] bool KeyExists() const;
    /// True if the key has a value of this name ("" is the default value).
    [[nodiscard]] bool ValueExist(const std::string& name) const;
    /// True if the key has at least one value.
    [[nodiscard]] bool ExistValues() const;

    /// A value as text (see above). The three names serve callers that know the value by
    /// different names; they read alike.
    [[nodiscard]] std::string QueryValue(const std::string& name) const;
    [[nodiscard]] std::string QueryValueEx(const std::string& name) const;
    [[nodiscard]] std::string GetKeyValue(const std::string& name) const;
    /// The strings of a REG_MULTI_SZ value; empty for a missing value or one of another type.
    [[nodiscard]] std::vector<std::string> GetMultiSZ(const std::string& name) const;

    /// Writes a value from its text (see above), creating the key if needed.
    bool SetKeyValue(const std::string& name, const std::string& value, RegType type) const;
    /// Creates a key below the object's key ("" creates the object's key itself), with any
    /// missing parents.
    bool CreateNewKey(const std::string& path) const;
    /// Deletes a key below the object's key. A key with subkeys stays (as on Windows NT), and
    /// "" is refused: the object's own key goes only through DeleteKey2 with its full path.
    bool DeleteKey(const std::string& path) const;
    /// Deletes a key given by its full path; a key with subkeys stays, and a bare root is refused.
    static bool DeleteKey2(const std::string& fullPath);
    bool DeleteValue(const std::string& name) const;

    /// Names of the subkeys.
    [[nodiscard]] std::vector<std::string> EnumerateSubKeys() const;
    /// Names and texts of the values, in the order the registry gives them.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>> EnumerateValues() const;

    /// The text up to its first NUL.
    [[nodiscard]] static std::string TrimNull(std::string_view text);

    /// Where bad input is told (the setup log once it runs); none by default.
    static void SetReporter(Reporter reporter);

private:
    [[nodiscard]] std::string Below(const std::string& path) const;

    RegRoot root_ = RegRoot::LocalMachine;
    std::string keyPath_;
};

} // namespace tovel
