#include "catalogue/clsSetupsIniCheck.h"

#include <utility>

#include "catalogue/clsIniKeyCheck.h"
#include "catalogue/clsPlaceholderScan.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "settings/clsSetupsIni.h"

namespace tovel {

namespace {

using ValueKind = clsSetupsIni::ValueKind;

constexpr const char* kLanguageNames[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};

// A value GetPrivateProfileInt reads as the number written: blanks, a sign, then digits.
bool ReadsAsNumber(std::string_view value) {
    const std::string_view trimmed = clsIniText::Trim(value);
    const size_t digits = trimmed.find_first_of("0123456789");
    return digits != std::string_view::npos && trimmed.find_first_not_of("+", 0) == digits;
}

std::string DomainProblem(ValueKind kind, const std::string& value) {
    if (value.empty()) return {};
    if (kind == ValueKind::Boolean && !clsIniFile::ParseBoolean(value)) {
        return " is no yes/no word (True, False, Yes, No, On, Off, 1, 0, ...); the setup uses the default";
    }
    if (kind == ValueKind::Number && !ReadsAsNumber(value)) {
        return " is no number; the setup reads " + std::to_string(clsIniText::ProfileInt(value));
    }
    return {};
}

bool IsDiscSection(std::string_view name) {
    if (name.size() < 4 || !clsString::EqualNoCaseAscii(name.substr(0, 3), "CD_")) return false;
    return name.find_first_not_of("0123456789", 3) == std::string_view::npos;
}

} // namespace

std::vector<DiscFinding> clsSetupsIniCheck::Run() {
    std::vector<DiscFinding> findings;
    const std::string path = root_ + "Setups.ini";
    const clsSetupsIni settings({}, root_);
    productFolder_ = settings.Path().empty() ? root_ : settings.Path();
    languages_.clear();
    for (int i = 0; i < clsSetupsIni::kLanguageCount; ++i) {
        if (clsString::EqualNoCaseAscii(settings.LanguageSetting(static_cast<int16_t>(i)), "enable")) languages_.push_back(i);
    }
    const auto bytes = Platform().Files().ReadFile(path);
    if (!bytes) {
        findings.push_back({path, 0, FindingSeverity::Warning, "missing: every setting keeps its default, the products lie beside the setup"});
        return findings;
    }
    std::vector<std::string> warnings;
    const clsIniText text = clsIniText::Parse(*bytes, Platform().System().AnsiCodePage(), warnings);
    for (const auto& warning : warnings) findings.push_back({path, 0, FindingSeverity::Warning, warning});
    const auto outline = text.Outline();

    clsIniKeyCheck known;
    const auto table = clsSetupsIni::KnownKeys();
    for (const auto& key : table) known.AddKnown(key.section, key.name);
    known.AllowAnyKey("STARTERGENERAL");
    for (const IniLine& line : outline) {
        if (line.header && IsDiscSection(line.section)) known.AddKnown(std::string(line.section), "DiscName");
    }
    auto unread = known.Check(path, outline);
    findings.insert(findings.end(), unread.begin(), unread.end());
    auto placeholders = clsPlaceholderScan::Check(path, outline);
    findings.insert(findings.end(), placeholders.begin(), placeholders.end());

    for (const IniLine& line : outline) {
        if (line.header || !line.firstBlock) continue;
        for (const auto& key : table) {
            if (!clsString::EqualNoCaseAscii(key.section, line.section) || !clsString::EqualNoCaseAscii(key.name, line.key)) continue;
            const std::string value = text.Value(line.section, line.key).value_or("");
            const std::string problem = DomainProblem(key.kind, value);
            if (!problem.empty()) findings.push_back({path, line.number, FindingSeverity::Error, std::string(line.key) + "=" + value + problem});
            const bool languageWord = clsString::EqualNoCaseAscii(line.section, "LANGUAGES");
            if (languageWord && !clsString::EqualNoCaseAscii(value, "enable") && !clsString::EqualNoCaseAscii(value, "disable") &&
                !clsString::EqualNoCaseAscii(value, "hide")) {
                findings.push_back({path, line.number, FindingSeverity::Warning,
                                    std::string(line.key) + "=" + value + " is none of enable, disable, hide; the language is not offered"});
            }
        }
    }
    if (settings.PathFailed()) {
        // The setup stops before it reads the languages: nothing about them can be told.
        languages_.clear();
        productFolder_ = root_;
        size_t line = 0;
        for (const IniLine& entry : outline) {
            if (!entry.header && entry.firstBlock && clsString::EqualNoCaseAscii(entry.section, "SETTINGS") &&
                clsString::EqualNoCaseAscii(entry.key, "Path")) {
                line = entry.number;
                break;
            }
        }
        findings.push_back({path, line, FindingSeverity::Error, "Path=" + settings.Path() + " names no folder: the setup stops at once"});
        return findings;
    }
    for (const int language : languages_) {
        const std::string section = language == 5 ? "JAPANESE" : kLanguageNames[language];
        if (!text.HasSection(section)) {
            findings.push_back({path, 0, FindingSeverity::Warning,
                                std::string(kLanguageNames[language]) + " is offered, but [" + section +
                                    "] with its texts (AppTitle, the bus names, ...) is missing: they stay empty"});
        }
    }
    return findings;
}

} // namespace tovel
