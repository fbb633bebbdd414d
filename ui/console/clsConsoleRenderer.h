#pragma once
// The text wizard: shows the forms in a terminal (clsTerminalLoop), or runs them from a
// script (clsScriptRunner). This class keeps the stack of forms both ways share and hands
// each step to the way in use; a terminal that cannot be entered falls back to the script.
#include <cstdint>
#include <functional>
#include <iosfwd>

#include "ui/console/clsConsoleStack.h"
#include "ui/console/clsScriptRunner.h"
#include "ui/console/clsTerminalLoop.h"
#include "wizard/clsRenderer.h"

namespace tovel {

enum class ConsoleMode { Script, Terminal };

class clsConsoleRenderer final : public clsRenderer {
public:
    /// `in` and `out` carry the script and the printed forms in script mode. Terminal mode
    /// falls back to script mode when standard input turns out to be no terminal.
    clsConsoleRenderer(std::istream& in, std::ostream& out, ConsoleMode mode);

    /// Terminal when both standard input and standard output are terminals, else Script.
    [[nodiscard]] static ConsoleMode DetectMode();

    void ShowModal(clsForm& form) override;
    void DoEvents() override;
    void WhileWaiting(clsForm& form) override;
    void SetHourglass(bool busy) override;
    void Refresh(const clsForm& form) override;

    /// How a script's "wait" lets a timer's interval pass (the machine's clock); without one
    /// the rounds follow each other at once.
    void SetTimerSleep(std::function<void(uint32_t milliseconds)> sleep) { script_.SetTimerSleep(std::move(sleep)); }
    /// True once the script (or the terminal) has ended.
    [[nodiscard]] bool InputEnded() const { return stack_.Ending(); }

private:
    clsConsoleStack stack_;
    clsScriptRunner script_;
    clsTerminalLoop terminal_;
    clsConsoleMode* mode_;
    bool inDoEvents_ = false;
};

} // namespace tovel
