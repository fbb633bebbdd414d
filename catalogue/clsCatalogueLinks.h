#pragma once
// What is wrong with the links of a catalogue as read: the circles of "after" dependencies
// (products among products, packets among packets) and the codes a product or packet names
// that the disc does not have. The plan's tools mark both; the order itself already put the
// circles last.
#include <string>
#include <vector>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFPacket.h"

namespace tovel {

/// A code named by a product or packet that the disc lacks.
struct MissingCode {
    std::string from;   ///< the code of the product or packet that names it
    std::string code;   ///< the code named
    std::string kind;   ///< "after" (a Dependence), "link" (SETUP_DEPENDENCIES) or "product" (a packet's product)
};

struct CatalogueLinks {
    std::vector<std::vector<std::string>> productCycles;  ///< each circle's codes in catalogue order
    std::vector<std::vector<std::string>> packetCycles;
    std::vector<MissingCode> missing;                     ///< products first, then packets, in their order
};

class clsCatalogueLinks {
public:
    [[nodiscard]] static CatalogueLinks Find(const clsSIFApplication& applications, const clsSIFPacket& packets);
};

} // namespace tovel
