#pragma once
// frmGradientBackground: the window that covers the whole screen while the setup runs, a
// gradient from blue at the top to black at the bottom in 256 bands, the disc's images on
// its surface and in its corners, the disc and product titles. The pages are owned by it,
// so they stay in front of it; it is not top-most, so message boxes and other programs can
// come in front. The user cannot close it; the end of the program does.
#include <array>
#include <functional>
#include <string>
#include <utility>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsMetrics.h"
#include "ui/win32/clsWin32Fonts.h"

namespace tovel {

class clsGradientBackground {
public:
    /// busy: whether the pointer shows the hourglass over the background too.
    clsGradientBackground(const clsMetrics& metrics, clsWin32Fonts& fonts, std::function<bool()> busy)
        : metrics_(metrics), fonts_(fonts), busy_(std::move(busy)) {}
    clsGradientBackground(const clsGradientBackground&) = delete;
    clsGradientBackground& operator=(const clsGradientBackground&) = delete;
    ~clsGradientBackground() { Close(); }

    /// Loads the settings and images and shows the window over the whole screen.
    void Show();
    /// Closes the window (the end of the program); the user's close is refused.
    void Close();
    [[nodiscard]] HWND Handle() const { return hwnd_; }

    /// Paints the 256 bands over a client area.
    static void PaintGradient(HDC dc, const RECT& client);
    /// The blue of band i (0 at the top) of the 256.
    [[nodiscard]] static int BandBlue(int band) { return 255 - band; }
    /// The top of band i of the 256 in a client area of that height; band 256 is the bottom.
    [[nodiscard]] static int BandTop(int band, int height) { return static_cast<int>(static_cast<long long>(band) * height / 256); }

    static constexpr const wchar_t* kClassName = L"TovelSetupBackground";

private:
    enum Place { kSurface, kLeftTop, kLeftBottom, kRightTop, kRightBottom, kPlaces };

    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void LoadSettings();
    void Paint(HDC dc, const RECT& client);
    void PaintImage(HDC dc, const RECT& client, Place place);
    void PaintTitles(HDC dc);

    const clsMetrics& metrics_;
    clsWin32Fonts& fonts_;
    std::function<bool()> busy_;
    HWND hwnd_ = nullptr;
    std::array<HBITMAP, kPlaces> images_{};
    std::string caption_;
    std::string cdTitle_;     ///< the label CD_Title; empty when the disc hides it
    std::string appTitle_;
};

} // namespace tovel
