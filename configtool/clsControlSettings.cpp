#include "configtool/clsControlSettings.h"

#include <algorithm>

#include "catalogue/clsSSFSearch.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

std::vector<std::string> clsControlSettings::Files(const std::string& root) {
    std::vector<std::string> files{root + "Setups.ini"};
    bool stopped = false;
    for (auto& file : clsSSFSearch::FindSSFFiles(clsSSFSearch::ProductFolder(), {}, stopped)) files.push_back(std::move(file));
    return files;
}

void clsControlSettings::OnLoad() {
    files_ = Files(root_);
    std::vector<std::string> names;
    for (const auto& file : files_) {
        const bool below = file.size() > root_.size() && clsWindowsPath::EqualNoCase(file.substr(0, root_.size()), root_);
        names.push_back(below ? file.substr(root_.size()) : file);
    }
    const auto first = std::find_if(files_.begin(), files_.end(), [this](const std::string& f) { return clsWindowsPath::EqualNoCase(f, firstFile_); });
    const int file = first == files_.end() ? 0 : static_cast<int>(first - files_.begin());
    SetLines("FileList", std::move(names), file);
    OpenFile(file);
    if (first == files_.end() || firstLine_ == 0) return;
    const auto& entries = view_->Entries();
    const auto at = std::find_if(entries.begin(), entries.end(), [this](const SettingsEntry& e) { return e.line == firstLine_; });
    if (at != entries.end()) ShowKeys(static_cast<int>(at - entries.begin()));
}

void clsControlSettings::OnClick(const std::string& control, int) {
    if (control == "FileList") OpenFile(ChosenLine("FileList"));
    else if (control == "KeyList") ShowKey();
    else if (control == "WriteBtn") Write(false);
    else if (control == "DefaultBtn") Write(true);
}

void clsControlSettings::OpenFile(int file) {
    if (file < 0) return;
    const std::string& path = files_[static_cast<size_t>(file)];
    view_ = file == 0 ? clsSettingsView::SetupsIni(root_) : clsSettingsView::Description(path, root_);
    SetText("StatusLabel", "");
    ShowKeys(-1);
}

void clsControlSettings::ShowKeys(int chosen) {
    std::vector<std::string> lines;
    for (const auto& entry : view_->Entries()) lines.push_back(clsSettingsView::LineText(entry));
    SetLines("KeyList", std::move(lines), chosen);
    ShowKey();
}

void clsControlSettings::ShowKey() {
    const int chosen = ChosenLine("KeyList");
    if (chosen < 0) {
        SetText("KeyLabel", "Choose a key to change it.");
        SetText("ValueText", "");
        return;
    }
    const SettingsEntry& entry = view_->Entries()[static_cast<size_t>(chosen)];
    SetText("KeyLabel", "[" + entry.section + "] " + entry.key +
                            (entry.line != 0 ? ", line " + std::to_string(entry.line) + ": " + entry.written : ": not in the file"));
    SetText("ValueText", entry.line != 0 ? entry.written : entry.value);
}

void clsControlSettings::Write(bool useDefault) {
    const int chosen = ChosenLine("KeyList");
    if (chosen < 0) {
        SetText("StatusLabel", "Choose a key first.");
        return;
    }
    const SettingsEntry entry = view_->Entries()[static_cast<size_t>(chosen)];
    std::string error;
    const bool done = useDefault ? view_->UseDefault(static_cast<size_t>(chosen), error)
                                 : view_->Write(static_cast<size_t>(chosen), Text("ValueText"), error);
    // The key keeps its line in the list, wherever the file now puts it.
    const auto& entries = view_->Entries();
    const auto now = std::find_if(entries.begin(), entries.end(), [&](const SettingsEntry& e) { return e.section == entry.section && e.key == entry.key; });
    ShowKeys(now == entries.end() ? -1 : static_cast<int>(now - entries.begin()));
    SetText("StatusLabel", done ? (useDefault ? entry.key + ": the setup's default counts." : entry.key + " written.") : "Not written: " + error);
}

} // namespace tovel
