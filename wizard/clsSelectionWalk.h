#pragma once
// What happens to the whole catalogue when a person checks or clears one product's box on
// the component page: the box changes, then the setup dependencies of every product that
// changed are applied (clsCheckBox), breadth first from the click, until nothing more
// changes. Needs no form: the page, its golden variant and the tests call it alike.
//
// The rules of the walk (docs/WIZARD.md, "The component page"):
// - A box that is locked (checked and locked, cleared and locked) cannot be clicked.
// - Each product that changed applies its own links once per click, in the order of its
//   description file; a link naming an unknown product, or the product itself, is skipped.
// - The product clicked keeps the state the person gave it: links that reach back to it
//   only count (the count-only flag on select; on clear its state is put back).
// - A product checked and locked by a force link is not cleared by a toggle in a later
//   click: the toggle only counts it.
// Every change is reported with the product whose link made it.
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mdlCatalogueCodes.h"

namespace tovel {

class clsSIFApplication;

/// One product whose box changed during a walk.
struct SelectionChange {
    int index = 0;                ///< the product's catalogue index (from 1)
    int32_t oldCheckBox = 0;
    int32_t newCheckBox = 0;
    bool oldSelected = false;
    bool newSelected = false;
    int causeIndex = 0;           ///< the product whose link changed it; index itself for the click
};

class clsSelectionWalk {
public:
    explicit clsSelectionWalk(clsSIFApplication& catalogue) : catalogue_(catalogue) {}

    /// Sets the counts and locks that the boxes checked when the page opens hold on their
    /// linked products, as if each had been clicked in catalogue order: the records' counts
    /// and link locks are reset first, so opening the page again gives the same result.
    /// Returns the changes the links made.
    std::vector<SelectionChange> Establish();
    /// Whether a person may change this product's box: it exists and is neither locked nor
    /// kept by its record (AlwaysLocked, VersionType 1).
    [[nodiscard]] bool CanToggle(int index) const;
    /// Checks a cleared box or clears a checked one and walks the links. Returns every change,
    /// the click's own first; nothing when the box cannot be toggled.
    std::vector<SelectionChange> Toggle(int index);
    /// Toggles only when the box is not already in the wanted state.
    std::vector<SelectionChange> SetChecked(int index, bool checked);
    /// The product code that holds a box locked, for the status line ("" when none is known).
    [[nodiscard]] std::string LockedBy(int index) const;

private:
    struct Snapshot;
    struct Progress;
    void Walk(int origin, Progress& progress, std::vector<SelectionChange>& changes);
    void ApplyLinks(int holder, bool checked, int origin, Progress& progress, std::vector<SelectionChange>& changes);
    void ApplyLink(int holder, int target, DependenceType type, bool checked, bool countOnly);
    void Record(int index, int cause, const Snapshot& before, std::vector<SelectionChange>& changes) const;

    clsSIFApplication& catalogue_;
};

} // namespace tovel
