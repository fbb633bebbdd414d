// The Windows renderer with real windows (invisible under Wine's null display): the modal
// loops as the pages use them, the user's actions reaching the form, the form's changes
// reaching the windows, captions in another code page, and the read-back of a shown page.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "language/clsLanguage.h"
#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"
#include "tests/support/BedFixture.h"
#include "ui/win32/clsWin32FormWindow.h"
#include "ui/win32/clsWin32LayoutCheck.h"
#include "ui/win32/clsWin32Renderer.h"

using namespace tovel;

namespace {

// A controller whose handlers the test writes; every event is noted.
class Events : public clsFormEvents {
public:
    std::vector<std::string> log;
    std::function<void()> onActivate, onTimer, onClose;
    std::function<void(const std::string&)> onClick, onChange;
    void FormLoad() override { log.push_back("load"); }
    void FormActivate() override {
        log.push_back("activate");
        if (onActivate) onActivate();
    }
    void Click(const std::string& control, int index) override {
        log.push_back("click " + control + (index >= 0 ? "(" + std::to_string(index) + ")" : ""));
        if (onClick) onClick(control);
    }
    void Change(const std::string& control, int) override {
        log.push_back("change " + control);
        if (onChange) onChange(control);
    }
    void Timer(const std::string& timer) override {
        log.push_back("timer " + timer);
        if (onTimer) onTimer();
    }
    void FormQueryUnload() override {
        log.push_back("close");
        if (onClose) onClose();
    }
};

clsForm Page() {
    clsForm form("frmTest", "Test page", 6000, 3000);
    form.Add({.name = "InfoLabel", .kind = ControlKind::Label, .left = 120, .top = 120, .width = 5000, .height = 255, .caption = "Hello"});
    form.Add({.name = "NameText", .kind = ControlKind::TextBox, .left = 120, .top = 480, .width = 3000, .height = 315});
    form.Add({.name = "Choice", .kind = ControlKind::OptionButton, .index = 0, .left = 120, .top = 900, .width = 2000, .height = 255, .caption = "One", .value = 1});
    form.Add({.name = "Choice", .kind = ControlKind::OptionButton, .index = 1, .left = 120, .top = 1200, .width = 2000, .height = 255, .caption = "Two"});
    form.Add({.name = "DriveList", .kind = ControlKind::ListBox, .left = 3000, .top = 900, .width = 2000, .height = 900, .items = {"C:", "D:"}});
    form.Add({.name = "ContinueBtn", .kind = ControlKind::CommandButton, .left = 2400, .top = 2400, .width = 1215, .height = 375, .caption = "Next >", .isDefault = true});
    form.Add({.name = "CancelBtn", .kind = ControlKind::CommandButton, .left = 3720, .top = 2400, .width = 1215, .height = 375, .caption = "Cancel", .isCancel = true});
    return form;
}

size_t Slot(const clsForm& form, const std::string& name, int index = -1) {
    for (size_t i = 0; i < form.Controls().size(); ++i) {
        if (form.Controls()[i].name == name && form.Controls()[i].index == index) return i;
    }
    return form.Controls().size();
}

HWND ControlWindow(const clsWin32Renderer& renderer, const clsForm& form, const std::string& name, int index = -1) {
    return GetDlgItem(renderer.WindowOf(form), clsWin32FormWindow::ControlId(Slot(form, name, index)));
}

std::wstring TextOf(HWND window) {
    wchar_t buffer[512];
    const int n = GetWindowTextW(window, buffer, 512);
    return std::wstring(buffer, static_cast<size_t>(n > 0 ? n : 0));
}

} // namespace

TEST(Win32Renderer, TheUsersActionsReachTheFormAndItsChangesTheWindows) {
    clsWin32Renderer renderer;
    clsForm form = Page();
    Events events;
    form.SetEvents(&events);
    bool continueWasEnabled = true;
    events.onActivate = [&] {
        // As the user would: a click, a line chosen, a text typed, the second option.
        PostMessageW(ControlWindow(renderer, form, "Choice", 1), BM_CLICK, 0, 0);
        SendMessageW(ControlWindow(renderer, form, "DriveList"), LB_SETCURSEL, 1, 0);
        PostMessageW(renderer.WindowOf(form), WM_COMMAND, MAKEWPARAM(clsWin32FormWindow::ControlId(Slot(form, "DriveList")), LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(ControlWindow(renderer, form, "DriveList")));
        SetWindowTextW(ControlWindow(renderer, form, "NameText"), L"Jörg");
    };
    events.onChange = [&](const std::string&) {
        // The page disables Continue while the name is empty; the window follows.
        form.Control("ContinueBtn")->enabled = form.Control("NameText")->caption.empty();
        form.Control("InfoLabel")->caption = "Name: " + form.Control("NameText")->caption;
    };
    events.onClick = [&](const std::string& control) {
        if (control != "DriveList") return;
        continueWasEnabled = IsWindowEnabled(ControlWindow(renderer, form, "ContinueBtn")) != 0;
        EXPECT_EQ(TextOf(ControlWindow(renderer, form, "InfoLabel")), L"Name: Jörg");
        EXPECT_EQ(SendMessageW(ControlWindow(renderer, form, "Choice", 1), BM_GETCHECK, 0, 0), BST_CHECKED);
        EXPECT_EQ(SendMessageW(ControlWindow(renderer, form, "Choice", 0), BM_GETCHECK, 0, 0), BST_UNCHECKED);
        form.SetShown(false);
    };
    renderer.ShowModal(form);
    EXPECT_EQ(events.log, (std::vector<std::string>{"load", "activate", "change NameText", "click Choice(1)", "click DriveList"}));
    EXPECT_EQ(form.Control("NameText")->caption, "Jörg");
    EXPECT_EQ(form.Control("DriveList")->value, 1);
    EXPECT_EQ(form.Control("Choice", 1)->value, 1);
    EXPECT_FALSE(continueWasEnabled);
    EXPECT_EQ(renderer.WindowOf(form), nullptr) << "the window goes with its loop";
}

TEST(Win32Renderer, EnterEscTimersAndTheCloseBoxGoToTheForm) {
    clsWin32Renderer renderer;
    clsForm form = Page();
    form.AddTimer({"JobTimer1", 10, true});
    Events events;
    form.SetEvents(&events);
    int ticks = 0;
    events.onTimer = [&] {
        // Disabled during its tick, as the installation page does; three ticks, then the keys.
        form.Timer("JobTimer1")->enabled = ++ticks < 3;
        if (ticks == 3) {
            PostMessageW(renderer.WindowOf(form), WM_COMMAND, IDOK, 0);
            PostMessageW(renderer.WindowOf(form), WM_COMMAND, IDCANCEL, 0);
            PostMessageW(renderer.WindowOf(form), WM_CLOSE, 0, 0);
        }
    };
    events.onClose = [&] { form.SetShown(false); };
    renderer.ShowModal(form);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(events.log, (std::vector<std::string>{"load", "activate", "timer JobTimer1", "timer JobTimer1", "timer JobTimer1",
                                                    "click ContinueBtn", "click CancelBtn", "close"}));
}

TEST(Win32Renderer, LoopsNestAsPagesDoAndTheOuterPageWaitsDisabled) {
    clsWin32Renderer renderer;
    clsForm outer = Page();
    clsForm inner = Page();
    Events outerEvents, innerEvents;
    outer.SetEvents(&outerEvents);
    inner.SetEvents(&innerEvents);
    bool outerEnabledMeanwhile = true;
    HWND innerOwner = nullptr;
    outerEvents.onActivate = [&] { PostMessageW(ControlWindow(renderer, outer, "ContinueBtn"), BM_CLICK, 0, 0); };
    outerEvents.onClick = [&](const std::string&) {
        // The page hands over: it hides, the next one shows from inside its click.
        renderer.ShowModal(inner);
        outer.SetShown(false);
    };
    innerEvents.onActivate = [&] {
        outerEnabledMeanwhile = IsWindowEnabled(renderer.WindowOf(outer)) != 0;
        innerOwner = GetWindow(renderer.WindowOf(inner), GW_OWNER);
        // The same form again from inside its own loop: ignored, it is already shown.
        renderer.ShowModal(inner);
        PostMessageW(ControlWindow(renderer, inner, "CancelBtn"), BM_CLICK, 0, 0);
    };
    innerEvents.onClick = [&](const std::string&) { inner.SetShown(false); };
    renderer.ShowModal(outer);
    EXPECT_FALSE(outerEnabledMeanwhile);
    EXPECT_NE(innerOwner, nullptr) << "a page in front of another is owned by it";
    EXPECT_EQ(innerEvents.log, (std::vector<std::string>{"load", "activate", "click CancelBtn"}));
    EXPECT_EQ(outerEvents.log, (std::vector<std::string>{"load", "activate", "click ContinueBtn"}));
}

// The captions ask the machine's code page: this test needs a platform.
class Win32RendererOnBed : public test::BedFixture {};

TEST_F(Win32RendererOnBed, DoEventsRunsWhatIsWaitingAndAJapaneseCaptionSurvivesAWesternCodePage) {
    clsWin32Renderer renderer;
    gLanguage = std::make_unique<clsLanguage>();
    gLanguage->SetLanguageID(1041);   // Japanese texts, while the test's Windows is English
    const int32_t platformId = std::exchange(OSPlatformId, 2);   // the NT family: wide window procedures
    clsForm form = Page();
    form.Control("InfoLabel")->caption = "セットアップ";
    form.Control("NameText")->caption = "日本語";
    // A kind the renderer does not know yet holds its place.
    form.Add({.name = "Tree", .kind = static_cast<ControlKind>(200), .left = 120, .top = 1800, .width = 2000, .height = 500});
    Events events;
    form.SetEvents(&events);
    std::vector<std::string> during;
    events.onActivate = [&] {
        PostMessageW(ControlWindow(renderer, form, "ContinueBtn"), BM_CLICK, 0, 0);
        renderer.DoEvents();   // the click runs here, not after the page's work
        during = events.log;
        EXPECT_EQ(TextOf(ControlWindow(renderer, form, "InfoLabel")), clsWin32Text::ToWide("セットアップ").value());
        EXPECT_EQ(TextOf(ControlWindow(renderer, form, "NameText")), clsWin32Text::ToWide("日本語").value());
        EXPECT_NE(ControlWindow(renderer, form, "Tree"), nullptr);
        form.SetShown(false);
    };
    renderer.ShowModal(form);
    gLanguage.reset();
    OSPlatformId = platformId;
    EXPECT_EQ(during, (std::vector<std::string>{"load", "activate", "click ContinueBtn"}));
}

TEST(Win32LayoutCheck, NamesControlsOutsideTheFormCutCaptionsAndMissingTexts) {
    clsWin32Renderer renderer;
    clsForm good = Page();
    clsForm bad = Page();
    bad.Control("CancelBtn")->left = 5400;   // reaches past the right edge of 6000
    bad.Control("InfoLabel")->width = 600;
    bad.Control("InfoLabel")->caption = "A caption far too long for the narrow place it has been given";
    std::vector<std::string> goodFaults, badFaults;
    Events goodEvents, badEvents;
    good.SetEvents(&goodEvents);
    bad.SetEvents(&badEvents);
    goodEvents.onActivate = [&] {
        goodFaults = clsWin32LayoutCheck::Check(good, renderer.WindowOf(good));
        good.SetShown(false);
    };
    badEvents.onActivate = [&] {
        // The window lost its text behind the form's back.
        SetWindowTextW(ControlWindow(renderer, bad, "ContinueBtn"), L"");
        badFaults = clsWin32LayoutCheck::Check(bad, renderer.WindowOf(bad));
        bad.SetShown(false);
    };
    renderer.ShowModal(good);
    renderer.ShowModal(bad);
    EXPECT_TRUE(goodFaults.empty()) << goodFaults.front();
    ASSERT_EQ(badFaults.size(), 3U);
    EXPECT_NE(badFaults[0].find("outside the form"), std::string::npos) << badFaults[0];
    EXPECT_NE(badFaults[0].find("Cancel"), std::string::npos) << badFaults[0];
    EXPECT_NE(badFaults[1].find("InfoLabel: \"A caption far too long"), std::string::npos) << badFaults[1];
    EXPECT_NE(badFaults[1].find("cut off"), std::string::npos) << badFaults[1];
    EXPECT_NE(badFaults[2].find("ContinueBtn: empty"), std::string::npos) << badFaults[2];
}

TEST(Win32Background, OwnsThePagesRefusesTheUsersCloseAndIsNotTopMost) {
    clsWin32Renderer renderer;
    renderer.ShowBackground();
    const HWND background = renderer.Background();
    ASSERT_NE(background, nullptr);
    EXPECT_EQ(GetWindowLongPtrW(background, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    RECT whole;
    GetWindowRect(background, &whole);
    EXPECT_EQ(whole.right - whole.left, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(whole.bottom - whole.top, GetSystemMetrics(SM_CYSCREEN));
    // Alt+F4 or the system menu: refused.
    SendMessageW(background, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(background));

    clsForm form = Page();
    Events events;
    form.SetEvents(&events);
    HWND owner = nullptr;
    RECT page{};
    events.onActivate = [&] {
        owner = GetWindow(renderer.WindowOf(form), GW_OWNER);
        GetWindowRect(renderer.WindowOf(form), &page);
        form.SetShown(false);
    };
    renderer.ShowModal(form);
    EXPECT_EQ(owner, background);
    // Centred on the screen, to the pixel that an odd difference leaves.
    EXPECT_LE(std::abs(page.left - (whole.right - page.right)), 1);
    EXPECT_LE(std::abs(page.top - (whole.bottom - page.bottom)), 1);

    // The end of the program closes it through the open forms.
    EXPECT_TRUE(gOpenForms.Unload("frmGradientBackground"));
    EXPECT_FALSE(IsWindow(background));
}
