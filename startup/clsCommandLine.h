#pragma once
// The program's command line, analysed once at start-up. The analysis only reads: it returns
// what it found (CommandLineSwitches), which ApplySwitches then carries out, and the lines
// that WriteAnalysis puts into one "Commandline analyse" section of the log.
//
// The grammar is loose on purpose, so that the shortcuts on existing discs keep working:
//   switch  = its text anywhere in the lower-cased line, no separator needed before or after
//             ("/logfile" switches logging on, "/testmode" holds "/test")
//   value   = cut from the line as typed, behind the switch's "="
//   "/drive=" X     one character: a drive letter; "\" (a UNC path) is refused
//   "/level=" N     one character: a digit; anything else counts as 0 ("/level=12" is 1)
//   silent          every piece between two "/" that holds "silent": bare ("/silent") or with
//                   a path ("/silent=C:\x\Tovel_Auto.ini"); the path runs to the next "/"
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "startup/CommandLineSwitches.h"

namespace tovel {

class clsCommandLine {
public:
    /// The command line as typed, without the program.
    void SetCommandLine(std::string commandLine) { commandLine_ = std::move(commandLine); }
    [[nodiscard]] const std::string& CommandLine() const { return commandLine_; }

    /// Tests every switch in its fixed order and returns what it found, with the analysis.
    /// Changes nothing: no global, no drive. A faulty switch leaves an error line in the
    /// analysis and the switches after it are still tested.
    [[nodiscard]] CommandLineSwitches Start();

    /// Writes the analysis as the "Commandline analyse" section when logging is on and
    /// something was recognised.
    static void WriteAnalysis(const std::string& analysis);

private:
    void CheckShowConfig();
    void CheckDrive();
    void CheckLevel();
    void CheckComplete();
    void CheckBeginEnd();
    void CheckReg();
    void CheckNoReg();
    void CheckLog();
    void CheckNoVersionCheck();
    void CheckTestmode();
    void CheckNoOSCheck();
    void CheckRecord();
    void CheckSilent();
    [[nodiscard]] std::optional<std::string> FindAnswerFile() const;

    [[nodiscard]] bool Has(std::string_view switchText) const;
    void AddLine(const std::string& line);
    void AddError(const char* function, const std::string& why);
    /// Runs one switch test; whatever it throws becomes an error line and the analysis goes on.
    void Trap(const char* function, void (clsCommandLine::*check)());

    std::string commandLine_;
    std::string lower_;     ///< commandLine_ with A-Z lowered: same length, so positions carry over
    CommandLineSwitches found_;
};

} // namespace tovel
