#include "wizard/pages/clsControlDestination.h"

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsWindowsPath.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/pages/clsControlBrowseDir.h"

namespace tovel {

namespace {

constexpr const char* kPath = "DestPathText";
constexpr const char* kDestList = "DestDriveList";
constexpr const char* kDataList = "DataDriveList";

bool IsFullPath(const std::string& path) {
    return clsWindowsPath::DriveLetter(path) != 0 && path.size() >= 3 && path[2] == '\\';
}

std::string DriveOf(char letter) { return std::string(1, letter) + ":"; }

// A drive's line in the lists: its letter and, unless it is removable (an empty floppy drive
// must not be touched), the megabytes free on it.
std::string LineText(const DriveInfo& drive) {
    std::string line = DriveOf(drive.letter);
    if (drive.type == DriveType::Removable) return line;
    if (const auto free = clsFileDisk::FreeMegabytes(drive.Root())) line += "  " + std::to_string(*free) + " MB";
    return line;
}

void Tell(int textNumber, const std::vector<std::string>& values) {
    const std::string text = gLanguage ? gLanguage->LoadResString(textNumber, values) : std::string();
    (void)MsgBox(text, mb::kOk | mb::kIconWarning, ApplicationTitle);
}

} // namespace

std::vector<DriveInfo> clsControlDestination::OfferedDrives(bool onlyFixed) {
    std::vector<DriveInfo> offered;
    for (const DriveInfo& drive : clsFileDisk::Drives()) {
        const bool writable = drive.type == DriveType::Fixed || drive.type == DriveType::Removable ||
                              drive.type == DriveType::Remote || drive.type == DriveType::RamDisk;
        if (onlyFixed ? drive.type == DriveType::Fixed : writable) offered.push_back(drive);
    }
    return offered;
}

int64_t clsControlDestination::RequiredMegabytes() {
    int64_t required = 0;
    for (const auto& item : gApplications.Items()) {
        if (item.Selected && item.DiskSpaceDestDrv > 0) required += item.DiskSpaceDestDrv;
    }
    return required;
}

int clsControlDestination::LineOf(char letter) const {
    for (size_t i = 0; i < drives_.size(); ++i) {
        if (drives_[i].letter == letter) return static_cast<int>(i);
    }
    return -1;
}

std::string clsControlDestination::PresetPath() const {
    std::string path;
    const auto& items = gApplications.Items();
    if (!items.empty()) path = items.front().DestPath;   // stored by an earlier visit
    for (const auto& item : items) {
        if (!path.empty()) break;
        if (item.Selected) path = item.DefaultPath;
    }
    if (!IsFullPath(path) && gPlaceholder) path = gPlaceholder->CheckForPlaceholder("%ProgramPath%Tovel");
    if (!IsFullPath(path)) {
        const std::string root = gFileDisk.WindowsDriveRoot();
        path = (root.empty() ? std::string("C:\\") : root) + "Program Files\\Tovel";
    }
    path = clsControlBrowseDir::NormalisePath(path);
    if (LineOf(clsWindowsPath::DriveLetter(path)) >= 0 || drives_.empty()) return path;
    const char windows = clsWindowsPath::DriveLetter(gFileDisk.WindowsDriveRoot());
    path[0] = LineOf(windows) >= 0 ? windows : drives_.front().letter;
    return path;
}

void clsControlDestination::OnLoad() {
    drives_ = OfferedDrives(gSetupsIni->OnlyFixedDrivesAllowed());
    required_ = RequiredMegabytes();
    requiredCaption_ = Text("SpaceRequiredLabel");
    availableCaption_ = Text("SpaceAvailableLabel");
    std::vector<std::string> lines;
    std::string offered;
    for (const DriveInfo& drive : drives_) {
        lines.push_back(LineText(drive));
        offered += " " + DriveOf(drive.letter);
    }
    LogIfEnabled("Destination drives offered:" + (offered.empty() ? std::string(" none") : offered));
    for (const char* list : {kDestList, kDataList}) {
        if (clsFormControl* c = Form().Control(list)) c->items = lines;
    }
    const bool askData = gSetupsIni->AskForDataDrive();
    SetVisible("DataDriveLabel", askData);
    SetVisible(kDataList, askData);

    const std::string path = PresetPath();
    SetText(kPath, path);
    const int line = LineOf(clsWindowsPath::DriveLetter(path));
    if (clsFormControl* c = Form().Control(kDestList)) c->value = line;
    if (clsFormControl* c = Form().Control(kDataList)) {
        const auto& items = gApplications.Items();
        const int stored = items.empty() ? -1 : LineOf(clsWindowsPath::DriveLetter(items.front().DataDrive));
        c->value = stored >= 0 ? stored : line;
    }
    SetText("SpaceRequiredLabel", requiredCaption_ + " " + std::to_string(required_) + " MB");
    ShowFreeSpace();
}

void clsControlDestination::ShowFreeSpace() {
    const char letter = clsWindowsPath::DriveLetter(Text(kPath));
    const auto free = letter != 0 ? clsFileDisk::FreeMegabytes(DriveOf(letter) + "\\") : std::nullopt;
    SetText("SpaceAvailableLabel", free ? availableCaption_ + " " + std::to_string(*free) + " MB" : availableCaption_);
}

void clsControlDestination::OnClick(const std::string& control, int) {
    if (control == "BrowseBtn") return Browse();
    if (control != kDestList) return;
    const clsFormControl* list = Form().Control(kDestList);
    if (list == nullptr || list->value < 0 || static_cast<size_t>(list->value) >= drives_.size()) return;
    const char letter = drives_[static_cast<size_t>(list->value)].letter;
    std::string path = clsControlBrowseDir::NormalisePath(Text(kPath));
    if (IsFullPath(path)) {
        path[0] = letter;
    } else {
        path = DriveOf(letter) + "\\";
    }
    SetText(kPath, path);
    ShowFreeSpace();
}

void clsControlDestination::OnChange(const std::string& control, int) {
    if (control != kPath) return;
    if (clsFormControl* list = Form().Control(kDestList)) list->value = LineOf(clsWindowsPath::DriveLetter(Text(kPath)));
    ShowFreeSpace();
}

void clsControlDestination::Browse() {
    std::vector<char> letters;
    for (const DriveInfo& drive : drives_) letters.push_back(drive.letter);
    clsControlBrowseDir dialog(Text(kPath), letters);
    dialog.Initialize();
    if (dialog.Chosen().empty()) return;
    SetText(kPath, dialog.Chosen());
    OnChange(kPath, -1);
}

bool clsControlDestination::OnContinue() {
    const std::string path = clsControlBrowseDir::NormalisePath(Text(kPath));
    if (!IsFullPath(path)) {
        LogIfEnabled("The destination \"" + path + "\" is no full path: the page stays.");
        Tell(TextNo::kInvalidPath, {path});
        return false;
    }
    const char letter = clsWindowsPath::DriveLetter(path);
    const std::string drive = DriveOf(letter);
    if (LineOf(letter) < 0) {
        LogIfEnabled("Drive " + drive + " is not offered as a destination: the page stays.");
        Tell(TextNo::kDriveNotAllowed, {drive});
        return false;
    }
    const auto free = clsFileDisk::FreeMegabytes(drive + "\\");
    if (!free) {
        LogIfEnabled("The free space of drive " + drive + " is unknown; it is taken as it is.");
    } else if (*free < static_cast<uint64_t>(required_)) {
        LogIfEnabled("Not enough free space on drive " + drive + " (required " + std::to_string(required_) +
                     " MB, available " + std::to_string(*free) + " MB): the page stays.");
        Tell(TextNo::kNotEnoughSpace, {drive, std::to_string(required_), std::to_string(*free)});
        return false;
    }
    std::string dataDrive = drive;
    const clsFormControl* data = Form().Control(kDataList);
    if (gSetupsIni->AskForDataDrive() && data != nullptr && data->value >= 0 &&
        static_cast<size_t>(data->value) < drives_.size()) {
        dataDrive = DriveOf(drives_[static_cast<size_t>(data->value)].letter);
    }
    for (auto& item : gApplications.Items()) {
        item.DestDrive = drive;
        item.DestPath = path;
        item.DataDrive = dataDrive;
    }
    LogIfEnabled("Destination: " + path + ", data drive " + dataDrive);
    return true;
}

} // namespace tovel
