#pragma once
// The layouts of the wizard's forms: every page in the classic set and in its "frmMSI" twin
// (the look of Windows Installer dialogs), the browse dialog of the destination page, the
// installation page and the message form. Both sets carry the same control names, so one
// controller serves either; only positions, sizes and which controls a set shows differ.
// Captions are English placeholders: the controllers put in the texts of the setup
// language, and the image controls name the Setups.ini key of the bitmap they show.
#include <string>
#include <string_view>
#include <vector>

#include "wizard/clsForm.h"

namespace tovel {

/// The form of a name from either set ("frmWelcome2", "frmMSIWelcome2"), fresh each call; an
/// empty form of that name (and a log-free safe default) when no table knows it. Names are
/// compared without regard to case; a known form carries its name as the tables spell it.
[[nodiscard]] clsForm CreateForm(std::string_view name);

/// Every form name the tables know, classic first.
[[nodiscard]] std::vector<std::string> FormNames();

/// The name of a page's form in the chosen set: classic when oldForms is true, else its
/// "frmMSI" twin ("frmMSIReadMe" for "frmReadme", "frmMSIBussystem" for "frmBusSystem",
/// "frmMSILanguage" for "frmLanguages"). A form without a twin (frmInstallation,
/// frmMessage) and a name no table knows come back unchanged; a twin's name is accepted too.
[[nodiscard]] std::string FormNameInSet(std::string_view classicName, bool oldForms);

} // namespace tovel
