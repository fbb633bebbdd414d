// The component page's worked example of docs/WIZARD.md on the sample disc's own description
// files, detected on a fresh machine (where no project database is installed).
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFDetection.h"
#include "platform/clsPlatform.h"
#include "tests/support/BedFixture.h"
#include "wizard/clsSelectionWalk.h"

namespace tovel::test {
namespace {

class SampleDiscWalkTest : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        const char* files[] = {
            "Base Services/BaseServices.ssf", "License Manager/LicenseManager.ssf", "Designer/Designer.ssf",
            "HMI Runtime/HmiRuntime.ssf",     "Alarm Manager/AlarmManager.ssf",     "Web Panel/WebPanel.ssf",
            "Drivers/Ethernet/EthernetDriver.ssf", "Drivers/PROFIBUS/ProfibusDriver.ssf",
            "Drivers/Serial/SerialDriver.ssf", "Document Viewer/DocumentViewer.ssf",
            "Cd_2/Report Designer/ReportDesigner.ssf", "Cd_2/Samples/Samples.ssf"};
        const clsSIFDetection detection(nullptr);
        for (const char* file : files) {
            std::ifstream in(std::string(TOVEL_SAMPLE_DISC) + "/Products/" + file, std::ios::binary);
            std::ostringstream bytes;
            bytes << in.rdbuf();
            const std::string copy = bed_->folder + "product.ssf";
            ASSERT_TRUE(Platform().Files().WriteFileAtomic(copy, bytes.str())) << file;
            clsSIFApplicationItem item;
            item.Read(copy, bed_->folder);
            detection.Detect(item);
            // Only Base Services checked, as the example starts.
            item.CheckBox = item.AlwaysInstall ? CheckBoxState::kCheckedLocked : CheckBoxState::kUnchecked;
            item.Selected = item.AlwaysInstall;
            catalogue_.AddItem(item);
        }
    }
    int Index(const char* code) { return catalogue_.IndexOfProductCode(code); }
    int32_t State(const char* code) { return catalogue_.Item(Index(code))->CheckBox; }
    std::vector<int32_t> States() {
        std::vector<int32_t> states;
        for (const auto& item : catalogue_.Items()) states.push_back(item.CheckBox);
        return states;
    }

    clsSIFApplication catalogue_;
};

TEST_F(SampleDiscWalkTest, TheWorkedExample) {
    clsSelectionWalk walk(catalogue_);
    walk.Establish();
    const auto start = States();
    ASSERT_EQ(State("TOVBASE"), CheckBoxState::kCheckedLocked);

    walk.Toggle(Index("WEBPANEL"));
    EXPECT_EQ(State("ETHDRV"), CheckBoxState::kCheckedLocked);
    EXPECT_EQ(walk.LockedBy(Index("ETHDRV")), "WEBPANEL");

    walk.Toggle(Index("HMIRT"));
    EXPECT_EQ(State("LICMGR"), CheckBoxState::kCheckedLocked);
    EXPECT_EQ(State("ALARMMGR"), CheckBoxState::kChecked);
    EXPECT_EQ(State("WEBPANEL"), CheckBoxState::kChecked);
    EXPECT_EQ(catalogue_.Item(Index("HMIRT"))->SharedCount, 1);

    walk.Toggle(Index("WEBPANEL"));
    EXPECT_EQ(State("ETHDRV"), CheckBoxState::kUnchecked);
    walk.Toggle(Index("HMIRT"));
    EXPECT_EQ(States(), start);

    walk.Toggle(Index("SAMPLES"));
    EXPECT_EQ(State("DOCVIEW"), CheckBoxState::kUnchecked) << "the failed condition's state";

    walk.Toggle(Index("REPORT"));
    EXPECT_EQ(State("DOCVIEW"), CheckBoxState::kCheckedLocked);
    walk.Toggle(Index("REPORT"));
    EXPECT_EQ(State("DOCVIEW"), CheckBoxState::kUncheckedLocked);
    walk.Toggle(Index("DESIGNER"));
    EXPECT_EQ(State("DOCVIEW"), CheckBoxState::kChecked);

    // The drivers' toggle pair: one clears the other.
    walk.Toggle(Index("PBDRV"));
    walk.Toggle(Index("SER9X"));
    EXPECT_FALSE(catalogue_.Item(Index("PBDRV"))->Selected);
    walk.Toggle(Index("PBDRV"));
    EXPECT_FALSE(catalogue_.Item(Index("SER9X"))->Selected);
    EXPECT_TRUE(catalogue_.Item(Index("PBDRV"))->Selected);
}

} // namespace
} // namespace tovel::test
