#pragma once
// The destination page: the folder the products go to (DestPathText, BrowseBtn), its drive
// (DestDriveList), the drive for project data (DataDriveList, only with AskForDataDrive),
// and the space the selected products need against what the drive has free.
//
// Decided here:
// - Drives offered: fixed drives only with OnlyFixedDrivesAllowed; otherwise also removable,
//   network and RAM drives. Never a CD-ROM, which cannot be written.
// - The path preset: what an earlier visit stored, else the first selected product's
//   DefaultPath, else %ProgramPath%Tovel, else "Program Files\Tovel" on the Windows drive. A
//   preset on a drive not offered moves to the Windows drive (or the first offered).
// - The destination drive is the path's drive: choosing a drive in the list moves the path
//   there, and typing a path chooses its drive in the list.
// - Without AskForDataDrive the data drive is the destination drive.
// - A drive whose free space the machine cannot tell is not refused (the log says so).
// Continue writes DestDrive ("E:"), DestPath and DataDrive into every application record.
#include <string>
#include <vector>

#include "common/clsFileDisk.h"
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlDestination : public clsControlPage {
public:
    clsControlDestination() : clsControlPage("frmDestination") {}

    /// The drives the page offers for the settings of this disc.
    [[nodiscard]] static std::vector<DriveInfo> OfferedDrives(bool onlyFixed);
    /// Megabytes the selected products need on the destination drive.
    [[nodiscard]] static int64_t RequiredMegabytes();

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;
    void OnChange(const std::string& control, int index) override;
    bool OnContinue() override;

private:
    [[nodiscard]] std::string PresetPath() const;
    /// The list line of a drive letter; -1 when it is not offered.
    [[nodiscard]] int LineOf(char letter) const;
    void ShowFreeSpace();
    void Browse();

    std::vector<DriveInfo> drives_;
    int64_t required_ = 0;
    std::string requiredCaption_;
    std::string availableCaption_;
};

} // namespace tovel
