#pragma once
// What the text wizard does with the forms it shows, in one of its two ways: the script
// runner (input from a file or a pipe) or the terminal loop (a person at a terminal).
// clsConsoleRenderer keeps the stack of forms and hands each step to the mode in use.
#include "ui/console/clsConsoleStack.h"

namespace tovel {

class clsConsoleMode {
public:
    explicit clsConsoleMode(clsConsoleStack& stack) : stack_(stack) {}
    virtual ~clsConsoleMode() = default;
    clsConsoleMode(const clsConsoleMode&) = delete;
    clsConsoleMode& operator=(const clsConsoleMode&) = delete;

    /// Gets ready to show a form; false when this mode cannot run here.
    virtual bool Begin() { return true; }
    /// Runs the user's actions on a loaded and activated form until it is no longer shown.
    virtual void Run(ConsoleShown& shown) = 0;
    /// A form that is already waiting further out was to be shown again.
    virtual void AlreadyShown(const clsForm& /*form*/) {}
    /// A showing's loop has returned and it has left the stack.
    virtual void Left(long /*shownId*/) {}
    /// Lets pending actions and timers run once.
    virtual void DoEvents() {}
    /// One round of a form's wait while it is shown: the user may act on it meanwhile.
    virtual void WhileWaiting(ConsoleShown& /*shown*/) { DoEvents(); }
    /// Shows a form again after its controls changed outside an event.
    virtual void Refresh(ConsoleShown& shown) = 0;
    virtual void SetHourglass(bool /*busy*/) {}

    /// The default (or, with `cancel`, the cancel) button that can be pressed now.
    [[nodiscard]] static clsFormControl* DefaultButton(clsForm& form, bool cancel);

protected:
    [[nodiscard]] clsConsoleStack& Stack() { return stack_; }

private:
    clsConsoleStack& stack_;
};

} // namespace tovel
