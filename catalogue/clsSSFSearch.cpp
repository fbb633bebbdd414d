#include "catalogue/clsSSFSearch.h"

#include <algorithm>
#include <utility>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsFolderListing.h"
#include "catalogue/clsSIFDetection.h"
#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsIniFile.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr int kMaxDepth = 16;

bool IsSSF(const std::string& name) {
    const size_t dot = name.find_last_of('.');
    return dot != std::string::npos && clsString::EqualNoCaseAscii(std::string_view(name).substr(dot + 1), "ssf");
}

void Collect(const std::string& folder, int depth, const clsSSFSearch::Progress& progress, bool& stopped,
             std::vector<std::string>& found, clsFolderListing* listing) {
    if (stopped) return;
    if (progress && !progress(folder)) {
        stopped = true;
        return;
    }
    // Each name is folded once, not once per comparison: a folder may hold a thousand products.
    std::vector<std::pair<std::string, FileEntry>> sorted;
    for (auto& entry : Platform().Files().ListFolder(folder)) sorted.emplace_back(clsWindowsPath::FoldCase(entry.name), std::move(entry));
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<FileEntry> entries;
    entries.reserve(sorted.size());
    for (auto& [folded, entry] : sorted) entries.push_back(std::move(entry));
    if (listing != nullptr) listing->Add(folder, entries);
    for (const auto& entry : entries) {
        if (!entry.isFolder && IsSSF(entry.name)) found.push_back(folder + entry.name);
    }
    if (depth >= kMaxDepth) return;
    for (const auto& entry : entries) {
        if (entry.isFolder) Collect(folder + entry.name + "\\", depth + 1, progress, stopped, found, listing);
    }
}

} // namespace

std::string clsSSFSearch::ProductFolder() {
    const std::string path = gSetupsIni ? gSetupsIni->Path() : std::string();
    return clsFileDisk::AddBackslash(path.empty() ? HomePath : path);
}

std::vector<std::string> clsSSFSearch::FindSSFFiles(const std::string& folder, const Progress& progress, bool& stopped,
                                                   clsFolderListing* listing) {
    std::vector<std::string> found;
    stopped = false;
    Collect(clsFileDisk::AddBackslash(folder), 0, progress, stopped, found, listing);
    return found;
}

bool clsSSFSearch::Run(const Progress& progress) {
    gPackets.RemoveAllItem();
    gApplications.RemoveAllItem();
    LogHeading("SSFFiles Infos");
    const std::string folder = ProductFolder();
    bool stopped = false;
    const auto files = FindSSFFiles(folder, progress, stopped);
    LogIfEnabled("Gefundene SSFFiles");
    for (const auto& file : files) LogIfEnabled(file);
    const clsSIFDetection detection(gPlaceholder.get());
    for (const auto& file : files) {
        clsIniFile sif;
        sif.SetFullPath(file);
        sif.SetReadOnce(true);
        sif.SetSectionName("GENERAL");
        const std::string type = clsString::LowerAscii(sif.GetString("FileType", ""));
        if (type == "collection") {
            gPackets.Add(sif);
        } else if (type == "ssf") {
            clsSIFApplicationItem product;
            product.Read(sif, folder);
            detection.Detect(product);
            gApplications.Add(std::move(product));
        }
    }
    gCommonSection.SortItemsDependencies(0);
    gCommonSection.SortItemsDependencies(-1);
    return !stopped;
}

std::string clsSSFSearch::StatusLabelText(const std::string& path) {
    if (path.rfind("\\\\", 0) != 0) return path.substr(0, 2);
    const size_t end = path.find('\\', 2);
    const std::string server = end == std::string::npos ? path : path.substr(0, end);
    return server.size() >= 15 ? server.substr(0, 10) + " ..." : server;
}

} // namespace tovel
