#pragma once
// The page test of the Windows build: one form of either set opened on its own as the page
// tester opens it (clsPageTester: its controller with the test flag, filled from the disc),
// read back from its real windows and saved as a screenshot.
// Started by the environment (docs/WIZARD.md, "Page test of the Windows build"):
//   TOVEL_PAGE_TEST=frmLicense[:language index] (a form of either set)   TOVEL_PAGE_TEST_OUT=folder
// It writes <folder>\<form>-<language letter>.png and .txt (the faults, then the windows).
#include <string>
#include <vector>

#include "ui/win32/clsWin32Renderer.h"

namespace tovel {

class clsWin32PageTest {
public:
    /// request: "form" or "form:language index" (0 German .. 5 Japanese); folder: where the files
    /// go, the work folder when it is empty.
    clsWin32PageTest(clsWin32Renderer& renderer, const std::string& request, std::string folder);

    /// Shows the page and returns the exit status: 0 no fault, 1 faults found, 2 the page
    /// could not be shown or its files not written.
    [[nodiscard]] int Run();

private:
    void Look(clsForm& form, HWND window);
    [[nodiscard]] std::string FileStem() const;

    clsWin32Renderer& renderer_;
    std::string page_;
    int language_ = -1;
    std::string folder_;
    bool looked_ = false;
    bool written_ = false;
    std::vector<std::string> faults_;
};

} // namespace tovel
