#include "common/clsSecondsTimer.h"

#include <cmath>

#include "platform/clsPlatform.h"

namespace tovel {

namespace {
constexpr double kDay = 86400;
} // namespace

void clsSecondsTimer::Start() {
    last_ = Platform().Clock().SecondsSinceMidnight();
    elapsed_ = last_ - std::nearbyint(last_);
}

double clsSecondsTimer::Elapsed() {
    const double now = Platform().Clock().SecondsSinceMidnight();
    double step = now - last_;
    if (step < -kDay / 2) step += kDay;
    if (step > 0) elapsed_ += step;
    last_ = now;
    return elapsed_;
}

bool clsSecondsTimer::WaitUntil(double seconds, const std::function<bool()>& round) {
    while (Elapsed() < seconds) {
        if (!round()) return false;
        Platform().Clock().Sleep(kSliceMs);
    }
    return true;
}

} // namespace tovel
