#include "platform/posix/clsMachineLibraries.h"

#include <pthread.h>

#include <charconv>

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsRegistryHive.h"
#include "platform/posix/clsTextResourceLine.h"

namespace tovel {

namespace {

constexpr std::string_view kMarker = "DLL_EXPORTS";
constexpr uint32_t kStillActive = 259;

/// "0x80004005" or "5"; nullopt for anything else.
std::optional<uint32_t> Number(std::string_view text) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// "HKEY_CURRENT_USER\Software\x" into its root and the path below it.
std::optional<std::pair<RegRoot, std::string>> SplitKey(std::string_view full) {
    const size_t slash = full.find('\\');
    const std::string_view rootName = full.substr(0, slash);
    for (const RegRoot root : {RegRoot::LocalMachine, RegRoot::CurrentUser, RegRoot::Users}) {
        if (clsWindowsPath::EqualNoCase(rootName, clsRegistryHive::RootName(root)) && slash != std::string_view::npos) {
            return std::make_pair(root, std::string(full.substr(slash + 1)));
        }
    }
    return std::nullopt;
}

} // namespace

bool clsMachineLibraries::HasExportsLine(std::string_view bytes) {
    return clsTextResourceLine::Parse(bytes, kMarker).has_value();
}

std::optional<std::string> clsMachineLibraries::ExportValue(std::string_view bytes, std::string_view key) {
    const auto pairs = clsTextResourceLine::Parse(bytes, kMarker);
    if (!pairs) return std::nullopt;
    for (const auto& [name, value] : *pairs) {
        if (clsWindowsPath::EqualNoCase(name, key)) return value;
    }
    return std::nullopt;
}

EntryPointCall clsMachineLibraries::CallEntryPoint(const std::string& path, const std::string& entryPoint,
                                                   uint32_t timeoutMs) {
    const auto bytes = files_.ReadFile(path);
    if (!bytes || !HasExportsLine(*bytes)) return {EntryPointCall::Outcome::NoLibrary, 0};
    const auto value = ExportValue(*bytes, entryPoint);
    if (!value) return {EntryPointCall::Outcome::NoEntryPoint, 0};
    if (clsWindowsPath::EqualNoCase(*value, "hang")) {
        clock_.Sleep(timeoutMs);
        return {EntryPointCall::Outcome::Hung, kStillActive};
    }
    if (!clsWindowsPath::EqualNoCase(*value, "ok")) {
        const auto code = Number(*value);
        if (!code) return {EntryPointCall::Outcome::NoEntryPoint, 0};
        return {EntryPointCall::Outcome::Returned, *code};
    }
    if (clsWindowsPath::EqualNoCase(entryPoint, "DllRegisterServer")) Register(path, *bytes, true);
    if (clsWindowsPath::EqualNoCase(entryPoint, "DllUnregisterServer")) Register(path, *bytes, false);
    return {EntryPointCall::Outcome::Returned, 0};
}

void clsMachineLibraries::Register(const std::string& path, std::string_view bytes, bool add) {
    const auto key = SplitKey(ExportValue(bytes, "RegistryKey").value_or(""));
    if (!key) return;
    if (add) {
        (void)registry_.SetValue(key->first, key->second, "", clsRegValue::String(path));
    } else {
        (void)registry_.DeleteKey(key->first, key->second);
    }
}

void clsMachineLibraries::EndThread(uint32_t exitCode) {
    pthread_exit(reinterpret_cast<void*>(static_cast<uintptr_t>(exitCode)));
}

} // namespace tovel
