#include "app/clsPlanDot.h"

#include <set>
#include <sstream>

#include "catalogue/clsCatalogueLinks.h"
#include "common/clsString.h"

namespace tovel {

namespace {

struct LinkStyle {
    const char* name;
    const char* attributes;
};

// One look per link type, so a graph of many links still tells them apart in black and white.
constexpr LinkStyle kLinkStyles[] = {
    {"recommend", "color=blue, style=dashed"},
    {"force", "color=red3, style=bold"},
    {"setreset", "color=darkgreen, arrowhead=diamond"},
    {"toggle", "color=darkorange, style=dotted, arrowhead=odot"},
    {"dependend", "color=purple, arrowhead=empty"},
    {"dependforce", "color=purple, style=bold, arrowhead=box"},
    {"other", "color=gray40, style=dashed, arrowhead=open"},
};
constexpr const char* kAfterStyle = "color=black";
constexpr const char* kCircleStyle = "color=red, penwidth=2";
constexpr const char* kMissingEdgeStyle = "color=red, style=dashed";

/// A dot string literal: quotes and backslashes escaped, line ends as \n.
std::string Quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') out += '\\';
        if (c == '\n') out += "\\n";
        else if (c != '\r') out += c;
    }
    return out + "\"";
}

std::string ProductId(const std::string& code) { return Quoted("product:" + clsString::UpperAscii(code)); }
std::string PacketId(const std::string& code) { return Quoted("packet:" + clsString::UpperAscii(code)); }
std::string MissingId(const std::string& code) { return Quoted("missing:" + clsString::UpperAscii(code)); }

const char* StyleOf(DependenceType type) {
    const auto index = static_cast<size_t>(type);
    return index < std::size(kLinkStyles) ? kLinkStyles[index].attributes : kLinkStyles[std::size(kLinkStyles) - 1].attributes;
}

std::string Legend() {
    std::string text = "links: ";
    for (size_t i = 0; i < std::size(kLinkStyles); ++i) {
        text += std::string(kLinkStyles[i].name) + " (" + kLinkStyles[i].attributes + ")" + (i % 3 == 2 ? "\n" : "; ");
    }
    return text + "after: black; grey: installation order; red: circle or missing code";
}

class Graph {
public:
    Graph(const clsSIFApplication& applications, const clsSIFPacket& packets)
        : applications_(applications), packets_(packets), links_(clsCatalogueLinks::Find(applications, packets)) {
        for (const auto& cycle : links_.productCycles) AddAll(circleProducts_, cycle);
        for (const auto& cycle : links_.packetCycles) AddAll(circlePackets_, cycle);
        for (const auto& m : links_.missing) missingCodes_.insert(clsString::UpperAscii(m.code));
        for (const auto& item : applications.Items()) productCodes_.insert(clsString::UpperAscii(item.ProductCode));
        for (const auto& packet : packets.Items()) packetCodes_.insert(clsString::UpperAscii(packet.ProductCode));
    }

    std::string Text(const std::string& productFolder) {
        out_ << "digraph catalogue {\n  rankdir=LR;\n  node [shape=box, fontname=\"Helvetica\", fontsize=10];\n"
             << "  edge [fontname=\"Helvetica\", fontsize=8];\n  labelloc=t;\n  label="
             << Quoted("Catalogue of " + productFolder + "\n" + Legend()) << ";\n";
        Products();
        Order();
        Packets();
        Missing();
        out_ << "}\n";
        return out_.str();
    }

private:
    static void AddAll(std::set<std::string>& set, const std::vector<std::string>& codes) {
        for (const auto& code : codes) set.insert(clsString::UpperAscii(code));
    }

    void Products() {
        for (int i = 1; i <= applications_.Count(); ++i) {
            const auto& item = *applications_.Item(i);
            const bool circle = circleProducts_.contains(clsString::UpperAscii(item.ProductCode));
            out_ << "  " << ProductId(item.ProductCode) << " [label="
                 << Quoted(std::to_string(i) + ". " + item.ProductCode + "\n" + item.Description + (circle ? "\n(in a circle)" : ""))
                 << (item.Selected ? "" : ", style=dashed") << (circle ? ", color=red, penwidth=2" : "") << "];\n";
        }
        for (const auto& item : applications_.Items()) {
            for (const auto& code : item.Dependencies()) After(ProductId(item.ProductCode), item.ProductCode, code, circleProducts_, ProductId);
            for (const auto& link : item.SetupDependencies()) {
                const std::string type = link.type == DependenceType::Other ? item.DependenceTypeOther : std::string(DependenceTypeText(link.type));
                Edge(ProductId(item.ProductCode), link.productCode, ProductId, type, StyleOf(link.type));
            }
        }
    }

    // The installation order as a grey chain that also lays the products out from left to right.
    void Order() {
        for (int i = 2; i <= applications_.Count(); ++i) {
            out_ << "  " << ProductId(applications_.Item(i - 1)->ProductCode) << " -> " << ProductId(applications_.Item(i)->ProductCode)
                 << " [color=gray70, arrowhead=none, weight=10];\n";
        }
    }

    void Packets() {
        for (const auto& packet : packets_.Items()) {
            const bool circle = circlePackets_.contains(clsString::UpperAscii(packet.ProductCode));
            out_ << "  " << PacketId(packet.ProductCode) << " [shape=folder, label="
                 << Quoted(packet.ProductCode + "\n" + packet.Description + (circle ? "\n(in a circle)" : ""))
                 << (circle ? ", color=red, penwidth=2" : "") << "];\n";
            for (const auto& code : packet.ProductCodes()) Edge(PacketId(packet.ProductCode), code, ProductId, "", "color=gray50, style=dotted");
            for (const auto& code : packet.Dependencies()) {
                const bool isPacket = packetCodes_.contains(clsString::UpperAscii(code));
                After(PacketId(packet.ProductCode), packet.ProductCode, code, isPacket ? circlePackets_ : circleProducts_,
                      isPacket ? PacketId : ProductId);
            }
        }
    }

    void Missing() {
        for (const auto& code : missingCodes_) {
            out_ << "  " << MissingId(code) << " [label=" << Quoted(code + "\n(not on this disc)")
                 << ", color=red, fontcolor=red, style=dashed];\n";
        }
    }

    void After(const std::string& from, const std::string& fromCode, const std::string& code, const std::set<std::string>& circle,
               std::string (*id)(const std::string&)) {
        const bool inCircle = circle.contains(clsString::UpperAscii(fromCode)) && circle.contains(clsString::UpperAscii(code));
        Edge(from, code, id, "after", inCircle ? kCircleStyle : kAfterStyle, true);
    }

    // Only the order chain and the "after" arrows place the nodes, so the graph reads from left
    // to right in installation order; an "after" arrow is laid out from what it waits on.
    void Edge(const std::string& from, const std::string& code, std::string (*id)(const std::string&), const std::string& label,
              const char* style, bool placing = false) {
        const std::string upper = clsString::UpperAscii(code);
        // A packet may wait on a packet or a product; everything else names products.
        const bool missing = !productCodes_.contains(upper) && !(id == PacketId && packetCodes_.contains(upper));
        const std::string to = missing ? MissingId(code) : id(code);
        out_ << "  " << (placing ? to + " -> " + from : from + " -> " + to) << " [" << (missing ? kMissingEdgeStyle : style)
             << (label.empty() ? "" : ", label=" + Quoted(label)) << (placing ? ", dir=back" : ", constraint=false") << "];\n";
    }

    const clsSIFApplication& applications_;
    const clsSIFPacket& packets_;
    CatalogueLinks links_;
    std::set<std::string> circleProducts_;
    std::set<std::string> circlePackets_;
    std::set<std::string> missingCodes_;
    std::set<std::string> productCodes_;
    std::set<std::string> packetCodes_;
    std::ostringstream out_;
};

} // namespace

std::string clsPlanDot::Text(const clsSIFApplication& applications, const clsSIFPacket& packets, const std::string& productFolder) {
    return Graph(applications, packets).Text(productFolder);
}

} // namespace tovel
