#pragma once
// The space the selection needs, drive by drive: every selected product (shown in the tree
// or not) counts its DiskSpaceDestDrv on the drive it goes to, and each drive's free space
// is asked once. The component page shows the figures and refuses a selection that does
// not fit.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tovel {

class clsSIFApplicationItem;

/// What the selection needs on one drive and what the drive has free.
struct DriveSpace {
    std::string drive;                 ///< "C:"
    int64_t required = 0;              ///< megabytes
    std::optional<uint64_t> available; ///< megabytes; nullopt when the machine cannot tell
    /// True unless the drive is known to have less free than required.
    [[nodiscard]] bool Fits() const { return !available || *available >= static_cast<uint64_t>(required); }
};

class clsComponentSpace {
public:
    using DriveOf = std::function<std::string(const clsSIFApplicationItem&)>;

    /// The drives the selected products of gApplications go to, in the order first met.
    [[nodiscard]] static std::vector<DriveSpace> Needs(const DriveOf& driveOf);
    /// "C: 120 MB, D: 40 MB" of the figures required (or, with `available`, free).
    [[nodiscard]] static std::string Text(const std::vector<DriveSpace>& drives, bool available);
    /// The first drive that is too small; nullptr when all fit.
    [[nodiscard]] static const DriveSpace* FirstTooSmall(const std::vector<DriveSpace>& drives);
};

} // namespace tovel
