#include "common/clsFileDisk.h"

#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

std::string clsFileDisk::WindowsFolder() const { return AddBackslash(Platform().System().WindowsFolder()); }

std::string clsFileDisk::SystemFolder() const { return AddBackslash(Platform().System().SystemFolder()); }

std::string clsFileDisk::TempFolder() const { return AddBackslash(Platform().System().TempFolder()); }

std::string clsFileDisk::WindowsDriveRoot() const {
    const std::string windows = WindowsFolder();
    const size_t colon = windows.find(':');
    if (colon == std::string::npos || colon == 0) return {};
    return windows.substr(colon - 1, 2) + "\\";
}

std::string clsFileDisk::AddBackslash(std::string path) { return clsWindowsPath::AddBackslash(std::move(path)); }

} // namespace tovel
