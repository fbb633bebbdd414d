#pragma once
// The run state every part of the setup shares, fixed during start-up.
#include <string>

#include "common/clsFileDisk.h"

namespace tovel {

extern std::string HomePath;     ///< folder the program was started from, with a trailing backslash
extern std::string WorkFolder;   ///< root of the Windows drive: holds the log and the state file
extern std::string WindowsDir;   ///< Windows folder with a trailing backslash
extern std::string SystemDir;    ///< system folder with a trailing backslash
extern bool ContinuedAfterRestart; ///< a state file was found: an interrupted run resumes

extern clsFileDisk gFileDisk;

} // namespace tovel
