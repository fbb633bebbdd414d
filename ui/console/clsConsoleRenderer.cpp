#include "ui/console/clsConsoleRenderer.h"

#include <unistd.h>

#include <utility>

#include "startup/Globals.h"

namespace tovel {

clsConsoleRenderer::clsConsoleRenderer(std::istream& in, std::ostream& out, ConsoleMode mode)
    : script_(stack_, in, out), terminal_(stack_),
      mode_(mode == ConsoleMode::Terminal ? static_cast<clsConsoleMode*>(&terminal_) : &script_) {}

ConsoleMode clsConsoleRenderer::DetectMode() {
    return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDOUT_FILENO) != 0 ? ConsoleMode::Terminal : ConsoleMode::Script;
}

void clsConsoleRenderer::ShowModal(clsForm& form) {
    if (stack_.Find(form) != nullptr && form.Shown()) {
        // Already waiting in a loop further out: a second loop on it could never end first.
        mode_->AlreadyShown(form);
        return;
    }
    ConsoleShown& shown = stack_.Push(form);
    // A form shown from an action that DoEvents handled has its own loop, in which letting
    // events run is allowed again.
    const bool outerDoEvents = std::exchange(inDoEvents_, false);
    form.SetShown(true);
    // The screen is ready before Load: a page that waits in its Activate (letting events
    // run) must already take actions and show the busy mark.
    // A silent run has nobody at the terminal: its pages go on by themselves, and the script
    // runner reads no input in silent mode, so a page that did not is closed as at its end.
    if (SilentMode || !mode_->Begin()) mode_ = &script_;
    form.RaiseLoad();
    if (form.Shown()) form.RaiseActivate();
    mode_->Run(shown);
    inDoEvents_ = outerDoEvents;
    const long id = shown.id;
    stack_.Pop(shown);
    mode_->Left(id);
}

void clsConsoleRenderer::DoEvents() {
    if (inDoEvents_) return;
    inDoEvents_ = true;
    mode_->DoEvents();
    inDoEvents_ = false;
}

void clsConsoleRenderer::WhileWaiting(clsForm& form) {
    ConsoleShown* shown = stack_.Find(form);
    if (shown == nullptr || !form.Shown()) return DoEvents();
    if (inDoEvents_) return;
    inDoEvents_ = true;
    mode_->WhileWaiting(*shown);
    inDoEvents_ = false;
}

void clsConsoleRenderer::SetHourglass(bool busy) { mode_->SetHourglass(busy); }

void clsConsoleRenderer::Refresh(const clsForm& form) {
    ConsoleShown* shown = stack_.Find(form);
    if (shown != nullptr && form.Shown()) mode_->Refresh(*shown);
}

} // namespace tovel
