// The text wizard: the script a disc author writes (each action, wrong lines, the end of
// the input unwinding nested pages, timers only when asked), the page text it prints, the
// terminal layout at 80x24 and larger, and the widths of Japanese text everything rests on.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "ui/console/clsConsoleLayout.h"
#include "ui/console/clsConsoleRenderer.h"
#include "ui/console/clsScriptCommand.h"
#include "ui/console/clsTerminal.h"
#include "ui/console/clsTextWidth.h"

namespace tovel {
namespace {

// A page controller as small as can be: it writes down what it hears and does what a test
// asks on a click, a close box or a timer.
class Controller : public clsFormEvents {
public:
    explicit Controller(clsForm& form) { form.SetEvents(this); }
    void FormLoad() override { heard.push_back("Load"); }
    void FormActivate() override {
        heard.push_back("Activate");
        if (onActivate) onActivate();
    }
    void Click(const std::string& control, int index) override {
        const std::string id = control + (index >= 0 ? "(" + std::to_string(index) + ")" : "");
        heard.push_back("Click " + id);
        if (onClick.count(id) != 0) onClick[id]();
    }
    void Change(const std::string& control, int) override { heard.push_back("Change " + control); }
    void Timer(const std::string& timer) override {
        heard.push_back("Timer " + timer);
        if (onTimer) onTimer();
    }
    void FormQueryUnload() override {
        heard.push_back("QueryUnload");
        if (onQueryUnload) onQueryUnload();
    }

    std::vector<std::string> heard;
    std::map<std::string, std::function<void()>> onClick;
    std::function<void()> onQueryUnload;
    std::function<void()> onTimer;
    std::function<void()> onActivate;
};

clsFormControl Button(std::string name, std::string caption, int left, int top) {
    return {.name = std::move(name), .kind = ControlKind::CommandButton, .left = left, .top = top, .width = 1215,
            .height = 375, .caption = std::move(caption)};
}

// A page with one of each kind the script can act on.
clsForm IdentificationPage() {
    clsForm form("frmIdentification", "Setup - Identification", 6000, 3600);
    form.Add({.name = "InfoLabel", .kind = ControlKind::Label, .left = 120, .top = 120, .width = 4000, .height = 500,
              .caption = "Please enter your name.\r\nBoth fields are needed."});
    form.Add({.name = "Image1", .kind = ControlKind::Image, .left = 4500, .top = 120, .width = 1200, .height = 1200,
              .picture = "D:\\Bitmaps\\logo.bmp"});
    form.Add({.name = "NameText", .kind = ControlKind::TextBox, .left = 120, .top = 700, .width = 3000, .height = 285,
              .caption = "Jane Doe"});
    form.Add({.name = "CompanyText", .kind = ControlKind::TextBox, .left = 120, .top = 1000, .width = 3000, .height = 285});
    for (int i = 0; i < 2; ++i) {
        form.Add({.name = "LanguageOption", .kind = ControlKind::OptionButton, .index = i, .left = 120 + 2000 * i,
                  .top = 1400, .width = 1800, .height = 285, .caption = i == 0 ? "English" : "German", .value = i == 0});
    }
    form.Add({.name = "Agree", .kind = ControlKind::CheckBox, .left = 120, .top = 1700, .width = 3000, .height = 285,
              .caption = "Send me news"});
    form.Add({.name = "NotesText", .kind = ControlKind::TextBox, .left = 120, .top = 2000, .width = 5000, .height = 600,
              .caption = "Line one\r\n\r\nLine three", .multiLine = true, .locked = true});
    form.Add({.name = "VersionList", .kind = ControlKind::ListBox, .left = 120, .top = 2650, .width = 5000, .height = 200,
              .items = {"Tovel Runtime 1.0", "Tovel Studio 2.1"}});
    form.Add({.name = "ButtonLine", .kind = ControlKind::Frame, .left = 120, .top = 2900, .width = 5700, .height = 30});
    form.Add({.name = "HiddenLabel", .kind = ControlKind::Label, .left = 120, .top = 2700, .caption = "never shown",
              .visible = false});
    form.Add(Button("BackBtn", "< Back", 1500, 3000));
    auto& next = form.Add(Button("ContinueBtn", "Continue >", 3000, 3000));
    next.isDefault = true;
    auto& cancel = form.Add(Button("CancelBtn", "Cancel", 4500, 3000));
    cancel.isCancel = true;
    form.AddTimer({"PollTimer", 500, true});
    return form;
}

struct ScriptRun {
    std::istringstream in;
    std::ostringstream out;
    clsConsoleRenderer renderer;
    explicit ScriptRun(const std::string& script) : in(script), renderer(in, out, ConsoleMode::Script) {}
};

size_t Count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

std::vector<std::string> Heard(const Controller& c, const std::string& prefix) {
    std::vector<std::string> out;
    for (const auto& h : c.heard) {
        if (h.rfind(prefix, 0) == 0) out.push_back(h);
    }
    return out;
}

// ---------------------------------------------------------------- script mode

TEST(ConsoleScript, PrintsThePageInReadingOrderWithTheNamesToType) {
    clsForm form = IdentificationPage();
    Controller controller(form);
    ScriptRun run("");
    run.renderer.ShowModal(form);

    const std::string expected =
        "== frmIdentification: Setup - Identification ==\n"
        "Please enter your name.  InfoLabel\n"
        "Both fields are needed.\n"
        "<picture: D:\\Bitmaps\\logo.bmp>  Image1\n"
        "\"Jane Doe\"  NameText\n"
        "\"\"  CompanyText\n"
        "(o) English  LanguageOption(0)\n"
        "( ) German  LanguageOption(1)\n"
        "[ ] Send me news  Agree\n"
        "NotesText (read-only):\n"
        "  | Line one\n"
        "  |\n"
        "  | Line three\n"
        "VersionList:\n"
        "  > Tovel Runtime 1.0\n"
        "  - Tovel Studio 2.1\n"
        "------  ButtonLine\n"
        "[ < Back ]  BackBtn\n"
        "[ Continue > ] (default)  ContinueBtn\n"
        "[ Cancel ] (cancel)  CancelBtn\n"
        "\n"
        "# end of input: the close box of frmIdentification\n"
        "# end of input: frmIdentification closed\n";
    EXPECT_EQ(run.out.str(), expected);
    EXPECT_FALSE(form.Shown());
    EXPECT_EQ(controller.heard, (std::vector<std::string>{"Load", "Activate", "QueryUnload"}));
}

TEST(ConsoleScript, EachActionReachesTheFormAndAChangedPageIsPrintedAgain) {
    clsForm form = IdentificationPage();
    Controller controller(form);
    controller.onClick["ContinueBtn"] = [&] { form.SetShown(false); };
    ScriptRun run(
        "# fill in the page\n"
        "\n"
        "  TYPE companytext =   Tovel  Works   \n"
        "type NameText = \"  spaced  \"\n"
        "choose LanguageOption 1\n"
        "click LanguageOption(0)\n"
        "tick Agree\n"
        "tick Agree\n"
        "untick Agree\n"
        "click Agree\r\n"
        "click BackBtn\n"
        "close\n"
        "esc\n"
        "enter\n"
        "click CancelBtn\n");   // after the page has gone: never read
    run.renderer.ShowModal(form);

    EXPECT_EQ(form.Control("CompanyText")->caption, "Tovel  Works");
    EXPECT_EQ(form.Control("NameText")->caption, "  spaced  ");
    EXPECT_EQ(form.Control("LanguageOption", 0)->value, 1);
    EXPECT_EQ(form.Control("LanguageOption", 1)->value, 0);
    EXPECT_EQ(form.Control("Agree")->value, 1);
    const std::vector<std::string> expected = {
        "Load", "Activate", "Change CompanyText", "Change NameText", "Click LanguageOption(1)", "Click LanguageOption(0)",
        "Click Agree", "Click Agree", "Click Agree", "Click BackBtn", "QueryUnload",
        "Click CancelBtn",     // esc: the cancel button, not the close box
        "Click ContinueBtn"};  // enter: the default button
    EXPECT_EQ(controller.heard, expected);

    const std::string out = run.out.str();
    EXPECT_NE(out.find("> tick Agree  (already ticked)\n"), std::string::npos);
    EXPECT_NE(out.find("> esc  (CancelBtn)\n"), std::string::npos);
    EXPECT_NE(out.find("\"Tovel  Works\"  CompanyText\n"), std::string::npos);
    // Printed first, then after each action that changed it; clicking Back changed nothing.
    EXPECT_EQ(Count(out, "== frmIdentification"), 8u);
    EXPECT_EQ(out.find("!"), std::string::npos) << out;
    EXPECT_EQ(out.find("end of input"), std::string::npos) << "the page left before the script ended";
}

TEST(ConsoleScript, EscWithoutACancelButtonIsTheCloseBox) {
    clsForm form("frmMessage", "Setup", 4000, 1500);
    form.Add(Button("OKBtn", "OK", 1400, 800));
    Controller controller(form);
    controller.onQueryUnload = [&] { form.SetShown(false); };
    ScriptRun run("esc\n");
    run.renderer.ShowModal(form);
    EXPECT_EQ(controller.heard.back(), "QueryUnload");
    EXPECT_NE(run.out.str().find("> esc  (close box)"), std::string::npos);
}

TEST(ConsoleScript, WrongLinesAreReportedWithTheirNumberAndSkipped) {
    clsForm form = IdentificationPage();
    form.Control("ContinueBtn")->enabled = false;
    Controller controller(form);
    controller.onClick["BackBtn"] = [&] { form.SetShown(false); };
    ScriptRun run(
        "clik BackBtn\n"
        "click NoSuchBtn\n"
        "click ContinueBtn\n"
        "click HiddenLabel\n"
        "choose LanguageOption\n"
        "choose LanguageOption 7\n"
        "choose Agree\n"
        "tick LanguageOption 1\n"
        "type NotesText = mine\n"
        "type NameText\n"
        "click NameText\n"
        "click BackBtn now\n"
        "enter\n"
        "timer NoTimer\n"
        "wait forever\n"
        "click BackBtn\n");
    run.renderer.ShowModal(form);

    const std::string out = run.out.str();
    const std::vector<std::string> messages = {
        "! line 1 \"clik BackBtn\": unknown action \"clik\"",
        "! line 2 \"click NoSuchBtn\": no control \"NoSuchBtn\" on frmIdentification; line skipped",
        "! line 3 \"click ContinueBtn\": ContinueBtn is disabled; line skipped",
        "! line 4 \"click HiddenLabel\": HiddenLabel is hidden; line skipped",
        "! line 5 \"choose LanguageOption\": LanguageOption is a control array: give the element, LanguageOption(0) to "
        "LanguageOption(1); line skipped",
        "! line 6 \"choose LanguageOption 7\": LanguageOption has no element 7; line skipped",
        "! line 7 \"choose Agree\": Agree is a check box, not an option; line skipped",
        "! line 8 \"tick LanguageOption 1\": LanguageOption(1) is an option, not a check box; line skipped",
        "! line 9 \"type NotesText = mine\": NotesText is read-only; line skipped",
        "! line 10 \"type NameText\": type needs \"= text\"",
        "! line 11 \"click NameText\": NameText is a text box: use type; line skipped",
        "! line 12 \"click BackBtn now\": \"now\" is no index of BackBtn",
        "! line 13 \"enter\": frmIdentification has no default button that can be pressed; line skipped",
        "! line 14 \"timer NoTimer\": no timer \"NoTimer\" on frmIdentification; line skipped",
        "! line 15 \"wait forever\": wait takes a count from 1 to 10000",
    };
    for (const auto& message : messages) EXPECT_NE(out.find(message), std::string::npos) << message << "\n" << out;
    EXPECT_EQ(Count(out, "\n!"), messages.size());
    // Nothing wrong reached the controller or changed the page; the last good line did its work.
    EXPECT_EQ(controller.heard, (std::vector<std::string>{"Load", "Activate", "Click BackBtn"}));
    EXPECT_EQ(form.Control("LanguageOption", 0)->value, 1);
    EXPECT_EQ(form.Control("NotesText")->caption, "Line one\r\n\r\nLine three");
    EXPECT_EQ(Count(out, "== frmIdentification"), 1u) << "wrong lines change nothing, so nothing is printed again";
}

TEST(ConsoleScript, TimersFireOnlyWhenTheScriptSaysSo) {
    clsForm form = IdentificationPage();
    form.AddTimer({"StoppedTimer", 100, false});
    Controller controller(form);
    controller.onClick["ContinueBtn"] = [&] { form.SetShown(false); };
    int ticks = 0;
    controller.onTimer = [&] {
        // The third tick stops the timer, as a controller switches its timer off.
        if (++ticks == 3) form.Timer("PollTimer")->enabled = false;
    };
    ScriptRun run(
        "type NameText = A\n"
        "timer\n"
        "wait\n"
        "wait 5\n"
        "timer\n"
        "timer StoppedTimer\n"
        "enter\n");
    run.renderer.ShowModal(form);

    EXPECT_EQ(Heard(controller, "Timer"), std::vector<std::string>(3, "Timer PollTimer"))
        << "one tick each for timer and wait; wait 5 stops once the timer is off";
    const std::string out = run.out.str();
    EXPECT_NE(out.find("! line 5 \"timer\": frmIdentification has no running timer"), std::string::npos) << out;
    EXPECT_NE(out.find("! line 6 \"timer StoppedTimer\": StoppedTimer is not running"), std::string::npos) << out;
}

TEST(ConsoleScript, AFormShownFromAClickNestsAndTheOuterPageIsPrintedAgainAfterIt) {
    clsForm page = IdentificationPage();
    clsForm message("frmMessage", "Setup", 4000, 1500);
    message.Add({.name = "MessageLabel", .kind = ControlKind::Label, .caption = "Cancel the setup?"});
    message.Add(Button("YesBtn", "Yes", 500, 800));
    message.Add(Button("NoBtn", "No", 2000, 800));
    Controller pageController(page);
    Controller messageController(message);
    ScriptRun run(
        "click CancelBtn\n"
        "click NoBtn\n"
        "click BackBtn\n");
    bool returned = false;
    pageController.onClick["CancelBtn"] = [&] {
        run.renderer.ShowModal(message);   // the cancel question, over the page
        returned = true;
    };
    messageController.onClick["NoBtn"] = [&] { message.SetShown(false); };
    pageController.onClick["BackBtn"] = [&] { page.SetShown(false); };
    run.renderer.ShowModal(page);

    EXPECT_TRUE(returned);
    EXPECT_EQ(messageController.heard, (std::vector<std::string>{"Load", "Activate", "Click NoBtn"}));
    EXPECT_EQ(Heard(pageController, "Click"), (std::vector<std::string>{"Click CancelBtn", "Click BackBtn"}));
    const std::string out = run.out.str();
    const size_t firstPage = out.find("== frmIdentification");
    const size_t messageAt = out.find("== frmMessage: Setup ==\nCancel the setup?  MessageLabel\n[ Yes ]  YesBtn\n");
    const size_t pageAgain = out.find("== frmIdentification", messageAt);
    EXPECT_LT(firstPage, messageAt);
    EXPECT_NE(messageAt, std::string::npos) << out;
    EXPECT_NE(pageAgain, std::string::npos) << "the page is in front again, so it is shown again\n" << out;
}

TEST(ConsoleScript, TheEndOfTheInputClosesEveryNestedFormOnce) {
    // Three levels: a page, the next page shown from its Continue, and the cancel question
    // that the next page's close box brings up. The script ends on the second page.
    clsForm first = IdentificationPage();
    clsForm second("frmLicense", "Setup - Licence", 6000, 3600);
    second.Add(Button("ContinueBtn", "Continue >", 3000, 3000));
    clsForm question("frmMessage", "Setup", 4000, 1500);
    question.Add(Button("YesBtn", "Yes", 500, 800));
    Controller c1(first), c2(second), c3(question);
    ScriptRun run("click ContinueBtn\n");
    c1.onClick["ContinueBtn"] = [&] { run.renderer.ShowModal(second); };
    c2.onQueryUnload = [&] { run.renderer.ShowModal(question); };
    // The first page asks again on its close box; at the end it must not be asked.
    c1.onQueryUnload = [&] { run.renderer.ShowModal(question); };

    run.renderer.ShowModal(first);

    EXPECT_FALSE(first.Shown());
    EXPECT_FALSE(second.Shown());
    EXPECT_FALSE(question.Shown());
    EXPECT_TRUE(run.renderer.InputEnded());
    EXPECT_EQ(c2.heard, (std::vector<std::string>{"Load", "Activate", "QueryUnload"}));
    EXPECT_EQ(c1.heard, (std::vector<std::string>{"Load", "Activate", "Click ContinueBtn"}));
    EXPECT_EQ(c3.heard, (std::vector<std::string>{"Load", "Activate"}));
    const std::string out = run.out.str();
    EXPECT_NE(out.find("# end of input: the close box of frmLicense\n== frmMessage: Setup ==\n[ Yes ]  YesBtn\n\n"
                       "# end of input: frmMessage closed\n# end of input: frmLicense closed\n"
                       "# end of input: frmIdentification closed\n"),
              std::string::npos)
        << out;

    // A form shown after the end (the program goes on to another page) closes at once too.
    clsForm later("frmDone", "Setup - Done", 6000, 3600);
    Controller c4(later);
    run.renderer.ShowModal(later);
    EXPECT_FALSE(later.Shown());
    EXPECT_EQ(c4.heard, (std::vector<std::string>{"Load", "Activate"}));
}

TEST(ConsoleScript, AFormThatLeavesWhileLoadingIsNeitherPrintedNorWaitedFor) {
    // A first welcome page that moves on by itself: the script is not read for it.
    clsForm form = IdentificationPage();
    Controller controller(form);
    controller.onActivate = [&] { form.SetShown(false); };
    ScriptRun run("click BackBtn\n");
    run.renderer.ShowModal(form);
    EXPECT_EQ(run.out.str(), "");
    EXPECT_EQ(controller.heard, (std::vector<std::string>{"Load", "Activate"}));
    EXPECT_FALSE(run.renderer.InputEnded());
}

TEST(ConsoleScript, JapaneseTextsArePrintedIntactAndCanBeTyped) {
    clsForm form("frmWelcome2", "セットアップ - ようこそ", 6000, 3600);
    form.Add({.name = "WelcomeLabel1", .kind = ControlKind::Label, .caption = "ようこそ。Tovel のセットアップへ"});
    form.Add({.name = "NameText", .kind = ControlKind::TextBox, .top = 500, .width = 3000, .height = 285});
    Controller controller(form);
    ScriptRun run("type NameText = 山田 太郎\n");
    run.renderer.ShowModal(form);
    const std::string out = run.out.str();
    EXPECT_EQ(out.rfind("== frmWelcome2: セットアップ - ようこそ ==\nようこそ。Tovel のセットアップへ  WelcomeLabel1\n", 0), 0u)
        << out;
    EXPECT_EQ(form.Control("NameText")->caption, "山田 太郎");
}

// A setup-type page: a list longer than its box, whose controller reads the chosen line
// on each click as the wizard's pages do.
clsForm SetupTypePage() {
    clsForm form("frmSetupType", "Setup - Setup type", 6000, 3600);
    form.Add({.name = "TypeLabel", .kind = ControlKind::Label, .left = 120, .top = 120, .width = 4000, .height = 285,
              .caption = "Choose a setup type."});
    form.Add({.name = "SetupTypeList", .kind = ControlKind::ListBox, .left = 120, .top = 500, .width = 4000, .height = 900,
              .value = 0, .items = {"Typical", "Compact", "Custom", "custom", "Full", "Runtime only", "Samples", "Docs"}});
    form.Add({.name = "DriveList", .kind = ControlKind::ListBox, .left = 120, .top = 1500, .width = 4000, .height = 600,
              .value = -1, .items = {"C:", "D:"}});
    form.Add({.name = "NameText", .kind = ControlKind::TextBox, .left = 120, .top = 2200, .width = 3000, .height = 285});
    auto& next = form.Add(Button("ContinueBtn", "Continue >", 3000, 3000));
    next.isDefault = true;
    return form;
}

TEST(ConsoleScript, SelectChoosesAListLineByNumberTextOrBeginningAndRaisesTheClick) {
    clsForm form = SetupTypePage();
    Controller controller(form);
    std::vector<int> seen;
    controller.onClick["SetupTypeList"] = [&] { seen.push_back(form.Control("SetupTypeList")->value); };
    controller.onClick["ContinueBtn"] = [&] { form.SetShown(false); };
    ScriptRun run(
        "select SetupTypeList = 2\n"
        "select SetupTypeList = custom\n"        // the same text wins over one differing in case
        "select setuptypelist = RUNTIME ONLY\n"  // else the same text without regard to case
        "select SetupTypeList = \"sam\"\n"       // else the first line beginning with it
        "select SetupTypeList = comp\n"
        "select DriveList = d\n"
        "click ContinueBtn\n");
    run.renderer.ShowModal(form);

    EXPECT_EQ(seen, (std::vector<int>{2, 3, 5, 6, 1}));
    EXPECT_EQ(form.Control("SetupTypeList")->value, 1);
    EXPECT_EQ(form.Control("DriveList")->value, 1);
    const std::string out = run.out.str();
    EXPECT_NE(out.find("> select SetupTypeList = custom  (line 3: custom)"), std::string::npos) << out;
    EXPECT_EQ(Count(out, "\n!"), 0u) << out;

    // The chosen line carries the mark: first as the page came, then as the script left it.
    EXPECT_NE(out.find("SetupTypeList:\n  > Typical\n  - Compact\n"), std::string::npos) << out;
    EXPECT_NE(out.find("SetupTypeList:\n  - Typical\n  > Compact\n  - Custom\n"), std::string::npos) << out;
    EXPECT_NE(out.find("DriveList:\n  - C:\n  - D:\n"), std::string::npos) << "no line chosen, none marked";
    EXPECT_NE(out.find("DriveList:\n  - C:\n  > D:\n"), std::string::npos) << out;
}

TEST(ConsoleScript, SelectOfAWrongLineOrControlIsReportedAndChangesNothing) {
    clsForm form = SetupTypePage();
    form.Add({.name = "HiddenList", .kind = ControlKind::ListBox, .top = 2600, .visible = false, .items = {"a"}});
    form.Control("DriveList")->enabled = false;
    Controller controller(form);
    ScriptRun run(
        "select SetupTypeList = 8\n"
        "select SetupTypeList = Nothing like it\n"
        "select SetupTypeList\n"
        "select SetupTypeList =\n"
        "select NameText = 0\n"
        "select DriveList = 0\n"
        "select HiddenList = a\n"
        "select NoList = 0\n"
        "click SetupTypeList\n");
    run.renderer.ShowModal(form);

    const std::string out = run.out.str();
    const std::vector<std::string> messages = {
        "! line 1 \"select SetupTypeList = 8\": SetupTypeList has no line \"8\" (8 lines, numbered from 0); line skipped",
        "! line 2 \"select SetupTypeList = Nothing like it\": SetupTypeList has no line \"Nothing like it\"",
        "! line 3 \"select SetupTypeList\": select needs \"= line\"",
        "! line 4 \"select SetupTypeList =\": select needs a line after \"=\"",
        "! line 5 \"select NameText = 0\": NameText is a text box, not a list; line skipped",
        "! line 6 \"select DriveList = 0\": DriveList is disabled; line skipped",
        "! line 7 \"select HiddenList = a\": HiddenList is hidden; line skipped",
        "! line 8 \"select NoList = 0\": no control \"NoList\" on frmSetupType; line skipped",
        "! line 9 \"click SetupTypeList\": SetupTypeList is a list: use select; line skipped",
    };
    for (const auto& message : messages) EXPECT_NE(out.find(message), std::string::npos) << message << "\n" << out;
    EXPECT_EQ(Count(out, "\n!"), messages.size());
    EXPECT_EQ(Heard(controller, "Click"), std::vector<std::string>{});
    EXPECT_EQ(form.Control("SetupTypeList")->value, 0);
    EXPECT_EQ(form.Control("DriveList")->value, -1);
}

// ---------------------------------------------------------------- the script's grammar

TEST(ConsoleScriptCommand, ReadsControlsIndicesAndTexts) {
    auto c = clsScriptCommand::Parse("click LanguageOption(2)");
    EXPECT_EQ(c.verb, ScriptVerb::Click);
    EXPECT_EQ(c.control, "LanguageOption");
    EXPECT_EQ(c.index, 2);
    c = clsScriptCommand::Parse("\xEF\xBB\xBF  Choose  Bus 3  ");
    EXPECT_EQ(c.verb, ScriptVerb::Choose);
    EXPECT_EQ(c.control, "Bus");
    EXPECT_EQ(c.index, 3);
    c = clsScriptCommand::Parse("type NameText(1) = a = b ");
    EXPECT_EQ(c.control, "NameText");
    EXPECT_EQ(c.index, 1);
    EXPECT_EQ(c.text, "a = b");
    EXPECT_EQ(clsScriptCommand::Parse("type CompanyText =").text, "");
    EXPECT_EQ(clsScriptCommand::Parse("type CompanyText = \"\"").text, "");
    EXPECT_EQ(clsScriptCommand::Parse("type CompanyText = \" x \"").text, " x ");
    EXPECT_EQ(clsScriptCommand::Parse("wait 3").count, 3);
    EXPECT_EQ(clsScriptCommand::Parse("timer JobTimer1").text, "JobTimer1");
    EXPECT_EQ(clsScriptCommand::Parse("  # click ContinueBtn").verb, ScriptVerb::None);
    EXPECT_TRUE(clsScriptCommand::Parse("  # click ContinueBtn").error.empty());

    for (const char* wrong : {"click", "click Name(x)", "click (2)", "click Name -1", "enter now", "close it", "wait 0",
                              "timer a b", "tick Agree 1 2"}) {
        const auto w = clsScriptCommand::Parse(wrong);
        EXPECT_EQ(w.verb, ScriptVerb::None) << wrong;
        EXPECT_FALSE(w.error.empty()) << wrong;
    }
}

// ---------------------------------------------------------------- text widths

TEST(ConsoleText, MeasuresMixedAsciiAndJapanese) {
    EXPECT_EQ(clsTextWidth::Width("Setup"), 5);
    EXPECT_EQ(clsTextWidth::Width("Setup セットアップ"), 6 + 12);
    EXPECT_EQ(clsTextWidth::Width("ﾃｽﾄ"), 3);           // half-width katakana
    EXPECT_EQ(clsTextWidth::Width("Ａ１"), 4);          // full-width letters
    EXPECT_EQ(clsTextWidth::Width("e\xCC\x81"), 1);     // e and a combining accent
    EXPECT_EQ(clsTextWidth::Width("\xFF\xFE" "ab\xE3\x81"), 6) << "each broken byte counts one column";
    EXPECT_EQ(clsTextWidth::Fit("abセット", 4), "abセ");
    EXPECT_EQ(clsTextWidth::Fit("abセット", 5), "abセ") << "half of a wide character is left out";
    EXPECT_EQ(clsTextWidth::DropLast("名前"), "名");
}

TEST(ConsoleText, WrapsWordsAndJapaneseWithinTheWidth) {
    EXPECT_EQ(clsTextWidth::Wrap("Please read the licence agreement", 12),
              (std::vector<std::string>{"Please read", "the licence", "agreement"}));
    EXPECT_EQ(clsTextWidth::Wrap("ライセンス契約書をお読みください", 10),
              (std::vector<std::string>{"ライセンス", "契約書をお", "読みくださ", "い"}));
    EXPECT_EQ(clsTextWidth::Wrap("One\r\n\r\nTwo", 20), (std::vector<std::string>{"One", "", "Two"}));
    EXPECT_EQ(clsTextWidth::Wrap("abcdefghij", 4), (std::vector<std::string>{"abcd", "efgh", "ij"}));
    EXPECT_EQ(clsTextWidth::Wrap("\tx", 20), (std::vector<std::string>{"        x"}));
    for (const auto& line : clsTextWidth::Wrap("Tovel のセットアップへようこそ。Continue を押してください。", 9)) {
        EXPECT_LE(clsTextWidth::Width(line), 9) << line;
    }
}

// ---------------------------------------------------------------- terminal layout

// A licence page as the wizard lays one out: a banner picture on the left, a long text, two
// options, a Japanese note and the three buttons along the bottom.
clsForm LicencePage() {
    clsForm form("frmLicense", "Setup - Licence agreement", 7500, 5500);
    form.Add({.name = "Image1", .kind = ControlKind::Image, .left = 0, .top = 0, .width = 2000, .height = 4800,
              .picture = "D:\\Bitmaps\\banner.bmp"});
    form.Add({.name = "License1Label", .kind = ControlKind::Label, .left = 2200, .top = 120, .width = 5100, .height = 255,
              .caption = "Please read the following licence agreement carefully."});
    std::string licence;
    for (int i = 1; i <= 60; ++i) licence += "Licence line " + std::to_string(i) + "\r\n";
    form.Add({.name = "LicenseText", .kind = ControlKind::TextBox, .left = 2200, .top = 500, .width = 5100, .height = 2700,
              .caption = licence, .multiLine = true, .locked = true});
    form.Add({.name = "optYes", .kind = ControlKind::OptionButton, .left = 2200, .top = 3350, .width = 5100, .height = 285,
              .caption = "I accept the terms of the licence agreement"});
    form.Add({.name = "optNo", .kind = ControlKind::OptionButton, .left = 2200, .top = 3650, .width = 5100, .height = 285,
              .caption = "I do not accept the terms", .value = 1});
    form.Add({.name = "NoteLabel", .kind = ControlKind::Label, .left = 2200, .top = 4000, .width = 5100, .height = 500,
              .caption = "ライセンス契約書をお読みください。"});
    form.Add(Button("BackBtn", "< Back", 3500, 4900));
    auto& next = form.Add(Button("ContinueBtn", "Continue >", 4800, 4900));
    next.isDefault = true;
    form.Add(Button("CancelBtn", "Cancel", 6150, 4900));
    return form;
}

FormPlace PlaceAlone(clsForm& form, int cols, int rows, FormView& view) {
    std::vector<ScreenForm> forms = {{&form, &view, {}}};
    (void)clsConsoleLayout::Screen(forms, cols, rows, false);
    return forms.front().place;
}

bool AnyLineHas(const std::vector<std::string>& lines, const std::string& text) {
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& l) { return l.find(text) != std::string::npos; });
}

TEST(ConsoleLayout, At80x24EveryControlIsInsideAndApartAndItsTextWhole) {
    clsForm form = LicencePage();
    FormView view;
    const FormPlace place = PlaceAlone(form, 80, 24, view);
    EXPECT_EQ(place.frame, (CellRect{0, 0, 80, 24}));
    ASSERT_EQ(place.controls.size(), form.Controls().size());
    for (const auto& p : place.controls) {
        EXPECT_TRUE(p.rect.Inside(place.inner)) << form.Controls()[p.control].name;
        if (p.control == 0) continue;   // the picture lies under nothing, the rest apart
        for (const auto& q : place.controls) {
            if (&p == &q || q.control == 0) continue;
            EXPECT_FALSE(p.rect.Overlaps(q.rect)) << p.control << " and " << q.control;
        }
    }

    const auto lines = clsConsoleLayout::Lines(form, 80, 24);
    ASSERT_EQ(lines.size(), 24u);
    for (const auto& line : lines) EXPECT_EQ(clsTextWidth::Width(line), 80) << line;
    for (const char* text : {"Setup - Licence agreement", "[ < Back ]", "[ Continue > ]", "[ Cancel ]", "( ) I accept",
                             "(o) I do not accept the terms", "ライセンス契約書をお読みください。", "Licence line 1",
                             "<picture: banner.bmp>"}) {
        EXPECT_TRUE(AnyLineHas(lines, text)) << text;
    }
    EXPECT_FALSE(AnyLineHas(lines, "Licence line 60")) << "the long text scrolls";
    // The default button has the focus; a long locked text can take it too, for scrolling.
    EXPECT_EQ(view.focus, std::optional<size_t>(7));
    EXPECT_TRUE(place.Find(2)->focusable);
}

TEST(ConsoleLayout, ALargerTerminalIsUsed) {
    clsForm form = LicencePage();
    FormView small, large;
    const FormPlace at80 = PlaceAlone(form, 80, 24, small);
    const FormPlace at120 = PlaceAlone(form, 120, 40, large);
    EXPECT_EQ(at120.frame, (CellRect{0, 0, 120, 40}));
    int right = 0, bottom = 0;
    for (const auto& p : at120.controls) {
        EXPECT_TRUE(p.rect.Inside(at120.inner));
        right = std::max(right, p.rect.Right());
        bottom = std::max(bottom, p.rect.Bottom());
    }
    EXPECT_GT(right, 100);
    EXPECT_GT(bottom, 34);
    EXPECT_GT(at120.Find(2)->text.h, at80.Find(2)->text.h) << "more of the licence is shown at once";

    // A huge terminal shows a page at most twice its natural size, centred.
    FormView huge;
    const FormPlace at300 = PlaceAlone(form, 300, 100, huge);
    EXPECT_LT(at300.frame.w, 140);
    EXPECT_GT(at300.frame.x, 50);
}

TEST(ConsoleLayout, ScrollingAndFocusFollowTheForm) {
    clsForm form = LicencePage();
    FormView view;
    view.scroll[2] = 1000;   // past the end: held at the last page of the text
    std::vector<ScreenForm> forms = {{&form, &view, {}}};
    auto lines = clsConsoleLayout::Screen(forms, 80, 24, false).Lines();
    EXPECT_TRUE(AnyLineHas(lines, "Licence line 60"));
    EXPECT_FALSE(AnyLineHas(lines, "Licence line 1 "));
    EXPECT_EQ(view.scroll[2], forms[0].place.Find(2)->ScrollLimit());

    // The focused button is disabled: the focus goes on to the next control.
    form.Control("ContinueBtn")->enabled = false;
    (void)clsConsoleLayout::Screen(forms, 80, 24, false);
    EXPECT_EQ(view.focus, std::optional<size_t>(8));
    EXPECT_EQ(clsConsoleLayout::NextFocus(forms[0].place, view.focus, 1), std::optional<size_t>(2)) << "wraps around";
}

TEST(ConsoleLayout, AMessageIsCentredOverThePageInFront) {
    clsForm page = LicencePage();
    clsForm message("frmMessage", "Setup", 4500, 1500);
    message.Add({.name = "MessageLabel", .kind = ControlKind::Label, .left = 200, .top = 200, .width = 4100, .height = 255,
                 .caption = "Do you really want to cancel the setup?"});
    message.Add(Button("YesBtn", "Yes", 1000, 800));
    message.Add(Button("NoBtn", "No", 2400, 800));
    FormView pageView, messageView;
    std::vector<ScreenForm> forms = {{&page, &pageView, {}}, {&message, &messageView, {}}};
    const clsScreenGrid grid = clsConsoleLayout::Screen(forms, 80, 24, true);
    const CellRect box = forms[1].place.frame;
    EXPECT_LE(std::abs(box.x - (80 - box.Right())), 1);
    EXPECT_LE(std::abs(box.y - (24 - box.Bottom())), 1);
    const auto lines = grid.Lines();
    EXPECT_TRUE(AnyLineHas(lines, "Setup - Licence agreement")) << "the page stays around it";
    EXPECT_TRUE(AnyLineHas(lines, "Do you really want to cancel the setup?"));
    EXPECT_TRUE(AnyLineHas(lines, "[ busy ]")) << "on the form in front";
    EXPECT_EQ(lines[static_cast<size_t>(box.y)].substr(static_cast<size_t>(box.x), 2), "+=") << "the front frame is doubled";
    EXPECT_EQ(messageView.focus, std::optional<size_t>(1));

    // Alone (before the first page) a message keeps a page's scale instead of filling the screen.
    FormView aloneView;
    std::vector<ScreenForm> alone = {{&message, &aloneView, {}}};
    (void)clsConsoleLayout::Screen(alone, 80, 24, false);
    const CellRect lone = alone[0].place.frame;
    EXPECT_LE(std::abs(lone.w - box.w), 3);
    EXPECT_EQ(lone.h, box.h);
    EXPECT_LE(std::abs(lone.x - (80 - lone.Right())), 1);
    const ControlPlace* yes = forms[1].place.Find(1);
    EXPECT_NE(grid.AttrAt(yes->rect.x + yes->rect.w / 2, yes->rect.y) & cell::kReverse, 0) << "the focus is marked";
}

TEST(ConsoleLayout, TinyScreensAndOddFormsDoNotBreakIt) {
    clsForm form = LicencePage();
    for (const auto& [cols, rows] : std::vector<std::pair<int, int>>{{20, 6}, {4, 3}, {1, 1}, {0, 0}}) {
        const auto lines = clsConsoleLayout::Lines(form, cols, rows);
        EXPECT_FALSE(lines.empty());
        for (const auto& line : lines) EXPECT_EQ(clsTextWidth::Width(line), static_cast<int>(std::max(cols, 1)));
    }
    clsForm odd("frmOdd", "", 0, -5);
    odd.Add({.name = "Far", .kind = ControlKind::Label, .left = 900000, .top = -300, .width = -5, .caption = "x"});
    odd.Add({.name = "Wide", .kind = ControlKind::CommandButton, .caption = std::string(300, 'W')});
    const auto lines = clsConsoleLayout::Lines(odd, 80, 24);
    EXPECT_EQ(lines.size(), 24u);
}

TEST(ConsoleLayout, WideCharactersOverwrittenByHalvesLeaveNoBrokenGlyph) {
    clsScreenGrid grid(6, 1);
    grid.Put(0, 0, "日本語", cell::kNormal);
    EXPECT_EQ(grid.Line(0), "日本語");
    grid.Put(1, 0, "ab", cell::kNormal);   // over the right half of 日 and the left half of 本
    EXPECT_EQ(grid.Line(0), " ab 語");
    EXPECT_EQ(grid.Put(5, 0, "語", cell::kNormal), 0) << "half a character does not fit";
}

// ---------------------------------------------------------------- keys

TEST(ConsoleKeys, TheArrowsMoveTheChosenLineOfAFocusedListAndKeepItInSight) {
    clsForm form = SetupTypePage();
    Controller controller(form);
    std::vector<int> seen;
    controller.onClick["SetupTypeList"] = [&] { seen.push_back(form.Control("SetupTypeList")->value); };
    FormView view;
    const FormPlace place = PlaceAlone(form, 80, 24, view);
    const size_t list = 1;
    const ControlPlace* p = place.Find(list);
    ASSERT_NE(p, nullptr);
    ASSERT_TRUE(p->focusable);
    ASSERT_GT(p->ScrollLimit(), 0) << "the list must be longer than its box for this test";
    ASSERT_TRUE(place.Find(2)->focusable) << "a short list takes the focus too: its line can be chosen";
    view.focus = list;
    const auto chosen = [&] { return form.Control("SetupTypeList")->value; };
    const auto press = [&](KeyCode key) { return clsTerminalLoop::ListKey(form, place, view, key); };
    const auto inSight = [&] { return chosen() >= view.scroll[list] && chosen() < view.scroll[list] + p->text.h; };

    EXPECT_TRUE(press(KeyCode::Up));   // already on the first line: nothing to tell
    EXPECT_EQ(chosen(), 0);
    EXPECT_TRUE(seen.empty());
    EXPECT_TRUE(press(KeyCode::Down));
    EXPECT_EQ(chosen(), 1);
    EXPECT_TRUE(press(KeyCode::End));
    EXPECT_EQ(chosen(), 7);
    EXPECT_TRUE(inSight());
    EXPECT_EQ(view.scroll[list], p->ScrollLimit());
    EXPECT_TRUE(press(KeyCode::Down));   // at the last line: stays
    EXPECT_TRUE(press(KeyCode::PageUp));
    EXPECT_EQ(chosen(), 7 - std::max(p->text.h - 1, 1));
    EXPECT_TRUE(inSight());
    EXPECT_TRUE(press(KeyCode::Home));
    EXPECT_EQ(chosen(), 0);
    EXPECT_EQ(view.scroll[list], 0);
    EXPECT_TRUE(press(KeyCode::PageDown));
    EXPECT_TRUE(inSight());
    EXPECT_EQ(seen, (std::vector<int>{1, 7, 7 - std::max(p->text.h - 1, 1), 0, chosen()}));

    // Tab and the other keys are not the list's: the focus moves on as before.
    EXPECT_FALSE(press(KeyCode::Tab));
    EXPECT_FALSE(press(KeyCode::Enter));
    // A list with no line chosen starts at the first; off a list the arrows are not taken.
    view.focus = 2;
    EXPECT_TRUE(press(KeyCode::Down));
    EXPECT_EQ(form.Control("DriveList")->value, 0);
    view.focus = 3;
    EXPECT_FALSE(press(KeyCode::Down));
    form.Control("SetupTypeList")->enabled = false;
    view.focus = list;
    EXPECT_FALSE(press(KeyCode::Down)) << "a disabled list chooses nothing";

    // The chosen line is drawn in reverse, the others not.
    form.Control("SetupTypeList")->enabled = true;
    std::vector<ScreenForm> forms = {{&form, &view, {}}};
    const clsScreenGrid grid = clsConsoleLayout::Screen(forms, 80, 24, false);
    const ControlPlace* drawn = forms[0].place.Find(list);
    const int row = drawn->text.y + chosen() - view.scroll[list];
    EXPECT_NE(grid.AttrAt(drawn->text.x, row) & cell::kReverse, 0);
    const int other = row == drawn->text.y ? row + 1 : drawn->text.y;
    EXPECT_EQ(grid.AttrAt(drawn->text.x, other) & cell::kReverse, 0);
}

TEST(ConsoleKeys, TerminalBytesBecomeKeys) {
    std::string bytes = "\x1b[A\x1b" "OB\x1b[6~\x1b[5~\x1b[Z\t\r\n\x7f" "a\x1b[3~\x0c";
    const auto keys = clsTerminal::Decode(bytes, false);
    const std::vector<Key> expected = {{KeyCode::Up}, {KeyCode::Down}, {KeyCode::PageDown}, {KeyCode::PageUp},
                                       {KeyCode::BackTab}, {KeyCode::Tab}, {KeyCode::Enter}, {KeyCode::Backspace},
                                       {KeyCode::Char, "a"}, {KeyCode::Delete}, {KeyCode::Redraw}};
    EXPECT_EQ(keys, expected);
    EXPECT_TRUE(bytes.empty());

    // Pieces: an Escape may start a sequence, a Japanese character may come in two reads.
    std::string pending = "\x1b";
    EXPECT_TRUE(clsTerminal::Decode(pending, false).empty());
    EXPECT_EQ(clsTerminal::Decode(pending, true), (std::vector<Key>{{KeyCode::Escape}}));
    pending = "\xE3\x81";
    EXPECT_TRUE(clsTerminal::Decode(pending, false).empty());
    pending += "\x82";
    EXPECT_EQ(clsTerminal::Decode(pending, false), (std::vector<Key>{{KeyCode::Char, "あ"}}));
    pending = "\x1b[1;5";   // cut off for good: dropped, not kept for ever
    EXPECT_TRUE(clsTerminal::Decode(pending, true).empty());
    EXPECT_TRUE(pending.empty());
}

} // namespace
} // namespace tovel
