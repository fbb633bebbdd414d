#include "startup/clsLorvexCheck.h"

#include <algorithm>
#include <vector>

#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsCommandLine.h"
#include "settings/clsIniFile.h"
#include "startup/Globals.h"
#include "startup/clsVersionInfo.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

const char* const kExeName = "Lorvex.exe";

bool HasSwitch(const std::vector<std::string>& arguments, const std::string& wanted) {
    return std::find(arguments.begin(), arguments.end(), wanted) != arguments.end();
}

} // namespace

std::string clsLorvexCheck::ToolFolder() {
    const std::string base = gSetupsIni->Path().empty() ? HomePath : gSetupsIni->Path();
    return base + "Lorvex" + "\\";
}

void clsLorvexCheck::Decide(const std::string& commandLine) {
    Lorvex = false;
    LorvexExePath = ToolFolder() + kExeName;
    ReadIni();
    ReadCommandLine(commandLine);
    if (Lorvex) LogTool();
}

void clsLorvexCheck::ReadIni() {
    clsIniFile ini;
    ini.SetFullPath(ToolFolder() + "Lorvex.ini");
    ini.SetSectionName("LORVEX");
    const std::string execute = clsString::LowerAscii(ini.GetString("Execute", ""));
    if (execute == "nolorvex") {
        LogIfEnabled("Lorvex OFF über Lorvex.ini");
    } else if (execute == "lorvex") {
        Lorvex = true;
        LogIfEnabled("Lorvex ON  über Lorvex.ini");
    }
    const std::string scanMode = ini.GetString("ScanMode", "");
    if (clsString::LowerAscii(scanMode) == "complete") LorvexScanComplete = true;
    LogIfEnabled("Lorvex Scanmode  : " + (LorvexScanComplete ? std::string("complete") : scanMode));
    LorvexSearchPath = ini.GetString("SearchPath", "");
    if (!LorvexSearchPath.empty()) {
        LogIfEnabled("Lorvex SearchPath: " + LorvexSearchPath);
        return;
    }
    LogIfEnabled("Lorvex SearchPath: kein Pfad --> Lorvex = False");
    Lorvex = false;
}

void clsLorvexCheck::ReadCommandLine(const std::string& commandLine) {
    std::vector<std::string> arguments = clsWindowsCommandLine::SplitArguments(commandLine);
    for (auto& a : arguments) a = clsString::LowerAscii(a);
    if (HasSwitch(arguments, "/nolorvex")) {
        Lorvex = false;
        LogIfEnabled("Lorvex OFF über Commandline");
    } else if (HasSwitch(arguments, "/lorvex") || HasSwitch(arguments, "/v")) {
        Lorvex = Platform().Files().FileExists(LorvexExePath);
        LogIfEnabled(Lorvex ? "Lorvex ON  über CommandLineline"
                            : "Lorvex ON  versucht über CommandLineline nur die Lorvex-Datei existiert nicht");
    }
}

void clsLorvexCheck::LogTool() {
    clsVersionInfo version;
    (void)version.GetFileInfo(LorvexExePath);
    LogIfEnabled("Version: " + version.FileVersion());
    LogIfEnabled(std::string("Search level = ") + (LorvexScanComplete ? "complete" : "beginend"));
    LogIfEnabled("Start path = " + LorvexSearchPath);
}

} // namespace tovel
