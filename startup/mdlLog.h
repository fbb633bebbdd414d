#pragma once
// Writing to the setup log from anywhere in the program. Which lines are written is switched
// by CreateLogFile in Setups.ini or by the /log switch (the global LogSwitch, which the state
// file keeps across a restart): the settings only read the disc. Before the settings exist nothing is written. The log itself (its backups
// and header) is made either way.
#include <string>

namespace tovel {

/// Creates gLog in the work folder: a new log with its header, or, after a restart, the
/// old one continued. Once per run, after WorkFolder and ContinuedAfterRestart are known.
/// From then on what the registry, the INI files and the language text files report as bad
/// input is logged too.
void StartLog();
/// The /log switch: logging on whatever Setups.ini says. Off until the command line sets it.
void SetLogSwitch(bool on);
/// Writes the text (and one blank) as a line when logging is on.
void LogIfEnabled(const std::string& text);
/// Writes an empty line, a rule and "text:" when logging is on: the start of a section.
void LogHeading(const std::string& text);

} // namespace tovel
