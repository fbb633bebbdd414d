#include "ui/win32/clsWin32Walk.h"

#include <charconv>
#include <sstream>

#include "common/clsString.h"
#include "platform/clsWindowsPath.h"
#include "startup/mdlLog.h"
#include "wizard/uscTreeListView.h"

namespace tovel {

namespace {

// Slow enough for each action's window changes to be drawn before the next.
constexpr UINT kTickMs = 250;
clsWin32Walk* gWalk = nullptr;   // the timer's callback has no room for its object

std::vector<std::string> Words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

std::string Joined(const std::vector<std::string>& words, size_t from) {
    std::string text;
    for (size_t i = from; i < words.size(); ++i) text += (text.empty() ? "" : " ") + words[i];
    return text;
}

// The slot of a control by name (without regard to case) and array element (-1: none).
int SlotOf(const clsForm& form, const std::string& name, int index) {
    const auto& controls = form.Controls();
    for (size_t i = 0; i < controls.size(); ++i) {
        if (controls[i].index == index && clsWindowsPath::EqualNoCase(controls[i].name, name)) return static_cast<int>(i);
    }
    return -1;
}

HWND WindowOf(const clsWin32FormWindow& window, int slot) {
    return slot < 0 ? nullptr : GetDlgItem(window.Handle(), clsWin32FormWindow::ControlId(static_cast<size_t>(slot)));
}

} // namespace

clsWin32Walk::clsWin32Walk(clsWin32Renderer& renderer, const std::string& script) : renderer_(renderer) {
    for (const std::string& raw : clsString::Split(script, "\n")) {
        const std::string line = clsString::Trim(raw.substr(0, raw.find('#')));
        std::vector<std::string> words = Words(line);
        if (words.size() >= 2) lines_.push_back(std::move(words));
        else if (!line.empty()) LogIfEnabled("Walk: \"" + line + "\" names no form and action; skipped.");
    }
}

clsWin32Walk::~clsWin32Walk() {
    if (timer_ != 0) KillTimer(nullptr, timer_);
    if (gWalk == this) gWalk = nullptr;
}

void clsWin32Walk::Start() {
    gWalk = this;
    timer_ = SetTimer(nullptr, 0, kTickMs, &Tick);
}

void CALLBACK clsWin32Walk::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (gWalk != nullptr) gWalk->Step();
}

void clsWin32Walk::Step() {
    if (next_ >= lines_.size()) return;
    clsWin32FormWindow* front = renderer_.Front();
    if (front == nullptr || !clsWindowsPath::EqualNoCase(front->Form().Name(), lines_[next_][0])) return;
    const std::vector<std::string> words = lines_[next_++];
    LogIfEnabled("Walk: " + Joined(words, 0));
    Do(*front, words);
}

void clsWin32Walk::Do(clsWin32FormWindow& window, const std::vector<std::string>& words) {
    const std::string& action = words[1];
    if (clsWindowsPath::EqualNoCase(action, "click") && words.size() >= 3) return Click(window, words);
    if (clsWindowsPath::EqualNoCase(action, "toggle") && words.size() >= 3) return Toggle(window, Joined(words, 2));
    if (clsWindowsPath::EqualNoCase(action, "type") && words.size() >= 4 && words[3] == "=") {
        return Type(window, words[2], Joined(words, 4));
    }
    LogIfEnabled("Walk: the action \"" + Joined(words, 1) + "\" is not known; skipped.");
}

void clsWin32Walk::Click(clsWin32FormWindow& window, const std::vector<std::string>& words) {
    int index = -1;
    if (words.size() >= 4) {
        const std::string& text = words[3];
        std::from_chars(text.data(), text.data() + text.size(), index);
    }
    HWND control = WindowOf(window, SlotOf(window.Form(), words[2], index));
    if (control == nullptr) {
        LogIfEnabled("Walk: " + window.Form().Name() + " has no window " + words[2] + "; skipped.");
        return;
    }
    // As a mouse click, from the loop: the button tells its form, and a page it opens runs
    // its loop outside this timer's tick.
    PostMessageW(control, BM_CLICK, 0, 0);
}

void clsWin32Walk::Type(clsWin32FormWindow& window, const std::string& name, const std::string& text) {
    HWND control = WindowOf(window, SlotOf(window.Form(), name, -1));
    if (control == nullptr) {
        LogIfEnabled("Walk: " + window.Form().Name() + " has no window " + name + "; skipped.");
        return;
    }
    // The text box tells its form of the change itself.
    SetWindowTextW(control, clsWin32Control::WindowText(text).c_str());
}

void clsWin32Walk::Toggle(clsWin32FormWindow& window, const std::string& line) {
    clsFormControl* tree = uscTreeListView::Of(window.Form());
    const int node = tree == nullptr ? -1 : uscTreeListView::Find(*tree, line);
    HWND control = tree == nullptr ? nullptr : WindowOf(window, static_cast<int>(tree - window.Form().Controls().data()));
    if (control == nullptr || node < 0) {
        LogIfEnabled("Walk: " + window.Form().Name() + " has no tree line \"" + line + "\"; skipped.");
        return;
    }
    // The cursor to the line, then Space as the keyboard gives it.
    SetFocus(control);
    clsWin32TreeList::SelectLine(control, node);
    SendMessageW(control, WM_KEYDOWN, VK_SPACE, 0);
}

} // namespace tovel
