#pragma once
// The check of a disc's Setups.ini: does it read, which lines are never read (against the
// key table of clsSetupsIni), are Booleans, numbers and language words what the setup can
// read, does Path name a folder, and has every offered language its section of texts.
#include <string>
#include <vector>

#include "catalogue/DiscFinding.h"

namespace tovel {

class clsSetupsIniCheck {
public:
    /// Checks "Setups.ini" in the disc's root folder (a Windows path with a trailing "\").
    explicit clsSetupsIniCheck(std::string root) : root_(std::move(root)) {}

    [[nodiscard]] std::vector<DiscFinding> Run();
    /// After Run: the languages the disc offers (0 German .. 5 Japanese).
    [[nodiscard]] const std::vector<int>& Languages() const { return languages_; }
    /// After Run: the folder the products lie in, with a trailing "\".
    [[nodiscard]] const std::string& ProductFolder() const { return productFolder_; }

private:
    std::string root_;
    std::vector<int> languages_;
    std::string productFolder_;
};

} // namespace tovel
