#pragma once
// The component tree as a control: a clsFormControl of kind TreeListView, whose lines are
// TreeListNode values and whose cursor is its value. What every renderer and script needs
// to know about it beyond drawing: which line a name means, and which boxes do not move.
#include <cstdint>
#include <string_view>

#include "wizard/clsForm.h"

namespace tovel {

class uscTreeListView {
public:
    /// The line a script names: its key exactly, else its key or text without regard to case,
    /// else the first text beginning with it (without regard to case); -1 for none.
    [[nodiscard]] static int Find(const clsFormControl& tree, std::string_view name);
    /// True for the locked states 4 (checked) and 8 (cleared): such a box does not move.
    [[nodiscard]] static constexpr bool IsLocked(int32_t state) { return state == 4 || state == 8; }
    /// True for a line with a box (a product), false for a packet heading.
    [[nodiscard]] static constexpr bool HasBox(const TreeListNode& node) { return node.state != 0; }
    /// The cursor `step` lines on from where it is, kept inside the tree; -1 for an empty tree.
    [[nodiscard]] static int Step(const clsFormControl& tree, int step);
    /// The first visible tree of a form; nullptr when it has none.
    [[nodiscard]] static clsFormControl* Of(clsForm& form);
};

} // namespace tovel
