// The message box on its real form (invisible under Wine's null display): for every button
// set of the message style each button is pressed through its window (BM_CLICK), and the
// result is the one the Windows message box would give; the windows show the captions in the
// setup language, the default button and the icon the style asks for; Help leaves the form
// open and the close box answers as the Windows message box does.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "language/clsLanguage.h"
#include "platform/win32/Win32Headers.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"
#include "tests/support/BedFixture.h"
#include "ui/win32/clsWin32FormWindow.h"
#include "ui/win32/clsWin32Renderer.h"
#include "wizard/clsMessage.h"

using namespace tovel;

namespace {

constexpr int kHelp = 16384;
constexpr int kClose = -1;   // a press of the close box instead of a button

// What the windows of one message showed.
struct Seen {
    std::vector<std::string> buttons;   ///< captions in order, "*" after the default one
    HICON icon = nullptr;
    int shown = 0;
};

HWND ControlWindow(const clsForm& form, HWND window, const std::string& name, int index = -1) {
    for (size_t slot = 0; slot < form.Controls().size(); ++slot) {
        const clsFormControl& c = form.Controls()[slot];
        if (c.name == name && c.index == index) return GetDlgItem(window, clsWin32FormWindow::ControlId(slot));
    }
    return nullptr;
}

std::string TextOf(HWND window) {
    wchar_t buffer[256];
    const int n = GetWindowTextW(window, buffer, 256);
    return clsWin32Text::ToUtf8(std::wstring(buffer, static_cast<size_t>(n > 0 ? n : 0)));
}

bool IsDefault(HWND button) { return (GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON; }

class Win32Message : public test::BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        gLanguage = std::make_unique<clsLanguage>();
        gLanguage->SetLanguageID(1031);   // German: OK, Cancel, Yes and No are translated
        SetRenderer(&renderer_);
    }
    void TearDown() override {
        SetRenderer(nullptr);
        gLanguage.reset();
        BedFixture::TearDown();
    }

    /// Shows a message of the style; once its window is on view, reads it back and presses
    /// the buttons (0-based, or kClose) in order, as a person would.
    int Ask(int style, const std::vector<int>& presses) {
        seen_ = {};
        renderer_.SetOnShown([&](clsForm& form, HWND window) {
            ++seen_.shown;
            for (int i = 0; HWND button = ControlWindow(form, window, "MessageButton", i); ++i) {
                if (IsWindowVisible(button)) seen_.buttons.push_back(TextOf(button) + (IsDefault(button) ? "*" : ""));
            }
            const HWND icon = ControlWindow(form, window, "MessageIcon");
            if (icon != nullptr && IsWindowVisible(icon)) {
                seen_.icon = reinterpret_cast<HICON>(SendMessageW(icon, STM_GETICON, 0, 0));
            }
            for (int press : presses) {
                if (press == kClose) {
                    PostMessageW(window, WM_CLOSE, 0, 0);
                } else {
                    PostMessageW(ControlWindow(form, window, "MessageButton", press), BM_CLICK, 0, 0);
                }
            }
        });
        return clsMessage().MsgBox("Setup wirklich abbrechen?", style, "Tovel");
    }

    clsWin32Renderer renderer_;
    Seen seen_;
};

TEST_F(Win32Message, EveryButtonOfEveryStyleGivesItsResult) {
    const struct {
        int set;
        std::vector<std::string> buttons;
        std::vector<int> results;   ///< of button 1, 2, 3
    } sets[] = {
        {0, {"OK*"}, {1}},
        {1, {"OK*", "Abbrechen"}, {1, 2}},
        {2, {"Abort*", "Retry", "Ignore"}, {3, 4, 5}},   // never translated
        {3, {"Ja*", "Nein", "Abbrechen"}, {6, 7, 2}},
        {4, {"Ja*", "Nein"}, {6, 7}},
        {5, {"Retry*", "Abbrechen"}, {4, 2}},
        {6, {"OK*"}, {1}},   // 6 and 7 are no sets: OK alone
        {7, {"OK*"}, {1}},
    };
    for (const auto& s : sets) {
        for (size_t pressed = 0; pressed < s.results.size(); ++pressed) {
            EXPECT_EQ(Ask(s.set, {static_cast<int>(pressed)}), s.results[pressed]) << "set " << s.set << ", button " << pressed + 1;
            EXPECT_EQ(seen_.shown, 1) << s.set;
            EXPECT_EQ(seen_.buttons, s.buttons) << s.set;
        }
    }
}

TEST_F(Win32Message, HelpStaysOpenAndTheStyleChoosesDefaultButtonAndIcon) {
    // Help is appended to the sets 1 to 5; pressing it leaves the form for the next button.
    EXPECT_EQ(Ask(1 + kHelp, {2, 2, 1}), 2);
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"OK*", "Abbrechen", "Help"}));
    EXPECT_EQ(Ask(3 + kHelp, {3, 1}), 7);
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"Ja*", "Nein", "Abbrechen", "Help"}));
    EXPECT_EQ(Ask(0 + kHelp, {0}), 1);
    EXPECT_EQ(seen_.buttons, std::vector<std::string>{"OK*"});

    // 256, 512 and 768 make the second, third and fourth button the default.
    EXPECT_EQ(Ask(4 + 256, {1}), 7);
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"Ja", "Nein*"}));
    EXPECT_EQ(Ask(2 + 512, {2}), 5);
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"Abort", "Retry", "Ignore*"}));
    EXPECT_EQ(Ask(3 + kHelp + 768, {0}), 6);
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"Ja", "Nein", "Abbrechen", "Help*"}));
    EXPECT_EQ(Ask(5 + 512, {0}), 4);   // no third button: the first stays the default
    EXPECT_EQ(seen_.buttons, (std::vector<std::string>{"Retry*", "Abbrechen"}));

    // The icons are Windows' own; 80 and 96 are none of them.
    const struct {
        int bits;
        const wchar_t* icon;
    } icons[] = {{16, IDI_HAND}, {32, IDI_QUESTION}, {48, IDI_EXCLAMATION}, {64, IDI_ASTERISK}, {0, nullptr}, {80, nullptr}, {96, nullptr}};
    for (const auto& i : icons) {
        EXPECT_EQ(Ask(4 + i.bits, {0}), 6) << i.bits;
        EXPECT_EQ(seen_.icon, i.icon == nullptr ? nullptr : LoadIconW(nullptr, i.icon)) << i.bits;
    }
}

TEST_F(Win32Message, TheCloseBoxAnswersCancelOrTheOnlyOKAndOtherwiseNothing) {
    EXPECT_EQ(Ask(1, {kClose}), 2);
    EXPECT_EQ(Ask(3, {kClose}), 2);
    EXPECT_EQ(Ask(0, {kClose}), 1);
    // Yes and No: the close box does nothing, the form waits for an answer.
    EXPECT_EQ(Ask(36, {kClose, 1}), 7);
    EXPECT_EQ(Ask(2, {kClose, 0}), 3);
}

} // namespace
