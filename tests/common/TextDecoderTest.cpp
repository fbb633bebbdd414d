// Byte-order marks and UTF-16, as every reader of text files sees them.
#include <gtest/gtest.h>

#include "common/clsCodePage.h"
#include "common/clsTextDecoder.h"

namespace tovel {
namespace {

std::string Bytes(std::initializer_list<int> values) {
    std::string out;
    for (const int v : values) out += static_cast<char>(v);
    return out;
}

TEST(TextDecoder, ByteOrderMarks) {
    const struct {
        std::string bytes;
        ByteOrderMark bom;
    } cases[] = {
        {"\xEF\xBB\xBF[S]", {TextEncoding::Utf8, 3}},
        {"\xFF\xFE[", {TextEncoding::Utf16Le, 2}},
        {"\xFE\xFF", {TextEncoding::Utf16Be, 2}},
        {"\xFF\xFE", {TextEncoding::Utf16Le, 2}},   // the mark alone: an empty file
        {"\xEF\xBB", {}},                            // half a UTF-8 mark is text
        {"\xFF", {}},
        {"", {}},
        {"[S]\r\n", {}},
        {"\xBB\xEF\xBF", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(clsTextDecoder::DetectBom(c.bytes), c.bom) << c.bytes;
    EXPECT_EQ(clsTextDecoder::CodePageOf(TextEncoding::Utf16Be), kCodePageUtf16Be);
    EXPECT_EQ(clsTextDecoder::CodePageOf(TextEncoding::Ansi), 0u);
}

TEST(TextDecoder, Utf16BothWaysWithDamage) {
    const struct {
        std::string le;   // little-endian units; the big-endian case swaps each pair
        DecodedText decoded;
    } cases[] = {
        {Bytes({'A', 0, 0xFC, 0}), {"A\xC3\xBC", false, false}},                              // Aü
        {Bytes({0xAC, 0x20}), {"\xE2\x82\xAC", false, false}},                                // €
        {Bytes({0x3D, 0xD8, 0x00, 0xDE}), {"\xF0\x9F\x98\x80", false, false}},                // a pair
        {Bytes({0x3D, 0xD8, 'x', 0}), {"\xEF\xBF\xBDx", true, false}},                        // high alone
        {Bytes({'x', 0, 0x00, 0xDE}), {"x\xEF\xBF\xBD", true, false}},                        // low alone
        {Bytes({0x3D, 0xD8}), {"\xEF\xBF\xBD", true, false}},                                 // high at the end
        {Bytes({0x00, 0xDE, 0x3D, 0xD8}), {"\xEF\xBF\xBD\xEF\xBF\xBD", true, false}},         // pair the wrong way round
        {Bytes({'a', 0, 'b'}), {"a", false, true}},                                           // half a unit at the end
        {Bytes({0x3D, 0xD8, 0x00}), {"\xEF\xBF\xBD", true, true}},                            // a pair cut in the middle
        {Bytes({0, 0}), {std::string(1, '\0'), false, false}},
        {"", {"", false, false}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(clsTextDecoder::FromUtf16(c.le, false), c.decoded) << c.decoded.text;
        std::string be = c.le;
        for (size_t i = 0; i + 1 < be.size(); i += 2) std::swap(be[i], be[i + 1]);
        EXPECT_EQ(clsTextDecoder::FromUtf16(be, true), c.decoded) << c.decoded.text;
        if (c.decoded.replaced || c.decoded.oddByte) {
            EXPECT_FALSE(clsCodePage::ToUtf8(c.le, kCodePageUtf16Le).has_value());
            continue;
        }
        EXPECT_EQ(clsTextDecoder::ToUtf16(c.decoded.text, false), c.le);
        EXPECT_EQ(clsTextDecoder::ToUtf16(c.decoded.text, true), be);
        EXPECT_EQ(clsCodePage::ToUtf8(be, kCodePageUtf16Be), c.decoded.text);
    }
    // Writing back text a reader mended: a byte that is no UTF-8 stands for itself.
    EXPECT_EQ(clsTextDecoder::ToUtf16("\xFCx", false), Bytes({0xFC, 0, 'x', 0}));
    EXPECT_FALSE(clsCodePage::FromUtf8("\xFCx", kCodePageUtf16Be).has_value());
}

} // namespace
} // namespace tovel
