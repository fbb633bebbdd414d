// The machine switched off at random moments of a ten-product run that restarts Windows twice,
// after PROD03 and after PROD07. Each start after a restart is cut off by a SIGKILL of its
// whole process group after a seeded random delay, and started again (booting the machine
// when it is off) as long as a state file is left. Whatever the moment: the state file is
// there whole or not at all and names a product that asked for a restart, each log ends with
// whole lines and the log before it is kept, no product's setup is started twice by the run,
// a start never finds a damaged state, and a resume left behind in RunOnce never outlives the
// state it belongs to.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>

#include "tests/e2e/ProductDisc.h"

namespace tovel::test {
namespace {

constexpr int kRestartStarted = 194;
constexpr int kMostKills = 200;
constexpr int kProducts = 10;
constexpr int kFirstRestart = 3;
constexpr int kSecondRestart = 7;
/// The longest a resumed part may count for the delays: a machine on a host disk (no memory
/// file system) takes seconds a part, and the test would take minutes.
constexpr double kLongestPartSeconds = 0.4;

/// The rest of a run after a restart: up to the next restart's notice, or to the Done page.
std::string ScriptAfter(int restartedProduct) {
    return restartedProduct == kFirstRestart ? "wait end\nclick MessageButton 0\n" : "wait end\nclick DoneBtn\n";
}

class CrashSafety : public ProductDiscRun {
protected:
    void SetUp() override {
        ProductDiscRun::SetUp();
        KeepMachineInMemory();
        ProductDisc disc;
        disc.products = kProducts;
        for (const int restart : {kFirstRestart, kSecondRestart}) disc.behaviour[ProductCode(restart)] = "RebootRequested=2\r\n";
        WriteProductDisc(disc);
        UseFakeSetupsOnADrivenClock();
    }
    void TearDown() override {
        std::error_code ec;
        for (const auto& copy : kept_) std::filesystem::remove_all(copy, ec);
        ProductDiscRun::TearDown();
    }

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
    /// Kills the group and waits until none of its processes runs any more: the setups it
    /// started die a moment after it, and one still in a system call could otherwise write
    /// into the next round's machine. Zombies count as gone (nobody may reap them here).
    static void KillGroup(pid_t group) {
        kill(-group, SIGKILL);
        int status = 0;
        waitpid(group, &status, 0);
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

    /// The product the state file names (0: no state file, -1: one that names none).
    [[nodiscard]] int StatePosition() const {
        const std::string state = ReadMachine("drive_c/INSTDUMP.TMP");
        if (state.empty()) return 0;
        const std::string key = "\r\nRunningSetupIndex=";
        const size_t at = state.find(key);
        return at == std::string::npos ? -1 : std::atoi(state.c_str() + at + key.size());
    }
    [[nodiscard]] bool PoweredOff() const { return ReadMachine("machine.ini").find("Power=off") != std::string::npos; }
    [[nodiscard]] bool ResumeRegistered() const {
        return ReadMachine("registry.reg").find("\"ZZZ_TovelSetup\"=") != std::string::npos;
    }
    [[nodiscard]] std::filesystem::path Keep(const std::string& name) {
        const std::filesystem::path copy = Machine().string() + "-" + name;
        std::filesystem::copy(Machine(), copy, std::filesystem::copy_options::recursive);
        kept_.push_back(copy);
        return copy;
    }
    void Restore(const std::filesystem::path& kept) const {
        std::filesystem::remove_all(Machine());
        std::filesystem::copy(kept, Machine(), std::filesystem::copy_options::recursive);
    }
    /// Boots the machine, which resumes the run without a kill; the seconds it took.
    double BootAndResume(int restartedProduct) {
        const auto begin = std::chrono::steady_clock::now();
        (void)Run({}, {"--boot"}, ScriptAfter(restartedProduct));
        return std::min(kLongestPartSeconds, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }

    void ExpectSafeAfterKill(int kill, const std::string& logBefore) const {
        const std::string state = ReadMachine("drive_c/INSTDUMP.TMP");
        if (!state.empty()) {
            // Written last, the last product's last key ends a whole file.
            const size_t last = state.rfind("\r\nShowDialogWait");
            EXPECT_TRUE(state.rfind("[Info]", 0) == 0 && last != std::string::npos &&
                        state.find("\r\n", last + 2) == state.size() - 2)
                << "kill " << kill << ": a part of a state file";
            EXPECT_TRUE(StatePosition() == kFirstRestart || StatePosition() == kSecondRestart) << "kill " << kill;
        }
        (void)LogLines();   // the log ends with a whole line
        const std::string log = ReadMachine("drive_c/TOVELSETUP.LOG");
        EXPECT_EQ(log.find("Read Dumpfile: "), std::string::npos) << "kill " << kill << ": a damaged state was read\n" << log;
        if (!logBefore.empty()) {
            bool kept = log == logBefore;
            for (int n = 1; n <= 5 && !kept; ++n) kept = ReadMachine("drive_c/TOVELSETUP" + std::to_string(n) + ".LOG") == logBefore;
            EXPECT_TRUE(kept) << "kill " << kill << ": the log of the start before is lost";
        }
        for (int i = 1; i <= kProducts; ++i) {
            ASSERT_LE(FakeLogCount(ProductCode(i) + ": start"), 1U) << "kill " << kill << "\n" << FakeLog();
        }
    }

    std::vector<std::filesystem::path> kept_;   ///< the machines as each restart left them
};

TEST_F(CrashSafety, ATenProductRunWithTwoRestartsCutOffAtRandomMomentsGoesOnFromAWholeStateOrNotAtAll) {
    // The run up to each restart once without a kill: the machine after each restart is where
    // the rounds begin, and how long each resumed part takes sets the range of the delays.
    ASSERT_EQ(Run({}, {"--create=xppro"}, std::string(kProductDiscToInstallation) + ScriptAfter(kFirstRestart)),
              kRestartStarted)
        << Output();
    ASSERT_EQ(StatePosition(), kFirstRestart);
    std::array<std::filesystem::path, 2> restarted = {Keep("first"), {}};
    std::array<double, 2> seconds = {BootAndResume(kFirstRestart), 0};
    ASSERT_NE(Output().find("(exit code " + std::to_string(kRestartStarted) + ")"), std::string::npos) << Output();
    ASSERT_EQ(StatePosition(), kSecondRestart) << Output();
    restarted[1] = Keep("second");
    seconds[1] = BootAndResume(kSecondRestart);
    // The whole run: each product once, in order, the Done page, nothing left to resume.
    EXPECT_NE(Output().find("(exit code 0)"), std::string::npos) << Output();
    for (int i = 1; i <= kProducts; ++i) EXPECT_EQ(FakeLogCount(ProductCode(i) + ": results"), 1U) << FakeLog();
    EXPECT_LT(FakeLog().find("PROD07: exit"), FakeLog().find("PROD08: start")) << FakeLog();
    EXPECT_TRUE(Logged("Log file closed. ")) << Output();
    EXPECT_EQ(StatePosition(), 0);
    EXPECT_FALSE(ResumeRegistered());

    std::mt19937 random(20261125);
    std::uniform_real_distribution<double> share(0.0, 1.2);
    int kills = 0;
    int rounds = 0;
    std::array<int, 3> left = {0, 0, 0};   // kills that left no state, the first restart's, the second's
    const auto begin = std::chrono::steady_clock::now();
    while (kills < kMostKills) {
        const int part = rounds++ % 2;
        Restore(restarted[static_cast<size_t>(part)]);
        for (int position; kills < kMostKills && (position = StatePosition()) > 0;) {
            const std::string logBefore = ReadMachine("drive_c/TOVELSETUP.LOG");
            const pid_t pid = Start(ScriptAfter(position), PoweredOff());
            const double delay = share(random) * seconds[position == kFirstRestart ? 0 : 1];
            std::this_thread::sleep_for(std::chrono::duration<double>(delay));
            KillGroup(pid);
            ++kills;
            ExpectSafeAfterKill(kills, logBefore);
            const int now = StatePosition();
            ++left[static_cast<size_t>(now == kFirstRestart ? 1 : now == kSecondRestart ? 2 : 0)];
        }
        // A resume registered but never used by the boot must not start the setup at the
        // next boot once its state is gone.
        if (StatePosition() == 0) {
            EXPECT_FALSE(ResumeRegistered()) << "round " << rounds;
        }
    }
    const double spent = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    std::printf("%d kills in %d rounds in %.1f s (resumed parts %.2f s and %.2f s): %d left no state, %d the first "
                "restart's, %d the second's\n",
                kills, rounds, spent, seconds[0], seconds[1], left[0], left[1], left[2]);
    EXPECT_GT(left[0], 0);
    EXPECT_GT(left[1], 0);
    EXPECT_GT(left[2], 0);
}

} // namespace
} // namespace tovel::test
