#pragma once
// A form as a scripted run prints it: a header with its name and caption, then its visible
// controls in reading order, each with the name a script uses for it.
#include <string>

#include "wizard/clsForm.h"

namespace tovel {

class clsPageText {
public:
    /// The whole form as text, ending in a newline.
    [[nodiscard]] static std::string Of(const clsForm& form);
    /// The name a script gives a control: "Name", or "Name(2)" for an element of an array.
    [[nodiscard]] static std::string ControlId(const clsFormControl& control);

private:
    [[nodiscard]] static std::string ControlText(const clsFormControl& control);
};

} // namespace tovel
