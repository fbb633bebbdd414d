#include "configtool/clsControlDiscCheck.h"

#include <algorithm>

#include "catalogue/clsDiscCheck.h"
#include "configtool/clsControlSettings.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

std::string Count(size_t n, const std::string& word) { return std::to_string(n) + " " + word + (n == 1 ? "" : "s"); }

} // namespace

std::string clsControlDiscCheck::FindingLine(const DiscFinding& finding, const std::string& root) {
    const bool below = finding.file.size() > root.size() && clsWindowsPath::EqualNoCase(finding.file.substr(0, root.size()), root);
    const std::string file = below ? finding.file.substr(root.size()) : finding.file;
    return file + ":" + std::to_string(finding.line) + ": " + std::string(SeverityText(finding.severity)) + ": " + finding.text;
}

std::string clsControlDiscCheck::Summary(const std::vector<DiscFinding>& findings) {
    if (findings.empty()) return "No findings: the setup reads this disc as its author meant.";
    const size_t errors = static_cast<size_t>(std::count_if(findings.begin(), findings.end(), [](const DiscFinding& f) { return f.severity == FindingSeverity::Error; }));
    const std::string counts = Count(errors, "error") + ", " + Count(findings.size() - errors, "warning");
    return counts + (errors > 0 ? ": the setup cannot do everything this disc asks." : ": the setup runs, but not everywhere as the author may think.");
}

void clsControlDiscCheck::Check() {
    findings_ = clsDiscCheck::Run(root_);
    std::vector<std::string> lines;
    for (const auto& finding : findings_) lines.push_back(FindingLine(finding, root_));
    SetLines("FindingList", std::move(lines), findings_.empty() ? -1 : 0);
    SetText("SummaryLabel", Summary(findings_));
}

void clsControlDiscCheck::OnClick(const std::string& control, int) {
    if (control == "RecheckBtn") Check();
    else if (control == "SettingsBtn") OpenInSettings();
}

void clsControlDiscCheck::OpenInSettings() {
    const int chosen = ChosenLine("FindingList");
    if (chosen < 0) return;
    const DiscFinding& finding = findings_[static_cast<size_t>(chosen)];
    clsControlSettings(root_, finding.file, finding.line).Show();
    // What was changed there shows here at once.
    Check();
}

} // namespace tovel
