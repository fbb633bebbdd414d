#include "install/clsOptionFile.h"

#include "common/clsString.h"
#include "install/clsTimeStamp.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr const char* kFileName = "OPFILE.TXT";
constexpr const char* kIndent = "     ";
/// A default no file can hold (a value ends at its line), so a missing key is told from an empty one.
const std::string kMissing(1, '\n');

/// Where a path named after a marker begins and ends (behind "OPFILE.TXT"); npos when absent.
struct Named {
    size_t begin = std::string::npos;
    size_t end = std::string::npos;
};

Named FindNamed(const std::string& upper, const char* marker) {
    const size_t at = upper.find(marker);
    if (at == std::string::npos) return {};
    const size_t begin = at + std::char_traits<char>::length(marker);
    const size_t name = upper.find(kFileName, begin);
    if (name == std::string::npos) return {};
    return {begin, name + std::char_traits<char>::length(kFileName)};
}

std::string OneOrZero(bool on) { return on ? "1" : "0"; }

/// The letters of the wanted languages the product offers; all it offers when none is wanted.
std::string LanguagesToInstall(const std::string& chosen, const std::string& offered, const std::string& setupLanguage) {
    if (offered.empty()) return chosen.empty() ? setupLanguage : chosen;
    std::string letters;
    for (char letter : chosen) {
        if (offered.find(letter) != std::string::npos && letters.find(letter) == std::string::npos) letters += letter;
    }
    if (!letters.empty()) return letters;
    return offered.find(setupLanguage) != std::string::npos ? setupLanguage : offered.substr(0, 1);
}

void LogEntry(const std::string& key, const std::string& value) { LogIfEnabled(kIndent + key + "=" + value); }

void LogSection(const std::string& name) { LogIfEnabled(std::string(kIndent) + "[" + name + "]"); }

} // namespace

OptionFilePlace clsOptionFile::Place(const std::string& parameters, const std::string& workFolder,
                                     const std::function<bool(const std::string&)>& driveUsable) {
    const std::string fallback = workFolder + kFileName;
    const std::string upper = clsString::UpperAscii(parameters);
    Named named = FindNamed(upper, "OF:");
    if (named.begin == std::string::npos) named = FindNamed(upper, "OPFILE=");
    if (named.begin == std::string::npos) return {fallback, parameters, false};
    const std::string path = parameters.substr(named.begin, named.end - named.begin);
    if (!driveUsable || driveUsable(path.substr(0, 3))) return {path, parameters, false};
    std::string rewritten = parameters;
    rewritten.replace(named.begin, named.end - named.begin, fallback);
    return {fallback, rewritten, true};
}

std::vector<OptionRequest> clsOptionFile::Requests(const clsSIFApplicationItem& item, const InstallContext& context) {
    const std::string destination = item.DestPath.empty() ? item.DefaultPath : item.DestPath;
    const std::string languages = LanguagesToInstall(context.productLanguages, item.AvailableLanguages, context.setupLanguage);
    const bool startInSetupLanguage = languages.find(context.setupLanguage) != std::string::npos;
    std::vector<OptionRequest> requests{
        {"SetupLanguage", context.setupLanguage},
        {"LanguagesToInstall", languages},
        {"StartLanguage", startInSetupLanguage ? context.setupLanguage : languages.substr(0, 1)},
        {"NameOfUser", item.UserName},
        {"NameOfCompany", item.CompanyName},
        {"SetupMode", item.SetupMode.empty() ? context.discSetupMode : item.SetupMode},
        {"DestinationDrive", destination.substr(0, 1)},
    };
    if (destination.size() >= 2) requests.push_back({"DestinationPath", destination.substr(2)});
    requests.insert(requests.end(), {
        {"CommonDrive", context.commonDrive},
        {"InstType", context.instType},
        {"JumpOverParam", OneOrZero(context.jumpOverParam)},
        {"TSInstallVersion", item.TSInstallVersion},
        {"NoOSCheck", OneOrZero(context.noOSCheck)},
    });
    return requests;
}

std::vector<IniEntry> clsOptionFile::ExtraEntries(const std::string& sifPath) {
    clsIniFile sif;
    sif.SetFullPath(sifPath);
    return clsSIFApplicationItem::ReadOptionFileEntries(sif);
}

std::vector<OptionRequest> clsOptionFile::Merged(const std::vector<OptionRequest>& requests,
                                                 const std::vector<OptionRequest>& extraEntries) {
    std::vector<OptionRequest> merged = requests;
    for (const auto& extra : extraEntries) {
        bool replaced = false;
        for (auto& request : merged) {
            if (!clsString::EqualNoCaseAscii(request.key, extra.key)) continue;
            request.value = extra.value;
            replaced = true;
        }
        if (!replaced) merged.push_back(extra);
    }
    return merged;
}

bool clsOptionFile::CreateOptionFile(const InstallStep& step) {
    auto& files = Platform().Files();
    if (files.FileExists(step.optionFilePath)) (void)files.DeleteFile(step.optionFilePath);
    clsIniFile ini;
    ini.SetFullPath(step.optionFilePath);
    WriteDescription(ini, step);
    WriteRequests(ini, step);
    ini.SetSectionName("RESULTS");
    ini.PutString("SetupSucceeded", "");
    ini.PutString("RebootRequested", "");
    if (files.FileExists(step.optionFilePath)) return true;
    LogIfEnabled("OPFile can not be created.");
    return false;
}

void clsOptionFile::WriteDescription(clsIniFile& ini, const InstallStep& step) {
    ini.SetSectionName("Description");
    ini.PutString("Note", "Option File from TOVEL_SETUP");
    ini.PutString("ProductDescription", step.description);
    ini.PutString("FileName", step.setupFile);
    ini.PutString("Parameters", step.parameters);
}

void clsOptionFile::WriteRequests(clsIniFile& ini, const InstallStep& step) {
    ini.SetSectionName("SETUPREQUESTS");
    LogSection("SETUPREQUESTS");
    for (const auto& request : step.requests) {
        ini.PutString(request.key, request.value);
        LogEntry(request.key, request.value);
    }
    for (const auto& extra : step.extraEntries) {
        const std::string old = ini.GetString(extra.key, kMissing);
        if (old != kMissing) LogIfEnabled(std::string(kIndent) + "KEY: " + extra.key + " gefunden.      Wert: " + old);
        ini.PutString(extra.key, extra.value);
        LogIfEnabled(std::string(kIndent) + "KEY: " + extra.key + " überschrieben. Wert: " + extra.value);
    }
}

void clsOptionFile::ReadOptionFileResults(const std::string& path) {
    results_ = {};
    LogIfEnabled(clsTimeStamp::Line("End"));
    LogIfEnabled("OPFILE.TXT Results:");
    LogSection("RESULTS");
    clsIniFile ini;
    ini.SetFullPath(path);
    ini.SetSectionName("RESULTS");
    results_.SetupSucceeded = ini.GetString("SetupSucceeded", "");
    LogEntry("SetupSucceeded", results_.SetupSucceeded);
    results_.RebootRequested = ini.GetInt("RebootRequested", 0);
    LogEntry("RebootRequested", std::to_string(results_.RebootRequested));
    results_.ParamAfterReboot = ini.GetString("ParamAfterReboot", "");
    LogEntry("ParamAfterReboot", results_.ParamAfterReboot);
    for (int n = 1;; ++n) {
        const std::string parameter = clsString::LowerAscii(ini.GetString("ParaStartOnEnd" + std::to_string(n), ""));
        const std::string program = clsString::LowerAscii(ini.GetString("StartOnEnd" + std::to_string(n), ""));
        if (program.empty()) break;
        results_.startOnEndPrograms.push_back(program);
        results_.startOnEndParameters.push_back(parameter);
        LogEntry("StartOnEnd" + std::to_string(n), program);
    }
    LogIfEnabled("End of OPFILE.TXT Results.");
}

std::string clsOptionFile::StartOnEndProgram(int n) const {
    if (n < 1 || n > StartOnEndProgramCount()) return {};
    return results_.startOnEndPrograms[static_cast<size_t>(n - 1)];
}

std::string clsOptionFile::StartOnEndParameter(int n) const {
    if (n < 1 || n > StartOnEndProgramCount()) return {};
    return results_.startOnEndParameters[static_cast<size_t>(n - 1)];
}

} // namespace tovel
