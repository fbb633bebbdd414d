#pragma once
// What a stand-in product setup does, read from one section of its behaviour file
// (docs/FAKESETUP.md lists the keys). A missing file or section gives a setup that succeeds
// at once; a value that cannot be read gives its default.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tovel {

class clsIniFile;

struct FakeBehaviour {
    std::string name;                   ///< how the log names this setup
    bool writeResults = true;           ///< false: RESULTS stays as the run wrote it
    bool garbage = false;               ///< writes damaged results instead
    std::string setupSucceeded = "1";
    std::string rebootRequested = "0";
    std::string paramAfterReboot;
    std::vector<std::pair<std::string, std::string>> startOnEnd;  ///< program, parameters
    uint32_t exitCode = 0;
    uint32_t milliseconds = 0;          ///< the time the setup takes
    std::string windowClass;
    std::string windowTitle;
    bool secondProcess = false;         ///< hands all work to a second process and ends
    std::string holdWhileFileExists;    ///< stays (window open) while this file exists
    std::string payload;                ///< folder copied to the destination
    std::string uninstallKey;
    std::string displayName;
    std::string versionRegPath;         ///< full key path, root included
    std::string versionRegKey;
    std::string version;
};

class clsFakeBehaviour {
public:
    /// The behaviour in a section of the file; the defaults when there is none.
    [[nodiscard]] static FakeBehaviour Read(const std::string& file, const std::string& section);

    /// An exit code as text: decimal, negative ones as Windows keeps them (-1 is 4294967295).
    [[nodiscard]] static uint32_t ParseExitCode(const std::string& text);
    /// Seconds with fractions as milliseconds; 0 for anything else.
    [[nodiscard]] static uint32_t ParseSeconds(const std::string& text);

private:
    static void ReadStartOnEnd(clsIniFile& ini, FakeBehaviour& behaviour);
};

} // namespace tovel
