#pragma once
// The disc check's form (frmDiscCheck): every finding of clsDiscCheck as one line, "file:line:
// severity: what is wrong and what to do", the file named below the disc's folder; a summary
// above. Open in settings shows the chosen finding's file in the settings view, at its line.
#include <string>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "configtool/clsToolForm.h"

namespace tovel {

class clsControlDiscCheck : public clsToolForm {
public:
    /// root: the disc's folder, a Windows path with a trailing "\".
    explicit clsControlDiscCheck(std::string root) : clsToolForm("frmDiscCheck"), root_(std::move(root)) {}

    /// A finding as its line shows it.
    [[nodiscard]] static std::string FindingLine(const DiscFinding& finding, const std::string& root);
    /// "2 errors, 1 warning" and the exit status's meaning; a disc without findings says so.
    [[nodiscard]] static std::string Summary(const std::vector<DiscFinding>& findings);

protected:
    void OnLoad() override { Check(); }
    void OnClick(const std::string& control, int index) override;

private:
    void Check();
    void OpenInSettings();

    std::string root_;
    std::vector<DiscFinding> findings_;
};

} // namespace tovel
