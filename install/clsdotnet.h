#pragma once
// The .NET Framework prerequisite: whether the catalogue's "DOTNETFRAMEWORK" entry must be
// installed, from the version the registry shows.
#include <optional>
#include <string>

namespace tovel {

class clsSIFApplication;

class clsdotnet {
public:
    /// The installed version: "1.1" or "1.0"; nullopt when none is installed.
    [[nodiscard]] static std::optional<std::string> InstalledVersion();
    /// Marks the first "DOTNETFRAMEWORK" entry of the catalogue for installation when the
    /// installed version is lower than its Build (or none is installed), else as not to be
    /// installed. Logs "Instaled DotNet Version=" and the version.
    static void CheckDotNet(clsSIFApplication& catalogue);
};

} // namespace tovel
