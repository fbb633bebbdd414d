// The installation order: the fast ordering against the plain pass-by-pass algorithm on many
// random lists, the cycle log, and the order after the packets.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsDependencyOrder.h"
#include "common/clsString.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

// The passes as a person would run them by hand: over the unplaced entries in list order,
// appending each whose dependencies are all placed, until a pass places nothing.
std::vector<size_t> PassByPass(const std::vector<OrderEntry>& entries) {
    std::vector<std::string> present;
    for (const auto& e : entries) present.push_back(clsString::UpperAscii(e.code));
    std::vector<size_t> result;
    std::vector<std::string> placedCodes;
    std::vector<bool> placed(entries.size(), false);
    for (bool grew = true; grew;) {
        grew = false;
        for (size_t i = 0; i < entries.size(); ++i) {
            if (placed[i]) continue;
            const bool ready = std::all_of(entries[i].dependencies.begin(), entries[i].dependencies.end(), [&](const std::string& d) {
                const std::string code = clsString::UpperAscii(d);
                const bool known = std::find(present.begin(), present.end(), code) != present.end();
                return !known || std::find(placedCodes.begin(), placedCodes.end(), code) != placedCodes.end();
            });
            if (!ready) continue;
            placed[i] = grew = true;
            result.push_back(i);
            placedCodes.push_back(clsString::UpperAscii(entries[i].code));
        }
    }
    for (size_t i = 0; i < entries.size(); ++i) {
        if (!placed[i]) result.push_back(i);
    }
    return result;
}

TEST(DependencyOrder, GivesExactlyTheOrderOfThePasses) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 400; ++round) {
        const size_t count = 1 + random() % 14;
        std::vector<OrderEntry> entries(count);
        for (size_t i = 0; i < count; ++i) {
            // Few distinct codes, so duplicates, self links, cycles and missing codes all occur.
            entries[i].code = std::string(1, static_cast<char>('a' + random() % 12));
            if (random() % 3 == 0) entries[i].code[0] = static_cast<char>(entries[i].code[0] - 'a' + 'A');
            const size_t links = random() % 4;
            for (size_t l = 0; l < links; ++l) entries[i].dependencies.push_back(std::string(1, static_cast<char>('a' + random() % 14)));
        }
        const OrderResult result = clsDependencyOrder::Order(entries);
        ASSERT_EQ(result.order, PassByPass(entries)) << "round " << round;
    }
}

TEST(DependencyOrder, SimpleCasesAndWhatIsReported) {
    const auto order = [](const std::vector<OrderEntry>& entries) { return clsDependencyOrder::Order(entries); };
    EXPECT_TRUE(order({}).order.empty());
    EXPECT_EQ(order({{"A", {}}, {"B", {}}, {"C", {}}}).order, (std::vector<size_t>{0, 1, 2}));
    EXPECT_EQ(order({{"A", {"B"}}, {"B", {}}}).order, (std::vector<size_t>{1, 0}));
    const OrderResult cycle = order({{"A", {"B"}}, {"B", {"A"}}, {"C", {}}});
    EXPECT_EQ(cycle.placed, 1u);
    EXPECT_EQ(cycle.order, (std::vector<size_t>{2, 0, 1}));
    const OrderResult self = order({{"A", {"a"}}});
    EXPECT_EQ(self.placed, 0u);
    const OrderResult missing = order({{"A", {"GONE", "B"}}, {"B", {}}});
    EXPECT_EQ(missing.order, (std::vector<size_t>{1, 0}));
    ASSERT_EQ(missing.missing.size(), 1u);
    EXPECT_EQ(missing.missing[0], (std::pair<size_t, std::string>{0, "GONE"}));
}

class SortItems : public test::CatalogueFixture {
protected:
    void TearDown() override {
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        CatalogueFixture::TearDown();
    }
    static void AddProduct(const std::string& code, const std::vector<std::string>& dependencies) {
        clsSIFApplicationItem item;
        item.ProductCode = code;
        for (const auto& d : dependencies) item.AddDependence(d);
        gApplications.AddItem(item);
    }
    static std::vector<std::string> Codes() {
        std::vector<std::string> codes;
        for (const auto& item : gApplications.Items()) codes.push_back(item.ProductCode);
        return codes;
    }
};

TEST_F(SortItems, ACycleIsLoggedAndItsProductsGoLast) {
    gCommonSection.SortItemsDependencies(0);   // an empty list: nothing to say
    EXPECT_TRUE(LogLines().empty());
    AddProduct("A", {"B"});
    AddProduct("B", {"A"});
    AddProduct("C", {"D"});
    AddProduct("D", {});
    AddProduct("E", {"NOWHERE"});
    gCommonSection.SortItemsDependencies(0);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"D", "E", "C", "A", "B"}));
    const std::vector<std::string> expected = {
        "Product E depends on NOWHERE, which is not on this disc: the dependency does not hold up the order. ",
        "Error in Modul clsSIFApplication Funktion SortItemDependencies ",
        "Error Message: eventuell Circularer Vorgang. ",
        "Folgende Produkte werden in der Liste nicht aufgeführt: ",
        "A ",
        "B ",
        "(These entries are installed last, in the order they were found.) ",
    };
    EXPECT_EQ(LogLines(), expected);
}

TEST_F(SortItems, PacketsOrderByTheirOwnLinksAndTheCatalogueFollowsThem) {
    AddProduct("P1", {});
    AddProduct("P2", {});
    AddProduct("P3", {});
    AddProduct("LOOSE", {});
    clsSIFPacketItem full;
    full.ProductCode = "FULL";
    full.Add("p3");
    full.Add("P1");
    full.AddDependence("BASE");
    full.AddDependence("P2");   // a product, not a packet: no complaint
    clsSIFPacketItem base;
    base.ProductCode = "BASE";
    base.Add("P2");
    base.Add("P3");   // already taken by the first packet that names it
    gPackets.AddItem(full);
    gPackets.AddItem(base);
    gCommonSection.SortItemsDependencies(-1);
    ASSERT_EQ(gPackets.Count(), 2);
    EXPECT_EQ(gPackets.Item(1)->ProductCode, "BASE");
    EXPECT_TRUE(LogLines().empty());
    gCommonSection.SortItemsInPacketOrder();
    EXPECT_EQ(Codes(), (std::vector<std::string>{"P2", "P3", "P1", "LOOSE"}));
}

} // namespace
} // namespace tovel
