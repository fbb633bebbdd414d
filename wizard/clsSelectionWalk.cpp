#include "wizard/clsSelectionWalk.h"

#include <deque>

#include "catalogue/clsSIFApplication.h"
#include "wizard/clsCheckBox.h"

namespace tovel {

namespace {

bool IsLocked(int32_t code) {
    return code == CheckBoxState::kCheckedLocked || code == CheckBoxState::kUncheckedLocked;
}

} // namespace

/// What a link may change on one record, to tell a change and to put a state back.
struct clsSelectionWalk::Snapshot {
    int32_t checkBox = 0;
    bool selected = false;
    std::string lockedBy;

    explicit Snapshot(const clsSIFApplicationItem& item)
        : checkBox(item.CheckBox), selected(item.Selected), lockedBy(item.LockedCheckboxApp) {}
    void Restore(clsSIFApplicationItem& item) const {
        item.CheckBox = checkBox;
        item.Selected = selected;
        item.LockedCheckboxApp = lockedBy;
    }
    [[nodiscard]] bool Differs(const clsSIFApplicationItem& item) const {
        return item.CheckBox != checkBox || item.Selected != selected;
    }
};

/// The products that applied their select or their clear effects in this walk, and the
/// products still to apply theirs.
struct clsSelectionWalk::Progress {
    std::vector<bool> checkApplied;
    std::vector<bool> clearApplied;
    std::deque<int> queue;

    explicit Progress(int count)
        : checkApplied(static_cast<size_t>(count) + 1, false), clearApplied(static_cast<size_t>(count) + 1, false) {}
};

bool clsSelectionWalk::CanToggle(int index) const {
    const clsSIFApplicationItem* item = catalogue_.Item(index);
    return item != nullptr && !IsLocked(item->CheckBox) && !item->AlwaysLocked && item->VersionType != 1;
}

std::vector<SelectionChange> clsSelectionWalk::Toggle(int index) {
    std::vector<SelectionChange> changes;
    if (!CanToggle(index)) return changes;
    clsSIFApplicationItem& item = *catalogue_.Item(index);
    const Snapshot before(item);
    const bool check = !CheckBoxIsChecked(item.CheckBox);
    item.CheckBox = check ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
    item.Selected = check;
    Record(index, index, before, changes);
    Progress progress(catalogue_.Count());
    Walk(index, progress, changes);
    return changes;
}

std::vector<SelectionChange> clsSelectionWalk::SetChecked(int index, bool checked) {
    const clsSIFApplicationItem* item = catalogue_.Item(index);
    if (item == nullptr || CheckBoxIsChecked(item->CheckBox) == checked) return {};
    return Toggle(index);
}

std::vector<SelectionChange> clsSelectionWalk::Establish() {
    for (auto& item : catalogue_.Items()) {
        item.SetSubjectToAppCount(0);
        item.SharedCount = 0;
        item.LockedCheckboxApp.clear();
    }
    std::vector<SelectionChange> changes;
    Progress progress(catalogue_.Count());
    for (int index = 1; index <= catalogue_.Count(); ++index) {
        const bool checked = CheckBoxIsChecked(catalogue_.Item(index)->CheckBox);
        if (checked && !progress.checkApplied[static_cast<size_t>(index)]) Walk(index, progress, changes);
    }
    return changes;
}

std::string clsSelectionWalk::LockedBy(int index) const {
    const clsSIFApplicationItem* item = catalogue_.Item(index);
    return item == nullptr ? std::string() : item->LockedCheckboxApp;
}

void clsSelectionWalk::Walk(int origin, Progress& progress, std::vector<SelectionChange>& changes) {
    progress.queue.push_back(origin);
    while (!progress.queue.empty()) {
        const int holder = progress.queue.front();
        progress.queue.pop_front();
        const bool checked = CheckBoxIsChecked(catalogue_.Item(holder)->CheckBox);
        std::vector<bool>& applied = checked ? progress.checkApplied : progress.clearApplied;
        if (applied[static_cast<size_t>(holder)]) continue;
        applied[static_cast<size_t>(holder)] = true;
        ApplyLinks(holder, checked, origin, progress, changes);
    }
}

void clsSelectionWalk::ApplyLinks(int holder, bool checked, int origin, Progress& progress,
                                  std::vector<SelectionChange>& changes) {
    // Copied: a link's effect never changes the holder's list, but the walk must not rely on it.
    const std::vector<SetupDependence> links = catalogue_.Item(holder)->SetupDependencies();
    for (const auto& link : links) {
        const int target = catalogue_.IndexOfProductCode(link.productCode);
        if (target == 0 || target == holder) continue;
        clsSIFApplicationItem& item = *catalogue_.Item(target);
        if (link.type == DependenceType::Toggle && IsLocked(item.CheckBox)) continue;
        clsSIFApplicationItem& self = *catalogue_.Item(holder);
        const Snapshot before(item);
        const Snapshot selfBefore(self);
        ApplyLink(holder, target, link.type, checked, target == origin);
        if (target == origin) before.Restore(item);
        // A setreset link may clear its holder too; the holder has applied its links already.
        if (selfBefore.Differs(self)) Record(holder, holder, selfBefore, changes);
        if (!before.Differs(item)) continue;
        Record(target, holder, before, changes);
        progress.queue.push_back(target);
    }
}

void clsSelectionWalk::ApplyLink(int holder, int target, DependenceType type, bool checked, bool countOnly) {
    clsCheckBox link(catalogue_);
    link.SetLink(static_cast<int16_t>(holder), target, type);
    link.SetCountOnly(countOnly);
    if (checked) {
        link.ApplyCheckEffect();
        return;
    }
    link.ApplyUncheckEffect();
}

void clsSelectionWalk::Record(int index, int cause, const Snapshot& before, std::vector<SelectionChange>& changes) const {
    const clsSIFApplicationItem& item = *catalogue_.Item(index);
    changes.push_back({index, before.checkBox, item.CheckBox, before.selected, item.Selected, cause});
}

} // namespace tovel
