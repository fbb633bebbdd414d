#pragma once
// The check of a whole disc, for disc authors: every mistake the setup would otherwise find
// only while it runs (and tell only in its log), as findings with file, line, severity and
// what to do. It reads the disc with the setup's own readers on the machine installed, and
// changes nothing: no registry is read for conditions, no log is written.
//
// The disc's own files: Setups.ini (clsSetupsIniCheck), the language text files
// (clsLanguageFilesCheck), each description file (clsDescriptionCheck); then what only the
// files together show: product and packet codes given twice, dependencies on codes that are
// on no file, circles of dependencies, packets and bus entries naming products that are not
// there.
#include <string>
#include <vector>

#include "catalogue/DiscFinding.h"
#include "catalogue/clsDescriptionCheck.h"

namespace tovel {

class clsDiscCheck {
public:
    /// Checks the disc whose Setups.ini lies in root (a Windows path; the program's folder).
    [[nodiscard]] static std::vector<DiscFinding> Run(const std::string& root);
    /// The findings that concern the files together.
    [[nodiscard]] static std::vector<DiscFinding> CheckAcross(const std::vector<DescribedFile>& files);
    /// 0 without findings, 1 with warnings only, 2 with an error.
    [[nodiscard]] static int ExitStatus(const std::vector<DiscFinding>& findings);
};

} // namespace tovel
