// The golden component page of the sample disc, chosen by its Setups.ini: a product moved to
// another drive in the page's drive list, its line, its description and the space following.
#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

constexpr int kAborted = 1602 & 0xFF;

class ComponentPageRun : public SetupRun {};

TEST_F(ComponentPageRun, TheGoldenPageMovesAProductToTheRemovableDrive) {
    UseSampleDisc();
    std::string disc = ReadDisc("Setups.ini");
    disc.insert(disc.find("[SETTINGS]\r\n") + 12, "OldForms=False\r\nGoldenComponentDialog=True\r\n");
    // The sample disc offers fixed drives only; this run lets a product go to a removable one.
    const std::string onlyFixed = "OnlyFixedDrivesAllowed=True";
    ASSERT_NE(disc.find(onlyFixed), std::string::npos);
    disc.replace(disc.find(onlyFixed), onlyFixed.size(), "OnlyFixedDrivesAllowed=False");
    WriteDisc("Setups.ini", disc);
    std::string script = kSampleDiscToInstallation;
    script.replace(script.find("click YesBtn\n"), 13, "click optYes\nclick ContinueBtn\n");
    const std::string products = "click ContinueBtn\n";
    script.replace(script.rfind(products), products.size(),
                   "focus TOVBASE\nselect DriveList = A:\nprint\n" + products + "click AbordBtn\nclick MessageButton 0\nclick DoneBtn\n");
    WriteMachine("drive_a/readme.txt", "a disk in the drive");   // the removable drive A: is there
    ASSERT_EQ(Run({}, {"--create=xppro"}, script), kAborted) << Output();
    const size_t page = Output().rfind("== frmMSICustomSetupGolden");
    ASSERT_NE(page, std::string::npos) << Output();
    const std::string shown = Output().substr(page);
    EXPECT_NE(shown.find("Base Services"), std::string::npos) << shown;
    EXPECT_NE(shown.find("Needs 120 MB on drive A:."), std::string::npos) << shown;
    EXPECT_NE(shown.find("A: 120 MB"), std::string::npos) << shown;
    EXPECT_EQ(Output().find("\n! "), std::string::npos) << Output();
    EXPECT_TRUE(Logged("Component TOVBASE moved to drive A: (was C:). ")) << ReadMachine("drive_c/TOVELSETUP.LOG");
}

} // namespace
} // namespace tovel::test
