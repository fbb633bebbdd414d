#pragma once
// The information page: the information text of the disc for the setup language.
#include "wizard/pages/clsControlTextPage.h"

namespace tovel {

class clsControlInformation : public clsControlTextPage {
public:
    clsControlInformation();
};

} // namespace tovel
