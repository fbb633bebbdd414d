#include "platform/posix/clsMachineWindows.h"

#include <signal.h>

#include <cerrno>
#include <filesystem>
#include <sstream>

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsHostFile.h"

namespace tovel {

namespace {

bool ProcessLives(const std::string& fileName) {
    const long pid = std::strtol(fileName.c_str(), nullptr, 10);
    return pid > 0 && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM);
}

bool Matches(const std::string& pattern, const std::string& text) {
    return pattern.empty() || clsWindowsPath::MatchWildcard(pattern, text);
}

} // namespace

bool clsMachineWindows::FindTopLevelWindow(const std::string& classPattern, const std::string& titlePattern) {
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(machine_.Folder() + "/run/windows", ec)) {
        if (entry.path().extension() != ".win" || !ProcessLives(entry.path().filename().string())) continue;
        const auto text = clsHostFile::Read(entry.path().string());
        if (!text) continue;
        std::istringstream in(*text);
        std::string windowClass, title;
        std::getline(in, windowClass);
        std::getline(in, title);
        if (Matches(classPattern, windowClass) && Matches(titlePattern, title)) return true;
    }
    return false;
}

} // namespace tovel
