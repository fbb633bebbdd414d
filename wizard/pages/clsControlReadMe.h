#pragma once
// The readme page: the readme of the disc for the setup language; its button opens the file
// in the program Windows associates with it, to read or print it at full size.
#include "wizard/pages/clsControlTextPage.h"

namespace tovel {

class clsControlReadMe : public clsControlTextPage {
public:
    clsControlReadMe();

protected:
    void OnClick(const std::string& control, int index) override;

private:
    void ReadmeFormBtnClick();
};

} // namespace tovel
