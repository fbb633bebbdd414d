#pragma once
// Whole folders on the machine: copied with everything in them, or deleted.
#include <string>

namespace tovel {

class clsFakeTree {
public:
    /// Copies the folder's files and sub-folders into the target, creating it; the number of
    /// files copied, or -1 when one could not be copied.
    [[nodiscard]] static int Copy(const std::string& from, const std::string& to);
    /// Deletes the folder with everything in it; false when something stayed.
    [[nodiscard]] static bool Delete(const std::string& folder);
};

} // namespace tovel
