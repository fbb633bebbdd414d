// The machine switched off at random moments of a resumed installation: the sample disc's
// run restarts Windows after the licence manager, and every start after that is cut off by a
// SIGKILL of the whole process group after a seeded random delay, until the run has gone past
// its state file. Whatever the moment, the state file is there whole or not at all, the log
// keeps its lines, and the licence manager, done before the restart, never runs again.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <random>
#include <thread>

#include "tests/e2e/SetupRun.h"

namespace tovel::test {
namespace {

constexpr int kRestartStarted = 194;
constexpr int kMostKills = 200;

class CrashSafety : public SetupRun {
protected:
    /// Starts tovelsetup on the machine in its own process group (booting the machine first,
    /// or not), the script as its input.
    pid_t Start(const std::string& script, bool boot) {
        WriteDisc("../resume.txt", script);
        const std::string machine = "--machine=" + Machine().string();
        const std::string disc = "--disc=" + Disc().string();
        const std::string input = (Disc() / ".." / "resume.txt").string();
        const pid_t pid = fork();
        if (pid == 0) {
            setpgid(0, 0);
            if (freopen(input.c_str(), "r", stdin) == nullptr || freopen("/dev/null", "w", stdout) == nullptr) _exit(127);
            if (boot) execl(TOVEL_BINARY, TOVEL_BINARY, machine.c_str(), disc.c_str(), "--boot", static_cast<char*>(nullptr));
            execl(TOVEL_BINARY, TOVEL_BINARY, machine.c_str(), disc.c_str(), static_cast<char*>(nullptr));
            _exit(127);
        }
        setpgid(pid, pid);
        return pid;
    }
    /// The state file is absent or whole: written last, its last product's last key ends it.
    void ExpectWholeOrNoStateFile(int kill) const {
        const std::string state = ReadMachine("drive_c/INSTDUMP.TMP");
        if (state.empty()) return;
        const size_t last = state.rfind("\r\nShowDialogWait");
        EXPECT_TRUE(state.rfind("[Info]", 0) == 0 && last != std::string::npos && state.find("\r\n", last + 2) == state.size() - 2)
            << "kill " << kill << ": a part of a state file";
    }
    /// Waits until no process of the killed group runs any more: the setups it started die a
    /// moment after it, and one still in a system call could otherwise write into the next
    /// round's machine. Zombies count as gone (nobody may reap them here).
    static void AwaitGroupGone(pid_t group) {
        for (int i = 0; i < 2000 && GroupRuns(group); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    static bool GroupRuns(pid_t group) {
        std::error_code ec;
        for (const auto& entry : std::filesystem::directory_iterator("/proc", ec)) {
            std::ifstream stat(entry.path() / "stat");
            std::string text;
            if (!std::getline(stat, text)) continue;
            const size_t close = text.rfind(')');
            if (close == std::string::npos) continue;
            std::istringstream rest(text.substr(close + 1));
            char state = 0;
            long parent = 0;
            long processGroup = 0;
            if ((rest >> state >> parent >> processGroup) && processGroup == group && state != 'Z' && state != 'X') return true;
        }
        return false;
    }
    [[nodiscard]] size_t Starts(const std::string& product) const {
        const std::string fake = ReadMachine("drive_c/FAKESETUP.LOG");
        size_t count = 0;
        for (size_t from = 0; (from = fake.find(product + ": start", from)) != std::string::npos; ++from) ++count;
        return count;
    }
};

TEST_F(CrashSafety, AResumedRunCutOffAtRandomMomentsGoesOnFromAWholeStateOrNotAtAll) {
    UseSampleDisc();
    const std::string path = std::string(TOVEL_FAKESETUP_DIR) + ":" + std::getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    WriteMachine("clock", "2026-11-22 08:00:00\n");
    std::string behaviour = ReadDisc("Products/License Manager/Setup/FAKESETUP.INI");
    const size_t at = behaviour.find("RebootRequested=1");
    ASSERT_NE(at, std::string::npos);
    behaviour.replace(at, 17, "RebootRequested=2");
    WriteDisc("Products/License Manager/Setup/FAKESETUP.INI", behaviour);
    std::string script = kSampleDiscToInstallation;
    script.insert(script.rfind("click ContinueBtn\n"), "toggle DOCVIEW\n");
    ASSERT_EQ(Run({}, {"--create=xppro"}, script + "wait end\nclick MessageButton 0\n"), kRestartStarted) << Output();

    // Each round starts again from the machine as the restart left it.
    const std::filesystem::path snapshot = Machine().string() + "-restarted";
    std::filesystem::copy(Machine(), snapshot, std::filesystem::copy_options::recursive);
    std::mt19937 random(20261125);
    std::uniform_int_distribution<int> delayMs(0, 250);
    int kills = 0;
    int rounds = 0;
    const auto begin = std::chrono::steady_clock::now();
    while (kills < kMostKills) {
        std::filesystem::remove_all(Machine());
        std::filesystem::copy(snapshot, Machine(), std::filesystem::copy_options::recursive);
        ++rounds;
        while (kills < kMostKills && !ReadMachine("drive_c/INSTDUMP.TMP").empty()) {
            // A machine still off is switched on; once the boot has used up RunOnce, the
            // setup is started again by hand.
            const bool off = ReadMachine("machine.ini").find("Power=off") != std::string::npos;
            const pid_t pid = Start("wait end\nclick DoneBtn\n", off);
            std::this_thread::sleep_for(std::chrono::milliseconds(delayMs(random)));
            kill(-pid, SIGKILL);
            int status = 0;
            waitpid(pid, &status, 0);
            AwaitGroupGone(pid);
            ++kills;
            ExpectWholeOrNoStateFile(kills);
            (void)LogLines();   // each start's log ends with whole lines
            ASSERT_LE(Starts("LICMGR"), 1U) << "kill " << kills;
            ASSERT_LE(Starts("DESIGNER"), 1U) << "kill " << kills;
        }
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("%d kills in %d rounds in %.1f s\n", kills, rounds, seconds);
    // A last start without a kill ends the run on the Done page (the machine may still be
    // off when the last kill came before its boot had ended). When the last kill came after
    // the run had deleted its state file, the run was over and only its last log lines are lost.
    if (!ReadMachine("drive_c/INSTDUMP.TMP").empty()) {
        const bool off = ReadMachine("machine.ini").find("Power=off") != std::string::npos;
        (void)Run({}, off ? std::vector<std::string>{"--boot"} : std::vector<std::string>{}, "wait end\nclick DoneBtn\n");
        EXPECT_TRUE(Logged("Log file closed. ")) << Output();
    }
    EXPECT_EQ(Starts("LICMGR"), 1U);
    EXPECT_GE(Starts("DESIGNER"), 1U);
    EXPECT_TRUE(ReadMachine("drive_c/INSTDUMP.TMP").empty());
}

} // namespace
} // namespace tovel::test
