#include "ui/win32/clsWin32Control.h"

#include <string_view>

#include "language/clsLanguage.h"
#include "platform/win32/clsWin32Text.h"
#include "ui/win32/clsWin32Bitmap.h"
#include "startup/Globals.h"

namespace tovel {

namespace {

struct WindowKind {
    const wchar_t* className;
    DWORD style;
    DWORD exStyle;
};

// The message form's icons name Windows' own.
const wchar_t* SystemIcon(const std::string& picture) {
    if (picture == "stop") return IDI_HAND;
    if (picture == "question") return IDI_QUESTION;
    if (picture == "exclamation") return IDI_EXCLAMATION;
    if (picture == "information") return IDI_ASTERISK;
    return nullptr;
}

WindowKind KindOf(const clsFormControl& c) {
    switch (c.kind) {
    case ControlKind::Label: return {L"STATIC", SS_LEFT, 0};
    case ControlKind::CommandButton:
        return {L"BUTTON", static_cast<DWORD>(c.isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP | BS_MULTILINE, 0};
    case ControlKind::OptionButton: return {L"BUTTON", BS_RADIOBUTTON | BS_MULTILINE | WS_TABSTOP, 0};
    case ControlKind::CheckBox: return {L"BUTTON", BS_CHECKBOX | BS_MULTILINE | WS_TABSTOP, 0};
    case ControlKind::TextBox: {
        const DWORD lines = c.multiLine ? ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL : ES_AUTOHSCROLL;
        return {L"EDIT", lines | (c.locked ? ES_READONLY : 0) | WS_TABSTOP, WS_EX_CLIENTEDGE};
    }
    case ControlKind::ListBox:
        return {L"LISTBOX", LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
    case ControlKind::Image:
        return {L"STATIC", static_cast<DWORD>(SystemIcon(c.picture) != nullptr ? SS_ICON : SS_BITMAP), 0};
    // Transparent, so that the form, which clips its children, still paints the frame's
    // inside; otherwise whatever was on the screen stays there.
    case ControlKind::Frame: return {L"BUTTON", BS_GROUPBOX, WS_EX_TRANSPARENT};
    case ControlKind::TreeListView:
        return {WC_TREEVIEWW, TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | WS_TABSTOP | WS_VSCROLL,
                WS_EX_CLIENTEDGE};
    }
    return {L"STATIC", SS_ETCHEDFRAME, 0};
}

// The control kinds as clsLanguage::CaptionEx names them.
std::string_view KindName(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label: return "Label";
    case ControlKind::CommandButton: return "CommandButton";
    case ControlKind::OptionButton: return "OptionButton";
    case ControlKind::CheckBox: return "CheckBox";
    case ControlKind::Frame: return "Frame";
    case ControlKind::TextBox: return "TextBox";
    case ControlKind::ListBox: return "ListBox";
    case ControlKind::TreeListView: return "TreeListView";
    default: return "Image";
    }
}

} // namespace

clsWin32Control::clsWin32Control(HWND parent, const clsFormControl& data, int id, const clsMetrics& metrics, HFONT font,
                                 bool onBanner)
    : id_(id), kind_(data.kind), onBanner_(onBanner), width_(metrics.pixelsX(data.width)),
      height_(metrics.pixelsY(data.height)) {
    const WindowKind kind = KindOf(data);
    if (data.kind == ControlKind::TreeListView) clsWin32TreeList::LoadClass();
    hwnd_ = CreateWindowExW(kind.exStyle, kind.className, L"", kind.style | WS_CHILD, metrics.pixelsX(data.left),
                            metrics.pixelsY(data.top), width_, height_, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    if (hwnd_ == nullptr) return;
    SendMessageW(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (data.kind == ControlKind::TreeListView) tree_ = std::make_unique<clsWin32TreeList>(hwnd_);
    // Everything differs from a control that shows nothing yet.
    shown_.enabled = true;
    shown_.value = data.kind == ControlKind::ListBox ? -2 : 0;
    Sync(data);
}

clsWin32Control::~clsWin32Control() {
    if (hwnd_ != nullptr) DestroyWindow(hwnd_);
    if (bitmap_ != nullptr) DeleteObject(bitmap_);
}

void clsWin32Control::Sync(const clsFormControl& data) {
    if (hwnd_ == nullptr) return;
    if (data.kind == ControlKind::ListBox && data.items != shown_.items) ApplyItems(data);
    if (data.caption != shown_.caption) ApplyCaption(data.caption);
    if (data.picture != shown_.picture) ApplyPicture(data.picture);
    if (data.value != shown_.value) ApplyValue(data);
    if (tree_) tree_->Sync(data);
    if (data.enabled != shown_.enabled) EnableWindow(hwnd_, data.enabled ? TRUE : FALSE);
    if (Showing(data) != showing_) {
        showing_ = !showing_;
        ShowWindow(hwnd_, showing_ ? SW_SHOWNA : SW_HIDE);
    }
    shown_ = data;
}

std::wstring clsWin32Control::WindowText(const std::string& caption) {
    std::string lines;
    lines.reserve(caption.size());
    for (size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '\n' && (i == 0 || caption[i - 1] != '\r')) lines += '\r';
        lines += caption[i];
    }
    // A caption that is not UTF-8 shows its bytes rather than nothing.
    if (const auto wide = clsWin32Text::ToWide(lines)) return *wide;
    return std::wstring(lines.begin(), lines.end());
}

void clsWin32Control::ApplyCaption(const std::string& caption) {
    if (kind_ == ControlKind::ListBox || kind_ == ControlKind::Image) return;
    const std::wstring text = WindowText(caption);
    if (!gLanguage) {
        SetWindowTextW(hwnd_, text.c_str());
        return;
    }
    const CaptionPlan plan = gLanguage->CaptionEx(KindName(kind_), caption, clsLanguage::DisplayModeFor(OSPlatformId));
    switch (plan.path) {
    case CaptionPath::ByteCopy:
        // A buffer of the bytes' length first, then the text over it; the wide window takes
        // the characters themselves, so the system's code page does not matter.
        SetWindowTextW(hwnd_, WindowText(plan.buffer).c_str());
        SendMessageW(hwnd_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        InvalidateRect(hwnd_, nullptr, TRUE);
        UpdateWindow(hwnd_);
        break;
    case CaptionPath::WideSetText: SendMessageW(hwnd_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())); break;
    case CaptionPath::NarrowSetText: SendMessageA(hwnd_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(plan.bytes.c_str())); break;
    case CaptionPath::Direct: SetWindowTextW(hwnd_, text.c_str()); break;
    }
}

void clsWin32Control::ApplyItems(const clsFormControl& data) {
    SendMessageW(hwnd_, LB_RESETCONTENT, 0, 0);
    for (const auto& item : data.items) {
        SendMessageW(hwnd_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WindowText(item).c_str()));
    }
    shown_.value = -2;   // the choice goes with the old lines
}

void clsWin32Control::ApplyPicture(const std::string& picture) {
    if (kind_ != ControlKind::Image) return;
    icon_ = false;
    if (const wchar_t* icon = SystemIcon(picture)) {
        SendMessageW(hwnd_, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconW(nullptr, icon)), 0);
        icon_ = true;
        return;
    }
    // Stretched to the control; a missing file leaves the place empty.
    HBITMAP loaded = clsWin32Bitmap::Load(picture, width_, height_);
    SendMessageW(hwnd_, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(loaded));
    if (bitmap_ != nullptr) DeleteObject(bitmap_);
    bitmap_ = loaded;
}

void clsWin32Control::ApplyValue(const clsFormControl& data) {
    if (kind_ == ControlKind::OptionButton || kind_ == ControlKind::CheckBox) {
        SendMessageW(hwnd_, BM_SETCHECK, data.value != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
    } else if (kind_ == ControlKind::ListBox) {
        SendMessageW(hwnd_, LB_SETCURSEL, static_cast<WPARAM>(data.value), 0);
    }
}

bool clsWin32Control::Showing(const clsFormControl& data) const {
    // An empty picture window would paint its place black; without a bitmap it stays empty.
    return data.visible && (kind_ != ControlKind::Image || icon_ || bitmap_ != nullptr);
}

std::string clsWin32Control::ReadText() const {
    const int length = GetWindowTextLengthW(hwnd_);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    const int got = GetWindowTextW(hwnd_, text.data(), length + 1);
    text.resize(static_cast<size_t>(got > 0 ? got : 0));
    return clsWin32Text::ToUtf8(text);
}

std::optional<TreeListAction> clsWin32Control::TreeAction(const NMHDR& header) const {
    if (!tree_) return std::nullopt;
    return tree_->Notified(header);
}

int clsWin32Control::ReadSelection() const {
    const LRESULT line = SendMessageW(hwnd_, LB_GETCURSEL, 0, 0);
    return line == LB_ERR ? -1 : static_cast<int>(line);
}

} // namespace tovel
