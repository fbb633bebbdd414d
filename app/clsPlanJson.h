#pragma once
// The plan for tools: the catalogue as read on the machine and the installation's steps as one
// JSON document (schema in docs/CATALOGUE.md, "The plan for tools"). Linux build only.
#include <string>
#include <vector>

#include "catalogue/clsCatalogueLinks.h"
#include "install/clsInstallPlan.h"

namespace tovel {

class clsPlanJson {
public:
    /// The schema's version; raised when a field changes its meaning or goes.
    static constexpr int kSchema = 1;
    /// The document, indented, ending in a line end.
    [[nodiscard]] static std::string Text(const clsSIFApplication& applications, const clsSIFPacket& packets,
                                          const std::string& productFolder, const std::vector<InstallStep>& steps);
};

} // namespace tovel
