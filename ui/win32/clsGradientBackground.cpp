#include "ui/win32/clsGradientBackground.h"

#include "platform/win32/clsWin32Text.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "ui/win32/clsWin32Bitmap.h"
#include "ui/win32/clsWin32Control.h"

namespace tovel {

namespace {

constexpr int kMarginTwips = 240;
constexpr int kTitlePoints = 24;
constexpr int kSubtitlePoints = 14;

std::string Expanded(const std::string& text) { return gPlaceholder ? gPlaceholder->CheckForPlaceholder(text) : text; }

} // namespace

void clsGradientBackground::LoadSettings() {
    caption_ = ApplicationTitle;
    if (!gSetupsIni) return;
    if (!gSetupsIni->AppTitle().empty()) caption_ = Expanded(gSetupsIni->AppTitle());
    appTitle_ = caption_;
    cdTitle_ = gSetupsIni->CDTitleNotShow() ? std::string() : Expanded(gSetupsIni->CDTitle());
    const std::array<const std::string*, kPlaces> files{
        &gSetupsIni->BackgroundImage(), &gSetupsIni->LeftTopBackgroundImage(), &gSetupsIni->LeftBottomBackgroundImage(),
        &gSetupsIni->RightTopBackgroundImage(), &gSetupsIni->RightBottomBackgroundImage()};
    for (size_t i = 0; i < files.size(); ++i) {
        if (files[i]->empty()) continue;
        const std::string file = Expanded(*files[i]);
        images_[i] = clsWin32Bitmap::Load(file);
        if (images_[i] == nullptr) LogIfEnabled("The background image " + clsWin32Bitmap::Resolve(file) + " cannot be shown.");
    }
}

void clsGradientBackground::Show() {
    if (hwnd_ != nullptr) return;
    LoadSettings();
    static const bool registered = [] {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = &clsGradientBackground::Procedure;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.lpszClassName = kClassName;
        return RegisterClassExW(&wc) != 0;
    }();
    (void)registered;
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    hwnd_ = CreateWindowExW(WS_EX_APPWINDOW, kClassName, clsWin32Control::WindowText(caption_).c_str(),
                            WS_POPUP | WS_SYSMENU | WS_CLIPCHILDREN, 0, 0, width, height, nullptr, nullptr,
                            GetModuleHandleW(nullptr), this);
    if (hwnd_ == nullptr) {
        LogIfEnabled("The background window cannot be shown.");
        return;
    }
    // Not top-most: the pages, the message boxes and other programs come in front of it.
    SetWindowPos(hwnd_, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ShowWindow(hwnd_, SW_SHOW);
    UpdateWindow(hwnd_);
    gOpenForms.Add("frmGradientBackground", [this] { Close(); });
}

void clsGradientBackground::Close() {
    if (hwnd_ != nullptr) {
        const HWND closing = hwnd_;
        hwnd_ = nullptr;
        DestroyWindow(closing);
    }
    for (auto& image : images_) {
        if (image != nullptr) DeleteObject(image);
        image = nullptr;
    }
}

LRESULT CALLBACK clsGradientBackground::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<clsGradientBackground*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    return self != nullptr && self->hwnd_ == hwnd ? self->Handle(message, wParam, lParam)
                                                  : DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT clsGradientBackground::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CLOSE: return 0;   // the user's close is refused; the program closes it at its end
    case WM_ERASEBKGND: return 1;
    case WM_SETCURSOR:
        if (busy_ && busy_()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        return DefWindowProcW(hwnd_, message, wParam, lParam);
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(hwnd_, &paint);
        RECT client;
        GetClientRect(hwnd_, &client);
        Paint(dc, client);
        EndPaint(hwnd_, &paint);
        return 0;
    }
    default: return DefWindowProcW(hwnd_, message, wParam, lParam);
    }
}

void clsGradientBackground::Paint(HDC dc, const RECT& client) {
    PaintGradient(dc, client);
    for (int place = kSurface; place < kPlaces; ++place) PaintImage(dc, client, static_cast<Place>(place));
    PaintTitles(dc);
}

void clsGradientBackground::PaintGradient(HDC dc, const RECT& client) {
    const int height = client.bottom - client.top;
    for (int band = 0; band < 256; ++band) {
        const RECT r{client.left, client.top + BandTop(band, height), client.right, client.top + BandTop(band + 1, height)};
        if (r.bottom <= r.top) continue;
        HBRUSH brush = CreateSolidBrush(RGB(0, 0, BandBlue(band)));
        FillRect(dc, &r, brush);
        DeleteObject(brush);
    }
}

void clsGradientBackground::PaintImage(HDC dc, const RECT& client, Place place) {
    HBITMAP image = images_[place];
    if (image == nullptr) return;
    BITMAP size{};
    GetObjectW(image, sizeof(size), &size);
    const int mx = metrics_.pixelsX(kMarginTwips);
    const int my = metrics_.pixelsY(kMarginTwips);
    const bool left = place == kLeftTop || place == kLeftBottom;
    const bool top = place == kLeftTop || place == kRightTop;
    int x = left ? mx : client.right - size.bmWidth - mx;
    int y = top ? my : client.bottom - size.bmHeight - my;
    if (place == kSurface) {   // the surface image in the middle of the screen
        x = (client.right - size.bmWidth) / 2;
        y = (client.bottom - size.bmHeight) / 2;
    }
    HDC memory = CreateCompatibleDC(dc);
    HGDIOBJ old = SelectObject(memory, image);
    BitBlt(dc, x, y, size.bmWidth, size.bmHeight, memory, 0, 0, SRCCOPY);
    SelectObject(memory, old);
    DeleteDC(memory);
}

void clsGradientBackground::PaintTitles(HDC dc) {
    LanguageFont face = clsWin32Fonts::LanguageFontNow();
    if (face.charSet == ANSI_CHARSET) face.name = "Arial";   // the dialog font has no large sizes
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(255, 255, 255));
    int y = metrics_.pixelsY(kMarginTwips);
    const int x = metrics_.pixelsX(kMarginTwips * 2);
    const auto line = [&](const std::string& text, int points) {
        if (text.empty()) return;
        face.pointSize = points;
        HGDIOBJ old = SelectObject(dc, fonts_.Get(face, true, metrics_.DpiY()));
        const std::wstring wide = clsWin32Control::WindowText(text);
        TextOutW(dc, x, y, wide.c_str(), static_cast<int>(wide.size()));
        SIZE extent{};
        GetTextExtentPoint32W(dc, wide.c_str(), static_cast<int>(wide.size()), &extent);
        SelectObject(dc, old);
        y += extent.cy + metrics_.pixelsY(kMarginTwips / 2);
    };
    line(cdTitle_, kTitlePoints);   // CD_Title
    line(appTitle_, kSubtitlePoints);
}

} // namespace tovel
