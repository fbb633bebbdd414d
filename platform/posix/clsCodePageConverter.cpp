// iconv behind the code-page conversion of the Linux build.
#include "platform/clsCodePageConverter.h"
#include "platform/clsUtf8.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <map>
#include <mutex>
#include <string>

namespace tovel {

namespace {

const char* IconvName(uint32_t codePage) {
    switch (codePage) {
    case 932: return "CP932";
    case 936: return "CP936";
    case 949: return "CP949";
    case 950: return "CP950";
    case 1200: return "UTF-16LE";
    case 1250: return "CP1250";
    case 1251: return "CP1251";
    case 1252: return "CP1252";
    case 1253: return "CP1253";
    case 1254: return "CP1254";
    case 437: return "CP437";
    case 850: return "CP850";
    case kCodePageUtf8: return "UTF-8";
    default: return nullptr;
    }
}

// What to put out for input that cannot be converted.
enum class OnBadInput { Fail, Question, ByteAsCodePoint };

class Iconv {
public:
    Iconv(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Iconv() {
        if (ok()) iconv_close(handle_);
    }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    [[nodiscard]] bool ok() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    std::optional<std::string> Run(std::string_view input, OnBadInput onBad) {
        std::string out;
        char buffer[4096];
        char* in = const_cast<char*>(input.data());
        size_t inLeft = input.size();
        while (inLeft > 0) {
            char* dst = buffer;
            size_t dstLeft = sizeof buffer;
            const size_t rc = iconv(handle_, &in, &inLeft, &dst, &dstLeft);
            out.append(buffer, static_cast<size_t>(dst - buffer));
            if (rc != static_cast<size_t>(-1) || errno == E2BIG) continue;
            if (onBad == OnBadInput::Fail || (errno != EILSEQ && errno != EINVAL)) return std::nullopt;
            const auto lead = static_cast<unsigned char>(*in);
            size_t skip = 1;
            if (onBad == OnBadInput::Question) {
                out += '?';
                skip = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
            } else {
                // Windows maps the few undefined bytes of its single-byte pages to U+0080..U+00FF.
                out += static_cast<char>(0xC0 | (lead >> 6));
                out += static_cast<char>(0x80 | (lead & 0x3F));
            }
            skip = skip > inLeft ? inLeft : skip;
            in += skip;
            inLeft -= skip;
        }
        return out;
    }

private:
    iconv_t handle_;
};

bool IsSingleByte(uint32_t codePage) {
    return codePage != 932 && codePage != 936 && codePage != 949 && codePage != 950 && codePage != 1200 &&
           codePage != kCodePageUtf8;
}

// The UTF-8 of each byte 0x80..0xFF of a single-byte code page, asked of iconv once per
// code page: a file of such a page then converts by table, without iconv per file.
using HighBytes = std::array<std::string, 128>;

const HighBytes* HighBytesOf(uint32_t codePage, const char* name) {
    static std::mutex guard;
    static std::map<uint32_t, std::optional<HighBytes>> tables;
    const std::lock_guard<std::mutex> lock(guard);
    auto [at, fresh] = tables.try_emplace(codePage);
    if (fresh) {
        Iconv conv("UTF-8", name);
        if (conv.ok()) {
            HighBytes table;
            for (size_t i = 0; i < table.size(); ++i) {
                const char byte = static_cast<char>(0x80 + i);
                table[i] = conv.Run(std::string_view(&byte, 1), OnBadInput::ByteAsCodePoint).value_or("");
            }
            at->second = std::move(table);
        }
    }
    return at->second ? &*at->second : nullptr;
}

std::string ByTable(std::string_view bytes, const HighBytes& table) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    // Runs of ASCII are copied whole: most of a file is ASCII.
    size_t run = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x80) continue;
        out.append(bytes.substr(run, i - run));
        out += table[byte - 0x80];
        run = i + 1;
    }
    out.append(bytes.substr(run));
    return out;
}

} // namespace

std::optional<std::string> clsCodePageConverter::ToUtf8(std::string_view bytes, uint32_t codePage) {
    const char* name = IconvName(codePage);
    if (name == nullptr) return std::nullopt;
    if (IsSingleByte(codePage)) {
        const HighBytes* table = HighBytesOf(codePage, name);
        if (table == nullptr) return std::nullopt;
        return ByTable(bytes, *table);
    }
    Iconv conv("UTF-8", name);
    if (!conv.ok()) return std::nullopt;
    return conv.Run(bytes, OnBadInput::Fail);
}

std::optional<std::string> clsCodePageConverter::FromUtf8(std::string_view text, uint32_t codePage) {
    const char* name = IconvName(codePage);
    if (name == nullptr || !clsUtf8::IsValid(text)) return std::nullopt;
    Iconv conv(name, "UTF-8");
    if (!conv.ok()) return std::nullopt;
    return conv.Run(text, OnBadInput::Question);
}

} // namespace tovel
