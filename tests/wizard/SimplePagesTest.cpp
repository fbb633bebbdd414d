// The simple pages as a person uses them: the identification's Continue rule, the licence
// accepted and refused, the bus system's choice reaching the products, the update choice,
// and both form sets behaving alike.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "tests/catalogue/CatalogueFixture.h"
#include "tests/wizard/ScriptedRenderer.h"
#include "wizard/WizardGlobals.h"
#include "wizard/mdlWizard.h"

namespace tovel {
namespace {

using test::Click;
using test::Inspect;
using test::Type;

class SimplePages : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        gLanguage = std::make_unique<clsLanguage>();
        SetRenderer(&renderer_);
        SetMessageBoxHandler([this](const std::string& text, int, const std::string&) {
            questions_.push_back(text);
            return mb::kIdNo;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler(nullptr);
        SetRenderer(nullptr);
        gDialogOrder.reset();
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        gLanguage.reset();
        UpdateMode = false;
        SelectedBusSystem = "4";
        InstalledProductsFound.clear();
        CatalogueFixture::TearDown();
    }
    // Leaves the page before the one under test, so that one is reached as in the wizard;
    // every other page has no controller and is passed.
    void Run(const std::string& before, const std::string& page, std::vector<test::ScriptedRenderer::Action> actions,
             const std::string& settings = "") {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n" + settings);
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        renderer_.actions = std::move(actions);
        renderer_.next = 0;
        renderer_.shown.clear();
        clsDialogOrder::Hooks hooks;
        hooks.controllers = [page](const std::string& name) -> std::unique_ptr<clsPageController> {
            // The Done page would end the program: only the page under test is made.
            return name == page ? MakePageController(name) : nullptr;
        };
        gDialogOrder = std::make_unique<clsDialogOrder>(hooks);
        gDialogOrder->Initialize();
        gDialogOrder->NextDialog(before);
    }
    static void AddProduct(const std::string& code, const std::string& installed = "") {
        clsSIFApplicationItem item;
        item.ProductCode = code;
        item.Versions.installedVersion = installed;
        gApplications.AddItem(item);
    }
    std::string Selection() const {
        std::string text;
        for (const auto& item : gApplications.Items()) text += item.ProductCode + (item.Selected ? "+ " : "- ");
        return text;
    }

    test::ScriptedRenderer renderer_;
    std::vector<std::string> questions_;
};

TEST_F(SimplePages, IdentificationContinuesOnlyWithNameAndCompany) {
    AddProduct("A");
    AddProduct("B");
    std::vector<bool> enabled;
    const auto continueState = Inspect([&](clsForm& form) { enabled.push_back(form.Control("ContinueBtn")->enabled); });
    Run("frmOldVersion", "frmIdentification",
        {Type("NameText", ""), Type("CompanyText", ""), continueState, Type("NameText", "Jane Roe"), continueState,
         Type("CompanyText", "  "), continueState, Type("CompanyText", "Plant 4"), continueState, Click("ContinueBtn")},
        "WelcomeTimeout=0\r\n");
    ASSERT_FALSE(renderer_.shown.empty());
    EXPECT_EQ(renderer_.shown[0].Name(), "frmIdentification");
    EXPECT_EQ(enabled, (std::vector<bool>{false, false, false, true}));
    for (const auto& item : gApplications.Items()) {
        EXPECT_EQ(item.UserName, "Jane Roe");
        EXPECT_EQ(item.CompanyName, "Plant 4");
    }
}

TEST_F(SimplePages, TheLicenceIsAcceptedOnlyOnPurposeAndNoAsksToCancel) {
    WriteFile("Docs\\License_English.txt", "Terms of use\r\nof the sample disc.\r\n");
    HomePath = bed_->folder;
    const std::string settings = "WelcomeTimeout=0\r\nOldForms=False\r\n";
    const std::string sections = "[LICENSEFILES]\r\nEnglish=Docs\\License_English.txt\r\n";
    std::string shownText;
    Run("frmOldVersion", "frmLicense",
        {Inspect([&](clsForm& form) { shownText = form.Control("LicenseText")->caption; }), Click("ContinueBtn"), Click("CancelBtn")},
        settings + sections);
    ASSERT_EQ(renderer_.shown.size(), 1u);
    EXPECT_EQ(renderer_.shown[0].Name(), "frmMSILicense");
    EXPECT_EQ(shownText, "Terms of use\r\nof the sample disc.\r\n");
    EXPECT_EQ(questions_.size(), 1u);   // Continue did nothing; Cancel asked whether to cancel
    EXPECT_EQ(gDialogOrder->CurrentPage(), "frmLicense");

    // "I accept", then Continue: the page is left (the next page has no controller here).
    Run("frmOldVersion", "frmLicense", {Click("optYes"), Click("ContinueBtn")}, settings + sections);
    EXPECT_NE(gDialogOrder->CurrentPage(), "frmLicense");

    // The classic page: No asks to cancel, Yes accepts at once.
    const std::string classic = "WelcomeTimeout=0\r\n" + sections;
    Run("frmOldVersion", "frmLicense", {Click("NoBtn"), Click("YesBtn")}, classic);
    EXPECT_EQ(renderer_.shown[0].Name(), "frmLicense");
    EXPECT_EQ(questions_.size(), 2u);
    EXPECT_NE(gDialogOrder->CurrentPage(), "frmLicense");
    HomePath.clear();
}

TEST_F(SimplePages, TheBusSystemChosenReachesTheProducts) {
    AddProduct("PB");
    AddProduct("ETH");
    clsSIFPacketItem packet;
    packet.ProductCode = "RUNTIME";
    packet.Selected = true;
    packet.SetBusAction(BusSystem::Profibus, "+PB,-ETH");
    packet.SetBusAction(BusSystem::Ethernet, "+ETH,-PB");
    gPackets.AddItem(packet);
    Run("frmSetupType", "frmBusSystem", {Click("Ethernet"), Click("ContinueBtn")}, "WelcomeTimeout=0\r\n");
    ASSERT_EQ(renderer_.shown.size(), 1u);
    EXPECT_EQ(renderer_.shown[0].Name(), "frmBusSystem");
    EXPECT_EQ(SelectedBusSystem, "1");
    EXPECT_EQ(Selection(), "PB- ETH+ ");
}

TEST_F(SimplePages, UpdateSelectsTheInstalledProducts) {
    AddProduct("OLD", "5.0");
    AddProduct("NEW");
    InstalledProductsFound = {"OLD 5.0"};
    Run("frmLanguages", "frmUpdateOrNew", {Click("ContinueBtn")}, "WelcomeTimeout=0\r\nShowUpdateForm=True\r\nSelectUpdate=True\r\n");
    ASSERT_EQ(renderer_.shown.size(), 1u);
    EXPECT_EQ(renderer_.shown[0].Name(), "frmUpdateOrNew");
    EXPECT_TRUE(UpdateMode);
    EXPECT_EQ(Selection(), "OLD+ NEW- ");
    Run("frmLanguages", "frmUpdateOrNew", {Click("NewInstOption"), Click("ContinueBtn")}, "WelcomeTimeout=0\r\nShowUpdateForm=True\r\nSelectUpdate=True\r\n");
    EXPECT_FALSE(UpdateMode);
}

} // namespace
} // namespace tovel
