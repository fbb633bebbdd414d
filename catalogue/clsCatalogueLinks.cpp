#include "catalogue/clsCatalogueLinks.h"

#include <unordered_set>

#include "catalogue/clsDependencyCycles.h"
#include "common/clsString.h"

namespace tovel {

namespace {

/// Codes compared as the catalogue's lookups compare them: without regard to case.
class CodeSet {
public:
    void Add(const std::string& code) { codes_.insert(clsString::UpperAscii(code)); }
    [[nodiscard]] bool Has(const std::string& code) const { return codes_.contains(clsString::UpperAscii(code)); }

private:
    std::unordered_set<std::string> codes_;
};

template <typename Record>
std::vector<std::vector<std::string>> CyclesOf(const std::vector<Record>& records) {
    std::vector<OrderEntry> entries;
    entries.reserve(records.size());
    for (const auto& record : records) entries.push_back({record.ProductCode, record.Dependencies()});
    std::vector<std::vector<std::string>> cycles;
    for (const auto& circle : clsDependencyCycles::Find(entries)) {
        std::vector<std::string> codes;
        for (const size_t index : circle) codes.push_back(entries[index].code);
        cycles.push_back(std::move(codes));
    }
    return cycles;
}

void AddMissing(std::vector<MissingCode>& missing, const std::string& from, const std::vector<std::string>& codes,
                const std::string& kind, const CodeSet& known, const CodeSet* alsoKnown = nullptr) {
    for (const auto& code : codes) {
        if (code.empty() || known.Has(code) || (alsoKnown != nullptr && alsoKnown->Has(code))) continue;
        missing.push_back({from, code, kind});
    }
}

} // namespace

CatalogueLinks clsCatalogueLinks::Find(const clsSIFApplication& applications, const clsSIFPacket& packets) {
    CodeSet products;
    for (const auto& item : applications.Items()) products.Add(item.ProductCode);
    CodeSet packetCodes;
    for (const auto& packet : packets.Items()) packetCodes.Add(packet.ProductCode);

    CatalogueLinks links;
    links.productCycles = CyclesOf(applications.Items());
    links.packetCycles = CyclesOf(packets.Items());
    for (const auto& item : applications.Items()) {
        AddMissing(links.missing, item.ProductCode, item.Dependencies(), "after", products);
        std::vector<std::string> linked;
        for (const auto& link : item.SetupDependencies()) linked.push_back(link.productCode);
        AddMissing(links.missing, item.ProductCode, linked, "link", products);
    }
    for (const auto& packet : packets.Items()) {
        AddMissing(links.missing, packet.ProductCode, packet.ProductCodes(), "product", products);
        // A packet may wait on a packet or on a product.
        AddMissing(links.missing, packet.ProductCode, packet.Dependencies(), "after", packetCodes, &products);
    }
    return links;
}

} // namespace tovel
