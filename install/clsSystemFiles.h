#pragma once
// The files a disc delivers for the system folder: every file of the folder "System" beside
// the setup program is brought into the system folder at its version or newer before the
// first product's setup starts, as the products may need them. A library (".dll", ".ocx")
// that is replaced is unregistered first, and one that was copied is registered.
#include <string>

namespace tovel {

class clsSystemFiles {
public:
    static constexpr const char* kFolder = "System\\";

    /// Checks each file of programFolder's "System" folder (nothing when there is none).
    static void Install(const std::string& programFolder);

private:
    [[nodiscard]] static bool IsLibrary(const std::string& fileName);
};

} // namespace tovel
