#pragma once
// The machine-wide DCOM defaults some products need: "LegacyAuthenticationLevel" and
// "LegacyImpersonationLevel" under SOFTWARE\Microsoft\OLE\ both 2. On the NT family, with
// the disc's CheckDCOM on, other values (missing ones count as other) are changed to 2, the
// former ones kept as "...Old" beside them; the change needs a restart before the run goes on.
#include <string>

namespace tovel {

class clsDcomCheck {
public:
    static constexpr const char* kOleKey = "SOFTWARE\\Microsoft\\OLE\\";

    /// True when it changed the values and Windows must restart; logs what it found and did.
    /// checkOn: the disc's CheckDCOM; platformId: 2 for the NT family.
    [[nodiscard]] static bool ChangedForRestart(bool checkOn, int platformId);
};

} // namespace tovel
