#pragma once
// Reads a shown form back from its real windows and names what a person would see as a
// fault: a control that sticks out of its form, a caption that does not fit its control,
// an empty window where the form's data has a text.
#include <string>
#include <vector>

#include "platform/win32/Win32Headers.h"
#include "wizard/clsForm.h"

namespace tovel {

class clsWin32LayoutCheck {
public:
    /// The faults of the form's window, one line each; empty when there are none.
    [[nodiscard]] static std::vector<std::string> Check(const clsForm& form, HWND window);
    /// One line per visible control window: class, text and place in the form's client area.
    [[nodiscard]] static std::vector<std::string> Describe(HWND window);

private:
    [[nodiscard]] static std::vector<std::string> OutsideForm(HWND window);
    [[nodiscard]] static std::vector<std::string> CutOrEmpty(const clsForm& form, HWND window);
    /// True when the text needs more room than the control gives it.
    [[nodiscard]] static bool CutOff(HWND control, const clsFormControl& data, const std::wstring& text);
};

} // namespace tovel
