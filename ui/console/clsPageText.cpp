#include "ui/console/clsPageText.h"

#include <algorithm>
#include <vector>

#include "ui/console/clsTextWidth.h"
#include "ui/console/clsTreeListText.h"

namespace tovel {

namespace {

std::string Marks(const clsFormControl& c) {
    std::vector<std::string> marks;
    if (c.kind == ControlKind::CommandButton && c.isDefault) marks.emplace_back("default");
    if (c.kind == ControlKind::CommandButton && c.isCancel) marks.emplace_back("cancel");
    if (!c.enabled) marks.emplace_back("disabled");
    if (c.kind == ControlKind::TextBox && c.locked) marks.emplace_back("read-only");
    std::string text;
    for (const auto& m : marks) text += (text.empty() ? " (" : ", ") + m;
    return text.empty() ? text : text + ")";
}

} // namespace

std::string clsPageText::ControlId(const clsFormControl& control) {
    return control.index >= 0 ? control.name + "(" + std::to_string(control.index) + ")" : control.name;
}

std::string clsPageText::Of(const clsForm& form) {
    std::string text = "== " + form.Name() + (form.Caption().empty() ? "" : ": " + clsTextWidth::OneLine(form.Caption())) + " ==\n";
    std::vector<const clsFormControl*> order;
    for (const auto& c : form.Controls()) {
        if (c.visible) order.push_back(&c);
    }
    std::stable_sort(order.begin(), order.end(), [](const clsFormControl* a, const clsFormControl* b) {
        return a->top != b->top ? a->top < b->top : a->left < b->left;
    });
    for (const clsFormControl* c : order) text += ControlText(*c);
    return text;
}

std::string clsPageText::ControlText(const clsFormControl& c) {
    const std::string tail = Marks(c) + "  " + ControlId(c) + "\n";
    std::string text;
    switch (c.kind) {
    case ControlKind::Label: {
        const auto lines = clsTextWidth::Lines(c.caption);
        text = lines.front() + tail;
        for (size_t i = 1; i < lines.size(); ++i) text += lines[i] + "\n";
        return text;
    }
    case ControlKind::CommandButton: return "[ " + clsTextWidth::OneLine(c.caption) + " ]" + tail;
    case ControlKind::OptionButton: return (c.value != 0 ? "(o) " : "( ) ") + clsTextWidth::OneLine(c.caption) + tail;
    case ControlKind::CheckBox: return (c.value != 0 ? "[x] " : "[ ] ") + clsTextWidth::OneLine(c.caption) + tail;
    case ControlKind::TextBox:
        if (!c.multiLine) return "\"" + clsTextWidth::OneLine(c.caption) + "\"" + tail;
        text = ControlId(c) + Marks(c) + ":\n";
        if (!c.caption.empty()) {
            for (const auto& line : clsTextWidth::Lines(c.caption)) text += line.empty() ? "  |\n" : "  | " + line + "\n";
        }
        return text;
    case ControlKind::ListBox:
        text = ControlId(c) + Marks(c) + ":\n";
        for (size_t i = 0; i < c.items.size(); ++i) {
            text += (static_cast<int>(i) == c.value ? "  > " : "  - ") + c.items[i] + "\n";
        }
        return text;
    case ControlKind::TreeListView:
        // Each line ends in its key, the name a script toggles it by; the cursor is ">".
        text = ControlId(c) + Marks(c) + ":\n";
        for (size_t i = 0; i < c.nodes.size(); ++i) {
            text += (static_cast<int>(i) == c.value ? "  > " : "    ") + clsTreeListText::Line(c.nodes[i]) + "  " + c.nodes[i].key + "\n";
        }
        if (const std::string legend = clsTreeListText::Legend(c); !legend.empty()) text += "  " + legend + "\n";
        return text;
    case ControlKind::Image: return "<picture: " + (c.picture.empty() ? "none" : c.picture) + ">" + tail;
    case ControlKind::Frame: return (c.caption.empty() ? std::string("------") : "--- " + clsTextWidth::OneLine(c.caption) + " ---") + tail;
    }
    return text;
}

} // namespace tovel
