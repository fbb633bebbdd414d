// The page tester: every page of both form sets opened with the test flag, every button of
// it pressed and its close box used, with a dialog order that would hear any call: none may
// come, no page may go on, cancel, install or end the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/mdlMessage.h"
#include "configtool/clsPageTester.h"
#include "tests/configtool/ToolDisc.h"
#include "wizard/clsDialogOrder.h"
#include "wizard/clsRenderer.h"
#include "wizard/mdlFormLayouts.h"

namespace tovel {
namespace {

// Presses every button a form shows, one after another while the form stays, then its close
// box; a form still open after that is noted and closed. Forms a button opens get the same.
class PressEverything : public clsRenderer {
public:
    void ShowModal(clsForm& form) override {
        form.SetShown(true);
        form.RaiseLoad();
        form.RaiseActivate();
        shown.push_back(form);
        std::vector<std::pair<std::string, int>> buttons;
        for (const auto& c : form.Controls()) {
            if (c.kind == ControlKind::CommandButton && c.visible && c.enabled) buttons.emplace_back(c.name, c.index);
        }
        for (const auto& [name, index] : buttons) {
            if (form.Shown()) form.RaiseClick(name, index);
        }
        if (form.Shown()) form.RaiseQueryUnload();
        if (form.Shown()) {
            leftOpen.push_back(form.Name());
            form.SetShown(false);
        }
    }
    void DoEvents() override {}
    void SetHourglass(bool) override {}
    void Refresh(const clsForm&) override {}

    std::vector<clsForm> shown;
    std::vector<std::string> leftOpen;
};

class PageTester : public test::ToolDisc {
protected:
    void SetUp() override {
        ToolDisc::SetUp();
        SetRenderer(&renderer_);
        SetMessageBoxHandler([this](const std::string& text, int, const std::string&) {
            messages_.push_back(text);
            return mb::kIdYes;   // Yes to every question: a cancel question would end the wizard
        });
        clsDialogOrder::Hooks hooks;
        hooks.controllers = [this](const std::string& page) -> std::unique_ptr<clsPageController> {
            dialogOrderCalls_.push_back(page);
            return nullptr;
        };
        hooks.endProgram = [this] { dialogOrderCalls_.push_back("endProgram"); };
        gDialogOrder = std::make_unique<clsDialogOrder>(hooks);
        gDialogOrder->Initialize();
    }
    void TearDown() override {
        gDialogOrder.reset();
        SetMessageBoxHandler(nullptr);
        SetRenderer(nullptr);
        ToolDisc::TearDown();
    }

    PressEverything renderer_;
    std::vector<std::string> messages_;
    std::vector<std::string> dialogOrderCalls_;
};

TEST_F(PageTester, ListsEveryFormOfEachSetOnce) {
    const auto classic = clsPageTester::Pages(true);
    const auto msi = clsPageTester::Pages(false);
    ASSERT_FALSE(classic.empty());
    EXPECT_EQ(classic.front(), "frmWelcome");
    EXPECT_EQ(msi.front(), "frmMSIWelcome");
    // Line by line the twins, so a page stays chosen when the set changes; the golden page last.
    ASSERT_EQ(msi.size(), classic.size() + 1);
    for (size_t i = 0; i < classic.size(); ++i) EXPECT_EQ(FormNameInSet(classic[i], false), msi[i]) << classic[i];
    EXPECT_EQ(msi.back(), "frmMSICustomSetupGolden");
    // Together they are every form the wizard has.
    std::vector<std::string> both = classic;
    both.insert(both.end(), msi.begin(), msi.end());
    for (const auto& name : FormNames()) EXPECT_NE(std::find(both.begin(), both.end(), name), both.end()) << name;
}

TEST_F(PageTester, EveryPageOfBothSetsOpensWithoutTheDialogOrder) {
    clsPageTester tester;
    int language = 0;
    for (const bool oldForms : {true, false}) {
        for (const auto& page : clsPageTester::Pages(oldForms)) {
            SCOPED_TRACE(page);
            renderer_.shown.clear();
            messages_.clear();
            const int16_t asked = static_cast<int16_t>(language++ % 6);
            ASSERT_TRUE(tester.Open(page, asked));
            EXPECT_EQ(DefaultLanguage, asked);
            if (page == "frmMessage") {
                EXPECT_EQ(messages_.size(), 1U);   // the cancel question, on its own
                continue;
            }
            ASSERT_FALSE(renderer_.shown.empty());
            // The form of the set asked for, not the one OldForms of the disc names.
            EXPECT_EQ(renderer_.shown.front().Name(), page);
            for (const auto& message : messages_) EXPECT_EQ(message.find("cancel"), std::string::npos) << message;
        }
    }
    EXPECT_TRUE(dialogOrderCalls_.empty()) << dialogOrderCalls_.front();
    EXPECT_TRUE(gDialogOrder->Shown().empty());
    // Every page leaves when asked: with Cancel, No, its close button or its close box.
    EXPECT_TRUE(renderer_.leftOpen.empty()) << renderer_.leftOpen.front();
}

TEST_F(PageTester, PagesAreFilledFromTheDiscAndDoNothingForReal) {
    clsPageTester tester;
    ASSERT_TRUE(tester.Open("frmMSICustomSetup", 1));
    // The search ran as the wizard's does: the product is on the tree.
    const clsFormControl* tree = renderer_.shown.front().Control("ProductTree");
    ASSERT_NE(tree, nullptr);
    EXPECT_TRUE(std::any_of(tree->nodes.begin(), tree->nodes.end(), [](const TreeListNode& n) { return n.key == "TOOLA"; }));
    EXPECT_EQ(gApplications.Item(1)->Description, "Tool A");

    // Another language reads the products' texts of that language.
    ASSERT_TRUE(tester.Open("frmSetupType", 0));
    EXPECT_EQ(gApplications.Item(1)->Description, "Werkzeug A");

    // The first welcome page offers its close button and does not wait to go on.
    renderer_.shown.clear();
    ASSERT_TRUE(tester.Open("frmWelcome", 1));
    EXPECT_TRUE(renderer_.shown.front().Control("cmdClose")->visible);

    // The installation page shows the plan, but its timer never starts a setup; a state
    // file of an interrupted run is neither read nor removed.
    WriteFile("INSTDUMP.TMP", "[General]\r\n");
    WorkFolder = bed_->folder;
    ContinuedAfterRestart = true;
    renderer_.shown.clear();
    ASSERT_TRUE(tester.Open("frmInstallation", 1));
    ContinuedAfterRestart = false;
    EXPECT_FALSE(renderer_.shown.front().Timer("JobTimer1")->enabled);
    EXPECT_EQ(Read("INSTDUMP.TMP"), "[General]\r\n");
    EXPECT_FALSE(InstallationAborted);
    EXPECT_TRUE(dialogOrderCalls_.empty());
}

TEST_F(PageTester, NamesOfNoPageShowNothing) {
    clsPageTester tester;
    EXPECT_FALSE(tester.Open("frmNoSuchPage", 1));
    EXPECT_FALSE(tester.Open("", 1));
    EXPECT_TRUE(renderer_.shown.empty());
    // A language outside 0..5 keeps the language in use.
    ASSERT_TRUE(tester.Open("frmLicense", 9));
    EXPECT_EQ(DefaultLanguage, 1);
}

} // namespace
} // namespace tovel
