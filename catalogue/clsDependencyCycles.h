#pragma once
// The circles of a list whose entries depend on others by code: each set of entries that
// depend on each other round a circle (or one entry on itself). Entries that only wait on a
// circle are not in it. Codes compare without regard to case; a code given twice names its
// first entry, as the catalogue's lookups do.
#include <cstddef>
#include <vector>

#include "catalogue/clsDependencyOrder.h"

namespace tovel {

class clsDependencyCycles {
public:
    /// Each circle as the indices of its entries in list order; the circles in the order of
    /// their first entry. Linear in entries and dependencies.
    [[nodiscard]] static std::vector<std::vector<size_t>> Find(const std::vector<OrderEntry>& entries);
};

} // namespace tovel
