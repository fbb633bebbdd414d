#include "settings/clsIniText.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "common/clsCodePage.h"
#include "common/clsTextDecoder.h"
#include "platform/clsCodePageConverter.h"
#include "platform/clsUtf8.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Eight bytes of text at a time, the last ones padded with zeros.
uint64_t Word(const char* bytes, size_t count) {
    uint64_t word = 0;
    if (count >= 8) {
        std::memcpy(&word, bytes, 8);
        return word;
    }
    for (size_t i = 0; i < count; ++i) word |= static_cast<uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return word;
}

constexpr uint64_t kHighBits = 0x8080808080808080ull;

// The double-byte ANSI code pages and UTF-8. A file in one of them converts whole, since each
// call of their converter costs; in any other page only the lines that are not ASCII convert,
// each alone, which reads the same, as no character spans a line end.
bool ConvertsWhole(uint32_t codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || codePage == kCodePageUtf8;
}

struct RawLine {
    size_t begin = 0;
    size_t length = 0;
    uint8_t end = 0;   // 0 none, 1 CR LF, 2 LF, 3 CR (the order of clsIniText::End)
};

// The first CR or LF at or after from; size when there is none. Eight bytes at a time: lines
// are short, and one pass over them costs less than a search for each of the two.
size_t NextLineBreak(const char* data, size_t from, size_t size) {
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    size_t i = from;
    for (; i + 8 <= size; i += 8) {
        const uint64_t word = Word(data + i, 8);
        const uint64_t cr = word ^ (kOnes * '\r');
        const uint64_t lf = word ^ (kOnes * '\n');
        if ((((cr - kOnes) & ~cr) | ((lf - kOnes) & ~lf)) & kHighBits) break;   // a byte of the word is CR or LF
    }
    for (; i < size; ++i) {
        if (data[i] == '\r' || data[i] == '\n') return i;
    }
    return size;
}

// Lines of 8-bit text. CR and LF are never part of a multi-byte character in the ANSI code
// pages, so the bytes can be split before they are decoded.
std::vector<RawLine> SplitBytes(std::string_view body) {
    std::vector<RawLine> lines;
    lines.reserve(body.size() / 24 + 1);
    const char* data = body.data();
    const size_t size = body.size();
    size_t start = 0;
    while (start < size) {
        const size_t at = NextLineBreak(data, start, size);
        if (at == size) break;
        if (data[at] == '\n') {
            lines.push_back({start, at - start, 2});
            start = at + 1;
            continue;
        }
        const bool crLf = at + 1 < size && data[at + 1] == '\n';
        lines.push_back({start, at - start, static_cast<uint8_t>(crLf ? 1 : 3)});
        start = at + (crLf ? 2 : 1);
    }
    if (start < size) lines.push_back({start, size - start, 0});
    return lines;
}

// Lines of UTF-16 text (an even number of bytes), in bytes.
std::vector<RawLine> SplitUtf16(std::string_view body, bool bigEndian) {
    std::vector<RawLine> lines;
    size_t start = 0;
    for (size_t i = 0; i + 1 < body.size();) {
        const uint32_t unit = clsTextDecoder::UnitAt(body, i, bigEndian);
        if (unit != '\r' && unit != '\n') {
            i += 2;
            continue;
        }
        const bool crLf = unit == '\r' && i + 3 < body.size() && clsTextDecoder::UnitAt(body, i + 2, bigEndian) == '\n';
        lines.push_back({start, i - start, static_cast<uint8_t>(crLf ? 1 : unit == '\n' ? 2 : 3)});
        i += crLf ? 4 : 2;
        start = i;
    }
    if (start < body.size()) lines.push_back({start, body.size() - start, 0});
    return lines;
}

// UTF-8 as far as it is valid; each byte that starts no character becomes U+FFFD.
std::string LenientUtf8(std::string_view bytes) {
    std::string out;
    for (size_t i = 0; i < bytes.size();) {
        size_t next = i;
        if (const auto cp = clsUtf8::Next(bytes, next)) {
            out.append(bytes.substr(i, next - i));
            i = next;
        } else {
            out += kReplacement;
            ++i;
        }
    }
    return out;
}

// A line of a code page with bytes the code page does not define: each character that
// converts on its own (one byte, or a lead and a trail byte) is kept, the rest is U+FFFD.
std::string LenientAnsi(std::string_view bytes, uint32_t codePage) {
    std::string out;
    for (size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            out += bytes[i++];
            continue;
        }
        bool done = false;
        for (size_t length = 1; length <= 2 && i + length <= bytes.size() && !done; ++length) {
            const auto one = clsCodePage::ToUtf8(bytes.substr(i, length), codePage);
            if (one && !one->empty()) {
                out += *one;
                i += length;
                done = true;
            }
        }
        if (!done) {
            out += kReplacement;
            ++i;
        }
    }
    return out;
}

// The first maxChars characters of UTF-8 text (a byte that starts no character counts as one).
std::string_view CutChars(std::string_view text, size_t maxChars) {
    if (text.size() <= maxChars) return text;   // never more characters than bytes
    size_t chars = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) continue;
        if (chars++ == maxChars) return text.substr(0, i);
    }
    return text;
}

// One pair of the same quote around a value of two or more characters goes.
std::string_view Unquoted(std::string_view value) {
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front()) {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

std::string EncodingName(TextEncoding encoding, uint32_t codePage) {
    switch (encoding) {
    case TextEncoding::Utf8: return "UTF-8";
    case TextEncoding::Utf16Le: return "UTF-16 LE";
    case TextEncoding::Utf16Be: return "UTF-16 BE";
    case TextEncoding::Ansi: break;
    }
    return "code page " + std::to_string(codePage);
}

std::string LineList(const std::vector<size_t>& numbers) {
    std::string text = "line " + std::to_string(numbers.front());
    if (numbers.size() > 1) text += " (and " + std::to_string(numbers.size() - 1) + " more)";
    return text;
}

bool HasLineBreakOrNul(std::string_view text) { return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos; }

} // namespace

clsIniText::clsIniText(uint32_t ansiCodePage) : ansiCodePage_(ansiCodePage) {}

std::string_view clsIniText::Trim(std::string_view text) {
    size_t begin = 0;
    size_t end = text.size();
    while (begin < end && IsBlank(text[begin])) ++begin;
    while (end > begin && IsBlank(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

std::string clsIniText::FoldName(std::string_view name) {
    name = Trim(name);
    if (!clsUtf8::IsAscii(name)) return clsWindowsPath::FoldCase(name);
    std::string out(name);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return out;
}

int32_t clsIniText::ProfileInt(std::string_view value) {
    size_t i = 0;
    while (i < value.size() && static_cast<unsigned char>(value[i]) <= ' ') ++i;
    bool negative = false;
    if (i < value.size() && (value[i] == '-' || value[i] == '+')) negative = value[i++] == '-';
    uint32_t base = 10;
    if (value.size() - i >= 2 && value[i] == '0') {
        const char prefix = value[i + 1];
        base = prefix == 'x' ? 16 : prefix == 'o' ? 8 : prefix == 'b' ? 2 : 10;
        if (base != 10) i += 2;
    }
    uint32_t total = 0;
    for (; i < value.size(); ++i) {
        const char c = value[i];
        const uint32_t digit = c >= '0' && c <= '9'   ? static_cast<uint32_t>(c - '0')
                               : c >= 'a' && c <= 'f' ? static_cast<uint32_t>(c - 'a' + 10)
                               : c >= 'A' && c <= 'F' ? static_cast<uint32_t>(c - 'A' + 10)
                                                      : 99;
        if (digit >= base) break;
        total = total * base + digit;   // wraps at 2^32, as the Windows conversion does
    }
    return static_cast<int32_t>(negative ? 0u - total : total);
}

void clsIniText::Classify(Line& line, std::string_view t, bool holdsNul) {
    line.kind = Kind::Blank;
    line.nameBegin = line.nameLength = line.valueBegin = line.valueLength = 0;
    if (t.size() > std::numeric_limits<uint32_t>::max()) {
        line.kind = Kind::Text;
        return;
    }
    const size_t n = t.size();
    size_t p = 0;
    while (p < n && IsBlank(t[p])) ++p;
    if (p == n) return;
    // A range [begin, end) trimmed of blanks, then cut at a NUL as a C string would be.
    auto range = [&](size_t begin, size_t end, uint32_t& outBegin, uint32_t& outLength) {
        while (begin < end && IsBlank(t[begin])) ++begin;
        while (end > begin && IsBlank(t[end - 1])) --end;
        const void* nul = holdsNul ? std::memchr(t.data() + begin, '\0', end - begin) : nullptr;
        if (nul != nullptr) end = static_cast<size_t>(static_cast<const char*>(nul) - t.data());
        outBegin = static_cast<uint32_t>(begin);
        outLength = static_cast<uint32_t>(end - begin);
    };
    if (t[p] == ';') {
        line.kind = Kind::Comment;
        return;
    }
    if (t[p] == '[') {
        const size_t close = t.rfind(']');
        if (close != std::string_view::npos && close > p) {
            line.kind = Kind::Header;
            range(p + 1, close, line.nameBegin, line.nameLength);
            return;
        }
    }
    const size_t eq = t.find('=', p);
    if (eq == std::string_view::npos) {
        line.kind = Kind::Text;
        range(p, n, line.nameBegin, line.nameLength);
        return;
    }
    line.kind = Kind::Entry;
    range(p, eq, line.nameBegin, line.nameLength);
    size_t valueBegin = eq + 1;
    while (valueBegin < n && IsBlank(t[valueBegin])) ++valueBegin;
    range(valueBegin, n, line.valueBegin, line.valueLength);
}

clsIniText clsIniText::Parse(std::string_view bytes, uint32_t ansiCodePage, std::vector<std::string>& warnings) {
    clsIniText ini(ansiCodePage);
    const ByteOrderMark bom = clsTextDecoder::DetectBom(bytes);
    ini.encoding_ = bom.encoding;
    ini.bom_ = std::string(bytes.substr(0, bom.length));
    std::string_view body = bytes.substr(bom.length);
    const bool utf16 = clsTextDecoder::IsUtf16(ini.encoding_);
    if (utf16 && body.size() % 2 != 0) {
        ini.tail_ = std::string(body.substr(body.size() - 1));
        body.remove_suffix(1);
        warnings.push_back("ends in half a UTF-16 character; that byte is kept but not read");
    }
    const auto raw = utf16 ? SplitUtf16(body, ini.encoding_ == TextEncoding::Utf16Be) : SplitBytes(body);
    // UTF-16 as UTF-8 takes at most half as much again.
    ini.store_.reserve(utf16 ? body.size() * 5 / 2 : body.size());
    ini.store_ = body;
    ini.lines_.resize(raw.size());
    for (size_t i = 0; i < raw.size(); ++i) {
        Line& line = ini.lines_[i];
        line.raw = line.text = raw[i].begin;
        line.rawLength = line.textLength = raw[i].length;
        line.end = static_cast<End>(raw[i].end);
    }
    if (!raw.empty() && raw.front().end != 0) ini.newLine_ = static_cast<End>(raw.front().end);

    const std::vector<size_t> badLines = ini.DecodeLines(body);
    // A NUL byte is rare: one search of the whole store spares a search of each line.
    const bool holdsNul = ini.store_.find('\0') != std::string::npos;
    std::vector<size_t> longLines, nulLines;
    for (size_t i = 0; i < ini.lines_.size(); ++i) {
        Line& line = ini.lines_[i];
        const std::string_view text = ini.TextOf(line);
        Classify(line, text, holdsNul);
        if (holdsNul && text.find('\0') != std::string_view::npos) nulLines.push_back(i + 1);
        if (line.kind == Kind::Entry && line.valueLength > kMaxValueChars &&
            CutChars(Unquoted(ini.Val(line)), kMaxValueChars).size() < Unquoted(ini.Val(line)).size()) {
            longLines.push_back(i + 1);
        }
    }
    if (!badLines.empty()) {
        warnings.push_back(LineList(badLines) + " is not valid text in " + EncodingName(ini.encoding_, ansiCodePage) +
                           "; characters that cannot be read count as U+FFFD, and the bytes stay as they are");
    }
    if (!nulLines.empty()) warnings.push_back(LineList(nulLines) + " holds a NUL byte; its name or value ends there");
    if (!longLines.empty()) {
        warnings.push_back(LineList(longLines) + " holds a value longer than " + std::to_string(kMaxValueChars) +
                           " characters; reads give its first " + std::to_string(kMaxValueChars));
    }
    ini.Reindex();
    return ini;
}

std::vector<size_t> clsIniText::DecodeLines(std::string_view body) {
    switch (encoding_) {
    case TextEncoding::Utf16Le:
    case TextEncoding::Utf16Be: return DecodeUtf16(body);
    case TextEncoding::Utf8: return DecodeUtf8(body);
    case TextEncoding::Ansi: break;
    }
    return DecodeAnsi(body);
}

std::vector<size_t> clsIniText::DecodeUtf16(std::string_view body) {
    std::vector<size_t> bad;
    for (size_t i = 0; i < lines_.size(); ++i) {
        Line& line = lines_[i];
        const auto decoded = clsTextDecoder::FromUtf16(body.substr(line.raw, line.rawLength), encoding_ == TextEncoding::Utf16Be);
        PutText(line, decoded.text);
        if (decoded.replaced) bad.push_back(i + 1);
    }
    return bad;
}

std::vector<size_t> clsIniText::DecodeUtf8(std::string_view body) {
    std::vector<size_t> bad;
    if (clsUtf8::IsAscii(body) || clsCodePage::IsUtf8(body)) return bad;
    for (size_t i = 0; i < lines_.size(); ++i) {
        Line& line = lines_[i];
        const std::string_view bytes = body.substr(line.raw, line.rawLength);
        if (clsCodePage::IsUtf8(bytes)) continue;
        PutText(line, LenientUtf8(bytes));
        bad.push_back(i + 1);
    }
    return bad;
}

std::vector<size_t> clsIniText::DecodeAnsi(std::string_view body) {
    std::vector<size_t> bad;
    // Most files are ASCII. A double-byte file converts whole where it can; otherwise each
    // line that is not ASCII converts alone.
    if (clsUtf8::IsAscii(body) || (ConvertsWhole(ansiCodePage_) && DecodeWhole(body))) return bad;
    for (size_t i = 0; i < lines_.size(); ++i) {
        Line& line = lines_[i];
        const std::string_view bytes = body.substr(line.raw, line.rawLength);
        if (clsUtf8::IsAscii(bytes)) continue;
        auto converted = clsCodePage::ToUtf8(bytes, ansiCodePage_);
        if (!converted) bad.push_back(i + 1);
        PutText(line, converted ? *converted : LenientAnsi(bytes, ansiCodePage_));
    }
    return bad;
}

bool clsIniText::DecodeWhole(std::string_view body) {
    auto whole = clsCodePage::ToUtf8(body, ansiCodePage_);
    if (!whole) return false;
    const auto wholeLines = SplitBytes(*whole);
    const bool sameShape = wholeLines.size() == lines_.size() &&
                           std::equal(lines_.begin(), lines_.end(), wholeLines.begin(),
                                      [](const Line& a, const RawLine& b) { return static_cast<uint8_t>(a.end) == b.end; });
    if (!sameShape) return false;
    const size_t at = store_.size();
    store_ += *whole;
    for (size_t i = 0; i < lines_.size(); ++i) {
        lines_[i].text = at + wholeLines[i].begin;
        lines_[i].textLength = wholeLines[i].length;
    }
    return true;
}

void clsIniText::Reindex() {
    sections_.clear();
    firstBlock_.clear();
    const auto headers = std::count_if(lines_.begin(), lines_.end(), [](const Line& l) { return l.kind == Kind::Header; });
    sections_.reserve(static_cast<size_t>(headers));
    firstBlock_.reserve(static_cast<size_t>(headers));
    for (size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].kind != Kind::Header) continue;
        if (!sections_.empty()) sections_.back().end = i;
        sections_.push_back({i, lines_.size()});
        if (lines_[i].nameLength > 0) firstBlock_.try_emplace(FoldName(Name(lines_[i])), sections_.size() - 1);
    }
    keys_.assign(sections_.size(), std::nullopt);
    lastSection_ = {};
}

const clsIniText::Section* clsIniText::FirstBlock(std::string_view section) const {
    // Readers ask for many keys of one section in a row: the same name finds the same block.
    if (lastSection_.valid && section == lastSection_.name) return lastSection_.index ? &sections_[*lastSection_.index] : nullptr;
    const auto it = Find(firstBlock_, section);
    lastSection_.name.assign(section);
    lastSection_.valid = true;
    lastSection_.index = it == firstBlock_.end() ? std::nullopt : std::optional<size_t>(it->second);
    return it == firstBlock_.end() ? nullptr : &sections_[it->second];
}

namespace {

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// The hash of FoldedHash, and in ascii whether every byte was ASCII. Eight letters at a time
// with the case bit (0x20) cleared in every byte: a and A hash alike, as do a few signs such
// as [ and {, which the comparison then tells apart.
size_t CaseBlindHash(std::string_view name, bool& ascii) {
    constexpr uint64_t kCaseBits = 0x2020202020202020ull;
    uint64_t hash = 0x9E3779B97F4A7C15ull ^ name.size();
    uint64_t high = 0;
    const auto mix = [&hash, &high](uint64_t word) {
        high |= word;
        hash = (hash ^ (word & ~kCaseBits)) * 0xFF51AFD7ED558CCDull;
        hash ^= hash >> 32;
    };
    size_t i = 0;
    for (; i + 8 <= name.size(); i += 8) mix(Word(name.data() + i, 8));
    if (i < name.size()) mix(Word(name.data() + i, name.size() - i));
    ascii = (high & kHighBits) == 0;
    return static_cast<size_t>(hash ^ (hash >> 29));
}

} // namespace

size_t clsIniText::FoldedHash::operator()(std::string_view name) const {
    bool ascii = true;
    return CaseBlindHash(name, ascii);
}

bool clsIniText::FoldedEqual::operator()(std::string_view a, std::string_view b) const {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return UpperAscii(x) == UpperAscii(y); });
}

clsIniText::NameIndex::const_iterator clsIniText::Find(const NameIndex& index, std::string_view name) {
    name = Trim(name);
    if (name.empty()) return index.end();
    // Folding beyond ASCII needs the folded text; ASCII names fold in the hash and comparison.
    if (!clsUtf8::IsAscii(name)) return index.find(FoldName(name));
    return index.find(name);
}

size_t clsIniText::NameHash(std::string_view name) { return TrimmedNameHash(Trim(name)); }

size_t clsIniText::TrimmedNameHash(std::string_view name) {
    bool ascii = true;
    const size_t hash = CaseBlindHash(name, ascii);
    return ascii ? hash : FoldedHash{}(FoldName(name));
}

bool clsIniText::SameName(std::string_view a, std::string_view b) { return SameTrimmedName(Trim(a), Trim(b)); }

bool clsIniText::SameTrimmedName(std::string_view a, std::string_view b) {
    // Readers mostly ask in the file's own spelling.
    if (a == b) return true;
    // Names alike but for the case of ASCII letters fold alike in every script.
    if (FoldedEqual{}(a, b)) return true;
    return !(clsUtf8::IsAscii(a) && clsUtf8::IsAscii(b)) && FoldName(a) == FoldName(b);
}

std::optional<size_t> clsIniText::FindKey(const Section& section, std::string_view key) const {
    key = Trim(key);
    if (key.empty()) return std::nullopt;
    auto& cached = keys_[static_cast<size_t>(&section - sections_.data())];
    if (!cached) {
        cached.emplace();
        cached->reserve(section.end - section.header - 1);
        for (size_t i = section.header + 1; i < section.end; ++i) {
            if (lines_[i].kind == Kind::Entry && lines_[i].nameLength > 0) cached->emplace_back(TrimmedNameHash(Name(lines_[i])), static_cast<uint32_t>(i));
        }
        std::sort(cached->begin(), cached->end());
    }
    const size_t hash = TrimmedNameHash(key);
    for (auto it = std::lower_bound(cached->begin(), cached->end(), std::pair<size_t, uint32_t>(hash, 0));
         it != cached->end() && it->first == hash; ++it) {
        if (SameTrimmedName(Name(lines_[it->second]), key)) return it->second;
    }
    return std::nullopt;
}

std::optional<std::string> clsIniText::Value(std::string_view section, std::string_view key) const {
    const auto value = ValueView(section, key);
    return value ? std::optional<std::string>(std::string(*value)) : std::nullopt;
}

std::optional<std::string_view> clsIniText::ValueView(std::string_view section, std::string_view key) const {
    const auto found = FindValue(section, key);
    return found ? std::optional<std::string_view>(found->value) : std::nullopt;
}

std::optional<clsIniText::FoundValue> clsIniText::FindValue(std::string_view section, std::string_view key) const {
    const Section* block = FirstBlock(section);
    if (block == nullptr) return std::nullopt;
    const auto index = FindKey(*block, key);
    if (!index) return std::nullopt;
    return FoundValue{*index + 1, CutChars(Unquoted(Val(lines_[*index])), kMaxValueChars)};
}

std::vector<std::string> clsIniText::SectionNames() const {
    std::vector<std::string> names;
    names.reserve(sections_.size());
    for (const auto& section : sections_) {
        const auto name = Name(lines_[section.header]);
        if (!name.empty()) names.emplace_back(name);
    }
    return names;
}

std::vector<IniEntry> clsIniText::Entries(std::string_view section) const {
    std::vector<IniEntry> entries;
    const Section* block = FirstBlock(section);
    if (block == nullptr) return entries;
    for (size_t i = block->header + 1; i < block->end; ++i) {
        const Line& line = lines_[i];
        if (line.kind == Kind::Entry) entries.push_back({std::string(Name(line)), std::string(Val(line))});
        if (line.kind == Kind::Text) entries.push_back({std::string(Name(line)), std::string()});
    }
    return entries;
}

bool clsIniText::HasSection(std::string_view section) const { return FirstBlock(section) != nullptr; }

std::vector<IniLine> clsIniText::Outline() const {
    std::vector<IniLine> outline;
    outline.reserve(lines_.size());
    std::string_view section;
    bool first = true;
    size_t block = 0;
    for (size_t i = 0; i < lines_.size(); ++i) {
        const Line& line = lines_[i];
        if (line.kind == Kind::Header) {
            section = Name(line);
            while (block < sections_.size() && sections_[block].header < i) ++block;
            const auto found = Find(firstBlock_, section);
            first = found != firstBlock_.end() && found->second == block;
            outline.push_back({i + 1, true, section, {}, {}, first});
        } else if (line.kind == Kind::Entry || line.kind == Kind::Text) {
            outline.push_back({i + 1, false, section, Name(line), line.kind == Kind::Entry ? Val(line) : std::string_view(), first});
        }
    }
    return outline;
}

std::string clsIniText::EndBytes(End end) const {
    std::string_view eight;
    switch (end) {
    case End::None: return {};
    case End::CrLf: eight = "\r\n"; break;
    case End::Lf: eight = "\n"; break;
    case End::Cr: eight = "\r"; break;
    }
    if (clsTextDecoder::IsUtf16(encoding_)) {
        return clsTextDecoder::ToUtf16(eight, encoding_ == TextEncoding::Utf16Be);
    }
    return std::string(eight);
}

std::string clsIniText::EncodeText(std::string_view text) const {
    switch (encoding_) {
    case TextEncoding::Utf8: return std::string(text);
    case TextEncoding::Utf16Le:
    case TextEncoding::Utf16Be: return clsTextDecoder::ToUtf16(text, encoding_ == TextEncoding::Utf16Be);
    case TextEncoding::Ansi: break;
    }
    return AnsiBytes(text, ansiCodePage_);
}

std::string clsIniText::AnsiBytes(std::string_view text, uint32_t codePage) {
    if (clsUtf8::IsAscii(text)) return std::string(text);
    if (auto bytes = clsCodePage::FromUtf8(text, codePage)) return std::move(*bytes);
    // A code page the machine cannot convert: what is not ASCII becomes "?", as a character
    // the code page lacks does.
    std::string bytes;
    for (size_t i = 0; i < text.size();) {
        const uint32_t cp = clsUtf8::NextLenient(text, i);
        bytes += cp < 0x80 ? static_cast<char>(cp) : '?';
    }
    return bytes;
}

std::string clsIniText::AnsiText(std::string_view bytes, uint32_t codePage) {
    if (clsUtf8::IsAscii(bytes)) return std::string(bytes);
    if (auto back = clsCodePage::ToUtf8(bytes, codePage)) return std::move(*back);
    return LenientAnsi(bytes, codePage);
}

std::string clsIniText::DecodeBack(std::string_view bytes, std::string_view text) const {
    if (encoding_ != TextEncoding::Ansi) return std::string(text);
    return AnsiText(bytes, ansiCodePage_);
}

bool clsIniText::Writable(std::string_view name) const { return DecodeBack(EncodeText(name), name) == name; }

void clsIniText::PutText(Line& line, std::string_view text) {
    line.textLength = text.size();
    if (text == RawOf(line)) {
        line.text = line.raw;
        return;
    }
    line.text = store_.size();
    store_ += text;
}

void clsIniText::SetLine(Line& line, std::string_view text, std::string_view raw) {
    dropped_ += Footprint(line);
    line.raw = store_.size();
    line.rawLength = raw.size();
    store_ += raw;
    PutText(line, text);
    Classify(line, TextOf(line), TextOf(line).find('\0') != std::string_view::npos);
}

std::string clsIniText::RawPrefix(const Line& line) const {
    const std::string_view raw = RawOf(line);
    if (raw == TextOf(line)) return std::string(raw.substr(0, line.valueBegin));
    // Up to the first "=" and the blanks after it, in the file's own bytes: "=" and blanks
    // are never part of another character.
    const bool utf16 = clsTextDecoder::IsUtf16(encoding_);
    const size_t step = utf16 ? 2 : 1;
    auto unit = [&](size_t i) { return utf16 ? clsTextDecoder::UnitAt(raw, i, encoding_ == TextEncoding::Utf16Be) : static_cast<unsigned char>(raw[i]); };
    size_t i = 0;
    while (i + step <= raw.size() && unit(i) != '=') i += step;
    if (i + step <= raw.size()) i += step;
    while (i + step <= raw.size() && (unit(i) == ' ' || unit(i) == '\t')) i += step;
    return std::string(raw.substr(0, i));
}

clsIniText::Line clsIniText::MakeLine(std::string_view text) {
    Line line;
    const std::string raw = EncodeText(text);
    SetLine(line, DecodeBack(raw, text), raw);
    line.end = newLine_;
    return line;
}

void clsIniText::InsertLine(size_t at, Line line) {
    if (at > 0 && lines_[at - 1].end == End::None) lines_[at - 1].end = newLine_;
    // A lone CR before an empty LF line would read back as one CR LF, and the blank line would go.
    if (line.end == End::Cr && at < lines_.size() && lines_[at].textLength == 0 && lines_[at].end == End::Lf) {
        line.end = End::CrLf;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

std::string clsIniText::WriteRefusal(std::string_view section, std::string_view key, std::string_view value) {
    const std::string_view sectionName = Trim(section);
    const std::string_view keyName = Trim(key);
    if (sectionName.empty()) return "no section name";
    if (keyName.empty()) return "no key name";
    if (HasLineBreakOrNul(section) || HasLineBreakOrNul(key) || HasLineBreakOrNul(value))
        return "a line break or NUL in the section, key or value";
    if (keyName.find('=') != std::string_view::npos || keyName.front() == ';' || keyName.front() == '[')
        return "the key name \"" + std::string(keyName) + "\" would not read back as a key";
    auto utf8 = [](std::string_view text) { return clsUtf8::IsAscii(text) || clsCodePage::IsUtf8(text); };
    if (!utf8(section) || !utf8(key) || !utf8(value)) return "text that is not UTF-8";
    return {};
}

bool clsIniText::SetValue(std::string_view section, std::string_view key, std::string_view value, std::string& error) {
    const bool changed = ChangeValue(section, key, value, error);
    if (changed) CompactIfWasteful();
    return changed;
}

bool clsIniText::ChangeValue(std::string_view section, std::string_view key, std::string_view value, std::string& error) {
    error = WriteRefusal(section, key, value);
    if (!error.empty()) return false;
    const std::string_view sectionName = Trim(section);
    const std::string_view keyName = Trim(key);

    const Section* block = FirstBlock(sectionName);
    const auto index = block != nullptr ? FindKey(*block, keyName) : std::nullopt;
    const std::string cannot = " cannot be written in " + EncodingName(encoding_, ansiCodePage_);
    if (block == nullptr && !Writable(sectionName)) error = "the section name" + cannot;
    else if (!index && !Writable(keyName)) error = "the key name" + cannot;
    if (!error.empty()) return false;

    const std::string entry = std::string(keyName) + "=" + std::string(value);
    if (block == nullptr) {
        InsertLine(lines_.size(), MakeLine("[" + std::string(sectionName) + "]"));
        InsertLine(lines_.size(), MakeLine(entry));
        Reindex();
        return true;
    }
    if (index) {
        // Only the value changes, so the line stays an entry of the same key (it cannot start
        // with "[", which a key name may not) and the index stays valid. A character the code
        // page lacks is read back as what was written for it.
        Line& line = lines_[*index];
        const std::string valueBytes = EncodeText(value);
        const std::string raw = RawPrefix(line) + valueBytes;
        if (raw == RawOf(line)) return false;
        SetLine(line, std::string(TextOf(line).substr(0, line.valueBegin)) + DecodeBack(valueBytes, value), raw);
        return true;
    }
    size_t at = block->header + 1;
    for (size_t i = block->header + 1; i < block->end; ++i) {
        if (lines_[i].kind == Kind::Entry || lines_[i].kind == Kind::Text) at = i + 1;
    }
    InsertLine(at, MakeLine(entry));
    Reindex();
    return true;
}

bool clsIniText::RemoveKey(std::string_view section, std::string_view key) {
    const std::string sectionName = FoldName(section);
    const std::string keyName = FoldName(key);
    if (sectionName.empty() || keyName.empty()) return false;
    std::vector<bool> drop(lines_.size(), false);
    bool any = false;
    for (const auto& block : sections_) {
        if (FoldName(Name(lines_[block.header])) != sectionName) continue;
        for (size_t i = block.header + 1; i < block.end; ++i) {
            if (lines_[i].kind == Kind::Entry && FoldName(Name(lines_[i])) == keyName) any = drop[i] = true;
        }
    }
    if (any) DropLines(drop);
    return any;
}

bool clsIniText::RemoveSection(std::string_view section) {
    const std::string sectionName = FoldName(section);
    if (sectionName.empty()) return false;
    std::vector<bool> drop(lines_.size(), false);
    bool any = false;
    for (const auto& block : sections_) {
        if (FoldName(Name(lines_[block.header])) != sectionName) continue;
        std::fill(drop.begin() + static_cast<std::ptrdiff_t>(block.header), drop.begin() + static_cast<std::ptrdiff_t>(block.end), true);
        any = true;
    }
    if (any) DropLines(drop);
    return any;
}

void clsIniText::DropLines(const std::vector<bool>& drop) {
    size_t kept = 0;
    for (size_t i = 0; i < lines_.size(); ++i) {
        if (drop[i]) {
            dropped_ += Footprint(lines_[i]);
            continue;
        }
        if (kept != i) lines_[kept] = std::move(lines_[i]);
        ++kept;
    }
    lines_.resize(kept);
    Reindex();
    CompactIfWasteful();
}

size_t clsIniText::Footprint(const Line& line) { return line.rawLength + (line.text != line.raw ? line.textLength : 0); }

void clsIniText::CompactIfWasteful() {
    // A few edits leave little behind; a long run of them on one key would grow the store
    // without end.
    constexpr size_t kSlack = 64 * 1024;
    if (dropped_ <= kSlack || dropped_ <= store_.size() / 2) return;
    std::string store;
    store.reserve(store_.size() - dropped_);
    for (Line& line : lines_) {
        const size_t raw = store.size();
        store += RawOf(line);
        const size_t text = line.text == line.raw ? raw : store.size();
        if (text != raw) store += TextOf(line);
        line.raw = raw;
        line.text = text;
    }
    store_ = std::move(store);
    dropped_ = 0;
}

std::string clsIniText::Bytes() const {
    size_t size = bom_.size() + tail_.size();
    for (const auto& line : lines_) size += line.rawLength + 4;
    std::string out;
    out.reserve(size);
    out += bom_;
    const std::string ends[] = {EndBytes(End::None), EndBytes(End::CrLf), EndBytes(End::Lf), EndBytes(End::Cr)};
    for (const auto& line : lines_) {
        out += RawOf(line);
        out += ends[static_cast<size_t>(line.end)];
    }
    out += tail_;
    return out;
}

} // namespace tovel
