#pragma once
// The machines that can be created: a Windows version and a user language.
#include <optional>
#include <string>
#include <vector>

#include "platform/clsPlatformRegistry.h"
#include "platform/posix/clsMachine.h"

namespace tovel {

class clsMachineProfile {
public:
    /// Windows XP Professional SP2, English, administrator.
    [[nodiscard]] static MachineConfig Default();
    /// The configuration for a system name ("win95", "win98", "winme", "nt4", "win2000",
    /// "xphome", "xppro", "win2003") and a language ("de", "en", "fr", "es", "it", "ja", or
    /// the locale number). nullopt for unknown names.
    [[nodiscard]] static std::optional<MachineConfig> Make(const std::string& system, const std::string& language);
    [[nodiscard]] static std::vector<std::string> SystemNames();
    [[nodiscard]] static std::vector<std::string> LanguageNames();
    /// Windows folders a new machine of this configuration has.
    [[nodiscard]] static std::vector<std::string> FoldersToCreate(const MachineConfig& config);
    /// Writes the keys and values Windows of this configuration has from the start.
    [[nodiscard]] static bool SeedRegistry(clsPlatformRegistry& registry, const MachineConfig& config);
    /// The program files folder of the configuration's language ("C:\Programme" in German).
    [[nodiscard]] static std::string ProgramFilesFolder(const MachineConfig& config);
};

} // namespace tovel
