#pragma once
// The installation as data: for each product to install, in installation order, what the run
// will do and why. Made from the records, their selection and their version actions; the
// timer-driven run carries the steps out one by one, and `tovelsetup --plan` prints them.
#include <string>
#include <vector>

#include "catalogue/clsSIFApplication.h"
#include "install/clsInstallContext.h"

namespace tovel {

/// One key of SETUPREQUESTS in the option file.
struct OptionRequest {
    std::string key;
    std::string value;
    bool operator==(const OptionRequest&) const = default;
};

/// The removal of an installed version before the product's setup.
struct RemovalStep {
    bool wanted = false;              ///< AutoDeinstall is "1" and a DeinstallKey is given
    std::string deinstallKey;         ///< trimmed
    std::string uninstallKeyPath;     ///< "HKEY_LOCAL_MACHINE\SOFTWARE\...\Uninstall\<key>"
    bool commandKnown = false;        ///< the UninstallString was read when planning
    std::string command;              ///< with "-a -y " before " -f"; "" when none or unknown
};

struct InstallStep {
    int position = 0;                 ///< 1-based in the list of products to install
    int catalogueIndex = 0;           ///< 1-based in the catalogue; 0 when it has no such product
    std::string productCode;
    std::string caption;              ///< the description shown in the product's status line
    bool skip = false;
    std::string skipReason;           ///< why, in words; "" when installed
    std::vector<std::string> actions; ///< the version actions in force (first-install ones when none installed)

    RemovalStep removal;

    std::string setupFile;            ///< as the record gives it
    bool msi = false;                 ///< the setup is msiexec.exe: never looked for on the disc
    std::string program;              ///< the program started: the setup file or the system's msiexec.exe
    std::string parameters;           ///< expanded, with the option-file path rewritten when needed
    std::string commandLine;          ///< program, a blank, parameters
    std::string startFolder;          ///< the program's folder, made current before the start

    std::string sifFileName;
    std::string description;          ///< the product's description for the option file
    std::string optionFilePath;       ///< where OPFILE.TXT is written and read
    bool optionPathRewritten = false; ///< the parameters named an unusable drive
    std::vector<OptionRequest> requests;     ///< SETUPREQUESTS in the order of the file
    std::vector<OptionRequest> extraEntries; ///< OPFILEENTRIES_BEGIN, written after them

    bool critical = false;            ///< a failure stops the run
    bool registerInRunOnce = true;    ///< a restart for this product registers the resume
    bool deinstallListEntry = false;  ///< AutoDeinstall "2": recorded in the disc's uninstall list

    /// The step in a few lines, for the plan and the log.
    [[nodiscard]] std::string Text() const;
};

class clsInstallPlan {
public:
    /// The steps for the products named (in that order); a code the catalogue lacks gives a
    /// skipped step.
    [[nodiscard]] static std::vector<InstallStep> Make(const clsSIFApplication& applications,
                                                       const std::vector<std::string>& productCodes,
                                                       const InstallContext& context);
    /// The step of one record at a position of the list.
    [[nodiscard]] static InstallStep Step(const clsSIFApplicationItem& item, int catalogueIndex, int position,
                                          const InstallContext& context);
    /// The product codes of the catalogue in its order.
    [[nodiscard]] static std::vector<std::string> CatalogueOrder(const clsSIFApplication& applications);
    /// The steps as text, headed "Installation steps".
    [[nodiscard]] static std::string Text(const std::vector<InstallStep>& steps);
    /// This run's context for a plan printed right after the search: the entries of
    /// OPFILEENTRIES_BEGIN are the ones the records were read with, so no file is read again.
    /// The records must outlive the context.
    [[nodiscard]] static InstallContext PlanContext(const clsSIFApplication& applications);
    /// The plan of the whole catalogue in its order with PlanContext, as text.
    [[nodiscard]] static std::string Text(const clsSIFApplication& applications);
};

} // namespace tovel
