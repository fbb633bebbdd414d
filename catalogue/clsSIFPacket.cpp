#include "catalogue/clsSIFPacket.h"

#include "common/clsString.h"
#include "settings/clsIniFile.h"
#include "startup/mdlLog.h"

namespace tovel {

void clsSIFPacket::Add(const std::string& sifPath) {
    clsIniFile sif;
    sif.SetFullPath(sifPath);
    sif.SetReadOnce(true);
    Add(sif);
}

void clsSIFPacket::Add(clsIniFile& sif) {
    clsSIFPacketItem packet;
    packet.Read(sif);
    if (IndexOfProductCode(packet.ProductCode) != 0) {
        LogIfEnabled("Multiple occurence of SIF Collection: ");
        LogIfEnabled("   ProductCode: " + packet.ProductCode);
        LogIfEnabled("   Description: " + packet.Description);
        return;
    }
    items_.push_back(std::move(packet));
}

int clsSIFPacket::IndexOfProductCode(const std::string& code) const {
    const std::string upper = clsString::UpperAscii(code);
    return FirstIndex([&](const clsSIFPacketItem& item) { return item.ProductCode == upper; });
}

} // namespace tovel
