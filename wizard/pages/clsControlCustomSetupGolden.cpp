#include "wizard/pages/clsControlCustomSetupGolden.h"

#include "catalogue/clsSIFApplicationItem.h"
#include "language/clsBuiltinTexts.h"
#include "startup/Globals.h"

namespace tovel {

std::string clsControlCustomSetupGolden::FormName(bool) const { return "frmMSICustomSetupGolden"; }

std::string clsControlCustomSetupGolden::ProductDescription(const clsSIFApplicationItem& item) const {
    std::string text = clsControlCustomSetup::ProductDescription(item);
    if (item.DiskSpaceDestDrv <= 0 || !gLanguage) return text;
    const std::string needs =
        gLanguage->LoadResString(TextNo::kComponentNeeds, {std::to_string(item.DiskSpaceDestDrv), DriveOf(item)});
    return text.empty() ? needs : text + "\n" + needs;
}

} // namespace tovel
