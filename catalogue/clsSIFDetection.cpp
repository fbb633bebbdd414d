#include "catalogue/clsSIFDetection.h"

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsSSFFilesOld.h"
#include "catalogue/clsSSFFilesV520.h"
#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

// A step that fails ends that step only: the record keeps what was detected so far.
template <typename Step>
void Trapped(const clsSIFApplicationItem& item, const char* step, Step&& run) {
    try {
        run();
    } catch (const std::exception& e) {
        LogIfEnabled("Error in Modul clsSIFDetection Funktion Detect (" + std::string(step) + "): " + item.SIFFileName + ": " + e.what());
    } catch (...) {
        LogIfEnabled("Error in Modul clsSIFDetection Funktion Detect (" + std::string(step) + "): " + item.SIFFileName);
    }
}

TermOutcome Evaluated(const std::string& term) {
    TermOutcome outcome = clsSetupTerm::Evaluate(term);
    for (const std::string& entry : outcome.errorEntries) LogIfEnabled(entry);
    return outcome;
}

std::string RegistryText(const std::string& path, const std::string& name) {
    clsRegistry reg;
    return reg.InitWithRegPath(path) ? reg.QueryValue(name) : std::string();
}

} // namespace

clsSIFDetection::clsSIFDetection(const clsPlaceholder* placeholders) : placeholders_(placeholders) {}

void clsSIFDetection::Detect(clsSIFApplicationItem& item) const {
    Trapped(item, "TermToInstall", [&] { DetectCheckState(item); });
    Trapped(item, "DependenceTerm", [&] { DetectDependenceTerm(item); });
    Trapped(item, "DefaultPath", [&] { DetectDefaultPath(item); });
    Trapped(item, "removal entries", [&] { DetectDeinstallEntries(item); });
    Trapped(item, "versions section", [&] { DetectVersions(item); });
}

void clsSIFDetection::DetectCheckState(clsSIFApplicationItem& item) {
    item.CheckBox = item.AlwaysInstall ? CheckBoxState::kCheckedLocked : CheckBoxState::kChecked;
    item.TermToInstallOutcome = TermOutcome{};
    if (!item.TermToInstall.empty()) {
        item.TermToInstallOutcome = Evaluated(item.TermToInstall);
        if (!item.TermToInstallOutcome.holds) item.CheckBox = item.TermToInstallOutcome.stateWhenFalse;
    }
    item.Selected = CheckBoxIsChecked(item.CheckBox);
}

void clsSIFDetection::DetectDependenceTerm(clsSIFApplicationItem& item) {
    item.DependenceTermOutcome = TermOutcome{};
    item.DependenceTypeOtherTrue = true;
    item.DependenceTypeOtherTrueCheckBox = CheckBoxState::kUncheckedLocked;
    if (item.DependenceTerm.empty()) return;
    item.DependenceTermOutcome = Evaluated(item.DependenceTerm);
    item.DependenceTypeOtherTrue = item.DependenceTermOutcome.holds;
    if (!item.DependenceTermOutcome.holds) item.DependenceTypeOtherTrueCheckBox = item.DependenceTermOutcome.stateWhenFalse;
}

void clsSIFDetection::DetectDefaultPath(clsSIFApplicationItem& item) const {
    item.DefaultPath = item.DefaultPathInFile;
    item.RegDefaultDestPath.clear();
    if (placeholders_) {
        clsPlaceholder own = *placeholders_;
        own.SetAppSSFSourcePath(clsFileDisk::AddBackslash(item.SIFFolder()));
        own.SetDiscNumber(item.SetupDiscNumber);
        item.DefaultPath = own.CheckForPlaceholder(item.DefaultPathInFile);
    }
    if (item.DefaultPathRegKey.empty() || item.DefaultPathRegPath.empty()) return;
    item.RegDefaultDestPath = RegistryText(item.DefaultPathRegPath, item.DefaultPathRegKey);
    if (!item.RegDefaultDestPath.empty()) item.DefaultPath = item.RegDefaultDestPath;
}

void clsSIFDetection::DetectDeinstallEntries(clsSIFApplicationItem& item) {
    std::vector<bool> matches;
    for (const auto& tests : item.DeinstallTests()) {
        bool all = true;
        for (const auto& test : tests) {
            all = clsString::UpperAscii(RegistryText(test.regPath, test.regKey)) == clsString::UpperAscii(test.expectedValue);
            if (!all) break;
        }
        matches.push_back(all);
    }
    item.SetDeinstallMatches(std::move(matches));
}

void clsSIFDetection::DetectVersions(clsSIFApplicationItem& item) {
    if (item.SSFVersion.empty()) {
        clsSSFFilesOld::CheckVersionsSection(item);
    } else {
        clsSSFFilesV520::CheckVersionsSection(item);
    }
}

} // namespace tovel
