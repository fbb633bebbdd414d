#include "install/clsDcomCheck.h"

#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr const char* kAuthentication = "LegacyAuthenticationLevel";
constexpr const char* kImpersonation = "LegacyImpersonationLevel";
constexpr int kNtFamily = 2;

// Keeps a former value beside the value; nothing to keep when there was none.
void KeepOld(const clsRegistry& ole, const std::string& name, const std::string& value) {
    if (!value.empty()) (void)ole.SetKeyValue(name + "Old", value, RegType::Dword);
}

} // namespace

bool clsDcomCheck::ChangedForRestart(bool checkOn, int platformId) {
    if (!checkOn || platformId != kNtFamily) return false;
    const clsRegistry ole(RegRoot::LocalMachine, kOleKey);
    const std::string authentication = ole.QueryValue(kAuthentication);
    const std::string impersonation = ole.QueryValue(kImpersonation);
    if (authentication == "2" && impersonation == "2") return false;
    LogIfEnabled("DCOM");
    LogIfEnabled(std::string(kAuthentication) + "=" + authentication);
    LogIfEnabled(std::string(kImpersonation) + "=" + impersonation);
    LogIfEnabled(std::string("Changed to ") + kAuthentication + "=2");
    LogIfEnabled(std::string("Changed to ") + kImpersonation + "=2");
    LogIfEnabled("Reboot");
    KeepOld(ole, kAuthentication, authentication);
    KeepOld(ole, kImpersonation, impersonation);
    (void)ole.SetKeyValue(kAuthentication, "2", RegType::Dword);
    (void)ole.SetKeyValue(kImpersonation, "2", RegType::Dword);
    return true;
}

} // namespace tovel
