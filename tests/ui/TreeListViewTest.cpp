// The component tree as the text wizard draws it: a box per state that a person tells apart,
// the legend, the cursor, and the keys and script lines that act on it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/console/clsConsoleLayout.h"
#include "ui/console/clsPageText.h"
#include "ui/console/clsScriptCommand.h"
#include "ui/console/clsTerminalLoop.h"
#include "wizard/mdlFormLayouts.h"
#include "wizard/uscTreeListView.h"

namespace tovel {
namespace {

// Records what the tree tells its controller.
class Heard : public clsFormEvents {
public:
    void Click(const std::string& control, int) override { clicks.push_back(control); }
    void NodeCheck(const std::string&, int node) override { checks.push_back(node); }
    std::vector<std::string> clicks;
    std::vector<int> checks;
};

clsForm TreeForm() {
    clsForm form = CreateForm("frmCustomSetup");
    clsFormControl& tree = *form.Control("ProductTree");
    tree.nodes = {
        {.key = "STATION", .text = "Station"},
        {.key = "BASE", .text = "Base", .level = 1, .state = 4, .drive = "C:", .megabytes = 120},
        {.key = "VIEWER", .text = "Viewer", .level = 1, .state = 1, .megabytes = 45},
        {.key = "WEB", .text = "Web Panel", .level = 1, .state = 2},
        {.key = "SER9X", .text = "Serial", .level = 1, .state = 8},
        {.key = "OLD", .text = "Old Tool", .state = 1, .grey = true},
    };
    tree.items = {"selected", "not selected", "selected, locked", "not selected, locked", "greyed"};
    tree.value = 2;
    return form;
}

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(TreeListView, EveryStateHasItsOwnBoxAndTheLegendNamesThem) {
    const std::string text = clsPageText::Of(TreeForm());
    EXPECT_TRUE(Has(text, "ProductTree:\n    Station  STATION\n"));
    EXPECT_TRUE(Has(text, "      [#] Base  120 MB  C:  BASE\n"));
    EXPECT_TRUE(Has(text, "  >   [x] Viewer  45 MB  VIEWER\n"));   // the cursor
    EXPECT_TRUE(Has(text, "      [ ] Web Panel  WEB\n"));
    EXPECT_TRUE(Has(text, "      [-] Serial  SER9X\n"));
    EXPECT_TRUE(Has(text, "    {x} Old Tool  OLD\n"));
    EXPECT_TRUE(Has(text, "  [x] selected  [ ] not selected  [#] selected, locked  [-] not selected, locked  { } greyed\n"));

    // On a terminal of 80 x 24 the same boxes and the legend are on the screen.
    clsForm form = TreeForm();
    std::string screen;
    for (const auto& line : clsConsoleLayout::Lines(form, 80, 24)) screen += line + "\n";
    for (const char* box : {"[#] Base", "[x] Viewer", "[ ] Web", "[-] Serial", "{x} Old"}) EXPECT_TRUE(Has(screen, box)) << box << "\n" << screen;
    EXPECT_TRUE(Has(screen, "[x] selected")) << screen;
}

TEST(TreeListView, WithoutAGreyBoxTheLegendLeavesTheBracesOutAndAnEmptyTreeShowsNoCursor) {
    clsForm form = TreeForm();
    clsFormControl& tree = *form.Control("ProductTree");
    tree.nodes.pop_back();
    EXPECT_FALSE(Has(clsPageText::Of(form), "{ }"));
    tree.nodes.clear();
    tree.value = -1;
    EXPECT_EQ(uscTreeListView::Step(tree, 1), -1);
    EXPECT_FALSE(Has(clsPageText::Of(form), "  > "));
}

TEST(TreeListView, ArrowsMoveTheCursorAndSpaceAndScriptsAskTheController) {
    clsForm form = TreeForm();
    Heard heard;
    form.SetEvents(&heard);
    FormView view;
    const FormPlace place = clsConsoleLayout::Place(form, 80, 24, nullptr);
    size_t at = 0;
    while (form.Controls()[at].name != "ProductTree") ++at;
    view.focus = at;
    EXPECT_TRUE(clsTerminalLoop::ListKey(form, place, view, KeyCode::Down));
    EXPECT_EQ(form.Control("ProductTree")->value, 3);
    EXPECT_TRUE(clsTerminalLoop::ListKey(form, place, view, KeyCode::End));
    EXPECT_EQ(form.Control("ProductTree")->value, 5);
    EXPECT_EQ(heard.clicks, (std::vector<std::string>{"ProductTree", "ProductTree"}));

    // The box is the controller's to change: the form only moves the cursor and tells.
    form.RaiseNodeCheck("ProductTree", 1);
    EXPECT_EQ(heard.checks, std::vector<int>{1});
    EXPECT_EQ(form.Control("ProductTree")->nodes[1].state, 4);
    form.RaiseNodeCheck("ProductTree", 99);   // no such line: nothing
    EXPECT_EQ(heard.checks.size(), 1u);

    // Lines by code, any case, or by the start of the text.
    const clsFormControl& tree = *form.Control("ProductTree");
    EXPECT_EQ(uscTreeListView::Find(tree, "SER9X"), 4);
    EXPECT_EQ(uscTreeListView::Find(tree, "viewer"), 2);
    EXPECT_EQ(uscTreeListView::Find(tree, "Web"), 3);
    EXPECT_EQ(uscTreeListView::Find(tree, "NONE"), -1);

    EXPECT_EQ(clsScriptCommand::Parse("toggle VIEWER").verb, ScriptVerb::Toggle);
    EXPECT_EQ(clsScriptCommand::Parse("  FOCUS  Web Panel ").text, "Web Panel");
    EXPECT_EQ(clsScriptCommand::Parse("print").verb, ScriptVerb::Print);
    EXPECT_FALSE(clsScriptCommand::Parse("toggle").error.empty());
    EXPECT_FALSE(clsScriptCommand::Parse("print now").error.empty());
}

} // namespace
} // namespace tovel
