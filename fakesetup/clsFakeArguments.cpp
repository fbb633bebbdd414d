#include "fakesetup/clsFakeArguments.h"

#include "platform/clsWindowsCommandLine.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

// The rest of an argument after a prefix matched without regard to case; empty when it does
// not begin with it.
bool StripPrefix(const std::string& argument, const std::string& prefix, std::string& rest) {
    if (argument.size() < prefix.size() || !clsWindowsPath::EqualNoCase(argument.substr(0, prefix.size()), prefix))
        return false;
    rest = argument.substr(prefix.size());
    return true;
}

size_t FindNoCase(const std::string& text, const std::string& word, size_t from = 0) {
    const std::string folded = clsWindowsPath::FoldCase(text);
    return folded.find(clsWindowsPath::FoldCase(word), from);
}

} // namespace

clsFakeArguments::clsFakeArguments(const std::vector<std::string>& arguments, const std::string& defaultOpFile)
    : commandLine_(clsWindowsCommandLine::Join(arguments)) {
    for (const auto& argument : arguments) Read(argument);
    const std::string named = NamedOpFile(commandLine_);
    opFile_ = named.empty() ? defaultOpFile : named;
}

void clsFakeArguments::Read(const std::string& argument) {
    std::string rest;
    if (StripPrefix(argument, "/fakeini=", rest)) {
        behaviourFile_ = rest;
    } else if (StripPrefix(argument, "/fake=", rest)) {
        section_ = rest;
    } else if (clsWindowsPath::EqualNoCase(argument, "/fakechild")) {
        child_ = true;
    } else if (clsWindowsPath::EqualNoCase(argument, "-a")) {
        automatic_ = true;
    } else if (clsWindowsPath::EqualNoCase(argument, "-y")) {
        yes_ = true;
    } else if (StripPrefix(argument, "-f", rest) && !rest.empty()) {
        removeKey_ = rest;
    }
}

std::string clsFakeArguments::NamedOpFile(const std::string& parameters) {
    for (const std::string marker : {"OF:", "OPFILE="}) {
        const size_t at = FindNoCase(parameters, marker);
        if (at == std::string::npos) continue;
        const size_t start = at + marker.size();
        const size_t end = FindNoCase(parameters, "OPFILE.TXT", start);
        if (end != std::string::npos) return parameters.substr(start, end + 10 - start);
    }
    return {};
}

} // namespace tovel
