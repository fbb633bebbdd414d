#include "ui/console/clsTerminalLoop.h"

#include <unistd.h>

#include <algorithm>

#include "ui/console/clsTextWidth.h"

namespace tovel {

namespace {

using Clock = std::chrono::steady_clock;

// The longest the wait for keys sleeps: the terminal's size is looked at this often.
constexpr int kMaxPollMs = 1000;
// DoEvents may be called in a tight loop (a page waiting some seconds); it redraws at most
// this often.
constexpr auto kDoEventsDrawGap = std::chrono::milliseconds(30);

} // namespace

clsTerminalLoop::clsTerminalLoop(clsConsoleStack& stack) : clsConsoleMode(stack), timers_(stack) {}

clsTerminalLoop::~clsTerminalLoop() {
    if (terminal_) terminal_->Leave();
}

bool clsTerminalLoop::Begin() {
    if (!terminal_) terminal_ = std::make_unique<clsTerminal>(STDIN_FILENO, STDOUT_FILENO);
    if (terminal_->Entered()) return true;
    if (!terminal_->Enter()) return false;
    screen_.clear();
    repaint_ = true;
    return true;
}

void clsTerminalLoop::Run(ConsoleShown& shown) {
    while (shown.form->Shown()) {
        if (Stack().Ending()) {
            clsConsoleStack::CloseAtEnd(shown);
            return;
        }
        if (terminal_->Closed()) {   // the terminal went away: as at the end of a script
            Stack().EndOfInput(shown);
            continue;
        }
        Draw();
        if (!keys_.empty()) {
            HandleNextKey();
            continue;
        }
        auto keys = terminal_->Read(timers_.MsUntilNext(kMaxPollMs));
        keys_.insert(keys_.end(), keys.begin(), keys.end());
        if (terminal_->Resized()) repaint_ = true;
        timers_.FireDue();
    }
}

void clsTerminalLoop::Left(long shownId) {
    timers_.Forget(shownId);
    if (!terminal_) return;
    if (Stack().Front() == nullptr) {
        terminal_->Leave();
        screen_.clear();
    } else {
        Draw();
    }
}

void clsTerminalLoop::DoEvents() {
    if (!Ready() || Stack().Front() == nullptr) return;
    auto keys = terminal_->Read(0);
    keys_.insert(keys_.end(), keys.begin(), keys.end());
    while (!keys_.empty() && Stack().Front() != nullptr) {
        Draw();   // the keys act on what is on the screen
        HandleNextKey();
    }
    timers_.FireDue();
    if (Clock::now() - lastDraw_ >= kDoEventsDrawGap) Draw();
}

void clsTerminalLoop::Refresh(ConsoleShown& /*shown*/) {
    if (Ready()) Draw();
}

void clsTerminalLoop::SetHourglass(bool busy) {
    busy_ = busy;
    if (Ready()) Draw();
}

void clsTerminalLoop::HandleNextKey() {
    const Key key = keys_.front();
    keys_.erase(keys_.begin());
    if (ConsoleShown* front = Stack().Front()) HandleKey(*front, key);
}

void clsTerminalLoop::Press(clsForm& form, const clsFormControl& control) {
    const std::string name = control.name;   // the event may change the controls
    const int index = control.index;
    form.RaiseClick(name, index);
}

void clsTerminalLoop::Scroll(ConsoleShown& shown, size_t control, int by, bool absolute) {
    const ControlPlace* p = shown.place.Find(control);
    if (p == nullptr) return;
    int& offset = shown.view.scroll[control];
    offset = std::clamp(absolute ? by : offset + by, 0, p->ScrollLimit());
}

bool clsTerminalLoop::ListKey(clsForm& form, const FormPlace& place, FormView& view, KeyCode key) {
    if (!view.focus) return false;
    const ControlPlace* p = place.Find(*view.focus);
    if (p == nullptr || *view.focus >= form.Controls().size()) return false;
    clsFormControl& list = form.Controls()[*view.focus];
    const bool tree = list.kind == ControlKind::TreeListView;
    if ((list.kind != ControlKind::ListBox && !tree) || !list.enabled || !list.visible) return false;
    const int last = static_cast<int>(tree ? list.nodes.size() : list.items.size()) - 1;
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

bool clsTerminalLoop::MoveKey(ConsoleShown& shown, KeyCode key) {
    const std::optional<size_t> focus = shown.view.focus;
    const ControlPlace* focused = focus ? shown.place.Find(*focus) : nullptr;
    const bool scrollable = focused != nullptr && focused->ScrollLimit() > 0;
    int step = 0;
    switch (key) {
    case KeyCode::Tab:
    case KeyCode::Right: step = 1; break;
    case KeyCode::BackTab:
    case KeyCode::Left: step = -1; break;
    case KeyCode::Up:
    case KeyCode::Down:
        step = key == KeyCode::Up ? -1 : 1;
        if (scrollable) {
            Scroll(shown, *focus, step, false);
            return true;
        }
        break;
    default: return false;
    }
    shown.view.focus = clsConsoleLayout::NextFocus(shown.place, focus, step);
    return true;
}

bool clsTerminalLoop::ScrollKey(ConsoleShown& shown, KeyCode key) {
    const clsForm& form = *shown.form;
    const std::optional<size_t> focus = shown.view.focus;
    const ControlPlace* focused = focus ? shown.place.Find(*focus) : nullptr;
    const bool scrollable = focused != nullptr && focused->ScrollLimit() > 0;
    switch (key) {
    case KeyCode::PageUp:
    case KeyCode::PageDown: {
        // PgUp and PgDn scroll the focused text, or else the form's first long one.
        const ControlPlace* pager = scrollable ? focused : nullptr;
        for (const auto& p : shown.place.controls) {
            if (pager == nullptr && p.ScrollLimit() > 0 && form.Controls()[p.control].enabled) pager = &p;
        }
        if (pager != nullptr) {
            const int page = std::max(pager->text.h - 1, 1);
            Scroll(shown, pager->control, key == KeyCode::PageUp ? -page : page, false);
        }
        return true;
    }
    case KeyCode::Home:
    case KeyCode::End:
        if (scrollable) Scroll(shown, *focus, key == KeyCode::Home ? 0 : focused->ScrollLimit(), true);
        return true;
    default: return false;
    }
}

void clsTerminalLoop::EditKey(clsForm& form, const clsFormControl* control, const Key& key) {
    const bool editable = control != nullptr && control->kind == ControlKind::TextBox && !control->locked && control->enabled;
    if (key.code == KeyCode::Backspace) {
        if (editable && !control->caption.empty()) {
            const std::string name = control->name;
            form.RaiseChange(name, control->index, clsTextWidth::DropLast(control->caption));
        }
        return;
    }
    if (editable) {
        const std::string name = control->name;
        form.RaiseChange(name, control->index, control->caption + key.text);
    } else if (key.text == " " && control != nullptr && control->kind == ControlKind::TreeListView) {
        const std::string name = control->name;   // Space flips the box of the cursor's line
        form.RaiseNodeCheck(name, control->value);
    } else if (key.text == " " && control != nullptr && control->kind != ControlKind::TextBox &&
               control->kind != ControlKind::ListBox) {
        Press(form, *control);
    }
}

void clsTerminalLoop::HandleKey(ConsoleShown& shown, const Key& key) {
    clsForm& form = *shown.form;
    if (ListKey(form, shown.place, shown.view, key.code) || MoveKey(shown, key.code) || ScrollKey(shown, key.code)) return;
    const std::optional<size_t> focus = shown.view.focus;
    const clsFormControl* control = focus && shown.place.Find(*focus) != nullptr ? &form.Controls()[*focus] : nullptr;
    switch (key.code) {
    case KeyCode::Char:
    case KeyCode::Backspace: EditKey(form, control, key); return;
    case KeyCode::Enter:
        if (control != nullptr && control->kind == ControlKind::CommandButton) Press(form, *control);
        else if (const clsFormControl* button = DefaultButton(form, false)) Press(form, *button);
        return;
    case KeyCode::Escape:
        if (const clsFormControl* button = DefaultButton(form, true)) Press(form, *button);
        else form.RaiseQueryUnload();
        return;
    case KeyCode::Redraw: repaint_ = true; return;
    default: return;
    }
}

void clsTerminalLoop::Draw() {
    if (!Ready()) return;
    std::vector<ScreenForm> forms;
    const std::vector<ConsoleShown*> owners = Stack().OnScreen();
    for (ConsoleShown* s : owners) forms.push_back({s->form, &s->view, {}});
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

} // namespace tovel
