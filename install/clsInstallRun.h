#pragma once
// The installation run: the products of the plan installed one after the other, advanced by
// one Tick() per tick of the page's timer, never waiting in between. Each tick checks the
// DCOM defaults, counts, polls the running setup and, when it has ended and none of its
// windows is left, reads its results and starts the next product. It knows no form: what
// the page shows and how the page is left go through clsInstallView.
//
// The run ends in one of four ways: complete (every step done, the view leaves the page),
// stopped by a critical product that failed (the same, not complete), stopped for a restart
// (the state saved, Windows restarted, the view closes the page), or stopped by the page
// (the user aborted).
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/clsSIFApplication.h"
#include "install/clsInstallPlan.h"
#include "install/clsInstallView.h"
#include "install/clsLorvexRun.h"
#include "install/clsSetupResult.h"
#include "install/clsSetupWindowCheck.h"

namespace tovel {

class clsInstallRun {
public:
    /// The tick counter starts again at 1 after this many ticks.
    static constexpr int32_t kTickCounterLimit = 20000;

    /// A run of the steps, in their order; the records' extra data (window titles, disc)
    /// comes from the catalogue.
    clsInstallRun(clsInstallView& view, std::vector<InstallStep> steps, const clsSIFApplication& applications);

    /// Goes on after a restart, before the first tick: position is the product whose setup
    /// asked for the restart (0: none had started), setupStatus its exit code, failedLines
    /// the products that failed before (CR LF after each). The run goes on after it.
    void ResumeAt(int16_t position, int32_t setupStatus, const std::string& failedLines);
    /// One step of the run; false when the run has stopped (the timer stays off).
    [[nodiscard]] bool Tick();
    /// The page ends the run (the user aborted): no further tick does anything.
    void Stop() { stopped_ = true; }
    /// Saves the state for a resume as a restart does, without restarting (Windows itself is
    /// ending the program).
    void SaveForShutdown() const;

    [[nodiscard]] bool Complete() const { return complete_; }
    [[nodiscard]] bool Stopped() const { return stopped_; }
    /// A product's setup asked for a restart at the end of the run.
    [[nodiscard]] bool RestartNeeded() const { return restartNeeded_; }
    /// A critical product failed and stopped the run.
    [[nodiscard]] bool CriticalFailed() const { return criticalFailed_; }
    /// The captions of the products that failed, each followed by CR LF.
    [[nodiscard]] const std::string& FailedLines() const { return failed_; }
    /// The position of the next product in the list, from 1.
    [[nodiscard]] int NextPosition() const { return nextPosition_; }
    [[nodiscard]] int32_t TickCounter() const { return tickCounter_; }
    void SetTickCounter(int32_t ticks) { tickCounter_ = ticks; }
    [[nodiscard]] const std::vector<StartOnEndProgram>& StartOnEndPrograms() const { return startOnEnd_; }

private:
    [[nodiscard]] bool DcomStops();
    void CountTick();
    void Poll();
    void GoOn();
    /// Reads the finished setup's results and acts on them; false when the run stopped.
    [[nodiscard]] bool Evaluate();
    void StartNext();
    void Launch(const InstallStep& step, const clsSIFApplicationItem* item);
    void Skip(const InstallStep& step);
    void RemoveOldVersion(const InstallStep& step);
    /// The texts the version actions "$SSFMessageBox<nn>" name, from the product's file.
    void ShowSsfMessages(const InstallStep& step, const clsSIFApplicationItem* item);
    /// The programs the product's record asks to run before its setup, each waited for.
    void StartProgramsAtBegin(const clsSIFApplicationItem* item);
    void Finish();
    void StartProgramsAtEnd() const;
    void End(bool complete);
    void StopForRestart(bool registerRunOnce);
    /// The position saved for a resume: the product last started (0: none), or the one
    /// before it when a setup still running is to run again.
    [[nodiscard]] int16_t ResumePosition(bool rerunStarted) const;
    [[nodiscard]] std::vector<std::string> TitlesOf(const InstallStep& step) const;
    [[nodiscard]] int ProductCount() const { return static_cast<int>(steps_.size()); }

    clsInstallView& view_;
    std::vector<InstallStep> steps_;
    const clsSIFApplication& applications_;
    std::vector<std::string> notStartOnEnd_;
    clsSetupWindowCheck windows_;
    clsLorvexRun lorvex_;

    bool processSeen_ = false;
    int32_t tickCounter_ = 0;
    uint32_t exitCode_ = 0;
    uint32_t resumedStatus_ = 0;    ///< the exit code of the setup that asked for the restart
    std::optional<uint32_t> processId_;
    std::string command_;
    int startOffset_ = 0;
    int nextPosition_ = 1;
    bool systemFilesChecked_ = false;   ///< the disc's system files, once before the first product

    bool started_ = false;          ///< the setup at nextPosition_ - 1 was started and not yet evaluated
    bool stopped_ = false;
    bool complete_ = false;
    bool restartNeeded_ = false;
    bool criticalFailed_ = false;
    std::string failed_;
    std::vector<StartOnEndProgram> startOnEnd_;
};

} // namespace tovel
