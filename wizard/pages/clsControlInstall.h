#pragma once
// The installation page: one line per product of the run with its status, the progress, and
// the abort button. The run itself (clsInstallRun) is advanced by the form's timer JobTimer1,
// one tick every 2000 ms, the timer off while a tick runs; the page only shows what the run
// reports and leaves for the Done page when the run has ended.
//
// After a restart the page goes on from the state file; when it cannot (the disc prompt was
// cancelled, the file is damaged) it goes to the Done page at once.
#include <memory>
#include <string>
#include <vector>

#include "install/clsInstallRun.h"
#include "install/clsInstallView.h"
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlInstall : public clsControlPage, public clsInstallView {
public:
    /// Why the page is closed, as Windows gives it: the close box, the program itself (the
    /// abort button), Windows shutting down, the task list.
    enum CloseReason : int { kFormControlMenu = 0, kFormCode = 1, kAppWindows = 2, kAppTaskManager = 3 };

    clsControlInstall() : clsControlPage("frmInstallation") {}

    /// The close box.
    void FormQueryUnload() override { QueryUnload(kFormControlMenu); }
    /// Closing the page for a reason: the user's close asks first, Windows ending the program
    /// saves the state for a resume.
    void QueryUnload(int reason);
    void Timer(const std::string& timer) override;

    /// The run, once the page is loaded; nullptr before or when it could not be resumed.
    [[nodiscard]] clsInstallRun* Run() { return run_.get(); }

    void ShowProductStatus(int line, const std::string& text) override;
    void MarkRunning(int line) override;
    void ShowProgress(int done, int total) override;
    void ShowStartOnBegin(const std::string& command) override;
    void ShowEndControls() override;
    void LeavePage() override;
    void ClosePage() override { FormQueryUnload2(); }

protected:
    void OnLoad() override;
    void OnActivate() override;
    void OnClick(const std::string& control, int index) override;

private:
    /// The products chosen, in the catalogue's order, become the packet's list to install.
    static void ListSelectedProducts();
    /// Reads the state file; false (and the page left) when the run cannot go on.
    [[nodiscard]] bool ReadState(int16_t& position, int32_t& status, std::string& failedLines);
    void FillProductLines(const std::vector<InstallStep>& steps);
    /// Shows the line of the programs started before the products when a product of the run
    /// has any; the twips the product lines move down for it.
    int ShowStartOnBeginLine(const std::vector<InstallStep>& steps);
    /// A resumed run's lines of the products done before the restart.
    void ShowDoneBeforeRestart(int position, const std::string& failedLines);
    void JobTimer1Timer();
    void AbordBtnClick();
    /// Silent: nobody is there, and a renderer may fire no timers; the page ticks itself.
    void RunUnattended();
    void SetTimer(bool enabled);
    void AbortRun();

    std::unique_ptr<clsInstallRun> run_;
    std::vector<std::string> captions_;
    bool left_ = false;
};

} // namespace tovel
