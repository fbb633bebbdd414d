#pragma once
// The text wizard for a person at a terminal: the form fills the screen, drawn in the
// terminal's size; a form shown over another (a message over a page) is centred on it.
// Tab, Shift-Tab and the arrows move the focus; Space presses, chooses or ticks; Enter
// presses the focused button or else the default one; Esc presses the cancel button or else
// the close box; PgUp, PgDn, Home, End and the arrows scroll a long text, and on a list or
// the component tree move its chosen line (drawn in reverse); Space flips the box of the
// tree's chosen line; typing and Backspace edit a text box; Ctrl-L draws the
// screen anew. Timers fire by their intervals while keys are awaited. Keys are read from
// standard input's terminal and the screen is drawn on standard output's.
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "ui/console/clsConsoleMode.h"
#include "ui/console/clsTerminal.h"
#include "ui/console/clsTerminalTimers.h"

namespace tovel {

class clsTerminalLoop final : public clsConsoleMode {
public:
    explicit clsTerminalLoop(clsConsoleStack& stack);
    ~clsTerminalLoop() override;

    /// Enters the terminal; false when standard input is no terminal.
    bool Begin() override;
    void Run(ConsoleShown& shown) override;
    void Left(long shownId) override;
    void DoEvents() override;
    void Refresh(ConsoleShown& shown) override;
    void SetHourglass(bool busy) override;

    /// A key for the focused list box (or tree) of a form as placed: Up, Down, PgUp, PgDn, Home and
    /// End move its chosen line (setting `value`, raising Click, keeping the line in sight).
    /// False when the focus is on no list or the key is not one of those.
    static bool ListKey(clsForm& form, const FormPlace& place, FormView& view, KeyCode key);

private:
    [[nodiscard]] bool Ready() const { return terminal_ && terminal_->Entered(); }
    /// Takes the first key waiting and hands it to the form in front.
    void HandleNextKey();
    void HandleKey(ConsoleShown& shown, const Key& key);
    bool MoveKey(ConsoleShown& shown, KeyCode key);
    bool ScrollKey(ConsoleShown& shown, KeyCode key);
    void EditKey(clsForm& form, const clsFormControl* control, const Key& key);
    static void Press(clsForm& form, const clsFormControl& control);
    static void Scroll(ConsoleShown& shown, size_t control, int by, bool absolute);
    void Draw();

    std::unique_ptr<clsTerminal> terminal_;
    clsTerminalTimers timers_;
    std::vector<Key> keys_;
    std::vector<std::string> screen_;   // what the terminal shows, row by row
    bool repaint_ = true;
    bool busy_ = false;
    std::chrono::steady_clock::time_point lastDraw_{};
};

} // namespace tovel
