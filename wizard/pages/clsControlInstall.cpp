#include "wizard/pages/clsControlInstall.h"

#include <algorithm>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlEvents.h"
#include "common/mdlMessage.h"
#include "install/clsDumpFile.h"
#include "install/clsInstallContext.h"
#include "install/clsRestartNow.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsSilentAnswers.h"

namespace tovel {

namespace {

constexpr int kLineStep = 300;   // twips from one status line to the next
constexpr const char* kTimer = "JobTimer1";
constexpr const char* kRunningMark = "> ";
constexpr int32_t kNotFinished = 1603;

std::string ResText(int number) { return gLanguage ? gLanguage->LoadResString(number) : std::string(); }

void DeleteWorkFiles() {
    for (const char* name : {"OPFILE.TXT", "INSTDUMP.TMP"}) {
        if (Platform().Files().FileExists(WorkFolder + name)) (void)Platform().Files().DeleteFile(WorkFolder + name);
    }
}

} // namespace

void clsControlInstall::ListSelectedProducts() {
    gPacketItem.Clear();
    for (const auto& item : gApplications.Items()) {
        if (item.Selected) gPacketItem.Add(item.ProductCode);
    }
}

bool clsControlInstall::ReadState(int16_t& position, int32_t& status, std::string& failedLines) {
    clsDumpFile dump;
    if (!dump.CheckDumpDisc()) {
        // The state file stays: a start with the right disc goes on from it.
        LogIfEnabled("Resume cancelled: the disc of the interrupted installation was not inserted.");
        SetupCancelled = true;
        return false;
    }
    if (!dump.ReadDumpFile()) {
        // Nothing of the interrupted run is known: the products must be chosen again.
        LogIfEnabled("The state file " + clsDumpFile::DumpFilePath() + " cannot be read; the installation is not resumed.");
        (void)Platform().Files().DeleteFile(clsDumpFile::DumpFilePath());
        InstallationAborted = true;
        ExitStatus = kNotFinished;
        return false;
    }
    clsRestartNow::ForgetResume();
    position = dump.RunningSetupIndex();
    status = dump.SetupStatus();
    failedLines = dump.SetupFailed();
    return true;
}

void clsControlInstall::OnLoad() {
    int16_t position = 0;
    int32_t status = 0;
    std::string failedLines;
    if (SilentMode) (void)clsSilentAnswers::Read();
    // A page under test shows what would be installed; it neither resumes nor installs.
    const bool resume = ContinuedAfterRestart && !TestFlag();
    if (resume) {
        if (!ReadState(position, status, failedLines)) {
            LeavePage();
            return;
        }
    } else {
        ListSelectedProducts();
    }
    std::vector<InstallStep> steps =
        clsInstallPlan::Make(gApplications, gPacketItem.ProductCodes(), clsInstallContext::Current(ProductLanguages));
    FillProductLines(steps);
    run_ = std::make_unique<clsInstallRun>(*this, std::move(steps), gApplications);
    if (resume) {
        run_->ResumeAt(position, status, failedLines);
        ShowDoneBeforeRestart(position, failedLines);
    }
    if (TestFlag()) return;
    LogHeading("Installation");
    SetTimer(true);
}

void clsControlInstall::ShowDoneBeforeRestart(int position, const std::string& failedLines) {
    for (int line = 1; line <= std::min<int>(position, static_cast<int>(captions_.size())); ++line) {
        const bool failed = failedLines.find(captions_[static_cast<size_t>(line - 1)] + "\r\n") != std::string::npos;
        ShowProductStatus(line, ResText(failed ? TextNo::kStatusFailed : TextNo::kStatusInstalled));
    }
}

void clsControlInstall::OnActivate() {
    if (SilentMode && run_ && !TestFlag()) RunUnattended();
}

void clsControlInstall::RunUnattended() {
    const clsFormTimer* timer = Form().Timer(kTimer);
    const uint32_t interval = timer != nullptr ? static_cast<uint32_t>(timer->intervalMs) : 2000U;
    while (!left_ && Form().Shown() && !run_->Stopped()) {
        Platform().Clock().Sleep(interval);
        DoEvents();
        JobTimer1Timer();
    }
}

void clsControlInstall::FillProductLines(const std::vector<InstallStep>& steps) {
    captions_.clear();
    for (const auto& step : steps) captions_.push_back(step.caption.empty() ? step.productCode : step.caption);
    // The layout has the first line; the others go below it as far as the progress line
    // leaves room. A product beyond the room is still installed, only not shown.
    const clsFormControl* first = Form().Control("StatusLabel", 0);
    const clsFormControl* firstStatus = Form().Control("StatusLabel2", 0);
    const clsFormControl* progress = Form().Control("ProgressLabel");
    if (first == nullptr || firstStatus == nullptr) return;
    clsFormControl model = *first;
    model.top += ShowStartOnBeginLine(steps);
    const clsFormControl statusModel = *firstStatus;
    const int bottom = progress != nullptr ? progress->top : model.top + kLineStep;
    const size_t room = static_cast<size_t>(std::max(1, (bottom - model.top) / kLineStep));
    const std::string waiting = ResText(TextNo::kStatusWaiting);
    for (size_t i = 0; i < std::min(room, captions_.size()); ++i) {
        for (clsFormControl line : {model, statusModel}) {
            line.index = static_cast<int>(i);
            line.top = model.top + static_cast<int>(i) * kLineStep;
            line.visible = true;
            line.caption = line.name == "StatusLabel" ? captions_[i] : waiting;
            if (clsFormControl* existing = Form().Control(line.name, line.index)) *existing = line;
            else Form().Add(line);
        }
    }
    ShowProgress(0, static_cast<int>(captions_.size()));
}

int clsControlInstall::ShowStartOnBeginLine(const std::vector<InstallStep>& steps) {
    const bool any = std::any_of(steps.begin(), steps.end(), [](const InstallStep& step) {
        const clsSIFApplicationItem* item = gApplications.Item(step.catalogueIndex);
        return item != nullptr && item->StartOnBeginCount() > 0;
    });
    SetVisible("StartOnBeginStatusLabel", any);
    SetVisible("StartOnBeginStatusLabel2", any);
    return any ? kLineStep : 0;
}

void clsControlInstall::Timer(const std::string& timer) {
    if (timer == kTimer) JobTimer1Timer();
}

void clsControlInstall::JobTimer1Timer() {
    if (!run_) return;
    SetTimer(false);   // a tick never overlaps the next
    if (run_->Tick() && !left_ && Form().Shown()) SetTimer(true);
}

void clsControlInstall::SetTimer(bool enabled) {
    if (clsFormTimer* timer = Form().Timer(kTimer)) timer->enabled = enabled;
}

void clsControlInstall::OnClick(const std::string& control, int) {
    if (control == "AbordBtn") AbordBtnClick();
}

void clsControlInstall::AbordBtnClick() {
    LogIfEnabled("clsControlInstallation AbordBtn_Click vor  unload me");
    QueryUnload(kFormCode);
    LogIfEnabled("clsControlInstallation AbordBtn_Click nach unload me");
}

void clsControlInstall::QueryUnload(int reason) {
    if (TestFlag()) {
        // Nothing runs under test: no question, and the work files stay.
        FormQueryUnload2();
        return;
    }
    SetTimer(false);
    DoEvents();
    if (!run_ || run_->Complete()) {
        DeleteWorkFiles();
        LeavePage();
        return;
    }
    if (reason >= kAppWindows) {
        // Windows is ending the program: the run goes on at the next start.
        run_->SaveForShutdown();
        run_->Stop();
        FormQueryUnload2();
        return;
    }
    if (MsgBox(ResText(TextNo::kCloseQuestion), mb::kYesNo | mb::kIconQuestion, ApplicationTitle) == mb::kIdYes) {
        AbortRun();
        return;
    }
    SetTimer(true);
    DoEvents();
}

void clsControlInstall::AbortRun() {
    // The setup running goes on by itself; what was installed stays installed.
    run_->Stop();
    DeleteWorkFiles();
    InstallationAborted = true;
    LeavePage();
}

void clsControlInstall::ShowProductStatus(int line, const std::string& text) { SetText("StatusLabel2", text, line - 1); }

void clsControlInstall::MarkRunning(int line) {
    for (size_t i = 0; i < captions_.size(); ++i) {
        const bool running = static_cast<int>(i) + 1 == line;
        SetText("StatusLabel", running ? kRunningMark + captions_[i] : captions_[i], static_cast<int>(i));
    }
}

void clsControlInstall::ShowProgress(int done, int total) {
    SetText("ProgressLabel", std::to_string(done) + " / " + std::to_string(total));
}

void clsControlInstall::ShowStartOnBegin(const std::string& command) { SetText("StartOnBeginStatusLabel2", command); }

void clsControlInstall::ShowEndControls() {
    SetVisible("AbordBtn", false);
    SetVisible("Frame1", false);
}

void clsControlInstall::LeavePage() {
    if (left_) return;
    left_ = true;
    SetTimer(false);
    if (run_) {
        RestartNeeded = RestartNeeded || run_->RestartNeeded();
        FailedProducts = run_->FailedLines();
    }
    if (TestFlag()) return;
    gDialogOrder->NextDialog(Page());
}

} // namespace tovel
