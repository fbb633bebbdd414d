#pragma once
// The component tree (uscTreeListView) as a native tree view. Its check boxes are state
// images of its own in the four states (checked, cleared, checked and locked, cleared and
// locked), each also greyed. The tree never moves a box itself: a click or Space on a box is
// handed to the form, and the boxes follow the form's data on the next Sync.
#include <optional>
#include <vector>

#include "platform/win32/Win32Headers.h"
#include "wizard/clsForm.h"

#include <commctrl.h>

namespace tovel {

/// What the user did in the tree.
struct TreeListAction {
    bool check = false;   ///< true: the box of the line; false: the cursor moved to it
    int node = -1;
};

class clsWin32TreeList {
public:
    /// Makes the tree view's window class known; before the first tree is made.
    static void LoadClass();
    /// Sets up the check boxes of a tree view made by the caller.
    explicit clsWin32TreeList(HWND tree);
    clsWin32TreeList(const clsWin32TreeList&) = delete;
    clsWin32TreeList& operator=(const clsWin32TreeList&) = delete;
    ~clsWin32TreeList();

    /// Lines, boxes and cursor as the data has them.
    void Sync(const clsFormControl& data);
    /// The user's action a notification of the tree stands for; none for the others.
    [[nodiscard]] std::optional<TreeListAction> Notified(const NMHDR& header) const;
    /// Puts the cursor of an expanded tree view on a line without telling the form.
    static void SelectLine(HWND tree, int node);
    /// The state image of a line: 0 none (a heading), 1..4 for the states 1, 2, 4, 8, four
    /// on for a grey box.
    [[nodiscard]] static int StateImage(const TreeListNode& node);

private:
    void Fill(const clsFormControl& data);
    void ApplyBoxes(const clsFormControl& data);
    void ApplyCursor(int node);
    [[nodiscard]] int NodeOf(HTREEITEM item) const;
    [[nodiscard]] int NodeAtPointer() const;

    HWND tree_;
    HIMAGELIST images_ = nullptr;
    std::vector<HTREEITEM> items_;
    std::vector<TreeListNode> lines_;   ///< the lines the items were made from
    bool syncing_ = false;
};

} // namespace tovel
