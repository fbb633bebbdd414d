#pragma once
// Carrying out what the command line asked for: the one place where the switches change the
// process and the run state.
#include "startup/CommandLineSwitches.h"

namespace tovel {

/// Changes to the drive's root (HomePath stays the disc), sets the level of gSetupsIni,
/// switches logging on and sets the run flags. A switch that was not given leaves its flag
/// alone, except NoOSCheck and SilentMode, which are set either way. A drive that cannot be
/// entered adds an error line to the analysis.
void ApplySwitches(CommandLineSwitches& found);

} // namespace tovel
