#include "ui/win32/clsWin32LayoutCheck.h"

#include "platform/win32/clsWin32Text.h"
#include "ui/win32/clsWin32FormWindow.h"

namespace tovel {

namespace {

// Room a button's frame and a box or circle before an option's text take from the text.
constexpr int kButtonPadding = 8;
constexpr int kGlyphRoom = 20;

// A callback of Windows' own calling convention (a lambda has the C one on 32-bit Windows).
BOOL CALLBACK AddVisible(HWND child, LPARAM list) {
    if (IsWindowVisible(child) != 0) reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
    return TRUE;
}

std::vector<HWND> Children(HWND window) {
    std::vector<HWND> found;
    EnumChildWindows(window, &AddVisible, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring TextOf(HWND window) {
    wchar_t buffer[4096];
    const int n = GetWindowTextW(window, buffer, 4096);
    return std::wstring(buffer, static_cast<size_t>(n > 0 ? n : 0));
}

RECT ClientPlace(HWND child, HWND window) {
    RECT r;
    GetWindowRect(child, &r);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

std::string Name(const clsFormControl& c) {
    return c.index < 0 ? c.name : c.name + "(" + std::to_string(c.index) + ")";
}

std::string Box(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + " " + std::to_string(r.right - r.left) + "x" +
           std::to_string(r.bottom - r.top);
}

} // namespace

std::vector<std::string> clsWin32LayoutCheck::Check(const clsForm& form, HWND window) {
    std::vector<std::string> faults = OutsideForm(window);
    for (auto& fault : CutOrEmpty(form, window)) faults.push_back(std::move(fault));
    return faults;
}

std::vector<std::string> clsWin32LayoutCheck::OutsideForm(HWND window) {
    std::vector<std::string> faults;
    RECT client;
    GetClientRect(window, &client);
    for (HWND child : Children(window)) {
        const RECT r = ClientPlace(child, window);
        if (r.left < 0 || r.top < 0 || r.right > client.right || r.bottom > client.bottom) {
            faults.push_back("outside the form (" + Box(client) + "): \"" + clsWin32Text::ToUtf8(TextOf(child)) + "\" at " + Box(r));
        }
    }
    return faults;
}

std::vector<std::string> clsWin32LayoutCheck::CutOrEmpty(const clsForm& form, HWND window) {
    std::vector<std::string> faults;
    const auto& controls = form.Controls();
    for (size_t i = 0; i < controls.size(); ++i) {
        const clsFormControl& c = controls[i];
        HWND control = GetDlgItem(window, clsWin32FormWindow::ControlId(i));
        if (control == nullptr || IsWindowVisible(control) == 0 || c.kind == ControlKind::Image || c.kind == ControlKind::ListBox) {
            continue;
        }
        if (c.kind == ControlKind::TreeListView) {
            const size_t lines = static_cast<size_t>(TreeView_GetCount(control));
            if (lines != c.nodes.size()) {
                faults.push_back(Name(c) + ": " + std::to_string(lines) + " lines, the form has " + std::to_string(c.nodes.size()));
            }
            continue;
        }
        const std::wstring text = TextOf(control);
        if (!c.caption.empty() && text.empty()) faults.push_back(Name(c) + ": empty, the form has \"" + c.caption + "\"");
        if (c.kind != ControlKind::TextBox && !text.empty() && CutOff(control, c, text)) {
            faults.push_back(Name(c) + ": \"" + clsWin32Text::ToUtf8(text) + "\" is cut off in " +
                             Box(ClientPlace(control, window)));
        }
    }
    return faults;
}

bool clsWin32LayoutCheck::CutOff(HWND control, const clsFormControl& data, const std::wstring& text) {
    RECT place;
    GetClientRect(control, &place);
    int room = place.right - place.left;
    if (data.kind == ControlKind::CommandButton) room -= kButtonPadding;
    if (data.kind == ControlKind::OptionButton || data.kind == ControlKind::CheckBox) room -= kGlyphRoom;
    if (data.kind == ControlKind::Frame) room -= 2 * kButtonPadding;
    HDC dc = GetDC(control);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT needed{0, 0, room, 0};
    // A frame's caption stands on one line; the others wrap as their windows do.
    const UINT wrap = data.kind == ControlKind::Frame ? DT_SINGLELINE : DT_WORDBREAK;
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &needed, DT_CALCRECT | wrap);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, old);
    ReleaseDC(control, dc);
    const int height = data.kind == ControlKind::Frame ? metrics.tmHeight : place.bottom - place.top;
    return needed.right - needed.left > room || needed.bottom - needed.top > height;
}

std::vector<std::string> clsWin32LayoutCheck::Describe(HWND window) {
    std::vector<std::string> lines;
    for (HWND child : Children(window)) {
        wchar_t className[64];
        GetClassNameW(child, className, 64);
        lines.push_back(clsWin32Text::ToUtf8(className) + " \"" + clsWin32Text::ToUtf8(TextOf(child)) + "\" " +
                        Box(ClientPlace(child, window)));
    }
    return lines;
}

} // namespace tovel
