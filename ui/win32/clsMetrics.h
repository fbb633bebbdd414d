#pragma once
// Twips and pixels: the forms are laid out in twips (1440 to the inch), the windows in the
// screen's pixels. At 96 dots per inch a pixel is 15 twips; a screen with large fonts has
// more pixels to the inch and the pages grow with it.
namespace tovel {

class clsMetrics {
public:
    /// Reads the screen's dots per inch (96 when the screen cannot be asked).
    clsMetrics();
    /// For a given resolution (dots per inch in each direction).
    clsMetrics(int dpiX, int dpiY) : dpiX_(dpiX > 0 ? dpiX : kDefaultDpi), dpiY_(dpiY > 0 ? dpiY : kDefaultDpi) {}

    /// Twips across as pixels, rounded to the nearest pixel.
    [[nodiscard]] int pixelsX(int twips) const { return Scale(twips, dpiX_, kTwipsPerInch); }
    /// Twips down as pixels.
    [[nodiscard]] int pixelsY(int twips) const { return Scale(twips, dpiY_, kTwipsPerInch); }
    /// Pixels across as twips.
    [[nodiscard]] int twipsX(int pixels) const { return Scale(pixels, kTwipsPerInch, dpiX_); }
    /// Pixels down as twips.
    [[nodiscard]] int twipsY(int pixels) const { return Scale(pixels, kTwipsPerInch, dpiY_); }
    [[nodiscard]] int DpiY() const { return dpiY_; }

private:
    static constexpr int kTwipsPerInch = 1440;
    static constexpr int kDefaultDpi = 96;
    // Rounds half away from zero, so that negative offsets mirror positive ones.
    [[nodiscard]] static int Scale(int value, int mul, int div) {
        const long long product = static_cast<long long>(value) * mul;
        return static_cast<int>(product >= 0 ? (product + div / 2) / div : -((-product + div / 2) / div));
    }

    int dpiX_;
    int dpiY_;
};

} // namespace tovel
