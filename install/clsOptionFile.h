#pragma once
// OPFILE.TXT, the contract with a product's setup: the run writes the wizard's answers into
// it before the setup starts and reads the setup's results back after it has ended.
// docs/INSTALL.md describes the file for the writers of product setups.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "install/clsInstallPlan.h"

namespace tovel {

class clsIniFile;

/// What a product's setup wrote into RESULTS, as read.
struct OptionFileResults {
    std::string SetupSucceeded;         ///< "" when not written
    int32_t RebootRequested = 0;        ///< as read; 0 when not written
    std::string ParamAfterReboot;
    std::vector<std::string> startOnEndPrograms;    ///< lower case
    std::vector<std::string> startOnEndParameters;  ///< lower case, one per program
};

/// Where the option file lies for one setup.
struct OptionFilePlace {
    std::string path;                   ///< the file written and read
    std::string parameters;             ///< the setup's parameters, rewritten to path when needed
    bool rewritten = false;
};

class clsOptionFile {
public:
    /// The place of the file: workFolder + "OPFILE.TXT" unless the expanded parameters name
    /// one after "OF:" or "OPFILE=" (any case) up to and including the next "OPFILE.TXT"; a
    /// named file on a drive that cannot be used is replaced in the parameters by the default.
    [[nodiscard]] static OptionFilePlace Place(const std::string& parameters, const std::string& workFolder,
                                               const std::function<bool(const std::string& root)>& driveUsable);
    /// SETUPREQUESTS for a product, standard keys in the order of the file.
    [[nodiscard]] static std::vector<OptionRequest> Requests(const clsSIFApplicationItem& item,
                                                             const InstallContext& context);
    /// The keys of OPFILEENTRIES_BEGIN in a description file with a value; none when it has none.
    [[nodiscard]] static std::vector<IniEntry> ExtraEntries(const std::string& sifPath);
    /// The requests with the extra entries applied: a key already there takes the new value
    /// in its place, any other is added at the end.
    [[nodiscard]] static std::vector<OptionRequest> Merged(const std::vector<OptionRequest>& requests,
                                                           const std::vector<OptionRequest>& extraEntries);

    /// Writes the file for a step (the old one deleted first), logging every request. False
    /// (and "OPFile can not be created.") when it cannot be written.
    bool CreateOptionFile(const InstallStep& step);
    /// Reads RESULTS of the file at path into this object, logging what was read. A missing
    /// file or section reads as empty values.
    void ReadOptionFileResults(const std::string& path);

    [[nodiscard]] const OptionFileResults& Results() const { return results_; }
    [[nodiscard]] const std::string& SetupSucceeded() const { return results_.SetupSucceeded; }
    [[nodiscard]] int32_t RebootRequested() const { return results_.RebootRequested; }
    [[nodiscard]] const std::string& ParamAfterReboot() const { return results_.ParamAfterReboot; }
    [[nodiscard]] int StartOnEndProgramCount() const { return static_cast<int>(results_.startOnEndPrograms.size()); }
    /// The n-th start-at-end program, from 1; "" outside.
    [[nodiscard]] std::string StartOnEndProgram(int n) const;
    /// Its parameters; "" outside.
    [[nodiscard]] std::string StartOnEndParameter(int n) const;

private:
    static void WriteDescription(clsIniFile& ini, const InstallStep& step);
    /// The standard requests, then the extra entries with their two log lines.
    static void WriteRequests(clsIniFile& ini, const InstallStep& step);

    OptionFileResults results_;
};

} // namespace tovel
