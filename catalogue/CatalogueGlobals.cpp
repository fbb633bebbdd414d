#include "catalogue/CatalogueGlobals.h"

namespace tovel {

clsSIFApplication gApplications;
clsSIFPacket gPackets;
clsSIFPacketItem gPacketItem;
clsSIFCommonSection gCommonSection(gApplications, gPackets);

} // namespace tovel
