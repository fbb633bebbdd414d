#pragma once
// A disc of many products for the benchmarks, written through Platform() onto the machine
// installed: <root>\Setups.ini naming <root>\Products as the product folder, one folder per
// product below it with its description file, and a folder of packets.
//
// The files carry what authors write: every GENERAL key, six languages with a text section
// each, the numbered families, SETUP_DEPENDENCIES, a condition term and a versions section
// with a few versions. Product i depends on product i+1 (and every fifth also on i+3), so in
// the order the search finds them every product stands before what it needs and ordering has
// the most work to do. The registry gets an installed version for every third product, so
// the versions sections take each of their ways.
#include <string>
#include <vector>

namespace tovel::bench {

struct SyntheticDisc {
    std::string root;            ///< "C:\Disc\", holds Setups.ini
    std::string productFolder;   ///< "C:\Disc\Products\"
    std::vector<std::string> files;   ///< every description file, products then packets
    size_t bytes = 0;            ///< of all description files together
};

/// The code of product i: "SYN00042".
[[nodiscard]] std::string SyntheticProductCode(int i);
/// The description file of product i of a disc of `products`.
[[nodiscard]] std::string SyntheticProductFile(int i, int products);
/// The description file of packet p of `packets`: a slice of the products, depending on packet p+1.
[[nodiscard]] std::string SyntheticPacketFile(int p, int packets, int products);

/// Writes the disc below root (a Windows path ending in "\") and seeds the registry. False
/// with the reason in error when something could not be written.
[[nodiscard]] bool WriteSyntheticDisc(const std::string& root, int products, int packets, SyntheticDisc& disc,
                                      std::string& error);

} // namespace tovel::bench
