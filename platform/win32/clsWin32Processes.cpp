#include "platform/win32/clsWin32Processes.h"

#include "platform/win32/Win32Headers.h"

#include <objbase.h>
#include <shellapi.h>

#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

// Vista and later: enough to wait and read the exit code, also for an elevated process.
constexpr DWORD kQueryLimitedInformation = 0x1000;

// ShellExecuteEx reports through the last error or through hInstApp (the old SE_ERR_
// numbers); callers know three outcomes: not found, access denied, no association.
uint32_t ShellError(DWORD lastError, INT_PTR instApp) {
    switch (lastError) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME: return ERROR_FILE_NOT_FOUND;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: return ERROR_ACCESS_DENIED;
    case ERROR_NO_ASSOCIATION: return SE_ERR_NOASSOC;
    default: break;
    }
    switch (instApp) {
    case SE_ERR_FNF:
    case SE_ERR_PNF: return ERROR_FILE_NOT_FOUND;
    case SE_ERR_ACCESSDENIED:
    case SE_ERR_SHARE: return ERROR_ACCESS_DENIED;
    case SE_ERR_NOASSOC:
    case SE_ERR_ASSOCINCOMPLETE: return SE_ERR_NOASSOC;
    default: break;
    }
    return lastError != 0 ? lastError : static_cast<uint32_t>(instApp > 0 && instApp <= 32 ? instApp : ERROR_GEN_FAILURE);
}

// ShellExecuteEx may hand the file to a shell extension, which needs COM on this thread.
class ComForThisCall {
public:
    ComForThisCall() : initialised_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ~ComForThisCall() {
        if (initialised_) CoUninitialize();
    }
    ComForThisCall(const ComForThisCall&) = delete;
    ComForThisCall& operator=(const ComForThisCall&) = delete;

private:
    bool initialised_;
};

} // namespace

clsWin32Processes::~clsWin32Processes() {
    for (auto& [id, handle] : handles_) CloseHandle(handle);
}

void clsWin32Processes::Keep(uint32_t processId, void* handle) {
    std::lock_guard lock(mutex_);
    auto [it, inserted] = handles_.emplace(processId, handle);
    if (!inserted) CloseHandle(handle);
}

void* clsWin32Processes::Borrow(uint32_t processId) {
    std::lock_guard lock(mutex_);
    const auto it = handles_.find(processId);
    if (it == handles_.end()) return nullptr;
    HANDLE copy = nullptr;
    if (!DuplicateHandle(GetCurrentProcess(), it->second, GetCurrentProcess(), &copy, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        return nullptr;
    }
    return copy;
}

StartResult clsWin32Processes::Start(const std::string& commandLine, const std::string& folder) {
    StartResult result;
    auto line = clsWin32Text::ToWide(commandLine);
    const auto where = clsWin32Text::ToWide(folder);
    if (!line || !where || line->empty()) {
        result.error = ERROR_INVALID_PARAMETER;
        return result;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    // CreateProcessW may write into the command line, so it gets its own copy.
    line->push_back(L'\0');
    if (!CreateProcessW(nullptr, line->data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr,
                        where->empty() ? nullptr : where->c_str(), &startup, &info)) {
        result.error = GetLastError();
        return result;
    }
    CloseHandle(info.hThread);
    if (info.hProcess == nullptr) {
        // Wine starts Unix programs this way: the program runs, but there is nothing to follow.
        result.error = ERROR_INVALID_HANDLE;
        return result;
    }
    Keep(info.dwProcessId, info.hProcess);
    result.processId = info.dwProcessId;
    return result;
}

StartResult clsWin32Processes::Open(const std::string& file, const std::string& parameters, const std::string& folder) {
    StartResult result;
    const auto wideFile = clsWin32Text::ToWide(file);
    const auto wideParameters = clsWin32Text::ToWide(parameters);
    const auto wideFolder = clsWin32Text::ToWide(folder);
    if (!wideFile || !wideParameters || !wideFolder || wideFile->empty()) {
        result.error = ERROR_FILE_NOT_FOUND;
        return result;
    }
    ComForThisCall com;
    SHELLEXECUTEINFOW info{};
    info.cbSize = sizeof info;
    // No message boxes of the shell: the setup reports failures itself.
    info.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    info.lpVerb = L"open";
    info.lpFile = wideFile->c_str();
    info.lpParameters = wideParameters->empty() ? nullptr : wideParameters->c_str();
    info.lpDirectory = wideFolder->empty() ? nullptr : wideFolder->c_str();
    info.nShow = SW_SHOWNORMAL;
    SetLastError(0);
    if (!ShellExecuteExW(&info)) {
        result.error = ShellError(GetLastError(), reinterpret_cast<INT_PTR>(info.hInstApp));
        return result;
    }
    if (info.hProcess == nullptr) {
        // Handed to a program that was already running (DDE): it opened the file, but no
        // new process can be followed.
        return result;
    }
    const DWORD id = GetProcessId(info.hProcess);
    if (id == 0) {
        result.error = GetLastError();
        CloseHandle(info.hProcess);
        return result;
    }
    Keep(id, info.hProcess);
    result.processId = id;
    return result;
}

std::string clsWin32Processes::FindAssociatedProgram(const std::string& file) {
    const auto wide = clsWin32Text::ToWide(file);
    if (!wide || wide->empty()) return {};
    wchar_t program[MAX_PATH + 1] = {};
    const auto rc = reinterpret_cast<INT_PTR>(FindExecutableW(wide->c_str(), nullptr, program));
    if (rc <= 32) return {};
    return clsWin32Text::ToUtf8(program);
}

bool clsWin32Processes::Attach(uint32_t processId) {
    {
        std::lock_guard lock(mutex_);
        if (handles_.count(processId) != 0) return true;
    }
    if (processId == 0) return false;
    HANDLE handle = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_INFORMATION, FALSE, processId);
    if (handle == nullptr && GetLastError() == ERROR_ACCESS_DENIED) {
        handle = OpenProcess(SYNCHRONIZE | kQueryLimitedInformation, FALSE, processId);
    }
    if (handle == nullptr) return false;
    Keep(processId, handle);
    return true;
}

std::optional<uint32_t> clsWin32Processes::ExitCode(uint32_t processId) {
    HANDLE handle = Borrow(processId);
    if (handle == nullptr) return std::nullopt;
    DWORD code = 0;
    const bool ok = GetExitCodeProcess(handle, &code) != 0;
    CloseHandle(handle);
    if (!ok) return std::nullopt;
    return code;
}

bool clsWin32Processes::Wait(uint32_t processId, uint32_t timeoutMs) {
    HANDLE handle = Borrow(processId);
    if (handle == nullptr) return false;
    const bool ended = WaitForSingleObject(handle, timeoutMs) == WAIT_OBJECT_0;
    CloseHandle(handle);
    return ended;
}

void clsWin32Processes::Release(uint32_t processId) {
    std::lock_guard lock(mutex_);
    const auto it = handles_.find(processId);
    if (it == handles_.end()) return;
    CloseHandle(it->second);
    handles_.erase(it);
}

} // namespace tovel
