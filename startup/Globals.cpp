#include "startup/Globals.h"

namespace tovel {

std::string HomePath;
std::string WorkFolder;
std::string WindowsDir;
std::string SystemDir;
bool ContinuedAfterRestart = false;

clsFileDisk gFileDisk;

std::unique_ptr<clsPrintLog> gLog;
bool LogEnabled = false;

} // namespace tovel
