#pragma once
// The Internet Explorer check: the installed build against the one the disc wants.
#include <string>

namespace tovel {

class clsSetupsIni;

class clsIECheck {
public:
    /// What the check makes of an installed build before anybody is asked.
    enum class Verdict {
        Valid,       ///< the build is ValidIEVersion or newer
        NotFound,    ///< no build in the registry: the setup goes on with a notice
        Ask,         ///< older, and the check only warns: the user decides
        Terminate,   ///< older, and the check is strict (or below IEMinimumCondition)
    };

    /// Compares the build ("" when none) with ValidIEVersion by clsVersion. An older build
    /// ends the setup when PreCheckForIE is on without SoftSwitchIE, or when it is also older
    /// than a non-empty IEMinimumCondition; otherwise the user is asked.
    [[nodiscard]] static Verdict Judge(const std::string& build, const clsSetupsIni& settings);
    /// The version the messages and the log name: WarningValidIEVersion, else ValidIEVersion.
    [[nodiscard]] static std::string ExpectedVersion(const clsSetupsIni& settings);
    /// Runs the check when PreCheckForIE or WarningIE is on: logs the versions and the
    /// outcome, shows its message. False when the setup must end; ExitStatus then says why
    /// (1602 the user stopped it, 1603 it cannot go on).
    [[nodiscard]] static bool Run(const clsSetupsIni& settings);
};

} // namespace tovel
