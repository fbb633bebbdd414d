#pragma once
// One line of a tree-list control (uscTreeListView): a packet heading or a product with its
// check box. Plain data, so every renderer draws the same tree.
#include <cstdint>
#include <string>

namespace tovel {

struct TreeListNode {
    std::string key{};          ///< the product's (or packet's) code: what a script names
    std::string text{};         ///< the line's text (the description)
    int level = 0;              ///< depth: 0 a packet or a product outside any packet, 1 below a packet
    int32_t state = 0;          ///< check-box state code 1, 2, 4 or 8; 0: no box (a packet)
    bool grey = false;          ///< the box is drawn grey
    std::string drive{};        ///< "C:" when the line shows the product's drive, else ""
    int64_t megabytes = -1;     ///< space the product needs; negative: not shown
    std::string tooltip{};
};

} // namespace tovel
