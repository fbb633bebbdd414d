#pragma once
// What the installation of one product depends on besides its record: the run-wide answers
// of the wizard, the disc's settings and the machine. The plan and the option file read them
// from here, so both stay functions of their inputs; the look-ups that need the machine come
// as functions, and an empty one means "not known" (the plan then says so).
#include <functional>
#include <string>
#include <vector>

#include "settings/clsIniText.h"

namespace tovel {

struct InstallContext {
    std::string workFolder = "C:\\";      ///< WorkFolder: the default place of OPFILE.TXT
    std::string setupLanguage = "B";      ///< letter of the setup language
    std::string productLanguages;         ///< letters the user chose for the products ("" none chosen)
    std::string discSetupMode;            ///< Setups.ini SetupMode
    std::string instType;                 ///< Setups.ini InstType
    bool jumpOverParam = false;           ///< Setups.ini JumpOverParam
    bool noOSCheck = false;               ///< NoOSCheck
    std::string commonDrive = "C";        ///< letter of the maker's shared folder

    /// Placeholder expansion; the text as it stands when empty.
    std::function<std::string(const std::string& text)> expand;
    /// The UninstallString of a deinstall key; when empty the command is read at run time.
    std::function<std::string(const std::string& deinstallKey)> uninstallString;
    /// The OPFILEENTRIES_BEGIN entries of a description file; none when empty.
    std::function<std::vector<IniEntry>(const std::string& sifPath)> extraEntries;
    /// Whether a drive root ("D:\") can be used; every drive when empty.
    std::function<bool(const std::string& root)> driveUsable;

    [[nodiscard]] std::string Expand(const std::string& text) const { return expand ? expand(text) : text; }
    [[nodiscard]] bool DriveUsable(const std::string& root) const { return !driveUsable || driveUsable(root); }
};

class clsInstallContext {
public:
    /// The context of this run: the globals, Setups.ini, the placeholders and the machine.
    /// productLanguages: the letters chosen on the product-language page.
    [[nodiscard]] static InstallContext Current(const std::string& productLanguages);
    /// A drive can be written to: a fixed, removable, network or RAM drive. A CD drive, a
    /// letter without a drive and a root that is no drive letter ("\\server") cannot.
    [[nodiscard]] static bool DriveUsable(const std::string& root);
};

} // namespace tovel
