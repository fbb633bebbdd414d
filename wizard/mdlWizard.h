#pragma once
// The hand-over from start-up to the wizard: the dialog order with the controllers of every
// page, the catalogue's selection steps and the program's end, started at the first page.
#include <memory>
#include <string>

#include "wizard/clsDialogOrder.h"

namespace tovel {

/// The controller of a page by its classic form name; nullptr for a name that is no page.
[[nodiscard]] std::unique_ptr<clsPageController> MakePageController(const std::string& page);
/// Creates gDialogOrder, builds its page list and shows the first page. Returns only when the
/// pages ended without the Done page ending the program (a script that ran out).
void RunWizard();

} // namespace tovel
