#include "platform/clsWindowsPath.h"

#include <algorithm>
#include <cstdint>

#include "platform/clsUtf8.h"

namespace tovel {

namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::vector<std::string> SplitComponents(std::string_view rest) {
    std::vector<std::string> out;
    std::string current;
    for (char c : rest) {
        if (IsSeparator(c)) {
            if (!current.empty()) out.push_back(std::move(current));
            current.clear();
            continue;
        }
        current += c;
    }
    if (!current.empty()) out.push_back(std::move(current));
    return out;
}

void Append(std::vector<std::string>& into, const std::vector<std::string>& names) {
    for (const auto& name : names) {
        if (name == ".") continue;
        if (name == "..") {
            if (!into.empty()) into.pop_back();
            continue;
        }
        into.push_back(name);
    }
}

// Splits "\\server\share\rest" or "X:\rest" into root and rest; "" root for relative paths.
std::pair<std::string, std::string_view> SplitRoot(std::string_view path) {
    if (clsWindowsPath::IsUnc(path)) {
        auto names = SplitComponents(path.substr(2));
        if (names.size() < 2) return {"\\\\" + (names.empty() ? std::string() : names[0]) + "\\", {}};
        std::string root = "\\\\" + names[0] + "\\" + names[1] + "\\";
        size_t seen = 0, i = 2;
        for (; i < path.size() && seen < 2; ++i) {
            if (IsSeparator(path[i]) && !IsSeparator(path[i - 1])) ++seen;
        }
        return {root, seen < 2 ? std::string_view() : path.substr(i)};
    }
    const char drive = clsWindowsPath::DriveLetter(path);
    if (drive != 0) return {std::string(1, drive) + ":\\", path.substr(2)};
    return {"", path};
}

uint32_t UpperOne(uint32_t cp) {
    if (cp >= 'a' && cp <= 'z') return cp - 0x20;
    if (cp >= 0xE0 && cp <= 0xFE && cp != 0xF7) return cp - 0x20;
    if (cp == 0xFF) return 0x178;
    if (cp >= 0x100 && cp <= 0x17F && cp != 0x130 && cp != 0x131 && cp != 0x138 && cp != 0x149) {
        const bool oddPairs = (cp >= 0x139 && cp <= 0x148) || (cp >= 0x179 && cp <= 0x17E);
        if (oddPairs) return (cp % 2 == 0) ? cp - 1 : cp;
        return (cp % 2 == 1) ? cp - 1 : cp;
    }
    if (cp >= 0x3B1 && cp <= 0x3C9 && cp != 0x3C2) return cp - 0x20;
    if (cp >= 0x430 && cp <= 0x44F) return cp - 0x20;
    if (cp >= 0x450 && cp <= 0x45F) return cp - 0x50;
    if (cp >= 0xFF41 && cp <= 0xFF5A) return cp - 0x20;  // full-width Latin, as in Japanese names
    return cp;
}

bool MatchFrom(const std::vector<uint32_t>& p, size_t pi, const std::vector<uint32_t>& t, size_t ti) {
    // Iterative wildcard match with one backtrack point, linear in practice.
    size_t starP = std::string::npos, starT = 0;
    while (ti < t.size()) {
        if (pi < p.size() && (p[pi] == '?' || p[pi] == t[ti])) {
            ++pi;
            ++ti;
        } else if (pi < p.size() && p[pi] == '*') {
            starP = pi++;
            starT = ti;
        } else if (starP != std::string::npos) {
            pi = starP + 1;
            ti = ++starT;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi] == '*') ++pi;
    return pi == p.size();
}

std::vector<uint32_t> FoldedCodePoints(std::string_view s) {
    std::vector<uint32_t> out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) out.push_back(UpperOne(clsUtf8::NextLenient(s, i)));
    return out;
}

} // namespace

char clsWindowsPath::DriveLetter(std::string_view path) {
    if (path.size() < 2 || path[1] != ':') return 0;
    const char c = path[0];
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    if (c >= 'A' && c <= 'Z') return c;
    return 0;
}

bool clsWindowsPath::IsUnc(std::string_view path) {
    return path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1]);
}

WindowsPathParts clsWindowsPath::ResolveWith(std::string_view path, const std::string& currentBase) {
    auto [root, rest] = SplitRoot(path);
    WindowsPathParts parts;
    const bool fromRoot = !rest.empty() && IsSeparator(rest[0]);
    if (root.empty() || (DriveLetter(path) != 0 && !fromRoot)) {
        // Relative to the current folder (of the named drive for "X:name").
        auto [baseRoot, baseRest] = SplitRoot(currentBase);
        parts.root = baseRoot;
        if (!(root.empty() && fromRoot)) Append(parts.components, SplitComponents(baseRest));
    } else {
        parts.root = root;
    }
    Append(parts.components, SplitComponents(rest));
    return parts;
}

std::string clsWindowsPath::Join(const WindowsPathParts& parts) {
    std::string out = parts.root;
    for (size_t i = 0; i < parts.components.size(); ++i) {
        if (i > 0) out += '\\';
        out += parts.components[i];
    }
    return out;
}

std::string clsWindowsPath::AddBackslash(std::string path) {
    if (path.empty() || path.back() != '\\') path += '\\';
    return path;
}

std::string clsWindowsPath::FoldCase(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) clsUtf8::Append(UpperOne(clsUtf8::NextLenient(text, i)), out);
    return out;
}

bool clsWindowsPath::EqualNoCase(std::string_view a, std::string_view b) {
    // ASCII folds letter by letter; only other text needs its folded copies.
    if (clsUtf8::IsAscii(a) && clsUtf8::IsAscii(b)) {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
                   return UpperOne(static_cast<unsigned char>(x)) == UpperOne(static_cast<unsigned char>(y));
               });
    }
    return FoldCase(a) == FoldCase(b);
}

bool clsWindowsPath::MatchWildcard(std::string_view pattern, std::string_view text) {
    return MatchFrom(FoldedCodePoints(pattern), 0, FoldedCodePoints(text), 0);
}

} // namespace tovel
