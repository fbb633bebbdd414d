#include "install/clsSetupResult.h"

#include "common/clsString.h"

namespace tovel {

namespace {

RestartRule RestartOf(int32_t requested, std::vector<std::string>& log) {
    if (requested == 1) return RestartRule::AtEnd;
    if (requested == 2) return RestartRule::Now;
    if (requested != 0) log.push_back("RebootRequested=" + std::to_string(requested) + " ist ungültig und wird als 0 behandelt.");
    return RestartRule::None;
}

bool Listed(const std::string& program, const std::vector<std::string>& notStartOnEnd) {
    for (const auto& entry : notStartOnEnd) {
        if (clsString::LowerAscii(clsString::Trim(entry)) == program) return true;
    }
    return false;
}

const char* RestartText(RestartRule rule) {
    switch (rule) {
    case RestartRule::AtEnd: return "at the end of the run";
    case RestartRule::Now: return "now";
    case RestartRule::None: break;
    }
    return "none";
}

} // namespace

SetupOutcome clsSetupResult::Interpret(const OptionFileResults& results, uint32_t exitCode, bool critical,
                                       const std::vector<std::string>& notStartOnEnd) {
    SetupOutcome outcome;
    outcome.exitCode = exitCode;
    outcome.logLines.push_back("Setup Exitcode: " + std::to_string(exitCode));
    outcome.failed = clsString::Trim(results.SetupSucceeded) == "0";
    outcome.stopRun = outcome.failed && critical;
    const size_t count = results.startOnEndPrograms.size();
    for (size_t i = 0; i < count; ++i) {
        const std::string program = clsString::LowerAscii(results.startOnEndPrograms[i]);
        const std::string parameter = i < results.startOnEndParameters.size() ? results.startOnEndParameters[i] : "";
        if (Listed(program, notStartOnEnd)) {
            outcome.filtered.push_back(program);
            outcome.logLines.push_back("     " + program + " laut SSF-File nicht starten");
            continue;
        }
        outcome.startOnEnd.push_back({program, clsString::LowerAscii(parameter)});
    }
    outcome.restart = RestartOf(results.RebootRequested, outcome.logLines);
    return outcome;
}

std::vector<std::string> clsSetupResult::NotStartOnEndPrograms(const clsSIFApplication& applications) {
    std::vector<std::string> programs;
    for (const auto& item : applications.Items()) {
        for (int i = 1; i <= item.NotStartOnEndProgramsCount; ++i) programs.push_back(item.GetNotStartOnEndProgram(i));
    }
    return programs;
}

std::string SetupOutcome::Text() const {
    std::string text = failed ? (stopRun ? "failed, the run stops" : "failed") : "succeeded";
    text += "; exit code " + std::to_string(exitCode) + "; restart " + RestartText(restart);
    for (const auto& start : startOnEnd) text += "; start at end " + start.program + (start.parameter.empty() ? "" : " " + start.parameter);
    for (const auto& program : filtered) text += "; not started " + program;
    return text;
}

} // namespace tovel
