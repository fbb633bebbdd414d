#pragma once
// The pages that show a text file of the disc for the setup language: the licence agreement,
// the information and the readme. The file's name comes from Setups.ini; its path is taken
// below the setup's folder unless it is a full one.
#include <functional>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlTextPage : public clsControlPage {
public:
    /// fileOf names the file for a language; textBox is the control that shows it.
    clsControlTextPage(std::string page, std::string textBox, std::function<std::string(int16_t)> fileOf)
        : clsControlPage(std::move(page)), textBox_(std::move(textBox)), fileOf_(std::move(fileOf)) {}

    /// The full path of the page's file for the setup language; "" when none is named.
    [[nodiscard]] std::string FilePath() const;

protected:
    void OnLoad() override;

private:
    std::string textBox_;
    std::function<std::string(int16_t)> fileOf_;
};

} // namespace tovel
