#include "platform/posix/clsMachineBoot.h"

#include <algorithm>
#include <limits>
#include <sstream>

#include "platform/clsCodePageConverter.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

const char* const kSessionManager = "SYSTEM\\CurrentControlSet\\Control\\Session Manager";
const char* const kRunOnce = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";

std::string Trim(const std::string& s) {
    const size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) return {};
    return s.substr(b, s.find_last_not_of(" \t\r") - b + 1);
}

std::string StripNtPrefix(std::string path) {
    if (path.rfind("\\??\\", 0) == 0) path.erase(0, 4);
    return path;
}

void Replace(clsPlatformFiles& files, const std::string& source, const std::string& target, bool replace,
             std::vector<std::string>& report) {
    if (target.empty()) {
        const bool done = files.DeleteFile(source) || files.DeleteFolder(source);
        report.push_back((done ? "deleted " : "could not delete ") + source);
        return;
    }
    if (!replace && files.FileExists(target)) {
        report.push_back("not moved " + source + ": " + target + " exists");
        return;
    }
    const bool done = files.MoveFile(source, target);
    report.push_back((done ? "moved " : "could not move ") + source + " to " + target);
}

void RunWinInit(clsMachinePlatform& platform, std::vector<std::string>& report) {
    auto& files = platform.Files();
    const std::string winInit = platform.System().WindowsFolder() + "WININIT.INI";
    const auto bytes = files.ReadFile(winInit);
    if (!bytes) return;
    const std::string text = clsCodePageConverter::ToUtf8(*bytes, platform.System().AnsiCodePage()).value_or(*bytes);
    std::istringstream in(text);
    std::string line;
    bool inRename = false;
    while (std::getline(in, line)) {
        line = Trim(line);
        if (!line.empty() && line.front() == '[') {
            inRename = clsWindowsPath::EqualNoCase(line, "[rename]");
            continue;
        }
        const size_t eq = line.find('=');
        if (!inRename || eq == std::string::npos || line[0] == ';') continue;
        const std::string target = Trim(line.substr(0, eq));
        Replace(files, Trim(line.substr(eq + 1)), clsWindowsPath::EqualNoCase(target, "NUL") ? "" : target, true, report);
    }
    const std::string backup = platform.System().WindowsFolder() + "WININIT.BAK";
    report.push_back(files.MoveFile(winInit, backup) ? "WININIT.INI done" : "could not rename WININIT.INI");
}

void RunPendingRenames(clsMachinePlatform& platform, std::vector<std::string>& report) {
    auto& registry = platform.Registry();
    const auto value = registry.QueryValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations");
    if (!value) return;
    const auto& list = value->strings;
    for (size_t i = 0; i < list.size(); i += 2) {
        std::string target = i + 1 < list.size() ? list[i + 1] : std::string();
        const bool replace = !target.empty() && target[0] == '!';
        if (replace) target.erase(0, 1);
        Replace(platform.Files(), StripNtPrefix(list[i]), StripNtPrefix(target), replace, report);
    }
    (void)registry.DeleteValue(RegRoot::LocalMachine, kSessionManager, "PendingFileRenameOperations");
}

void RunOnce(clsMachinePlatform& platform, std::vector<std::string>& report) {
    auto& registry = platform.Registry();
    auto names = registry.EnumValues(RegRoot::LocalMachine, kRunOnce).value_or(std::vector<std::string>{});
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return clsWindowsPath::FoldCase(a) < clsWindowsPath::FoldCase(b);
    });
    for (const auto& name : names) {
        const auto value = registry.QueryValue(RegRoot::LocalMachine, kRunOnce, name);
        if (!value) continue;
        const bool deleteAfter = !name.empty() && name[0] == '!';
        if (!deleteAfter) (void)registry.DeleteValue(RegRoot::LocalMachine, kRunOnce, name);
        const auto started = platform.Processes().Start(value->text, "");
        if (!started.processId) {
            report.push_back("RunOnce " + name + ": cannot start " + value->text);
        } else {
            (void)platform.Processes().Wait(*started.processId, std::numeric_limits<uint32_t>::max());
            const auto code = platform.Processes().ExitCode(*started.processId).value_or(0);
            platform.Processes().Release(*started.processId);
            report.push_back("RunOnce " + name + ": " + value->text + " (exit code " + std::to_string(code) + ")");
        }
        if (deleteAfter) (void)registry.DeleteValue(RegRoot::LocalMachine, kRunOnce, name);
    }
}

} // namespace

bool clsMachineBoot::Run(clsMachinePlatform& platform, std::vector<std::string>& report) {
    RunWinInit(platform, report);
    RunPendingRenames(platform, report);
    platform.Machine().Config().powerState = "on";
    std::string error;
    if (!platform.Machine().Save(error)) {
        report.push_back(error);
        return false;
    }
    report.push_back("machine switched on");
    RunOnce(platform, report);
    return true;
}

} // namespace tovel
