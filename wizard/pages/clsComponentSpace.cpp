#include "wizard/pages/clsComponentSpace.h"

#include <algorithm>

#include "catalogue/CatalogueGlobals.h"
#include "common/clsFileDisk.h"

namespace tovel {

std::vector<DriveSpace> clsComponentSpace::Needs(const DriveOf& driveOf) {
    std::vector<DriveSpace> drives;
    for (const auto& item : gApplications.Items()) {
        if (!item.Selected) continue;
        const std::string drive = driveOf(item);
        auto it = std::find_if(drives.begin(), drives.end(), [&](const DriveSpace& d) { return d.drive == drive; });
        if (it == drives.end()) {
            drives.push_back({.drive = drive, .available = clsFileDisk::FreeMegabytes(drive + "\\")});
            it = drives.end() - 1;
        }
        it->required += std::max(item.DiskSpaceDestDrv, 0);
    }
    return drives;
}

std::string clsComponentSpace::Text(const std::vector<DriveSpace>& drives, bool available) {
    std::string text;
    for (const auto& d : drives) {
        if (available && !d.available) continue;   // a drive that cannot tell shows nothing
        if (!text.empty()) text += ", ";
        text += d.drive + " " + std::to_string(available ? static_cast<int64_t>(*d.available) : d.required) + " MB";
    }
    return text;
}

const DriveSpace* clsComponentSpace::FirstTooSmall(const std::vector<DriveSpace>& drives) {
    const auto it = std::find_if(drives.begin(), drives.end(), [](const DriveSpace& d) { return !d.Fits(); });
    return it == drives.end() ? nullptr : &*it;
}

} // namespace tovel
