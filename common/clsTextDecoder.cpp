#include "common/clsTextDecoder.h"

#include "platform/clsUtf8.h"

namespace tovel {

namespace {

constexpr uint32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

} // namespace

ByteOrderMark clsTextDecoder::DetectBom(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return {TextEncoding::Utf8, 3};
    if (bytes.starts_with("\xFF\xFE")) return {TextEncoding::Utf16Le, 2};
    if (bytes.starts_with("\xFE\xFF")) return {TextEncoding::Utf16Be, 2};
    return {};
}

bool clsTextDecoder::IsUtf16(TextEncoding encoding) {
    return encoding == TextEncoding::Utf16Le || encoding == TextEncoding::Utf16Be;
}

uint32_t clsTextDecoder::CodePageOf(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Utf8: return 65001;
    case TextEncoding::Utf16Le: return 1200;
    case TextEncoding::Utf16Be: return 1201;
    case TextEncoding::Ansi: break;
    }
    return 0;
}

uint32_t clsTextDecoder::UnitAt(std::string_view bytes, size_t i, bool bigEndian) {
    const auto a = static_cast<unsigned char>(bytes[i]);
    const auto b = static_cast<unsigned char>(bytes[i + 1]);
    return bigEndian ? (static_cast<uint32_t>(a) << 8) | b : (static_cast<uint32_t>(b) << 8) | a;
}

DecodedText clsTextDecoder::FromUtf16(std::string_view bytes, bool bigEndian) {
    DecodedText out;
    out.oddByte = bytes.size() % 2 != 0;
    const size_t end = bytes.size() - (out.oddByte ? 1 : 0);
    out.text.reserve(end);
    for (size_t i = 0; i < end; i += 2) {
        uint32_t unit = UnitAt(bytes, i, bigEndian);
        if (IsHighSurrogate(unit) && i + 3 < end) {
            const uint32_t low = UnitAt(bytes, i + 2, bigEndian);
            if (IsLowSurrogate(low)) {
                clsUtf8::Append(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), out.text);
                i += 2;
                continue;
            }
        }
        if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            out.replaced = true;
            unit = kReplacement;
        }
        clsUtf8::Append(unit, out.text);
    }
    return out;
}

std::string clsTextDecoder::ToUtf16(std::string_view text, bool bigEndian) {
    std::string out;
    out.reserve(text.size() * 2);
    auto put = [&](uint32_t unit) {
        const auto high = static_cast<char>((unit >> 8) & 0xFF);
        const auto low = static_cast<char>(unit & 0xFF);
        out += bigEndian ? high : low;
        out += bigEndian ? low : high;
    };
    for (size_t i = 0; i < text.size();) {
        const uint32_t cp = clsUtf8::NextLenient(text, i);
        if (cp >= 0x10000) {
            put(0xD800 + ((cp - 0x10000) >> 10));
            put(0xDC00 + ((cp - 0x10000) & 0x3FF));
        } else {
            put(cp);
        }
    }
    return out;
}

} // namespace tovel
