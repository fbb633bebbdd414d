#pragma once
// The setup log, C:\TOVELSETUP.LOG: one line per step, read by support staff after a failed
// installation. The file is opened and closed for every line so that whatever was written
// survives a crash or a restart.
//
// A new run (not one continued after a restart) keeps the old log as TOVELSETUP<n>.LOG,
// n = 1..5, the highest the newest: the first free number is taken; with all five in use
// they move down one (1 is lost) and the old log becomes 5. Numbers above 5 are left alone.
// If the old log cannot be copied it is not emptied either: the new run is appended to it.
// The new log then starts with a header naming the program, its version and the time.
//
// Lines are written in the system's ANSI code page and end in CR LF. Characters the code
// page lacks become "?", as do bytes that are not UTF-8; when the code page itself is
// unknown only ASCII is kept. A log that cannot be written is silently skipped: it must
// never stop the setup or show a message.
#include <string>

namespace tovel {

class clsPrintLog {
public:
    /// The program's version as the build gives it: "major.minor.revision".
    [[nodiscard]] static std::string Version();
    /// The log in a folder (the work folder). Unless the run continues after a restart, the
    /// old log is backed up and the header written.
    clsPrintLog(const std::string& folder, bool continuedAfterRestart);

    /// The log file; empty when no folder was given (nothing is written then).
    [[nodiscard]] const std::string& LogfileFullPath() const { return path_; }
    /// Appends the text as one line.
    void PrintLog(const std::string& text) const;

    /// The backup file of a number: TOVELSETUP<n>.LOG beside the log.
    [[nodiscard]] std::string BackupPath(int number) const;

private:
    void BackUpOldLog() const;
    void WriteHeader() const;
    void Append(const std::string& lines) const;

    std::string folder_;
    std::string path_;
};

/// 84 hyphens: the rule above the header and above each heading.
[[nodiscard]] const std::string& LogRule();

} // namespace tovel
