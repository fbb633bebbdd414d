#pragma once
// The machine a benchmark runs on: a fresh emulated machine in a new host folder, installed
// as the platform.
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/posix/clsMachinePlatform.h"
#include "platform/posix/clsMachineProfile.h"

namespace tovel::bench {

/// Makes and installs a fresh machine in a host folder named after the benchmark (host gets
/// the folder, to remove at the end). False with the reason in error.
inline bool InstallFreshMachine(const std::string& name, std::string& host, std::string& error) {
    host = (std::filesystem::temp_directory_path() / ("tovel-bench-" + name + "-" + std::to_string(getpid()))).string();
    std::filesystem::remove_all(host);
    auto machine = clsMachine::Create(host, clsMachineProfile::Default(), error);
    if (!machine) return false;
    auto platform = clsMachinePlatform::Make(std::move(machine), MachineProcess{}, error);
    if (!platform) return false;
    InstallPlatform(std::move(platform));
    return true;
}

} // namespace tovel::bench
