#include "wizard/pages/clsControlInformation.h"

#include "startup/Globals.h"

namespace tovel {

clsControlInformation::clsControlInformation()
    : clsControlTextPage("frmInformation", "InformationText", [](int16_t language) { return gSetupsIni->GetInformationFile(language); }) {}

} // namespace tovel
