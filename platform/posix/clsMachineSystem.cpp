#include "platform/posix/clsMachineSystem.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsDateFormat.h"
#include "platform/posix/clsHostFile.h"

namespace tovel {

clsMachineSystem::clsMachineSystem(clsMachine& machine, std::string programFolder, std::string commandLine,
                                   std::function<void()> onRestart)
    : machine_(machine), programFolder_(clsWindowsPath::AddBackslash(std::move(programFolder))),
      commandLine_(std::move(commandLine)), onRestart_(std::move(onRestart)) {
    if (!onRestart_) {
        onRestart_ = [] {
            std::fflush(nullptr);
            std::exit(kMachineRestartStatus);
        };
    }
}

OsVersion clsMachineSystem::Version() { return machine_.Config().version; }
uint16_t clsMachineSystem::UserDefaultLanguage() { return machine_.Config().userLanguage; }
uint32_t clsMachineSystem::AnsiCodePage() { return machine_.Config().ansiCodePage; }
std::string clsMachineSystem::WindowsFolder() { return clsWindowsPath::AddBackslash(machine_.Config().windowsFolder); }
std::string clsMachineSystem::SystemFolder() { return clsWindowsPath::AddBackslash(machine_.Config().systemFolder); }
std::string clsMachineSystem::TempFolder() { return clsWindowsPath::AddBackslash(machine_.Config().tempFolder); }
std::string clsMachineSystem::ProgramFolder() { return programFolder_; }
std::string clsMachineSystem::CommandLine() { return commandLine_; }

std::optional<std::string> clsMachineSystem::Environment(const std::string& name) {
    for (const auto& [key, value] : machine_.Config().environment) {
        if (clsWindowsPath::EqualNoCase(key, name)) return value;
    }
    return std::nullopt;
}

bool clsMachineSystem::IsAdministrator() {
    // Windows 95, 98 and Me know no user rights.
    return machine_.Config().version.platformId != 2 || machine_.Config().administrator;
}

ScreenSize clsMachineSystem::Screen() { return machine_.Config().screen; }
std::vector<std::string> clsMachineSystem::Fonts() { return machine_.Config().fonts; }
bool clsMachineSystem::EnableShutdownPrivilege() { return true; }

bool clsMachineSystem::Restart(uint32_t /*flags*/) {
    machine_.Config().powerState = "off";
    std::string error;
    if (!machine_.Save(error)) {
        std::cerr << "tovelsetup: " << error << '\n';
        return false;
    }
    onRestart_();
    return true;
}

void clsMachineSystem::EndProcess(uint32_t exitCode) {
    if (const char* file = std::getenv("TOVEL_EXIT_CODE_FILE"); file != nullptr && *file != 0) {
        std::string error;
        (void)clsHostFile::WriteAtomic(file, std::to_string(exitCode) + "\n", error);
    }
    std::fflush(nullptr);
    std::exit(static_cast<int>(exitCode & 0xFF));
}

std::string clsMachineSystem::LongDate(const LocalTime& time) {
    return clsDateFormat::Format(machine_.Config().longDateFormat, time, machine_.Config().userLanguage);
}

std::string clsMachineSystem::LongTime(const LocalTime& time) {
    return clsDateFormat::Format(machine_.Config().timeFormat, time, machine_.Config().userLanguage);
}

} // namespace tovel
