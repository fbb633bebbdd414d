#include "fakesetup/clsFakeWindowFile.h"

#include <unistd.h>

#include <filesystem>

#include "platform/clsPlatform.h"
#include "platform/posix/clsHostFile.h"

namespace tovel {

bool clsFakeWindowFile::Open(const std::string& windowClass, const std::string& title) {
    Close();
    const std::string folder = machineFolder_ + "/run/windows";
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    const std::string file = folder + "/" + std::to_string(::getpid()) + "-fake.win";
    std::string error;
    if (!clsHostFile::WriteAtomic(file, windowClass + "\n" + title + "\n", error)) return false;
    file_ = file;
    return true;
}

void clsFakeWindowFile::Wait(uint32_t milliseconds) { Platform().Clock().Sleep(milliseconds); }

void clsFakeWindowFile::Close() {
    if (file_.empty()) return;
    std::error_code ec;
    std::filesystem::remove(file_, ec);
    file_.clear();
}

} // namespace tovel
