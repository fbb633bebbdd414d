#pragma once
// A restart of Windows in the middle of the run: the state is saved so that the next start
// goes on where this one stopped, the resume is registered under RunOnce, and Windows is
// asked to restart.
#include <cstdint>
#include <string>

namespace tovel {

/// Where the run stands when it stops for a restart.
struct RestartState {
    int16_t position = 0;        ///< the product that asked for the restart (0: none started)
    int32_t setupStatus = 0;     ///< the exit code of the product's setup
    std::string commandLine;     ///< the product's command line
    std::string setupFailed;     ///< the products failed so far, lines ended by CR LF
    bool registerRunOnce = true; ///< register the resume under RunOnce ("ZZZ_TovelSetup")
};

class clsRestartNow {
public:
    static constexpr const char* kRunOnceKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
    static constexpr const char* kRunOnceValue = "ZZZ_TovelSetup";

    /// The whole restart: the notice (OK only), the state saved, Windows restarted.
    static void Prepare(const RestartState& state);
    /// The state file, the RunOnce entry when asked, OPFILE.TXT deleted: what a resume needs.
    /// Also when Windows itself ends the program.
    static void SaveForResume(const RestartState& state);
    /// Takes back the resume registered under RunOnce once a run has resumed: the boot deletes
    /// it before it starts the setup, but a run resumed by hand (the setup cut off before
    /// Windows went down) would otherwise be started once more at the next boot, with nothing
    /// left to resume.
    static void ForgetResume();
    /// Asks Windows to restart; true (and exit status 1641) when it accepted.
    static bool RestartWindows();
};

} // namespace tovel
