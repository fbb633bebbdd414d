#pragma once
// The catalogue's part of the state file: the chosen packet (section InstallPacketItem) and
// every product record with its lists (section SIFApplication). One table of keys serves
// writing and reading, so a key added to it is saved and restored alike.
//
// Keys of product i are the name followed by i ("ProductCode3"); an entry j of one of its
// lists is the name, i, a backslash and j ("getAction12\2").
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tovel {

class clsSIFApplication;
class clsSIFApplicationItem;
class clsSIFPacketItem;

class clsDumpCatalogue {
public:
    /// Takes one key as written: section, key name, value.
    using KeySink = std::function<void(const std::string& section, const std::string& key, const std::string& value)>;
    /// Gives a key's value as read; nullopt when the key is missing.
    using KeySource = std::function<std::optional<std::string>(const std::string& section, const std::string& key)>;

    /// Hands every key of the packet to put, in the file's order.
    static void WritePacket(const clsSIFPacketItem& packet, const KeySink& put);
    /// Hands every key of the catalogue to put, in the file's order.
    static void WriteApplications(const clsSIFApplication& applications, const KeySink& put);

    /// Rebuilds the packet from its keys. False, with the first missing or unreadable key in
    /// problem, when the keys are not all there; the packet is then unchanged.
    [[nodiscard]] static bool ReadPacket(const KeySource& get, clsSIFPacketItem& packet, std::string& problem);
    /// Rebuilds every product record from its keys, in the order written. False, with the
    /// first missing or unreadable key in problem, when the keys are not all there.
    [[nodiscard]] static bool ReadApplications(const KeySource& get, std::vector<clsSIFApplicationItem>& items,
                                               std::string& problem);
};

} // namespace tovel
