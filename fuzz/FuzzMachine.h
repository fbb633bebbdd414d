#pragma once
// What the fuzz targets that need a machine share: a fresh emulated machine in a temporary
// folder, installed as the platform and removed when the run ends, and checks that abort so
// libFuzzer keeps the input.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/posix/clsMachinePlatform.h"
#include "platform/posix/clsMachineProfile.h"
#include "settings/clsRegistry.h"

namespace tovel::fuzz {

inline void Require(bool condition) {
    if (!condition) std::abort();
}

inline std::string& MachineFolder() {
    static std::string folder;
    return folder;
}

/// What a target frees before its machine's folder goes (its global objects).
inline std::function<void()>& BeforeRemoval() {
    static std::function<void()> release;
    return release;
}

inline void RemoveMachine() {
    if (BeforeRemoval()) BeforeRemoval()();
    std::error_code ec;
    if (!MachineFolder().empty()) std::filesystem::remove_all(MachineFolder(), ec);
}

/// Makes and installs the machine; its folder is named after the target.
inline clsMachinePlatform& InstallFuzzMachine(const std::string& target) {
    std::string pattern = (std::filesystem::temp_directory_path() / ("tovel-fuzz-" + target + ".XXXXXX")).string();
    Require(mkdtemp(pattern.data()) != nullptr);
    MachineFolder() = pattern;
    std::atexit(RemoveMachine);
    std::string error;
    auto machine = clsMachine::Create(MachineFolder() + "/machine", clsMachineProfile::Default(), error);
    Require(machine != nullptr);
    auto platform = clsMachinePlatform::Make(std::move(machine), MachineProcess{}, error);
    Require(platform != nullptr);
    auto* installed = platform.get();
    InstallPlatform(std::move(platform));
    return *installed;
}

inline void SetValue(const std::string& key, const std::string& name, const std::string& value, RegType type) {
    clsRegistry registry;
    Require(registry.InitWithRegPath(key));
    Require(registry.SetKeyValue(name, value, type));
}

} // namespace tovel::fuzz
