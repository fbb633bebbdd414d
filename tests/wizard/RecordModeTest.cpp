// Record mode at the end of the component page: the run's answers go to the answer file in
// the Windows folder, and the person hears of it only when the file was written.
#include <gtest/gtest.h>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/clsPrintLog.h"
#include "tests/support/BedFixture.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRecordMode.h"

namespace tovel::test {
namespace {

class RecordModeTest : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        windowsDir_ = WindowsDir;
        clsSIFApplicationItem item;
        item.ProductCode = "DESIGNER";
        item.UserName = "Anna Berg";
        item.CompanyName = "Werk 3";
        item.DestDrive = "D:";
        item.DestPath = "D:\\Tovel";
        gApplications.AddItem(item);
        ProductLanguages = "AB";
        SelectedBusSystem = "1";
        UpdateMode = true;
        SetMessageBoxHandler([this](const std::string& text, int, const std::string&) {
            messages_.push_back(text);
            return mb::kIdOk;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler({});
        gApplications.RemoveAllItem();
        WindowsDir = windowsDir_;
        ProductLanguages.clear();
        SelectedBusSystem = "4";
        UpdateMode = false;
        BedFixture::TearDown();
    }

    std::string windowsDir_;
    std::vector<std::string> messages_;
};

TEST_F(RecordModeTest, WritesTheRunsAnswersAndTells) {
    const AutoIniAnswers answers = clsRecordMode::Answers();
    EXPECT_EQ(answers.setupVersion, clsPrintLog::ProgramVersion());
    EXPECT_EQ(answers.idName, "Anna Berg");
    EXPECT_EQ(answers.idCompany, "Werk 3");
    EXPECT_EQ(answers.generalDrive, "D:");
    EXPECT_EQ(answers.installLanguage, "AB");
    EXPECT_EQ(answers.bus, "1");
    EXPECT_FALSE(answers.newInstallation);

    WindowsDir = bed_->folder;
    ASSERT_TRUE(clsRecordMode::Record());
    const std::string text = Platform().Files().ReadFile(bed_->folder + "Tovel_Auto.ini").value_or("");
    EXPECT_NE(text.find("IdName=Anna Berg\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("NewInstallation=False\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("[DESIGNER]\r\nDestinationDrive=D:\r\nSelected=True\r\nDestinationPath=D:\\Tovel\r\n"),
              std::string::npos)
        << text;
    ASSERT_EQ(messages_.size(), 1U);
    EXPECT_EQ(messages_[0], "The recording is finished. The file Tovel_AutoFile.ini was created in the windowsfolder.");

    WindowsDir = bed_->folder + "gone\\";
    EXPECT_FALSE(clsRecordMode::Record());
    EXPECT_EQ(messages_.size(), 1U) << "no message when nothing was written";
}

} // namespace
} // namespace tovel::test
