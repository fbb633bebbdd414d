#pragma once
// A picture as a PNG file: 24-bit colour, the image data in stored (uncompressed) deflate
// blocks, so no compression library is needed. For the page test's screenshots.
#include <cstdint>
#include <string>
#include <vector>

namespace tovel {

class clsPngFile {
public:
    /// rgb: height rows of width pixels, three bytes each (red, green, blue), top row first.
    [[nodiscard]] static std::string Encode(int width, int height, const std::vector<uint8_t>& rgb);
    /// The CRC-32 of PNG chunks (and zip), of bytes.
    [[nodiscard]] static uint32_t Crc32(const std::string& bytes);
};

} // namespace tovel
