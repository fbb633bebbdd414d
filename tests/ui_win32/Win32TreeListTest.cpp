// The component tree as a native tree view (invisible under Wine's null display): its lines
// and state images follow the form's data, Space on a line goes to the form, and a box
// shows what the controller decided, also where the tree view would flip it itself.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsWin32FormWindow.h"
#include "ui/win32/clsWin32Renderer.h"
#include "ui/win32/clsWin32TreeList.h"

using namespace tovel;

namespace {

// The component page's rule in small: an unlocked box flips, a locked one stays.
class TreeEvents : public clsFormEvents {
public:
    explicit TreeEvents(clsForm& form) : form_(form) {}
    std::vector<std::string> log;
    std::function<void()> onClose;
    void NodeCheck(const std::string& control, int node) override {
        log.push_back("check " + std::to_string(node));
        auto& line = form_.Control(control)->nodes[static_cast<size_t>(node)];
        if (line.state == 1 || line.state == 2) line.state = line.state == 1 ? 2 : 1;
    }
    void Click(const std::string& control, int) override { log.push_back("click " + control); }
    void FormQueryUnload() override {
        if (onClose) onClose();
        form_.SetShown(false);
    }

private:
    clsForm& form_;
};

clsForm TreePage() {
    clsForm form("frmCustomSetup", "Components", 6000, 4000);
    clsFormControl tree{.name = "ProductTree", .kind = ControlKind::TreeListView, .left = 120, .top = 120, .width = 5000, .height = 3000};
    tree.nodes = {{.key = "ENG", .text = "Engineering Station"},
                  {.key = "BASE", .text = "Base Services", .level = 1, .state = 1, .drive = "C:", .megabytes = 120},
                  {.key = "DOCVIEW", .text = "Document Viewer", .level = 1, .state = 2, .grey = true},
                  {.key = "LICMGR", .text = "License Manager", .level = 1, .state = 4},
                  {.key = "OPC", .text = "OPC Server", .level = 1, .state = 8}};
    tree.value = 1;
    form.Add(tree);
    return form;
}

std::vector<int> StateImages(HWND tree) {
    std::vector<int> images;
    for (HTREEITEM item = TreeView_GetRoot(tree); item != nullptr; item = TreeView_GetNextVisible(tree, item)) {
        images.push_back(static_cast<int>((TreeView_GetItemState(tree, item, TVIS_STATEIMAGEMASK) & TVIS_STATEIMAGEMASK) >> 12));
    }
    return images;
}

int CursorLine(HWND tree) {
    int line = 0;
    for (HTREEITEM item = TreeView_GetRoot(tree); item != nullptr; item = TreeView_GetNextVisible(tree, item), ++line) {
        if (item == TreeView_GetSelection(tree)) return line;
    }
    return -1;
}

} // namespace

TEST(Win32TreeList, BoxesFollowTheFormAndSpaceGoesToTheController) {
    clsWin32Renderer renderer;
    clsForm form = TreePage();
    TreeEvents events(form);
    form.SetEvents(&events);
    HWND tree = nullptr;
    std::vector<int> shown, afterSpace;
    int cursor = -1;
    clsFormControl& data = *form.Control("ProductTree");
    renderer.SetOnShown([&](clsForm&, HWND window) {
        tree = GetDlgItem(window, clsWin32FormWindow::ControlId(0));
        shown = StateImages(tree);
        cursor = CursorLine(tree);
        // Space on an unlocked box and on a locked one, then the close box.
        clsWin32TreeList::SelectLine(tree, 1);
        SendMessageW(tree, WM_KEYDOWN, VK_SPACE, 0);
        clsWin32TreeList::SelectLine(tree, 4);
        SendMessageW(tree, WM_KEYDOWN, VK_SPACE, 0);
        PostMessageW(window, WM_CLOSE, 0, 0);
    });
    events.onClose = [&] { afterSpace = StateImages(tree); };
    renderer.ShowModal(form);
    ASSERT_NE(tree, nullptr);
    // A heading has no box; then checked, cleared and grey, checked and locked, cleared and locked.
    EXPECT_EQ(shown, (std::vector<int>{0, 1, 6, 3, 4}));
    EXPECT_EQ(cursor, 1);
    EXPECT_EQ(events.log, (std::vector<std::string>{"check 1", "check 4"})) << "a programmatic cursor is no click";
    EXPECT_EQ(data.nodes[1].state, 2);
    EXPECT_EQ(data.nodes[4].state, 8);
    EXPECT_EQ(data.value, 4) << "the box's line takes the cursor";
    EXPECT_EQ(afterSpace, (std::vector<int>{0, 2, 6, 3, 4})) << "the locked box stays as the controller left it";
}
