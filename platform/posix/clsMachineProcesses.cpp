#include "platform/posix/clsMachineProcesses.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "platform/clsWindowsCommandLine.h"
#include "platform/clsWindowsPath.h"
#include "platform/posix/clsHostFile.h"

extern char** environ;

namespace tovel {

namespace {

// Windows reports a process that was killed with this code (ERROR_PROCESS_ABORTED).
constexpr uint32_t kKilledExitCode = 1067;

bool HasExtension(const std::string& path) {
    const size_t dot = path.find_last_of('.');
    const size_t slash = path.find_last_of('\\');
    return dot != std::string::npos && (slash == std::string::npos || dot > slash);
}

std::string Extension(const std::string& path) {
    return HasExtension(path) ? clsWindowsPath::FoldCase(path.substr(path.find_last_of('.'))) : std::string();
}

bool IsExecutableType(const std::string& path) {
    const std::string ext = Extension(path);
    return ext == ".EXE" || ext == ".COM" || ext == ".BAT" || ext == ".CMD";
}

std::vector<std::string> ChildEnvironment(const std::vector<std::pair<std::string, std::string>>& extra) {
    std::vector<std::string> env;
    for (char** e = environ; *e != nullptr; ++e) {
        const std::string entry = *e;
        bool replaced = false;
        for (const auto& [name, value] : extra) replaced = replaced || entry.rfind(name + "=", 0) == 0;
        if (!replaced) env.push_back(entry);
    }
    for (const auto& [name, value] : extra) env.push_back(name + "=" + value);
    return env;
}

std::vector<char*> Pointers(std::vector<std::string>& strings) {
    std::vector<char*> out;
    for (auto& s : strings) out.push_back(s.data());
    out.push_back(nullptr);
    return out;
}

} // namespace

clsMachineProcesses::clsMachineProcesses(const clsMachine& machine, clsMachineFiles& files, Options options)
    : machine_(machine), files_(files), options_(std::move(options)) {}

clsMachineProcesses::~clsMachineProcesses() {
    // Reap children that have ended; the others go on, as on Windows.
    for (auto& [pid, child] : children_) Poll(pid, child);
}

std::optional<std::string> clsMachineProcesses::HostProgram(const std::string& windowsPath) {
    if (files_.FileExists(windowsPath)) return files_.ToHost(windowsPath);
    if (!options_.selfWindowsPath.empty() && clsWindowsPath::EqualNoCase(files_.Absolute(windowsPath), options_.selfWindowsPath))
        return options_.selfHostPath;
    return std::nullopt;
}

std::string clsMachineProcesses::SearchProgram(const std::string& name) {
    auto candidates = [&](const std::string& base) {
        std::vector<std::string> out{base};
        if (!HasExtension(base)) out.push_back(base + ".exe");
        return out;
    };
    const bool hasFolder = name.find('\\') != std::string::npos || name.find('/') != std::string::npos ||
                           clsWindowsPath::DriveLetter(name) != 0;
    std::vector<std::string> folders;
    if (hasFolder) {
        folders.emplace_back();
    } else {
        // The order CreateProcess searches in.
        if (!options_.selfWindowsPath.empty())
            folders.push_back(options_.selfWindowsPath.substr(0, options_.selfWindowsPath.find_last_of('\\') + 1));
        folders.push_back(clsWindowsPath::AddBackslash(files_.CurrentFolder()));
        folders.push_back(clsWindowsPath::AddBackslash(machine_.Config().systemFolder));
        folders.push_back(clsWindowsPath::AddBackslash(machine_.Config().windowsFolder));
    }
    for (const auto& folder : folders) {
        for (const auto& candidate : candidates(folder + name)) {
            if (HostProgram(candidate)) return files_.Absolute(candidate);
        }
    }
    return {};
}

std::string clsMachineProcesses::FindProgram(const std::string& commandLine, std::string& arguments) {
    const auto split = clsWindowsCommandLine::SplitProgram(commandLine);
    std::string program = SearchProgram(split.program);
    arguments = split.rest;
    const size_t start = commandLine.find_first_not_of(" \t");
    if (!program.empty() || start == std::string::npos || commandLine[start] == '"') return program;
    // An unquoted path with blanks: CreateProcess tries each blank as the end of the program.
    for (size_t blank = commandLine.find(' ', start); blank != std::string::npos; blank = commandLine.find(' ', blank + 1)) {
        const size_t next = commandLine.find(' ', blank + 1);
        const std::string candidate = commandLine.substr(start, next == std::string::npos ? std::string::npos : next - start);
        program = SearchProgram(candidate);
        if (program.empty()) continue;
        const size_t rest = next == std::string::npos ? std::string::npos : commandLine.find_first_not_of(" \t", next);
        arguments = rest == std::string::npos ? std::string() : commandLine.substr(rest);
        return program;
    }
    return {};
}

StartResult clsMachineProcesses::Start(const std::string& commandLine, const std::string& folder) {
    std::string arguments;
    const std::string program = FindProgram(commandLine, arguments);
    const auto host = program.empty() ? std::nullopt : HostProgram(program);
    if (!host) return {std::nullopt, 2};
    const std::string workFolder = folder.empty() ? files_.CurrentFolder() : files_.Absolute(folder);
    const auto hostFolder = files_.ToHost(workFolder);
    if (!hostFolder || !files_.FolderExists(workFolder)) return {std::nullopt, 267};  // ERROR_DIRECTORY

    const std::string runFolder = machine_.Folder() + "/run";
    std::error_code ec;
    std::filesystem::create_directories(runFolder, ec);
    const std::string tag = std::to_string(getpid()) + "-" + std::to_string(counter_++);
    const std::string exitCodeFile = runFolder + "/exitcode-" + tag;
    ::unlink(exitCodeFile.c_str());

    std::vector<std::string> argv{*host};
    for (auto& a : clsWindowsCommandLine::SplitArguments(arguments)) argv.push_back(std::move(a));
    std::vector<std::string> env = ChildEnvironment({{"TOVEL_MACHINE", machine_.Folder()},
                                                     {"TOVEL_PROGRAM", program},
                                                     {"TOVEL_CURRENT_FOLDER", workFolder},
                                                     {"TOVEL_EXIT_CODE_FILE", exitCodeFile}});
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, hostFolder->c_str());
    const std::string output = runFolder + "/output-" + tag + ".txt";
    if (!options_.shareConsole) {
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        posix_spawn_file_actions_adddup2(&actions, 1, 2);
    }
    auto argvPointers = Pointers(argv);
    auto envPointers = Pointers(env);
    pid_t pid = 0;
    const int rc = posix_spawn(&pid, host->c_str(), &actions, nullptr, argvPointers.data(), envPointers.data());
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) return {std::nullopt, rc == EACCES ? 5u : 193u};  // 193: not a valid program
    const auto id = static_cast<uint32_t>(pid);
    children_[id] = Child{true, false, kStillActive, exitCodeFile};
    return {id, 0};
}

StartResult clsMachineProcesses::Open(const std::string& file, const std::string& parameters, const std::string& folder) {
    if (!files_.FileExists(file)) return {std::nullopt, 2};
    const std::string quotedFile = clsWindowsCommandLine::Quote(files_.Absolute(file));
    const std::string tail = parameters.empty() ? std::string() : " " + parameters;
    if (IsExecutableType(file)) return Start(quotedFile + tail, folder);
    const std::string program = FindAssociatedProgram(file);
    if (program.empty()) return {std::nullopt, 31};
    return Start(clsWindowsCommandLine::Quote(program) + " " + quotedFile + tail, folder);
}

std::string clsMachineProcesses::FindAssociatedProgram(const std::string& file) {
    if (!files_.FileExists(file)) return {};
    if (IsExecutableType(file)) return files_.Absolute(file);
    const std::string ext = Extension(file);
    for (const auto& [extension, program] : machine_.Config().associations) {
        if (clsWindowsPath::EqualNoCase(extension, ext)) return program;
    }
    return {};
}

bool clsMachineProcesses::Attach(uint32_t processId) {
    if (children_.count(processId) != 0) return true;
    if (::kill(static_cast<pid_t>(processId), 0) != 0 && errno != EPERM) return false;
    children_[processId] = Child{false, false, kStillActive, {}};
    return true;
}

void clsMachineProcesses::Poll(uint32_t processId, Child& child) {
    if (child.ended) return;
    const auto pid = static_cast<pid_t>(processId);
    if (!child.ownChild) {
        // Not our child: all that can be seen is whether it is still there.
        child.ended = ::kill(pid, 0) != 0 && errno == ESRCH;
        child.exitCode = child.ended ? 0 : kStillActive;
        return;
    }
    int status = 0;
    if (::waitpid(pid, &status, WNOHANG) != pid) return;
    child.ended = true;
    child.exitCode = WIFEXITED(status) ? static_cast<uint32_t>(WEXITSTATUS(status)) : kKilledExitCode;
    if (const auto text = clsHostFile::Read(child.exitCodeFile)) {
        uint32_t code = 0;
        const auto [ptr, ec] = std::from_chars(text->data(), text->data() + text->size(), code);
        if (ec == std::errc()) child.exitCode = code;
        ::unlink(child.exitCodeFile.c_str());
    }
}

std::optional<uint32_t> clsMachineProcesses::ExitCode(uint32_t processId) {
    const auto it = children_.find(processId);
    if (it == children_.end()) return std::nullopt;
    Poll(processId, it->second);
    return it->second.exitCode;
}

bool clsMachineProcesses::Wait(uint32_t processId, uint32_t timeoutMs) {
    const auto it = children_.find(processId);
    if (it == children_.end()) return false;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        Poll(processId, it->second);
        if (it->second.ended) return true;
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

void clsMachineProcesses::Release(uint32_t processId) {
    const auto it = children_.find(processId);
    if (it == children_.end()) return;
    Poll(processId, it->second);
    // A child that still runs is reaped later by the destructor's poll; forget only ended ones.
    if (it->second.ended || !it->second.ownChild) children_.erase(it);
}

} // namespace tovel
