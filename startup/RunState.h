#pragma once
// The run state that survives a restart of the machine: the switches the state file keeps
// (the setup language, /nooscheck, silent mode with its answer file, /log) and how far the run
// has come. Writing and reading the state file walk the one list RunStateKeys(), so a value
// added here is saved and restored alike.
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tovel {

class clsIniText;

/// How far an installation run has come, beside the globals.
struct RunProgress {
    int16_t RunningSetupIndex = 0;     ///< position of the product that asked for the restart
    int32_t SetupStatus = 0;           ///< exit code of that product's setup, crash codes included
    std::string RunningSetupFileName;  ///< command line of that product's setup
    std::string SetupFailed;           ///< the products whose setup failed, lines ended by CR LF
    bool operator==(const RunProgress&) const = default;
};

/// One value of the run state: where it lies in the state file and where it lives in the
/// program (a global, or a field of the run's progress). Numbers are written in decimal,
/// Booleans as "True"/"False", text as it is; text of several lines (`lines`) with CR, LF and
/// backslashes escaped, so that it fits on one line and reads back exactly.
struct RunStateKey {
    using Target = std::variant<int16_t*, bool*, std::string*, int16_t RunProgress::*, int32_t RunProgress::*,
                                std::string RunProgress::*>;

    const char* section;
    const char* key;
    Target target;
    bool lines = false;
    /// A switch of the command line: a run resumed from RunOnce has none of its own and takes
    /// the interrupted run's at its start (RestoreStartSwitches).
    bool startSwitch = false;

    /// The value as the state file holds it.
    [[nodiscard]] std::string Text(const RunProgress& progress) const;
    /// Sets the value from its text in the state file; false (and nothing set) when the text
    /// is not a value of this type.
    [[nodiscard]] bool Restore(RunProgress& progress, const std::string& text) const;
};

/// Every value of the run state, in the order the state file holds them.
[[nodiscard]] const std::vector<RunStateKey>& RunStateKeys();

/// Sets the start switches from a state file's text, before the command line is read. A key
/// missing or unreadable leaves its switch as it is; the whole file is checked later, when the
/// installation page reads it.
void RestoreStartSwitches(const clsIniText& state);

/// A number as the state file holds it (an optional "-" and decimal digits), read as the
/// profile function reads numbers; nullopt for any other text.
[[nodiscard]] std::optional<int32_t> StoredNumber(const std::string& text);

/// Text with CR, LF and backslashes escaped ("\r", "\n", "\\"), so it fits on one line.
[[nodiscard]] std::string EscapeLines(const std::string& text);
/// Sets text to what EscapeLines was given; false for a broken escape (text then unchanged).
[[nodiscard]] bool UnescapeLines(const std::string& escaped, std::string& text);

} // namespace tovel
