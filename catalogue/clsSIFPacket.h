#pragma once
// The packets of the disc, addressed from 1, each code once.
#include <string>

#include "catalogue/clsSIFList.h"
#include "catalogue/clsSIFPacketItem.h"

namespace tovel {

class clsSIFPacket : public clsSIFList<clsSIFPacketItem> {
public:
    /// Reads a packet description file and appends the packet, unless a packet of the same
    /// code is there already: that is logged as a multiple occurrence and the file ignored.
    void Add(const std::string& sifPath);
    /// The same from a file already bound to an INI object.
    void Add(clsIniFile& sif);
    /// The index of the packet with this code (codes are stored in upper case, so the code is
    /// compared in upper case); 0 when none has it.
    [[nodiscard]] int IndexOfProductCode(const std::string& code) const;
};

} // namespace tovel
