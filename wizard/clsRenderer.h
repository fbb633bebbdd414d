#pragma once
// What draws the forms: the text renderer in a terminal (ui/console), native windows
// (ui/win32), or a script in tests. The wizard never knows which.
#include "wizard/clsForm.h"

namespace tovel {

class clsRenderer {
public:
    virtual ~clsRenderer() = default;
    /// Shows the form modally: marks it shown, raises Load and Activate, then runs the
    /// user's actions and the form's timers until the form is no longer shown. Calls nest:
    /// a controller may show the next page from inside an event of this one.
    virtual void ShowModal(clsForm& form) = 0;
    /// Lets pending user actions and timers run once ("let window messages run").
    virtual void DoEvents() = 0;
    /// One round of the wait of a form that goes on by itself while it is shown: the form is
    /// on view at once and takes the user's actions meanwhile (also a script's). As DoEvents
    /// unless a renderer needs more.
    virtual void WhileWaiting(clsForm& /*form*/) { DoEvents(); }
    /// The pointer as an hourglass while the program works.
    virtual void SetHourglass(bool busy) = 0;
    /// Draws the form again after its controls changed outside an event.
    virtual void Refresh(const clsForm& form) = 0;
};

/// The renderer in use; a renderer that shows nothing and leaves at once until one is set.
[[nodiscard]] clsRenderer& Renderer();
/// Installs a renderer (not owned; it must outlive its use); nullptr restores the default.
void SetRenderer(clsRenderer* renderer);

} // namespace tovel
