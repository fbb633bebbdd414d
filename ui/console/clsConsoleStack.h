#pragma once
// The forms the text wizard shows, innermost last, as both the script runner and the
// terminal loop see them. Calls nest (a page shows the next one from inside an event), so
// a form leaves the stack only when its own modal loop returns.
#include <memory>
#include <string>
#include <vector>

#include "ui/console/clsConsoleLayout.h"
#include "wizard/clsForm.h"

namespace tovel {

/// One showing of a form: what a mode keeps about it while its modal loop runs.
struct ConsoleShown {
    clsForm* form = nullptr;
    long id = 0;                 ///< unique for the renderer's life
    FormView view{};             ///< focus and scrolling (terminal)
    FormPlace place{};           ///< where it was last drawn (terminal)
    std::string printed{};       ///< the text last printed for it (script)
    bool everPrinted = false;
};

class clsConsoleStack {
public:
    /// Puts a form on top; it stays until Pop.
    ConsoleShown& Push(clsForm& form);
    void Pop(const ConsoleShown& shown);
    /// The innermost form still shown; nullptr when none is.
    [[nodiscard]] ConsoleShown* Front();
    /// The latest showing of a form; nullptr when it is not on the stack.
    [[nodiscard]] ConsoleShown* Find(const clsForm& form);
    /// The showing with this id; nullptr when it has left.
    [[nodiscard]] ConsoleShown* ById(long id);
    /// The forms shown, outermost first, each once.
    [[nodiscard]] std::vector<ConsoleShown*> OnScreen();

    /// True once the input (script or terminal) has ended: every form is closed at once.
    [[nodiscard]] bool Ending() const { return ending_; }
    /// The input has ended: the form in front gets its close box once, as a person would
    /// close the window; whatever that brings up is closed at once.
    void EndOfInput(ConsoleShown& shown);
    /// Closes a form without asking, as the end of the input does.
    static void CloseAtEnd(ConsoleShown& shown) { shown.form->SetShown(false); }

private:
    std::vector<std::unique_ptr<ConsoleShown>> stack_;
    long serial_ = 0;
    bool ending_ = false;
};

} // namespace tovel
