// What the Windows build draws, checked without a screen: twips to pixels, the background's
// bands, the screenshots' PNG files.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsGradientBackground.h"
#include "ui/win32/clsMetrics.h"
#include "ui/win32/clsPngFile.h"

using namespace tovel;

TEST(Win32Metrics, TwipsFollowTheScreensResolution) {
    const clsMetrics normal(96, 96);
    EXPECT_EQ(normal.pixelsX(15), 1);
    EXPECT_EQ(normal.pixelsX(7200), 480);
    EXPECT_EQ(normal.pixelsY(5400), 360);
    EXPECT_EQ(normal.twipsX(480), 7200);
    EXPECT_EQ(normal.pixelsX(7), 0);     // under half a pixel
    EXPECT_EQ(normal.pixelsX(8), 1);     // half a pixel and more
    EXPECT_EQ(normal.pixelsX(-8), -1);   // negative offsets mirror positive ones
    const clsMetrics large(120, 144);    // large fonts: the pages grow
    EXPECT_EQ(large.pixelsX(7200), 600);
    EXPECT_EQ(large.pixelsY(5400), 540);
    EXPECT_EQ(large.twipsY(540), 5400);
    const clsMetrics broken(0, -5);      // a screen that answers nonsense counts as 96
    EXPECT_EQ(broken.pixelsX(1440), 96);
    EXPECT_EQ(broken.pixelsY(1440), 96);
}

namespace {

// The blue of each row of a gradient painted into a bitmap of that height.
std::vector<int> PaintedRows(int height) {
    constexpr int width = 4;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    clsGradientBackground::PaintGradient(memory, RECT{0, 0, width, height});
    GdiFlush();
    std::vector<int> rows;
    const auto* pixels = static_cast<const uint32_t*>(bits);
    for (int y = 0; y < height; ++y) {
        const uint32_t pixel = pixels[y * width];
        EXPECT_EQ(pixel & 0xFFFF00U, 0U) << "row " << y << " is not pure blue";   // no red, no green
        rows.push_back(static_cast<int>(pixel & 0xFF));
    }
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return rows;
}

} // namespace

TEST(Win32Gradient, TwoHundredFiftySixBandsFromBlueToBlackOnAnyHeight) {
    for (const int height : {256, 600, 768, 1024, 1200, 2160}) {
        const std::vector<int> rows = PaintedRows(height);
        EXPECT_EQ(rows.front(), 255) << height;
        EXPECT_EQ(rows.back(), 0) << height;
        int bands = 1;
        for (size_t y = 1; y < rows.size(); ++y) {
            ASSERT_LE(rows[y], rows[y - 1]) << "brighter further down at row " << y << " of " << height;
            if (rows[y] != rows[y - 1]) ++bands;
        }
        EXPECT_EQ(bands, 256) << height;
    }
    // A screen lower than 256 pixels cannot show every band, but still runs from blue to
    // (nearly) black without a step back.
    const std::vector<int> low = PaintedRows(200);
    EXPECT_GE(low.front(), 254);
    EXPECT_LE(low.back(), 1);
    for (size_t y = 1; y < low.size(); ++y) EXPECT_LE(low[y], low[y - 1]) << y;
}

namespace {

uint32_t BigEndian(const std::string& bytes, size_t at) {
    return static_cast<uint32_t>(static_cast<uint8_t>(bytes[at])) << 24 | static_cast<uint8_t>(bytes[at + 1]) << 16 |
           static_cast<uint8_t>(bytes[at + 2]) << 8 | static_cast<uint8_t>(bytes[at + 3]);
}

// The rows of a PNG that clsPngFile wrote (stored blocks only), filter bytes included.
std::string StoredRows(const std::string& png) {
    size_t at = 8;
    std::string zlib;
    while (at + 12 <= png.size()) {
        const uint32_t length = BigEndian(png, at);
        const std::string type = png.substr(at + 4, 4);
        EXPECT_EQ(BigEndian(png, at + 8 + length), clsPngFile::Crc32(png.substr(at + 4, 4 + length))) << type;
        if (type == "IDAT") zlib += png.substr(at + 8, length);
        at += 12 + length;
    }
    std::string raw;
    size_t z = 2;
    for (bool last = false; !last && z + 5 <= zlib.size();) {
        last = (zlib[z] & 1) != 0;
        const size_t n = static_cast<uint8_t>(zlib[z + 1]) | static_cast<uint8_t>(zlib[z + 2]) << 8;
        const size_t check = static_cast<uint8_t>(zlib[z + 3]) | static_cast<uint8_t>(zlib[z + 4]) << 8;
        EXPECT_EQ(n ^ check, 0xFFFFU);
        raw += zlib.substr(z + 5, n);
        z += 5 + n;
    }
    EXPECT_EQ(z + 4, zlib.size()) << "the Adler checksum ends the stream";
    return raw;
}

} // namespace

TEST(Win32PngFile, WritesAReadableTrueColourPicture) {
    EXPECT_EQ(clsPngFile::Crc32("IEND"), 0xAE426082U);   // the CRC every PNG ends with
    // Wide enough that the rows need several stored blocks.
    const int width = 300, height = 100;
    std::vector<uint8_t> rgb(static_cast<size_t>(width * height * 3));
    for (size_t i = 0; i < rgb.size(); ++i) rgb[i] = static_cast<uint8_t>(i * 7);
    const std::string png = clsPngFile::Encode(width, height, rgb);
    ASSERT_GT(png.size(), 33U);
    EXPECT_EQ(png.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8));
    EXPECT_EQ(png.substr(12, 4), "IHDR");
    EXPECT_EQ(BigEndian(png, 16), 300U);
    EXPECT_EQ(BigEndian(png, 20), 100U);
    EXPECT_EQ(png.substr(png.size() - 8, 4), "IEND");
    const std::string raw = StoredRows(png);
    ASSERT_EQ(raw.size(), static_cast<size_t>((width * 3 + 1) * height));
    for (int y = 0; y < height; ++y) {
        const size_t row = static_cast<size_t>(y) * (width * 3 + 1);
        ASSERT_EQ(raw[row], '\0');
        ASSERT_EQ(raw.compare(row + 1, width * 3, reinterpret_cast<const char*>(rgb.data()) + y * width * 3, width * 3), 0);
    }
    // Too few bytes for the size given: nothing, rather than a picture of garbage.
    EXPECT_EQ(clsPngFile::Encode(10, 10, std::vector<uint8_t>(10)), "");
    EXPECT_EQ(clsPngFile::Encode(0, 10, rgb), "");
}
