#pragma once
// The search for the disc's description files: every file with the extension "ssf" in the
// product folder and its sub-folders is read as a product or a packet by its FileType, and
// both lists are ordered by their dependencies afterwards.
//
// Decided for disc authors: the product folder is Path of Setups.ini, else the folder of the
// setup program; sub-folders are searched (at most 16 levels deep), files of a folder before
// its sub-folders, each in name order without regard to case, so a disc gives the same
// catalogue wherever it is copied. A search stopped midway keeps what it read, ordered.
#include <functional>
#include <string>
#include <vector>

namespace tovel {

class clsFolderListing;

class clsSSFSearch {
public:
    /// Told each folder as it is searched (for the status label); false stops the search.
    using Progress = std::function<bool(const std::string& folder)>;

    /// The folder searched: the disc's product folder (Path), else the program's folder.
    [[nodiscard]] static std::string ProductFolder();
    /// Empties gApplications and gPackets, searches, reads and orders; logs the section
    /// "SSFFiles Infos". False when the progress stopped it.
    bool Run(const Progress& progress = {});
    /// The description files below a folder in search order; listing, when given, gets every
    /// folder searched.
    [[nodiscard]] static std::vector<std::string> FindSSFFiles(const std::string& folder, const Progress& progress, bool& stopped,
                                                               clsFolderListing* listing = nullptr);
    /// What the status label shows while a folder is searched: a network path as its server
    /// part ("\\server"), cut to 10 characters and " ..." from 15 characters on; any other
    /// path as its first two characters (its drive).
    [[nodiscard]] static std::string StatusLabelText(const std::string& path);
};

} // namespace tovel
