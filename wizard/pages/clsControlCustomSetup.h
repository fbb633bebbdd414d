#pragma once
// The component page: the products of the catalogue in a tree (uscTreeListView), under the
// packets that name them, each with its check box; the long description of the line under
// the cursor; the space the selection needs on each drive against what the drive has free.
//
// A box changed by the person goes through clsSelectionWalk, which applies the dependency
// links of every product that changed; the tree is then made anew from the records. A
// locked box does not move, and the status line names the product that locked it.
//
// When the disc lets products choose their drive here (ShowDriveSelectionInComponentDialog,
// the disc's and the product's), DriveList shows the drive of the product under the cursor;
// choosing another moves the product there (clsComponentDrive) and the space follows.
//
// Continue refuses an empty selection and a selection that does not fit its drives (the
// destination page's message), writes the answer file in record mode and tells so, and
// leaves every record's state consistent: Selected follows the box (a product always
// installed is checked and locked).
#include <string>

#include "wizard/clsSelectionWalk.h"
#include "wizard/pages/clsComponentDrive.h"
#include "wizard/pages/clsComponentTree.h"
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlCustomSetup : public clsControlPage {
public:
    clsControlCustomSetup();

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;
    void OnNodeCheck(const std::string& control, int node) override;
    bool OnContinue() override;
    /// The text under the tree for a product under the cursor: its long description.
    [[nodiscard]] virtual std::string ProductDescription(const clsSIFApplicationItem& item) const;
    /// The drive a product goes to, as the tree shows it.
    [[nodiscard]] std::string DriveOf(const clsSIFApplicationItem& item) const { return tree_.DriveOf(item); }

private:
    void SetLegend();
    /// Makes the tree anew from the records, keeping the cursor on its product.
    void ShowTree();
    /// The description and the space figures for the line under the cursor.
    void ShowCursor();
    void ShowSpace();
    /// The drive a tree line shows; "" for a packet or a product that may not choose one.
    [[nodiscard]] std::string LineDrive(int line) const;
    /// DriveList on the drive of the line under the cursor; disabled for a line without one.
    void ShowDrive(int line);
    void ChangeDrive();
    /// The tree, the description and the space again after a change, on every renderer.
    void Redraw();
    void Status(const std::string& text);
    /// Why a box does not move, for the status line.
    [[nodiscard]] std::string LockReason(int index) const;
    [[nodiscard]] bool SelectionFits() const;
    static void SettleStates();
    /// Record mode: the answer file, and the message that it is written.
    static void Record();

    clsSelectionWalk walk_;

    clsComponentTree tree_;
    clsComponentDrive drives_;
    std::string requiredCaption_;
    std::string availableCaption_;
};

} // namespace tovel
