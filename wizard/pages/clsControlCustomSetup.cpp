#include "wizard/pages/clsControlCustomSetup.h"

#include <algorithm>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRecordMode.h"
#include "wizard/clsRenderer.h"
#include "wizard/pages/clsComponentSpace.h"
#include "wizard/uscTreeListView.h"

namespace tovel {

namespace {

constexpr const char* kTree = "ProductTree";
constexpr int kLegendNames = 5;   // the four states and the grey box

std::string Numbered(int number, const std::vector<std::string>& values = {}) {
    return gLanguage ? gLanguage->LoadResString(number, values) : std::string();
}

void Tell(int number, const std::vector<std::string>& values) {
    (void)MsgBox(Numbered(number, values), mb::kOk | mb::kIconWarning, ApplicationTitle);
}

std::string NameOf(const clsSIFApplicationItem& item) {
    return item.Description.empty() ? item.ProductCode : item.Description;
}

} // namespace

clsControlCustomSetup::clsControlCustomSetup()
    : clsControlPage("frmCustomSetup"), walk_(gApplications), tree_(ComponentTreeOptions::FromSettings()) {}

void clsControlCustomSetup::OnLoad() {
    // A product always installed cannot be cleared: its box is checked and locked.
    for (auto& item : gApplications.Items()) {
        if (!item.AlwaysInstall) continue;
        item.CheckBox = CheckBoxState::kCheckedLocked;
        item.Selected = true;
    }
    (void)walk_.Establish();
    requiredCaption_ = Text("SpaceRequiredLabel");
    availableCaption_ = Text("SpaceAvailableLabel");
    const bool showSpace = gSetupsIni == nullptr || gSetupsIni->ShowDiskSpaceInComponentDialog();
    SetVisible("SpaceRequiredLabel", showSpace);
    SetVisible("SpaceAvailableLabel", showSpace);
    SetLegend();
    ShowTree();
    if (clsFormControl* tree = Form().Control(kTree)) {
        const auto& nodes = tree->nodes;
        const auto first = std::find_if(nodes.begin(), nodes.end(), uscTreeListView::HasBox);
        tree->value = first == nodes.end() ? (nodes.empty() ? -1 : 0) : static_cast<int>(first - nodes.begin());
    }
    Status("");
    ShowCursor();
}

void clsControlCustomSetup::SetLegend() {
    clsFormControl* tree = Form().Control(kTree);
    if (tree == nullptr || !gLanguage) return;
    tree->items.clear();
    for (int i = 0; i < kLegendNames; ++i) tree->items.push_back(Numbered(TextNo::kTreeLegendFirst + i));
}

void clsControlCustomSetup::ShowTree() {
    clsFormControl* tree = Form().Control(kTree);
    if (tree == nullptr) return;
    const int cursorIndex = tree_.IndexOf(tree->value);
    tree_.Build();
    tree->nodes = tree_.Nodes();
    const int line = tree_.LineOf(cursorIndex);
    if (line >= 0) tree->value = line;
    tree->value = std::min(tree->value, static_cast<int>(tree->nodes.size()) - 1);
}

void clsControlCustomSetup::ShowCursor() {
    const clsFormControl* tree = Form().Control(kTree);
    std::string description;
    if (tree != nullptr && tree->value >= 0) {
        if (const clsSIFApplicationItem* item = gApplications.Item(tree_.IndexOf(tree->value))) {
            description = item->LongDescription;
        } else if (const clsSIFPacketItem* packet = gPackets.Item(gPackets.IndexOfProductCode(tree->nodes[static_cast<size_t>(tree->value)].key))) {
            description = packet->LongDescription;
        }
    }
    SetText("DescriptionLabel", description);
    ShowSpace();
}

void clsControlCustomSetup::ShowSpace() {
    const auto drives = clsComponentSpace::Needs([this](const clsSIFApplicationItem& item) { return tree_.DriveOf(item); });
    const std::string required = clsComponentSpace::Text(drives, false);
    const std::string available = clsComponentSpace::Text(drives, true);
    SetText("SpaceRequiredLabel", requiredCaption_ + " " + (required.empty() ? "0 MB" : required));
    SetText("SpaceAvailableLabel", available.empty() ? availableCaption_ : availableCaption_ + " " + available);
}

void clsControlCustomSetup::Status(const std::string& text) { SetText("StatusLabel", text); }

void clsControlCustomSetup::OnClick(const std::string& control, int) {
    if (control != kTree) return;
    Status("");
    ShowCursor();
}

std::string clsControlCustomSetup::LockReason(int index) const {
    const clsSIFApplicationItem* item = gApplications.Item(index);
    if (item == nullptr) return {};
    const std::string locker = walk_.LockedBy(index);
    const clsSIFApplicationItem* by = gApplications.Item(gApplications.IndexOfProductCode(locker));
    if (by != nullptr && by != item) return Numbered(TextNo::kComponentLockedBy, {NameOf(*item), NameOf(*by)});
    return Numbered(TextNo::kComponentLocked, {NameOf(*item)});
}

void clsControlCustomSetup::OnNodeCheck(const std::string& control, int node) {
    const int index = tree_.IndexOf(node);
    if (control != kTree || index == 0) return;
    clsSIFApplicationItem& item = *gApplications.Item(index);
    if (!walk_.CanToggle(index)) {
        const std::string locker = walk_.LockedBy(index);
        LogIfEnabled("Component " + item.ProductCode + " is locked" + (locker.empty() ? "" : " by " + locker) + ": not changed.");
        Status(LockReason(index));
        ShowCursor();
        Renderer().Refresh(Form());
        return;
    }
    const auto changes = walk_.Toggle(index);
    LogIfEnabled("Component " + item.ProductCode + (item.Selected ? " selected" : " cleared") + " by the user.");
    for (const auto& change : changes) {
        const clsSIFApplicationItem* changed = gApplications.Item(change.index);
        const clsSIFApplicationItem* cause = gApplications.Item(change.causeIndex);
        if (changed == nullptr || change.index == index) continue;
        LogIfEnabled("   " + changed->ProductCode + ": " + std::to_string(change.oldCheckBox) + " -> " +
                     std::to_string(change.newCheckBox) + (cause != nullptr ? " (by " + cause->ProductCode + ")" : ""));
    }
    Status("");
    ShowTree();
    ShowCursor();
    Renderer().Refresh(Form());
}

void clsControlCustomSetup::SettleStates() {
    for (auto& item : gApplications.Items()) {
        if (item.AlwaysInstall) item.CheckBox = CheckBoxState::kCheckedLocked;
        const bool known = item.CheckBox == CheckBoxState::kChecked || item.CheckBox == CheckBoxState::kUnchecked ||
                           item.CheckBox == CheckBoxState::kCheckedLocked || item.CheckBox == CheckBoxState::kUncheckedLocked;
        // A product outside the tree keeps its selection; its code is made to agree with it.
        if (!known || !(item.Visible && !item.HideInstall)) {
            if (!known || CheckBoxIsChecked(item.CheckBox) != item.Selected) {
                item.CheckBox = item.Selected ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
            }
            continue;
        }
        item.Selected = CheckBoxIsChecked(item.CheckBox);
    }
}

bool clsControlCustomSetup::SelectionFits() const {
    const auto drives = clsComponentSpace::Needs([this](const clsSIFApplicationItem& item) { return tree_.DriveOf(item); });
    for (const auto& d : drives) {
        if (!d.available) LogIfEnabled("The free space of drive " + d.drive + " is unknown; it is taken as it is.");
    }
    const DriveSpace* small = clsComponentSpace::FirstTooSmall(drives);
    if (small == nullptr) return true;
    LogIfEnabled("Not enough free space on drive " + small->drive + " (required " + std::to_string(small->required) +
                 " MB, available " + std::to_string(*small->available) + " MB): the page stays.");
    Tell(TextNo::kNotEnoughSpace, {small->drive, std::to_string(small->required), std::to_string(*small->available)});
    return false;
}

void clsControlCustomSetup::Record() { (void)clsRecordMode::Record(); }

bool clsControlCustomSetup::OnContinue() {
    SettleStates();
    const auto& items = gApplications.Items();
    if (std::none_of(items.begin(), items.end(), [](const clsSIFApplicationItem& i) { return i.Selected; })) {
        LogIfEnabled("No product is selected: the page stays.");
        Tell(TextNo::kNoProductSelected, {});
        return false;
    }
    if (!SelectionFits()) return false;
    std::string chosen;
    for (const auto& item : items) {
        if (item.Selected) chosen += " " + item.ProductCode;
    }
    LogIfEnabled("Selected products:" + chosen);
    if (RecordMode) Record();
    return true;
}

} // namespace tovel
