// Forms as data: what the user's actions do to the controls before the controller hears of
// them, and what a controller never hears (a disabled button, a locked text).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "wizard/clsForm.h"
#include "wizard/clsRenderer.h"

namespace tovel {
namespace {

class Recorder : public clsFormEvents {
public:
    void FormLoad() override { heard.push_back("Load"); }
    void FormActivate() override { heard.push_back("Activate"); }
    void Click(const std::string& control, int index) override { heard.push_back("Click " + control + Index(index)); }
    void Change(const std::string& control, int index) override { heard.push_back("Change " + control + Index(index)); }
    void Timer(const std::string& timer) override { heard.push_back("Timer " + timer); }
    void FormQueryUnload() override { heard.push_back("QueryUnload"); }
    std::vector<std::string> heard;

private:
    static std::string Index(int index) { return index < 0 ? "" : "(" + std::to_string(index) + ")"; }
};

clsForm LanguagePage() {
    clsForm form("frmSetupLanguage", "Setup", 7000, 5000);
    for (int i = 0; i < 3; ++i) form.Add({.name = "LanguageOption", .kind = ControlKind::OptionButton, .index = i});
    form.Add({.name = "UpdateOption", .kind = ControlKind::OptionButton});
    form.Add({.name = "NewInstOption", .kind = ControlKind::OptionButton, .value = 1});
    form.Add({.name = "Agree", .kind = ControlKind::CheckBox});
    form.Add({.name = "NameText", .kind = ControlKind::TextBox});
    form.Add({.name = "LicenseText", .kind = ControlKind::TextBox, .locked = true});
    form.Add({.name = "ContinueBtn", .kind = ControlKind::CommandButton, .enabled = false});
    form.Add({.name = "CancelBtn", .kind = ControlKind::CommandButton, .visible = false});
    form.AddTimer({"JobTimer1", 2000, false});
    return form;
}

TEST(Form, ActionsChangeTheControlsThenReachTheController) {
    clsForm form = LanguagePage();
    Recorder recorder;
    form.SetEvents(&recorder);

    form.RaiseClick("LanguageOption", 2);
    form.RaiseClick("LanguageOption", 1);
    EXPECT_EQ(form.Control("LanguageOption", 1)->value, 1);
    EXPECT_EQ(form.Control("LanguageOption", 2)->value, 0);
    EXPECT_EQ(form.Control("NewInstOption")->value, 1);   // another group
    form.RaiseClick("UpdateOption");
    EXPECT_EQ(form.Control("NewInstOption")->value, 0);
    EXPECT_EQ(form.Control("LanguageOption", 1)->value, 1);

    form.RaiseClick("Agree");
    EXPECT_EQ(form.Control("Agree")->value, 1);
    form.RaiseClick("Agree");
    EXPECT_EQ(form.Control("Agree")->value, 0);

    form.RaiseChange("NameText", -1, "Jane");
    EXPECT_EQ(form.Control("NameText")->caption, "Jane");
    form.RaiseChange("LicenseText", -1, "changed");   // locked: nothing happens
    EXPECT_EQ(form.Control("LicenseText")->caption, "");

    form.RaiseClick("ContinueBtn");   // disabled
    form.RaiseClick("CancelBtn");     // hidden
    form.RaiseClick("NoSuchControl");
    form.RaiseTimer("JobTimer1");     // not enabled
    form.Timer("JobTimer1")->enabled = true;
    form.RaiseTimer("JobTimer1");
    form.RaiseQueryUnload();

    const std::vector<std::string> expected = {"Click LanguageOption(2)", "Click LanguageOption(1)", "Click UpdateOption",
                                               "Click Agree", "Click Agree", "Change NameText", "Timer JobTimer1",
                                               "QueryUnload"};
    EXPECT_EQ(recorder.heard, expected);
}

TEST(Form, WithoutARendererAPageLoadsActivatesAndIsLeft) {
    clsForm form = LanguagePage();
    Recorder recorder;
    form.SetEvents(&recorder);
    Renderer().ShowModal(form);
    EXPECT_FALSE(form.Shown());
    EXPECT_EQ(recorder.heard, (std::vector<std::string>{"Load", "Activate"}));
}

} // namespace
} // namespace tovel
