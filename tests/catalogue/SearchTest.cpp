// The search for description files: which files it finds and in which order, how it tells
// products from packets, its log section, stopping midway, the status label's text, and what
// its listing of the folders tells about files in them.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsFolderListing.h"
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

TEST_F(Search, ItsListingAnswersAsTheDiscDoesWhereverItCanTell) {
    WriteFile("Disc\\P1\\p1.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=P1\r\n");
    WriteFile("Disc\\P1\\Setup\\Setup.exe", "MZ");
    WriteFile("Disc\\P2\\p2.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=P2\r\n");
    WriteFile("Other\\x.exe", "MZ");
    clsFolderListing listing;
    bool stopped = false;
    ASSERT_EQ(clsSSFSearch::FindSSFFiles(bed_->folder + "Disc", {}, stopped, &listing).size(), 2u);
    const std::string disc = bed_->folder + "Disc\\";
    const struct {
        std::string path;
        std::optional<bool> listed;
    } cases[] = {
        {disc + "P1\\Setup\\Setup.exe", true},
        {disc + "p1\\SETUP\\setup.EXE", true},     // names compare without case
        {disc + "P2\\Setup\\Setup.exe", false},    // its folder is not there
        {disc + "P1\\p1.ssf\\Setup.exe", false},   // nothing lies below a file
        {disc + "P1\\Setup", false},               // a folder is no file
        {disc + "P1\\Setup\\..\\p1.ssf", std::nullopt},
        {disc + "P1/Setup/Setup.exe", std::nullopt},
        {disc + "P1\\Setup\\Setup.exe.", std::nullopt},
        {disc + "P1\\Setup\\*.exe", std::nullopt},
        {bed_->folder + "Other\\x.exe", std::nullopt},   // never listed
    };
    for (const auto& c : cases) {
        const auto answer = listing.FileExists(c.path);
        EXPECT_EQ(answer, c.listed) << c.path;
        if (answer) {
            EXPECT_EQ(*answer, Platform().Files().FileExists(c.path)) << c.path;
        }
    }
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
