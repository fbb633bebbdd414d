#include "platform/win32/clsWin32System.h"

#include <cstdio>

#include "platform/win32/Win32Headers.h"

#include <set>

#include "platform/clsWindowsCommandLine.h"
#include "platform/clsWindowsPath.h"
#include "platform/win32/clsWin32Registry.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

constexpr DWORD kReasonPlannedInstallation = 0x80000000u /* planned */ | 0x00040000u /* application */ |
                                             0x00000002u /* installation */;

std::string WithBackslash(const std::optional<std::wstring>& folder) {
    if (!folder) return {};
    return clsWindowsPath::AddBackslash(clsWin32Text::ToUtf8(*folder));
}

bool IsWindows9x() {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    return GetVersionExW(&info) && info.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS;
}

// Administrators membership from the token's groups, for systems without CheckTokenMembership.
bool TokenHasGroup(PSID group) {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
    DWORD size = 0;
    GetTokenInformation(token, TokenGroups, nullptr, 0, &size);
    std::string buffer(size, '\0');
    bool member = false;
    if (size != 0 && GetTokenInformation(token, TokenGroups, buffer.data(), size, &size)) {
        const auto* groups = reinterpret_cast<const TOKEN_GROUPS*>(buffer.data());
        for (DWORD i = 0; i < groups->GroupCount && !member; ++i) {
            member = EqualSid(groups->Groups[i].Sid, group) && (groups->Groups[i].Attributes & SE_GROUP_ENABLED) != 0;
        }
    }
    CloseHandle(token);
    return member;
}

int CALLBACK CollectFont(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM context) {
    reinterpret_cast<std::set<std::wstring>*>(context)->insert(font->lfFaceName);
    return 1;
}

// GetDateFormat and GetTimeFormat answer the size they need when given no buffer.
template <typename Format>
std::string Formatted(Format format) {
    const int needed = format(nullptr, 0);
    if (needed <= 0) return {};
    std::wstring text(static_cast<size_t>(needed), L'\0');
    const int written = format(text.data(), needed);
    if (written <= 0) return {};
    text.resize(static_cast<size_t>(written) - 1);
    return clsWin32Text::ToUtf8(text);
}

int DaysInMonth(int year, int month) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

} // namespace

OsVersion clsWin32System::Version() {
    OsVersion version;
    OSVERSIONINFOEXW info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (!GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info))) {
        // Windows 95 and NT 4 before SP6 know only the short structure.
        info = OSVERSIONINFOEXW{};
        info.dwOSVersionInfoSize = sizeof(OSVERSIONINFOW);
        if (!GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info))) return version;
    }
    version.major = info.dwMajorVersion;
    version.minor = info.dwMinorVersion;
    version.build = info.dwBuildNumber;
    version.platformId = info.dwPlatformId;
    version.csdVersion = clsWin32Text::ToUtf8(info.szCSDVersion);
    version.servicePackMajor = info.wServicePackMajor;
    version.servicePackMinor = info.wServicePackMinor;
    version.suiteMask = info.wSuiteMask;
    version.productType = info.wProductType;
    const char* key = info.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS ? "SOFTWARE\\Microsoft\\Windows\\CurrentVersion"
                                                                      : "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    clsWin32Registry registry;
    if (auto name = registry.QueryValue(RegRoot::LocalMachine, key, "ProductName");
        name && (name->type == RegType::Sz || name->type == RegType::ExpandSz)) {
        version.productName = name->text;
    }
    return version;
}

uint16_t clsWin32System::UserDefaultLanguage() { return GetUserDefaultLangID(); }

uint32_t clsWin32System::AnsiCodePage() { return GetACP(); }

std::string clsWin32System::WindowsFolder() {
    return WithBackslash(clsWin32Text::Fetch([](wchar_t* buffer, UINT size) { return GetWindowsDirectoryW(buffer, size); }));
}

std::string clsWin32System::SystemFolder() {
    return WithBackslash(clsWin32Text::Fetch([](wchar_t* buffer, UINT size) { return GetSystemDirectoryW(buffer, size); }));
}

std::string clsWin32System::TempFolder() {
    return WithBackslash(clsWin32Text::Fetch([](wchar_t* buffer, DWORD size) { return GetTempPathW(size, buffer); }));
}

std::string clsWin32System::ProgramFolder() {
    // GetModuleFileName cuts the name to the buffer instead of saying what it needs.
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) return {};
        if (length < path.size() || path.size() >= 32768) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);
    }
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::string() : clsWin32Text::ToUtf8(path.substr(0, slash + 1));
}

std::string clsWin32System::CommandLine() {
    const wchar_t* line = GetCommandLineW();
    if (line == nullptr) return {};
    return clsWindowsCommandLine::SplitProgram(clsWin32Text::ToUtf8(line)).rest;
}

std::optional<std::string> clsWin32System::Environment(const std::string& name) {
    const auto wide = clsWin32Text::ToWide(name);
    if (!wide || wide->empty()) return std::nullopt;
    SetLastError(ERROR_SUCCESS);
    const auto value = clsWin32Text::Fetch(
        [&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(wide->c_str(), buffer, size); });
    if (value) return clsWin32Text::ToUtf8(*value);
    // 0 is also the length of a variable that is set but empty.
    if (GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    return std::string();
}

bool clsWin32System::IsAdministrator() {
    if (IsWindows9x()) return true;
    SID_IDENTIFIER_AUTHORITY ntAuthority = SECURITY_NT_AUTHORITY;
    PSID administrators = nullptr;
    if (!AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0,
                                  0, 0, &administrators)) {
        return false;
    }
    // CheckTokenMembership (Windows 2000 and later) also honours deny-only groups of a
    // filtered token, so an administrator without elevation counts as none.
    using CheckFn = BOOL(WINAPI*)(HANDLE, PSID, PBOOL);
    bool member = false;
    const HMODULE advapi = GetModuleHandleW(L"advapi32.dll");
    const auto check = advapi == nullptr ? nullptr
                                         : reinterpret_cast<CheckFn>(reinterpret_cast<void (*)()>(
                                               GetProcAddress(advapi, "CheckTokenMembership")));
    if (check != nullptr) {
        BOOL isMember = FALSE;
        member = check(nullptr, administrators, &isMember) && isMember;
    } else {
        member = TokenHasGroup(administrators);
    }
    FreeSid(administrators);
    return member;
}

ScreenSize clsWin32System::Screen() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

std::vector<std::string> clsWin32System::Fonts() {
    std::set<std::wstring> faces;
    HDC dc = GetDC(nullptr);
    if (dc == nullptr) return {};
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;  // every family once per character set
    EnumFontFamiliesExW(dc, &wanted, CollectFont, reinterpret_cast<LPARAM>(&faces), 0);
    ReleaseDC(nullptr, dc);
    std::vector<std::string> names;
    names.reserve(faces.size());
    for (const auto& face : faces) names.push_back(clsWin32Text::ToUtf8(face));
    return names;
}

bool clsWin32System::EnableShutdownPrivilege() {
    if (IsWindows9x()) return true;
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) return false;
    TOKEN_PRIVILEGES privileges{};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    bool enabled = false;
    if (LookupPrivilegeValueW(nullptr, L"SeShutdownPrivilege", &privileges.Privileges[0].Luid)) {
        // AdjustTokenPrivileges succeeds also when the user lacks the privilege; only the
        // last error tells (ERROR_NOT_ALL_ASSIGNED).
        enabled = AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr) &&
                  GetLastError() == ERROR_SUCCESS;
    }
    CloseHandle(token);
    return enabled;
}

bool clsWin32System::Restart(uint32_t flags) { return ExitWindowsEx(flags, kReasonPlannedInstallation) != 0; }

void clsWin32System::EndProcess(uint32_t exitCode) {
    std::fflush(nullptr);
    ExitProcess(exitCode);
}

std::string clsWin32System::LongDate(const LocalTime& time) {
    if (time.year < 1601 || time.year > 30827 || time.month < 1 || time.month > 12 || time.day < 1 ||
        time.day > DaysInMonth(time.year, time.month)) {
        return {};
    }
    SYSTEMTIME date{};
    date.wYear = static_cast<WORD>(time.year);
    date.wMonth = static_cast<WORD>(time.month);
    date.wDay = static_cast<WORD>(time.day);
    date.wDayOfWeek = static_cast<WORD>(time.dayOfWeek >= 0 && time.dayOfWeek <= 6 ? time.dayOfWeek : 0);
    return Formatted([&](wchar_t* buffer, int size) {
        return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, buffer, size);
    });
}

std::string clsWin32System::LongTime(const LocalTime& time) {
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || time.second < 0 ||
        time.second > 59) {
        return {};
    }
    SYSTEMTIME clock{};
    clock.wYear = 2000;
    clock.wMonth = 1;
    clock.wDay = 1;
    clock.wHour = static_cast<WORD>(time.hour);
    clock.wMinute = static_cast<WORD>(time.minute);
    clock.wSecond = static_cast<WORD>(time.second);
    return Formatted([&](wchar_t* buffer, int size) {
        return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &clock, nullptr, buffer, size);
    });
}

} // namespace tovel
