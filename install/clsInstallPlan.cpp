#include "install/clsInstallPlan.h"

namespace tovel {

std::string InstallStep::Text() const { return productCode + "\n"; }

std::vector<InstallStep> clsInstallPlan::Make(const clsSIFApplication&, const std::vector<std::string>&, const InstallContext&) { return {}; }

InstallStep clsInstallPlan::Step(const clsSIFApplicationItem&, int, int, const InstallContext&) { return {}; }

std::vector<std::string> clsInstallPlan::CatalogueOrder(const clsSIFApplication&) { return {}; }

std::string clsInstallPlan::Text(const std::vector<InstallStep>&) { return {}; }

std::string clsInstallPlan::Text(const clsSIFApplication&) { return {}; }

} // namespace tovel
