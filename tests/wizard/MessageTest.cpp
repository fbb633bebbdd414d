// The message box on its form: captions in the setup language, the buttons a style asks for
// and what each returns, Help that stays, the close box, silent answers, the error display,
// and every message in the log.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/catalogue/CatalogueFixture.h"
#include "wizard/clsMessage.h"
#include "wizard/clsRenderer.h"

namespace tovel {
namespace {

// Presses what the test says, one action per round of the modal loop, and keeps each form.
class ScriptedRenderer : public clsRenderer {
public:
    using Action = std::function<void(clsForm&)>;
    void ShowModal(clsForm& form) override {
        shown.push_back(form);
        form.SetShown(true);
        form.RaiseLoad();
        form.RaiseActivate();
        while (form.Shown() && next < actions.size()) actions[next++](form);
        if (form.Shown()) form.SetShown(false);
    }
    void DoEvents() override {}
    void SetHourglass(bool) override {}
    void Refresh(const clsForm&) override {}

    std::vector<Action> actions;
    size_t next = 0;
    std::vector<clsForm> shown;
};

ScriptedRenderer::Action Press(int index) {
    return [index](clsForm& form) { form.RaiseClick("MessageButton", index); };
}
ScriptedRenderer::Action CloseBox() {
    return [](clsForm& form) { form.RaiseQueryUnload(); };
}

std::vector<std::string> Captions(const clsForm& form) {
    std::vector<std::string> captions;
    for (const auto& c : form.Controls()) {
        if (c.name == "MessageButton") captions.push_back(c.caption + (c.isDefault ? "*" : ""));
    }
    return captions;
}

class Message : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        gLanguage = std::make_unique<clsLanguage>();
        gLanguage->SetLanguageID(1031);   // German: the four buttons are translated
        SetRenderer(&renderer_);
    }
    void TearDown() override {
        SetRenderer(nullptr);
        SilentMode = false;
        gLanguage.reset();
        CatalogueFixture::TearDown();
    }
    int Ask(int style, std::vector<ScriptedRenderer::Action> actions) {
        renderer_.actions = std::move(actions);
        renderer_.next = 0;
        renderer_.shown.clear();
        return clsMessage().MsgBox("Setup wirklich abbrechen?", style, "Tovel");
    }
    ScriptedRenderer renderer_;
};

TEST_F(Message, ButtonsCaptionsAndResultsOfEachStyle) {
    const struct {
        int style;
        std::vector<int> presses;
        int result;
        std::vector<std::string> captions;
    } cases[] = {
        {36, {0}, 6, {"Ja*", "Nein"}},
        {36, {1}, 7, {"Ja*", "Nein"}},
        {4 + 256, {1}, 7, {"Ja", "Nein*"}},
        {2, {1}, 4, {"Abort*", "Retry", "Ignore"}},   // never translated
        {3, {2}, 2, {"Ja*", "Nein", "Abbrechen"}},
        {0, {0}, 1, {"OK*"}},
        {1 + 16384, {2, 2, 0}, 1, {"OK*", "Abbrechen", "Help"}},   // Help leaves the form open
        {5 + 512, {0}, 4, {"Retry*", "Abbrechen"}},                // no third button: the first is the default
    };
    for (const auto& c : cases) {
        std::vector<ScriptedRenderer::Action> actions;
        for (int p : c.presses) actions.push_back(Press(p));
        EXPECT_EQ(Ask(c.style, actions), c.result) << c.style;
        ASSERT_EQ(renderer_.shown.size(), 1u);
        EXPECT_EQ(renderer_.next, c.presses.size()) << c.style;
        EXPECT_EQ(Captions(renderer_.shown[0]), c.captions) << c.style;
    }
    EXPECT_EQ(renderer_.shown[0].Control("MessageIcon"), nullptr);
    Ask(36, {Press(0)});
    EXPECT_NE(renderer_.shown[0].Control("MessageIcon"), nullptr);
}

TEST_F(Message, TheCloseBoxAnswersCancelOrTheOnlyOKAndOtherwiseNothing) {
    EXPECT_EQ(Ask(1, {CloseBox()}), 2);
    EXPECT_EQ(Ask(0, {CloseBox()}), 1);
    EXPECT_EQ(Ask(36, {CloseBox(), Press(1)}), 7);
    EXPECT_EQ(renderer_.next, 2u);
    // A form that ends without an answer gives 0, which no caller takes for Yes or OK.
    EXPECT_EQ(Ask(36, {}), 0);
}

TEST_F(Message, SilentRunsAnswerAtOnceAndEveryMessageIsLogged) {
    EXPECT_EQ(Ask(36, {Press(1)}), 7);
    SilentMode = true;
    EXPECT_EQ(Ask(4 + 256, {}), 7);
    EXPECT_TRUE(renderer_.shown.empty());
    const std::vector<std::string> expected = {
        "Message [Tovel] Setup wirklich abbrechen? [Ja/Nein] answer: Nein ",
        "Message [Tovel] Setup wirklich abbrechen? [Ja/Nein] answer: Nein (silent) ",
    };
    EXPECT_EQ(LogLines(), expected);
}

TEST_F(Message, TheFormFitsItsTextAndStaysInsideTheScreen) {
    const clsForm small = clsMessage::LayOut("Short.", "T", {"OK"}, MessageIcon::None, 0);
    const std::string longText(2000, 'x');
    const clsForm large = clsMessage::LayOut(longText + "\r\nsecond line", "T", {"Ja", "Nein", "Abbrechen", "Help"}, MessageIcon::Question, 3);
    const int screenTwips = Platform().System().Screen().width * 15;
    EXPECT_LT(small.Width(), large.Width());
    EXPECT_LE(large.Width(), screenTwips);
    EXPECT_GT(large.Height(), small.Height() * 3);   // the long text wraps onto many lines
    for (const clsForm* form : {&small, &large}) {
        for (const auto& c : form->Controls()) {
            EXPECT_GE(c.left, 0);
            EXPECT_LE(c.left + c.width, form->Width()) << c.name << c.index;
            EXPECT_LE(c.top + c.height, form->Height()) << c.name << c.index;
        }
    }
    EXPECT_TRUE(large.Control("MessageButton", 3)->isDefault);
}

TEST_F(Message, TheErrorDisplayCopiesAndCloses) {
    renderer_.actions = {Press(2), Press(0), Press(1)};   // Copy, Help, Close
    clsMessage().DisplayError("Setup.exe could not be started.", "Tovel", true);
    EXPECT_EQ(renderer_.next, 3u);
    ASSERT_EQ(renderer_.shown.size(), 1u);
    EXPECT_EQ(Captions(renderer_.shown[0]), (std::vector<std::string>{"Help", "Close*", "Copy"}));
    EXPECT_EQ(Platform().Files().ReadFile(clsMessage::ErrorCopyPath()).value_or(""), "Setup.exe could not be started.\r\n");
}

} // namespace
} // namespace tovel
