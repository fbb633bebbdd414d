#include "install/clsOptionFile.h"

namespace tovel {

OptionFilePlace clsOptionFile::Place(const std::string& parameters, const std::string& workFolder,
                                     const std::function<bool(const std::string&)>&) {
    return {workFolder + "OPFILE.TXT", parameters, false};
}

std::vector<OptionRequest> clsOptionFile::Requests(const clsSIFApplicationItem&, const InstallContext&) { return {}; }

std::vector<IniEntry> clsOptionFile::ExtraEntries(const std::string&) { return {}; }

std::vector<OptionRequest> clsOptionFile::Merged(const std::vector<OptionRequest>& requests, const std::vector<OptionRequest>&) { return requests; }

bool clsOptionFile::CreateOptionFile(const InstallStep&) { return false; }

void clsOptionFile::ReadOptionFileResults(const std::string&) { results_ = {}; }

std::string clsOptionFile::StartOnEndProgram(int) const { return {}; }

std::string clsOptionFile::StartOnEndParameter(int) const { return {}; }

} // namespace tovel
