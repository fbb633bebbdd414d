#pragma once
// The plan as a Graphviz graph: products in installation order, packets, the links drawn by
// type, the "after" dependencies, circles and codes the disc lacks marked in red. Linux build
// only; render with e.g. `dot -Tpng`.
#include <string>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFPacket.h"

namespace tovel {

class clsPlanDot {
public:
    /// The graph in the dot language, ending in a line end.
    [[nodiscard]] static std::string Text(const clsSIFApplication& applications, const clsSIFPacket& packets,
                                          const std::string& productFolder);
};

} // namespace tovel
