#pragma once
// Where a form goes on a terminal and how it looks there: the form's twips mapped onto the
// cells available, controls kept apart and widened to their texts where there is room, then
// drawn into a clsScreenGrid. Pure functions of the form and the screen size, so the text
// wizard's pages can be checked at 80x24 and at larger sizes without a terminal.
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ui/console/clsScreenGrid.h"
#include "wizard/clsForm.h"

namespace tovel {

/// One visible control on the screen.
struct ControlPlace {
    size_t control = 0;    ///< its position in clsForm::Controls()
    CellRect rect{};
    CellRect text{};       ///< where a multi-line text or a list shows its lines
    int contentRows = 0;   ///< lines of a multi-line text box or list box
    bool focusable = false;
    [[nodiscard]] int ScrollLimit() const { return contentRows > text.h ? contentRows - text.h : 0; }
};

/// A form on the screen: its frame, the area inside it and its visible controls in reading
/// order (top, then left).
struct FormPlace {
    CellRect frame{};
    CellRect inner{};
    double twipsPerCol = 0;
    double twipsPerRow = 0;
    std::vector<ControlPlace> controls{};
    [[nodiscard]] const ControlPlace* Find(size_t control) const;
};

/// What the person has done to a form's look: where the focus is and how far each text is
/// scrolled. The renderer keeps one per shown form.
struct FormView {
    std::optional<size_t> focus{};   ///< position in clsForm::Controls()
    std::map<size_t, int> scroll{};  ///< first line shown, by position in clsForm::Controls()
};

/// One form of the stack being drawn.
struct ScreenForm {
    clsForm* form = nullptr;
    FormView* view = nullptr;
    FormPlace place{};
};

class clsConsoleLayout {
public:
    /// A form is drawn at most twice its natural size (about 120 twips a column, 240 a
    /// row), so a wide terminal does not scatter a small page.
    static constexpr double kMinTwipsPerCol = 60;
    static constexpr double kMinTwipsPerRow = 120;

    /// Places a form on a screen of cols x rows, centred. Without `under` a page fills the
    /// screen and a smaller form keeps a page's scale; over another form it keeps that
    /// form's scale.
    [[nodiscard]] static FormPlace Place(const clsForm& form, int cols, int rows, const FormPlace* under);
    /// Puts the focus on a control that can take it (the default button first, else the
    /// first in reading order) and keeps every scroll position in range.
    static void Settle(const clsForm& form, const FormPlace& place, FormView& view);
    /// The control the focus moves to from the current one, `step` places on in reading
    /// order (wrapping); nothing when no control can take the focus.
    [[nodiscard]] static std::optional<size_t> NextFocus(const FormPlace& place, std::optional<size_t> current, int step);
    /// Draws a form as placed. `front`: the form that takes the keys (and shows the busy mark).
    static void Draw(const clsForm& form, const FormPlace& place, const FormView& view, bool front, bool busy,
                     clsScreenGrid& grid);
    /// The whole screen: the first shown form fills it, each later one is centred over the
    /// one before. Fills in each form's place and settles its view.
    [[nodiscard]] static clsScreenGrid Screen(std::vector<ScreenForm>& forms, int cols, int rows, bool busy);
    /// One form alone, as plain lines (a fresh view): what a page looks like at a size.
    [[nodiscard]] static std::vector<std::string> Lines(clsForm& form, int cols, int rows);
};

} // namespace tovel
