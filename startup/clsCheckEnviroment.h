#pragma once
// Checks of the machine before anything is installed. So far: the operating-system data the
// other parts read, and whether a restart is pending from an earlier installation.
#include <cstdint>
#include <string>

namespace tovel {

class clsCheckEnviroment {
public:
    /// Reads the version data of Windows (and VersionNumber / SubVersionNumber of the
    /// registry) and sets OSPlatformId.
    void ReadSystemVersion();
    /// False when Windows must be restarted first (WININIT.INI on 95/98/Me, pending file
    /// renames on NT): logged, and the restart message shown, the language's text when it
    /// has one.
    [[nodiscard]] bool CheckPendingRestart(const std::string& languageText) const;

    [[nodiscard]] uint32_t OSMajorVersion() const { return major_; }
    [[nodiscard]] uint32_t OSMinorVersion() const { return minor_; }
    [[nodiscard]] uint32_t OSPlatformId() const { return platformId_; }
    [[nodiscard]] const std::string& CSDVersion() const { return csdVersion_; }
    [[nodiscard]] const std::string& VersionNumber() const { return versionNumber_; }
    [[nodiscard]] const std::string& SubVersionNumber() const { return subVersionNumber_; }
    [[nodiscard]] const std::string& ProductName() const { return productName_; }

private:
    uint32_t major_ = 0;
    uint32_t minor_ = 0;
    uint32_t platformId_ = 0;
    std::string csdVersion_;
    std::string versionNumber_;
    std::string subVersionNumber_;
    std::string productName_;
};

} // namespace tovel
