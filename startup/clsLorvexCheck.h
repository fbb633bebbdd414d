#pragma once
// Whether the version-display tool runs after the installation, and how: its own Lorvex.ini
// first, then the command line.
#include <string>

namespace tovel {

class clsLorvexCheck {
public:
    /// The tool's folder: "Lorvex" in the disc's product folder (Path), or beside the program
    /// when there is none; ends in a backslash.
    [[nodiscard]] static std::string ToolFolder();
    /// Decides from Lorvex.ini and the command line, sets Lorvex, LorvexScanComplete,
    /// LorvexSearchPath and LorvexExePath, and logs each step.
    static void Decide(const std::string& commandLine);

private:
    static void ReadIni();
    static void ReadCommandLine(const std::string& commandLine);
    static void LogTool();
};

} // namespace tovel
