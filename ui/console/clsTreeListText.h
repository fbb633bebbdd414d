#pragma once
// The component tree (uscTreeListView) as lines of text, for the terminal and for a
// scripted run alike. Each state has its own box, so the four tell apart at a glance:
//   [x] checked   [ ] cleared   [#] checked and locked   [-] cleared and locked
// A grey box is drawn in braces ({x}, { }, {#}, {-}); a packet heading has no box. A
// product line shows the space it needs and, when chosen per product, its drive.
#include <string>
#include <vector>

#include "wizard/clsForm.h"

namespace tovel {

class clsTreeListText {
public:
    /// The box of a line, "" for a packet heading.
    [[nodiscard]] static std::string Box(const TreeListNode& node);
    /// A line as shown: indent, box, text, space and drive.
    [[nodiscard]] static std::string Line(const TreeListNode& node);
    /// Every line of the tree, then its legend line (when the tree has a legend).
    [[nodiscard]] static std::vector<std::string> Lines(const clsFormControl& tree);
    /// The legend: each box followed by the name of its state (the tree's items 0 to 3), and
    /// when a box is grey, the braces with the fifth name; "" without names.
    [[nodiscard]] static std::string Legend(const clsFormControl& tree);
};

} // namespace tovel
