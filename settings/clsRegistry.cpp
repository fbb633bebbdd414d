#include "settings/clsRegistry.h"

#include <array>
#include <cstdint>

#include "platform/clsPlatform.h"

namespace tovel {

namespace {

struct RootName {
    std::string_view name;
    RegRoot root;
};

constexpr std::array<RootName, 3> kRoots{{
    {"HKEY_LOCAL_MACHINE", RegRoot::LocalMachine},
    {"HKEY_CURRENT_USER", RegRoot::CurrentUser},
    {"HKEY_USERS", RegRoot::Users},
}};

clsRegistry::Reporter& TheReporter() {
    static clsRegistry::Reporter reporter;
    return reporter;
}

void Report(const std::string& message) {
    if (TheReporter()) TheReporter()(message);
}

std::string_view WithoutEdgeBackslashes(std::string_view path) {
    if (!path.empty() && path.front() == '\\') path.remove_prefix(1);
    if (!path.empty() && path.back() == '\\') path.remove_suffix(1);
    return path;
}

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i) {
        if (UpperAscii(text[i]) != prefix[i]) return false;
    }
    return true;
}

struct SplitPath {
    RegRoot root;
    std::string keyPath;
};

// A root counts only as a whole component, so "HKEY_USERSX" is no root. A full path may
// carry something before its root ("Computer\HKEY_LOCAL_MACHINE\..."); the first root
// named anywhere decides, unless it must stand at the start.
std::optional<SplitPath> Split(const std::string& fullPath, bool atStartOnly) {
    const std::string_view path = WithoutEdgeBackslashes(fullPath);
    for (size_t start = 0; start <= path.size(); start = path.find('\\', start) + 1) {
        for (const auto& [name, root] : kRoots) {
            const std::string_view from = path.substr(start);
            if (!StartsWithNoCase(from, name)) continue;
            const std::string_view rest = from.substr(name.size());
            if (rest.empty()) return SplitPath{root, std::string()};
            if (rest.front() == '\\') return SplitPath{root, std::string(rest.substr(1))};
        }
        if (atStartOnly || path.find('\\', start) == std::string_view::npos) break;
    }
    return std::nullopt;
}

std::string TwoDigits(unsigned char byte) {
    std::string text = std::to_string(byte);
    return text.size() < 2 ? "0" + text : text;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && IsBlank(text[i])) ++i;
        const size_t start = i;
        while (i < text.size() && !IsBlank(text[i])) ++i;
        if (i > start) words.push_back(text.substr(start, i - start));
    }
    return words;
}

std::optional<uint64_t> Decimal(std::string_view digits, uint64_t max) {
    if (digits.empty()) return std::nullopt;
    uint64_t number = 0;
    for (char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + static_cast<uint64_t>(c - '0');
        if (number > max) return std::nullopt;
    }
    return number;
}

std::string Joined(const std::vector<std::string>& strings, char separator) {
    std::string text;
    for (size_t i = 0; i < strings.size(); ++i) {
        if (i > 0) text += separator;
        text += strings[i];
    }
    return text;
}

std::string TextOf(const clsRegValue& value) {
    switch (value.type) {
    case RegType::Sz:
    case RegType::ExpandSz: return clsRegistry::TrimNull(value.text);
    case RegType::Binary: {
        std::string text;
        for (char c : value.bytes) {
            if (!text.empty()) text += ' ';
            text += TwoDigits(static_cast<unsigned char>(c));
        }
        return text;
    }
    case RegType::Dword:
        // A DWORD of another size than four bytes arrives as raw bytes: no number to show.
        return value.bytes.empty() ? std::to_string(value.number) : std::string();
    case RegType::MultiSz: return Joined(value.strings, ',');
    default: return std::string();
    }
}

// The value a text stands for as the given type; nullopt (reported) when it cannot be one.
std::optional<clsRegValue> ValueOf(const std::string& name, const std::string& text, RegType type) {
    switch (type) {
    case RegType::Sz: return clsRegValue::String(clsRegistry::TrimNull(text));
    case RegType::ExpandSz: return clsRegValue::ExpandString(clsRegistry::TrimNull(text));
    case RegType::Dword: {
        const auto words = Words(text);
        const auto number = words.size() == 1 ? Decimal(words[0], UINT32_MAX) : std::nullopt;
        if (!number) {
            Report("Registry value " + name + ": \"" + text + "\" is no DWORD number (0 to 4294967295); not written");
            return std::nullopt;
        }
        return clsRegValue::Dword(static_cast<uint32_t>(*number));
    }
    case RegType::Binary: {
        std::string bytes;
        for (const auto word : Words(text)) {
            const auto byte = Decimal(word, 255);
            if (!byte) {
                Report("Registry value " + name + ": \"" + std::string(word) +
                       "\" is no byte (0 to 255) in the binary text; not written");
                return std::nullopt;
            }
            bytes += static_cast<char>(*byte);
        }
        return clsRegValue::Binary(std::move(bytes));
    }
    case RegType::MultiSz: {
        std::vector<std::string> strings;
        const std::string all = clsRegistry::TrimNull(text);
        size_t start = 0;
        while (start <= all.size()) {
            size_t end = all.find(',', start);
            if (end == std::string_view::npos) end = all.size();
            if (end > start) strings.emplace_back(all.substr(start, end - start));
            start = end + 1;
        }
        return clsRegValue::MultiString(std::move(strings));
    }
    default:
        Report("Registry value " + name + ": type " + std::to_string(static_cast<uint32_t>(type)) +
               " cannot be written from text; not written");
        return std::nullopt;
    }
}

} // namespace

clsRegistry::clsRegistry(RegRoot root, const std::string& keyPath) : root_(root) { SetKeyPath(keyPath); }

void clsRegistry::SetKeyPath(const std::string& keyPath) { keyPath_ = std::string(WithoutEdgeBackslashes(keyPath)); }

bool clsRegistry::InitWithRegPath(const std::string& fullPath) {
    auto split = Split(fullPath, false);
    if (!split) {
        Report("Registry path \"" + fullPath +
               "\" names none of HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER and HKEY_USERS; ignored");
        return false;
    }
    root_ = split->root;
    keyPath_ = std::move(split->keyPath);
    return true;
}

bool clsRegistry::ExistRootKeyInPath(const std::string& fullPath) { return Split(fullPath, true).has_value(); }

std::optional<RegRoot> clsRegistry::GetRootKey(const std::string& fullPath) {
    const auto split = Split(fullPath, false);
    if (!split) return std::nullopt;
    return split->root;
}

std::string clsRegistry::GetOnlyRegistryPath(const std::string& fullPath) {
    auto split = Split(fullPath, false);
    return split ? std::move(split->keyPath) : std::string();
}

bool clsRegistry::KeyExists() const { return Platform().Registry().KeyExists(root_, keyPath_); }

bool clsRegistry::ValueExist(const std::string& name) const {
    return Platform().Registry().QueryValue(root_, keyPath_, name).has_value();
}

bool clsRegistry::ExistValues() const {
    const auto names = Platform().Registry().EnumValues(root_, keyPath_);
    return names && !names->empty();
}

std::string clsRegistry::QueryValue(const std::string& name) const { return QueryValueEx(name); }

std::string clsRegistry::QueryValueEx(const std::string& name) const {
    const auto value = Platform().Registry().QueryValue(root_, keyPath_, name);
    return value ? TextOf(*value) : std::string();
}

std::string clsRegistry::GetKeyValue(const std::string& name) const { return QueryValueEx(name); }

std::vector<std::string> clsRegistry::GetMultiSZ(const std::string& name) const {
    auto value = Platform().Registry().QueryValue(root_, keyPath_, name);
    if (!value || value->type != RegType::MultiSz) return {};
    return std::move(value->strings);
}

bool clsRegistry::SetKeyValue(const std::string& name, const std::string& value, RegType type) const {
    const auto data = ValueOf(name, value, type);
    return data && Platform().Registry().SetValue(root_, keyPath_, name, *data);
}

bool clsRegistry::CreateNewKey(const std::string& path) const { return Platform().Registry().CreateKey(root_, Below(path)); }

bool clsRegistry::DeleteKey(const std::string& path) const {
    const std::string_view below = WithoutEdgeBackslashes(path);
    if (below.empty()) return false;
    return Platform().Registry().DeleteKey(root_, Below(path));
}

bool clsRegistry::DeleteKey2(const std::string& fullPath) {
    const auto split = Split(fullPath, false);
    if (!split || split->keyPath.empty()) return false;
    return Platform().Registry().DeleteKey(split->root, split->keyPath);
}

bool clsRegistry::DeleteValue(const std::string& name) const {
    return Platform().Registry().DeleteValue(root_, keyPath_, name);
}

std::vector<std::string> clsRegistry::EnumerateSubKeys() const {
    return Platform().Registry().EnumKeys(root_, keyPath_).value_or(std::vector<std::string>());
}

std::vector<std::pair<std::string, std::string>> clsRegistry::EnumerateValues() const {
    std::vector<std::pair<std::string, std::string>> values;
    const auto names = Platform().Registry().EnumValues(root_, keyPath_);
    if (!names) return values;
    for (const auto& name : *names) values.emplace_back(name, QueryValueEx(name));
    return values;
}

std::string clsRegistry::TrimNull(std::string_view text) {
    return std::string(text.substr(0, text.find('\0')));
}

void clsRegistry::SetReporter(Reporter reporter) { TheReporter() = std::move(reporter); }

std::string clsRegistry::Below(const std::string& path) const {
    const std::string_view below = WithoutEdgeBackslashes(path);
    if (below.empty()) return keyPath_;
    if (keyPath_.empty()) return std::string(below);
    return keyPath_ + "\\" + std::string(below);
}

} // namespace tovel
