#pragma once
// The text wizard run from a script (standard input is no terminal, and in tests): each
// form is printed as plain text when it waits for input (again whenever it changed, or
// another form was in front), then one action a line is read and raised on it (the grammar:
// clsScriptCommand.h). A wrong line gets a one-line "!" message and is skipped. At the end
// of the input the form in front gets its close box once; then every form still shown, and
// any shown later, is closed at once, so every nested modal loop returns. Timers fire only
// on "timer" and "wait", so a run is the same every time.
//
// A form that waits by itself (the first welcome page) is printed at once and takes the
// script's next line while it waits, when the line fits it: a verb for the whole form, or a
// control it has. A line that does not fit is kept for the form that follows, and the wait
// runs out.
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "ui/console/clsConsoleMode.h"
#include "ui/console/clsScriptCommand.h"

namespace tovel {

class clsScriptRunner final : public clsConsoleMode {
public:
    /// `in` carries the script, `out` takes the printed forms and the echoed actions.
    clsScriptRunner(clsConsoleStack& stack, std::istream& in, std::ostream& out);

    void Run(ConsoleShown& shown) override;
    void AlreadyShown(const clsForm& form) override;
    void WhileWaiting(ConsoleShown& shown) override;
    void Refresh(ConsoleShown& shown) override;
    /// How "wait" lets a timer's interval pass (the machine's clock); without one the rounds
    /// follow each other at once.
    void SetTimerSleep(std::function<void(uint32_t milliseconds)> sleep) { sleep_ = std::move(sleep); }

private:
    void PrintIfChanged(ConsoleShown& shown);
    /// The next line of the script (a kept one first); false at its end.
    bool ReadLine(std::string& line);
    void EndOfInput(ConsoleShown& shown);
    void CloseAtEnd(ConsoleShown& shown);
    /// True when the line is for this form: a wrong line, a verb for the whole form that it
    /// can take, or a control it has.
    [[nodiscard]] static bool Fits(clsForm& form, const std::string& line);

    void Perform(clsForm& form, const std::string& line);
    void OnControl(clsForm& form, const ScriptCommand& command, const std::string& line);
    void Select(clsForm& form, clsFormControl& list, const ScriptCommand& command, const std::string& line);
    void Press(clsForm& form, bool cancel, const std::string& line);
    /// toggle and focus: a line of the form's tree.
    void OnTree(clsForm& form, const ScriptCommand& command, const std::string& line);
    void FireNamedTimers(clsForm& form, const ScriptCommand& command, const std::string& line);
    void Wait(clsForm& form, const ScriptCommand& command, const std::string& line);
    void Echo(const std::string& line, const std::string& note);
    void Wrong(const std::string& line, const std::string& why);
    /// The control a line names, or nullptr with the reason in `why`.
    static clsFormControl* Target(clsForm& form, const ScriptCommand& command, std::string& why);
    /// Why a verb cannot act on a control of this kind; empty when it can.
    [[nodiscard]] static std::string Refusal(const clsFormControl& target, ScriptVerb verb);
    static void FireTimers(clsForm& form, const std::string& only);

    std::istream& in_;
    std::ostream& out_;
    long lastPrinted_ = 0;
    int line_ = 0;
    std::optional<std::string> kept_{};
    std::function<void(uint32_t)> sleep_{};   // read while a form waited, for the form that follows
};

} // namespace tovel
