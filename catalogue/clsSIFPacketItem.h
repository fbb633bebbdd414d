#pragma once
// One packet: a named bundle of products that the user chooses as one line (a setup type),
// read from a description file with FileType "collection".
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mdlCatalogueCodes.h"

namespace tovel {

class clsIniFile;

/// The bus systems the bus-system page offers, in the order of its options.
enum class BusSystem : uint8_t { Profibus = 0, Ethernet = 1, Ethernet2 = 2, KWT = 3, NoBus = 4 };
inline constexpr int kBusSystemCount = 5;

/// One product a bus action brings in or takes out.
struct BusAction {
    std::string productCode;
    bool select = true;   ///< false: "-CODE" takes the product out
    bool operator==(const BusAction&) const = default;
};

class clsSIFPacketItem {
public:
    std::string ProductCode;          ///< upper case
    std::string Description;
    std::string LongDescription;
    std::string AlternativeDescription;
    bool Visible = true;
    std::string PreSelectText;        ///< PreSelect as written
    /// The packet's selection state: a check-box state code (kChecked preselects it).
    int32_t PreSelect = CheckBoxState::kUnchecked;
    bool Selected = false;
    std::string RegPath;
    std::string RegKey;
    std::string RegValue;
    /// Why the preselection is what it is, for the plan: "PreSelect=checkbox", or the
    /// registry value read and compared.
    std::string PreSelectReason;
    std::string SIFFileName;

    /// Reads a packet description file into this packet (every field starts from its default).
    void Read(const std::string& sifPath);
    /// The same from a file already bound to an INI object (its section is changed).
    void Read(clsIniFile& sif);

    // The bus actions: the text as written and the products it names.
    [[nodiscard]] const std::string& BusActionText(BusSystem bus) const { return busText_[Index(bus)]; }
    [[nodiscard]] const std::vector<BusAction>& BusActions(BusSystem bus) const { return busActions_[Index(bus)]; }
    void SetBusAction(BusSystem bus, const std::string& text);
    /// Splits a bus action text: codes separated by "," or ";", each optionally led by "+"
    /// (bring in) or "-" (take out); blanks around codes are dropped.
    [[nodiscard]] static std::vector<BusAction> ParseBusAction(const std::string& text);

    // The products of the packet, in order.
    void Add(const std::string& code) { products_.push_back(code); }
    /// Removes the first product with this code (without regard to case).
    void RemovePacket(const std::string& code);
    void Clear() { products_.clear(); }
    [[nodiscard]] int Count() const { return static_cast<int>(products_.size()); }
    /// Sorts the product codes by text.
    void Sort();
    /// The product code at a 1-based index; "" outside.
    [[nodiscard]] std::string ProdCode(int index) const;
    [[nodiscard]] const std::vector<std::string>& ProductCodes() const { return products_; }

    // DEPENDENCIES
    void AddDependence(const std::string& code) { dependencies_.push_back(code); }
    [[nodiscard]] std::string GetDependence(int index) const;
    [[nodiscard]] int DependenceCount() const { return static_cast<int>(dependencies_.size()); }
    [[nodiscard]] const std::vector<std::string>& Dependencies() const { return dependencies_; }

private:
    static size_t Index(BusSystem bus) { return static_cast<size_t>(bus); }
    void DecidePreselectionByRegistry();

    std::string busText_[kBusSystemCount];
    std::vector<BusAction> busActions_[kBusSystemCount];
    std::vector<std::string> products_;
    std::vector<std::string> dependencies_;
};

} // namespace tovel
