// The page sequence: the lists of the three modes, skipping in the direction of travel, the
// recomputations before forward skips, cancel answered No and Yes, the failed start check.
// Each page's controller does what the test's script says the user did on it.
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "tests/catalogue/CatalogueFixture.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsDialogOrder.h"

namespace tovel {
namespace {

class DialogOrder;

// One visit of a page: the user's actions on it, in order ("next", "back", "cancel").
class ScriptedPage : public clsPageController {
public:
    ScriptedPage(std::string page, std::deque<std::string>& script, std::vector<std::string>& unloaded)
        : page_(std::move(page)), script_(script), unloaded_(unloaded) {}
    void Initialize() override {
        while (!script_.empty()) {
            const std::string action = script_.front();
            script_.pop_front();
            if (action == "next") return gDialogOrder->NextDialog(page_);
            if (action == "back") return gDialogOrder->PreviousDialog(page_);
            if (action == "cancel" && gDialogOrder->ClickCancel()) return;
            if (action == "stay") return;
        }
    }
    void FormQueryUnload2() override { unloaded_.push_back(page_); }

private:
    std::string page_;
    std::deque<std::string>& script_;
    std::vector<std::string>& unloaded_;
};

class DialogOrder : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        SetMessageBoxHandler([this](const std::string& text, int style, const std::string&) {
            questions_.push_back(std::to_string(style) + " " + text);
            return answer_;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler(nullptr);
        gDialogOrder.reset();
        gPackets.RemoveAllItem();
        for (bool* flag : {&SilentMode, &ContinuedAfterRestart, &UpdateMode, &SetupCancelled, &BusSystemNeeded}) *flag = false;
        OldVersionCount = 0;
        ProductLanguages.clear();
        InstalledProductsFound.clear();
        SetupLanguageCount = 5;
        CatalogueFixture::TearDown();
    }
    // Settings on top of the log switch; the Docs files need not exist for the page list.
    void Settings(const std::string& settings, const std::string& sections = "") {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n" + settings + sections);
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
    }
    void Start(std::vector<std::string> script, bool startCheckPasses = true) {
        script_.assign(script.begin(), script.end());
        clsDialogOrder::Hooks hooks;
        hooks.controllers = [this](const std::string& page) -> std::unique_ptr<clsPageController> {
            return std::make_unique<ScriptedPage>(page, script_, unloaded_);
        };
        hooks.environmentChecks = [this, startCheckPasses] {
            calls_.push_back("checks");
            return startCheckPasses;
        };
        hooks.selectFromPackets = [this] { calls_.push_back("packets"); };
        hooks.applyBusSystem = [this] { calls_.push_back("bus"); };
        hooks.endProgram = [this] { calls_.push_back("end"); };
        gDialogOrder = std::make_unique<clsDialogOrder>(hooks);
        gDialogOrder->Initialize();
        gDialogOrder->NextDialog("");
    }
    std::vector<std::string> PageNames() const {
        std::vector<std::string> names;
        for (const auto& page : gDialogOrder->Pages()) names.push_back(std::to_string(page.index) + " " + page.name);
        return names;
    }
    void AddPacket(bool selected, const std::string& busAction) {
        clsSIFPacketItem packet;
        packet.ProductCode = "P" + std::to_string(gPackets.Count());
        packet.Selected = selected;
        packet.SetBusAction(BusSystem::Ethernet, busAction);
        gPackets.AddItem(packet);
    }

    std::deque<std::string> script_;
    std::vector<std::string> unloaded_;
    std::vector<std::string> calls_;
    std::vector<std::string> questions_;
    int answer_ = mb::kIdNo;
};

using Pages = std::vector<std::string>;

TEST_F(DialogOrder, TheListsOfTheThreeModes) {
    Settings("WelcomeTimeout=0\r\nShowIdentificationForm=False\r\n",
             "[LICENSEFILES]\r\nEnglish=Docs\\License_English.txt\r\n[READMEFILES]\r\nGerman=Docs\\Readme_German.txt\r\n");
    SetupLanguageCount = 1;
    Start({});
    EXPECT_EQ(PageNames(), (Pages{"1 frmWelcome2", "2 frmSearch", "3 frmOldVersion", "4 frmLicense", "5 frmDestination",
                                  "6 frmLanguages", "7 frmUpdateOrNew", "8 frmSetupType", "9 frmBusSystem", "10 frmCustomSetup",
                                  "11 frmInstallation", "12 frmDone"}));
    Settings("");   // the defaults: a welcome pause of 2 s, identification and destination pages
    SetupLanguageCount = 2;
    Start({});
    EXPECT_EQ(PageNames().front(), "1 frmWelcome");
    EXPECT_EQ(PageNames()[1], "2 frmSetupLanguage");
    EXPECT_EQ(gDialogOrder->Pages().size(), 14u);

    ContinuedAfterRestart = true;
    Start({"next", "stay"});
    EXPECT_EQ(PageNames(), (Pages{"1 frmInstallation", "2 frmDone"}));
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmInstallation", "frmDone"}));
    SilentMode = true;   // silent wins over resumed
    Start({});
    EXPECT_EQ(PageNames(), (Pages{"1 frmSearch", "2 frmInstallation", "3 frmDone"}));
}

TEST_F(DialogOrder, PagesAreSkippedInTheDirectionOfTravel) {
    Settings("WelcomeTimeout=0\r\nShowIdentificationForm=False\r\nShowDriveSelectionForm=False\r\n",
             "[LICENSEFILES]\r\nEnglish=Docs\\License_English.txt\r\n");
    SetupLanguageCount = 1;
    // Welcome, search, (no old versions), licence; back from the licence passes the old-version
    // and search pages backwards to the welcome page; Back there does nothing.
    Start({"next", "next", "back", "back", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmWelcome2", "frmSearch", "frmLicense", "frmWelcome2"}));
    EXPECT_EQ(gDialogOrder->CurrentPage(), "frmWelcome2");
    EXPECT_EQ(unloaded_, (Pages{"frmWelcome2", "frmSearch", "frmLicense"}));
    EXPECT_EQ(calls_, (Pages{"checks", "checks"}));   // the environment checks run each time the page is reached

    // Forwards past every page that has nothing to show, on to the component page; the
    // packets decide the selection before the product-language page is passed, the bus
    // system before the bus page is.
    calls_.clear();
    Start({"next", "next", "next", "back", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmWelcome2", "frmSearch", "frmLicense", "frmCustomSetup", "frmLicense"}));
    EXPECT_EQ(calls_, (Pages{"checks", "packets", "bus"}));
}

TEST_F(DialogOrder, UpdateModeSkipsSetupTypeAndBusSystemBothWays) {
    Settings("WelcomeTimeout=0\r\nShowIdentificationForm=False\r\nShowDriveSelectionForm=False\r\nShowUpdateForm=True\r\n"
             "ShowSecondWelcomeForm=False\r\n");
    SetupLanguageCount = 1;
    InstalledProductsFound = {"Tovel Designer 5.0"};
    AddPacket(true, "ETH");
    UpdateMode = true;
    Start({"next", "next", "back", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmSearch", "frmUpdateOrNew", "frmCustomSetup", "frmUpdateOrNew"}));
    // A new installation instead: both pages are there, the bus page because a selected
    // packet has a bus entry.
    UpdateMode = false;
    Start({"next", "next", "next", "next", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmSearch", "frmUpdateOrNew", "frmSetupType", "frmBusSystem", "frmCustomSetup"}));
    EXPECT_TRUE(BusSystemNeeded);
    // An unselected packet's entry does not count.
    gPackets.Item(1)->Selected = false;
    AddPacket(true, "");
    Start({"next", "next", "next", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmSearch", "frmUpdateOrNew", "frmSetupType", "frmCustomSetup"}));
    EXPECT_FALSE(BusSystemNeeded);
}

TEST_F(DialogOrder, CancelAskedNoStaysYesEndsOnTheDonePage) {
    Settings("WelcomeTimeout=0\r\nShowIdentificationForm=False\r\nShowDriveSelectionForm=False\r\n",
             "[English]\r\nAppTitle=Tovel Suite\r\n");
    SetupLanguageCount = 1;
    answer_ = mb::kIdNo;
    Start({"next", "cancel", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmWelcome2", "frmSearch"}));
    EXPECT_EQ(gDialogOrder->CurrentPage(), "frmSearch");
    EXPECT_FALSE(SetupCancelled);
    ASSERT_EQ(questions_.size(), 1u);
    EXPECT_EQ(questions_[0].substr(0, 3), "36 ");

    answer_ = mb::kIdYes;
    unloaded_.clear();
    Start({"next", "cancel", "stay"});
    EXPECT_EQ(gDialogOrder->Shown(), (Pages{"frmWelcome2", "frmSearch", "frmDone"}));
    EXPECT_TRUE(SetupCancelled);
    EXPECT_EQ(unloaded_, (Pages{"frmWelcome2", "frmSearch"}));

    // A fatal error on a page: the message, then the Done page whatever the answer.
    SetupCancelled = false;
    questions_.clear();
    Start({"stay"});
    gDialogOrder->ClickCancel2(TextNo::kPackageMissing, 16);
    EXPECT_TRUE(SetupCancelled);
    EXPECT_EQ(gDialogOrder->Shown().back(), "frmDone");
    ASSERT_EQ(questions_.size(), 1u);
    EXPECT_EQ(questions_[0].substr(0, 3), "16 ");
}

TEST_F(DialogOrder, AFailedStartCheckEndsTheProgramBeforeAnyPage) {
    Settings("WelcomeTimeout=0\r\n");
    SetupLanguageCount = 1;
    Start({"next"}, false);
    EXPECT_TRUE(gDialogOrder->Shown().empty());
    EXPECT_EQ(calls_, (Pages{"checks", "end"}));
}

TEST_F(DialogOrder, TheInstallationPageStaysUntilTheDonePageCloses) {
    Settings("");
    ContinuedAfterRestart = true;
    Start({"next", "stay"});
    EXPECT_TRUE(unloaded_.empty());   // leaving the installation page forwards keeps it
    gDialogOrder->ClickCancel2(TextNo::kPackageMissing, 0);   // closing the Done page closes both
    EXPECT_EQ(unloaded_, (Pages{"frmInstallation", "frmDone"}));
}

} // namespace
} // namespace tovel
