#include "install/clsSystemFiles.h"

#include <algorithm>

#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "install/clsUnRegister.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/clsCheckEnviroment.h"
#include "startup/mdlLog.h"

namespace tovel {

void clsSystemFiles::Install(const std::string& programFolder) {
    const std::string folder = clsFileDisk::AddBackslash(programFolder) + kFolder;
    if (!Platform().Files().FolderExists(folder)) return;
    std::vector<FileEntry> entries = Platform().Files().ListFolder(folder);
    std::sort(entries.begin(), entries.end(), [](const FileEntry& a, const FileEntry& b) { return a.name < b.name; });
    LogIfEnabled("System files from " + folder);
    for (const auto& entry : entries) {
        if (entry.isFolder) continue;
        const bool library = IsLibrary(entry.name);
        const auto result = clsCheckEnviroment::CheckFileVersion(entry.name, folder, [library](const std::string& old) {
            if (library) (void)clsUnRegister::UnRegServer(old);
        });
        if (library && result == clsCheckEnviroment::FileVersionResult::Copied) {
            (void)clsUnRegister::RegServer(SystemDir + entry.name);
        }
    }
}

bool clsSystemFiles::IsLibrary(const std::string& fileName) {
    const std::string lower = clsString::LowerAscii(fileName);
    return lower.ends_with(".dll") || lower.ends_with(".ocx");
}

} // namespace tovel
