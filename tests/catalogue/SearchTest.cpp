// The search for description files: which files it finds and in which order, how it tells
// products from packets, its log section, stopping midway, and the status label's text.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSSFSearch.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

TEST(SearchStatusLabel, ShowsTheDriveOrTheServer) {
    const struct {
        const char* path;
        const char* shown;
    } cases[] = {
        {"D:\\Products\\Sub", "D:"},
        {"E:\\", "E:"},
        {"\\\\srv\\share\\Products", "\\\\srv"},
        {"\\\\server4567890\\share", "\\\\server45 ..."},   // 15 characters with the backslashes
        {"\\\\server456789\\share", "\\\\server456789"},     // 14 stay whole
        {"\\\\longservername", "\\\\longserv ..."},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(clsSSFSearch::StatusLabelText(c.path), c.shown) << c.path;
}

class Search : public test::CatalogueFixture {
protected:
    void TearDown() override {
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        CatalogueFixture::TearDown();
    }
    // Setups.ini names the product folder; the settings are read again as at a start.
    void UseProductFolder(const std::string& relative) {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\nPath=" + bed_->folder + relative + "\r\n");
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder->SetSettings(gSetupsIni.get());
    }
};

TEST_F(Search, FindsEveryDescriptionFileAndReadsItByItsKind) {
    WriteFile("Disc\\Setups.ssf.bak", "[GENERAL]\r\nFileType=ssf\r\nProductCode=BACKUP\r\n");
    WriteFile("Disc\\z.SSF", "[GENERAL]\r\nFileType=SSF\r\nProductCode=Z\r\n[DEPENDENCIES]\r\nDependence1=Y\r\n");
    WriteFile("Disc\\b\\y.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=Y\r\n");
    WriteFile("Disc\\A\\deep\\x.ssf", "[GENERAL]\r\nFileType=Collection\r\nProductCode=pack\r\nProductCode1=Z\r\n");
    WriteFile("Disc\\A\\notype.ssf", "[GENERAL]\r\nProductCode=NOTYPE\r\n");
    WriteFile("Disc\\A\\other.ssf", "[GENERAL]\r\nFileType=readme\r\nProductCode=OTHER\r\n");
    WriteFile("Disc\\A\\readme.txt", "[GENERAL]\r\nFileType=ssf\r\nProductCode=TXT\r\n");
    UseProductFolder("Disc");
    gApplications.AddItem({});   // left from an earlier search: emptied first

    std::vector<std::string> shown;
    ASSERT_TRUE(clsSSFSearch().Run([&](const std::string& folder) {
        shown.push_back(folder);
        return true;
    }));
    const std::string disc = bed_->folder + "Disc\\";
    EXPECT_EQ(shown, (std::vector<std::string>{disc, disc + "A\\", disc + "A\\deep\\", disc + "b\\"}));
    ASSERT_EQ(gApplications.Count(), 2);
    EXPECT_EQ(gApplications.Item(1)->ProductCode, "Y");   // ordered: Z waits for Y
    EXPECT_EQ(gApplications.Item(2)->ProductCode, "Z");
    ASSERT_EQ(gPackets.Count(), 1);
    EXPECT_EQ(gPackets.Item(1)->ProductCode, "PACK");

    const std::vector<std::string> lines = LogLines();
    const std::vector<std::string> head = {"", std::string(84, '-'), "SSFFiles Infos:", "Gefundene SSFFiles ",
                                           disc + "z.SSF ", disc + "A\\notype.ssf ", disc + "A\\other.ssf ",
                                           disc + "A\\deep\\x.ssf ", disc + "b\\y.ssf "};
    ASSERT_GE(lines.size(), head.size());
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + static_cast<long>(head.size())), head);
}

TEST_F(Search, StoppedMidwayKeepsWhatItReadInOrder) {
    WriteFile("Disc\\a.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=A\r\n[DEPENDENCIES]\r\nDependence1=B\r\n");
    WriteFile("Disc\\b.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=B\r\n");
    WriteFile("Disc\\Sub\\c.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=C\r\n");
    UseProductFolder("Disc");
    int folders = 0;
    EXPECT_FALSE(clsSSFSearch().Run([&](const std::string&) { return ++folders < 2; }));
    ASSERT_EQ(gApplications.Count(), 2);
    EXPECT_EQ(gApplications.Item(1)->ProductCode, "B");
    EXPECT_EQ(gApplications.Item(2)->ProductCode, "A");
}

TEST_F(Search, WithoutAProductFolderTheProgramFolderIsSearched) {
    HomePath = bed_->folder;
    WriteFile("Prod\\p.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=P\r\n");
    EXPECT_EQ(clsSSFSearch::ProductFolder(), bed_->folder);
    EXPECT_TRUE(clsSSFSearch().Run());
    ASSERT_EQ(gApplications.Count(), 1);
    EXPECT_EQ(gApplications.Item(1)->SIFFileName, bed_->folder + "Prod\\p.ssf");
    HomePath.clear();
}

} // namespace
} // namespace tovel
