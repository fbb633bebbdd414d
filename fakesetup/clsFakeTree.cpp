#include "fakesetup/clsFakeTree.h"

#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

int clsFakeTree::Copy(const std::string& from, const std::string& to) {
    auto& files = Platform().Files();
    if (!files.FolderExists(from) || !files.CreateFolder(to)) return -1;
    int copied = 0;
    for (const auto& entry : files.ListFolder(from)) {
        const std::string source = clsWindowsPath::AddBackslash(from) + entry.name;
        const std::string target = clsWindowsPath::AddBackslash(to) + entry.name;
        const int n = entry.isFolder ? Copy(source, target) : (files.CopyFile(source, target, false) ? 1 : -1);
        if (n < 0) return -1;
        copied += n;
    }
    return copied;
}

bool clsFakeTree::Delete(const std::string& folder) {
    auto& files = Platform().Files();
    bool ok = true;
    for (const auto& entry : files.ListFolder(folder)) {
        const std::string path = clsWindowsPath::AddBackslash(folder) + entry.name;
        ok = (entry.isFolder ? Delete(path) : files.DeleteFile(path)) && ok;
    }
    return files.DeleteFolder(folder) && ok;
}

} // namespace tovel
