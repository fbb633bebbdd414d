#pragma once
// The scripted walk of the Windows build, for tests under Wine: a file of lines
// "FORM ACTION ..." done one after the other through the real windows, each once its form is
// the one in front (docs/WIZARD.md, "Scripted walk of the Windows build"):
//   frmLicense click optYes          presses a button, chooses an option, flips a check box
//   frmCustomSetup toggle DOCVIEW    Space on a line of the component tree
//   frmIdentification type NameText = Jane Roe   a text box's new text
// A line that names what the form does not have is logged and skipped.
#include <string>
#include <vector>

#include "ui/win32/clsWin32Renderer.h"

namespace tovel {

class clsWin32Walk {
public:
    /// script: the lines; the walk starts with Start.
    clsWin32Walk(clsWin32Renderer& renderer, const std::string& script);
    clsWin32Walk(const clsWin32Walk&) = delete;
    clsWin32Walk& operator=(const clsWin32Walk&) = delete;
    ~clsWin32Walk();

    /// Looks for the next line's form every tick of a timer of the message loops.
    void Start();
    /// Lines not done yet.
    [[nodiscard]] size_t Left() const { return lines_.size() - next_; }

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    void Step();
    void Do(clsWin32FormWindow& window, const std::vector<std::string>& words);
    void Click(clsWin32FormWindow& window, const std::vector<std::string>& words);
    void Type(clsWin32FormWindow& window, const std::string& name, const std::string& text);
    void Toggle(clsWin32FormWindow& window, const std::string& line);

    clsWin32Renderer& renderer_;
    std::vector<std::vector<std::string>> lines_;   ///< words of each line: form, action, rest
    size_t next_ = 0;
    UINT_PTR timer_ = 0;
};

} // namespace tovel
