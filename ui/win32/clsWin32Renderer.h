#pragma once
// The wizard on Windows: every form as a native window (clsWin32FormWindow), shown modally
// in a message loop of its own, over the full-screen background (clsGradientBackground)
// and owned by it. Loops nest as the pages do: a page shown from an event of another runs
// its loop inside that event, and the outer page waits, disabled, until it ends.
#include <memory>
#include <vector>

#include "ui/win32/clsGradientBackground.h"
#include "ui/win32/clsMetrics.h"
#include "ui/win32/clsWin32FormWindow.h"
#include "ui/win32/clsWin32Fonts.h"
#include "wizard/clsRenderer.h"

namespace tovel {

class clsWin32Renderer final : public clsRenderer {
public:
    clsWin32Renderer();

    void ShowModal(clsForm& form) override;
    void DoEvents() override;
    void WhileWaiting(clsForm& form) override;
    void SetHourglass(bool busy) override;
    void Refresh(const clsForm& form) override;

    /// Shows the background window (frmGradientBackground) from the disc's settings.
    void ShowBackground();
    /// The window of a shown form; null when the form is not shown here.
    [[nodiscard]] HWND WindowOf(const clsForm& form) const;
    /// The window of the form in front (the innermost shown); null when none is shown.
    [[nodiscard]] clsWin32FormWindow* Front() const;
    /// The background window; null before ShowBackground.
    [[nodiscard]] HWND Background() const { return background_.Handle(); }
    /// Called once each time a form's window is on view, before its loop waits for the user
    /// (the page test reads the window back here).
    void SetOnShown(std::function<void(clsForm&, HWND)> onShown) { onShown_ = std::move(onShown); }

private:
    /// Brings every window up to date with its form after an event.
    void SyncAll();
    /// Dispatches one message; false when the program is asked to quit.
    bool Dispatch(MSG& message);
    [[nodiscard]] HWND Owner() const;
    void RunLoop(clsWin32FormWindow& window);
    void ShowWithoutWindow(clsForm& form);

    clsMetrics metrics_;
    clsWin32Fonts fonts_;
    clsGradientBackground background_;
    std::vector<clsWin32FormWindow*> stack_;   ///< the forms in their loops, innermost last
    std::function<void(clsForm&, HWND)> onShown_;
    bool busy_ = false;
    bool inDoEvents_ = false;
    bool quitting_ = false;
};

} // namespace tovel
