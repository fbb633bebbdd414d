#pragma once
// The seconds-since-midnight timer as a stopwatch for the setup's waits. The timer starts
// again at 0 each midnight; the stopwatch counts on across it, so a wait begun shortly
// before midnight still ends.
#include <cstdint>
#include <functional>

namespace tovel {

class clsSecondsTimer {
public:
    /// How long one round of a wait gives the machine before the timer is read again.
    static constexpr uint32_t kSliceMs = 50;

    /// Starts at the whole second of the timer nearest to now (as the setup has always
    /// measured its waits), so the first second may be a little shorter or longer.
    void Start();
    /// Seconds since the start. A timer that drops by more than half a day between two
    /// readings has passed midnight.
    [[nodiscard]] double Elapsed();
    /// Waits until `seconds` have passed since the start on the platform clock, calling
    /// `round` before each slice of sleep; false (at once) when `round` says to stop.
    bool WaitUntil(double seconds, const std::function<bool()>& round);

private:
    double start_ = 0;
    double last_ = 0;      // the timer when last read
    int midnights_ = 0;    // passed since the start
};

} // namespace tovel
