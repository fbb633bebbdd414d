#pragma once
// The timers of the forms on a terminal, fired by their intervals while keys are awaited.
// A timer switched on (or given another interval) starts its interval then, as a timer on
// Windows does; a tick that is still running (waiting for keys itself) does not start again.
#include <chrono>
#include <string>
#include <vector>

#include "ui/console/clsConsoleStack.h"

namespace tovel {

class clsTerminalTimers {
public:
    explicit clsTerminalTimers(clsConsoleStack& stack) : stack_(stack) {}

    /// Milliseconds until the next timer is due, at most `longest`.
    [[nodiscard]] int MsUntilNext(int longest);
    /// Raises every timer that is due.
    void FireDue();
    /// Forgets the timers of a showing that has left.
    void Forget(long shownId);

private:
    using Clock = std::chrono::steady_clock;
    struct Entry {
        long shownId = 0;
        std::string name{};
        int intervalMs = 0;
        Clock::time_point due{};
        bool running = false;
    };

    /// Follows the forms' timers: new ones start, stopped ones go.
    void Sync();
    Entry* Find(long shownId, const std::string& name);

    clsConsoleStack& stack_;
    std::vector<Entry> entries_;
};

} // namespace tovel
