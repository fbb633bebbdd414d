#include "ui/win32/clsWin32Renderer.h"

#include <algorithm>
#include <utility>

#include "startup/mdlLog.h"

namespace tovel {

namespace {
// How long a waiting page sleeps between two looks at the queue, unless a message comes.
constexpr DWORD kWaitSliceMs = 50;
} // namespace

clsWin32Renderer::clsWin32Renderer() : background_(metrics_, fonts_, [this] { return busy_; }) {}

void clsWin32Renderer::ShowBackground() { background_.Show(); }

HWND clsWin32Renderer::Owner() const {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->Form().Shown() && IsWindowVisible((*it)->Handle())) return (*it)->Handle();
    }
    return background_.Handle();
}

HWND clsWin32Renderer::WindowOf(const clsForm& form) const {
    for (const auto* window : stack_) {
        if (&window->Form() == &form) return window->Handle();
    }
    return nullptr;
}

clsWin32FormWindow* clsWin32Renderer::Front() const {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->Form().Shown()) return *it;
    }
    return nullptr;
}

void clsWin32Renderer::ShowModal(clsForm& form) {
    if (WindowOf(form) != nullptr && form.Shown()) return;   // already waiting in a loop further out
    // Pages hand over by hiding themselves before the next one shows.
    SyncAll();
    const HWND owner = Owner();
    FormWindowHost host{[this] { SyncAll(); }, [this] { return busy_; }};
    clsWin32FormWindow window(form, owner, fonts_, metrics_, std::move(host));
    if (window.Handle() == nullptr) return ShowWithoutWindow(form);
    stack_.push_back(&window);
    const bool outerDoEvents = std::exchange(inDoEvents_, false);
    form.SetShown(true);
    form.RaiseLoad();
    window.Sync();
    window.Show();
    const bool ownerWasEnabled = owner != nullptr && owner != background_.Handle() && IsWindowEnabled(owner) != 0;
    if (ownerWasEnabled) EnableWindow(owner, FALSE);
    if (form.Shown()) form.RaiseActivate();
    SyncAll();
    if (form.Shown() && onShown_) onShown_(form, window.Handle());
    RunLoop(window);
    // The owner takes the focus back before this window goes, or Windows gives it elsewhere.
    if (ownerWasEnabled) EnableWindow(owner, TRUE);
    if (owner != nullptr) SetActiveWindow(owner);
    inDoEvents_ = outerDoEvents;
    stack_.erase(std::find(stack_.begin(), stack_.end(), &window));
}

void clsWin32Renderer::ShowWithoutWindow(clsForm& form) {
    // No window (no desktop to draw on): the controller runs as it would and the form is
    // left, rather than a loop waiting for a user who cannot see it.
    LogIfEnabled("The form " + form.Name() + " cannot be shown: Windows made no window for it.");
    form.SetShown(true);
    form.RaiseLoad();
    if (form.Shown()) form.RaiseActivate();
    form.SetShown(false);
}

void clsWin32Renderer::RunLoop(clsWin32FormWindow& window) {
    MSG message;
    while (window.Form().Shown() && !quitting_) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0 || got == -1) {
            quitting_ = true;
            PostQuitMessage(0);   // the loops further out end as well
            break;
        }
        if (!Dispatch(message)) break;
    }
    window.Form().SetShown(false);
}

bool clsWin32Renderer::Dispatch(MSG& message) {
    for (auto it = stack_.rbegin(); it != stack_.rend(); ++it) {
        if ((*it)->Form().Shown() && (*it)->DialogKey(message)) return true;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

void clsWin32Renderer::DoEvents() {
    if (inDoEvents_) return;
    inDoEvents_ = true;
    MSG message;
    while (!quitting_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            quitting_ = true;
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        Dispatch(message);
    }
    inDoEvents_ = false;
    SyncAll();
}

void clsWin32Renderer::WhileWaiting(clsForm&) {
    // Sleeps until a message comes or a slice has passed, so that a waiting page costs no
    // processor time and still answers at once.
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kWaitSliceMs, QS_ALLINPUT);
    DoEvents();
}

void clsWin32Renderer::SetHourglass(bool busy) {
    busy_ = busy;
    SetCursor(LoadCursorW(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

void clsWin32Renderer::Refresh(const clsForm& form) {
    for (auto* window : stack_) {
        if (&window->Form() == &form) window->Sync();
    }
}

void clsWin32Renderer::SyncAll() {
    for (auto* window : stack_) window->Sync();
}

} // namespace tovel
