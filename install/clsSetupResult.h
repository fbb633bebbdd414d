#pragma once
// What a finished product setup's results mean for the run. The option file decides; the
// process's exit code is kept for the log and the state file but never marks a failure by
// itself, since many setups end through a second process whose code the run never sees.
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/clsSIFApplication.h"
#include "install/clsOptionFile.h"

namespace tovel {

enum class RestartRule : uint8_t { None = 0, AtEnd = 1, Now = 2 };

/// A program to start when the whole run has ended.
struct StartOnEndProgram {
    std::string program;
    std::string parameter;
    bool operator==(const StartOnEndProgram&) const = default;
};

struct SetupOutcome {
    bool failed = false;              ///< SetupSucceeded is "0"
    bool stopRun = false;             ///< failed and the product is critical
    RestartRule restart = RestartRule::None;
    uint32_t exitCode = 0;            ///< the setup process's exit code, as it ended
    std::vector<StartOnEndProgram> startOnEnd;  ///< kept for the end of the run
    std::vector<std::string> filtered;          ///< left out: a product says not to start them
    std::vector<std::string> logLines;          ///< what the evaluation logs, in order

    [[nodiscard]] std::string Text() const;
};

class clsSetupResult {
public:
    /// The outcome of a setup from what it wrote, its exit code, whether the product is
    /// critical and the programs the products say must not be started at the end (any case).
    /// A RebootRequested other than 0, 1 or 2 counts as 0, with a log line.
    [[nodiscard]] static SetupOutcome Interpret(const OptionFileResults& results, uint32_t exitCode, bool critical,
                                                const std::vector<std::string>& notStartOnEnd);
    /// Every NotStartOnEndProgram of the catalogue's records.
    [[nodiscard]] static std::vector<std::string> NotStartOnEndPrograms(const clsSIFApplication& applications);
};

} // namespace tovel
