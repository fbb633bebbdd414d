#include "ui/console/clsConsoleRenderer.h"

#include <unistd.h>

#include <algorithm>
#include <istream>
#include <ostream>
#include <utility>

#include "common/clsString.h"
#include "ui/console/clsTextWidth.h"

namespace tovel {

namespace {

using Clock = std::chrono::steady_clock;

// The longest the wait for keys sleeps: the terminal's size is looked at this often.
constexpr int kMaxPollMs = 1000;
// DoEvents may be called in a tight loop (a page waiting some seconds); it redraws at most
// this often.
constexpr auto kDoEventsDrawGap = std::chrono::milliseconds(30);

std::string ControlId(const clsFormControl& c) {
    return c.index >= 0 ? c.name + "(" + std::to_string(c.index) + ")" : c.name;
}

std::string OneLine(const std::string& text) {
    std::string out;
    for (const auto& line : clsTextWidth::Lines(text)) {
        if (!out.empty()) out += ' ';
        out += line;
    }
    return out;
}

std::string Marks(const clsFormControl& c) {
    std::vector<std::string> marks;
    if (c.kind == ControlKind::CommandButton && c.isDefault) marks.emplace_back("default");
    if (c.kind == ControlKind::CommandButton && c.isCancel) marks.emplace_back("cancel");
    if (!c.enabled) marks.emplace_back("disabled");
    if (c.kind == ControlKind::TextBox && c.locked) marks.emplace_back("read-only");
    std::string text;
    for (const auto& m : marks) text += (text.empty() ? " (" : ", ") + m;
    return text.empty() ? text : text + ")";
}

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
    }
    return "a control";
}

clsFormControl* DefaultButton(clsForm& form, bool cancel) {
    for (auto& c : form.Controls()) {
        if (c.kind == ControlKind::CommandButton && c.visible && c.enabled && (cancel ? c.isCancel : c.isDefault)) return &c;
    }
    return nullptr;
}

} // namespace

clsConsoleRenderer::clsConsoleRenderer(std::istream& in, std::ostream& out, ConsoleMode mode)
    : in_(in), out_(out), mode_(mode) {}

clsConsoleRenderer::~clsConsoleRenderer() {
    if (terminal_) terminal_->Leave();
}

ConsoleMode clsConsoleRenderer::DetectMode() {
    return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDOUT_FILENO) != 0 ? ConsoleMode::Terminal : ConsoleMode::Script;
}

clsConsoleRenderer::Shown* clsConsoleRenderer::Front() {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->form->Shown()) return it->get();
    }
    return nullptr;
}

clsConsoleRenderer::Shown* clsConsoleRenderer::Find(const clsForm& form) {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->form == &form) return it->get();
    }
    return nullptr;
}

std::vector<clsConsoleRenderer::Shown*> clsConsoleRenderer::OnScreen() {
    // A form hidden and shown again while its first loop still waits further out is on
    // the stack twice: only its latest showing counts.
    std::vector<Shown*> shown;
    for (auto& s : stack_) {
        if (s->form->Shown() && Find(*s->form) == s.get()) shown.push_back(s.get());
    }
    return shown;
}

void clsConsoleRenderer::ShowModal(clsForm& form) {
    if (Find(form) != nullptr && form.Shown()) {
        // Already waiting in a loop further out: a second loop on it could never end first.
        if (mode_ == ConsoleMode::Script) out_ << "! " << form.Name() << " is already shown; not shown again\n";
        return;
    }
    stack_.push_back(std::make_unique<Shown>());
    Shown& shown = *stack_.back();
    shown.form = &form;
    shown.id = ++serial_;
    // A form shown from a key that DoEvents handled has its own loop, in which letting
    // events run is allowed again.
    const bool outerDoEvents = std::exchange(inDoEvents_, false);
    form.SetShown(true);
    // The screen is ready before Load: a page that waits in its Activate (letting events
    // run) must already take keys and show the busy mark.
    if (mode_ == ConsoleMode::Terminal && !EnsureTerminal()) mode_ = ConsoleMode::Script;
    form.RaiseLoad();
    if (form.Shown()) form.RaiseActivate();
    if (mode_ == ConsoleMode::Script) ScriptLoop(shown);
    else TerminalLoop(shown);
    inDoEvents_ = outerDoEvents;

    std::erase_if(clocks_, [&](const TimerClock& t) { return t.shownId == shown.id; });
    std::erase_if(stack_, [&](const std::unique_ptr<Shown>& s) { return s.get() == &shown; });
    if (mode_ == ConsoleMode::Terminal && terminal_) {
        if (Front() == nullptr) {
            terminal_->Leave();
            screen_.clear();
        } else {
            Draw();
        }
    }
}

void clsConsoleRenderer::DoEvents() {
    if (mode_ != ConsoleMode::Terminal || !terminal_ || !terminal_->Entered() || inDoEvents_) return;
    if (Front() == nullptr) return;
    inDoEvents_ = true;
    auto keys = terminal_->Read(0);
    keys_.insert(keys_.end(), keys.begin(), keys.end());
    while (!keys_.empty()) {
        Shown* front = Front();
        if (front == nullptr) break;
        const Key key = keys_.front();
        keys_.erase(keys_.begin());
        Draw();   // the keys act on what is on the screen
        HandleKey(*front, key);
    }
    FireDueTimers();
    if (Clock::now() - lastDraw_ >= kDoEventsDrawGap) Draw();
    inDoEvents_ = false;
}

void clsConsoleRenderer::SetHourglass(bool busy) {
    busy_ = busy;
    if (mode_ == ConsoleMode::Terminal && terminal_ && terminal_->Entered()) Draw();
}

void clsConsoleRenderer::Refresh(const clsForm& form) {
    Shown* shown = Find(form);
    if (shown == nullptr || !form.Shown()) return;
    if (mode_ == ConsoleMode::Script) {
        if (!ending_) PrintIfChanged(*shown);
        return;
    }
    if (terminal_ && terminal_->Entered()) Draw();
}

// ---------------------------------------------------------------- script mode

std::string clsConsoleRenderer::PageText(const clsForm& form) {
    std::string text = "== " + form.Name() + (form.Caption().empty() ? "" : ": " + OneLine(form.Caption())) + " ==\n";
    std::vector<const clsFormControl*> order;
    for (const auto& c : form.Controls()) {
        if (c.visible) order.push_back(&c);
    }
    std::stable_sort(order.begin(), order.end(), [](const clsFormControl* a, const clsFormControl* b) {
        return a->top != b->top ? a->top < b->top : a->left < b->left;
    });
    for (const clsFormControl* c : order) {
        const std::string tail = Marks(*c) + "  " + ControlId(*c) + "\n";
        switch (c->kind) {
        case ControlKind::Label: {
            const auto lines = clsTextWidth::Lines(c->caption);
            text += lines.front() + tail;
            for (size_t i = 1; i < lines.size(); ++i) text += lines[i] + "\n";
            break;
        }
        case ControlKind::CommandButton: text += "[ " + OneLine(c->caption) + " ]" + tail; break;
        case ControlKind::OptionButton: text += (c->value != 0 ? "(o) " : "( ) ") + OneLine(c->caption) + tail; break;
        case ControlKind::CheckBox: text += (c->value != 0 ? "[x] " : "[ ] ") + OneLine(c->caption) + tail; break;
        case ControlKind::TextBox:
            if (!c->multiLine) {
                text += "\"" + OneLine(c->caption) + "\"" + tail;
                break;
            }
            text += ControlId(*c) + Marks(*c) + ":\n";
            if (!c->caption.empty()) {
                for (const auto& line : clsTextWidth::Lines(c->caption)) text += line.empty() ? "  |\n" : "  | " + line + "\n";
            }
            break;
        case ControlKind::ListBox:
            text += ControlId(*c) + Marks(*c) + ":\n";
            for (size_t i = 0; i < c->items.size(); ++i) {
                text += (static_cast<int>(i) == c->value ? "  > " : "  - ") + c->items[i] + "\n";
            }
            break;
        case ControlKind::Image: text += "<picture: " + (c->picture.empty() ? "none" : c->picture) + ">" + tail; break;
        case ControlKind::Frame:
            text += (c->caption.empty() ? std::string("------") : "--- " + OneLine(c->caption) + " ---") + tail;
            break;
        }
    }
    return text;
}

void clsConsoleRenderer::PrintIfChanged(Shown& shown) {
    std::string text = PageText(*shown.form);
    if (text == shown.printed && lastPrinted_ == shown.id) return;
    out_ << text << '\n';
    out_.flush();
    shown.printed = std::move(text);
    shown.everPrinted = true;
    lastPrinted_ = shown.id;
}

void clsConsoleRenderer::ScriptLoop(Shown& shown) {
    while (shown.form->Shown()) {
        if (ending_) {
            CloseAtEnd(shown);
            return;
        }
        PrintIfChanged(shown);
        std::string line;
        if (!std::getline(in_, line)) {
            EndOfInput(shown);
            continue;
        }
        ++line_;
        Perform(shown, line);
    }
}

void clsConsoleRenderer::EndOfInput(Shown& shown) {
    ending_ = true;
    if (mode_ == ConsoleMode::Script) out_ << "# end of input: the close box of " << shown.form->Name() << '\n';
    // Once, as a person would close the window; whatever that brings up is closed at once.
    shown.form->RaiseQueryUnload();
}

void clsConsoleRenderer::CloseAtEnd(Shown& shown) {
    if (mode_ == ConsoleMode::Script) {
        if (!shown.everPrinted) PrintIfChanged(shown);
        out_ << "# end of input: " << shown.form->Name() << " closed\n";
        out_.flush();
    }
    shown.form->SetShown(false);
}

void clsConsoleRenderer::Wrong(const std::string& line, const std::string& why) {
    out_ << "! line " << line_ << " \"" << Trimmed(line) << "\": " << why << "; line skipped\n";
    out_.flush();
}

clsFormControl* clsConsoleRenderer::Target(clsForm& form, const ScriptCommand& command, std::string& why) {
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
    if (!found->visible) why = ControlId(*found) + " is hidden";
    else if (!found->enabled) why = ControlId(*found) + " is disabled";
    return why.empty() ? found : nullptr;
}

void clsConsoleRenderer::FireTimers(clsForm& form, const std::string& only) {
    std::vector<std::string> names;
    for (const auto& t : form.Timers()) {
        if (t.enabled && (only.empty() || t.name == only)) names.push_back(t.name);
    }
    for (const auto& name : names) {
        if (!form.Shown()) return;   // a timer of a closed form stops
        form.RaiseTimer(name);
    }
}

void clsConsoleRenderer::Wait(clsForm& form, const ScriptCommand& command) {
    for (int round = 0; (command.untilLeft || round < command.count) && form.Shown() && !ending_; ++round) {
        int interval = -1;
        for (const auto& t : form.Timers()) {
            if (t.enabled && (interval < 0 || t.intervalMs < interval)) interval = t.intervalMs;
        }
        if (interval < 0) return;
        if (sleep_) sleep_(static_cast<uint32_t>(interval));
        FireTimers(form, "");
    }
}

void clsConsoleRenderer::Perform(Shown& shown, const std::string& line) {
    const ScriptCommand command = clsScriptCommand::Parse(line);
    if (!command.error.empty()) {
        Wrong(line, command.error);
        return;
    }
    if (command.verb == ScriptVerb::None) return;   // blank or comment
    clsForm& form = *shown.form;
    const auto echo = [&](const std::string& note) {
        out_ << "> " << Trimmed(line) << note << '\n';
        out_.flush();
    };

    switch (command.verb) {
    case ScriptVerb::Click:
    case ScriptVerb::Choose:
    case ScriptVerb::Tick:
    case ScriptVerb::Untick:
    case ScriptVerb::Type:
    case ScriptVerb::Select: {
        std::string why;
        clsFormControl* target = Target(form, command, why);
        if (target == nullptr) {
            Wrong(line, why);
            return;
        }
        const ControlKind kind = target->kind;
        const std::string name = target->name;
        const int index = target->index;
        const bool clickable = kind == ControlKind::CommandButton || kind == ControlKind::OptionButton ||
                               kind == ControlKind::CheckBox || kind == ControlKind::Label || kind == ControlKind::Image;
        const std::string id = ControlId(*target);
        if (command.verb == ScriptVerb::Click && !clickable) {
            Wrong(line, id + " is " + KindWord(kind) +
                            (kind == ControlKind::TextBox   ? ": use type"
                             : kind == ControlKind::ListBox ? ": use select"
                                                            : " and cannot be clicked"));
            return;
        }
        if (command.verb == ScriptVerb::Choose && kind != ControlKind::OptionButton) {
            Wrong(line, id + " is " + KindWord(kind) + ", not an option");
            return;
        }
        const bool tickVerb = command.verb == ScriptVerb::Tick || command.verb == ScriptVerb::Untick;
        if (tickVerb && kind != ControlKind::CheckBox) {
            Wrong(line, id + " is " + KindWord(kind) + ", not a check box");
            return;
        }
        if (command.verb == ScriptVerb::Select) {
            if (kind != ControlKind::ListBox) {
                Wrong(line, id + " is " + KindWord(kind) + ", not a list");
                return;
            }
            const int chosen = clsScriptCommand::MatchLine(target->items, command.text);
            if (chosen < 0) {
                Wrong(line, id + " has no line \"" + command.text + "\" (" + std::to_string(target->items.size()) +
                                " lines, numbered from 0)");
                return;
            }
            echo("  (line " + std::to_string(chosen) + ": " + target->items[static_cast<size_t>(chosen)] + ")");
            target->value = chosen;
            form.RaiseClick(name, index);
            return;
        }
        if (command.verb == ScriptVerb::Type) {
            if (kind != ControlKind::TextBox) {
                Wrong(line, id + " is " + KindWord(kind) + ", not a text box");
                return;
            }
            if (target->locked) {
                Wrong(line, id + " is read-only");
                return;
            }
            echo("");
            form.RaiseChange(name, index, command.text);
            return;
        }
        if (tickVerb && (target->value != 0) == (command.verb == ScriptVerb::Tick)) {
            echo(command.verb == ScriptVerb::Tick ? "  (already ticked)" : "  (already clear)");
            return;
        }
        echo("");
        form.RaiseClick(name, index);
        return;
    }
    case ScriptVerb::Enter: {
        clsFormControl* button = DefaultButton(form, false);
        if (button == nullptr) {
            Wrong(line, form.Name() + " has no default button that can be pressed");
            return;
        }
        echo("  (" + button->name + ")");
        const std::string name = button->name;
        form.RaiseClick(name, button->index);
        return;
    }
    case ScriptVerb::Esc: {
        clsFormControl* button = DefaultButton(form, true);
        if (button == nullptr) {
            echo("  (close box)");
            form.RaiseQueryUnload();
            return;
        }
        echo("  (" + button->name + ")");
        const std::string name = button->name;
        form.RaiseClick(name, button->index);
        return;
    }
    case ScriptVerb::Close:
        echo("");
        form.RaiseQueryUnload();
        return;
    case ScriptVerb::Timer: {
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
        } else if (std::none_of(form.Timers().begin(), form.Timers().end(), [](const clsFormTimer& t) { return t.enabled; })) {
            Wrong(line, form.Name() + " has no running timer");
            return;
        }
        echo("");
        FireTimers(form, only);
        return;
    }
    case ScriptVerb::Wait:
        echo("");
        Wait(form, command);
        return;
    case ScriptVerb::None: return;
    }
}

// ---------------------------------------------------------------- terminal mode

bool clsConsoleRenderer::EnsureTerminal() {
    if (!terminal_) terminal_ = std::make_unique<clsTerminal>(STDIN_FILENO, STDOUT_FILENO);
    if (terminal_->Entered()) return true;
    if (!terminal_->Enter()) return false;
    screen_.clear();
    repaint_ = true;
    return true;
}

void clsConsoleRenderer::TerminalLoop(Shown& shown) {
    while (shown.form->Shown()) {
        if (ending_) {
            CloseAtEnd(shown);
            return;
        }
        if (terminal_->Closed()) {   // the terminal went away: as at the end of a script
            EndOfInput(shown);
            continue;
        }
        Draw();
        if (!keys_.empty()) {
            const Key key = keys_.front();
            keys_.erase(keys_.begin());
            if (Shown* front = Front()) HandleKey(*front, key);
            continue;
        }
        auto keys = terminal_->Read(MsUntilNextTimer());
        keys_.insert(keys_.end(), keys.begin(), keys.end());
        if (terminal_->Resized()) repaint_ = true;
        FireDueTimers();
    }
}

void clsConsoleRenderer::Press(clsForm& form, const clsFormControl& control) {
    const std::string name = control.name;   // the event may change the controls
    const int index = control.index;
    form.RaiseClick(name, index);
}

void clsConsoleRenderer::Scroll(Shown& shown, size_t control, int by, bool absolute) {
    const ControlPlace* p = shown.place.Find(control);
    if (p == nullptr) return;
    int& offset = shown.view.scroll[control];
    offset = std::clamp(absolute ? by : offset + by, 0, p->ScrollLimit());
}

bool clsConsoleRenderer::ListKey(clsForm& form, const FormPlace& place, FormView& view, KeyCode key) {
    if (!view.focus) return false;
    const ControlPlace* p = place.Find(*view.focus);
    if (p == nullptr || *view.focus >= form.Controls().size()) return false;
    clsFormControl& list = form.Controls()[*view.focus];
    if (list.kind != ControlKind::ListBox || !list.enabled || !list.visible) return false;
    const int last = static_cast<int>(list.items.size()) - 1;
    const int page = std::max(p->text.h - 1, 1);
    const int from = list.value;
    int to = from;
    switch (key) {
    case KeyCode::Up: to = from - 1; break;
    case KeyCode::Down: to = from + 1; break;
    case KeyCode::PageUp: to = from - page; break;
    case KeyCode::PageDown: to = from + page; break;
    case KeyCode::Home: to = 0; break;
    case KeyCode::End: to = last; break;
    default: return false;
    }
    if (last < 0) return true;   // an empty list keeps the key: there is nothing to choose
    to = std::clamp(to, 0, last);
    // The chosen line stays in sight.
    int& offset = view.scroll[*view.focus];
    const int rows = std::max(p->text.h, 1);
    if (to < offset) offset = to;
    else if (to >= offset + rows) offset = to - rows + 1;
    offset = std::clamp(offset, 0, p->ScrollLimit());
    if (to == from) return true;
    list.value = to;
    const std::string name = list.name;   // the event may change the controls
    form.RaiseClick(name, list.index);
    return true;
}

void clsConsoleRenderer::HandleKey(Shown& shown, const Key& key) {
    clsForm& form = *shown.form;
    FormPlace& place = shown.place;
    const std::optional<size_t> focus = shown.view.focus;
    const ControlPlace* focused = focus ? place.Find(*focus) : nullptr;
    const clsFormControl* control = focused != nullptr ? &form.Controls()[*focus] : nullptr;
    const bool scrollable = focused != nullptr && focused->ScrollLimit() > 0;
    const bool editable = control != nullptr && control->kind == ControlKind::TextBox && !control->locked && control->enabled;
    const auto move = [&](int step) { shown.view.focus = clsConsoleLayout::NextFocus(place, focus, step); };
    // PgUp and PgDn scroll the focused text, or else the form's first long one.
    const ControlPlace* pager = scrollable ? focused : nullptr;
    for (const auto& p : place.controls) {
        if (pager == nullptr && p.ScrollLimit() > 0 && form.Controls()[p.control].enabled) pager = &p;
    }

    if (ListKey(form, place, shown.view, key.code)) return;

    switch (key.code) {
    case KeyCode::Tab: move(1); return;
    case KeyCode::BackTab: move(-1); return;
    case KeyCode::Left: move(-1); return;
    case KeyCode::Right: move(1); return;
    case KeyCode::Up:
        if (scrollable) Scroll(shown, *focus, -1, false);
        else move(-1);
        return;
    case KeyCode::Down:
        if (scrollable) Scroll(shown, *focus, 1, false);
        else move(1);
        return;
    case KeyCode::PageUp:
    case KeyCode::PageDown:
        if (pager != nullptr) {
            const int page = std::max(pager->text.h - 1, 1);
            Scroll(shown, pager->control, key.code == KeyCode::PageUp ? -page : page, false);
        }
        return;
    case KeyCode::Home:
    case KeyCode::End:
        if (scrollable) Scroll(shown, *focus, key.code == KeyCode::Home ? 0 : focused->ScrollLimit(), true);
        return;
    case KeyCode::Char:
        if (editable) {
            const std::string name = control->name;
            form.RaiseChange(name, control->index, control->caption + key.text);
        } else if (key.text == " " && control != nullptr && control->kind != ControlKind::TextBox &&
                   control->kind != ControlKind::ListBox) {
            Press(form, *control);
        }
        return;
    case KeyCode::Backspace:
        if (editable && !control->caption.empty()) {
            const std::string name = control->name;
            form.RaiseChange(name, control->index, clsTextWidth::DropLast(control->caption));
        }
        return;
    case KeyCode::Enter:
        if (control != nullptr && control->kind == ControlKind::CommandButton) Press(form, *control);
        else if (const clsFormControl* button = DefaultButton(form, false)) Press(form, *button);
        return;
    case KeyCode::Escape:
        if (const clsFormControl* button = DefaultButton(form, true)) Press(form, *button);
        else form.RaiseQueryUnload();
        return;
    case KeyCode::Redraw: repaint_ = true; return;
    case KeyCode::Delete: return;
    }
}

void clsConsoleRenderer::Draw() {
    if (!terminal_ || !terminal_->Entered()) return;
    std::vector<ScreenForm> forms;
    const std::vector<Shown*> owners = OnScreen();
    for (Shown* s : owners) forms.push_back({s->form, &s->view, {}});
    if (forms.empty()) return;
    int cols = 80, rows = 24;
    terminal_->Size(cols, rows);
    const clsScreenGrid grid = clsConsoleLayout::Screen(forms, cols, rows, busy_);
    for (size_t i = 0; i < forms.size(); ++i) owners[i]->place = forms[i].place;

    std::string output;
    if (repaint_ || screen_.size() != static_cast<size_t>(grid.Rows())) {
        output += "\x1b[0m\x1b[2J";
        screen_.assign(static_cast<size_t>(grid.Rows()), std::string());
        repaint_ = true;
    }
    for (int y = 0; y < grid.Rows(); ++y) {
        std::string line = grid.AnsiLine(y);
        auto& shownLine = screen_[static_cast<size_t>(y)];
        if (!repaint_ && line == shownLine) continue;
        output += "\x1b[" + std::to_string(y + 1) + ";1H" + line;
        shownLine = std::move(line);
    }
    repaint_ = false;
    lastDraw_ = Clock::now();
    if (!output.empty()) terminal_->Write(output);
}

void clsConsoleRenderer::SyncTimers() {
    const auto now = Clock::now();
    std::vector<TimerClock> kept;
    for (Shown* s : OnScreen()) {
        for (const auto& t : s->form->Timers()) {
            if (!t.enabled || t.intervalMs <= 0) continue;
            const auto old = std::find_if(clocks_.begin(), clocks_.end(), [&](const TimerClock& c) {
                return c.shownId == s->id && c.name == t.name;
            });
            if (old != clocks_.end() && old->intervalMs == t.intervalMs) {
                kept.push_back(*old);
                continue;
            }
            // Switched on (or its interval changed): the interval starts now, as it does
            // for a timer on Windows.
            kept.push_back({s->id, t.name, t.intervalMs, now + std::chrono::milliseconds(t.intervalMs),
                            old != clocks_.end() && old->running});
        }
    }
    clocks_ = std::move(kept);
}

int clsConsoleRenderer::MsUntilNextTimer() {
    SyncTimers();
    const auto now = Clock::now();
    long wait = kMaxPollMs;
    for (const auto& c : clocks_) {
        if (c.running) continue;
        const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(c.due - now).count();
        wait = std::min<long>(wait, std::max<long>(ms, 0));
    }
    return static_cast<int>(wait);
}

void clsConsoleRenderer::FireDueTimers() {
    SyncTimers();
    const auto now = Clock::now();
    std::vector<std::pair<long, std::string>> due;
    for (const auto& c : clocks_) {
        if (!c.running && c.due <= now) due.emplace_back(c.shownId, c.name);
    }
    const auto find = [&](long id, const std::string& name) {
        return std::find_if(clocks_.begin(), clocks_.end(), [&](const TimerClock& c) { return c.shownId == id && c.name == name; });
    };
    for (const auto& [id, name] : due) {
        auto clock = find(id, name);
        const auto owner = std::find_if(stack_.begin(), stack_.end(), [&](const auto& s) { return s->id == id; });
        if (clock == clocks_.end() || owner == stack_.end() || !(*owner)->form->Shown()) continue;
        clock->due = Clock::now() + std::chrono::milliseconds(clock->intervalMs);
        clock->running = true;   // a tick that waits for keys does not start itself again
        clsForm* form = (*owner)->form;
        form->RaiseTimer(name);
        clock = find(id, name);
        if (clock != clocks_.end()) clock->running = false;
    }
}

} // namespace tovel
