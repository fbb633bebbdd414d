#pragma once
// A program the run starts and waits for before it goes on (the version-display tool, the
// programs started before a product's setup). The wait lets the user interface run, so the
// page stays alive however long the program takes.
#include <string>

namespace tovel {

class clsWaitedProgram {
public:
    /// Starts the Windows command line in the folder (empty: the current one) and waits until
    /// it has ended. False, with the log line "Error: Could not start program: ", when it
    /// could not be started.
    static bool RunAndWait(const std::string& commandLine, const std::string& folder);
};

} // namespace tovel
