#include "settings/clsIniFile.h"

#include <chrono>
#include <exception>
#include <utility>

#include "common/mdlMessage.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

clsIniFile::Reporter& TheReporter() {
    static clsIniFile::Reporter reporter;
    return reporter;
}

// Seconds since 1970 (UTC), the scale of FileEntry::modified on both platforms.
int64_t NowSeconds() {
    return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// A file whose time of change is this many seconds past cannot change again without its
// time telling (FAT keeps times in steps of two seconds).
constexpr int64_t kSettleSeconds = 2;

std::string TrimSpaces(std::string_view text) {
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return {};
    return std::string(text.substr(begin, text.find_last_not_of(' ') - begin + 1));
}

bool IsBareFileName(const std::string& path) { return !path.empty() && path.find_first_of("\\/:") == std::string::npos; }

} // namespace

void clsIniFile::SetReporter(Reporter reporter) { TheReporter() = std::move(reporter); }

void clsIniFile::Report(const std::string& message) {
    try {
        if (TheReporter()) TheReporter()(message);
    } catch (...) {
        // A reporter that fails cannot be told about it; the operation goes on.
    }
}

std::string clsIniFile::FullPath() const {
    if (useWinIni_) return clsWindowsPath::AddBackslash(Platform().System().WindowsFolder()) + "WIN.INI";
    if (IsBareFileName(path_)) return clsWindowsPath::AddBackslash(Platform().System().WindowsFolder()) + path_;
    return path_;
}

void clsIniFile::SetFullPath(const std::string& path) {
    path_ = path;
    useWinIni_ = false;
    registered_ = true;
    heldOnce_ = false;
}

void clsIniFile::SetUseWinINI(bool use) {
    useWinIni_ = use;
    if (use) registered_ = true;
    heldOnce_ = false;
}

void clsIniFile::HoldOnce() {
    // A bare name or WIN.INI depends on the Windows folder, which is looked up at each read.
    heldOnce_ = readOnce_ && text_ && !useWinIni_ && !IsBareFileName(path_) && path_ == loadedPath_;
}

bool clsIniFile::CheckRegistered() const {
    if (registered_) return true;
    MsgBox("[Section] and FileName Not Registered!", mb::kIconInformation, "IniFile Logic Error");
    return false;
}

const clsIniText* clsIniFile::Load(const std::string& path) {
    loadedPath_ = path;
    text_.reset();
    heldOnce_ = false;
    bytes_.clear();
    settled_ = false;
    auto& files = Platform().Files();
    const uint32_t codePage = Platform().System().AnsiCodePage();
    // A file read once needs no stamp: it is never compared again.
    if (readOnce_) {
        if (auto bytes = files.ReadFile(path)) {
            (void)Parsed(path, *bytes, codePage);
            HoldOnce();
            return &*text_;
        }
    }
    const auto entry = files.Stat(path);
    if (!entry) {
        // No file reads as an empty one; its coming into being changes the stamp.
        text_.emplace(codePage);
        stamp_ = Stamp{};
        settled_ = true;
        reportedUnreadable_ = false;
        return &*text_;
    }
    auto bytes = entry->isFolder ? std::nullopt : files.ReadFile(path);
    if (!bytes) {
        // Nothing is kept, so the next operation tries again (the file may be locked a moment).
        if (!reportedUnreadable_) {
            Report(path + ": cannot be read" + (entry->isFolder ? " (it is a folder)" : "") +
                   "; its keys read as their defaults and nothing is written to it");
        }
        reportedUnreadable_ = true;
        return nullptr;
    }
    (void)Parsed(path, *bytes, codePage);
    stamp_ = Stamp{true, entry->size, entry->modified};
    // Bytes of another length than Stat gave mean the file changed meanwhile: the next
    // operation compares them again.
    settled_ = bytes->size() == entry->size && NowSeconds() >= entry->modified + kSettleSeconds;
    if (!settled_) bytes_ = std::move(*bytes);
    return &*text_;
}

const clsIniText* clsIniFile::Parsed(const std::string& path, std::string_view bytes, uint32_t codePage) {
    reportedUnreadable_ = false;
    std::vector<std::string> warnings;
    text_ = clsIniText::Parse(bytes, codePage, warnings);
    for (const auto& warning : warnings) Report(path + ": " + warning);
    stamp_ = Stamp{true, bytes.size(), 0};
    settled_ = true;
    return &*text_;
}

const clsIniText* clsIniFile::Current() {
    // A file read once answers from memory while the object stays bound to the same path.
    if (heldOnce_ && readOnce_) return &*text_;
    const std::string path = FullPath();
    if (!text_ || path != loadedPath_) return Load(path);
    if (readOnce_) return &*text_;
    auto& files = Platform().Files();
    const auto entry = files.Stat(path);
    const bool same = entry ? stamp_.exists && !entry->isFolder && entry->size == stamp_.size &&
                                  entry->modified == stamp_.modified
                            : !stamp_.exists;
    if (!same) return Load(path);
    if (settled_) return &*text_;
    const auto bytes = files.ReadFile(path);
    if (!bytes || *bytes != bytes_) return Load(path);
    if (NowSeconds() >= stamp_.modified + kSettleSeconds) {
        settled_ = true;
        std::string().swap(bytes_);
    }
    return &*text_;
}

template <typename Change>
void clsIniFile::Write(const std::string& action, Change change) {
    const std::string path = FullPath();
    const std::string cannot = path + ": cannot " + action + ": ";
    if (Current() == nullptr) {
        Report(cannot + "the file cannot be read");
        return;
    }
    std::string error;
    if (!change(*text_, error)) {
        if (!error.empty()) Report(cannot + error);
        return;
    }
    std::string bytes = text_->Bytes();
    auto& files = Platform().Files();
    if (!files.WriteFileAtomic(path, bytes)) {
        Report(cannot + "the file cannot be written");
        text_.reset();   // memory no longer matches the file
        heldOnce_ = false;
        return;
    }
    const auto entry = files.Stat(path);
    if (!entry) {
        text_.reset();
        heldOnce_ = false;
        return;
    }
    stamp_ = Stamp{true, entry->size, entry->modified};
    settled_ = false;
    bytes_ = std::move(bytes);
}

void clsIniFile::AdoptText(clsIniText text) {
    text_ = std::move(text);
    loadedPath_ = FullPath();
    readOnce_ = true;
    settled_ = true;
    HoldOnce();
}

std::optional<clsIniText::FoundValue> clsIniFile::Find(const std::string& section, const std::string& key) {
    const clsIniText* text = CheckRegistered() ? Current() : nullptr;
    return text != nullptr ? text->FindValue(section, key) : std::nullopt;
}

std::optional<std::string_view> clsIniFile::Lookup(const std::string& key) {
    const auto found = Find(section_, key);
    if (observer_) observer_(section_, key, found ? found->line : 0);
    return found ? std::optional<std::string_view>(found->value) : std::nullopt;
}

std::string clsIniFile::GetString(const std::string& key, const std::string& defaultValue) {
    try {
        const auto value = Lookup(key);
        return value ? TrimSpaces(*value) : defaultValue;
    } catch (const std::exception& e) {
        Report(path_ + ": reading " + key + ": " + e.what());
    } catch (...) {
        Report(path_ + ": reading " + key + " failed");
    }
    return defaultValue;
}

int32_t clsIniFile::GetInt(const std::string& key, int32_t defaultValue) {
    try {
        const auto value = Lookup(key);
        // An empty value counts as a missing one, as for GetPrivateProfileInt.
        return value && !value->empty() ? clsIniText::ProfileInt(*value) : defaultValue;
    } catch (const std::exception& e) {
        Report(path_ + ": reading " + key + ": " + e.what());
    } catch (...) {
        Report(path_ + ": reading " + key + " failed");
    }
    return defaultValue;
}

std::optional<bool> clsIniFile::ParseBoolean(std::string_view value) {
    const std::string text = clsIniText::FoldName(value);
    for (const char* yes : {"YES", "Y", "TRUE", "T", "ON", "1", "-1"}) {
        if (text == yes) return true;
    }
    for (const char* no : {"NO", "N", "FALSE", "F", "OFF", "0"}) {
        if (text == no) return false;
    }
    return std::nullopt;
}

bool clsIniFile::GetTF(const std::string& key, bool defaultValue) {
    try {
        return ParseBoolean(GetString(key, defaultValue ? "True" : "False")).value_or(defaultValue);
    } catch (...) {
        Report(path_ + ": reading " + key + " failed");
    }
    return defaultValue;
}

void clsIniFile::PutString(const std::string& key, const std::string& value) {
    try {
        if (!CheckRegistered()) return;
        Write("set [" + section_ + "] " + key, [&](clsIniText& text, std::string& error) { return text.SetValue(section_, key, value, error); });
    } catch (const std::exception& e) {
        Report(path_ + ": writing " + key + ": " + e.what());
    } catch (...) {
        Report(path_ + ": writing " + key + " failed");
    }
}

void clsIniFile::PutInt(const std::string& key, int32_t value) { PutString(key, std::to_string(value)); }

void clsIniFile::PutTF(const std::string& key, bool value) { PutString(key, value ? "True" : "False"); }

void clsIniFile::DeleteKey(const std::string& key) {
    try {
        if (!CheckRegistered()) return;
        Write("delete [" + section_ + "] " + key, [&](clsIniText& text, std::string&) { return text.RemoveKey(section_, key); });
    } catch (const std::exception& e) {
        Report(path_ + ": deleting " + key + ": " + e.what());
    } catch (...) {
        Report(path_ + ": deleting " + key + " failed");
    }
}

void clsIniFile::DeleteSection() {
    try {
        if (!CheckRegistered()) return;
        Write("delete [" + section_ + "]", [&](clsIniText& text, std::string&) { return text.RemoveSection(section_); });
    } catch (const std::exception& e) {
        Report(path_ + ": deleting [" + section_ + "]: " + e.what());
    } catch (...) {
        Report(path_ + ": deleting [" + section_ + "] failed");
    }
}

std::vector<std::string> clsIniFile::GetSectionsEx() {
    try {
        if (!CheckRegistered()) return {};
        const clsIniText* text = Current();
        if (text != nullptr) return text->SectionNames();
    } catch (...) {
        Report(path_ + ": listing the sections failed");
    }
    return {};
}

std::vector<IniEntry> clsIniFile::GetSectEntriesEx() {
    try {
        if (!CheckRegistered()) return {};
        const clsIniText* text = Current();
        if (text != nullptr) return text->Entries(section_);
    } catch (...) {
        Report(path_ + ": listing [" + section_ + "] failed");
    }
    return {};
}

size_t clsIniFile::KeyLine(const std::string& section, const std::string& key) {
    try {
        const auto found = Find(section, key);
        return found ? found->line : 0;
    } catch (...) {
        Report(path_ + ": looking for [" + section + "] " + key + " failed");
    }
    return 0;
}

bool clsIniFile::SectExist(const std::string& section) {
    try {
        if (observer_) observer_(section, "", 0);
        if (!CheckRegistered()) return false;
        const clsIniText* text = Current();
        return text != nullptr && text->HasSection(section);
    } catch (...) {
        Report(path_ + ": looking for [" + section + "] failed");
    }
    return false;
}

} // namespace tovel
