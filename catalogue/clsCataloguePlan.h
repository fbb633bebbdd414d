#pragma once
// The catalogue as a disc author reads it: the products in installation order, each with its
// check state and why, its links, its installed version and the actions chosen for it, and
// the packets. It is drawn from the same records the installation carries out.
#include <string>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFPacket.h"

namespace tovel {

class clsCataloguePlan {
public:
    [[nodiscard]] static std::string Text(const clsSIFApplication& applications, const clsSIFPacket& packets,
                                          const std::string& productFolder);
};

} // namespace tovel
