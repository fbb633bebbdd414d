#pragma once
// What the benchmarks share: timing a pass (on the wall and in processor time), the median of passes, waiting until written
// files are settled, and one printed row with its ratio to the run's baseline.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

namespace tovel::bench {

inline double Seconds(const std::function<void()>& pass) {
    const auto start = std::chrono::steady_clock::now();
    pass();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Times a pass twice over: by the clock on the wall, and by the processor time the whole
/// process used (std::clock: user and system time, so reading cached files counts). On a
/// machine shared with other work the second gives the steadier ratios.
inline void Time(const std::function<void()>& pass, std::vector<double>& wall, std::vector<double>& processor) {
    const std::clock_t start = std::clock();
    wall.push_back(Seconds(pass));
    processor.push_back(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Waits until files written up to now can no longer change within the second their time
/// shows, as files on a disc: readers then trust their stamp alone.
inline void WaitTillSettled() { std::this_thread::sleep_for(std::chrono::milliseconds(2100)); }

inline void Row(const char* what, double seconds, double baseline, int count, const char* unit) {
    std::printf("  %-58s %9.2f ms %8.2f us/%s %7.2fx\n", what, seconds * 1e3, seconds * 1e6 / count, unit, seconds / baseline);
}

} // namespace tovel::bench
