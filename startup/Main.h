#pragma once
// The setup's entry point and its orderly end.
#include <cstdint>
#include <string>

namespace tovel {

/// Runs the setup once main() has installed the platform: creates the global objects, reads
/// the settings, chooses the language, fixes the folders, opens the log, looks for a run to
/// resume, analyses the command line, checks the machine and hands over to the wizard.
void Main();
/// Creates the run's objects and sets the globals (start-up steps 1 and 3 to 15).
void InitGlobals();
/// Creates the objects that live for the whole run; always true.
bool CreateGlobalObjects();
/// The one orderly way out: closes every form but the installation page and the background,
/// then those two, letting window messages run between, and ends the process with ExitStatus.
[[noreturn]] void EndProgram();
/// Ends the setup that cannot run on this disc or machine: deployment tools must not take it
/// for done. Exit status 1603 unless a check already chose another (1602: the user stopped it).
[[noreturn]] void EndSetupFailed();
/// Closes every open form except "frmInstallation" and "frmGradientBackground".
void UnloadAllForms();
/// Makes a language index (0 German .. 5 Japanese; English for any other) the setup
/// language: DefaultLanguage, the texts of its section of Setups.ini (the Japanese ones read
/// in Shift-JIS) and the locale of gLanguage, which reads its language text file anew.
/// Start-up calls it once; the setup-language page again when the user picks another.
void UseSetupLanguage(int16_t index);
/// A language index as its letter (form 0: "A"), name (1: "German") or locale (2: "1031");
/// English for an index outside 0..5, an empty text for another form.
[[nodiscard]] std::string LanguageIndexToCode(int index, int form);
/// Waits the seconds on the seconds-since-midnight timer (from the whole second nearest to
/// the start, across midnight), letting window messages run.
void WaitSeconds(int seconds);

} // namespace tovel
