#include "startup/Main.h"

#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

// The setup always works from the root of the Windows drive; Windows on a network path is
// not supported, and C:\ stands in for it.
std::string WorkFolderOf() {
    const std::string root = gFileDisk.WindowsDriveRoot();
    return root.empty() ? std::string("C:\\") : root;
}

void EnterHomePath() {
    auto& files = Platform().Files();
    // A share is used in place: there is no drive to change to.
    if (HomePath.rfind("\\\\", 0) != 0) (void)files.SetCurrentDrive(HomePath[0]);
    (void)files.SetCurrentFolder(HomePath);
}

} // namespace

void Main() {
    HomePath = clsFileDisk::AddBackslash(Platform().System().ProgramFolder());
    WorkFolder = WorkFolderOf();
    // Every start begins a fresh log: the resume test comes only after it.
    StartLog();
    EnterHomePath();
    WindowsDir = gFileDisk.WindowsFolder();
    SystemDir = gFileDisk.SystemFolder();
}

} // namespace tovel
