#include "wizard/WizardGlobals.h"

#include "wizard/clsDialogOrder.h"

namespace tovel {

bool SetupCancelled = false;
bool UpdateMode = false;
bool BusSystemNeeded = false;
int16_t OldVersionCount = 0;
std::string ProductLanguages;
std::vector<std::string> InstalledProductsFound;
bool UserPacketOnly = false;
bool RestartNeeded = false;
bool InstallationAborted = false;
std::string FailedProducts;
bool UpdatePacketsAllowed = false;
std::unique_ptr<clsDialogOrder> gDialogOrder;

} // namespace tovel
