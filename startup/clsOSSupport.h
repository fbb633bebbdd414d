#pragma once
// Whether the disc supports the running Windows: its name, the key of section OS that allows
// it and the "...Exclude" list that takes single editions back out.
#include <cstdint>
#include <string>

namespace tovel {

class clsSetupsIni;

/// What the operating-system check looks at.
struct OsFacts {
    uint32_t platformId = 0;       ///< 1 Windows 95/98/Me, 2 NT family
    uint32_t major = 0;
    uint32_t minor = 0;
    uint32_t build = 0;
    std::string csdVersion;        ///< "Service Pack 2", " A " on 98 SE
    std::string productName;       ///< "Microsoft Windows XP Home Edition"
    std::string versionNumber;     ///< VersionNumber of the registry ("4.10.2222"), 95/98/Me only
};

class clsOSSupport {
public:
    /// "Windows 95" .. "Windows Server 2003", with " Home" for a Home edition; for a system
    /// the table does not know, "Windows" with its platform and version numbers.
    [[nodiscard]] static std::string SystemName(const OsFacts& os);
    /// True when section OS allows the system: PlattformIDAllowed (when set) lists its
    /// platform, its key is on, and no entry of its "...Exclude" list names it.
    [[nodiscard]] static bool Allowed(const OsFacts& os, const clsSetupsIni& settings);
    /// True when an entry of the list (separated by ";", blanks around it and case ignored)
    /// is the service-pack text, the version "major.minor.build" or the registry's
    /// VersionNumber of the system.
    [[nodiscard]] static bool Excluded(const OsFacts& os, const std::string& excludeList);
};

} // namespace tovel
