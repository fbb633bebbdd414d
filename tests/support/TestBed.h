#pragma once
// What a test needs from the machine it runs on: a fresh emulated machine on Linux, the real
// Windows API (under Wine) on Windows. The same tests run against both.
#include <memory>
#include <string>

#include "platform/clsPlatform.h"

namespace tovel::test {

struct TestBed {
    std::unique_ptr<clsPlatform> platform;
    /// A fresh, empty folder for the test's files, as a Windows path ending in a backslash.
    std::string folder;
    /// A fresh key below HKEY_CURRENT_USER for the test's values.
    std::string registryKey;
    /// Windows path of the test child program: arguments "<exit code> <milliseconds to sleep>".
    std::string childProgram;
    /// Windows path of a file that carries a version resource whose FileVersion begins with
    /// four numbers (a system library on Windows).
    std::string versionedFile;
    /// Windows path of the stand-in product setup (docs/FAKESETUP.md); copy it where a disc
    /// has its setup.
    std::string fakeSetup;
    /// Windows path of a COM library at version 2.0.0.0 whose DllRegisterServer sets the
    /// default value of HKEY_CURRENT_USER\<kLibraryKey> to its own path and whose
    /// DllUnregisterServer deletes that key. versionedFile is a library without either.
    std::string registeringLibrary;
    static constexpr const char* kLibraryKey = "Software\\TovelSetupTest\\Library";
    /// What the system reports of its version on this bed.
    OsVersion expectedVersion;
    /// The user language the bed reports.
    uint16_t expectedLanguage = 0;
    /// Restarts of the machine asked for (emulated machine only: there a restart switches the
    /// machine off and counts here rather than ending the test program).
    int restarts = 0;

    TestBed() = default;
    TestBed(const TestBed&) = delete;
    TestBed& operator=(const TestBed&) = delete;
    ~TestBed();
};

/// A new bed; its folder and registry key are removed again when it is destroyed.
std::unique_ptr<TestBed> MakeTestBed();

} // namespace tovel::test
