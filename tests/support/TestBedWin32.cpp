// The test bed of the Windows build: the real API (under Wine in CI), a fresh folder below
// the temporary folder and a fresh key below HKEY_CURRENT_USER for each test.
#include "tests/support/TestBed.h"

#include "platform/win32/Win32Headers.h"

#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>

#include "platform/win32/MakeWin32Platform.h"
#include "platform/win32/clsWin32Clock.h"
#include "platform/win32/clsWin32Files.h"
#include "platform/win32/clsWin32Libraries.h"
#include "platform/win32/clsWin32Processes.h"
#include "platform/win32/clsWin32Registry.h"
#include "platform/win32/clsWin32System.h"
#include "platform/win32/clsWin32Windows.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel::test {

namespace {

constexpr const char* kRegistryParent = "Software\\TovelSetupTest";

// Tests change the current folder and the folders kept per drive ("=C:" ...); each bed puts
// them back so one test cannot move the next one's relative paths.
struct ProcessFolders {
    std::wstring current;
    std::map<wchar_t, std::wstring> perDrive;  ///< letter -> "=X:" value; missing: unset
};

std::mutex& BedsMutex() {
    static std::mutex mutex;
    return mutex;
}

std::map<const TestBed*, ProcessFolders>& SavedFolders() {
    static std::map<const TestBed*, ProcessFolders> saved;
    return saved;
}

std::wstring DriveVariable(wchar_t letter) { return {L'=', letter, L':'}; }

ProcessFolders CaptureFolders() {
    ProcessFolders folders;
    folders.current = clsWin32Text::Fetch([](wchar_t* buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); })
                          .value_or(std::wstring());
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const std::wstring name = DriveVariable(letter);
        const auto value = clsWin32Text::Fetch(
            [&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(name.c_str(), buffer, size); });
        if (value) folders.perDrive[letter] = *value;
    }
    return folders;
}

void RestoreFolders(const ProcessFolders& folders) {
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        const auto it = folders.perDrive.find(letter);
        SetEnvironmentVariableW(DriveVariable(letter).c_str(), it == folders.perDrive.end() ? nullptr : it->second.c_str());
    }
    if (!folders.current.empty()) SetCurrentDirectoryW(folders.current.c_str());
}

// The real system, but a restart is counted: restarting the machine the tests run on (under
// Wine: ending every process of the prefix) would end the test run.
class BedSystem : public clsWin32System {
public:
    explicit BedSystem(TestBed& bed) : bed_(bed) {}
    bool Restart(uint32_t) override {
        ++bed_.restarts;
        return true;
    }

private:
    TestBed& bed_;
};

std::unique_ptr<clsPlatform> MakeBedPlatform(TestBed& bed) {
    return std::make_unique<clsPlatform>(std::make_unique<clsWin32Files>(), std::make_unique<clsWin32Registry>(),
                                         std::make_unique<clsWin32Processes>(), std::make_unique<clsWin32Windows>(),
                                         std::make_unique<BedSystem>(bed), std::make_unique<clsWin32Clock>(),
                                         std::make_unique<clsWin32Libraries>());
}

bool UnderWine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

void ReportLeftOver(const char* what, const std::wstring& path) {
    const DWORD error = GetLastError();
    std::fprintf(stderr, "TestBed: cannot %s %s (error %lu)%s\n", what, clsWin32Text::ToUtf8(path).c_str(), error,
                 error == ERROR_SHARING_VIOLATION && UnderWine()
                     ? "; Wine keeps a folder busy that was current while ShellExecuteEx ran, until the process ends"
                     : "");
}

void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW data{};
    const HANDLE find = FindFirstFileW((folder + L"\\*").c_str(), &data);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = data.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = folder + L"\\" + name;
            // Tests make files read-only to see failures; that must not keep them here.
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(path);
            } else if (!DeleteFileW(path.c_str())) {
                ReportLeftOver("delete", path);
            }
        } while (FindNextFileW(find, &data));
        FindClose(find);
    }
    if (!RemoveDirectoryW(folder.c_str())) ReportLeftOver("remove", folder);
}

void RemoveKeyTree(HKEY parent, const std::wstring& key) {
    HKEY handle = nullptr;
    if (RegOpenKeyExW(parent, key.c_str(), 0, KEY_READ | KEY_WRITE, &handle) != ERROR_SUCCESS) return;
    // Deleting while enumerating shifts the indexes, so always take the first subkey.
    wchar_t name[256];
    for (;;) {
        DWORD length = 256;
        if (RegEnumKeyExW(handle, 0, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        const std::wstring child(name, length);
        RemoveKeyTree(handle, child);
        if (RegDeleteKeyW(handle, child.c_str()) != ERROR_SUCCESS) break;
    }
    RegCloseKey(handle);
}

void DeleteKeyTree(const std::wstring& key) {
    RemoveKeyTree(HKEY_CURRENT_USER, key);
    RegDeleteKeyW(HKEY_CURRENT_USER, key.c_str());
}

std::wstring Utf8ToWide(const std::string& text) { return clsWin32Text::ToWide(text).value_or(std::wstring()); }

} // namespace

std::unique_ptr<TestBed> MakeTestBed() {
    static std::atomic<unsigned> counter{0};
    // Code under test that reaches the machine through Platform() finds the same real API;
    // a platform a test installed itself stays.
    static std::once_flag installed;
    std::call_once(installed, [] {
        if (auto previous = InstallPlatform(MakeWin32Platform())) InstallPlatform(std::move(previous));
    });

    auto bed = std::make_unique<TestBed>();
    bed->platform = MakeBedPlatform(*bed);

    const std::wstring temp =
        clsWin32Text::Fetch([](wchar_t* buffer, DWORD size) { return GetTempPathW(size, buffer); }).value_or(L"C:\\");
    const std::wstring id = std::to_wstring(GetCurrentProcessId()) + L"-";
    std::wstring folder, number;
    for (int attempt = 0; attempt < 1000; ++attempt) {
        number = id + std::to_wstring(counter++);
        folder = temp + L"TovelTest-" + number;
        if (CreateDirectoryW(folder.c_str(), nullptr)) break;
        folder.clear();
    }
    if (!folder.empty()) bed->folder = clsWin32Text::ToUtf8(folder) + "\\";

    bed->registryKey = std::string(kRegistryParent) + "\\" + clsWin32Text::ToUtf8(number);
    DeleteKeyTree(Utf8ToWide(bed->registryKey));  // left over by a crashed run with the same id

    bed->childProgram = bed->platform->System().ProgramFolder() + "tovel_testchild.exe";
    bed->versionedFile = bed->platform->System().SystemFolder() + "kernel32.dll";
    bed->fakeSetup = bed->platform->System().ProgramFolder() + "TOVELFAKESETUP.EXE";
    bed->registeringLibrary = bed->platform->System().ProgramFolder() + "tovel_testlibrary.dll";

    // What scripts/test-windows.sh sets up in its Wine prefix: Windows XP SP3, English (UK).
    bed->expectedVersion.major = 5;
    bed->expectedVersion.minor = 1;
    bed->expectedVersion.build = 2600;
    bed->expectedVersion.platformId = 2;
    bed->expectedVersion.csdVersion = "Service Pack 3";
    bed->expectedVersion.servicePackMajor = 3;
    bed->expectedVersion.servicePackMinor = 0;
    bed->expectedVersion.productType = 1;
    bed->expectedVersion.productName = "Microsoft Windows XP";
    bed->expectedLanguage = 2057;

    std::lock_guard lock(BedsMutex());
    SavedFolders()[bed.get()] = CaptureFolders();
    return bed;
}

TestBed::~TestBed() {
    {
        std::lock_guard lock(BedsMutex());
        auto it = SavedFolders().find(this);
        if (it != SavedFolders().end()) {
            // Back out of the bed's folder first: Windows cannot remove a current folder.
            RestoreFolders(it->second);
            SavedFolders().erase(it);
        }
    }
    platform.reset();  // closes the process handles it kept
    if (!folder.empty()) {
        std::wstring wide = Utf8ToWide(folder);
        while (!wide.empty() && wide.back() == L'\\') wide.pop_back();
        if (!wide.empty()) RemoveTree(wide);
    }
    if (!registryKey.empty()) {
        DeleteKeyTree(Utf8ToWide(registryKey));
        DeleteKeyTree(Utf8ToWide(kLibraryKey));
        // The shared parent goes once the last bed has left it (fails while others remain).
        RegDeleteKeyW(HKEY_CURRENT_USER, Utf8ToWide(kRegistryParent).c_str());
    }
}

} // namespace tovel::test
