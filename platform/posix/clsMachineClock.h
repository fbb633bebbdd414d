#pragma once
// The clock of an emulated machine: the host's clock, unless the machine folder holds a file
// "clock" with a time "YYYY-MM-DD HH:MM:SS[.mmm]". Then the machine's time stands still at
// that time and moves only when a program sleeps, which writes the new time back. Tests use
// it to run waits of seconds at once and to start just before midnight.
#include <optional>
#include <string>

#include "platform/posix/clsHostClock.h"

namespace tovel {

class clsMachineClock : public clsPlatformClock {
public:
    explicit clsMachineClock(std::string machineFolder) : file_(std::move(machineFolder) + "/clock") {}

    double SecondsSinceMidnight() override;
    LocalTime Now() override;
    void Sleep(uint32_t milliseconds) override;

    /// A driven time from its text; nullopt when the text is not such a time.
    [[nodiscard]] static std::optional<int64_t> ParseMilliseconds(const std::string& text);
    [[nodiscard]] static std::string FormatMilliseconds(int64_t milliseconds);

private:
    /// Milliseconds since 0001-01-01 of the driven time; nullopt when the clock is not driven.
    [[nodiscard]] std::optional<int64_t> Driven() const;

    std::string file_;
    clsHostClock host_;
};

} // namespace tovel
