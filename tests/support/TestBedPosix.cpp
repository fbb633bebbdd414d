// Each test gets a fresh emulated machine in a temporary host folder.
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

#include "platform/posix/clsMachinePlatform.h"
#include "platform/posix/clsMachineProfile.h"
#include "tests/support/TestBed.h"

namespace tovel::test {

namespace {
std::string NewHostFolder() {
    static std::atomic<unsigned> counter{0};
    const auto folder = std::filesystem::temp_directory_path() /
                        ("tovel-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(folder);
    return folder.string();
}
} // namespace

TestBed::~TestBed() {
    auto* machinePlatform = dynamic_cast<clsMachinePlatform*>(platform.get());
    const std::string hostFolder = machinePlatform != nullptr ? machinePlatform->Machine().Folder() : std::string();
    platform.reset();
    std::error_code ec;
    if (!hostFolder.empty()) std::filesystem::remove_all(hostFolder, ec);
}

std::unique_ptr<TestBed> MakeTestBed() {
    auto bed = std::make_unique<TestBed>();
    std::string error;
    auto machine = clsMachine::Create(NewHostFolder(), clsMachineProfile::Default(), error);
    if (!machine) throw std::runtime_error(error);
    // The test child lives on drive C: like any program of the machine.
    std::filesystem::create_directories(machine->Folder() + "/drive_c/Tools");
    std::filesystem::create_symlink(TOVEL_TESTCHILD_HOST, machine->Folder() + "/drive_c/Tools/testchild.exe");
    std::filesystem::create_symlink(TOVEL_FAKESETUP_HOST, machine->Folder() + "/drive_c/Tools/fakesetup.exe");
    std::filesystem::create_directories(machine->Folder() + "/drive_c/Work");
    std::ofstream(machine->Folder() + "/drive_c/Tools/library.dll", std::ios::binary)
        << "MZ\r\nVS_VERSION_INFO FileVersion=5.1.2600.2180; OriginalFilename=library.dll; ProductName=Tovel Test\r\n"
           "DLL_EXPORTS\r\n";
    std::ofstream(machine->Folder() + "/drive_c/Tools/server.dll", std::ios::binary)
        << "MZ\r\nVS_VERSION_INFO FileVersion=2.0.0.0; OriginalFilename=tovel_testlibrary.dll; ProductName=Tovel Test\r\n"
           "DLL_EXPORTS DllRegisterServer=ok; DllUnregisterServer=ok; RegistryKey=HKEY_CURRENT_USER\\"
        << TestBed::kLibraryKey << "\r\n";
    bed->expectedVersion = machine->Config().version;
    bed->expectedLanguage = machine->Config().userLanguage;
    MachineProcess process;
    process.programFolder = "C:\\Work\\";
    process.onRestart = [bed = bed.get()] { ++bed->restarts; };
    bed->platform = clsMachinePlatform::Make(std::move(machine), process, error);
    if (!bed->platform) throw std::runtime_error(error);
    bed->folder = "C:\\Work\\";
    bed->registryKey = "Software\\TovelSetupTest";
    bed->childProgram = "C:\\Tools\\testchild.exe";
    bed->versionedFile = "C:\\Tools\\library.dll";
    bed->fakeSetup = "C:\\Tools\\fakesetup.exe";
    bed->registeringLibrary = "C:\\Tools\\server.dll";
    return bed;
}

} // namespace tovel::test
