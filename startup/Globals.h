#pragma once
// The run state every part of the setup shares, fixed during start-up.
#include <memory>
#include <string>

#include "common/clsFileDisk.h"
#include "startup/clsPrintLog.h"

namespace tovel {

extern std::string HomePath;     ///< folder the program was started from, with a trailing backslash
extern std::string WorkFolder;   ///< root of the Windows drive: holds the log and the state file
extern std::string WindowsDir;   ///< Windows folder with a trailing backslash
extern std::string SystemDir;    ///< system folder with a trailing backslash
extern bool ContinuedAfterRestart; ///< a state file was found: an interrupted run resumes

extern clsFileDisk gFileDisk;

extern std::unique_ptr<clsPrintLog> gLog; ///< the setup log, made by StartLog (mdlLog)
extern bool LogEnabled;                   ///< LogIfEnabled and LogHeading write; off until the settings say

} // namespace tovel
