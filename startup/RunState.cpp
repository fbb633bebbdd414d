#include "startup/RunState.h"

#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "startup/Globals.h"

namespace tovel {
namespace {

struct Printer {
    const RunProgress& progress;
    bool lines;
    std::string operator()(int16_t* value) const { return std::to_string(*value); }
    std::string operator()(bool* value) const { return *value ? "True" : "False"; }
    std::string operator()(std::string* value) const { return *value; }
    std::string operator()(int16_t RunProgress::*field) const { return std::to_string(progress.*field); }
    std::string operator()(int32_t RunProgress::*field) const { return std::to_string(progress.*field); }
    std::string operator()(std::string RunProgress::*field) const {
        return lines ? EscapeLines(progress.*field) : progress.*field;
    }
};

struct Setter {
    RunProgress& progress;
    const std::string& text;
    bool lines;
    bool operator()(int16_t* value) const { return Number(*value); }
    bool operator()(bool* value) const {
        const auto parsed = clsIniFile::ParseBoolean(text);
        if (parsed) *value = *parsed;
        return parsed.has_value();
    }
    bool operator()(std::string* value) const {
        *value = text;
        return true;
    }
    bool operator()(int16_t RunProgress::*field) const { return Number(progress.*field); }
    bool operator()(int32_t RunProgress::*field) const { return Number(progress.*field); }
    bool operator()(std::string RunProgress::*field) const {
        if (lines) return UnescapeLines(text, progress.*field);
        progress.*field = text;
        return true;
    }
    template <typename Integer>
    bool Number(Integer& value) const {
        const auto number = StoredNumber(text);
        if (number) value = static_cast<Integer>(*number);
        return number.has_value();
    }
};

} // namespace

std::string RunStateKey::Text(const RunProgress& progress) const { return std::visit(Printer{progress, lines}, target); }

bool RunStateKey::Restore(RunProgress& progress, const std::string& text) const {
    return std::visit(Setter{progress, text, lines}, target);
}

const std::vector<RunStateKey>& RunStateKeys() {
    static const std::vector<RunStateKey> keys{
        {"Parameters", "DefaultLanguage", &DefaultLanguage},
        {"Parameters", "RunningSetupIndex", &RunProgress::RunningSetupIndex},
        {"Parameters", "SetupStatus", &RunProgress::SetupStatus},
        {"Parameters", "RunningSetupFileName", &RunProgress::RunningSetupFileName},
        {"Parameters", "SetupFailed", &RunProgress::SetupFailed, true},
        {"Parameters", "NoOSCheck", &NoOSCheck, false, true},
        {"Parameters", "SilentMode", &SilentMode, false, true},
        {"Parameters", "SilentPath", &SilentPath, false, true},
        {"Parameters", "LogSwitch", &LogSwitch, false, true},
    };
    return keys;
}

void RestoreStartSwitches(const clsIniText& state) {
    RunProgress unused;
    for (const auto& key : RunStateKeys()) {
        if (!key.startSwitch) continue;
        if (const auto value = state.Value(key.section, key.key)) (void)key.Restore(unused, std::string(clsIniText::Trim(*value)));
    }
}

// What the writer writes for a number: an optional "-" and digits. Anything else in the file
// is damage, even where the profile function would read some number from it. The number is
// read as the profile function reads it, so a crash code such as -1073741819 stays.
std::optional<int32_t> StoredNumber(const std::string& text) {
    const size_t start = !text.empty() && text[0] == '-' ? 1 : 0;
    if (text.size() == start) return std::nullopt;
    for (size_t i = start; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
    }
    return clsIniText::ProfileInt(text);
}

std::string EscapeLines(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (c == '\\') escaped += "\\\\";
        else if (c == '\r') escaped += "\\r";
        else if (c == '\n') escaped += "\\n";
        else escaped += c;
    }
    return escaped;
}

bool UnescapeLines(const std::string& escaped, std::string& text) {
    std::string plain;
    plain.reserve(escaped.size());
    for (size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\') {
            plain += escaped[i];
            continue;
        }
        const char next = i + 1 < escaped.size() ? escaped[++i] : '\0';
        if (next == '\\') plain += '\\';
        else if (next == 'r') plain += '\r';
        else if (next == 'n') plain += '\n';
        else return false;
    }
    text = std::move(plain);
    return true;
}

} // namespace tovel
