#include "ui/console/clsConsoleMode.h"

namespace tovel {

clsFormControl* clsConsoleMode::DefaultButton(clsForm& form, bool cancel) {
    for (auto& c : form.Controls()) {
        if (c.kind == ControlKind::CommandButton && c.visible && c.enabled && (cancel ? c.isCancel : c.isDefault)) return &c;
    }
    return nullptr;
}

} // namespace tovel
