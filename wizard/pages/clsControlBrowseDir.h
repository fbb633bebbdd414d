#pragma once
// The folder dialog of the destination page: the path (PathText, which the user may type),
// the folders of the folder shown (FolderList, ".." first below a drive's root) and the
// drives offered (DriveList). Choosing a folder goes into it; OK gives back the path, Cancel
// and the close box give back nothing. It is not a page of the wizard: its Cancel never asks
// to cancel the setup.
#include <string>
#include <vector>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlBrowseDir : public clsControlPage {
public:
    /// start: the path shown first (it need not exist yet); drives: the letters offered.
    clsControlBrowseDir(std::string start, std::vector<char> drives)
        : clsControlPage("frmBrowseDir"), start_(std::move(start)), drives_(std::move(drives)) {}

    /// The path chosen with OK, without a trailing backslash (a drive's root keeps it); ""
    /// when the dialog was left otherwise.
    [[nodiscard]] const std::string& Chosen() const { return chosen_; }

    /// A path as the pages keep it: trimmed, without a trailing backslash, except that a
    /// drive's root keeps its own ("C:\" stays as it is).
    [[nodiscard]] static std::string NormalisePath(const std::string& path);

    void Click(const std::string& control, int index) override;
    void FormQueryUnload() override { FormQueryUnload2(); }

protected:
    void OnLoad() override;

private:
    /// Lists the folders of a folder and makes it the path shown.
    void ShowFolder(const std::string& folder, bool setPath);

    std::string start_;
    std::vector<char> drives_;
    std::string folder_;                 ///< the folder listed, with a trailing backslash
    std::vector<std::string> lines_;     ///< FolderList's lines: ".." or a folder name
    std::string chosen_;
};

} // namespace tovel
