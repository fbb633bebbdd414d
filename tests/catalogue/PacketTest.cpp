// Packets read from real description files: codes, preselection by value and by registry, the
// bus actions, the product list, and duplicates.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSIFPacket.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

class Packet : public test::CatalogueFixture {
protected:
    clsSIFPacketItem ReadPacket(const std::string& general) {
        clsSIFPacketItem packet;
        packet.Read(WriteFile("k.ssf", "[GENERAL]\r\nFileType=collection\r\n" + general));
        return packet;
    }
};

TEST_F(Packet, ReadsCodeTextsProductsAndDependencies) {
    const auto packet = ReadPacket(
        "ProductCode=full\r\nProductCode1=BASE\r\nProductCode2=drv\r\nProductCode4=LOST\r\nVisible=0\r\n"
        "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=Full\r\nLongDescription=Everything\r\nAlternativeDescription=All\r\n"
        "[DEPENDENCIES]\r\nDependence1=BASEPACK\r\n");
    EXPECT_EQ(packet.ProductCode, "FULL");
    EXPECT_FALSE(packet.Visible);
    EXPECT_EQ(packet.ProductCodes(), (std::vector<std::string>{"BASE", "drv"}));
    EXPECT_EQ(packet.ProdCode(2), "drv");
    EXPECT_EQ(packet.ProdCode(3), "");
    EXPECT_EQ(packet.Description, "Full");
    EXPECT_EQ(packet.LongDescription, "Everything");
    EXPECT_EQ(packet.AlternativeDescription, "All");
    EXPECT_EQ(packet.GetDependence(1), "BASEPACK");

    clsSIFPacketItem copy = packet;
    copy.RemovePacket("DRV");
    copy.Add("ALPHA");
    copy.Sort();
    EXPECT_EQ(copy.ProductCodes(), (std::vector<std::string>{"ALPHA", "BASE"}));
    copy.Clear();
    EXPECT_EQ(copy.Count(), 0);

    // No product list at all: an empty packet.
    EXPECT_EQ(ReadPacket("ProductCode=EMPTY\r\n").Count(), 0);
}

TEST_F(Packet, PreselectionFromItsValueOrTheRegistry) {
    const struct {
        const char* value;
        int32_t state;
    } values[] = {{"", CheckBoxState::kUnchecked},          {"checkbox", CheckBoxState::kChecked},
                  {"CheckBox", CheckBoxState::kChecked},    {"disabledcheckbox", CheckBoxState::kCheckedLocked},
                  {"uncheckbox", CheckBoxState::kUnchecked}, {"disableduncheckbox", CheckBoxState::kUncheckedLocked},
                  {"True", CheckBoxState::kChecked},        {"1", CheckBoxState::kChecked},
                  {"no", CheckBoxState::kUnchecked},        {"maybe", CheckBoxState::kUnchecked}};
    for (const auto& v : values) {
        const auto packet = ReadPacket(std::string("ProductCode=P\r\nPreSelect=") + v.value + "\r\n");
        EXPECT_EQ(packet.PreSelect, v.state) << v.value;
        EXPECT_EQ(packet.Selected, CheckBoxIsChecked(v.state)) << v.value;
    }
    EXPECT_NE(LogText().find("Packet P: PreSelect=maybe is no known value; the packet is not preselected."), std::string::npos);

    SetRegString("Plant", "Bus", "Profibus");
    const std::string reg = "RegPath=" + RegPath("Plant") + "\r\nRegKey=Bus\r\n";
    EXPECT_EQ(ReadPacket("ProductCode=P\r\nPreSelect=uncheckbox\r\n" + reg + "RegValue=PROFIBUS\r\n").PreSelect, CheckBoxState::kChecked);
    EXPECT_EQ(ReadPacket("ProductCode=P\r\nPreSelect=checkbox\r\n" + reg + "RegValue=Ethernet\r\n").PreSelect, CheckBoxState::kUnchecked);
    // Without RegValue the registry is not asked: PreSelect stands.
    EXPECT_EQ(ReadPacket("ProductCode=P\r\nPreSelect=checkbox\r\n" + reg + "RegValue=\r\n").PreSelect, CheckBoxState::kChecked);
    // A value that is not there never matches.
    EXPECT_EQ(ReadPacket("ProductCode=P\r\nPreSelect=checkbox\r\nRegPath=" + RegPath("None") + "\r\nRegKey=Bus\r\nRegValue=x\r\n").PreSelect,
              CheckBoxState::kUnchecked);
}

TEST_F(Packet, BusActionsNameProductsToBringInOrTakeOut) {
    const auto packet = ReadPacket("ProductCode=P\r\nProfibusAction=PBDRV, +PBCFG\r\nEthernetAction= -PBDRV ; ETHDRV\r\nNoBusAction=\r\n");
    EXPECT_EQ(packet.BusActionText(BusSystem::Profibus), "PBDRV, +PBCFG");
    EXPECT_EQ(packet.BusActions(BusSystem::Profibus), (std::vector<BusAction>{{"PBDRV", true}, {"PBCFG", true}}));
    EXPECT_EQ(packet.BusActions(BusSystem::Ethernet), (std::vector<BusAction>{{"PBDRV", false}, {"ETHDRV", true}}));
    EXPECT_TRUE(packet.BusActions(BusSystem::NoBus).empty());
    EXPECT_TRUE(clsSIFPacketItem::ParseBusAction(" , ;- ,+").empty());
}

TEST_F(Packet, ASecondPacketOfTheSameCodeIsLoggedAndLeftOut) {
    clsSIFPacket packets;
    packets.Add(WriteFile("a.ssf", "[GENERAL]\r\nProductCode=abc\r\nProductCode1=X\r\n"));
    packets.Add(WriteFile("b.ssf", "[GENERAL]\r\nProductCode=ABC\r\n[LANGUAGES]\r\nLanguageX=E\r\n[E]\r\nDescription=Second\r\n"));
    ASSERT_EQ(packets.Count(), 1);
    EXPECT_EQ(packets.Item(1)->Count(), 1);
    EXPECT_EQ(packets.IndexOfProductCode("Abc"), 1);
    EXPECT_EQ(packets.IndexOfProductCode("X"), 0);
    const std::vector<std::string> expected = {"Multiple occurence of SIF Collection:  ", "   ProductCode: ABC ", "   Description: Second "};
    EXPECT_EQ(LogLines(), expected);
}

} // namespace
} // namespace tovel

namespace tovel {
namespace {

class PacketSelection : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        for (const char* code : {"BASE", "PB", "ETH", "HMI", "LOCKED", "ALWAYS"}) {
            clsSIFApplicationItem item;
            item.ProductCode = code;
            gApplications.AddItem(item);
        }
        gApplications.Item(5)->CheckBox = CheckBoxState::kUncheckedLocked;
        gApplications.Item(5)->Selected = false;
        gApplications.Item(6)->AlwaysInstall = true;
        gApplications.Item(6)->CheckBox = CheckBoxState::kCheckedLocked;
        clsSIFPacketItem runtime;
        runtime.ProductCode = "RUNTIME";
        for (const char* code : {"base", "HMI", "LOCKED"}) runtime.Add(code);
        runtime.SetBusAction(BusSystem::Profibus, "+PB,-ETH,-LOCKED,GHOST");
        runtime.SetBusAction(BusSystem::Ethernet, "eth,-Pb");
        clsSIFPacketItem other;
        other.ProductCode = "OTHER";
        other.Add("ETH");
        other.SetBusAction(BusSystem::Profibus, "ETH");
        gPackets.AddItem(runtime);
        gPackets.AddItem(other);
    }
    void TearDown() override {
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        SelectedBusSystem = "4";
        CatalogueFixture::TearDown();
    }
    static std::string Selection() {
        std::string text;
        for (const auto& item : gApplications.Items()) text += item.ProductCode + "=" + std::to_string(item.CheckBox) + " ";
        return text;
    }
};

TEST_F(PacketSelection, SelectedPacketsAndTheBusSystemDecideTheUnlockedProducts) {
    gPackets.Item(1)->Selected = true;
    gCommonSection.SelectApplicationsFromPackets();
    EXPECT_EQ(Selection(), "BASE=1 PB=2 ETH=2 HMI=1 LOCKED=8 ALWAYS=4 ");
    EXPECT_TRUE(gApplications.Item(1)->Selected);
    EXPECT_FALSE(gApplications.Item(2)->Selected);

    // Only the selected packet's entry counts: OTHER would bring in ETH.
    SelectedBusSystem = "0";
    gCommonSection.ApplyBusSystemSelection();
    EXPECT_EQ(Selection(), "BASE=1 PB=1 ETH=2 HMI=1 LOCKED=8 ALWAYS=4 ");
    EXPECT_EQ(LogLines(), std::vector<std::string>{"Could not find specified package with ProductCode: GHOST "});

    SelectedBusSystem = "1";
    gCommonSection.ApplyBusSystemSelection();
    EXPECT_EQ(Selection(), "BASE=1 PB=2 ETH=1 HMI=1 LOCKED=8 ALWAYS=4 ");

    // No bus entry for the choice, or no choice a page offers: nothing changes.
    for (const char* choice : {"4", "7", "x"}) {
        SelectedBusSystem = choice;
        gCommonSection.ApplyBusSystemSelection();
        EXPECT_EQ(Selection(), "BASE=1 PB=2 ETH=1 HMI=1 LOCKED=8 ALWAYS=4 ") << choice;
    }
}

} // namespace
} // namespace tovel
