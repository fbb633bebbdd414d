#pragma once
// The text wizard: shows the forms in a terminal, or runs them from a script.
//
// Script mode (standard input is no terminal, and in tests): each form is printed as plain
// text when it waits for input (again whenever it changed, or another form was in front),
// then one action a line is read and raised on it (the grammar: clsScriptCommand.h). A wrong
// line gets a one-line "!" message and is skipped. At the end of the input the form in front
// gets its close box once; then every form still shown, and any shown later, is closed at
// once, so every nested modal loop returns. Timers fire only on "timer" and "wait", so a run
// is the same every time.
//
// Terminal mode (a person at a terminal): the form fills the screen, drawn in the
// terminal's size; a form shown over another (a message over a page) is centred on it.
// Tab, Shift-Tab and the arrows move the focus; Space presses, chooses or ticks; Enter
// presses the focused button or else the default one; Esc presses the cancel button or else
// the close box; PgUp, PgDn, Home, End and the arrows scroll a long text, and on a list move
// its chosen line (drawn in reverse); typing and Backspace edit a text box; Ctrl-L draws the
// screen anew. Timers fire by their intervals
// while keys are awaited. Keys are read from standard input's terminal and the screen is
// drawn on standard output's.
#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "ui/console/clsConsoleLayout.h"
#include "ui/console/clsScriptCommand.h"
#include "ui/console/clsTerminal.h"
#include "wizard/clsRenderer.h"

namespace tovel {

enum class ConsoleMode { Script, Terminal };

class clsConsoleRenderer final : public clsRenderer {
public:
    /// `in` and `out` carry the script and the printed forms in script mode. Terminal mode
    /// falls back to script mode when standard input turns out to be no terminal.
    clsConsoleRenderer(std::istream& in, std::ostream& out, ConsoleMode mode);
    ~clsConsoleRenderer() override;
    clsConsoleRenderer(const clsConsoleRenderer&) = delete;
    clsConsoleRenderer& operator=(const clsConsoleRenderer&) = delete;

    /// Terminal when both standard input and standard output are terminals, else Script.
    [[nodiscard]] static ConsoleMode DetectMode();

    void ShowModal(clsForm& form) override;
    void DoEvents() override;
    void SetHourglass(bool busy) override;
    void Refresh(const clsForm& form) override;

    /// A form as script mode prints it: a header with its name and caption, then its
    /// visible controls in reading order, each with the name a script uses for it.
    [[nodiscard]] static std::string PageText(const clsForm& form);
    /// A key for the focused list box of a form as placed: Up, Down, PgUp, PgDn, Home and
    /// End move its chosen line (setting `value`, raising Click, keeping the line in sight).
    /// False when the focus is on no list or the key is not one of those.
    static bool ListKey(clsForm& form, const FormPlace& place, FormView& view, KeyCode key);
    /// How a script's "wait" lets a timer's interval pass (the machine's clock); without one
    /// the rounds follow each other at once.
    void SetTimerSleep(std::function<void(uint32_t milliseconds)> sleep) { sleep_ = std::move(sleep); }
    /// True once the script (or the terminal) has ended.
    [[nodiscard]] bool InputEnded() const { return ending_; }

private:
    struct Shown {
        clsForm* form = nullptr;
        long id = 0;
        FormView view{};
        FormPlace place{};
        std::string printed{};
        bool everPrinted = false;
    };
    struct TimerClock {
        long shownId = 0;
        std::string name{};
        int intervalMs = 0;
        std::chrono::steady_clock::time_point due{};
        bool running = false;
    };

    Shown* Front();
    Shown* Find(const clsForm& form);
    std::vector<Shown*> OnScreen();

    // Script mode.
    void ScriptLoop(Shown& shown);
    void PrintIfChanged(Shown& shown);
    void Perform(Shown& shown, const std::string& line);
    void Wrong(const std::string& line, const std::string& why);
    clsFormControl* Target(clsForm& form, const ScriptCommand& command, std::string& why);
    void FireTimers(clsForm& form, const std::string& only);
    /// The "wait" rounds of a script.
    void Wait(clsForm& form, const ScriptCommand& command);
    void EndOfInput(Shown& shown);
    void CloseAtEnd(Shown& shown);

    // Terminal mode.
    bool EnsureTerminal();
    void TerminalLoop(Shown& shown);
    void HandleKey(Shown& shown, const Key& key);
    void Press(clsForm& form, const clsFormControl& control);
    void Scroll(Shown& shown, size_t control, int by, bool absolute);
    void Draw();
    void SyncTimers();
    int MsUntilNextTimer();
    void FireDueTimers();

    std::istream& in_;
    std::ostream& out_;
    ConsoleMode mode_;
    std::vector<std::unique_ptr<Shown>> stack_;
    long serial_ = 0;
    long lastPrinted_ = 0;
    int line_ = 0;
    bool ending_ = false;
    bool busy_ = false;

    std::unique_ptr<clsTerminal> terminal_;
    std::vector<Key> keys_;
    std::vector<std::string> screen_;   // what the terminal shows, row by row
    bool repaint_ = true;
    bool inDoEvents_ = false;
    std::chrono::steady_clock::time_point lastDraw_{};
    std::vector<TimerClock> clocks_;
    std::function<void(uint32_t)> sleep_;
};

} // namespace tovel
