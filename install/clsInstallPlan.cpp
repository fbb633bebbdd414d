#include "install/clsInstallPlan.h"

#include <memory>
#include <sstream>
#include <unordered_map>

#include "common/clsString.h"
#include "install/clsDeinstall.h"
#include "install/clsOptionFile.h"

namespace tovel {

namespace {

/// Version actions that keep a product from being installed.
constexpr const char* kSkipActions[] = {"$DoNotInstall$", "$Break$", "$ManualDeinstall$"};

/// The version actions in force: those for the installed version, or the first-install ones.
std::vector<std::string> ActionsOf(const clsSIFApplicationItem& item) {
    std::vector<std::string> actions;
    if (item.VersionActionsCount() > 0) {
        for (int i = 1; i <= item.VersionActionsCount(); ++i) actions.push_back(item.GetAction(i));
        return actions;
    }
    for (int i = 1; i <= item.FirstInstActionsCount(); ++i) actions.push_back(item.GetFirstInstAction(i));
    return actions;
}

std::string SkipAction(const std::vector<std::string>& actions) {
    for (const auto& action : actions) {
        for (const char* skip : kSkipActions) {
            if (clsString::EqualNoCaseAscii(clsString::Trim(action), skip)) return skip;
        }
    }
    return {};
}

std::string SkipReason(const clsSIFApplicationItem& item, const std::vector<std::string>& actions) {
    if (!item.Selected) return "not selected";
    const std::string action = SkipAction(actions);
    if (action.empty()) return {};
    const std::string installed = item.InstalledVersion.empty() ? "" : " for the installed version " + item.InstalledVersion;
    return "the version action " + action + " says so" + installed;
}

RemovalStep RemovalOf(const clsSIFApplicationItem& item, const InstallContext& context) {
    RemovalStep removal;
    removal.deinstallKey = clsString::Trim(item.DeinstallKey);
    removal.wanted = clsString::Trim(item.AutoDeinstall) == "1" && !removal.deinstallKey.empty();
    if (!removal.wanted) return removal;
    removal.uninstallKeyPath = clsDeinstall::KeyPath(removal.deinstallKey);
    removal.commandKnown = static_cast<bool>(context.uninstallString);
    if (removal.commandKnown) removal.command = clsDeinstall::WithAutoAnswers(context.uninstallString(removal.deinstallKey));
    return removal;
}

/// The folder a program is started from: its path up to the last backslash (a root keeps it).
std::string FolderOf(const std::string& program) {
    const size_t slash = program.find_last_of('\\');
    if (slash == std::string::npos) return {};
    return program.substr(0, slash == 2 && program[1] == ':' ? 3 : slash);
}

void SetCommand(InstallStep& step, const clsSIFApplicationItem& item, const InstallContext& context) {
    step.setupFile = item.SetupFile;
    step.msi = clsString::LowerAscii(item.SetupFile).find("msiexec.exe") != std::string::npos;
    step.program = step.msi ? context.Expand("[SystemFolder]msiexec.exe") : item.SetupFile;
    const OptionFilePlace place = clsOptionFile::Place(context.Expand(item.SetupFileParameters), context.workFolder,
                                                       [&context](const std::string& root) { return context.DriveUsable(root); });
    step.parameters = place.parameters;
    step.optionFilePath = place.path;
    step.optionPathRewritten = place.rewritten;
    step.commandLine = step.program + " " + step.parameters;
    step.startFolder = FolderOf(step.program);
}

std::vector<OptionRequest> ExtraEntriesOf(const clsSIFApplicationItem& item, const InstallContext& context) {
    std::vector<OptionRequest> extra;
    if (!context.extraEntries) return extra;
    for (const auto& entry : context.extraEntries(item.SIFFileName)) extra.push_back({entry.key, entry.value});
    return extra;
}

std::string YesNo(bool yes) { return yes ? "yes" : "no"; }

std::string Joined(const std::vector<OptionRequest>& requests) {
    std::string text;
    for (const auto& request : requests) text += (text.empty() ? "" : ", ") + request.key + "=" + request.value;
    return text;
}

std::string RemovalText(const RemovalStep& removal) {
    if (!removal.wanted) return "no";
    if (!removal.commandKnown) return removal.deinstallKey + ": UninstallString read when the run gets there";
    if (removal.command.empty()) return removal.deinstallKey + ": no UninstallString at " + removal.uninstallKeyPath;
    return removal.deinstallKey + ": " + removal.command;
}

} // namespace

std::string InstallStep::Text() const {
    std::ostringstream out;
    out << "\n" << position << ". " << productCode << "  " << caption << "\n";
    if (catalogueIndex == 0 || skip) {
        out << "   skipped     " << skipReason << "\n";
        if (catalogueIndex == 0) return out.str();
    }
    std::string actionText;
    for (const auto& action : actions) actionText += (actionText.empty() ? "" : " | ") + action;
    if (!actionText.empty()) out << "   actions     " << actionText << "\n";
    if (skip) return out.str();
    out << "   remove old  " << RemovalText(removal) << "\n";
    out << "   command     " << commandLine << "\n";
    out << "   in folder   " << (startFolder.empty() ? "-" : startFolder) << (msi ? "  (Windows Installer, not looked for on the disc)" : "") << "\n";
    out << "   OPFILE.TXT  " << optionFilePath << (optionPathRewritten ? "  (the drive named cannot be used: parameters rewritten)" : "") << "\n";
    out << "   requests    " << Joined(clsOptionFile::Merged(requests, extraEntries)) << "\n";
    if (!extraEntries.empty()) out << "   from file   " << Joined(extraEntries) << "\n";
    out << "   critical    " << YesNo(critical) << ", resume registered after a restart " << YesNo(registerInRunOnce)
        << ", uninstall list " << YesNo(deinstallListEntry) << "\n";
    return out.str();
}

InstallStep clsInstallPlan::Step(const clsSIFApplicationItem& item, int catalogueIndex, int position, const InstallContext& context) {
    InstallStep step;
    step.position = position;
    step.catalogueIndex = catalogueIndex;
    step.productCode = item.ProductCode;
    step.caption = item.Description.empty() ? item.ProductCode : item.Description;
    step.actions = ActionsOf(item);
    step.skipReason = SkipReason(item, step.actions);
    step.skip = !step.skipReason.empty();
    step.removal = RemovalOf(item, context);
    SetCommand(step, item, context);
    step.sifFileName = item.SIFFileName;
    step.description = item.Description;
    step.requests = clsOptionFile::Requests(item, context);
    step.extraEntries = ExtraEntriesOf(item, context);
    step.critical = item.IsCriticalComponent;
    step.registerInRunOnce = item.RegisterInRunOnce == 1;
    step.deinstallListEntry = clsString::Trim(item.AutoDeinstall) == "2";
    return step;
}

std::vector<InstallStep> clsInstallPlan::Make(const clsSIFApplication& applications, const std::vector<std::string>& productCodes,
                                              const InstallContext& context) {
    std::vector<InstallStep> steps;
    for (const auto& code : productCodes) {
        const int position = static_cast<int>(steps.size()) + 1;
        const int index = applications.IndexOfProductCode(code);
        if (index == 0) {
            InstallStep missing;
            missing.position = position;
            missing.productCode = code;
            missing.skip = true;
            missing.skipReason = "the disc has no product with this code";
            steps.push_back(missing);
            continue;
        }
        steps.push_back(Step(*applications.Item(index), index, position, context));
    }
    return steps;
}

std::vector<std::string> clsInstallPlan::CatalogueOrder(const clsSIFApplication& applications) {
    std::vector<std::string> codes;
    for (const auto& item : applications.Items()) codes.push_back(item.ProductCode);
    return codes;
}

std::string clsInstallPlan::Text(const std::vector<InstallStep>& steps) {
    std::string text = "\nInstallation steps\n==================\n";
    for (const auto& step : steps) text += step.Text();
    return text;
}

InstallContext clsInstallPlan::PlanContext(const clsSIFApplication& applications) {
    InstallContext context = clsInstallContext::Current("");
    auto read = std::make_shared<std::unordered_map<std::string, const std::vector<IniEntry>*>>();
    for (const auto& item : applications.Items()) read->try_emplace(item.SIFFileName, &item.OptionFileEntries);
    context.extraEntries = [read](const std::string& sifPath) {
        const auto found = read->find(sifPath);
        return found == read->end() ? clsOptionFile::ExtraEntries(sifPath) : *found->second;
    };
    return context;
}

std::string clsInstallPlan::Text(const clsSIFApplication& applications) {
    return Text(Make(applications, CatalogueOrder(applications), PlanContext(applications)));
}

} // namespace tovel
