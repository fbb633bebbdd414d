#pragma once
// A fresh machine folder per test, for what only the emulated machine has.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/posix/clsMachinePlatform.h"
#include "platform/posix/clsMachineProfile.h"

namespace tovel::test {

class MachineFixture : public ::testing::Test {
protected:
    void SetUp() override {
        static int counter = 0;
        folder_ = (std::filesystem::temp_directory_path() /
                   ("tovel-machine-" + std::to_string(getpid()) + "-" + std::to_string(counter++)))
                      .string();
        std::filesystem::remove_all(folder_);
    }
    void TearDown() override {
        platform_.reset();
        std::error_code ec;
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(folder_, ec);
    }
    // Creates the machine from a profile (when it has no machine.ini yet) and its platform.
    clsMachinePlatform& Boot(MachineProcess process = {}, const MachineConfig& config = clsMachineProfile::Default()) {
        std::string error;
        auto machine = std::filesystem::exists(folder_ + "/machine.ini") ? clsMachine::Open(folder_, error)
                                                                          : clsMachine::Create(folder_, config, error);
        EXPECT_TRUE(machine) << error;
        platform_ = clsMachinePlatform::Make(std::move(machine), process, error);
        EXPECT_TRUE(platform_) << error;
        return *platform_;
    }
    void WriteHost(const std::string& relative, const std::string& text, bool executable = false) {
        const auto path = std::filesystem::path(folder_) / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        if (executable) std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    std::string ReadHost(const std::string& relative) {
        std::ifstream in(std::filesystem::path(folder_) / relative, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    std::string folder_;
    std::unique_ptr<clsMachinePlatform> platform_;
};

} // namespace tovel::test
