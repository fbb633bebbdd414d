#pragma once
// The removal of a product's installed version before its new setup runs: the command Windows
// keeps under the product's uninstall key, made to run without questions, run to its end.
#include <string>

namespace tovel {

class clsDeinstall {
public:
    /// "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\" below HKEY_LOCAL_MACHINE.
    static constexpr const char* kUninstallPath = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";

    /// The command with "-a -y " put directly before the "-f" of its first " -f" (any case),
    /// so the uninstaller runs by itself and answers yes; a command without " -f" unchanged.
    [[nodiscard]] static std::string WithAutoAnswers(const std::string& command);
    /// The full registry path of a deinstall key: "HKEY_LOCAL_MACHINE\SOFTWARE\...\Uninstall\<key>".
    [[nodiscard]] static std::string KeyPath(const std::string& deinstallKey);
    /// The UninstallString of a deinstall key; "" when there is none.
    [[nodiscard]] static std::string UninstallString(const std::string& deinstallKey);
    /// Removes the installed version: logs the begin and end lines, runs the uninstall command
    /// (with the automatic answers) in a normal window and waits for its end without limit.
    /// A trimmed empty key does nothing. The exit code is not evaluated.
    static void Run(const std::string& deinstallKey);
};

} // namespace tovel
