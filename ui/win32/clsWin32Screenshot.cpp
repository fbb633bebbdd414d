#include "ui/win32/clsWin32Screenshot.h"

#include <vector>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsPngFile.h"

namespace tovel {

std::string clsWin32Screenshot::CapturePng() {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    if (width <= 0 || height <= 0) return {};
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;   // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP shot = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    std::string png;
    if (shot != nullptr && bits != nullptr) {
        HGDIOBJ old = SelectObject(memory, shot);
        BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
        GdiFlush();
        SelectObject(memory, old);
        const auto* bgra = static_cast<const uint8_t*>(bits);
        std::vector<uint8_t> rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
        for (size_t i = 0, n = rgb.size() / 3; i < n; ++i) {
            rgb[i * 3] = bgra[i * 4 + 2];
            rgb[i * 3 + 1] = bgra[i * 4 + 1];
            rgb[i * 3 + 2] = bgra[i * 4];
        }
        png = clsPngFile::Encode(width, height, rgb);
    }
    if (shot != nullptr) DeleteObject(shot);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return png;
}

} // namespace tovel
