#include "configtool/clsSettingsView.h"

#include <algorithm>

#include "catalogue/clsDescriptionCheck.h"
#include "catalogue/clsSIFApplicationItem.h"
#include "catalogue/clsSIFPacketItem.h"
#include "catalogue/clsSetupsIniCheck.h"
#include "common/clsCodePage.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "startup/Globals.h"

namespace tovel {

namespace {

using ValueKind = clsSetupsIni::ValueKind;
constexpr int kLanguages = 6;
constexpr uint32_t kShiftJis = 932;
// Setups.ini keeps the Japanese texts in Shift-JIS inside a file read in the ANSI code page;
// the setup reads that section through its language text reader (start-up's JapaneseLookup).
constexpr const char* kJapaneseSection = "JAPANESE";

bool Same(std::string_view a, std::string_view b) { return clsIniText::SameName(a, b); }

// A key a reader asks for after the last of a numbered family ("Dependence3" when there are
// two) is where the family ends, not a setting the file lacks.
bool EndsNumberedFamily(const std::string& key) { return !key.empty() && key.back() >= '0' && key.back() <= '9'; }

std::string StateText(const SettingsEntry& entry) {
    const std::string defaultText = entry.defaultValue ? "default " + (entry.defaultValue->empty() ? "empty" : *entry.defaultValue) : "";
    switch (entry.state) {
    case SettingsEntry::State::Default: return entry.defaultValue ? "not set: " + defaultText : "not set: the setup's default";
    case SettingsEntry::State::SameAsDefault: return "set, same as the default";
    case SettingsEntry::State::NotRead: return "never read by the setup";
    case SettingsEntry::State::Set: break;
    }
    return entry.defaultValue ? "set; " + defaultText : "set";
}

// The value of a line of the file's bytes as Shift-JIS text: blanks and one pair of quotes off.
std::string ShiftJisValue(std::string_view bytes, size_t number) {
    size_t start = 0;
    for (size_t n = 1; n < number && start != std::string_view::npos; ++n) {
        start = bytes.find('\n', start);
        if (start != std::string_view::npos) ++start;
    }
    if (start == std::string_view::npos) return {};
    std::string_view line = bytes.substr(start, bytes.find_first_of("\r\n", start) - start);
    const size_t equals = line.find('=');
    line = equals == std::string_view::npos ? std::string_view() : clsIniText::Trim(line.substr(equals + 1));
    if (line.size() >= 2 && (line.front() == '"' || line.front() == '\'') && line.back() == line.front()) line = line.substr(1, line.size() - 2);
    return clsCodePage::ToUtf8(line, kShiftJis).value_or(std::string(line));
}

} // namespace

clsSettingsView clsSettingsView::SetupsIni(const std::string& root) {
    clsSettingsView view(root + "Setups.ini", root);
    view.setupsIni_ = true;
    for (const auto& key : clsSetupsIni::KnownKeys()) view.known_.push_back({key.section, key.name, key.defaultValue, key.kind});
    view.Build();
    return view;
}

clsSettingsView clsSettingsView::Description(const std::string& path, const std::string& root) {
    clsSettingsView view(path, root);
    view.Build();
    return view;
}

void clsSettingsView::Build() {
    std::vector<DiscFinding> findings;
    if (setupsIni_) findings = clsSetupsIniCheck(root_).Run();
    else ObserveDescription(findings);
    ListEntries(findings);
    ReadValues();
}

void clsSettingsView::ObserveDescription(std::vector<DiscFinding>& findings) {
    clsSetupsIniCheck settings(root_);
    (void)settings.Run();
    (void)clsDescriptionCheck(settings.Languages(), settings.ProductFolder()).Read(path_, findings);

    known_.clear();
    clsIniFile ini;
    ini.SetFullPath(path_);
    ini.SetReadOnce(true);
    ini.SetKeyObserver([this](const std::string& section, const std::string& key, size_t) {
        const bool listed = std::any_of(known_.begin(), known_.end(), [&](const Known& k) { return Same(k.section, section) && Same(k.key, key); });
        if (!key.empty() && !listed) known_.push_back({section, key, std::nullopt, ValueKind::Text});
    });
    ini.SetSectionName("GENERAL");
    const std::string type = clsString::LowerAscii(ini.GetString("FileType", ""));
    // Each language reads its own text section: all six, as the file may serve other discs.
    const int16_t saved = DefaultLanguage;
    for (int language = 0; language < kLanguages; ++language) {
        DefaultLanguage = static_cast<int16_t>(language);
        if (type == "ssf") clsSIFApplicationItem().Read(ini, settings.ProductFolder());
        else if (type == "collection") clsSIFPacketItem().Read(ini);
    }
    DefaultLanguage = saved;
}

void clsSettingsView::ListEntries(const std::vector<DiscFinding>& findings) {
    entries_.clear();
    bytes_ = Platform().Files().ReadFile(path_).value_or("");
    std::vector<std::string> warnings;
    const clsIniText text = clsIniText::Parse(bytes_, Platform().System().AnsiCodePage(), warnings);
    const auto noted = [&](size_t line) {
        std::vector<std::string> notes;
        for (const auto& f : findings) {
            if (f.line == line && clsWindowsPath::EqualNoCase(f.file, path_)) notes.push_back(f.text);
        }
        return notes;
    };
    for (const IniLine& line : text.Outline()) {
        if (line.header || !line.firstBlock || line.key.empty() || Find(line.section, line.key) != nullptr) continue;
        SettingsEntry entry{std::string(line.section), std::string(line.key), line.number, std::string(line.value), {}, {}, SettingsEntry::State::Set, noted(line.number)};
        const auto known = std::find_if(known_.begin(), known_.end(), [&](const Known& k) { return Same(k.section, line.section) && Same(k.key, line.key); });
        if (known != known_.end()) entry.defaultValue = known->defaultValue;
        // The check knows what the readers never ask for (with the name meant, where it can tell).
        else if (!entry.notes.empty()) entry.state = SettingsEntry::State::NotRead;
        entries_.push_back(std::move(entry));
    }
    for (const Known& k : known_) {
        if (Find(k.section, k.key) != nullptr || (!setupsIni_ && EndsNumberedFamily(k.key))) continue;
        SettingsEntry entry{k.section, k.key, 0, {}, {}, k.defaultValue, SettingsEntry::State::Default, {}};
        // Beside the other keys of its section, else at the end.
        const auto last = std::find_if(entries_.rbegin(), entries_.rend(), [&](const SettingsEntry& e) { return Same(e.section, k.section); });
        entries_.insert(last.base(), std::move(entry));
    }
}

void clsSettingsView::ReadValues() {
    clsIniFile ini;
    ini.SetFullPath(path_);
    for (auto& entry : entries_) {
        ini.SetSectionName(entry.section);
        const auto known = std::find_if(known_.begin(), known_.end(), [&](const Known& k) { return Same(k.section, entry.section) && Same(k.key, entry.key); });
        const ValueKind kind = known != known_.end() ? known->kind : ValueKind::Text;
        const std::string fallback = entry.defaultValue.value_or("");
        if (kind == ValueKind::Boolean) entry.value = ini.GetTF(entry.key, clsIniFile::ParseBoolean(fallback).value_or(false)) ? "True" : "False";
        else if (kind == ValueKind::Number) entry.value = std::to_string(ini.GetInt(entry.key, clsIniText::ProfileInt(fallback)));
        else entry.value = ini.GetString(entry.key, fallback);
        if (setupsIni_ && Same(entry.section, kJapaneseSection) && entry.line != 0) entry.written = entry.value = ShiftJisValue(bytes_, entry.line);
        if (entry.state == SettingsEntry::State::Set && entry.defaultValue && entry.value == *entry.defaultValue) {
            entry.state = SettingsEntry::State::SameAsDefault;
        }
    }
}

const SettingsEntry* clsSettingsView::Find(std::string_view section, std::string_view key) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const SettingsEntry& e) { return Same(e.section, section) && Same(e.key, key); });
    return found == entries_.end() ? nullptr : &*found;
}

bool clsSettingsView::Write(size_t index, const std::string& value, std::string& error) {
    error.clear();
    if (index >= entries_.size()) return false;
    const SettingsEntry entry = entries_[index];
    if (entry.line != 0 && (value == entry.written || value == entry.value)) return true;
    if (setupsIni_ && Same(entry.section, kJapaneseSection)) {
        // Written through the ANSI reader, Shift-JIS bytes would not survive.
        error = "the [JAPANESE] texts are Shift-JIS: edit them with an editor that keeps the file's bytes";
        return false;
    }
    error = clsIniText::WriteRefusal(entry.section, entry.key, value);
    if (!error.empty()) return false;
    clsIniFile ini;
    ini.SetFullPath(path_);
    ini.SetSectionName(entry.section);
    ini.PutString(entry.key, value);
    Build();
    const SettingsEntry* now = Find(entry.section, entry.key);
    if (now != nullptr && now->line != 0 && clsIniText::Trim(now->written) == clsIniText::Trim(value)) return true;
    error = "the file did not take the value (is it read-only?); see the log";
    return false;
}

bool clsSettingsView::UseDefault(size_t index, std::string& error) {
    error.clear();
    if (index >= entries_.size()) return false;
    const SettingsEntry entry = entries_[index];
    if (entry.line == 0) return true;
    clsIniFile ini;
    ini.SetFullPath(path_);
    ini.SetSectionName(entry.section);
    ini.DeleteKey(entry.key);
    Build();
    const SettingsEntry* now = Find(entry.section, entry.key);
    if (now == nullptr || now->line == 0) return true;
    error = "the key could not be removed (is the file read-only?); see the log";
    return false;
}

std::string clsSettingsView::LineText(const SettingsEntry& entry) {
    std::string text = "[" + entry.section + "] " + entry.key + " = " + entry.value + "  (" + StateText(entry) + ")";
    for (const auto& note : entry.notes) text += "  ! " + note;
    return text;
}

} // namespace tovel
