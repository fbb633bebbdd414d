#include "ui/console/clsScriptRunner.h"

#include <algorithm>
#include <istream>
#include <ostream>
#include <vector>

#include "common/clsString.h"
#include "startup/Globals.h"
#include "ui/console/clsPageText.h"
#include "wizard/uscTreeListView.h"

namespace tovel {

namespace {

std::string Trimmed(const std::string& line) {
    std::string text = clsString::Trim(line);
    while (!text.empty() && text.back() == '\r') text.pop_back();
    return text;
}

const char* KindWord(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label: return "a label";
    case ControlKind::CommandButton: return "a button";
    case ControlKind::OptionButton: return "an option";
    case ControlKind::CheckBox: return "a check box";
    case ControlKind::TextBox: return "a text box";
    case ControlKind::ListBox: return "a list";
    case ControlKind::Image: return "a picture";
    case ControlKind::Frame: return "a frame";
    case ControlKind::TreeListView: return "a tree";
    }
    return "a control";
}

bool AnyTimerRunning(clsForm& form) {
    return std::any_of(form.Timers().begin(), form.Timers().end(), [](const clsFormTimer& t) { return t.enabled; });
}

bool IsControlVerb(ScriptVerb verb) {
    switch (verb) {
    case ScriptVerb::Click:
    case ScriptVerb::Choose:
    case ScriptVerb::Tick:
    case ScriptVerb::Untick:
    case ScriptVerb::Type:
    case ScriptVerb::Select: return true;
    default: return false;
    }
}

} // namespace

clsScriptRunner::clsScriptRunner(clsConsoleStack& stack, std::istream& in, std::ostream& out)
    : clsConsoleMode(stack), in_(in), out_(out) {}

void clsScriptRunner::Run(ConsoleShown& shown) {
    while (shown.form->Shown()) {
        if (Stack().Ending()) {
            CloseAtEnd(shown);
            return;
        }
        PrintIfChanged(shown);
        std::string line;
        if (!ReadLine(line)) {
            EndOfInput(shown);
            continue;
        }
        Perform(*shown.form, line);
    }
}

void clsScriptRunner::AlreadyShown(const clsForm& form) {
    out_ << "! " << form.Name() << " is already shown; not shown again\n";
}

void clsScriptRunner::WhileWaiting(ConsoleShown& shown) {
    if (Stack().Ending() || !shown.form->Shown()) return;
    PrintIfChanged(shown);
    if (kept_) return;   // the script has gone on to a later form: this one waits its time out
    std::string line;
    if (!ReadLine(line)) {
        EndOfInput(shown);
        return;
    }
    if (Fits(*shown.form, line)) Perform(*shown.form, line);
    else kept_ = std::move(line);
}

void clsScriptRunner::Refresh(ConsoleShown& shown) {
    if (!Stack().Ending()) PrintIfChanged(shown);
}

void clsScriptRunner::PrintIfChanged(ConsoleShown& shown) {
    std::string text = clsPageText::Of(*shown.form);
    if (text == shown.printed && lastPrinted_ == shown.id) return;
    out_ << text << '\n';
    out_.flush();
    shown.printed = std::move(text);
    shown.everPrinted = true;
    lastPrinted_ = shown.id;
}

bool clsScriptRunner::ReadLine(std::string& line) {
    if (kept_) {
        line = std::move(*kept_);
        kept_.reset();
        return true;
    }
    // A silent run's input belongs to whoever started it, not to the setup's pages.
    if (SilentMode || !std::getline(in_, line)) return false;
    ++line_;
    return true;
}

void clsScriptRunner::EndOfInput(ConsoleShown& shown) {
    out_ << "# end of input: the close box of " << shown.form->Name() << '\n';
    Stack().EndOfInput(shown);
}

void clsScriptRunner::CloseAtEnd(ConsoleShown& shown) {
    if (!shown.everPrinted) PrintIfChanged(shown);
    out_ << "# end of input: " << shown.form->Name() << " closed\n";
    out_.flush();
    clsConsoleStack::CloseAtEnd(shown);
}

bool clsScriptRunner::Fits(clsForm& form, const std::string& line) {
    const ScriptCommand command = clsScriptCommand::Parse(line);
    switch (command.verb) {
    case ScriptVerb::None:
    case ScriptVerb::Esc:
    case ScriptVerb::Close: return true;
    case ScriptVerb::Enter: return DefaultButton(form, false) != nullptr;
    case ScriptVerb::Print: return true;
    case ScriptVerb::Toggle:
    case ScriptVerb::Focus: return uscTreeListView::Of(form) != nullptr;
    case ScriptVerb::Timer:
    case ScriptVerb::Wait: return AnyTimerRunning(form);
    default:
        return std::any_of(form.Controls().begin(), form.Controls().end(), [&](const clsFormControl& c) {
            return clsString::EqualNoCaseAscii(c.name, command.control);
        });
    }
}

void clsScriptRunner::Echo(const std::string& line, const std::string& note) {
    out_ << "> " << Trimmed(line) << note << '\n';
    out_.flush();
}

void clsScriptRunner::Wrong(const std::string& line, const std::string& why) {
    out_ << "! line " << line_ << " \"" << Trimmed(line) << "\": " << why << "; line skipped\n";
    out_.flush();
}

void clsScriptRunner::Perform(clsForm& form, const std::string& line) {
    const ScriptCommand command = clsScriptCommand::Parse(line);
    if (!command.error.empty()) {
        Wrong(line, command.error);
        return;
    }
    if (IsControlVerb(command.verb)) {
        OnControl(form, command, line);
        return;
    }
    switch (command.verb) {
    case ScriptVerb::Enter: Press(form, false, line); return;
    case ScriptVerb::Esc: Press(form, true, line); return;
    case ScriptVerb::Close:
        Echo(line, "");
        form.RaiseQueryUnload();
        return;
    case ScriptVerb::Timer: FireNamedTimers(form, command, line); return;
    case ScriptVerb::Wait: Wait(form, command, line); return;
    case ScriptVerb::Toggle:
    case ScriptVerb::Focus: OnTree(form, command, line); return;
    case ScriptVerb::Print:
        Echo(line, "");
        out_ << clsPageText::Of(form) << '\n';
        out_.flush();
        return;
    default: return;   // blank or comment
    }
}

std::string clsScriptRunner::Refusal(const clsFormControl& target, ScriptVerb verb) {
    const ControlKind kind = target.kind;
    const std::string is = clsPageText::ControlId(target) + " is " + KindWord(kind);
    const bool clickable = kind == ControlKind::CommandButton || kind == ControlKind::OptionButton ||
                           kind == ControlKind::CheckBox || kind == ControlKind::Label || kind == ControlKind::Image;
    switch (verb) {
    case ScriptVerb::Click:
        if (clickable) return {};
        return is + (kind == ControlKind::TextBox        ? ": use type"
                     : kind == ControlKind::ListBox      ? ": use select"
                     : kind == ControlKind::TreeListView ? ": use toggle or focus"
                                                         : " and cannot be clicked");
    case ScriptVerb::Choose: return kind == ControlKind::OptionButton ? std::string() : is + ", not an option";
    case ScriptVerb::Tick:
    case ScriptVerb::Untick: return kind == ControlKind::CheckBox ? std::string() : is + ", not a check box";
    case ScriptVerb::Select: return kind == ControlKind::ListBox ? std::string() : is + ", not a list";
    case ScriptVerb::Type:
        if (kind != ControlKind::TextBox) return is + ", not a text box";
        return target.locked ? clsPageText::ControlId(target) + " is read-only" : std::string();
    default: return {};
    }
}

void clsScriptRunner::OnControl(clsForm& form, const ScriptCommand& command, const std::string& line) {
    std::string why;
    clsFormControl* target = Target(form, command, why);
    if (target != nullptr) why = Refusal(*target, command.verb);
    if (!why.empty()) {
        Wrong(line, why);
        return;
    }
    const std::string name = target->name;   // the event may change the controls
    const int index = target->index;
    switch (command.verb) {
    case ScriptVerb::Select: Select(form, *target, command, line); return;
    case ScriptVerb::Type:
        Echo(line, "");
        form.RaiseChange(name, index, command.text);
        return;
    case ScriptVerb::Tick:
    case ScriptVerb::Untick:
        if ((target->value != 0) == (command.verb == ScriptVerb::Tick)) {
            Echo(line, command.verb == ScriptVerb::Tick ? "  (already ticked)" : "  (already clear)");
            return;
        }
        break;
    default: break;
    }
    Echo(line, "");
    form.RaiseClick(name, index);
}

void clsScriptRunner::Select(clsForm& form, clsFormControl& list, const ScriptCommand& command, const std::string& line) {
    const int chosen = clsScriptCommand::MatchLine(list.items, command.text);
    if (chosen < 0) {
        Wrong(line, clsPageText::ControlId(list) + " has no line \"" + command.text + "\" (" +
                        std::to_string(list.items.size()) + " lines, numbered from 0)");
        return;
    }
    Echo(line, "  (line " + std::to_string(chosen) + ": " + list.items[static_cast<size_t>(chosen)] + ")");
    list.value = chosen;
    const std::string name = list.name;
    form.RaiseClick(name, list.index);
}

void clsScriptRunner::OnTree(clsForm& form, const ScriptCommand& command, const std::string& line) {
    clsFormControl* tree = uscTreeListView::Of(form);
    if (tree == nullptr) {
        Wrong(line, form.Name() + " has no tree");
        return;
    }
    if (!tree->enabled) {
        Wrong(line, clsPageText::ControlId(*tree) + " is disabled");
        return;
    }
    const int node = uscTreeListView::Find(*tree, command.text);
    if (node < 0) {
        Wrong(line, clsPageText::ControlId(*tree) + " has no line \"" + command.text + "\"");
        return;
    }
    const TreeListNode& chosen = tree->nodes[static_cast<size_t>(node)];
    if (command.verb == ScriptVerb::Toggle && !uscTreeListView::HasBox(chosen)) {
        Wrong(line, "\"" + chosen.text + "\" has no box");
        return;
    }
    Echo(line, "  (" + chosen.key + ")");
    const std::string name = tree->name;   // the event may change the controls
    if (command.verb == ScriptVerb::Toggle) {
        form.RaiseNodeCheck(name, node);
        return;
    }
    tree->value = node;
    form.RaiseClick(name, tree->index);
}

void clsScriptRunner::Press(clsForm& form, bool cancel, const std::string& line) {
    const clsFormControl* button = DefaultButton(form, cancel);
    if (button == nullptr && !cancel) {
        Wrong(line, form.Name() + " has no default button that can be pressed");
        return;
    }
    if (button == nullptr) {
        Echo(line, "  (close box)");
        form.RaiseQueryUnload();
        return;
    }
    Echo(line, "  (" + button->name + ")");
    const std::string name = button->name;
    form.RaiseClick(name, button->index);
}

void clsScriptRunner::FireNamedTimers(clsForm& form, const ScriptCommand& command, const std::string& line) {
    std::string only;
    if (!command.text.empty()) {
        const auto timer = std::find_if(form.Timers().begin(), form.Timers().end(), [&](const clsFormTimer& t) {
            return clsString::EqualNoCaseAscii(t.name, command.text);
        });
        if (timer == form.Timers().end()) {
            Wrong(line, "no timer \"" + command.text + "\" on " + form.Name());
            return;
        }
        if (!timer->enabled) {
            Wrong(line, timer->name + " is not running");
            return;
        }
        only = timer->name;
    } else if (!AnyTimerRunning(form)) {
        Wrong(line, form.Name() + " has no running timer");
        return;
    }
    Echo(line, "");
    FireTimers(form, only);
}

void clsScriptRunner::Wait(clsForm& form, const ScriptCommand& command, const std::string& line) {
    Echo(line, "");
    for (int round = 0; (command.untilLeft || round < command.count) && form.Shown() && !Stack().Ending(); ++round) {
        int interval = -1;
        for (const auto& t : form.Timers()) {
            if (t.enabled && (interval < 0 || t.intervalMs < interval)) interval = t.intervalMs;
        }
        if (interval < 0) break;
        if (sleep_) sleep_(static_cast<uint32_t>(interval));
        FireTimers(form, "");
    }
}

void clsScriptRunner::FireTimers(clsForm& form, const std::string& only) {
    std::vector<std::string> names;
    for (const auto& t : form.Timers()) {
        if (t.enabled && (only.empty() || t.name == only)) names.push_back(t.name);
    }
    for (const auto& name : names) {
        if (!form.Shown()) return;   // a timer of a closed form stops
        form.RaiseTimer(name);
    }
}

clsFormControl* clsScriptRunner::Target(clsForm& form, const ScriptCommand& command, std::string& why) {
    clsFormControl* found = nullptr;
    std::vector<int> elements;
    for (auto& c : form.Controls()) {
        if (!clsString::EqualNoCaseAscii(c.name, command.control)) continue;
        if (c.index == command.index) found = &c;
        if (c.index >= 0) elements.push_back(c.index);
    }
    if (found == nullptr) {
        if (elements.empty()) {
            why = "no control \"" + command.control + "\" on " + form.Name();
        } else {
            std::sort(elements.begin(), elements.end());
            const std::string name = command.control;
            why = command.index < 0 ? name + " is a control array: give the element, " + name + "(" +
                                          std::to_string(elements.front()) + ") to " + name + "(" +
                                          std::to_string(elements.back()) + ")"
                                    : name + " has no element " + std::to_string(command.index);
        }
        return nullptr;
    }
    if (!found->visible) why = clsPageText::ControlId(*found) + " is hidden";
    else if (!found->enabled) why = clsPageText::ControlId(*found) + " is disabled";
    return why.empty() ? found : nullptr;
}

} // namespace tovel
