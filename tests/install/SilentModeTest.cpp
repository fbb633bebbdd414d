// The answer file: its bytes, the message after recording, and reading it back, the
// per-product answers into a catalogue and GENERAL into the run's answers.
#include <gtest/gtest.h>

#include "catalogue/clsSIFApplication.h"
#include "common/mdlMessage.h"
#include "install/clsSilentMode.h"
#include "settings/clsIniFile.h"
#include "settings/clsPlaceholder.h"
#include "startup/Globals.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

clsSIFApplicationItem Product(const std::string& code, int32_t state, const std::string& drive, const std::string& path) {
    clsSIFApplicationItem item;
    item.ProductCode = code;
    item.CheckBox = state;
    item.Selected = CheckBoxIsChecked(state);
    item.DestDrive = drive;
    item.DestPath = path;
    return item;
}

AutoIniAnswers Answers() {
    AutoIniAnswers answers;
    answers.createdWith = "Tovel Automation Suite 2026";
    answers.setupVersion = "5.2.17";
    answers.setupLanguage = 0;
    answers.idName = "Anna Berg";
    answers.idCompany = "Werk 3";
    answers.generalDrive = "D:";
    answers.installLanguage = "AB";
    answers.bus = "2";
    answers.newInstallation = false;
    return answers;
}

class SilentModeTest : public CatalogueFixture {
protected:
    std::string Bytes(const std::string& path) { return Platform().Files().ReadFile(path).value_or("<missing>"); }
};

TEST_F(SilentModeTest, RecordingWritesEveryKeyInOrderAndOverwrites) {
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("TOVBASE", CheckBoxState::kCheckedLocked, "D:", "D:\\Tovel\\Base"));
    catalogue.AddItem(Product("DOCVIEW", CheckBoxState::kUnchecked, "", ""));

    clsIniFile expected;
    expected.SetFullPath(bed_->folder + "expected.ini");
    expected.SetSectionName("GENERAL");
    expected.PutString("CreatedWith", "Tovel Automation Suite 2026");
    expected.PutString("TovelSetupVersion", "5.2.17");
    expected.PutString("Setuplanguage", "0");
    expected.PutString("IdName", "Anna Berg");
    expected.PutString("IdCompany", "Werk 3");
    expected.PutString("GeneralDrive", "D:");
    expected.PutString("InstallLanguage", "AB");
    expected.PutString("Bus", "2");
    expected.PutString("NewInstallation", "False");
    expected.SetSectionName("DIALOGS");
    expected.PutString("LastDialog", "frmCustomSetup");
    expected.SetSectionName("TOVBASE");
    expected.PutString("DestinationDrive", "D:");
    expected.PutString("Selected", "True");
    expected.PutString("DestinationPath", "D:\\Tovel\\Base");
    expected.SetSectionName("DOCVIEW");
    expected.PutString("DestinationDrive", "");
    expected.PutString("Selected", "False");
    expected.PutString("DestinationPath", "");

    clsSilentMode record;
    record.SetTargetPath(bed_->folder);
    EXPECT_EQ(record.RecordPath(), bed_->folder + "Tovel_Auto.ini");
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(record.RecordPath(), "[OLD]\r\nIdName=Someone else\r\n"));
    ASSERT_TRUE(record.CreateAutoIni2(Answers(), catalogue));
    EXPECT_EQ(Bytes(record.RecordPath()), Bytes(bed_->folder + "expected.ini"));
    ASSERT_TRUE(record.CreateAutoIni(Answers(), catalogue));
    EXPECT_EQ(Bytes(record.RecordPath()), Bytes(bed_->folder + "expected.ini")) << "recording twice";

    clsSilentMode unset;
    EXPECT_EQ(unset.RecordPath(), WindowsDir + "Tovel_Auto.ini");

    clsSilentMode nowhere;
    nowhere.SetTargetPath(bed_->folder + "no such folder\\");
    EXPECT_FALSE(nowhere.CreateAutoIni(Answers(), catalogue));
}

TEST_F(SilentModeTest, TheMessageAfterRecordingNamesTheOldFileName) {
    std::string shown;
    int style = -1;
    SetMessageBoxHandler([&](const std::string& text, int s, const std::string&) {
        shown = text;
        style = s;
        return mb::kIdOk;
    });
    clsSilentMode::ShowRecordedMessage();
    SetMessageBoxHandler({});
    EXPECT_EQ(shown, "The recording is finished. The file Tovel_AutoFile.ini was created in the windowsfolder.");
    EXPECT_EQ(style & 7, mb::kOk);
}

TEST_F(SilentModeTest, RecordedSelectionReadsBackIntoTheCatalogue) {
    clsSIFApplication recorded;
    recorded.AddItem(Product("TOVBASE", CheckBoxState::kCheckedLocked, "D:", "D:\\Tovel\\Base"));
    recorded.AddItem(Product("DESIGNER", CheckBoxState::kChecked, "E:", "E:\\Tovel\\Designer"));
    recorded.AddItem(Product("DOCVIEW", CheckBoxState::kUnchecked, "", ""));
    recorded.AddItem(Product("SER9X", CheckBoxState::kUncheckedLocked, "C:", "%WindowsFolder%Tovel"));
    clsSilentMode record;
    record.SetTargetPath(bed_->folder);
    ASSERT_TRUE(record.CreateAutoIni(Answers(), recorded));

    // The silent run's catalogue starts from the disc's own states and paths.
    clsSIFApplication silent;
    silent.AddItem(Product("TOVBASE", CheckBoxState::kCheckedLocked, "C:", "C:\\Program Files\\Tovel"));
    silent.AddItem(Product("DESIGNER", CheckBoxState::kUnchecked, "C:", "C:\\Program Files\\Tovel"));
    silent.AddItem(Product("DOCVIEW", CheckBoxState::kChecked, "C:", "C:\\Program Files\\Tovel"));
    silent.AddItem(Product("SER9X", CheckBoxState::kUncheckedLocked, "C:", "C:\\Program Files\\Tovel"));
    silent.AddItem(Product("NEWPROD", CheckBoxState::kChecked, "C:", "C:\\New"));
    clsPlaceholder placeholders;
    placeholders.SetFolders({"C:\\WINNT\\system32\\", "C:\\WINNT\\", "C:\\", "D:\\"});
    clsIniFile answers;
    answers.SetFullPath(record.RecordPath());
    clsSilentMode::ReadApplications(answers, silent, &placeholders);

    for (int i = 1; i <= recorded.Count(); ++i) {
        const auto& was = *recorded.Item(i);
        const auto& now = *silent.Item(i);
        EXPECT_EQ(now.Selected, was.Selected) << was.ProductCode;
        EXPECT_EQ(now.CheckBox, was.CheckBox) << was.ProductCode;
        if (was.DestDrive.empty()) {
            EXPECT_EQ(now.DestDrive, "C:") << "an empty drive keeps the destination";
            EXPECT_EQ(now.DestPath, "C:\\Program Files\\Tovel");
            continue;
        }
        EXPECT_EQ(now.DestDrive, was.DestDrive) << was.ProductCode;
        EXPECT_EQ(now.DestPath, placeholders.CheckForPlaceholder(was.DestPath)) << was.ProductCode;
    }
    EXPECT_EQ(silent.Item(4)->DestPath, "C:\\WINNT\\Tovel");
    EXPECT_TRUE(silent.Item(5)->Selected) << "a product the file does not know keeps its selection";
    EXPECT_EQ(silent.Item(5)->DestPath, "C:\\New");
}

TEST_F(SilentModeTest, SelectedInTheFileGivesWayToTheRecordsOwnState) {
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "answers.ini",
                                                   "[LOCKED]\r\nSelected=True\r\n[NOTHERE]\r\nSelected=Yes\r\n"
                                                   "[LATER]\r\nSelected=True\r\n[BROKEN]\r\nSelected=maybe\r\n"));
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("LOCKED", CheckBoxState::kUncheckedLocked, "", ""));
    catalogue.AddItem(Product("NOTHERE", CheckBoxState::kUnchecked, "", ""));
    catalogue.Item(2)->AddAction("$DoNotInstall$");
    catalogue.Item(2)->AddAction("$Warning$");
    catalogue.AddItem(Product("LATER", CheckBoxState::kUnchecked, "", ""));
    catalogue.Item(3)->AddAction("$donotinstall$");   // not exactly the action: no test hit
    catalogue.AddItem(Product("BROKEN", CheckBoxState::kChecked, "", ""));
    clsIniFile answers;
    answers.SetFullPath(bed_->folder + "answers.ini");
    clsSilentMode::ReadApplications(answers, catalogue, nullptr);
    EXPECT_FALSE(catalogue.Item(1)->Selected) << "cleared and locked stays cleared";
    EXPECT_FALSE(catalogue.Item(2)->Selected) << "any do-not-install action";
    EXPECT_TRUE(clsSilentMode::DoNotInstall(*catalogue.Item(2)));
    EXPECT_FALSE(clsSilentMode::DoNotInstall(*catalogue.Item(3)));
    EXPECT_TRUE(catalogue.Item(3)->Selected);
    EXPECT_EQ(catalogue.Item(3)->CheckBox, CheckBoxState::kChecked);
    EXPECT_FALSE(catalogue.Item(4)->Selected) << "a damaged value reads as False";
    EXPECT_EQ(catalogue.Item(4)->CheckBox, CheckBoxState::kUnchecked);

    clsIniFile missing;
    missing.SetFullPath(bed_->folder + "missing.ini");
    clsSilentMode::ReadApplications(missing, catalogue, nullptr);
    EXPECT_TRUE(catalogue.Item(3)->Selected) << "a missing file changes nothing";
}

TEST_F(SilentModeTest, GeneralAnswersReadBackAndReachEveryProduct) {
    clsSIFApplication recorded;
    recorded.AddItem(Product("TOVBASE", CheckBoxState::kCheckedLocked, "D:", "D:\\Tovel\\Base"));
    clsSilentMode record;
    record.SetTargetPath(bed_->folder);
    ASSERT_TRUE(record.CreateAutoIni(Answers(), recorded));

    clsSIFApplication catalogue;
    catalogue.AddItem(Product("TOVBASE", CheckBoxState::kCheckedLocked, "C:", "C:\\Program Files\\Tovel"));
    catalogue.AddItem(Product("NOSECTION", CheckBoxState::kChecked, "C:", "C:\\New"));
    AutoIniAnswers read;
    clsSilentMode silent;
    ASSERT_TRUE(silent.ReadAutoIni2(record.RecordPath(), catalogue, read));
    const AutoIniAnswers want = Answers();
    EXPECT_EQ(silent.CDTitle(), want.createdWith);
    EXPECT_EQ(silent.TovelSetupVersion(), want.setupVersion);
    EXPECT_EQ(read.setupLanguage, want.setupLanguage);
    EXPECT_EQ(read.installLanguage, want.installLanguage);
    EXPECT_EQ(read.bus, want.bus);
    EXPECT_FALSE(read.newInstallation) << "NewInstallation=False is an update";
    for (const auto& item : catalogue.Items()) {
        EXPECT_EQ(item.UserName, "Anna Berg") << item.ProductCode;
        EXPECT_EQ(item.CompanyName, "Werk 3") << item.ProductCode;
    }
    EXPECT_EQ(catalogue.Item(1)->DestPath, "D:\\Tovel\\Base");
    EXPECT_EQ(catalogue.Item(2)->DestDrive, "D:") << "the general drive, the product having no section";
    const auto lines = LogLines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0], "ReadAutoIni with Path=" + record.RecordPath() + " ");
    EXPECT_EQ(lines[1], "ReadAutoIni initilized Path=" + record.RecordPath() + " ");
    EXPECT_EQ(lines[2], "Readautoini Fullpath=" + record.RecordPath() + " ");
}

TEST_F(SilentModeTest, DamagedOrEmptyGeneralValuesKeepTheRunsOwn) {
    const std::string path = WriteFile("damaged\\Tovel_Auto.ini",
                                       "[GENERAL]\r\nSetuplanguage=9\r\nIdName=\r\nIdCompany=Werk 5\r\n"
                                       "GeneralDrive=Laufwerk D\r\nInstallLanguage=AZ\r\nBus=12\r\n"
                                       "NewInstallation=Vielleicht\r\n");
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("TOVBASE", CheckBoxState::kChecked, "C:", "C:\\Tovel"));
    catalogue.Item(1)->UserName = "Jane Roe";
    AutoIniAnswers answers = Answers();
    clsSilentMode silent;
    ASSERT_TRUE(silent.ReadAutoIni2(path, catalogue, answers));
    EXPECT_EQ(answers.setupLanguage, 0);
    EXPECT_EQ(answers.idName, "Anna Berg");
    EXPECT_EQ(answers.idCompany, "Werk 5");
    EXPECT_EQ(answers.generalDrive, "D:");
    EXPECT_EQ(answers.installLanguage, "AB");
    EXPECT_EQ(answers.bus, "2");
    EXPECT_FALSE(answers.newInstallation);
    EXPECT_TRUE(catalogue.Item(1)->Selected) << "no section: the disc's own selection";
    const std::string log = LogText();
    for (const char* bad : {"Setuplanguage=9", "GeneralDrive=Laufwerk D", "InstallLanguage=AZ", "Bus=12",
                            "NewInstallation=Vielleicht"}) {
        EXPECT_NE(log.find(std::string("Readautoini: ") + bad + " is not a valid value; the setting stays as it was."),
                  std::string::npos)
            << bad << "\n" << log;
    }
}

TEST_F(SilentModeTest, TheDiscsFileWinsOverTheWindowsFolderAndAMissingFileChangesNothing) {
    const std::string savedHome = HomePath;
    const std::string savedWindows = WindowsDir;
    HomePath = bed_->folder + "disc\\";
    WindowsDir = bed_->folder + "windows\\";
    (void)WriteFile("windows\\Tovel_Auto.ini", "[GENERAL]\r\nIdName=From Windows\r\n");
    clsSilentMode silent;
    EXPECT_EQ(silent.ReadPath(), WindowsDir + "Tovel_Auto.ini");
    (void)WriteFile("disc\\Tovel_Auto.ini", "[GENERAL]\r\nIdName=From the disc\r\n");
    EXPECT_EQ(silent.ReadPath(), HomePath + "Tovel_Auto.ini");
    clsSIFApplication catalogue;
    AutoIniAnswers answers;
    EXPECT_TRUE(silent.ReadAutoIni(catalogue, answers));   // no early return: the folders are put back below
    EXPECT_EQ(answers.idName, "From the disc");

    AutoIniAnswers untouched = Answers();
    clsSilentMode missing;
    EXPECT_FALSE(missing.ReadAutoIni2(bed_->folder + "nowhere\\Tovel_Auto.ini", catalogue, untouched));
    EXPECT_EQ(untouched.idName, "Anna Berg");
    EXPECT_NE(LogText().find("Error in Modul clsSilentMode Funktion ReadAutoIni: " + bed_->folder +
                             "nowhere\\Tovel_Auto.ini does not exist."),
              std::string::npos);
    HomePath = savedHome;
    WindowsDir = savedWindows;
}

TEST_F(SilentModeTest, SelectionCodesThreeAndFiveAreNeverInstalled) {
    ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "codes.ini",
                                                   "[THREE]\r\nSelected=True\r\n[FIVE]\r\nSelected=True\r\n"
                                                   "[FOUR]\r\nSelected=True\r\n"));
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("THREE", 3, "", ""));
    catalogue.AddItem(Product("FIVE", 5, "", ""));
    catalogue.AddItem(Product("FOUR", CheckBoxState::kCheckedLocked, "", ""));
    catalogue.Item(1)->Selected = true;
    catalogue.Item(2)->Selected = true;
    clsIniFile answers;
    answers.SetFullPath(bed_->folder + "codes.ini");
    clsSilentMode::ReadApplications(answers, catalogue, nullptr);
    EXPECT_FALSE(catalogue.Item(1)->Selected);
    EXPECT_FALSE(catalogue.Item(2)->Selected);
    EXPECT_TRUE(catalogue.Item(3)->Selected);
}

} // namespace
} // namespace tovel::test
