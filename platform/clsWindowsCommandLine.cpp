#include "platform/clsWindowsCommandLine.h"

namespace tovel {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

size_t SkipBlanks(std::string_view s, size_t i) {
    while (i < s.size() && IsBlank(s[i])) ++i;
    return i;
}
} // namespace

clsWindowsCommandLine::ProgramAndRest clsWindowsCommandLine::SplitProgram(std::string_view line) {
    size_t i = SkipBlanks(line, 0);
    ProgramAndRest out;
    if (i < line.size() && line[i] == '"') {
        const size_t close = line.find('"', i + 1);
        const size_t end = close == std::string_view::npos ? line.size() : close;
        out.program = std::string(line.substr(i + 1, end - i - 1));
        i = close == std::string_view::npos ? line.size() : close + 1;
    } else {
        const size_t start = i;
        while (i < line.size() && !IsBlank(line[i])) ++i;
        out.program = std::string(line.substr(start, i - start));
    }
    out.rest = std::string(line.substr(SkipBlanks(line, i)));
    return out;
}

std::vector<std::string> clsWindowsCommandLine::SplitArguments(std::string_view rest) {
    std::vector<std::string> args;
    size_t i = SkipBlanks(rest, 0);
    while (i < rest.size()) {
        std::string arg;
        bool quoted = false;
        while (i < rest.size() && (quoted || !IsBlank(rest[i]))) {
            size_t slashes = 0;
            while (i < rest.size() && rest[i] == '\\') {
                ++slashes;
                ++i;
            }
            if (i < rest.size() && rest[i] == '"') {
                arg.append(slashes / 2, '\\');
                if (slashes % 2 == 1) {
                    arg += '"';
                } else if (quoted && i + 1 < rest.size() && rest[i + 1] == '"') {
                    arg += '"';
                    ++i;
                } else {
                    quoted = !quoted;
                }
                ++i;
                continue;
            }
            arg.append(slashes, '\\');
            if (i < rest.size() && (quoted || !IsBlank(rest[i]))) arg += rest[i++];
        }
        args.push_back(std::move(arg));
        i = SkipBlanks(rest, i);
    }
    return args;
}

std::string clsWindowsCommandLine::Quote(std::string_view argument) {
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string_view::npos) return std::string(argument);
    std::string out = "\"";
    size_t slashes = 0;
    for (char c : argument) {
        if (c == '\\') {
            ++slashes;
            continue;
        }
        out.append(c == '"' ? slashes * 2 + 1 : slashes, '\\');
        slashes = 0;
        out += c;
    }
    out.append(slashes * 2, '\\');
    out += '"';
    return out;
}

std::string clsWindowsCommandLine::Join(const std::vector<std::string>& arguments) {
    std::string out;
    for (const auto& arg : arguments) {
        if (!out.empty()) out += ' ';
        out += Quote(arg);
    }
    return out;
}

} // namespace tovel
