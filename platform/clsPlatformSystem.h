#pragma once
// The Windows system itself: version, language, folders, environment, rights, screen,
// fonts, restart, and the program's own place and command line.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/clsPlatformClock.h"

namespace tovel {

/// What GetVersionEx (OSVERSIONINFOEX) reports, plus the product name Windows shows.
struct OsVersion {
    uint32_t major = 0;
    uint32_t minor = 0;
    uint32_t build = 0;
    uint32_t platformId = 0;        ///< 1 Windows 95/98/Me, 2 NT family
    std::string csdVersion;         ///< "Service Pack 2", " A " on 98 SE
    uint16_t servicePackMajor = 0;
    uint16_t servicePackMinor = 0;
    uint16_t suiteMask = 0;
    uint8_t productType = 0;        ///< 1 workstation, 2 domain controller, 3 server; 0 on 9x
    std::string productName;
};

struct ScreenSize {
    int width = 0;
    int height = 0;
};

class clsPlatformSystem {
public:
    virtual ~clsPlatformSystem() = default;

    [[nodiscard]] virtual OsVersion Version() = 0;
    /// GetUserDefaultLangID.
    [[nodiscard]] virtual uint16_t UserDefaultLanguage() = 0;
    /// GetACP: the code page of text files without a byte-order mark.
    [[nodiscard]] virtual uint32_t AnsiCodePage() = 0;
    /// The Windows folder, ending in a backslash ("C:\WINDOWS\").
    [[nodiscard]] virtual std::string WindowsFolder() = 0;
    /// The system folder, ending in a backslash ("C:\WINDOWS\system32\").
    [[nodiscard]] virtual std::string SystemFolder() = 0;
    /// The temporary folder, ending in a backslash.
    [[nodiscard]] virtual std::string TempFolder() = 0;
    /// The folder of the running program, ending in a backslash.
    [[nodiscard]] virtual std::string ProgramFolder() = 0;
    /// The arguments of the running program as one Windows command line, without the program.
    [[nodiscard]] virtual std::string CommandLine() = 0;
    /// An environment variable; nullopt if it is not set.
    [[nodiscard]] virtual std::optional<std::string> Environment(const std::string& name) = 0;
    /// True if the user belongs to the administrators (always true on Windows 95/98/Me).
    [[nodiscard]] virtual bool IsAdministrator() = 0;
    [[nodiscard]] virtual ScreenSize Screen() = 0;
    /// Face names of the installed fonts.
    [[nodiscard]] virtual std::vector<std::string> Fonts() = 0;
    /// Enables SeShutdownPrivilege for the process; true where no privilege is needed.
    [[nodiscard]] virtual bool EnableShutdownPrivilege() = 0;
    /// Asks Windows to restart (ExitWindowsEx with the given flags); true if accepted.
    [[nodiscard]] virtual bool Restart(uint32_t flags) = 0;
    /// Ends this process with an exit code, as ExitProcess does; buffered output is flushed.
    [[noreturn]] virtual void EndProcess(uint32_t exitCode) = 0;
    /// A date in the long date format of the user's locale ("Sunday, 22 November 2026").
    [[nodiscard]] virtual std::string LongDate(const LocalTime& time) = 0;
    /// A time in the time format of the user's locale ("14:05:09").
    [[nodiscard]] virtual std::string LongTime(const LocalTime& time) = 0;
};

} // namespace tovel
