#pragma once
// The drives a product may be moved to on the component page, and the move itself.
//
// Decided here:
// - Offered: the fixed and removable drives of the machine (only the fixed ones with
//   OnlyFixedDrivesAllowed). Network and RAM drives are left to the destination page, which
//   sets the drive of all products at once; a CD-ROM is never offered.
// - A product moved gets the new DestDrive, and its DestPath, when it is a full path, moves
//   to the same folders on the new drive. DataDrive stays: project data has its own choice.
#include <string>
#include <vector>

namespace tovel {

class clsSIFApplicationItem;

class clsComponentDrive {
public:
    /// Asks the machine for its drives once.
    explicit clsComponentDrive(bool onlyFixed);

    /// The drives offered, "C:", "D:", in the order of their letters.
    [[nodiscard]] const std::vector<std::string>& Lines() const { return drives_; }
    /// The line of a drive ("d:" or "D:\..."); -1 when it is not offered.
    [[nodiscard]] int LineOf(const std::string& drive) const;
    /// Moves a product to the drive of a line; false (and a log line) for a line not offered.
    bool Move(clsSIFApplicationItem& item, int line) const;

private:
    std::vector<std::string> drives_;
};

} // namespace tovel
