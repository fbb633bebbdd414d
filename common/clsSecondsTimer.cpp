#include "common/clsSecondsTimer.h"

#include <cmath>

#include "platform/clsPlatform.h"

namespace tovel {

namespace {
constexpr double kDay = 86400;
} // namespace

void clsSecondsTimer::Start() {
    last_ = Platform().Clock().SecondsSinceMidnight();
    start_ = std::nearbyint(last_);
    midnights_ = 0;
}

double clsSecondsTimer::Elapsed() {
    const double now = Platform().Clock().SecondsSinceMidnight();
    if (now < last_ - kDay / 2) ++midnights_;
    last_ = now;
    // From the readings themselves, not summed steps: whole seconds stay exact.
    return now + midnights_ * kDay - start_;
}

bool clsSecondsTimer::WaitUntil(double seconds, const std::function<bool()>& round) {
    while (Elapsed() < seconds) {
        if (!round()) return false;
        Platform().Clock().Sleep(kSliceMs);
    }
    return true;
}

} // namespace tovel
