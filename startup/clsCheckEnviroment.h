#pragma once
// Checks of the machine before anything is installed, at three moments: the operating-system
// data during start-up; the start check and the pending-restart check when Main starts the
// setup; the operating system, Internet Explorer, disc, rights and package when the wizard
// reaches its second welcome page. A check that fails has shown its message and logged why;
// its caller ends the program (ExitStatus says how).
#include <cstdint>
#include <functional>
#include <string>

#include "startup/clsOSSupport.h"

namespace tovel {

class clsCheckEnviroment {
public:
    /// Reads the version data of Windows (and VersionNumber / SubVersionNumber of the
    /// registry) and sets OSPlatformId.
    void ReadSystemVersion();
    /// The start check: removes WOD50T.DLL from the system folder, makes sure the folders of
    /// TMP and TEMP exist, and decides about the version-display tool (its Lorvex.ini, then
    /// the command line).
    void CheckAtStart(const std::string& commandLine) const;
    /// False when Windows must be restarted first (WININIT.INI on 95/98/Me, pending file
    /// renames on NT): logged, and the restart message shown, the language's text when it
    /// has one.
    [[nodiscard]] bool CheckPendingRestart(const std::string& languageText) const;
    /// The checks of the wizard's second welcome page in their order: StartCheck, the
    /// Internet Explorer check, the refresh of gSystem, CheckDisc against this disc's own
    /// DiscID, CheckAdmin, CheckPackage. False at the first that fails.
    [[nodiscard]] bool WizardChecks() const;
    /// The operating system against section OS of Setups.ini; true with /nooscheck.
    [[nodiscard]] bool StartCheck() const;
    /// The Internet Explorer check (when PreCheckForIE or WarningIE is on).
    [[nodiscard]] bool PreCheckForIE() const;
    /// The disc in the drive: the DiscID of the Setups.ini in the product folder (Path), when
    /// that folder has one, must be the one expected; true when nothing is expected.
    [[nodiscard]] bool CheckDisc(const std::string& expectedDiscID) const;
    /// Administrator rights, on the NT family and when CheckForAdmin is on.
    [[nodiscard]] bool CheckAdmin() const;
    /// The registry value CheckPackageName under CheckPackageKey must hold CheckPackageValue
    /// (when CheckPackageKey is set).
    [[nodiscard]] bool CheckPackage() const;
    enum class FileVersionResult { Current, Copied, NotCopied };
    /// Makes sure a file delivered in a folder of the setup is in the system folder at its
    /// version or newer: copies it when missing or older (calling beforeReplace with the
    /// older file's path first). NotCopied when the copy failed (a file in use).
    static FileVersionResult CheckFileVersion(const std::string& fileName, const std::string& deliveredFolder,
                                              const std::function<void(const std::string&)>& beforeReplace = {});

    [[nodiscard]] uint32_t OSMajorVersion() const { return os_.major; }
    [[nodiscard]] uint32_t OSMinorVersion() const { return os_.minor; }
    [[nodiscard]] uint32_t OSPlatformId() const { return os_.platformId; }
    [[nodiscard]] const std::string& CSDVersion() const { return os_.csdVersion; }
    [[nodiscard]] const std::string& VersionNumber() const { return os_.versionNumber; }
    [[nodiscard]] const std::string& SubVersionNumber() const { return subVersionNumber_; }
    [[nodiscard]] const std::string& ProductName() const { return os_.productName; }

private:
    static void RemoveWod50t();
    static void CheckTempFolder(const std::string& variable);
    void LogUnsupportedSystem() const;
    void ShowUnsupportedSystem() const;
    static bool Fail(int textNumber, const std::string& text);

    OsFacts os_;
    std::string subVersionNumber_;
};

} // namespace tovel
