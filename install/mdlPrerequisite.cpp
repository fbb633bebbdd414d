#include "install/mdlPrerequisite.h"

#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/mdlCatalogueCodes.h"

namespace tovel {

void MarkPrerequisite(clsSIFApplicationItem& entry, bool install) {
    entry.CheckBox = install ? CheckBoxState::kCheckedLocked : CheckBoxState::kUncheckedLocked;
    entry.Selected = install;
}

} // namespace tovel
