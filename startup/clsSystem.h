#pragma once
// The rights of the user and the restart of Windows.
#include <cstdint>

namespace tovel {

class clsSystem {
public:
    /// Reads again what may have changed since the start: the user's administrator rights.
    void Refresh();
    /// True when the user may install: always on Windows 95/98/Me, else membership of the
    /// administrators (as last read by Refresh; read now if it never ran).
    [[nodiscard]] bool CheckIfUserIsAdmin();
    /// Enables "SeShutdownPrivilege" and asks Windows to restart, forcing programs to close.
    /// True when Windows accepted; a refusal is logged. Needs no rights read first, so it is
    /// callable before the start-up made the instance.
    static bool DoRestart();

private:
    bool read_ = false;
    bool administrator_ = false;
};

} // namespace tovel
