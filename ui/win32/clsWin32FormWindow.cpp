#include "ui/win32/clsWin32FormWindow.h"

#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

constexpr int kBannerWhite = 0xFFFFFF;

bool EndsWith(const std::string& text, std::string_view end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The titles the layouts put at the top of a page stand out.
bool IsTitle(const clsFormControl& c) {
    return c.kind == ControlKind::Label && (c.name == "TitleLabel" || c.name == "License1Label" || c.name == "WelcomeLabel1");
}

// The setup-language page names Japanese in Japanese, whatever language the page is in.
bool IsJapaneseChoice(const clsForm& form, const clsFormControl& c) {
    return EndsWith(form.Name(), "SetupLanguage") && c.name == "LanguageOption" && c.index == 5;
}

void RegisterClassOnce() {
    static const bool registered = [] {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = DefWindowProcW;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.lpszClassName = clsWin32FormWindow::kClassName;
        return RegisterClassExW(&wc) != 0;
    }();
    (void)registered;
}

} // namespace

clsWin32FormWindow::clsWin32FormWindow(clsForm& form, HWND owner, clsWin32Fonts& fonts, const clsMetrics& metrics,
                                       FormWindowHost host)
    : form_(form), fonts_(fonts), metrics_(metrics), host_(std::move(host)), white_(CreateSolidBrush(kBannerWhite)) {
    RegisterClassOnce();
    constexpr DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    constexpr DWORD exStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
    RECT frame{0, 0, metrics.pixelsX(form.Width()), metrics.pixelsY(form.Height())};
    AdjustWindowRectEx(&frame, style, FALSE, exStyle);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    const int x = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
    const int y = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
    hwnd_ = CreateWindowExW(exStyle, kClassName, L"", style, x > 0 ? x : 0, y > 0 ? y : 0, width, height, owner, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
    if (hwnd_ == nullptr) return;
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    Sync();
}

clsWin32FormWindow::~clsWin32FormWindow() {
    if (hwnd_ != nullptr) {
        for (size_t i = 0; i < timerIntervals_.size(); ++i) KillTimer(hwnd_, i + 1);
        controls_.clear();
        SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DefWindowProcW));
        DestroyWindow(hwnd_);
    }
    DeleteObject(white_);
}

void clsWin32FormWindow::AddControls() {
    const LanguageFont language = clsWin32Fonts::LanguageFontNow();
    const auto& controls = form_.Controls();
    for (size_t slot = controls_.size(); slot < controls.size(); ++slot) {
        const clsFormControl& c = controls[slot];
        if (clsWin32Control::IsDecoration(c)) {
            controls_.push_back(nullptr);
            continue;
        }
        const LanguageFont face = IsJapaneseChoice(form_, c) ? clsWin32Fonts::JapaneseFont() : language;
        HFONT font = fonts_.Get(face, IsTitle(c), metrics_.DpiY());
        controls_.push_back(std::make_unique<clsWin32Control>(hwnd_, c, ControlId(slot), metrics_, font, OnBanner(c)));
    }
}

bool clsWin32FormWindow::OnBanner(const clsFormControl& control) const {
    const clsFormControl* banner = form_.Control("BannerFrame");
    if (banner == nullptr || !banner->visible) return false;
    return control.left >= banner->left && control.top >= banner->top &&
           control.left + control.width <= banner->left + banner->width &&
           control.top + control.height <= banner->top + banner->height;
}

RECT clsWin32FormWindow::Pixels(const clsFormControl& c) const {
    const int left = metrics_.pixelsX(c.left);
    const int top = metrics_.pixelsY(c.top);
    return {left, top, left + metrics_.pixelsX(c.width), top + metrics_.pixelsY(c.height)};
}

void clsWin32FormWindow::Sync() {
    if (hwnd_ == nullptr) return;
    syncing_ = true;
    if (form_.Caption() != caption_) {
        caption_ = form_.Caption();
        SetWindowTextW(hwnd_, clsWin32Control::WindowText(caption_).c_str());
    }
    AddControls();
    auto& controls = form_.Controls();
    for (size_t i = 0; i < controls.size() && i < controls_.size(); ++i) {
        if (controls_[i]) controls_[i]->Sync(controls[i]);
    }
    SyncTimers();
    syncing_ = false;
    // A form no longer shown steps back at once; its window goes when its loop ends.
    if (shown_ && !form_.Shown()) {
        ShowWindow(hwnd_, SW_HIDE);
        shown_ = false;
    }
}

void clsWin32FormWindow::SyncTimers() {
    auto& timers = form_.Timers();
    timerIntervals_.resize(timers.size(), 0);
    for (size_t i = 0; i < timers.size(); ++i) {
        const int wanted = timers[i].enabled && form_.Shown() ? timers[i].intervalMs : 0;
        if (wanted == timerIntervals_[i]) continue;
        if (wanted > 0) {
            SetTimer(hwnd_, i + 1, static_cast<UINT>(wanted), nullptr);
        } else {
            KillTimer(hwnd_, i + 1);
        }
        timerIntervals_[i] = wanted;
    }
}

void clsWin32FormWindow::Show() {
    if (hwnd_ == nullptr || !form_.Shown()) return;
    shown_ = true;
    ShowWindow(hwnd_, SW_SHOW);
    SetForegroundWindow(hwnd_);
    auto& controls = form_.Controls();
    for (size_t i = 0; i < controls.size(); ++i) {
        if (controls_[i] && controls[i].isDefault && controls[i].visible && controls[i].enabled) {
            SetFocus(controls_[i]->Handle());
            return;
        }
    }
    SetFocus(GetNextDlgTabItem(hwnd_, nullptr, FALSE));
}

bool clsWin32FormWindow::DialogKey(MSG& message) {
    return hwnd_ != nullptr && IsDialogMessageW(hwnd_, &message) != 0;
}

LRESULT CALLBACK clsWin32FormWindow::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<clsWin32FormWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    return self != nullptr ? self->Handle(message, wParam, lParam) : DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT clsWin32FormWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: Command(LOWORD(wParam), HIWORD(wParam)); return 0;
    case WM_NOTIFY: Notify(*reinterpret_cast<const NMHDR*>(lParam)); return 0;
    case kTreeActionMessage: TreeAction(static_cast<size_t>(wParam), static_cast<int>(lParam)); return 0;
    case WM_TIMER: {
        const size_t slot = wParam - 1;
        if (slot < form_.Timers().size()) {
            form_.RaiseTimer(form_.Timers()[slot].name);
            Raised();
        }
        return 0;
    }
    case WM_CLOSE:
        // The controller decides: the cancel question, or the page unloads itself.
        form_.RaiseQueryUnload();
        Raised();
        return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        for (const auto& control : controls_) {
            if (control && control->OnBanner() && control->Handle() == reinterpret_cast<HWND>(lParam)) {
                SetBkColor(reinterpret_cast<HDC>(wParam), kBannerWhite);
                return reinterpret_cast<LRESULT>(white_);
            }
        }
        break;
    case WM_SETCURSOR:
        if (host_.busy && host_.busy()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case WM_PAINT: Paint(); return 0;
    default: break;
    }
    return DefWindowProcW(hwnd_, message, wParam, lParam);
}

void clsWin32FormWindow::Paint() {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(hwnd_, &paint);
    for (const clsFormControl& c : form_.Controls()) {
        if (!clsWin32Control::IsDecoration(c) || !c.visible) continue;
        RECT r = Pixels(c);
        if (c.name == "BannerFrame") {
            FillRect(dc, &r, white_);
        } else if (r.bottom - r.top <= 2) {
            r.bottom = r.top + 2;   // a rule: one etched line
            DrawEdge(dc, &r, EDGE_ETCHED, BF_TOP);
        } else {
            DrawEdge(dc, &r, EDGE_ETCHED, BF_RECT);
        }
    }
    EndPaint(hwnd_, &paint);
}

void clsWin32FormWindow::Command(int id, int code) {
    if (id == IDOK || id == IDCANCEL) return PressKeyButton(id == IDCANCEL);
    const size_t slot = static_cast<size_t>(id - kFirstControlId);
    auto& controls = form_.Controls();
    if (id < kFirstControlId || slot >= controls.size() || !controls_[slot] || syncing_) return;
    clsFormControl& c = controls[slot];
    const std::string name = c.name;   // the event may change the form's controls
    const int index = c.index;
    if (c.kind == ControlKind::TextBox && code == EN_CHANGE) {
        form_.RaiseChange(name, index, controls_[slot]->ReadText());
        controls_[slot]->Accept(c);
    } else if (c.kind == ControlKind::ListBox && code == LBN_SELCHANGE) {
        c.value = controls_[slot]->ReadSelection();
        form_.RaiseClick(name, index);
    } else if (c.kind != ControlKind::TextBox && c.kind != ControlKind::ListBox && code == BN_CLICKED) {
        form_.RaiseClick(name, index);
    } else {
        return;
    }
    Raised();
}

void clsWin32FormWindow::Notify(const NMHDR& header) {
    const size_t slot = static_cast<size_t>(static_cast<int>(header.idFrom) - kFirstControlId);
    if (header.idFrom < static_cast<UINT_PTR>(kFirstControlId) || slot >= controls_.size() || !controls_[slot]) return;
    const std::optional<TreeListAction> action = controls_[slot]->TreeAction(header);
    if (!action || action->node < 0) return;
    // The form hears it once the tree has finished with the click or key, so that what the
    // controller decides is drawn last.
    PostMessageW(hwnd_, kTreeActionMessage, slot, action->node * 2 + (action->check ? 1 : 0));
}

void clsWin32FormWindow::TreeAction(size_t slot, int packed) {
    auto& controls = form_.Controls();
    if (slot >= controls.size() || controls[slot].kind != ControlKind::TreeListView) return;
    clsFormControl& tree = controls[slot];
    const std::string name = tree.name;   // the event may change the form's controls
    const int node = packed / 2;
    if (packed % 2 == 1) {
        form_.RaiseNodeCheck(name, node);
    } else {
        if (node >= static_cast<int>(tree.nodes.size())) return;
        tree.value = node;
        form_.RaiseClick(name, tree.index);
    }
    Raised();
}

void clsWin32FormWindow::PressKeyButton(bool cancel) {
    for (const clsFormControl& c : form_.Controls()) {
        const bool wanted = cancel ? c.isCancel : c.isDefault;
        if (wanted && c.kind == ControlKind::CommandButton && c.visible && c.enabled) {
            const std::string name = c.name;
            const int index = c.index;
            form_.RaiseClick(name, index);
            Raised();
            return;
        }
    }
}

void clsWin32FormWindow::Raised() {
    if (host_.afterEvent) host_.afterEvent();
}

} // namespace tovel
