#include "wizard/pages/clsComponentTree.h"

#include <algorithm>

#include "catalogue/CatalogueGlobals.h"
#include "common/clsString.h"
#include "startup/Globals.h"

namespace tovel {

namespace {

bool InTree(const clsSIFApplicationItem& item) { return item.Visible && !item.HideInstall; }

// Packets name products as their files write them; the catalogue's codes may differ in case.
int IndexOfCode(const std::string& code) {
    const auto& items = gApplications.Items();
    for (size_t i = 0; i < items.size(); ++i) {
        if (clsString::EqualNoCaseAscii(items[i].ProductCode, code)) return static_cast<int>(i) + 1;
    }
    return 0;
}

bool AnyPacketChosen() {
    const auto& packets = gPackets.Items();
    return std::any_of(packets.begin(), packets.end(), [](const clsSIFPacketItem& p) { return p.Selected; });
}

} // namespace

ComponentTreeOptions ComponentTreeOptions::FromSettings() {
    ComponentTreeOptions options;
    const std::string root = gFileDisk.WindowsDriveRoot();
    if (root.size() >= 2) options.defaultDrive = root.substr(0, 2);
    if (gSetupsIni == nullptr) return options;
    options.onlyPacketProducts = gSetupsIni->OnlyPacketProductCodeListIsVisible();
    options.greyUpdates = gSetupsIni->UPGrayCheckBox();
    options.showSpace = gSetupsIni->ShowDiskSpaceInComponentDialog();
    options.showDrive = gSetupsIni->ShowDriveSelectionInComponentDialog();
    return options;
}

void clsComponentTree::Build() {
    nodes_.clear();
    indexes_.clear();
    std::vector<bool> placed(static_cast<size_t>(gApplications.Count()) + 1, false);
    const bool onlyPackets = options_.onlyPacketProducts && AnyPacketChosen();
    AddPackets(true, placed);
    if (onlyPackets) return;
    AddPackets(false, placed);
    for (int index = 1; index <= gApplications.Count(); ++index) AddProduct(index, 0, placed);
}

void clsComponentTree::AddPackets(bool chosen, std::vector<bool>& placed) {
    for (const auto& packet : gPackets.Items()) {
        if (packet.Selected != chosen || (!chosen && !packet.Visible)) continue;
        const size_t heading = nodes_.size();
        nodes_.push_back({.key = packet.ProductCode, .text = packet.Description.empty() ? packet.ProductCode : packet.Description});
        indexes_.push_back(0);
        for (const auto& code : packet.ProductCodes()) AddProduct(IndexOfCode(code), 1, placed);
        if (nodes_.size() == heading + 1) {   // nothing of its own to show: no heading either
            nodes_.pop_back();
            indexes_.pop_back();
        }
    }
}

void clsComponentTree::AddProduct(int index, int level, std::vector<bool>& placed) {
    const clsSIFApplicationItem* item = gApplications.Item(index);
    if (item == nullptr || placed[static_cast<size_t>(index)] || !InTree(*item)) return;
    placed[static_cast<size_t>(index)] = true;
    TreeListNode node{.key = item->ProductCode,
                      .text = item->Description.empty() ? item->ProductCode : item->Description,
                      .level = level,
                      .state = item->CheckBox,
                      .grey = item->DoGrayChkBox || (options_.greyUpdates && !item->InstalledVersion.empty()),
                      .tooltip = item->Tooltip};
    if (options_.showSpace) node.megabytes = std::max(item->DiskSpaceDestDrv, 0);
    if (options_.showDrive && item->ShowDriveSelectionInComponentDialog) node.drive = DriveOf(*item);
    nodes_.push_back(std::move(node));
    indexes_.push_back(index);
}

int clsComponentTree::IndexOf(int line) const {
    return line >= 0 && static_cast<size_t>(line) < indexes_.size() ? indexes_[static_cast<size_t>(line)] : 0;
}

int clsComponentTree::LineOf(int index) const {
    const auto it = std::find(indexes_.begin(), indexes_.end(), index);
    return index > 0 && it != indexes_.end() ? static_cast<int>(it - indexes_.begin()) : -1;
}

std::string clsComponentTree::DriveOf(const clsSIFApplicationItem& item) const {
    return item.DestDrive.empty() ? options_.defaultDrive : item.DestDrive;
}

} // namespace tovel
