#pragma once
// Starting one product's setup as its step says: first make sure its setup file can be
// reached (asking for the right disc while it cannot), then start the program from its own
// folder and log the start.
#include <cstdint>
#include <optional>
#include <string>

#include "install/clsInstallPlan.h"

namespace tovel {

class clsSetupLauncher {
public:
    /// True when the step's setup file is there on the disc expected (msiexec.exe always is).
    /// While it is not, logs "File Not Found: " and asks with OK and Cancel: OK looks again,
    /// Cancel gives false. discName: the disc that holds the setup ("" when not known).
    [[nodiscard]] static bool CheckSetupFile(const InstallStep& step, const std::string& discName);
    /// Starts the step's command line from its folder; the process id, nullopt when it could
    /// not be started.
    [[nodiscard]] static std::optional<uint32_t> Start(const InstallStep& step);
    /// The disc name of a disc identifier: DiscName of that section of the source folder's
    /// Setups.ini; "" when there is no such section.
    [[nodiscard]] static std::string DiscName(const std::string& discId);

private:
    [[nodiscard]] static bool SetupFileThere(const InstallStep& step);
    /// The disc prompt; true when the user wants another look.
    [[nodiscard]] static bool AskForDisc(const InstallStep& step, const std::string& discName);
};

} // namespace tovel
