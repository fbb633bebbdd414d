#include "install/clsDumpFile.h"

#include "catalogue/CatalogueGlobals.h"

namespace tovel {

clsDumpFile::clsDumpFile() : clsDumpFile(gApplications, gPacketItem) {}

clsDumpFile::clsDumpFile(clsSIFApplication& applications, clsSIFPacketItem& packet)
    : applications_(applications), packet_(packet) {}

} // namespace tovel
