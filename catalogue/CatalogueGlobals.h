#pragma once
// The catalogue's objects that live for the whole run. They sit above start-up, so they are
// made here, at program start, rather than by start-up's CreateGlobalObjects.
#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFCommonSection.h"
#include "catalogue/clsSIFPacket.h"
#include "catalogue/clsSIFPacketItem.h"

namespace tovel {

extern clsSIFApplication gApplications;
extern clsSIFPacket gPackets;
extern clsSIFPacketItem gPacketItem;       ///< the packet being built or worked on
extern clsSIFCommonSection gCommonSection;

} // namespace tovel
