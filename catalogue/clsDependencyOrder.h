#pragma once
// The installation order of a list whose entries depend on others by code.
//
// Passes run over the entries not yet placed, in list order; an entry whose dependencies are
// all placed is appended. The result is computed without running the passes one by one: an
// entry becomes placeable the moment its last dependency is placed, and it is placed in that
// same pass if it stands behind that dependency, else in the next one; a queue ordered by
// (pass, position) gives exactly the order of the passes in O(n log n + dependencies).
//
// Decided for disc authors: codes compare without regard to case; a dependency on a code that
// is not in the list does not hold the entry back (it is reported, the product may well be
// installed already or come from another disc); entries held by a cycle (or waiting on one)
// are put at the end in their list order, so no product is lost from the installation.
#include <cstddef>
#include <string>
#include <vector>

namespace tovel {

struct OrderEntry {
    std::string code;
    std::vector<std::string> dependencies;
};

struct OrderResult {
    /// Indices into the input: the placed entries in installation order, then the unplaced.
    std::vector<size_t> order;
    size_t placed = 0;
    /// (entry index, dependency code) for each dependency on a code that is not in the list.
    std::vector<std::pair<size_t, std::string>> missing;
};

class clsDependencyOrder {
public:
    [[nodiscard]] static OrderResult Order(const std::vector<OrderEntry>& entries);
};

} // namespace tovel
