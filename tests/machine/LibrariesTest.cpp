// Libraries of the emulated machine: a file's "DLL_EXPORTS" line says which registration
// entry points it has and what they do.
#include <gtest/gtest.h>

#include <thread>

#include "tests/machine/MachineFixture.h"

namespace tovel::test {
namespace {

using Outcome = EntryPointCall::Outcome;

class LibrariesTest : public MachineFixture {
protected:
    void SetUp() override {
        MachineFixture::SetUp();
        Boot();
        // A driven clock: the wait for a hung entry point takes no host time.
        WriteHost("clock", "2026-11-22 10:00:00\n");
    }
    EntryPointCall Call(const std::string& path, const std::string& entryPoint) {
        return platform_->Libraries().CallEntryPoint(path, entryPoint, 10000);
    }
    std::optional<std::string> Registered() {
        const auto value = platform_->Registry().QueryValue(RegRoot::LocalMachine, "SOFTWARE\\Classes\\Tovel.Chart", "");
        return value ? std::optional<std::string>(value->text) : std::nullopt;
    }
};

TEST_F(LibrariesTest, EntryPointsDoWhatTheLineSays) {
    WriteHost("drive_c/chart.ocx",
              "MZ binary\r\n# DLL_EXPORTS DllRegisterServer=ok; dllunregisterserver = OK ; "
              "RegistryKey=HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Tovel.Chart\r\nmore\r\n");
    EXPECT_EQ(Call("C:\\chart.ocx", "DllRegisterServer").outcome, Outcome::Returned);
    EXPECT_EQ(Registered().value_or("(none)"), "C:\\chart.ocx");
    const EntryPointCall unregister = Call("c:\\CHART.OCX", "DllUnregisterServer");
    EXPECT_EQ(unregister.outcome, Outcome::Returned);
    EXPECT_EQ(unregister.code, 0U);
    EXPECT_FALSE(Registered());

    // A number is returned with nothing done; an unknown value or name is no entry point.
    WriteHost("drive_c/failing.dll", "DLL_EXPORTS DllRegisterServer=0x80004005; DllUnregisterServer=later\r\n");
    const EntryPointCall failed = Call("C:\\failing.dll", "DllRegisterServer");
    EXPECT_EQ(failed.outcome, Outcome::Returned);
    EXPECT_EQ(failed.code, 0x80004005U);
    EXPECT_EQ(Call("C:\\failing.dll", "DllUnregisterServer").outcome, Outcome::NoEntryPoint);
    EXPECT_EQ(Call("C:\\failing.dll", "DllInstall").outcome, Outcome::NoEntryPoint);
    // Without the line, or without the file, there is no library.
    WriteHost("drive_c/readme.dll", "just text\r\n");
    EXPECT_EQ(Call("C:\\readme.dll", "DllRegisterServer").outcome, Outcome::NoLibrary);
    EXPECT_EQ(Call("C:\\gone.dll", "DllRegisterServer").outcome, Outcome::NoLibrary);
}

TEST_F(LibrariesTest, AHungEntryPointIsWaitedForOnTheMachinesClockAndEndThreadEndsOnlyItsThread) {
    WriteHost("drive_c/hang.dll", "DLL_EXPORTS DllRegisterServer=hang\r\n");
    const EntryPointCall hung = Call("C:\\hang.dll", "DllRegisterServer");
    EXPECT_EQ(hung.outcome, Outcome::Hung);
    EXPECT_EQ(hung.code, 259U);
    EXPECT_EQ(ReadHost("clock"), "2026-11-22 10:00:10.000\n");

    bool returned = false;
    std::thread caller([&] {
        platform_->Libraries().EndThread(hung.code);
        returned = true;
    });
    caller.join();
    EXPECT_FALSE(returned);
}

} // namespace
} // namespace tovel::test
