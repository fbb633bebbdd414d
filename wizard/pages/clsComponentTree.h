#pragma once
// The lines of the component tree, made from the catalogue, the packets and the disc's
// settings; made anew after every change, so the tree always shows what the records hold.
//
// Decided here:
// - A product is in the tree when it is Visible and not HideInstall; a product left out keeps
//   its selection as it is.
// - The chosen (selected) packets come first, each as a heading without a box over its
//   products, then the other visible packets; a product named by two packets stands under
//   the first. The products no packet placed follow at the top level.
// - With OnlyPacketProductCodeListIsVisible only the chosen packets' products are shown;
//   when no packet is chosen the setting cannot apply and every product is shown.
// - A box is grey when the product's DoGrayChkBox is set, or with UPGrayCheckBox when the
//   product is installed already (an update item).
// - A line shows the product's DiskSpaceDestDrv with ShowDiskSpaceInComponentDialog, and
//   its drive when both the disc's and the product's ShowDriveSelectionInComponentDialog
//   are set.
#include <string>
#include <utility>
#include <vector>

#include "wizard/TreeListNode.h"

namespace tovel {

class clsSIFApplicationItem;

struct ComponentTreeOptions {
    bool onlyPacketProducts = false;   ///< OnlyPacketProductCodeListIsVisible
    bool greyUpdates = false;          ///< UPGrayCheckBox
    bool showSpace = true;             ///< ShowDiskSpaceInComponentDialog
    bool showDrive = true;             ///< ShowDriveSelectionInComponentDialog
    std::string defaultDrive = "C:";   ///< shown for a product whose drive is not set yet
    /// The options the disc's Setups.ini gives (the defaults without one).
    [[nodiscard]] static ComponentTreeOptions FromSettings();
};

class clsComponentTree {
public:
    explicit clsComponentTree(ComponentTreeOptions options) : options_(std::move(options)) {}

    /// Makes the lines from gApplications and gPackets.
    void Build();
    [[nodiscard]] const std::vector<TreeListNode>& Nodes() const { return nodes_; }
    /// The catalogue index (from 1) of a line; 0 for a packet heading or a line it lacks.
    [[nodiscard]] int IndexOf(int line) const;
    /// The line of a catalogue index; -1 when the product is not in the tree.
    [[nodiscard]] int LineOf(int index) const;
    /// The drive a product goes to: its own, else the default.
    [[nodiscard]] std::string DriveOf(const clsSIFApplicationItem& item) const;

private:
    void AddPackets(bool chosen, std::vector<bool>& placed);
    void AddProduct(int index, int level, std::vector<bool>& placed);

    ComponentTreeOptions options_;
    std::vector<TreeListNode> nodes_;
    std::vector<int> indexes_;   ///< per line: the catalogue index, 0 for a heading
};

} // namespace tovel
