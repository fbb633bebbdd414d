#pragma once
// The catalogue: the products of the disc in installation order, addressed from 1.
#include <string>

#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/clsSIFList.h"

namespace tovel {

class clsSIFApplication : public clsSIFList<clsSIFApplicationItem> {
public:
    /// Appends a record as the search made it and logs its product code and setup file. A
    /// record without a product code is still appended: the caller sees the empty code. A
    /// code the catalogue already has is appended too and logged with both files; look-ups
    /// by code keep finding the first.
    void Add(clsSIFApplicationItem item);
    /// The index of the first record with exactly this product code; 0 when none has it.
    [[nodiscard]] int IndexOfProductCode(const std::string& code) const;
    /// Sets the selected flag of every record.
    void SetSelectAllApp(bool selected);
};

} // namespace tovel
