#include "platform/win32/clsWin32Files.h"

#include "platform/win32/Win32Headers.h"

#include <atomic>
#include <cstdio>
#include <new>
#include <vector>

#include "platform/clsWindowsPath.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

// FILETIME counts 100 ns steps from 1601; FileEntry wants seconds from 1970.
int64_t ToUnixSeconds(const FILETIME& time) {
    const auto ticks = static_cast<int64_t>((static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
    const int64_t since1970 = ticks - 116444736000000000LL;
    const int64_t seconds = since1970 / 10000000;
    return (since1970 % 10000000 < 0) ? seconds - 1 : seconds;
}

FileEntry EntryOf(const WIN32_FIND_DATAW& data) {
    FileEntry entry;
    entry.name = clsWin32Text::ToUtf8(data.cFileName);
    entry.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.size = entry.isFolder ? 0 : (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    entry.modified = ToUnixSeconds(data.ftLastWriteTime);
    return entry;
}

bool IsDotName(const wchar_t* name) { return (name[0] == L'.' && name[1] == 0) || (name[0] == L'.' && name[1] == L'.' && name[2] == 0); }

bool IsSlash(wchar_t c) { return c == L'\\' || c == L'/'; }

std::optional<std::wstring> FullPath(const std::wstring& path) {
    if (path.empty()) return std::nullopt;
    return clsWin32Text::Fetch([&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(path.c_str(), size, buffer, nullptr); });
}

// Length of the root of a full path: "C:\" 3, "\\server\share\" up to and with its last backslash.
size_t RootLength(const std::wstring& full) {
    if (full.size() >= 2 && full[1] == L':') return full.size() >= 3 ? 3 : 2;
    if (full.size() >= 2 && IsSlash(full[0]) && IsSlash(full[1])) {
        size_t seen = 0;
        for (size_t i = 2; i < full.size(); ++i) {
            if (IsSlash(full[i]) && ++seen == 2) return i + 1;
        }
        return full.size();
    }
    return 0;
}

// "C:\A\B\" -> "C:\A\B"; a root keeps its backslash.
std::wstring WithoutTrailingSlash(std::wstring full) {
    const size_t root = RootLength(full);
    while (full.size() > root && IsSlash(full.back())) full.pop_back();
    return full;
}

// The folder part of a full path, or empty when the path is a root.
std::wstring ParentOf(const std::wstring& full) {
    const size_t root = RootLength(full);
    if (full.size() <= root) return {};
    const size_t slash = full.find_last_of(L"\\/");
    if (slash == std::wstring::npos || slash + 1 < root) return {};
    return slash + 1 <= root ? full.substr(0, root) : full.substr(0, slash);
}

bool IsFolderW(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool CreateTree(const std::wstring& full, int depth) {
    if (IsFolderW(full)) return true;
    if (GetFileAttributesW(full.c_str()) != INVALID_FILE_ATTRIBUTES) return false;  // a file is in the way
    const std::wstring parent = ParentOf(full);
    if (!parent.empty() && parent != full && depth < 512) CreateTree(parent, depth + 1);
    CreateDirectoryW(full.c_str(), nullptr);
    return IsFolderW(full);
}

// Writes everything; WriteFile takes at most a DWORD per call.
bool WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const DWORD chunk = bytes.size() > (1u << 30) ? (1u << 30) : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data(), chunk, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

std::optional<std::wstring> Wide(const std::string& text) { return clsWin32Text::ToWide(text); }

// One string of a version resource's "\\StringFileInfo\\<translation>\\" block; "" when absent.
std::string VersionString(const std::vector<unsigned char>& data, const std::string& translation, const wchar_t* name) {
    const std::wstring query = L"\\StringFileInfo\\" + *Wide(translation) + L"\\" + name;
    void* value = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(data.data(), query.c_str(), &value, &length) || value == nullptr || length == 0) return {};
    return clsWin32Text::ToUtf8(std::wstring_view(static_cast<const wchar_t*>(value)));
}

// "\\VarFileInfo\\Translation" as eight hex digits; US English in Unicode when it is missing.
std::string Translation(const std::vector<unsigned char>& data) {
    void* value = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(data.data(), L"\\VarFileInfo\\Translation", &value, &length) || length < 2 * sizeof(WORD)) {
        return "040904B0";
    }
    const auto* pair = static_cast<const WORD*>(value);
    char text[9];
    std::snprintf(text, sizeof text, "%04X%04X", pair[0], pair[1]);
    return text;
}

// Windows refuses to replace a read-only file (and CopyFile also a hidden one); Wine
// replaces them, so the test is made here for the same answer on both.
bool IsProtectedTarget(const std::wstring& path, DWORD protecting) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
           (attributes & protecting) != 0;
}

std::wstring DriveRoot(char letter) { return std::wstring{static_cast<wchar_t>(letter), L':', L'\\'}; }

char UpperLetter(char letter) {
    if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
    return (letter >= 'A' && letter <= 'Z') ? letter : 0;
}

char DriveOf(const std::wstring& full) {
    if (full.size() >= 2 && full[1] == L':' && full[0] < 128) return UpperLetter(static_cast<char>(full[0]));
    return 0;
}

// Windows keeps the current folder of each drive that is not current in the hidden
// environment variable "=X:"; GetFullPathName("X:") reads it.
void RememberFolderOfDrive(char letter, const std::wstring& folder) {
    const wchar_t name[] = {L'=', static_cast<wchar_t>(letter), L':', 0};
    SetEnvironmentVariableW(name, folder.c_str());
}

std::wstring CurrentFolderW() {
    return clsWin32Text::Fetch([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); })
        .value_or(std::wstring());
}

} // namespace

bool clsWin32Files::FileExists(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide || wide->empty()) return false;
    const DWORD attributes = GetFileAttributesW(wide->c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool clsWin32Files::FolderExists(const std::string& path) {
    const auto wide = Wide(path);
    return wide && !wide->empty() && IsFolderW(*wide);
}

std::optional<FileEntry> clsWin32Files::Stat(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide || wide->empty() || wide->find_first_of(L"*?") != std::wstring::npos) return std::nullopt;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wide->c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    FileEntry entry;
    entry.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.size = entry.isFolder ? 0 : (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    entry.modified = ToUnixSeconds(data.ftLastWriteTime);
    // The name as stored (its case may differ from the path asked for) comes from the folder listing.
    const auto full = FullPath(*wide);
    if (full) {
        const std::wstring trimmed = WithoutTrailingSlash(*full);
        if (trimmed.size() > RootLength(trimmed)) {
            WIN32_FIND_DATAW found{};
            const HANDLE find = FindFirstFileW(trimmed.c_str(), &found);
            if (find != INVALID_HANDLE_VALUE) {
                FindClose(find);
                entry.name = clsWin32Text::ToUtf8(found.cFileName);
            } else {
                entry.name = clsWin32Text::ToUtf8(trimmed.substr(trimmed.find_last_of(L"\\/") + 1));
            }
        }
    }
    return entry;
}

bool clsWin32Files::CreateFolder(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide) return false;
    const auto full = FullPath(*wide);
    return full && CreateTree(WithoutTrailingSlash(*full), 0);
}

bool clsWin32Files::DeleteFile(const std::string& path) {
    const auto wide = Wide(path);
    return wide && !wide->empty() && DeleteFileW(wide->c_str()) != 0;
}

bool clsWin32Files::DeleteFolder(const std::string& path) {
    const auto wide = Wide(path);
    return wide && !wide->empty() && RemoveDirectoryW(wide->c_str()) != 0;
}

bool clsWin32Files::CopyFile(const std::string& from, const std::string& to, bool failIfExists) {
    const auto source = Wide(from), target = Wide(to);
    return source && target && !source->empty() && !target->empty() &&
           !IsProtectedTarget(*target, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN) &&
           CopyFileW(source->c_str(), target->c_str(), failIfExists ? TRUE : FALSE) != 0;
}

bool clsWin32Files::MoveFile(const std::string& from, const std::string& to) {
    const auto source = Wide(from), target = Wide(to);
    // COPY_ALLOWED: a move to another drive becomes copy and delete, as "move" promises.
    return source && target && !source->empty() && !target->empty() &&
           !IsProtectedTarget(*target, FILE_ATTRIBUTE_READONLY) &&
           MoveFileExW(source->c_str(), target->c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED) != 0;
}

std::optional<std::string> clsWin32Files::ReadFile(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide || wide->empty()) return std::nullopt;
    // Other programs may hold the file open for writing (a log being written); read it anyway.
    const HANDLE file = CreateFileW(wide->c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    std::optional<std::string> result;
    try {
        std::string bytes;
        LARGE_INTEGER size{};
        if (GetFileSizeEx(file, &size) && size.QuadPart > 0 && static_cast<uint64_t>(size.QuadPart) < bytes.max_size()) {
            bytes.reserve(static_cast<size_t>(size.QuadPart));
        }
        // Read to the end rather than to the size seen above: the file may grow meanwhile.
        char buffer[65536];
        for (;;) {
            DWORD got = 0;
            if (!::ReadFile(file, buffer, sizeof buffer, &got, nullptr)) break;
            if (got == 0) {
                result = std::move(bytes);
                break;
            }
            bytes.append(buffer, got);
        }
    } catch (const std::bad_alloc&) {
        result.reset();
    } catch (const std::length_error&) {
        result.reset();
    }
    CloseHandle(file);
    return result;
}

std::optional<FileVersionInfo> clsWin32Files::FileVersion(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide || wide->empty()) return std::nullopt;
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(wide->c_str(), &ignored);
    if (size == 0) return std::nullopt;
    std::vector<unsigned char> data(size);
    if (!GetFileVersionInfoW(wide->c_str(), 0, size, data.data())) return std::nullopt;
    FileVersionInfo info;
    info.translation = Translation(data);
    info.fileVersion = VersionString(data, info.translation, L"FileVersion");
    info.originalFileName = VersionString(data, info.translation, L"OriginalFilename");
    info.productName = VersionString(data, info.translation, L"ProductName");
    return info;
}

bool clsWin32Files::WriteFileAtomic(const std::string& path, std::string_view bytes) {
    const auto wide = Wide(path);
    if (!wide) return false;
    const auto full = FullPath(*wide);
    if (!full) return false;
    const size_t slash = full->find_last_of(L"\\/");
    if (slash == std::wstring::npos || slash + 1 == full->size()) return false;
    const std::wstring folder = full->substr(0, slash + 1);
    if (IsProtectedTarget(*full, FILE_ATTRIBUTE_READONLY)) return false;

    // The temporary file sits beside the target so the final rename stays on one volume.
    static std::atomic<unsigned> counter{0};
    std::wstring temp;
    HANDLE file = INVALID_HANDLE_VALUE;
    for (int attempt = 0; attempt < 100 && file == INVALID_HANDLE_VALUE; ++attempt) {
        temp = folder + L"~tvl" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(counter++) + L".tmp";
        file = CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_ALREADY_EXISTS) {
            return false;
        }
    }
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool written = WriteAll(file, bytes) && FlushFileBuffers(file);
    CloseHandle(file);
    if (written &&
        MoveFileExW(temp.c_str(), full->c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
    }
    DeleteFileW(temp.c_str());
    return false;
}

bool clsWin32Files::AppendToFile(const std::string& path, std::string_view bytes) {
    const auto wide = Wide(path);
    if (!wide || wide->empty()) return false;
    // FILE_APPEND_DATA without FILE_WRITE_DATA: every write goes to the end, even when
    // another process appends to the same log.
    const HANDLE file = CreateFileW(wide->c_str(), FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool ok = WriteAll(file, bytes);
    return CloseHandle(file) && ok;
}

std::vector<FileEntry> clsWin32Files::ListFolder(const std::string& path) {
    std::vector<FileEntry> entries;
    auto pattern = Wide(path);
    if (!pattern || pattern->empty()) return entries;
    // "X:" is the current folder of drive X, so its listing is "X:*", not "X:\*".
    if (!IsSlash(pattern->back()) && !(pattern->size() == 2 && (*pattern)[1] == L':')) *pattern += L'\\';
    *pattern += L'*';
    WIN32_FIND_DATAW data{};
    const HANDLE find = FindFirstFileW(pattern->c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return entries;
    do {
        if (!IsDotName(data.cFileName)) entries.push_back(EntryOf(data));
    } while (FindNextFileW(find, &data));
    FindClose(find);
    return entries;
}

std::vector<FileEntry> clsWin32Files::FindFiles(const std::string& pattern) {
    std::vector<FileEntry> entries;
    const auto wide = Wide(pattern);
    if (!wide || wide->empty()) return entries;
    // FindFirstFile also matches the 8.3 alias ("*.ssf" finds "Setup.ssf~" through
    // "SETUP~1.SSF"), so the long names are checked against the pattern again. "*.*" keeps
    // its old meaning of "everything", names without a dot included.
    const size_t slash = pattern.find_last_of("\\/:");
    const std::string last = slash == std::string::npos ? pattern : pattern.substr(slash + 1);
    const bool recheck = last.find_first_of("*?") != std::string::npos && last != "*.*";
    WIN32_FIND_DATAW data{};
    const HANDLE find = FindFirstFileW(wide->c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return entries;
    do {
        if (IsDotName(data.cFileName)) continue;
        FileEntry entry = EntryOf(data);
        if (!recheck || clsWindowsPath::MatchWildcard(last, entry.name)) entries.push_back(std::move(entry));
    } while (FindNextFileW(find, &data));
    FindClose(find);
    return entries;
}

DriveType clsWin32Files::GetDriveType(const std::string& root) {
    auto wide = Wide(root);
    if (!wide) return DriveType::NoRootDir;
    if (wide->empty()) return static_cast<DriveType>(GetDriveTypeW(nullptr));
    // GetDriveType wants the trailing backslash; "C:" alone would be refused.
    if (!IsSlash(wide->back())) *wide += L'\\';
    return static_cast<DriveType>(GetDriveTypeW(wide->c_str()));
}

std::optional<uint64_t> clsWin32Files::FreeSpace(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide) return std::nullopt;
    const auto full = FullPath(*wide);
    if (!full) return std::nullopt;
    // The path may not exist yet (a folder to install to): ask for the nearest existing
    // folder above it, which also gets a mounted volume right.
    std::wstring folder = WithoutTrailingSlash(*full);
    for (int depth = 0; depth < 512 && !folder.empty(); ++depth) {
        if (IsFolderW(folder)) {
            std::wstring asked = folder;
            if (!IsSlash(asked.back())) asked += L'\\';
            ULARGE_INTEGER freeToCaller{}, total{}, totalFree{};
            if (GetDiskFreeSpaceExW(asked.c_str(), &freeToCaller, &total, &totalFree)) return freeToCaller.QuadPart;
            return std::nullopt;
        }
        folder = ParentOf(folder);
    }
    return std::nullopt;
}

std::string clsWin32Files::CurrentFolder() { return clsWin32Text::ToUtf8(CurrentFolderW()); }

std::string clsWin32Files::CurrentFolderOfDrive(char letter) {
    letter = UpperLetter(letter);
    if (letter == 0) return {};
    const std::wstring current = CurrentFolderW();
    if (DriveOf(current) == letter) return clsWin32Text::ToUtf8(current);
    const std::wstring drive{static_cast<wchar_t>(letter), L':'};
    const auto full = FullPath(drive);
    return clsWin32Text::ToUtf8(full ? WithoutTrailingSlash(*full) : DriveRoot(letter));
}

bool clsWin32Files::SetCurrentDrive(char letter) {
    letter = UpperLetter(letter);
    if (letter == 0 || (GetLogicalDrives() & (1u << (letter - 'A'))) == 0) return false;
    const std::wstring current = CurrentFolderW();
    const char currentDrive = DriveOf(current);
    if (currentDrive == letter) return true;
    std::wstring target = clsWin32Text::ToWide(CurrentFolderOfDrive(letter)).value_or(DriveRoot(letter));
    // A remembered folder that was deleted since leaves the drive's root.
    if (!SetCurrentDirectoryW(target.c_str())) {
        target = DriveRoot(letter);
        if (!SetCurrentDirectoryW(target.c_str())) return false;
    }
    if (currentDrive != 0) RememberFolderOfDrive(currentDrive, current);
    RememberFolderOfDrive(letter, CurrentFolderW());
    return true;
}

bool clsWin32Files::SetCurrentFolder(const std::string& path) {
    const auto wide = Wide(path);
    if (!wide) return false;
    const auto full = FullPath(*wide);
    if (!full || !IsFolderW(*full)) return false;
    const std::wstring folder = WithoutTrailingSlash(*full);
    const char drive = DriveOf(folder);
    const std::wstring current = CurrentFolderW();
    const char currentDrive = DriveOf(current);
    if (drive != 0 && drive != currentDrive) {
        // Another drive: only the folder it will return to changes.
        RememberFolderOfDrive(drive, folder);
        return true;
    }
    if (!SetCurrentDirectoryW(folder.c_str())) return false;
    if (drive != 0) {
        RememberFolderOfDrive(drive, CurrentFolderW());
    } else if (currentDrive != 0) {
        RememberFolderOfDrive(currentDrive, current);  // leaving the drive for a share
    }
    return true;
}

} // namespace tovel
