#include "wizard/uscTreeListView.h"

#include <algorithm>

#include "common/clsString.h"

namespace tovel {

namespace {

int FindIf(const clsFormControl& tree, const auto& fits) {
    const auto it = std::find_if(tree.nodes.begin(), tree.nodes.end(), fits);
    return it == tree.nodes.end() ? -1 : static_cast<int>(it - tree.nodes.begin());
}

} // namespace

int uscTreeListView::Find(const clsFormControl& tree, std::string_view name) {
    int found = FindIf(tree, [&](const TreeListNode& n) { return n.key == name; });
    if (found < 0) {
        found = FindIf(tree, [&](const TreeListNode& n) {
            return clsString::EqualNoCaseAscii(n.key, name) || clsString::EqualNoCaseAscii(n.text, name);
        });
    }
    if (found < 0 && !name.empty()) {
        found = FindIf(tree, [&](const TreeListNode& n) {
            return n.text.size() >= name.size() && clsString::EqualNoCaseAscii(std::string_view(n.text).substr(0, name.size()), name);
        });
    }
    return found;
}

int uscTreeListView::Step(const clsFormControl& tree, int step) {
    if (tree.nodes.empty()) return -1;
    const int last = static_cast<int>(tree.nodes.size()) - 1;
    if (tree.value < 0) return 0;   // no line chosen yet: any move chooses the first
    const int from = std::clamp(tree.value, 0, last);
    return std::clamp(from + step, 0, last);
}

clsFormControl* uscTreeListView::Of(clsForm& form) {
    for (auto& control : form.Controls()) {
        if (control.kind == ControlKind::TreeListView && control.visible) return &control;
    }
    return nullptr;
}

} // namespace tovel
