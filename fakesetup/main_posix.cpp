// The stand-in product setup of the Linux build, started on an emulated machine by a program
// of that machine, which tells it where it is through its environment.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "fakesetup/clsFakeSetup.h"
#include "fakesetup/clsFakeWindowFile.h"
#include "platform/posix/clsMachinePlatform.h"

using namespace tovel;

namespace {

constexpr int kUsageError = 2;

std::string Env(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

int Fail(const std::string& message) {
    std::cerr << "tovelfakesetup: " << message << '\n';
    return kUsageError;
}

} // namespace

int main(int argc, char** argv) {
    const std::string machineFolder = Env("TOVEL_MACHINE");
    const std::string self = Env("TOVEL_PROGRAM");
    if (machineFolder.empty() || self.empty())
        return Fail("runs only as a program of an emulated machine (TOVEL_MACHINE and TOVEL_PROGRAM are not set)");
    std::string error;
    auto machine = clsMachine::Open(machineFolder, error);
    if (!machine) return Fail(error);
    MachineProcess process;
    process.selfWindowsPath = self;
    process.programFolder = self.substr(0, self.find_last_of('\\') + 1);
    process.currentFolder = Env("TOVEL_CURRENT_FOLDER");
    std::error_code ec;
    process.selfHostPath = std::filesystem::read_symlink("/proc/self/exe", ec).string();
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    auto platform = clsMachinePlatform::Make(std::move(machine), process, error);
    if (!platform) return Fail(error);
    InstallPlatform(std::move(platform));
    uint32_t code = 0;
    {
        clsFakeWindowFile window(machineFolder);
        code = clsFakeSetup(self, arguments, window).Run();
    }
    Platform().System().EndProcess(code);
}
