#pragma once
// Drive and folder helpers the setup needs from start-up to the destination page.
#include <string>

namespace tovel {

class clsFileDisk {
public:
    /// The Windows folder with a trailing backslash.
    [[nodiscard]] std::string WindowsFolder() const;
    /// The Windows system folder with a trailing backslash.
    [[nodiscard]] std::string SystemFolder() const;
    /// The temporary folder with a trailing backslash.
    [[nodiscard]] std::string TempFolder() const;
    /// The root of the drive Windows is on ("C:\"); empty when Windows lies on a network path.
    [[nodiscard]] std::string WindowsDriveRoot() const;
    /// The path with a trailing backslash, added only when missing.
    [[nodiscard]] static std::string AddBackslash(std::string path);
};

} // namespace tovel
