#include "install/clsdotnet.h"

#include "catalogue/clsSIFApplication.h"
#include "common/clsVersion.h"
#include "install/mdlPrerequisite.h"
#include "settings/clsRegistry.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

bool KeyExists(const char* path) { return clsRegistry(RegRoot::LocalMachine, path).KeyExists(); }

} // namespace

std::optional<std::string> clsdotnet::InstalledVersion() {
    const clsRegistry v11(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\NET Framework Setup\\NDP\\v1.1.4322");
    if (!v11.QueryValue("Install").empty()) return "1.1";
    if (KeyExists("SOFTWARE\\Microsoft\\.NETFramework\\policy\\v1.0")) return "1.0";
    if (KeyExists("SOFTWARE\\Microsoft\\NET Framework Setup\\Product\\Microsoft .NET Framework Full v1.0.3705 (1033)")) {
        return "1.0";
    }
    return std::nullopt;
}

void clsdotnet::CheckDotNet(clsSIFApplication& catalogue) {
    const std::optional<std::string> installed = InstalledVersion();
    const int index = catalogue.IndexOfProductCode("DOTNETFRAMEWORK");
    LogIfEnabled("Instaled DotNet Version=" + installed.value_or(""));
    clsSIFApplicationItem* entry = catalogue.Item(index);
    if (entry == nullptr) return;
    MarkPrerequisite(*entry, !installed || clsVersion::Compare(*installed, entry->Build) < 0);
}

} // namespace tovel
