#include "install/clsSetupWindowCheck.h"

#include "platform/clsPlatform.h"

namespace tovel {

namespace {

constexpr int32_t kTitleHoldTicks = 3;
constexpr int32_t kIeCdHoldTicks = 10;
constexpr int32_t kWindowlessTicks = 20;

bool Find(const char* windowClass, const char* title) {
    return Platform().Windows().FindTopLevelWindow(windowClass, title);
}

} // namespace

bool clsSetupWindowCheck::InstallShieldWindow() {
    return Find("InstallShieldSetup30", "InstallShieldSetup30") || Find("InstallShield_Win", "Setup") ||
           Find("isdelete", "InstallSHIELD delete");
}

bool clsSetupWindowCheck::TitledWindow(const std::vector<std::string>& titles) {
    for (const auto& title : titles) {
        // An empty pattern would match every window on the screen.
        if (!title.empty() && Platform().Windows().FindTopLevelWindow("", title)) return true;
    }
    return false;
}

bool clsSetupWindowCheck::IeCdWindow() {
    return Find("AutoRunMain", "Microsoft Internet Explorer CD") || Find("*32770*", "*4.01 SP1*");
}

bool clsSetupWindowCheck::Held(bool found, bool& flag, int32_t& ticks, int32_t holdTicks) {
    if (found) {
        flag = true;
        ticks = 0;
    }
    if (!flag) return false;
    if (ticks < holdTicks) return true;
    flag = false;
    return false;
}

bool clsSetupWindowCheck::StillRunning(int32_t& ticks, const std::vector<std::string>& titles, int productCount,
                                       bool processSeen) {
    if (InstallShieldWindow()) return true;
    if (Held(TitledWindow(titles), windowTitle_, ticks, kTitleHoldTicks)) return true;
    if (Held(IeCdWindow(), ieCd_, ticks, kIeCdHoldTicks)) return true;
    return productCount >= 2 && !processSeen && ticks < kWindowlessTicks;
}

} // namespace tovel
