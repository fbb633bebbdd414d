#include "settings/clsPlaceholder.h"

#include <array>
#include <exception>
#include <string_view>

#include "common/clsFileDisk.h"
#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"
#include "settings/clsSetupsIni.h"

namespace tovel {

enum class clsPlaceholder::Source {
    ProgramFiles,
    SystemFolder,
    SystemRoot,
    SharedPath,
    WindowsFolder,
    TempFolder,
    AppTitleShort,
    IEMinimumCondition,
    SharedRoot,
    AppSSFSourcePath,
    DiscName,
    SetupFolder,
    SourceFolder,
};

namespace {

// One backslash between a folder and the name behind it.
void Join(const std::string& folder, std::string& behind) {
    if (behind.empty()) return;
    if (folder.back() == '\\') {
        if (behind.front() == '\\') behind.erase(0, 1);
        return;
    }
    // Only a name follows directly; the end of a quoted path or of an argument does not.
    if (std::string_view(" \t\"';,\\").find(behind.front()) == std::string_view::npos) behind.insert(0, 1, '\\');
}

} // namespace

std::string clsPlaceholder::ProgramFolder() const {
    if (!folders_.programFolder.empty()) return clsFileDisk::AddBackslash(folders_.programFolder);
    return clsFileDisk::AddBackslash(Platform().System().ProgramFolder());
}

clsPlaceholder::Value clsPlaceholder::Lookup(Source source) const {
    const clsFileDisk disk;
    const auto orMachine = [](const std::string& given, const auto& machine) {
        return given.empty() ? machine() : clsFileDisk::AddBackslash(given);
    };
    const auto sharedPath = [] {
        return clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\QUARLO\\DRELSW\\GLOBAL\\").QueryValue("SharedPath");
    };
    switch (source) {
    case Source::ProgramFiles:
        return {clsRegistry(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion")
                    .QueryValue("ProgramFilesDir"),
                true};
    case Source::SystemFolder:
        return {orMachine(folders_.systemFolder, [&] { return disk.SystemFolder(); }), true};
    case Source::SystemRoot:
        return {orMachine(folders_.workFolder,
                          [&] {
                              const std::string root = disk.WindowsDriveRoot();
                              return root.empty() ? std::string("C:\\") : root;
                          }),
                true};
    case Source::SharedPath: return {sharedPath(), true};
    case Source::WindowsFolder:
        return {orMachine(folders_.windowsFolder, [&] { return disk.WindowsFolder(); }), true};
    case Source::TempFolder: return {disk.TempFolder(), true};
    case Source::AppTitleShort: return {settings_ != nullptr ? settings_->AppTitleShort() : std::string(), false};
    case Source::IEMinimumCondition:
        return {settings_ != nullptr ? settings_->IEMinimumCondition() : std::string(), false};
    case Source::SharedRoot: return {sharedPath().substr(0, 2), true};
    case Source::AppSSFSourcePath:
        return {appSSFSourcePath_.empty() ? std::string() : clsFileDisk::AddBackslash(appSSFSourcePath_), true};
    case Source::DiscName:
        return {settings_ != nullptr ? settings_->GetInfo("CD_" + std::to_string(discNumber_)) : std::string(), false};
    case Source::SetupFolder: return {ProgramFolder(), true};
    case Source::SourceFolder:
        if (settings_ == nullptr || settings_->Path().empty()) return {ProgramFolder(), true};
        return {clsFileDisk::AddBackslash(settings_->Path()), true};
    }
    return {};
}

namespace {

using Source = clsPlaceholder::Source;
struct Spelling {
    std::string_view text;
    Source source;
};
// Only these spellings are known.
constexpr std::array<Spelling, 21> kSpellings{{
    {"%ProgramPath%", Source::ProgramFiles},
    {"[ProgramFilesFolder]", Source::ProgramFiles},
    {"[ProgramPath]", Source::ProgramFiles},
    {"%SystemFolder%", Source::SystemFolder},
    {"[SystemFolder]", Source::SystemFolder},
    {"%SystemRoot%", Source::SystemRoot},
    {"[SystemRoot]", Source::SystemRoot},
    {"%SharedPath%", Source::SharedPath},
    {"[SharedPath]", Source::SharedPath},
    {"%WindowsFolder%", Source::WindowsFolder},
    {"[WindowsFolder]", Source::WindowsFolder},
    {"%TempFolder%", Source::TempFolder},
    {"[TempFolder]", Source::TempFolder},
    {"%AppTitleShort%", Source::AppTitleShort},
    {"%IEMinimumCondition%", Source::IEMinimumCondition},
    {"%SharedRoot%", Source::SharedRoot},
    {"%AppSSFSourcePath%", Source::AppSSFSourcePath},
    {"[AppSSFSourcePath]", Source::AppSSFSourcePath},
    {"%CD_%", Source::DiscName},
    {"[TOVELSETUPFOLDER]", Source::SetupFolder},
    {"[TOVELSOURCEFOLDER]", Source::SourceFolder},
}};

} // namespace

std::vector<std::string_view> clsPlaceholder::KnownSpellings() {
    std::vector<std::string_view> names;
    for (const auto& spelling : kSpellings) names.push_back(spelling.text);
    return names;
}

std::string clsPlaceholder::CheckForPlaceholder(const std::string& input) const {
    std::string text = input;
    try {
        size_t from = 0;
        while (from < text.size()) {
            const size_t open = text.find_first_of("%[", from);
            if (open == std::string::npos) break;
            const size_t close = text.find(text[open] == '%' ? '%' : ']', open + 1);
            if (close == std::string::npos) break;
            const std::string_view placeholder = std::string_view(text).substr(open, close - open + 1);
            const Spelling* known = nullptr;
            for (const auto& spelling : kSpellings) {
                if (spelling.text == placeholder) known = &spelling;
            }
            if (known == nullptr) {
                from = close + 1;
                continue;
            }
            const Value value = Lookup(known->source);
            std::string behind = text.substr(close + 1);
            if (value.join && !value.text.empty()) Join(value.text, behind);
            text = text.substr(0, open) + value.text + behind;
            from = open + value.text.size();
        }
    } catch (const std::exception&) {
        // What was expanded so far stands.
    }
    return text;
}

} // namespace tovel
