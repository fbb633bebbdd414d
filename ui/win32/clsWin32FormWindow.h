#pragma once
// One form as a native window: a dialog-framed top-level window owned by the background
// window, its controls as child windows, its timers as window timers. The user's actions
// go to the form (RaiseClick, RaiseChange, RaiseTimer, RaiseQueryUnload); after each one
// the renderer brings every shown window up to date with its form's data.
#include <functional>
#include <memory>
#include <vector>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsMetrics.h"
#include "ui/win32/clsWin32Control.h"
#include "ui/win32/clsWin32Fonts.h"
#include "wizard/clsForm.h"

namespace tovel {

/// What a form window asks of its renderer.
struct FormWindowHost {
    std::function<void()> afterEvent;   ///< an action of the user reached the form
    std::function<bool()> busy;         ///< the pointer shows the hourglass
};

class clsWin32FormWindow {
public:
    /// Makes the window hidden, centred on the screen, owned by owner (may be null).
    clsWin32FormWindow(clsForm& form, HWND owner, clsWin32Fonts& fonts, const clsMetrics& metrics, FormWindowHost host);
    clsWin32FormWindow(const clsWin32FormWindow&) = delete;
    clsWin32FormWindow& operator=(const clsWin32FormWindow&) = delete;
    ~clsWin32FormWindow();

    [[nodiscard]] HWND Handle() const { return hwnd_; }
    [[nodiscard]] clsForm& Form() const { return form_; }
    /// Brings caption, controls, timers and visibility up to date with the form's data.
    void Sync();
    /// Shows the window in front and puts the focus on its default button.
    void Show();
    /// Tab, Enter and Esc of a dialog; true when the message was handled.
    [[nodiscard]] bool DialogKey(MSG& message);
    /// The window id of the control at that place of the form's controls.
    [[nodiscard]] static int ControlId(size_t slot) { return kFirstControlId + static_cast<int>(slot); }
    /// The window class of every form ("TovelSetupForm").
    static constexpr const wchar_t* kClassName = L"TovelSetupForm";

private:
    static constexpr int kFirstControlId = 100;
    static constexpr UINT kTreeActionMessage = WM_APP + 1;
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// Makes the windows of the controls the form has gained (a page adds lines as it loads).
    void AddControls();
    void Command(int id, int code);
    /// A tree's notification: the user's action in it, handed on by kTreeActionMessage.
    void Notify(const NMHDR& header);
    /// packed: the line times two, plus one for its box.
    void TreeAction(size_t slot, int packed);
    /// Presses the visible, enabled button that Enter (default) or Esc (cancel) stands for.
    void PressKeyButton(bool cancel);
    void Paint();
    void SyncTimers();
    [[nodiscard]] bool OnBanner(const clsFormControl& control) const;
    [[nodiscard]] RECT Pixels(const clsFormControl& control) const;
    void Raised();

    clsForm& form_;
    clsWin32Fonts& fonts_;
    const clsMetrics& metrics_;
    FormWindowHost host_;
    HWND hwnd_ = nullptr;
    HBRUSH white_ = nullptr;
    std::vector<std::unique_ptr<clsWin32Control>> controls_;   ///< one per form control; null for a painted frame
    std::vector<int> timerIntervals_;                           ///< 0 where the timer is off
    std::string caption_;
    bool shown_ = false;
    bool syncing_ = false;
};

} // namespace tovel
