#pragma once
// The layouts of the configuration tool's own forms, as data like the wizard's pages, so that
// the text renderer and the Windows renderer both show them. Their texts are English: the
// tool is for disc authors, whatever languages their disc offers.
//   frmConfigTool   the tool's main form: the three parts and Close
//   frmPageTester   form set, language and page; Show opens the page with the test flag
//   frmDiscCheck    the disc check's findings, with what to do about each
//   frmSettings     Setups.ini and the description files, key by key, editable
#include <string_view>

#include "wizard/clsForm.h"

namespace tovel {

/// The tool's form of a name, fresh each call; an empty form of that name when none is known.
[[nodiscard]] clsForm CreateConfigForm(std::string_view name);

} // namespace tovel
