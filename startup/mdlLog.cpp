#include "startup/mdlLog.h"

#include <memory>

#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsPrintLog.h"

namespace tovel {

void StartLog() {
    gLog = std::make_unique<clsPrintLog>(WorkFolder, ContinuedAfterRestart);
    // Bad input is worth a line whether or not the optional lines are on.
    clsRegistry::SetReporter([](const std::string& message) {
        if (gLog) gLog->PrintLog(message);
    });
}

void LogIfEnabled(const std::string& text) {
    if (LogEnabled && gLog) gLog->PrintLog(text + " ");
}

void LogHeading(const std::string& text) {
    if (!LogEnabled || !gLog) return;
    gLog->PrintLog("");
    gLog->PrintLog(LogRule());
    gLog->PrintLog(text + ":");
}

} // namespace tovel
