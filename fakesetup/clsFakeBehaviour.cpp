#include "fakesetup/clsFakeBehaviour.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "settings/clsIniFile.h"

namespace tovel {

uint32_t clsFakeBehaviour::ParseExitCode(const std::string& text) {
    int64_t value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value < INT32_MIN || value > UINT32_MAX) return 0;
    return static_cast<uint32_t>(value);
}

uint32_t clsFakeBehaviour::ParseSeconds(const std::string& text) {
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || *end != '\0' || !std::isfinite(seconds) || seconds <= 0 || seconds > 86400) return 0;
    return static_cast<uint32_t>(std::lround(seconds * 1000));
}

void clsFakeBehaviour::ReadStartOnEnd(clsIniFile& ini, FakeBehaviour& behaviour) {
    for (int n = 1;; ++n) {
        const std::string program = ini.GetString("StartOnEnd" + std::to_string(n), "");
        if (program.empty()) return;
        behaviour.startOnEnd.emplace_back(program, ini.GetString("ParaStartOnEnd" + std::to_string(n), ""));
    }
}

FakeBehaviour clsFakeBehaviour::Read(const std::string& file, const std::string& section) {
    clsIniFile ini;
    ini.SetFullPath(file);
    ini.SetSectionName(section);
    FakeBehaviour b;
    b.name = ini.GetString("Name", section);
    b.writeResults = ini.GetTF("WriteResults", true);
    b.garbage = ini.GetTF("Garbage", false);
    b.setupSucceeded = ini.GetString("SetupSucceeded", b.setupSucceeded);
    b.rebootRequested = ini.GetString("RebootRequested", b.rebootRequested);
    b.paramAfterReboot = ini.GetString("ParamAfterReboot", "");
    ReadStartOnEnd(ini, b);
    b.exitCode = ParseExitCode(ini.GetString("ExitCode", "0"));
    b.milliseconds = ParseSeconds(ini.GetString("Seconds", "0"));
    b.windowClass = ini.GetString("WindowClass", "");
    b.windowTitle = ini.GetString("WindowTitle", "");
    b.secondProcess = ini.GetTF("SecondProcess", false);
    b.holdWhileFileExists = ini.GetString("HoldWhileFileExists", "");
    b.payload = ini.GetString("Payload", "");
    b.uninstallKey = ini.GetString("UninstallKey", "");
    b.displayName = ini.GetString("DisplayName", b.uninstallKey);
    b.versionRegPath = ini.GetString("VersionRegPath", "");
    b.versionRegKey = ini.GetString("VersionRegKey", "");
    b.version = ini.GetString("Version", "");
    return b;
}

} // namespace tovel
