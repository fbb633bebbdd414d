#include "ui/win32/clsWin32TreeList.h"

#include <algorithm>
#include <array>
#include <string>

#include "ui/win32/clsWin32Control.h"
#include "wizard/uscTreeListView.h"

namespace tovel {

namespace {

constexpr std::array<int32_t, 4> kStates{1, 2, 4, 8};
constexpr int kImageWidth = 26;   // the box, then room for the lock
constexpr int kImageHeight = 16;
constexpr int kBox = 13;
constexpr COLORREF kMaskColour = RGB(255, 0, 255);

// A small padlock beside the box of a line that does not move.
void DrawLock(HDC dc, int left, int top) {
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(96, 96, 96));
    HGDIOBJ oldPen = SelectObject(dc, pen);
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(NULL_BRUSH));
    Rectangle(dc, left + 2, top, left + 7, top + 6);   // the shackle
    RECT body{left, top + 5, left + 9, top + 12};
    HBRUSH gold = CreateSolidBrush(RGB(200, 160, 40));
    FillRect(dc, &body, gold);
    FrameRect(dc, &body, reinterpret_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    DeleteObject(gold);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(pen);
}

// Image 0 stays empty (a line without a box); then the four states, then the same greyed.
HBITMAP DrawStrip(HDC screen, int count) {
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP strip = CreateCompatibleBitmap(screen, kImageWidth * count, kImageHeight);
    HGDIOBJ old = SelectObject(dc, strip);
    RECT all{0, 0, kImageWidth * count, kImageHeight};
    HBRUSH mask = CreateSolidBrush(kMaskColour);
    FillRect(dc, &all, mask);
    DeleteObject(mask);
    for (int image = 1; image < count; ++image) {
        const int32_t state = kStates[static_cast<size_t>((image - 1) % 4)];
        const bool grey = image > 4;
        const int left = image * kImageWidth;
        RECT box{left + 1, (kImageHeight - kBox) / 2, left + 1 + kBox, (kImageHeight - kBox) / 2 + kBox};
        UINT look = DFCS_BUTTONCHECK | DFCS_FLAT;
        if (state == 1 || state == 4) look |= DFCS_CHECKED;
        if (grey) look |= DFCS_INACTIVE;
        DrawFrameControl(dc, &box, DFC_BUTTON, look);
        if (uscTreeListView::IsLocked(state)) DrawLock(dc, left + kBox + 3, 2);
    }
    SelectObject(dc, old);
    DeleteDC(dc);
    return strip;
}

HIMAGELIST MakeStateImages() {
    constexpr int count = 1 + 2 * static_cast<int>(kStates.size());
    HIMAGELIST images = ImageList_Create(kImageWidth, kImageHeight, ILC_COLOR24 | ILC_MASK, count, 0);
    if (images == nullptr) return nullptr;
    HDC screen = GetDC(nullptr);
    HBITMAP strip = DrawStrip(screen, count);
    ReleaseDC(nullptr, screen);
    ImageList_AddMasked(images, strip, kMaskColour);
    DeleteObject(strip);
    return images;
}

// The line's text with what the product needs, as the text renderer shows it.
std::wstring LineText(const TreeListNode& node) {
    std::string line = node.text;
    if (node.megabytes >= 0) line += "  " + std::to_string(node.megabytes) + " MB";
    if (!node.drive.empty()) line += "  " + node.drive;
    return clsWin32Control::WindowText(line);
}

bool SameLines(const std::vector<TreeListNode>& a, const std::vector<TreeListNode>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i].key != b[i].key || a[i].text != b[i].text || a[i].level != b[i].level ||
            a[i].megabytes != b[i].megabytes || a[i].drive != b[i].drive) {
            return false;
        }
    }
    return true;
}

} // namespace

void clsWin32TreeList::LoadClass() {
    static const bool registered = [] {
        INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_TREEVIEW_CLASSES};
        return InitCommonControlsEx(&controls) != FALSE;
    }();
    (void)registered;
}

clsWin32TreeList::clsWin32TreeList(HWND tree) : tree_(tree) {
    // The check-box style takes only on a tree that exists; its own images then give way to
    // the four states.
    SetWindowLongPtrW(tree_, GWL_STYLE, GetWindowLongPtrW(tree_, GWL_STYLE) | TVS_CHECKBOXES);
    images_ = MakeStateImages();
    HIMAGELIST own = TreeView_SetImageList(tree_, images_, TVSIL_STATE);
    if (own != nullptr && own != images_) ImageList_Destroy(own);
}

clsWin32TreeList::~clsWin32TreeList() {
    if (images_ != nullptr) ImageList_Destroy(images_);
}

int clsWin32TreeList::StateImage(const TreeListNode& node) {
    for (size_t i = 0; i < kStates.size(); ++i) {
        if (kStates[i] == node.state) return static_cast<int>(i) + 1 + (node.grey ? 4 : 0);
    }
    return 0;
}

void clsWin32TreeList::SelectLine(HWND tree, int node) {
    HTREEITEM item = TreeView_GetRoot(tree);
    for (int line = 0; line < node && item != nullptr; ++line) item = TreeView_GetNextVisible(tree, item);
    if (item != nullptr) TreeView_SelectItem(tree, item);
}

void clsWin32TreeList::Sync(const clsFormControl& data) {
    syncing_ = true;
    if (!SameLines(lines_, data.nodes)) Fill(data);
    ApplyBoxes(data);
    ApplyCursor(data.value);
    syncing_ = false;
}

void clsWin32TreeList::Fill(const clsFormControl& data) {
    SendMessageW(tree_, WM_SETREDRAW, FALSE, 0);
    TreeView_DeleteAllItems(tree_);
    items_.clear();
    std::vector<HTREEITEM> parents;   // the last line of each level
    for (size_t i = 0; i < data.nodes.size(); ++i) {
        const TreeListNode& node = data.nodes[i];
        const size_t level = static_cast<size_t>(std::max(node.level, 0));
        parents.resize(std::min(parents.size(), level));
        std::wstring text = LineText(node);
        TVINSERTSTRUCTW insert{};
        insert.hParent = parents.empty() ? TVI_ROOT : parents.back();
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        insert.item.pszText = text.data();
        insert.item.lParam = static_cast<LPARAM>(i);
        HTREEITEM item = TreeView_InsertItem(tree_, &insert);
        items_.push_back(item);
        if (level == parents.size()) parents.push_back(item);
    }
    for (HTREEITEM item : items_) TreeView_Expand(tree_, item, TVE_EXPAND);
    lines_ = data.nodes;
    SendMessageW(tree_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(tree_, nullptr, TRUE);
}

void clsWin32TreeList::ApplyBoxes(const clsFormControl& data) {
    // Against what the window shows, not what was last applied: the tree may have flipped a
    // box on its own.
    for (size_t i = 0; i < items_.size() && i < data.nodes.size(); ++i) {
        const UINT wanted = INDEXTOSTATEIMAGEMASK(StateImage(data.nodes[i]));
        if ((TreeView_GetItemState(tree_, items_[i], TVIS_STATEIMAGEMASK) & TVIS_STATEIMAGEMASK) != wanted) {
            TreeView_SetItemState(tree_, items_[i], wanted, TVIS_STATEIMAGEMASK);
        }
    }
}

void clsWin32TreeList::ApplyCursor(int node) {
    if (node < 0 || static_cast<size_t>(node) >= items_.size()) return;
    HTREEITEM item = items_[static_cast<size_t>(node)];
    if (TreeView_GetSelection(tree_) != item) TreeView_SelectItem(tree_, item);
}

int clsWin32TreeList::NodeOf(HTREEITEM item) const {
    for (size_t i = 0; i < items_.size(); ++i) {
        if (items_[i] == item) return static_cast<int>(i);
    }
    return -1;
}

int clsWin32TreeList::NodeAtPointer() const {
    const DWORD at = GetMessagePos();
    TVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
    ScreenToClient(tree_, &hit.pt);
    HTREEITEM item = TreeView_HitTest(tree_, &hit);
    return item != nullptr && (hit.flags & TVHT_ONITEMSTATEICON) != 0 ? NodeOf(item) : -1;
}

std::optional<TreeListAction> clsWin32TreeList::Notified(const NMHDR& header) const {
    if (syncing_) return std::nullopt;
    switch (header.code) {
    case NM_CLICK: {
        const int node = NodeAtPointer();
        if (node >= 0) return TreeListAction{true, node};
        break;
    }
    case TVN_KEYDOWN:
        if (reinterpret_cast<const NMTVKEYDOWN&>(header).wVKey == VK_SPACE) {
            const int node = NodeOf(TreeView_GetSelection(tree_));
            if (node >= 0) return TreeListAction{true, node};
        }
        break;
    case TVN_SELCHANGEDW: {
        const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
        if (change.action != TVC_UNKNOWN) return TreeListAction{false, NodeOf(change.itemNew.hItem)};
        break;
    }
    default: break;
    }
    return std::nullopt;
}

} // namespace tovel
