// registry.reg is REGEDIT4 text, written as UTF-8 without a BOM: the machine is a host
// folder, read and edited with host editors, and UTF-8 carries every name a real registry can
// hold. hex(1), hex(2) and hex(7) data are the bytes of their text in the file's encoding,
// followed by the NUL terminators Windows stores.
// A file that is not valid UTF-8 is taken to be a REGEDIT4 export of a real Windows, which
// is in the machine's ANSI code page; its lines and its string data are converted from it.
// String data that is not UTF-8 in an otherwise UTF-8 file (an all-ASCII export whose
// hex(2) data hold ANSI bytes) is converted from the ANSI code page as well.
#include "platform/posix/clsRegistryHive.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/clsCodePageConverter.h"
#include "platform/clsUtf8.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

constexpr RegRoot kRoots[] = {RegRoot::LocalMachine, RegRoot::CurrentUser, RegRoot::Users};
// Windows limits, in UTF-16 units.
constexpr size_t kMaxKeyName = 255;
constexpr size_t kMaxValueName = 16383;
// regedit wraps hex data once a line reaches this many characters.
constexpr size_t kHexWrapColumn = 76;

size_t RootIndex(RegRoot root) {
    switch (root) {
    case RegRoot::LocalMachine: return 0;
    case RegRoot::CurrentUser: return 1;
    case RegRoot::Users: return 2;
    }
    return 0;
}

size_t Utf16Length(std::string_view utf8) {
    size_t units = 0;
    for (const char c : utf8) {
        const auto b = static_cast<unsigned char>(c);
        if ((b & 0xC0) != 0x80) units += b >= 0xF0 ? 2 : 1;
    }
    return units;
}

bool HasLineBreakOrNul(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

std::string_view TrimLeft(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    return s;
}

std::string_view TrimRight(std::string_view s) {
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// 1 to 8 hex digits.
std::optional<uint32_t> ParseHex32(std::string_view digits) {
    if (digits.empty() || digits.size() > 8) return std::nullopt;
    uint32_t n = 0;
    for (const char c : digits) {
        const int d = HexDigit(c);
        if (d < 0) return std::nullopt;
        n = (n << 4) | static_cast<uint32_t>(d);
    }
    return n;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i) {
        char c = text[i];
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c != prefix[i]) return false;
    }
    return true;
}

// A piece of a bad line for an error message.
std::string Quote(std::string_view text) {
    constexpr size_t kMax = 40;
    std::string out = "\"";
    out += text.substr(0, kMax);
    if (text.size() > kMax) out += "...";
    out += "\"";
    return out;
}

std::string Escape(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 2);
    for (const char c : text) {
        if (c == '\\' || c == '"') out += '\\';
        out += c;
    }
    return out;
}

void AppendHex(std::string& out, std::string_view prefix, uint32_t type, std::string_view bytes) {
    static const char kDigits[] = "0123456789abcdef";
    std::string line(prefix);
    if (type == static_cast<uint32_t>(RegType::Binary)) {
        line += "hex:";
    } else {
        char tag[16];
        std::snprintf(tag, sizeof tag, "hex(%x):", type);
        line += tag;
    }
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        line += kDigits[b >> 4];
        line += kDigits[b & 0xF];
        if (i + 1 == bytes.size()) break;
        line += ',';
        if (line.size() >= kHexWrapColumn) {
            out += line;
            out += "\\\r\n";
            line = "  ";
        }
    }
    out += line;
    out += "\r\n";
}

void AppendValue(std::string& out, const RegistryValueEntry& entry) {
    const std::string prefix = entry.name.empty() ? std::string("@=") : "\"" + Escape(entry.name) + "\"=";
    const clsRegValue& v = entry.value;
    switch (v.type) {
    case RegType::Sz:
        // A "..." string cannot carry line breaks or NULs, and must not make the file non-UTF-8.
        if (!HasLineBreakOrNul(v.text) && clsUtf8::IsValid(v.text)) {
            out += prefix + "\"" + Escape(v.text) + "\"\r\n";
        } else {
            AppendHex(out, prefix, 1, v.text + '\0');
        }
        return;
    case RegType::ExpandSz:
        AppendHex(out, prefix, 2, v.text + '\0');
        return;
    case RegType::MultiSz: {
        std::string data;
        for (const std::string& s : v.strings) {
            data += s;
            data += '\0';
        }
        data += '\0';
        AppendHex(out, prefix, 7, data);
        return;
    }
    case RegType::Dword:
        if (v.bytes.empty()) {
            char number[16];
            std::snprintf(number, sizeof number, "%08x", v.number);
            out += prefix + "dword:" + number + "\r\n";
        } else {
            AppendHex(out, prefix, 4, v.bytes);
        }
        return;
    default:
        AppendHex(out, prefix, static_cast<uint32_t>(v.type), v.bytes);
        return;
    }
}

void AppendTree(std::string& out, const std::string& path, const clsRegistryKey& key) {
    out += "[" + path + "]\r\n";
    for (const RegistryValueEntry& entry : key.Values()) AppendValue(out, entry);
    out += "\r\n";
    for (const clsRegistryKey& sub : key.Subkeys()) AppendTree(out, path + "\\" + sub.Name(), sub);
}

bool IsValidKeyName(std::string_view name) {
    return !name.empty() && clsUtf8::IsValid(name) && !HasLineBreakOrNul(name) &&
           Utf16Length(name) <= kMaxKeyName;
}

// One pass over the lines of a registry file.
class Reader {
public:
    Reader(const std::string& fileName, uint32_t ansiCodePage, std::string& error)
        : fileName_(fileName), codePage_(ansiCodePage), error_(error) {}

    bool Run(std::string_view content, clsRegistryHive& hive) {
        const auto byte = [&](size_t i) { return static_cast<unsigned char>(content[i]); };
        if (content.size() >= 2 && ((byte(0) == 0xFF && byte(1) == 0xFE) || (byte(0) == 0xFE && byte(1) == 0xFF) ||
                                    byte(1) == 0)) {
            return Fail(1, "a UTF-16 file (\"Windows Registry Editor Version 5.00\"); the registry file must be "
                           "REGEDIT4 text");
        }
        if (content.size() >= 3 && byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) content.remove_prefix(3);
        utf8_ = clsUtf8::IsValid(content);
        if (!utf8_ && !clsCodePageConverter::ToUtf8("", codePage_)) {
            return Fail(1, "the file is not UTF-8 and its code page " + std::to_string(codePage_) + " is unknown");
        }
        if (!SplitLines(content)) return false;

        if (lines_.empty() || TrimRight(lines_[0]).empty()) {
            return Fail(1, "missing REGEDIT4 header (empty first line)");
        }
        const std::string_view header = TrimRight(lines_[0]);
        if (header != "REGEDIT4") {
            if (StartsWithNoCase(header, "windows registry editor")) {
                return Fail(1, Quote(header) + " files are not read here; the registry file must be REGEDIT4");
            }
            return Fail(1, "missing REGEDIT4 header (found " + Quote(header) + ")");
        }
        for (size_t i = 1; i < lines_.size(); ++i) {
            const std::string_view text = TrimLeft(lines_[i]);
            if (TrimRight(text).empty() || text.front() == ';') continue;
            if (text.front() == '[') {
                if (!KeyLine(text, i + 1, hive)) return false;
            } else if (text.front() == '@' || text.front() == '"') {
                if (!ValueLine(i)) return false;
            } else {
                return Fail(i + 1, "unrecognised line " + Quote(text));
            }
        }
        return true;
    }

private:
    bool Fail(size_t line, const std::string& what) {
        error_ = fileName_ + ":" + std::to_string(line) + ": " + what;
        return false;
    }

    bool SplitLines(std::string_view content) {
        size_t start = 0;
        while (start < content.size()) {
            size_t end = content.find('\n', start);
            if (end == std::string_view::npos) end = content.size();
            std::string_view line = content.substr(start, end - start);
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            if (utf8_) {
                lines_.emplace_back(line);
            } else {
                std::optional<std::string> converted = clsCodePageConverter::ToUtf8(line, codePage_);
                if (!converted) {
                    return Fail(lines_.size() + 1,
                                "the file is not UTF-8 and this line is not valid in code page " +
                                    std::to_string(codePage_));
                }
                lines_.push_back(std::move(*converted));
            }
            start = end + 1;
        }
        return true;
    }

    bool KeyLine(std::string_view text, size_t lineNo, clsRegistryHive& hive) {
        const size_t close = text.rfind(']');
        if (close == std::string_view::npos || !TrimRight(text.substr(close + 1)).empty()) {
            return Fail(lineNo, "key line without closing ]: " + Quote(text));
        }
        const std::string_view path = text.substr(1, close - 1);
        if (!path.empty() && path.front() == '-') {
            return Fail(lineNo, "deleting a key ([-...]) is not supported in the registry file");
        }
        const size_t slash = path.find('\\');
        const std::string_view rootName = path.substr(0, slash);
        const RegRoot* root = nullptr;
        for (const RegRoot& r : kRoots) {
            if (clsWindowsPath::EqualNoCase(rootName, clsRegistryHive::RootName(r))) root = &r;
        }
        if (root == nullptr) {
            return Fail(lineNo, "unknown root " + Quote(rootName) +
                                    " (expected HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or HKEY_USERS)");
        }
        std::vector<std::string> names;
        if (slash != std::string_view::npos) {
            const std::string_view below = path.substr(slash + 1);
            std::optional<std::vector<std::string>> split = clsRegistryHive::SplitPath(below);
            if (below.empty() || !split) {
                return Fail(lineNo, "bad key name " + Quote(path) + " (an empty or over-long name)");
            }
            names = std::move(*split);
        }
        current_ = &hive.Create(*root, names);
        return true;
    }

    // Reads "..." at the start of rest (with \\ and \" escapes) and moves rest past it.
    bool QuotedString(std::string_view& rest, std::string& out, size_t lineNo) {
        out.clear();
        for (size_t i = 1; i < rest.size(); ++i) {
            const char c = rest[i];
            if (c == '"') {
                rest.remove_prefix(i + 1);
                return true;
            }
            if (c == '\\') {
                if (i + 1 == rest.size()) break;
                const char next = rest[++i];
                if (next != '\\' && next != '"') {
                    return Fail(lineNo, std::string("unknown escape \\") + next +
                                            " in a string (write \\\\ for a backslash)");
                }
                out += next;
            } else {
                out += c;
            }
        }
        return Fail(lineNo, "unterminated string (missing closing \")");
    }

    // Comma-separated bytes; a line ending in "\" continues on the next. index moves to the
    // last line read.
    bool HexBytes(std::string_view rest, size_t& index, std::string& bytes) {
        for (;;) {
            const size_t lineNo = index + 1;
            std::string_view segment = TrimRight(rest);
            const bool more = !segment.empty() && segment.back() == '\\';
            if (more) segment.remove_suffix(1);
            size_t pos = 0;
            for (;;) {
                const size_t comma = segment.find(',', pos);
                const std::string_view token =
                    TrimRight(TrimLeft(segment.substr(pos, comma == std::string_view::npos ? std::string_view::npos
                                                                                             : comma - pos)));
                if (token.empty()) {
                    if (comma == std::string_view::npos) break;
                    return Fail(lineNo, "empty hex byte (two commas in a row)");
                }
                const int high = HexDigit(token[0]);
                const int low = token.size() == 2 ? HexDigit(token[1]) : 0;
                if (token.size() > 2 || high < 0 || low < 0) return Fail(lineNo, "bad hex byte " + Quote(token));
                bytes += static_cast<char>(token.size() == 2 ? high * 16 + low : high);
                if (comma == std::string_view::npos) break;
                pos = comma + 1;
            }
            if (!more) return true;
            if (index + 1 >= lines_.size()) return Fail(lineNo, "hex data continues (\\) past the end of the file");
            rest = TrimLeft(lines_[++index]);
        }
    }

    std::optional<std::string> DecodeText(const std::string& bytes) const {
        if (utf8_ && clsUtf8::IsValid(bytes)) return bytes;
        return clsCodePageConverter::ToUtf8(bytes, codePage_);
    }

    bool ValueFromBytes(uint32_t type, std::string bytes, size_t lineNo, clsRegValue& value) {
        const auto is = [type](RegType t) { return type == static_cast<uint32_t>(t); };
        const bool isText = is(RegType::Sz) || is(RegType::ExpandSz) || is(RegType::MultiSz);
        if (isText) {
            if (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();
            std::optional<std::string> text = DecodeText(bytes);
            if (!text) {
                return Fail(lineNo, "string data is neither UTF-8 nor valid in code page " + std::to_string(codePage_));
            }
            if (is(RegType::Sz)) {
                value = clsRegValue::String(std::move(*text));
            } else if (is(RegType::ExpandSz)) {
                value = clsRegValue::ExpandString(std::move(*text));
            } else {
                std::vector<std::string> strings;
                size_t start = 0;
                while (start < text->size()) {
                    const size_t nul = text->find('\0', start);
                    if (nul == std::string::npos) {
                        strings.push_back(text->substr(start));
                        break;
                    }
                    strings.push_back(text->substr(start, nul - start));
                    start = nul + 1;
                }
                value = clsRegValue::MultiString(std::move(strings));
            }
            return true;
        }
        value = clsRegistryHive::Canonical(clsRegValue::Raw(type, std::move(bytes)));
        return true;
    }

    bool ValueLine(size_t& index) {
        const size_t lineNo = index + 1;
        std::string_view rest = TrimLeft(lines_[index]);
        if (current_ == nullptr) return Fail(lineNo, "a value before the first [key] line");
        std::string name;
        if (rest.front() == '@') {
            rest.remove_prefix(1);
        } else if (!QuotedString(rest, name, lineNo)) {
            return false;
        }
        if (!clsRegistryHive::IsValidValueName(name)) return Fail(lineNo, "bad value name " + Quote(name));
        rest = TrimLeft(rest);
        if (rest.empty() || rest.front() != '=') return Fail(lineNo, "expected = after the value name");
        rest = TrimLeft(rest.substr(1));

        clsRegValue value;
        if (!rest.empty() && rest.front() == '"') {
            std::string text;
            if (!QuotedString(rest, text, lineNo)) return false;
            if (!TrimRight(rest).empty()) return Fail(lineNo, "text after the closing quote: " + Quote(rest));
            value = clsRegValue::String(std::move(text));
        } else if (StartsWithNoCase(rest, "dword:")) {
            const std::string_view digits = TrimRight(rest.substr(6));
            const std::optional<uint32_t> number = ParseHex32(digits);
            if (!number) return Fail(lineNo, "bad dword " + Quote(digits) + " (expected up to 8 hex digits)");
            value = clsRegValue::Dword(*number);
        } else if (StartsWithNoCase(rest, "hex")) {
            rest.remove_prefix(3);
            uint32_t type = static_cast<uint32_t>(RegType::Binary);
            if (!rest.empty() && rest.front() == '(') {
                const size_t close = rest.find(')');
                const std::optional<uint32_t> parsed =
                    close == std::string_view::npos ? std::nullopt : ParseHex32(rest.substr(1, close - 1));
                if (!parsed) return Fail(lineNo, "bad hex type " + Quote(rest));
                type = *parsed;
                rest.remove_prefix(close + 1);
            }
            if (rest.empty() || rest.front() != ':') return Fail(lineNo, "expected : after hex");
            std::string bytes;
            if (!HexBytes(rest.substr(1), index, bytes)) return false;
            if (!ValueFromBytes(type, std::move(bytes), lineNo, value)) return false;
        } else if (TrimRight(rest) == "-") {
            return Fail(lineNo, "deleting a value (=-) is not supported in the registry file");
        } else {
            return Fail(lineNo, "bad value data " + Quote(rest));
        }
        current_->SetValue(name, std::move(value));
        return true;
    }

    const std::string& fileName_;
    uint32_t codePage_;
    std::string& error_;
    bool utf8_ = true;
    std::vector<std::string> lines_;
    clsRegistryKey* current_ = nullptr;  // valid until the next key line adds keys
};

} // namespace

// --- clsRegistryKey ---

clsRegistryKey::clsRegistryKey(std::string name)
    : name_(std::move(name)), folded_(clsWindowsPath::FoldCase(name_)) {}

const clsRegistryKey* clsRegistryKey::FindSubkey(std::string_view name) const {
    const std::string folded = clsWindowsPath::FoldCase(name);
    const auto it = std::lower_bound(subkeys_.begin(), subkeys_.end(), folded,
                                     [](const clsRegistryKey& k, const std::string& f) { return k.folded_ < f; });
    return it != subkeys_.end() && it->folded_ == folded ? &*it : nullptr;
}

clsRegistryKey* clsRegistryKey::FindSubkey(std::string_view name) {
    return const_cast<clsRegistryKey*>(std::as_const(*this).FindSubkey(name));
}

clsRegistryKey& clsRegistryKey::CreateSubkey(const std::string& name) {
    clsRegistryKey key(name);
    const auto it = std::lower_bound(subkeys_.begin(), subkeys_.end(), key.folded_,
                                     [](const clsRegistryKey& k, const std::string& f) { return k.folded_ < f; });
    if (it != subkeys_.end() && it->folded_ == key.folded_) return *it;
    return *subkeys_.insert(it, std::move(key));
}

bool clsRegistryKey::DeleteSubkey(std::string_view name) {
    const clsRegistryKey* key = FindSubkey(name);
    if (key == nullptr || !key->subkeys_.empty()) return false;
    subkeys_.erase(subkeys_.begin() + (key - subkeys_.data()));
    return true;
}

const clsRegValue* clsRegistryKey::FindValue(std::string_view name) const {
    const std::string folded = clsWindowsPath::FoldCase(name);
    for (const RegistryValueEntry& entry : values_) {
        if (entry.folded == folded) return &entry.value;
    }
    return nullptr;
}

void clsRegistryKey::SetValue(const std::string& name, clsRegValue value) {
    std::string folded = clsWindowsPath::FoldCase(name);
    for (RegistryValueEntry& entry : values_) {
        if (entry.folded == folded) {
            entry.value = std::move(value);
            return;
        }
    }
    values_.push_back({name, std::move(folded), std::move(value)});
}

bool clsRegistryKey::DeleteValue(std::string_view name) {
    const std::string folded = clsWindowsPath::FoldCase(name);
    const auto it = std::find_if(values_.begin(), values_.end(),
                                 [&](const RegistryValueEntry& entry) { return entry.folded == folded; });
    if (it == values_.end()) return false;
    values_.erase(it);
    return true;
}

// --- clsRegistryHive ---

const char* clsRegistryHive::RootName(RegRoot root) {
    switch (root) {
    case RegRoot::LocalMachine: return "HKEY_LOCAL_MACHINE";
    case RegRoot::CurrentUser: return "HKEY_CURRENT_USER";
    case RegRoot::Users: return "HKEY_USERS";
    }
    return "HKEY_LOCAL_MACHINE";
}

std::optional<std::vector<std::string>> clsRegistryHive::SplitPath(std::string_view path) {
    std::vector<std::string> names;
    if (path.empty()) return names;
    size_t start = 0;
    for (;;) {
        const size_t slash = path.find('\\', start);
        const std::string_view name = path.substr(start, slash == std::string_view::npos ? slash : slash - start);
        if (!IsValidKeyName(name)) return std::nullopt;
        names.emplace_back(name);
        if (slash == std::string_view::npos) return names;
        start = slash + 1;
    }
}

bool clsRegistryHive::IsValidValueName(std::string_view name) {
    return clsUtf8::IsValid(name) && !HasLineBreakOrNul(name) && Utf16Length(name) <= kMaxValueName;
}


clsRegValue clsRegistryHive::Canonical(const clsRegValue& value) {
    switch (value.type) {
    case RegType::Sz: return clsRegValue::String(value.text);
    case RegType::ExpandSz: return clsRegValue::ExpandString(value.text);
    case RegType::MultiSz: return clsRegValue::MultiString(value.strings);
    case RegType::Dword:
        if (value.bytes.empty()) return clsRegValue::Dword(value.number);
        if (value.bytes.size() == 4) {
            uint32_t n = 0;
            for (size_t i = 4; i-- > 0;) n = (n << 8) | static_cast<unsigned char>(value.bytes[i]);
            return clsRegValue::Dword(n);
        }
        return clsRegValue::Raw(static_cast<uint32_t>(RegType::Dword), value.bytes);
    default: return clsRegValue::Raw(static_cast<uint32_t>(value.type), value.bytes);
    }
}

clsRegistryKey& clsRegistryHive::Root(RegRoot root) {
    return roots_[RootIndex(root)];
}

const clsRegistryKey& clsRegistryHive::Root(RegRoot root) const {
    return roots_[RootIndex(root)];
}

const clsRegistryKey* clsRegistryHive::Find(RegRoot root, const std::vector<std::string>& path) const {
    const clsRegistryKey* key = &Root(root);
    for (const std::string& name : path) {
        key = key->FindSubkey(name);
        if (key == nullptr) return nullptr;
    }
    return key;
}

clsRegistryKey* clsRegistryHive::Find(RegRoot root, const std::vector<std::string>& path) {
    return const_cast<clsRegistryKey*>(std::as_const(*this).Find(root, path));
}

clsRegistryKey& clsRegistryHive::Create(RegRoot root, const std::vector<std::string>& path) {
    clsRegistryKey* key = &Root(root);
    for (const std::string& name : path) key = &key->CreateSubkey(name);
    return *key;
}

bool clsRegistryHive::Parse(std::string_view content, const std::string& fileName, uint32_t ansiCodePage,
                            std::string& error) {
    clsRegistryHive parsed;
    Reader reader(fileName, ansiCodePage, error);
    if (!reader.Run(content, parsed)) return false;
    *this = std::move(parsed);
    return true;
}

std::string clsRegistryHive::Serialize() const {
    std::string out = "REGEDIT4\r\n\r\n";
    for (const RegRoot root : kRoots) {
        const clsRegistryKey& key = Root(root);
        const std::string path = RootName(root);
        // A root is always there; its line is written only to carry its values.
        if (!key.Values().empty()) {
            out += "[" + path + "]\r\n";
            for (const RegistryValueEntry& entry : key.Values()) AppendValue(out, entry);
            out += "\r\n";
        }
        for (const clsRegistryKey& sub : key.Subkeys()) AppendTree(out, path + "\\" + sub.Name(), sub);
    }
    return out;
}

} // namespace tovel
