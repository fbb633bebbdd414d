#include "ui/win32/clsPngFile.h"

#include <array>

namespace tovel {

namespace {

void PutBigEndian(std::string& out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>((value >> shift) & 0xFF);
}

void Chunk(std::string& out, const char* type, const std::string& data) {
    PutBigEndian(out, static_cast<uint32_t>(data.size()));
    const std::string typed = std::string(type) + data;
    out += typed;
    PutBigEndian(out, clsPngFile::Crc32(typed));
}

// The zlib stream of the rows in stored blocks of at most 65535 bytes.
std::string Stored(const std::string& raw) {
    std::string out("\x78\x01", 2);
    constexpr size_t kBlock = 65535;
    size_t at = 0;
    do {
        const size_t n = std::min(kBlock, raw.size() - at);
        const bool last = at + n == raw.size();
        out += static_cast<char>(last ? 1 : 0);
        out += static_cast<char>(n & 0xFF);
        out += static_cast<char>(n >> 8);
        out += static_cast<char>(~n & 0xFF);
        out += static_cast<char>((~n >> 8) & 0xFF);
        out.append(raw, at, n);
        at += n;
    } while (at < raw.size());
    uint32_t a = 1, b = 0;
    for (const char c : raw) {
        a = (a + static_cast<uint8_t>(c)) % 65521;
        b = (b + a) % 65521;
    }
    PutBigEndian(out, (b << 16) | a);
    return out;
}

} // namespace

uint32_t clsPngFile::Crc32(const std::string& bytes) {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> t{};
        for (uint32_t n = 0; n < 256; ++n) {
            uint32_t c = n;
            for (int k = 0; k < 8; ++k) c = (c & 1) != 0 ? 0xEDB88320U ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) crc = table[(crc ^ static_cast<uint8_t>(c)) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFU;
}

std::string clsPngFile::Encode(int width, int height, const std::vector<uint8_t>& rgb) {
    const size_t row = static_cast<size_t>(width) * 3;
    if (width <= 0 || height <= 0 || rgb.size() < row * static_cast<size_t>(height)) return {};
    std::string raw;
    raw.reserve((row + 1) * static_cast<size_t>(height));
    for (size_t y = 0; y < static_cast<size_t>(height); ++y) {
        raw += '\0';   // filter: none
        raw.append(reinterpret_cast<const char*>(rgb.data()) + y * row, row);
    }
    std::string header;
    PutBigEndian(header, static_cast<uint32_t>(width));
    PutBigEndian(header, static_cast<uint32_t>(height));
    header += std::string("\x08\x02\x00\x00\x00", 5);   // 8 bits, truecolour, no interlace
    std::string png("\x89PNG\r\n\x1a\n", 8);
    Chunk(png, "IHDR", header);
    Chunk(png, "IDAT", Stored(raw));
    Chunk(png, "IEND", "");
    return png;
}

} // namespace tovel
