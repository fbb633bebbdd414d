#include "startup/clsOSSupport.h"

#include <vector>

#include "common/clsString.h"
#include "settings/clsSetupsIni.h"

namespace tovel {

namespace {

struct OsRow {
    uint32_t platformId;
    uint32_t major;
    int minor;                 ///< -1: any minor version
    const char* name;
    bool (clsSetupsIni::*allowed)() const;
    const std::string& (clsSetupsIni::*exclude)() const;   ///< nullptr: the key has no exclude list
};

const OsRow kRows[] = {
    {1, 4, 0, "Windows 95", &clsSetupsIni::Win95, &clsSetupsIni::Win95Exclude},
    {1, 4, 10, "Windows 98", &clsSetupsIni::Win98, &clsSetupsIni::Win98Exclude},
    {1, 4, 90, "Windows ME", &clsSetupsIni::WinMe, nullptr},
    {2, 4, -1, "Windows NT4", &clsSetupsIni::WinNT4, &clsSetupsIni::WinNT4Exclude},
    {2, 5, 0, "Windows 2000", &clsSetupsIni::Win2k, &clsSetupsIni::Win2kExclude},
    {2, 5, 1, "Windows XP", &clsSetupsIni::WinXP, &clsSetupsIni::WinXPExclude},
    {2, 5, 2, "Windows Server 2003", &clsSetupsIni::WinNETServer, nullptr},
};

const OsRow* RowOf(const OsFacts& os) {
    for (const auto& row : kRows) {
        if (row.platformId == os.platformId && row.major == os.major &&
            (row.minor < 0 || static_cast<uint32_t>(row.minor) == os.minor))
            return &row;
    }
    return nullptr;
}

bool PlatformListed(uint32_t platformId, const std::string& list) {
    std::string spaced = list;
    for (char& c : spaced) {
        if (c == ',' || c == ';') c = ' ';
    }
    for (const auto& entry : clsString::Split(spaced, " ")) {
        if (clsString::Trim(entry) == std::to_string(platformId)) return true;
    }
    return false;
}

} // namespace

std::string clsOSSupport::SystemName(const OsFacts& os) {
    const OsRow* row = RowOf(os);
    std::string name = row != nullptr ? row->name
                                      : "Windows (platform " + std::to_string(os.platformId) + ", version " +
                                            std::to_string(os.major) + "." + std::to_string(os.minor) + ")";
    if (os.productName.find("Home") != std::string::npos) name += " Home";
    return name;
}

bool clsOSSupport::Allowed(const OsFacts& os, const clsSetupsIni& settings) {
    if (!settings.PlattformIDAllowed().empty() && !PlatformListed(os.platformId, settings.PlattformIDAllowed())) return false;
    const OsRow* row = RowOf(os);
    if (row == nullptr || !(settings.*row->allowed)()) return false;
    return row->exclude == nullptr || !Excluded(os, (settings.*row->exclude)());
}

bool clsOSSupport::Excluded(const OsFacts& os, const std::string& excludeList) {
    const std::string names[] = {
        clsString::LowerAscii(clsString::Trim(os.csdVersion)),
        std::to_string(os.major) + "." + std::to_string(os.minor) + "." + std::to_string(os.build),
        clsString::LowerAscii(clsString::Trim(os.versionNumber)),
    };
    for (const auto& entry : clsString::Split(excludeList, ";")) {
        const std::string wanted = clsString::LowerAscii(clsString::Trim(entry));
        if (wanted.empty()) continue;
        for (const auto& name : names) {
            if (name == wanted) return true;
        }
    }
    return false;
}

} // namespace tovel
