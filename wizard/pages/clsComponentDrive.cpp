#include "wizard/pages/clsComponentDrive.h"

#include "catalogue/clsSIFApplicationItem.h"
#include "common/clsFileDisk.h"
#include "platform/clsWindowsPath.h"
#include "startup/mdlLog.h"

namespace tovel {

clsComponentDrive::clsComponentDrive(bool onlyFixed) {
    for (const DriveInfo& drive : clsFileDisk::Drives()) {
        const bool offered = drive.type == DriveType::Fixed || (!onlyFixed && drive.type == DriveType::Removable);
        if (offered) drives_.push_back(std::string(1, drive.letter) + ":");
    }
}

int clsComponentDrive::LineOf(const std::string& drive) const {
    const char letter = clsWindowsPath::DriveLetter(drive);
    for (size_t i = 0; i < drives_.size(); ++i) {
        if (letter != 0 && drives_[i][0] == letter) return static_cast<int>(i);
    }
    return -1;
}

bool clsComponentDrive::Move(clsSIFApplicationItem& item, int line) const {
    if (line < 0 || static_cast<size_t>(line) >= drives_.size()) {
        LogIfEnabled("Component " + item.ProductCode + ": no drive offered on line " + std::to_string(line) + ", not moved.");
        return false;
    }
    const std::string& drive = drives_[static_cast<size_t>(line)];
    LogIfEnabled("Component " + item.ProductCode + " moved to drive " + drive + " (was " +
                 (item.DestDrive.empty() ? std::string("not set") : item.DestDrive) + ").");
    item.DestDrive = drive;
    if (clsWindowsPath::DriveLetter(item.DestPath) != 0) item.DestPath = drive + item.DestPath.substr(2);
    return true;
}

} // namespace tovel
