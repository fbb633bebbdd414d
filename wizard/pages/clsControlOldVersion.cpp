#include "wizard/pages/clsControlOldVersion.h"

#include "wizard/WizardGlobals.h"

namespace tovel {

void clsControlOldVersion::OnLoad() {
    std::string lines;
    for (const auto& line : InstalledProductsFound) lines += (lines.empty() ? "" : "\r\n") + line;
    SetText("OldVersionText", lines);
}

void clsControlOldVersion::OnClick(const std::string& control, int) {
    if (control == "OKBtn") ContinueBtnClick();
}

} // namespace tovel
