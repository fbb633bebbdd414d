#pragma once
// What a search of the disc saw of its folders: the entries of each folder listed. The disc
// check asks it whether a setup program is there, so that a disc of a thousand products is
// not asked again, folder by folder of each path, for what its listing already told.
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/clsPlatformFiles.h"

namespace tovel {

class clsFolderListing {
public:
    /// The entries of a folder (a Windows path ending in a backslash) as it was listed; none
    /// leaves the folder unknown.
    void Add(const std::string& folder, const std::vector<FileEntry>& entries);
    /// Whether the path names a file as the listing saw the disc; nullopt when no folder
    /// listed tells (the path leads outside them, deeper than the search went, or through
    /// "." or "..").
    [[nodiscard]] std::optional<bool> FileExists(const std::string& path) const;

private:
    /// Folded folder path -> folded entry names with whether each is a folder, sorted.
    std::unordered_map<std::string, std::vector<std::pair<std::string, bool>>> folders_;
};

} // namespace tovel
