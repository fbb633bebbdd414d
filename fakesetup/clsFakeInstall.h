#pragma once
// A stand-in setup that installs for real: its payload folder copied to the destination the
// run asked for, an uninstall entry whose command runs this program as the remover, and the
// version value where the disc's versions sections look. The remover undoes all three.
#include <string>

#include "fakesetup/clsFakeBehaviour.h"
#include "fakesetup/clsFakeLog.h"

namespace tovel {

class clsFakeInstall {
public:
    /// selfPath: this program's Windows path, which the uninstall command runs.
    clsFakeInstall(const clsFakeLog& log, std::string selfPath) : log_(log), selfPath_(std::move(selfPath)) {}

    /// Installs what the behaviour names; false when a step failed (each failure is logged).
    bool Install(const FakeBehaviour& behaviour, const std::string& opFile);
    /// Removes the product of an uninstall key; false when it was not installed.
    bool Remove(const std::string& uninstallKey);

    /// The key of an uninstall entry below HKEY_LOCAL_MACHINE.
    [[nodiscard]] static std::string UninstallKeyPath(const std::string& key);
    /// The uninstall command of an entry: this program with "-f" and the key.
    [[nodiscard]] static std::string UninstallString(const std::string& selfPath, const std::string& key);

private:
    /// The destination from the run's requests; empty when the run named none.
    [[nodiscard]] static std::string Destination(const std::string& opFile);
    [[nodiscard]] std::string PayloadFolder(const std::string& payload) const;
    bool CopyPayload(const FakeBehaviour& behaviour, const std::string& destination);
    bool WriteUninstallEntry(const FakeBehaviour& behaviour, const std::string& destination);
    bool WriteVersion(const FakeBehaviour& behaviour);

    const clsFakeLog& log_;
    std::string selfPath_;
};

} // namespace tovel
