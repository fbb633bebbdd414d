// The Linux build: the setup on an emulated Windows machine.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "app/clsLinuxOptions.h"
#include "app/clsPlanDot.h"
#include "app/clsPlanJson.h"
#include "app/mdlSetupRun.h"
#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsCataloguePlan.h"
#include "catalogue/clsDiscCheck.h"
#include "catalogue/clsSSFSearch.h"
#include "common/mdlMessage.h"
#include "install/clsInstallPlan.h"
#include "platform/clsWindowsCommandLine.h"
#include "platform/clsWindowsPath.h"
#include "platform/posix/clsMachineBoot.h"
#include "platform/posix/clsMachinePlatform.h"
#include "platform/posix/clsMachineProfile.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "ui/console/clsConsoleRenderer.h"

using namespace tovel;

namespace {

constexpr int kUsageError = 2;

int Fail(const std::string& message) {
    std::cerr << "tovelsetup: " << message << '\n';
    return kUsageError;
}

std::string Env(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string HostExecutable(const char* argv0) {
    std::error_code ec;
    auto self = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::absolute(argv0).string() : self.string();
}

std::unique_ptr<clsMachine> OpenMachine(const LinuxOptions& o, std::string& error) {
    const std::string folder = o.machine.empty() ? clsLinuxOptions::DefaultMachineFolder() : o.machine;
    if (o.create.empty()) return clsMachine::Open(folder, error);
    if (std::filesystem::exists(folder + "/machine.ini")) {
        error = folder + " already holds a machine; remove it or choose another --machine";
        return nullptr;
    }
    const size_t comma = o.create.find(',');
    const auto config = clsMachineProfile::Make(o.create.substr(0, comma),
                                                comma == std::string::npos ? "en" : o.create.substr(comma + 1));
    if (!config) {
        error = "unknown profile \"" + o.create + "\" (see --profiles)";
        return nullptr;
    }
    return clsMachine::Create(folder, *config, error);
}

// The Windows root the disc is offered under: its drive ("D:\") or its share.
std::string DiscRoot(const LinuxOptions& o) {
    return o.discShare.empty() ? std::string(1, o.discDrive) + ":\\" : o.discShare + "\\";
}

// Puts the disc into its drive (or offers it as a share) and keeps it there, as a real disc
// stays in its drive across a restart.
bool InsertDisc(clsMachine& machine, const LinuxOptions& o, std::string& error) {
    if (o.disc.empty()) return true;
    if (!std::filesystem::is_directory(o.disc)) {
        error = "the disc folder " + o.disc + " does not exist";
        return false;
    }
    const std::string host = std::filesystem::absolute(o.disc).lexically_normal().string();
    auto& config = machine.Config();
    if (o.discShare.empty()) {
        std::erase_if(config.drives, [&](const DriveMapping& d) { return d.letter == o.discDrive; });
        config.drives.push_back({o.discDrive, DriveType::CdRom, host, std::nullopt});
    } else {
        std::erase_if(config.shares, [&](const ShareMapping& s) { return clsWindowsPath::EqualNoCase(s.unc, o.discShare); });
        config.shares.push_back({o.discShare, host});
    }
    return machine.Save(error);
}

void PrintProfiles() {
    std::cout << "Systems:";
    for (const auto& s : clsMachineProfile::SystemNames()) std::cout << ' ' << s;
    std::cout << "\nLanguages:";
    for (const auto& l : clsMachineProfile::LanguageNames()) std::cout << ' ' << l;
    std::cout << "\nExample: tovelsetup --machine=/tmp/m98 --create=win98,de --disc=examples/disc\n";
}

// Without a wizard a message is answered with its default button.
int AnswerWithDefault(const std::string&, int style, const std::string&) { return DefaultButtonResult(style); }

// The plan runs no wizard: a message is printed and answered with its default button.
int PrintMessage(const std::string& text, int style, const std::string& caption) {
    const int answer = DefaultButtonResult(style);
    std::cout << "[" << caption << "] " << text << '\n';
    return answer;
}

void PrintMachine(clsMachine& machine) {
    const auto& c = machine.Config();
    std::cout << "Machine: " << machine.Folder() << '\n'
              << "         " << c.version.productName << (c.version.csdVersion.empty() ? "" : " ")
              << c.version.csdVersion << ", language " << c.userLanguage << ", code page " << c.ansiCodePage
              << (c.administrator ? ", administrator" : ", standard user") << '\n';
}

// What the search page would find, read and order on this machine: as text for disc authors,
// as JSON or a graph for tools.
int PrintPlan(const std::string& format) {
    InitGlobals();
    clsSSFSearch().Run();
    const std::string folder = clsSSFSearch::ProductFolder();
    if (format == "json") {
        const auto steps = clsInstallPlan::Make(gApplications, clsInstallPlan::CatalogueOrder(gApplications), clsInstallPlan::PlanContext(gApplications));
        std::cout << clsPlanJson::Text(gApplications, gPackets, folder, steps);
    } else if (format == "dot") {
        std::cout << clsPlanDot::Text(gApplications, gPackets, folder);
    } else {
        std::cout << clsCataloguePlan::Text(gApplications, gPackets, folder) << clsInstallPlan::Text(gApplications)
                  << "\nLog: " << gLog->LogfileFullPath() << '\n';
    }
    return 0;
}

// A finding's file as the author knows it: below the disc folder given, else as on the machine.
std::string HostFileName(const std::string& file, const std::string& discRoot, const std::string& disc) {
    if (disc.empty() || file.size() < discRoot.size() || !clsWindowsPath::EqualNoCase(file.substr(0, discRoot.size()), discRoot)) return file;
    std::string relative = file.substr(discRoot.size());
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return (std::filesystem::path(disc) / relative).string();
}

// The disc checked, one finding per line for editors and scripts; the status tells the worst.
int PrintCheck(const std::string& discRoot, const std::string& disc) {
    const auto findings = clsDiscCheck::Run(discRoot);
    for (const auto& f : findings) {
        std::cout << HostFileName(f.file, discRoot, disc) << ':' << f.line << ": " << SeverityText(f.severity) << ": " << f.text << '\n';
    }
    return clsDiscCheck::ExitStatus(findings);
}

// Where the start put the setup, for the person at the terminal.
void PrintStart() {
    std::cout << "Setup folder " << HomePath << ", work folder " << WorkFolder << ", Windows folder " << WindowsDir
              << ", system folder " << SystemDir << '\n'
              << "Log:     " << gLog->LogfileFullPath() << '\n'
              << "Setup language: " << LanguageIndexToCode(DefaultLanguage, 1) << " ("
              << LanguageIndexToCode(DefaultLanguage, 2) << ")\n";
}

} // namespace

int main(int argc, char** argv) {
    std::string error;
    const auto options = clsLinuxOptions::Parse(std::vector<std::string>(argv + 1, argv + argc), error);
    if (!options) return Fail(error + "\n" + clsLinuxOptions::Usage());
    if (options->help) {
        std::cout << clsLinuxOptions::Usage();
        return 0;
    }
    if (options->profiles) {
        PrintProfiles();
        return 0;
    }
    auto machine = OpenMachine(*options, error);
    if (!machine || !InsertDisc(*machine, *options, error)) return Fail(error);

    // Started on the machine by another program (RunOnce after a restart): that program told
    // us where we are.
    MachineProcess process;
    const std::string started = Env("TOVEL_PROGRAM");
    const std::string discRoot = DiscRoot(*options);
    process.selfWindowsPath = started.empty() ? discRoot + "TOVELSETUP.EXE" : started;
    process.programFolder = process.selfWindowsPath.substr(0, process.selfWindowsPath.find_last_of('\\') + 1);
    process.currentFolder = Env("TOVEL_CURRENT_FOLDER");
    process.selfHostPath = HostExecutable(argv[0]);
    process.commandLine = clsWindowsCommandLine::Join(options->windowsArguments);
    process.shareConsole = options->boot;

    const bool switchedOff = machine->Config().powerState == "off";
    // The checks and the tools' formats print only their own text, for editors and pipes.
    const bool quiet = options->check || !options->format.empty();
    if (!quiet) PrintMachine(*machine);
    auto platform = clsMachinePlatform::Make(std::move(machine), process, error);
    if (!platform) return Fail(error);
    if (options->boot) {
        std::vector<std::string> report;
        const bool ok = clsMachineBoot::Run(*platform, report);
        for (const auto& line : report) std::cout << "boot: " << line << '\n';
        return ok ? 0 : 1;
    }
    if (switchedOff) return Fail("the machine was restarted and is switched off; switch it on with: tovelsetup --boot");
    const auto discHost = platform->Machine().HostPath(discRoot);
    if (!discHost || !platform->Files().FolderExists(discRoot))
        return Fail("there is no disc in " + discRoot + "; put one in with --disc=FOLDER");
    InstallPlatform(std::move(platform));
    if (options->check) {
        SetMessageBoxHandler(AnswerWithDefault);
        return PrintCheck(discRoot, options->disc);
    }
    if (!quiet) std::cout << "Disc:    " << discRoot << " = " << *discHost << '\n';
    if (options->plan) {
        SetMessageBoxHandler(quiet ? AnswerWithDefault : PrintMessage);
        return PrintPlan(options->format);
    }
    clsConsoleRenderer renderer(std::cin, std::cout, clsConsoleRenderer::DetectMode());
    renderer.SetTimerSleep([](uint32_t ms) { Platform().Clock().Sleep(ms); });
    RunSetup(&renderer, PrintStart);
}
