#pragma once
// machine.ini: the text form of a machine's configuration.
//   [System]       Key=Value for the version, language, folders, screen, power state
//   [Fonts]        Fonts=Face;Face;...
//   [Environment]  NAME=value
//   [Drives]       X=type,host folder      type: fixed | cdrom | removable | network | ramdisk
//   [FreeSpace]    X=bytes                  optional; otherwise the host's free space
//   [Shares]       \\server\share=host folder
//   [Associations] .ext=program
// Lines: "[Section]", "Key=Value", "; comment", blank. Anything else is an error with its line.
#include <string>

#include "platform/posix/clsMachine.h"

namespace tovel {

class clsMachineIni {
public:
    /// Parses the text of machine.ini; false with "<file>:<line>: what" in error.
    [[nodiscard]] static bool Parse(const std::string& text, const std::string& file, MachineConfig& config,
                                    std::string& error);
    [[nodiscard]] static std::string Write(const MachineConfig& config);
    /// "fixed", "cdrom", ...; empty for types a drive mapping cannot have.
    [[nodiscard]] static std::string DriveTypeName(DriveType type);
};

} // namespace tovel
