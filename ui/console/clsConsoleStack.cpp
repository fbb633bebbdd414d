#include "ui/console/clsConsoleStack.h"

#include <algorithm>

namespace tovel {

ConsoleShown& clsConsoleStack::Push(clsForm& form) {
    stack_.push_back(std::make_unique<ConsoleShown>());
    ConsoleShown& shown = *stack_.back();
    shown.form = &form;
    shown.id = ++serial_;
    return shown;
}

void clsConsoleStack::Pop(const ConsoleShown& shown) {
    std::erase_if(stack_, [&](const std::unique_ptr<ConsoleShown>& s) { return s.get() == &shown; });
}

ConsoleShown* clsConsoleStack::Front() {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->form->Shown()) return it->get();
    }
    return nullptr;
}

ConsoleShown* clsConsoleStack::Find(const clsForm& form) {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->form == &form) return it->get();
    }
    return nullptr;
}

ConsoleShown* clsConsoleStack::ById(long id) {
    const auto it = std::find_if(stack_.begin(), stack_.end(), [&](const auto& s) { return s->id == id; });
    return it != stack_.end() ? it->get() : nullptr;
}

std::vector<ConsoleShown*> clsConsoleStack::OnScreen() {
    // A form hidden and shown again while its first loop still waits further out is on
    // the stack twice: only its latest showing counts.
    std::vector<ConsoleShown*> shown;
    for (auto& s : stack_) {
        if (s->form->Shown() && Find(*s->form) == s.get()) shown.push_back(s.get());
    }
    return shown;
}

void clsConsoleStack::EndOfInput(ConsoleShown& shown) {
    ending_ = true;
    shown.form->RaiseQueryUnload();
}

} // namespace tovel
