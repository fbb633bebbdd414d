#pragma once
// What the command line asked for, as clsCommandLine found it. Nothing here has happened yet:
// ApplySwitches (mdlSwitches) carries it out.
#include <cstdint>
#include <optional>
#include <string>

namespace tovel {

struct CommandLineSwitches {
    bool showConfig = false;                             ///< /showconfig
    std::optional<char> drive;                           ///< /drive=: a reachable drive's letter
    std::optional<int32_t> level;                        ///< /level=: one digit, 0 for anything else
    std::optional<bool> lorvexScanComplete;              ///< /complete true, /beginend false (the later wins)
    std::optional<std::string> lorvexAdditionalCommand;  ///< /reg "-reg", /noreg "" (the later wins)
    bool log = false;                                    ///< /log: logging on whatever Setups.ini says
    bool noVersionCheck = false;                         ///< /noversioncheck
    bool testmode = false;                               ///< /testmode
    bool noOSCheck = false;                              ///< /nooscheck; its absence sets the flag off too
    bool recordMode = false;                             ///< /record
    bool silentMode = false;                             ///< an accepted answer file; false sets the flag off
    std::optional<std::string> silentPath;               ///< the answer file found, accepted or not
    /// The log lines of the analysis, each ended by CR LF; empty when nothing was recognised.
    std::string analysis;
};

} // namespace tovel
