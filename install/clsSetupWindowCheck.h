#pragma once
// Whether a product setup still counts as running after its first process has ended. Many
// setups hand over to a second process (an InstallShield engine, an uninstaller) or leave a
// window open for a while, so a finished process alone does not end the product:
//
//   - an InstallShield window ("InstallShieldSetup30", "InstallShield_Win" "Setup",
//     "isdelete" "InstallSHIELD delete") keeps it running while the window exists;
//   - a window with one of the product's titles restarts the tick count and keeps it running
//     for 3 more ticks after the window is gone;
//   - the Internet Explorer CD (its autorun window, or a dialog titled "*4.01 SP1*") likewise
//     for 10 ticks;
//   - with two products or more in the run and no process seen, a setup without any window
//     counts as running for 20 ticks after its start.
//
// The tick counter belongs to the run (it counts since the setup was started); a window found
// sets it back to 0.
#include <cstdint>
#include <string>
#include <vector>

namespace tovel {

class clsSetupWindowCheck {
public:
    /// True while the setup counts as running. titles: the product's window titles ("*"
    /// wildcards; empty ones are passed over). ticks may be set back to 0.
    [[nodiscard]] bool StillRunning(int32_t& ticks, const std::vector<std::string>& titles, int productCount,
                                    bool processSeen);
    [[nodiscard]] bool WindowTitleFlag() const { return windowTitle_; }
    [[nodiscard]] bool IeCdFlag() const { return ieCd_; }

private:
    [[nodiscard]] static bool InstallShieldWindow();
    [[nodiscard]] static bool TitledWindow(const std::vector<std::string>& titles);
    [[nodiscard]] static bool IeCdWindow();
    /// A flag that holds the setup for a number of ticks after its window was last seen.
    [[nodiscard]] static bool Held(bool found, bool& flag, int32_t& ticks, int32_t holdTicks);

    bool windowTitle_ = false;
    bool ieCd_ = false;
};

} // namespace tovel
