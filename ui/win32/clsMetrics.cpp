#include "ui/win32/clsMetrics.h"

#include "platform/win32/Win32Headers.h"

namespace tovel {

clsMetrics::clsMetrics() : dpiX_(kDefaultDpi), dpiY_(kDefaultDpi) {
    HDC screen = GetDC(nullptr);
    if (screen == nullptr) return;
    const int x = GetDeviceCaps(screen, LOGPIXELSX);
    const int y = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if (x > 0) dpiX_ = x;
    if (y > 0) dpiY_ = y;
}

} // namespace tovel
