#pragma once
// Switching an emulated machine on, doing what Windows does at start:
//   1. WININIT.INI in the Windows folder: each line "target=source" of [rename] moves the
//      source over the target, "NUL=source" deletes it; the file becomes WININIT.BAK.
//   2. PendingFileRenameOperations (HKLM\SYSTEM\CurrentControlSet\Control\Session Manager):
//      pairs of source and target ("\??\" prefixes allowed); an empty target deletes the
//      source, a target with "!" replaces an existing file. The value is removed.
//   3. Power=on in machine.ini.
//   4. Every value of HKLM\...\CurrentVersion\RunOnce, in the order of their names: the value
//      is deleted, then its command runs and is waited for ("!name": deleted after it ran).
#include <string>
#include <vector>

#include "platform/posix/clsMachinePlatform.h"

namespace tovel {

class clsMachineBoot {
public:
    /// Boots the machine; each step it took is added to report. False if machine.ini could
    /// not be written (the steps before have happened).
    [[nodiscard]] static bool Run(clsMachinePlatform& platform, std::vector<std::string>& report);
};

} // namespace tovel
