#pragma once
// The state file INSTDUMP.TMP in the work folder: the whole state of an installation run,
// written before the machine restarts and read back when the setup starts again, so that
// the run goes on with the remaining products.
//
// The file is an INI file of four sections: Info (the program and the disc), Parameters (the
// run state of RunStateKeys()), InstallPacketItem (the chosen packet and its products) and
// SIFApplication (every product record with its lists). Writing and reading walk the same key
// tables. The file is built in memory in one pass, byte for byte as clsIniFile would write it
// key by key, and written through a temporary file and a rename: a kill at any moment leaves
// the old file or the new one. A file that is cut short, damaged or from another disc is
// refused whole; nothing read from it is kept (docs/INSTALL.md).
#include <cstdint>
#include <optional>
#include <string>

#include "install/clsDumpCatalogue.h"
#include "settings/clsIniText.h"
#include "startup/RunState.h"

namespace tovel {

class clsSIFApplication;
class clsSIFPacketItem;

class clsDumpFile {
public:
    /// Takes one key as written: section, key name, value.
    using KeySink = clsDumpCatalogue::KeySink;

    /// Works on the run's catalogue and packet (gApplications, gPacketItem).
    clsDumpFile();
    /// Works on the given catalogue and packet.
    clsDumpFile(clsSIFApplication& applications, clsSIFPacketItem& packet);

    /// Position, in the ordered product list, of the product that asked for the restart.
    [[nodiscard]] int16_t RunningSetupIndex() const { return progress_.RunningSetupIndex; }
    void SetRunningSetupIndex(int16_t index) { progress_.RunningSetupIndex = index; }
    /// Exit code of that product's setup process (crash codes are negative).
    [[nodiscard]] int32_t SetupStatus() const { return progress_.SetupStatus; }
    void SetSetupStatus(int32_t status) { progress_.SetupStatus = status; }
    /// Command line of that product's setup.
    [[nodiscard]] const std::string& RunningSetupFileName() const { return progress_.RunningSetupFileName; }
    void SetRunningSetupFileName(const std::string& commandLine) { progress_.RunningSetupFileName = commandLine; }
    /// The products whose setup failed so far in this run, lines ended by CR LF.
    [[nodiscard]] const std::string& SetupFailed() const { return progress_.SetupFailed; }
    void SetSetupFailed(const std::string& lines) { progress_.SetupFailed = lines; }

    /// Writes the whole state to WorkFolder + "INSTDUMP.TMP", replacing the file at once.
    void CreateDumpFile();
    /// Reads the state back into the globals, the packet and the catalogue after the disc
    /// check. False, with a log line and nothing changed, when the user cancels the disc
    /// prompt or the file is missing, cut short or damaged.
    [[nodiscard]] bool ReadDumpFile();
    /// True when the disc in the source folder (Setups.ini in HomePath) has the disc name the
    /// state file holds; while it has not, asks for the disc with OK and Cancel (Cancel: false).
    [[nodiscard]] bool CheckDumpDisc();

    /// Hands every key of the state file to put, in the order of the file.
    void WriteKeys(const KeySink& put) const;

    /// WorkFolder + "INSTDUMP.TMP".
    [[nodiscard]] static std::string DumpFilePath();
    /// The running program's full path: its folder (HomePath, a backslash added unless it ends
    /// in "/" or "\"), its file name and ".EXE".
    [[nodiscard]] static std::string ProgramPath();

private:
    /// The state file's text, parsed; nullopt (logged) when it cannot be read.
    [[nodiscard]] static std::optional<clsIniText> Load();
    /// Asks for the disc named wanted until it is in the source folder or the user cancels.
    [[nodiscard]] static bool AskForDisc(const std::string& wanted);

    clsSIFApplication& applications_;
    clsSIFPacketItem& packet_;
    RunProgress progress_;
};

} // namespace tovel
