#include "catalogue/clsFolderListing.h"

#include <algorithm>

#include "platform/clsWindowsPath.h"

namespace tovel {

void clsFolderListing::Add(const std::string& folder, const std::vector<FileEntry>& entries) {
    // An empty listing may be a folder that could not be listed: it tells nothing.
    if (entries.empty()) return;
    auto& names = folders_[clsWindowsPath::FoldCase(folder)];
    names.clear();
    names.reserve(entries.size());
    for (const auto& entry : entries) names.emplace_back(clsWindowsPath::FoldCase(entry.name), entry.isFolder);
    std::sort(names.begin(), names.end());
}

std::optional<bool> clsFolderListing::FileExists(const std::string& path) const {
    // Other separators, wildcards and streams are for the disc itself to read.
    if (path.find_first_of("/*?") != std::string::npos) return std::nullopt;
    const std::string folded = clsWindowsPath::FoldCase(path);
    // The deepest folder listed on the path tells about the name that follows it.
    for (size_t end = folded.rfind('\\'); end != std::string::npos && end > 0; end = folded.rfind('\\', end - 1)) {
        const auto folder = folders_.find(folded.substr(0, end + 1));
        if (folder == folders_.end()) continue;
        const size_t next = folded.find('\\', end + 1);
        const std::string name = folded.substr(end + 1, next == std::string::npos ? std::string::npos : next - end - 1);
        // Windows drops a name's trailing dots and blanks: such names, "." and ".." among
        // them, are left to the disc.
        if (name.empty() || name.back() == '.' || name.back() == ' ' || name.find(':') != std::string::npos) return std::nullopt;
        const auto& names = folder->second;
        const auto at = std::lower_bound(names.begin(), names.end(), std::make_pair(name, false));
        const bool listed = at != names.end() && at->first == name;
        if (!listed) return false;
        if (next == std::string::npos) return !at->second;
        // A folder found here was not listed itself (the search went no deeper); below a file
        // there is nothing.
        return at->second ? std::nullopt : std::optional<bool>(false);
    }
    return std::nullopt;
}

} // namespace tovel
