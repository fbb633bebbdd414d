#include "install/clsInstallRun.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <exception>

#include "common/clsString.h"
#include "common/mdlEvents.h"
#include "common/mdlMessage.h"
#include "install/clsDcomCheck.h"
#include "install/clsDeinstall.h"
#include "install/clsDeinstallList.h"
#include "install/clsOptionFile.h"
#include "install/clsRestartNow.h"
#include "install/clsSetupLauncher.h"
#include "install/clsSystemFiles.h"
#include "install/clsWaitedProgram.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr int32_t kCriticalFailedStatus = 1603;

std::string Text(int number) { return gLanguage ? gLanguage->LoadResString(number) : std::string(); }

void DeleteWorkFile(const char* name) {
    const std::string path = WorkFolder + name;
    if (Platform().Files().FileExists(path)) (void)Platform().Files().DeleteFile(path);
}

// Internet Explorer's setups keep the flag: they hand over to processes of their own.
bool IsInternetExplorer(const std::string& productCode) { return productCode.rfind("IE", 0) == 0; }

} // namespace

clsInstallRun::clsInstallRun(clsInstallView& view, std::vector<InstallStep> steps, const clsSIFApplication& applications)
    : view_(view), steps_(std::move(steps)), applications_(applications),
      notStartOnEnd_(clsSetupResult::NotStartOnEndPrograms(applications)) {}

void clsInstallRun::ResumeAt(int16_t position, int32_t setupStatus, const std::string& failedLines) {
    failed_ = failedLines;
    if (position < 1) return;   // the restart came before any product
    // The product that asked for the restart has ended: the first tick evaluates it (its
    // results were deleted with the restart, so it counts as done) and goes on after it.
    startOffset_ = std::min<int>(position, ProductCount());
    nextPosition_ = startOffset_ + 1;
    started_ = true;
    processSeen_ = true;   // no blind wait for a process that ended before the restart
    resumedStatus_ = static_cast<uint32_t>(setupStatus);
}

bool clsInstallRun::Tick() {
    if (stopped_) return false;
    try {
        if (DcomStops()) return false;
        CountTick();
        Poll();
        if (exitCode_ != kStillActive) GoOn();
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsInstallRun Funktion Tick: ") + e.what());
    } catch (...) {
        LogIfEnabled("Error in Modul clsInstallRun Funktion Tick");
    }
    return !stopped_;
}

bool clsInstallRun::DcomStops() {
    if (!clsDcomCheck::ChangedForRestart(gSetupsIni && gSetupsIni->CheckDCOM(), OSPlatformId)) return false;
    // The change must take effect before any product relies on it; the run always resumes.
    StopForRestart(true);
    return true;
}

void clsInstallRun::CountTick() {
    if (++tickCounter_ <= kTickCounterLimit) return;
    tickCounter_ = 1;
    LogIfEnabled("Timer zurückgesetzt.");
}

void clsInstallRun::Poll() {
    exitCode_ = 0;
    if (nextPosition_ >= 2 && processId_) exitCode_ = Platform().Processes().ExitCode(*processId_).value_or(0);
    if (processSeen_ && exitCode_ == kStillActive) processSeen_ = false;
}

void clsInstallRun::GoOn() {
    DoEvents();
    if (started_) {
        const InstallStep& step = steps_[static_cast<size_t>(nextPosition_ - 2)];
        if (windows_.StillRunning(tickCounter_, TitlesOf(step), ProductCount(), processSeen_)) return;
        lorvex_.RunAfterProduct(view_, step.position);
        if (!Evaluate()) return;
    }
    if (nextPosition_ > ProductCount()) {
        Finish();
        return;
    }
    StartNext();
}

bool clsInstallRun::Evaluate() {
    started_ = false;
    const uint32_t exitCode = processId_ ? exitCode_ : resumedStatus_;
    if (processId_) Platform().Processes().Release(*processId_);
    processId_.reset();
    const InstallStep& step = steps_[static_cast<size_t>(nextPosition_ - 2)];
    clsOptionFile file;
    file.ReadOptionFileResults(step.optionFilePath);
    const SetupOutcome outcome = clsSetupResult::Interpret(file.Results(), exitCode, step.critical, notStartOnEnd_);
    for (const auto& line : outcome.logLines) LogIfEnabled(line);
    view_.ShowProductStatus(step.position, Text(outcome.failed ? TextNo::kStatusFailed : TextNo::kStatusInstalled));
    if (outcome.failed) failed_ += step.caption + "\r\n";
    startOnEnd_.insert(startOnEnd_.end(), outcome.startOnEnd.begin(), outcome.startOnEnd.end());
    if (outcome.restart != RestartRule::None) restartNeeded_ = true;
    if (outcome.stopRun) {
        // A restart asked for by the failed product is left to the Done page.
        criticalFailed_ = true;
        ExitStatus = kCriticalFailedStatus;
        End(false);
        return false;
    }
    if (outcome.restart != RestartRule::Now) return true;
    StopForRestart(step.registerInRunOnce && gSetupsIni && gSetupsIni->AutoResumeAfterRestart());
    return false;
}

void clsInstallRun::StartNext() {
    if (!systemFilesChecked_) {
        clsSystemFiles::Install(HomePath);
        systemFilesChecked_ = true;
    }
    const InstallStep& step = steps_[static_cast<size_t>(nextPosition_ - 1)];
    const clsSIFApplicationItem* item = applications_.Item(step.catalogueIndex);
    ShowSsfMessages(step, item);
    if (!step.skip && step.removal.wanted) RemoveOldVersion(step);
    view_.ShowProgress(nextPosition_ - 1 - startOffset_, ProductCount() - startOffset_);
    view_.ShowProductStatus(step.position, Text(TextNo::kStatusInstalling));
    view_.MarkRunning(step.position);
    const std::string discName = item != nullptr ? clsSetupLauncher::DiscName(item->SetupDiscID) : std::string();
    if (step.skip || !clsSetupLauncher::CheckSetupFile(step, discName)) {
        Skip(step);
        return;
    }
    Launch(step, item);
}

void clsInstallRun::ShowSsfMessages(const InstallStep& step, const clsSIFApplicationItem* item) {
    static constexpr std::string_view kAction = "$SSFMessageBox";
    if (item == nullptr) return;
    for (const auto& action : step.actions) {
        const std::string trimmed = clsString::Trim(action);
        if (trimmed.size() < kAction.size() + 2 || !clsString::EqualNoCaseAscii(trimmed.substr(0, kAction.size()), kAction)) {
            continue;
        }
        // The last two characters number the text: "$SSFMessageBox01" shows SSFMessageBox1.
        const int number = std::atoi(trimmed.substr(trimmed.size() - 2).c_str());
        clsIniFile sif;
        sif.SetFullPath(item->SIFFileName);
        sif.SetSectionName(item->ProdInfoSection);
        (void)MsgBox(sif.GetString("SSFMessageBox" + std::to_string(number), "Error"), mb::kOk | mb::kIconInformation,
                     ApplicationTitle);
    }
}

void clsInstallRun::RemoveOldVersion(const InstallStep& step) {
    view_.ShowProductStatus(step.position, Text(TextNo::kRemovingOldVersion));
    DoEvents();
    clsDeinstall::Run(step.removal.deinstallKey);
}

void clsInstallRun::Skip(const InstallStep& step) {
    LogIfEnabled("Product " + step.productCode + " is skipped.");
    view_.ShowProductStatus(step.position, Text(TextNo::kStatusSkipped));
    ++nextPosition_;
}

void clsInstallRun::Launch(const InstallStep& step, const clsSIFApplicationItem* item) {
    StartProgramsAtBegin(item);
    clsOptionFile file;
    (void)file.CreateOptionFile(step);   // a setup without its answers may still ask for them itself
    command_ = step.commandLine;
    // A state saved for an earlier restart is void once a new setup runs. It goes before the
    // start: a machine switched off between the two would otherwise resume at this product
    // and run its setup a second time.
    DeleteWorkFile("INSTDUMP.TMP");
    processId_ = clsSetupLauncher::Start(step);
    if (processId_) {
        if (step.deinstallListEntry && gSetupsIni) {
            (void)clsDeinstallList(gSetupsIni->UninstallKey())
                .Record(step.productCode, clsDeinstallList::DeinstallKeysOf(step.sifFileName),
                        item != nullptr ? item->DeinstallParam : std::string());
        }
        started_ = true;
    } else {
        LogIfEnabled("Error: Could not start program: " + step.commandLine);
        view_.ShowProductStatus(step.position, Text(TextNo::kStatusFailed));
        failed_ += step.caption + "\r\n";
    }
    tickCounter_ = 0;
    ++nextPosition_;
    // A product that asks for the waiting dialog is waited for, windows or not.
    processSeen_ = item == nullptr || !item->ShowDialogWait;
    if (!IsInternetExplorer(step.productCode) && processSeen_ && exitCode_ == kStillActive) processSeen_ = false;
}

void clsInstallRun::StartProgramsAtBegin(const clsSIFApplicationItem* item) {
    if (item == nullptr || item->StartOnBeginCount() == 0) return;
    for (int i = 1; i <= item->StartOnBeginCount(); ++i) {
        const std::string program = gPlaceholder ? gPlaceholder->CheckForPlaceholder(item->GetStartOnBeginProgram(i))
                                                 : item->GetStartOnBeginProgram(i);
        const std::string parameter = item->GetStartOnBeginParameter(i);
        const std::string command = parameter.empty() ? program : program + " " + parameter;
        LogIfEnabled("StartOnBegin: " + command);
        view_.ShowStartOnBegin(command);
        // A program that cannot be started is logged; the product's setup runs all the same.
        (void)clsWaitedProgram::RunAndWait(command, "");
    }
    view_.ShowStartOnBegin("");
}

void clsInstallRun::Finish() {
    view_.MarkRunning(0);
    view_.ShowProgress(ProductCount() - startOffset_, ProductCount() - startOffset_);
    lorvex_.RunFinal(view_, ProductCount());
    StartProgramsAtEnd();
    End(true);
}

void clsInstallRun::StartProgramsAtEnd() const {
    for (const auto& program : startOnEnd_) {
        const std::string command = program.parameter.empty() ? program.program : program.program + " " + program.parameter;
        LogIfEnabled("StartOnEnd: " + command);
        const StartResult started = Platform().Processes().Start(command, "");
        if (!started.processId) {
            LogIfEnabled("Error: Could not start program: " + command);
            continue;
        }
        Platform().Processes().Release(*started.processId);
    }
}

void clsInstallRun::End(bool complete) {
    stopped_ = true;
    complete_ = complete;
    view_.ShowEndControls();
    view_.LeavePage();
}

int16_t clsInstallRun::ResumePosition(bool rerunStarted) const {
    const int last = nextPosition_ - 1;
    return static_cast<int16_t>(std::max(0, rerunStarted && started_ ? last - 1 : last));
}

void clsInstallRun::StopForRestart(bool registerRunOnce) {
    stopped_ = true;
    complete_ = false;
    clsRestartNow::Prepare({ResumePosition(false), static_cast<int32_t>(exitCode_), command_, failed_, registerRunOnce});
    view_.ClosePage();
}

void clsInstallRun::SaveForShutdown() const {
    // A setup cut off by the shutdown runs again.
    clsRestartNow::SaveForResume({ResumePosition(true), static_cast<int32_t>(exitCode_), command_, failed_, true});
}

std::vector<std::string> clsInstallRun::TitlesOf(const InstallStep& step) const {
    std::vector<std::string> titles;
    const clsSIFApplicationItem* item = applications_.Item(step.catalogueIndex);
    if (item == nullptr) return titles;
    for (int i = 1; i <= item->ApplicationTitleCount(); ++i) titles.push_back(item->GetApplicationTitle(i));
    return titles;
}

} // namespace tovel
