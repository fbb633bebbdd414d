#pragma once
// Options of the Linux build. They are taken off the arguments before the rest becomes the
// Windows command line, so none of them ever reaches the setup's own switch analysis.
//   --machine=DIR        the emulated machine (default: $TOVEL_MACHINE, else
//                        $XDG_DATA_HOME/tovelsetup/machine or ~/.local/share/tovelsetup/machine)
//   --create=SYS[,LANG]  create the machine from a profile, e.g. --create=win98,de
//   --disc=DIR           put a disc folder into the disc drive
//   --disc-drive=X       the disc drive's letter (default D)
//   --disc-share=\\S\N  offer the disc folder as a network share instead, and start from it
//   --boot               switch the machine on: pending renames, then RunOnce
//   --profiles           list the systems and languages --create knows
//   --plan               print the disc's catalogue as read on the machine, then end
//   --format=json|dot    with --plan: the plan for tools instead of the text
//   --check              check the disc's files and print the findings, then end
//   --help
//   --                   everything after it belongs to the Windows command line
#include <optional>
#include <string>
#include <vector>

namespace tovel {

struct LinuxOptions {
    std::string machine;
    std::string create;
    std::string disc;
    char discDrive = 'D';
    std::string discShare;
    bool boot = false;
    bool profiles = false;
    bool plan = false;
    std::string format;   ///< "", "json" or "dot"
    bool check = false;
    bool help = false;
    std::vector<std::string> windowsArguments;
};

class clsLinuxOptions {
public:
    /// Parses argv (without the program); nullopt with a message in error for a bad option.
    [[nodiscard]] static std::optional<LinuxOptions> Parse(const std::vector<std::string>& args, std::string& error);
    [[nodiscard]] static std::string Usage();
    /// The machine folder to use when --machine is not given.
    [[nodiscard]] static std::string DefaultMachineFolder();
};

} // namespace tovel
