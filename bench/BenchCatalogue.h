#pragma once
// The catalogue the installation's benchmarks start from: a fresh emulated machine, a
// synthetic disc on it with the log off, and the disc's products searched into gApplications.
#include <memory>
#include <string>

#include "bench/BenchMachine.h"
#include "bench/SyntheticDisc.h"
#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSSFSearch.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "startup/Globals.h"

namespace tovel::bench {

/// Installs the machine (host gets its folder, to remove at the end) and reads the disc of
/// `products` into the catalogue. False with the reason in error.
inline bool LoadSyntheticCatalogue(const std::string& name, int products, int packets, std::string& host,
                                   std::string& error) {
    if (!InstallFreshMachine(name, host, error)) return false;
    SyntheticDisc disc;
    if (!WriteSyntheticDisc("C:\\Disc\\", products, packets, disc, error)) return false;
    gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, disc.root);
    if (gSetupsIni->CreateLogFile()) {
        error = "the log must be off";
        return false;
    }
    gPlaceholder = std::make_unique<clsPlaceholder>();
    gPlaceholder->SetSettings(gSetupsIni.get());
    DefaultLanguage = 1;
    HomePath = disc.root;
    WorkFolder = "C:\\";
    if (!clsSSFSearch().Run() || gApplications.Count() != products) {
        error = "the search did not read the disc";
        return false;
    }
    return true;
}

} // namespace tovel::bench
