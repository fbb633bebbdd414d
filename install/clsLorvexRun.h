#pragma once
// The runs of the version-display tool during the installation: after each product when the
// disc asks for it, once more at the end, and after a restart when one is pending. Each run
// copies the tool from the disc into the shared common folder, starts it there and waits for
// it, letting the user interface run. Each run writes its own result file, named so that the
// runs of one installation sort together.
#include <string>
#include <string_view>

#include "install/clsInstallView.h"

namespace tovel {

class clsLorvexRun {
public:
    /// The result files' counters of the final run and of the run after a restart.
    static constexpr int kFinalCounter = 98;
    static constexpr int kRestartCounter = 99;
    /// At most this many characters of a result file's name before ".csv".
    static constexpr size_t kNameLength = 48;

    /// A result file's name: the log's base name, the pack version, the tag, "_", the counter
    /// in two digits and the suffix, cut to kNameLength, then ".csv".
    [[nodiscard]] static std::string ResultFileName(std::string_view logBase, std::string_view packVersion,
                                                    std::string_view tag, int counter, std::string_view suffix);
    /// The tool is on (the start-up decided so) and the disc's Setups.ini asks for a run after
    /// each product (SETTINGS, LorvexAfterEachProduct).
    [[nodiscard]] static bool AfterEachProduct();

    /// Reads the pack version for the result files' names.
    clsLorvexRun();
    /// The run after a product; the product's status line shows it. Nothing when the disc
    /// does not ask for it.
    void RunAfterProduct(clsInstallView& view, int line);
    /// The last run, after every product, shown on the last product's line (0: none);
    /// nothing when the tool is off.
    void RunFinal(clsInstallView& view, int line);
    /// When the tool is on, its run at the next start of Windows ("ZZ_Lorvex" in RunOnce).
    static void RegisterAfterRestart();

private:
    /// The pack version: the registry value "Packversion" under the disc's PackversionKey,
    /// else Setups.ini's own.
    [[nodiscard]] static std::string ReadPackVersion();
    /// The shared common folder (with a backslash), created when missing.
    [[nodiscard]] static std::string CommonFolder();
    /// Copies the tool there; its path there, or "" when it is not there afterwards.
    [[nodiscard]] static std::string PlaceTool();
    /// The tool's command line for a result file.
    [[nodiscard]] static std::string Command(const std::string& exePath, const std::string& resultName);
    /// Runs the tool and waits for it; false when it could not be started.
    static bool RunAndWait(const std::string& resultName);
    [[nodiscard]] static std::string LogBaseName();

    std::string packVersion_;
    int counter_ = 0;
};

} // namespace tovel
