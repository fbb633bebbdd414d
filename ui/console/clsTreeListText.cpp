#include "ui/console/clsTreeListText.h"

#include <algorithm>
#include <array>

#include "ui/console/clsTextWidth.h"

namespace tovel {

namespace {

constexpr std::array<int32_t, 4> kStates{1, 2, 4, 8};
constexpr std::array<char, 4> kMarks{'x', ' ', '#', '-'};

char MarkOf(int32_t state) {
    for (size_t i = 0; i < kStates.size(); ++i) {
        if (kStates[i] == state) return kMarks[i];
    }
    return '?';   // a code the catalogue should never hold: shown, not hidden
}

} // namespace

std::string clsTreeListText::Box(const TreeListNode& node) {
    if (node.state == 0) return "";
    const char mark = MarkOf(node.state);
    return node.grey ? std::string{'{', mark, '}'} : std::string{'[', mark, ']'};
}

std::string clsTreeListText::Line(const TreeListNode& node) {
    std::string line(static_cast<size_t>(std::max(node.level, 0)) * 2, ' ');
    const std::string box = Box(node);
    if (!box.empty()) line += box + " ";
    line += clsTextWidth::OneLine(node.text);
    if (node.megabytes >= 0) line += "  " + std::to_string(node.megabytes) + " MB";
    if (!node.drive.empty()) line += "  " + node.drive;
    return line;
}

std::string clsTreeListText::Legend(const clsFormControl& tree) {
    std::string legend;
    for (size_t i = 0; i < kStates.size() && i < tree.items.size(); ++i) {
        if (!legend.empty()) legend += "  ";
        legend += std::string{'[', kMarks[i], ']', ' '} + clsTextWidth::OneLine(tree.items[i]);
    }
    // The fifth name explains the braces, when a box is grey.
    const bool anyGrey = std::any_of(tree.nodes.begin(), tree.nodes.end(), [](const TreeListNode& n) { return n.grey && n.state != 0; });
    if (anyGrey && tree.items.size() > kStates.size()) legend += "  { } " + clsTextWidth::OneLine(tree.items[kStates.size()]);
    return legend;
}

std::vector<std::string> clsTreeListText::Lines(const clsFormControl& tree) {
    std::vector<std::string> lines;
    lines.reserve(tree.nodes.size() + 1);
    for (const auto& node : tree.nodes) lines.push_back(Line(node));
    if (std::string legend = Legend(tree); !legend.empty()) lines.push_back(std::move(legend));
    return lines;
}

} // namespace tovel
