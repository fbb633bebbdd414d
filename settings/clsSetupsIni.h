#pragma once
// (Being written: the disc's Setups.ini. The members below are fixed; the rest follows.)
#include <cstdint>
#include <string>

namespace tovel {

class clsSetupsIni {
public:
    /// Logging switched on: CreateLogFile of Setups.ini, or the /log switch.
    [[nodiscard]] bool CreateLogFile() const { return createLogFile_; }
    void SetCreateLogFile(bool on) { createLogFile_ = on; }
    /// Level of Setups.ini, or the /level= switch.
    [[nodiscard]] int32_t Level() const { return level_; }
    void SetLevel(int32_t level) { level_ = level; }

private:
    bool createLogFile_ = false;
    int32_t level_ = 3;
};

} // namespace tovel
