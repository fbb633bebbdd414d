#include "install/clsLorvexRun.h"

#include <cstdio>

#include "install/clsWaitedProgram.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/clsLorvexCheck.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr const char* kSharedKey = "SOFTWARE\\QUARLO\\DRELSW\\GLOBAL\\";
constexpr const char* kRunOnce = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

} // namespace

std::string clsLorvexRun::ResultFileName(std::string_view logBase, std::string_view packVersion, std::string_view tag,
                                         int counter, std::string_view suffix) {
    char digits[16];
    (void)std::snprintf(digits, sizeof digits, "%02d", counter);
    std::string name = std::string(logBase) + std::string(packVersion) + std::string(tag) + "_" + digits + std::string(suffix);
    if (name.size() > kNameLength) name.resize(kNameLength);
    return name + ".csv";
}

bool clsLorvexRun::AfterEachProduct() {
    return Lorvex && gSetupsIni && gSetupsIni->LorvexAfterEachProduct();
}

clsLorvexRun::clsLorvexRun() : packVersion_(Lorvex ? ReadPackVersion() : std::string()) {}

std::string clsLorvexRun::ReadPackVersion() {
    const std::string key = gSetupsIni ? gSetupsIni->PackversionKey() : std::string();
    const std::optional<RegRoot> root = clsRegistry::GetRootKey(key);
    if (root) {
        const clsRegistry reg(*root, clsRegistry::GetOnlyRegistryPath(key));
        if (reg.ValueExist("Packversion")) return reg.QueryValue("Packversion");
    }
    return gSetupsIni ? gSetupsIni->Packversion() : std::string();
}

void clsLorvexRun::RunAfterProduct(clsInstallView& view, int line) {
    if (!AfterEachProduct()) return;
    view.ShowProductStatus(line, "running Lorvex ...");
    (void)RunAndWait(ResultFileName(LogBaseName(), packVersion_, "", counter_++, ""));
    view.ShowProductStatus(line, "... running Lorvex");
}

void clsLorvexRun::RunFinal(clsInstallView& view, int line) {
    if (!Lorvex) return;
    if (line > 0) view.ShowProductStatus(line, "final Lorvex ... ");
    (void)RunAndWait(ResultFileName(LogBaseName(), packVersion_, "", kFinalCounter, "_end"));
}

void clsLorvexRun::RegisterAfterRestart() {
    if (!Lorvex) return;
    const std::string exePath = PlaceTool();
    if (exePath.empty()) return;
    const std::string name = ResultFileName(LogBaseName(), ReadPackVersion(), "_reboot", kRestartCounter, "");
    const clsRegistry runOnce(RegRoot::LocalMachine, kRunOnce);
    if (!runOnce.SetKeyValue("ZZ_Lorvex", Command(exePath, name) + " -message", RegType::Sz)) {
        LogIfEnabled("Lorvex: the run after the restart could not be registered.");
    }
}

std::string clsLorvexRun::CommonFolder() {
    const clsRegistry shared(RegRoot::LocalMachine, kSharedKey);
    std::string base;
    if (shared.ValueExist("SharedPath")) base = shared.QueryValue("SharedPath");
    if (base.empty()) {
        LogIfEnabled("Lorvex: Common nicht in Registry gefunden. ");
        // Without the shared path the tool goes where Windows keeps the common files.
        base = clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion").QueryValue("CommonFilesDir");
    }
    if (!base.empty() && base.back() != '\\') base += '\\';
    const std::string folder = base + "Quarlo\\Common\\";
    auto& files = Platform().Files();
    if (files.FolderExists(folder)) {
        LogIfEnabled("Lorvex: Common in Registry gefunden. ");
    } else if (files.CreateFolder(folder)) {
        LogIfEnabled("Lorvex: Common angelegt. ");
    } else {
        LogIfEnabled("Lorvex: Common cannot be created: " + folder);
    }
    return folder;
}

std::string clsLorvexRun::PlaceTool() {
    if (!gSetupsIni) return {};
    const std::string folder = CommonFolder();
    const std::string source = clsLorvexCheck::ToolFolder();
    auto& files = Platform().Files();
    for (const char* name : {"Lorvex.exe", "Lorvex.ini"}) {
        if (!files.CopyFile(source + name, folder + name, false)) LogIfEnabled("Lorvex: could not copy " + source + name);
    }
    const std::string exePath = folder + "Lorvex.exe";
    return files.FileExists(exePath) ? exePath : std::string();
}

std::string clsLorvexRun::Command(const std::string& exePath, const std::string& resultName) {
    return Quoted(exePath) + " " + LorvexAdditionalCommand + (LorvexScanComplete ? "/complete" : "/beginend") + " " +
           Quoted(LorvexSearchPath) + " " + Quoted(WorkFolder + resultName);
}

bool clsLorvexRun::RunAndWait(const std::string& resultName) {
    const std::string exePath = PlaceTool();
    if (exePath.empty()) return false;
    const std::string command = Command(exePath, resultName);
    LogIfEnabled("Lorvex: " + command);
    return clsWaitedProgram::RunAndWait(command, exePath.substr(0, exePath.rfind('\\') + 1));
}

std::string clsLorvexRun::LogBaseName() {
    const std::string path = gLog ? gLog->LogfileFullPath() : std::string();
    std::string name = path.substr(path.find_last_of("\\/") + 1);
    const size_t dot = name.rfind('.');
    if (dot != std::string::npos) name.resize(dot);
    return name;
}

} // namespace tovel
