#include "fakesetup/clsFakeSetup.h"

#include <chrono>
#include <thread>

#include "fakesetup/clsFakeInstall.h"
#include "fakesetup/clsFakeResults.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsCommandLine.h"
#include "settings/clsIniFile.h"

namespace tovel {

namespace {

// How often a held setup looks whether its file is still there.
constexpr uint32_t kHoldPollMs = 100;

std::string FileName(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

std::string SignedText(uint32_t code) { return std::to_string(static_cast<int32_t>(code)); }

} // namespace

clsFakeSetup::clsFakeSetup(std::string selfPath, const std::vector<std::string>& arguments, clsFakeWindow& window)
    : selfPath_(std::move(selfPath)),
      arguments_(arguments, DefaultOpFile()),
      log_(arguments_.OpFile(), FileName(selfPath_)),
      window_(window) {
    clsIniFile::SetReporter([this](const std::string& message) { log_.Line("ini: " + message); });
}

clsFakeSetup::~clsFakeSetup() { clsIniFile::SetReporter(nullptr); }

std::string clsFakeSetup::DefaultOpFile() {
    return Platform().System().WindowsFolder().substr(0, 3) + "OPFILE.TXT";
}

std::string clsFakeSetup::BehaviourFile() const {
    if (!arguments_.BehaviourFile().empty()) return arguments_.BehaviourFile();
    return selfPath_.substr(0, selfPath_.find_last_of('\\') + 1) + "FAKESETUP.INI";
}

uint32_t clsFakeSetup::Run() {
    if (!arguments_.RemoveKey().empty()) return Remove();
    const FakeBehaviour behaviour = clsFakeBehaviour::Read(BehaviourFile(), arguments_.BehaviourSection());
    log_.SetName(behaviour.name);
    log_.Line(std::string(arguments_.IsChild() ? "second process" : "start") + " " + arguments_.CommandLine());
    log_.Line("opfile " + arguments_.OpFile() +
              (Platform().Files().FileExists(arguments_.OpFile()) ? "" : " (not there)"));
    if (behaviour.secondProcess && !arguments_.IsChild()) return HandOver(behaviour);
    Work(behaviour);
    log_.Line("exit " + SignedText(behaviour.exitCode));
    return behaviour.exitCode;
}

uint32_t clsFakeSetup::Remove() {
    log_.SetName(arguments_.RemoveKey());
    log_.Line(std::string("remove") + (arguments_.Unattended() ? " unattended" : " asking") + " " +
              arguments_.CommandLine());
    return clsFakeInstall(log_, selfPath_).Remove(arguments_.RemoveKey()) ? 0 : 1;
}

uint32_t clsFakeSetup::HandOver(const FakeBehaviour& behaviour) {
    const std::string line = clsWindowsCommandLine::Quote(selfPath_) + " " + arguments_.CommandLine() + " /fakechild";
    const StartResult started = Platform().Processes().Start(line, "");
    if (started.processId) {
        log_.Line("handed over to process " + std::to_string(*started.processId));
        Platform().Processes().Release(*started.processId);
    } else {
        log_.Line("second process failed: error " + std::to_string(started.error));
    }
    log_.Line("exit " + SignedText(behaviour.exitCode));
    return behaviour.exitCode;
}

void clsFakeSetup::Work(const FakeBehaviour& behaviour) {
    OpenWindow(behaviour);
    if (behaviour.milliseconds > 0) {
        log_.Line("working " + std::to_string(behaviour.milliseconds) + " ms");
        window_.Wait(behaviour.milliseconds);
    }
    (void)clsFakeInstall(log_, selfPath_).Install(behaviour, arguments_.OpFile());
    clsFakeResults(log_).Write(behaviour, arguments_.OpFile());
    if (!behaviour.holdWhileFileExists.empty()) Hold(behaviour.holdWhileFileExists);
    window_.Close();
}

void clsFakeSetup::OpenWindow(const FakeBehaviour& behaviour) {
    if (behaviour.windowClass.empty() && behaviour.windowTitle.empty()) return;
    const bool shown = window_.Open(behaviour.windowClass, behaviour.windowTitle);
    log_.Line((shown ? "window " : "window failed: ") + behaviour.windowClass + " \"" + behaviour.windowTitle + "\"");
}

void clsFakeSetup::Hold(const std::string& file) {
    log_.Line("holding while " + file + " exists");
    while (Platform().Files().FileExists(file)) {
        window_.Wait(kHoldPollMs);
        // On a driven clock the wait above takes no time; the holder must not spin.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    log_.Line("released");
}

} // namespace tovel
