#include "startup/mdlLog.h"

#include <memory>

#include "language/clsLanguageTextFile.h"
#include "settings/clsIniFile.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsPrintLog.h"

namespace tovel {

namespace {
// The disc's CreateLogFile or /log; before the settings exist nothing is on.
bool LoggingOn() { return gSetupsIni != nullptr && (LogSwitch || gSetupsIni->CreateLogFile()); }
} // namespace

void SetLogSwitch(bool on) { LogSwitch = on; }

void StartLog() {
    gLog = std::make_unique<clsPrintLog>(WorkFolder, ContinuedAfterRestart);
    // Bad input is worth a line whether or not the optional lines are on.
    const auto problem = [](const std::string& message) {
        if (gLog) gLog->PrintLog(message);
    };
    clsRegistry::SetReporter(problem);
    clsIniFile::SetReporter(problem);
    clsLanguageTextFile::SetReporter([problem](const std::string& line, bool isProblem) {
        if (isProblem) {
            problem(line);
        } else {
            LogIfEnabled(line);
        }
    });
}

void LogIfEnabled(const std::string& text) {
    if (LoggingOn() && gLog) gLog->PrintLog(text + " ");
}

void LogHeading(const std::string& text) {
    if (!LoggingOn() || !gLog) return;
    gLog->PrintLog("");
    gLog->PrintLog(LogRule());
    gLog->PrintLog(text + ":");
}

} // namespace tovel
