#pragma once
// The catalogue: the products of the disc in installation order, addressed from 1.
#include <string>

#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/clsSIFList.h"

namespace tovel {

class clsSIFApplication : public clsSIFList<clsSIFApplicationItem> {
public:
    /// Reads a description file into a new record and appends it; logs its product code and
    /// setup file. A file without a product code is still appended: the caller sees the empty
    /// code. productFolder: see clsSIFApplicationItem::Read.
    void Add(const std::string& sifPath, const std::string& productFolder);
    /// The same from a file already bound to an INI object.
    void Add(clsIniFile& sif, const std::string& productFolder);
    /// The index of the first record with exactly this product code; 0 when none has it.
    [[nodiscard]] int IndexOfProductCode(const std::string& code) const;
    /// Sets the selected flag of every record.
    void SetSelectAllApp(bool selected);
};

} // namespace tovel
