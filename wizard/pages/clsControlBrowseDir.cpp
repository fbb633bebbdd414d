#include "wizard/pages/clsControlBrowseDir.h"

#include <algorithm>

#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

bool IsDriveRoot(const std::string& path) { return path.size() == 3 && path[1] == ':' && path[2] == '\\'; }

// The folder a path lies in; a drive's root is its own parent, a bare name has none ("").
std::string Parent(const std::string& path) {
    const std::string folder = clsControlBrowseDir::NormalisePath(path);
    if (IsDriveRoot(folder)) return folder;
    const size_t slash = folder.find_last_of('\\');
    if (slash == std::string::npos) return {};
    return slash == 2 && folder[1] == ':' ? folder.substr(0, 3) : folder.substr(0, slash);
}

} // namespace

std::string clsControlBrowseDir::NormalisePath(const std::string& path) {
    std::string folder = clsString::Trim(path);
    while (folder.size() > 1 && folder.back() == '\\' && !IsDriveRoot(folder)) folder.pop_back();
    if (folder.size() == 2 && folder[1] == ':') folder += '\\';   // "E:" means its root here
    return folder;
}

void clsControlBrowseDir::OnLoad() {
    if (clsFormControl* list = Form().Control("DriveList")) {
        list->items.clear();
        for (const char letter : drives_) list->items.push_back(std::string(1, letter) + ":");
    }
    // The path need not exist yet: the nearest folder above it that does is listed.
    const std::string start = NormalisePath(start_);
    auto& files = Platform().Files();
    std::string folder = start;
    while (!folder.empty() && !files.FolderExists(folder)) {
        const std::string parent = Parent(folder);
        folder = parent == folder ? std::string() : parent;
    }
    if (folder.empty() && !drives_.empty()) folder = std::string(1, drives_.front()) + ":\\";
    ShowFolder(folder, false);
    SetText("PathText", start.empty() ? NormalisePath(folder_) : start);
}

void clsControlBrowseDir::ShowFolder(const std::string& folder, bool setPath) {
    folder_ = clsFileDisk::AddBackslash(NormalisePath(folder));
    lines_.clear();
    if (!IsDriveRoot(folder_)) lines_.emplace_back("..");
    auto entries = Platform().Files().ListFolder(folder_);
    std::sort(entries.begin(), entries.end(), [](const FileEntry& a, const FileEntry& b) {
        return clsWindowsPath::FoldCase(a.name) < clsWindowsPath::FoldCase(b.name);
    });
    for (const auto& entry : entries) {
        if (entry.isFolder) lines_.push_back(entry.name);
    }
    if (clsFormControl* list = Form().Control("FolderList")) {
        list->items = lines_;
        list->value = -1;
    }
    if (clsFormControl* list = Form().Control("DriveList")) {
        const char letter = clsWindowsPath::DriveLetter(folder_);
        const auto found = std::find(drives_.begin(), drives_.end(), letter);
        list->value = found == drives_.end() ? -1 : static_cast<int>(found - drives_.begin());
    }
    if (setPath) SetText("PathText", NormalisePath(folder_));
}

void clsControlBrowseDir::Click(const std::string& control, int) {
    if (control == "OKBtn") {
        chosen_ = NormalisePath(Text("PathText"));
        FormQueryUnload2();
        return;
    }
    if (control == "CancelBtn") {
        chosen_.clear();
        FormQueryUnload2();
        return;
    }
    const clsFormControl* list = Form().Control(control);
    if (list == nullptr || list->value < 0) return;
    const auto line = static_cast<size_t>(list->value);
    if (control == "FolderList" && line < lines_.size()) {
        ShowFolder(lines_[line] == ".." ? Parent(folder_) : folder_ + lines_[line], true);
    } else if (control == "DriveList" && line < drives_.size()) {
        ShowFolder(std::string(1, drives_[line]) + ":\\", true);
    }
}

} // namespace tovel
