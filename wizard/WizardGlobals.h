#pragma once
// The run state the wizard adds to start-up's, and its one dialog order.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tovel {

class clsDialogOrder;

extern bool SetupCancelled;          ///< the user cancelled; the Done page and the run read it
extern bool UpdateMode;              ///< "update" was chosen on the update-or-new page (or in the answer file)
extern bool BusSystemNeeded;         ///< a selected packet has an entry for a bus system
extern int16_t OldVersionCount;      ///< installed old versions the search found
extern std::string ProductLanguages; ///< letters of the languages the chosen products offer ("ABE")
/// The installed products the search found, one line each; the update-or-new page is shown
/// only when there is one.
extern std::vector<std::string> InstalledProductsFound;
/// A run that ends its installation without the user needs no packet page: "USERDEF" alone
/// was chosen (the first flag) and whether updates are allowed then (the second).
extern bool UserPacketOnly;
/// The installation asks for a restart of the machine at its end; the Done page offers it.
extern bool RestartNeeded;
/// The user aborted the installation run, or it could not be resumed; the Done page says so.
extern bool InstallationAborted;
/// The products whose setup failed in this run (a resumed run included), CR LF after each.
extern std::string FailedProducts;
extern bool UpdatePacketsAllowed;

extern std::unique_ptr<clsDialogOrder> gDialogOrder;

} // namespace tovel
