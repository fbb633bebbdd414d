#pragma once
// Runs the real tovelsetup on a fresh emulated machine and a disc folder, and reads what it
// left behind: its output, its exit status, the setup log.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/clsWindowsCommandLine.h"

namespace tovel::test {

/// The sample disc's pages with their defaults, from the setup language to the products page
/// left with Next (the welcome page and the search go on by themselves).
inline constexpr const char* kSampleDiscToInstallation =
    "click ContinueBtn\n"          // setup language
    "click ContinueBtn\n"          // second welcome
    "click ContinueBtn\n"          // readme; the search goes on by itself
    "click YesBtn\n"               // licence
    "click ContinueBtn\n"          // information
    "type NameText = Jane Roe\n"
    "type CompanyText = Plant 4\n"
    "click ContinueBtn\n"          // identification
    "click ContinueBtn\n"          // destination
    "click ContinueBtn\n"          // product languages
    "click ContinueBtn\n"          // setup type
    "click ContinueBtn\n"          // bus system
    "click ContinueBtn\n";         // products

class SetupRun : public ::testing::Test {
protected:
    /// The exit status of a run whose input (none here) ended before the wizard did: the
    /// setup counts as cancelled, 1602, of which a process status keeps the low byte.
    static constexpr int kEndedWithoutAnswers = 1602 & 0xFF;

    void SetUp() override {
        static int counter = 0;
        root_ = std::filesystem::temp_directory_path() /
                ("tovel-e2e-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(Disc());
        machine_ = root_ / "machine";
    }
    void TearDown() override {
        std::error_code ec;
        std::filesystem::remove_all(root_, ec);
        std::filesystem::remove_all(machine_, ec);
    }

    /// Moves the machine folder (before its first use) to memory where the host has a
    /// memory file system: the machine syncs each file it writes, and tests that run the
    /// setup hundreds of times spend most of their time there otherwise. A process killed
    /// still leaves what a disc would keep, as the files stay in the host's cache.
    void KeepMachineInMemory() {
        const std::filesystem::path memory = "/dev/shm";
        if (!std::filesystem::is_directory(memory) || access(memory.c_str(), W_OK) != 0) return;
        machine_ = memory / (root_.filename().string() + "-machine");
        std::filesystem::remove_all(machine_);
    }

    std::filesystem::path Machine() const { return machine_; }
    std::filesystem::path Disc() const { return root_ / "disc"; }

    /// Copies the bundled sample disc into this test's disc folder.
    void UseSampleDisc() {
        std::filesystem::copy(TOVEL_SAMPLE_DISC, Disc(),
                              std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
    }
    /// The disc's product setups are launchers of the stand-in setup: it goes on PATH. The
    /// machine's time stands still but for the waits, so ticks and setups take no time.
    void UseFakeSetupsOnADrivenClock() {
        const std::string path = std::string(TOVEL_FAKESETUP_DIR) + ":" + std::getenv("PATH");
        setenv("PATH", path.c_str(), 1);
        WriteMachine("clock", "2026-11-22 08:00:00\n");
    }
    void WriteDisc(const std::string& relative, const std::string& bytes) { Write(Disc() / relative, bytes); }
    void WriteMachine(const std::string& relative, const std::string& bytes) { Write(Machine() / relative, bytes); }
    [[nodiscard]] std::string ReadMachine(const std::string& relative) const { return Read(Machine() / relative); }
    [[nodiscard]] std::string ReadDisc(const std::string& relative) const { return Read(Disc() / relative); }

    /// Runs tovelsetup with its own options first, then the Windows switches; the exit status.
    /// Its input is the script (one action a line; none: the input ends at once).
    int Run(const std::vector<std::string>& windowsArguments = {}, std::vector<std::string> options = {},
            const std::string& script = "") {
        std::vector<std::string> args = {TOVEL_BINARY, "--machine=" + Machine().string()};
        if (std::find_if(options.begin(), options.end(), [](const std::string& o) { return o.rfind("--disc", 0) == 0; }) ==
            options.end())
            args.push_back("--disc=" + Disc().string());
        args.insert(args.end(), options.begin(), options.end());
        args.emplace_back("--");
        args.insert(args.end(), windowsArguments.begin(), windowsArguments.end());
        std::string command;
        for (const auto& a : args) command += "'" + a + "' ";
        const std::filesystem::path input = root_ / "script.txt";
        Write(input, script);
        command += "<'" + input.string() + "' 2>&1";
        FILE* pipe = popen(command.c_str(), "r");
        output_.clear();
        char buffer[4096];
        while (pipe != nullptr && fgets(buffer, sizeof buffer, pipe) != nullptr) output_ += buffer;
        const int status = pipe != nullptr ? pclose(pipe) : -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] const std::string& Output() const { return output_; }
    /// The pages the run printed, in order ("frmWelcome2"), each time it waited on one.
    [[nodiscard]] std::vector<std::string> PagesShown() const {
        std::vector<std::string> pages;
        for (size_t at = output_.find("== "); at != std::string::npos; at = output_.find("\n== ", at + 1)) {
            const size_t start = output_[at] == '\n' ? at + 4 : at + 3;
            const size_t colon = output_.find(':', start);
            if (colon == std::string::npos) break;
            std::string page = output_.substr(start, colon - start);
            if (pages.empty() || pages.back() != page) pages.push_back(page);
        }
        return pages;
    }
    /// True if the output shows a message form with this caption and, after it, the text.
    [[nodiscard]] bool ShowedMessage(const std::string& caption, const std::string& text) const {
        const size_t form = output_.find("== frmMessage: " + caption + " ==");
        return form != std::string::npos && output_.find(text, form) != std::string::npos;
    }

    /// The setup log as lines, its CR LF ends checked and taken off.
    [[nodiscard]] std::vector<std::string> LogLines() const {
        const std::string text = ReadMachine("drive_c/TOVELSETUP.LOG");
        std::vector<std::string> lines;
        size_t start = 0;
        for (size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
            lines.push_back(text.substr(start, end - start));
        EXPECT_EQ(start, text.size()) << "the log ends in the middle of a line";
        return lines;
    }
    /// True if a log line equals the text.
    [[nodiscard]] bool Logged(const std::string& line) const {
        const auto lines = LogLines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

private:
    static void Write(const std::filesystem::path& path, const std::string& bytes) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string Read(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream out;
        out << in.rdbuf();
        return out.str();
    }

    std::filesystem::path root_;
    std::filesystem::path machine_;
    std::string output_;
};

} // namespace tovel::test
