#include "wizard/clsDialogOrder.h"

#include <algorithm>
#include <exception>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"

namespace tovel {

namespace {

constexpr int kYesNoQuestion = 36;

// Pages that are shown whenever they are reached.
constexpr const char* kAlwaysShown[] = {"frmWelcome", "frmSetupLanguage", "frmReadme", "frmLicense", "frmInformation",
                                        "frmIdentification", "frmDestination", "frmCustomSetup", "frmInstallation", "frmDone"};

template <typename Step>
void Guarded(const char* procedure, Step step) {
    try {
        step();
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsDialogOrder Funktion ") + procedure + ": " + e.what());
    } catch (...) {
        LogIfEnabled(std::string("Error in Modul clsDialogOrder Funktion ") + procedure);
    }
}

bool AnyBusEntry() {
    for (const auto& packet : gPackets.Items()) {
        if (!packet.Selected) continue;
        for (int bus = 0; bus < kBusSystemCount; ++bus) {
            if (!packet.BusActionText(static_cast<BusSystem>(bus)).empty()) return true;
        }
    }
    return false;
}

} // namespace

clsDialogOrder::clsDialogOrder(Hooks hooks) : hooks_(std::move(hooks)) {}

void clsDialogOrder::Add(const std::string& name) {
    pages_.push_back({static_cast<int16_t>(pages_.size() + 1), name});
}

void clsDialogOrder::Initialize() {
    pages_.clear();
    const clsSetupsIni& settings = *gSetupsIni;
    if (!ContinuedAfterRestart && !SilentMode) {
        if (settings.WelcomeTimeout() > 0) Add("frmWelcome");
        if (SetupLanguageCount > 1) Add("frmSetupLanguage");
        Add("frmWelcome2");
        if (!settings.GetReadmeFile(DefaultLanguage).empty()) Add("frmReadme");
        Add("frmSearch");
        Add("frmOldVersion");
        if (!settings.GetLicenseFile(DefaultLanguage).empty()) Add("frmLicense");
        if (!settings.GetInformationFile(DefaultLanguage).empty()) Add("frmInformation");
        if (settings.ShowIdentificationForm()) Add("frmIdentification");
        if (settings.ShowDriveSelectionForm()) Add("frmDestination");
        for (const char* page : {"frmLanguages", "frmUpdateOrNew", "frmSetupType", "frmBusSystem", "frmCustomSetup"}) Add(page);
    }
    if (SilentMode) Add("frmSearch");
    Add("frmInstallation");
    Add("frmDone");
    std::string names;
    for (const auto& page : pages_) names += (names.empty() ? "" : ", ") + page.name;
    LogIfEnabled("Pages: " + names);
}

const clsDialogOrderItem* clsDialogOrder::Find(const std::string& name) const {
    const auto found = std::find_if(pages_.begin(), pages_.end(), [&](const clsDialogOrderItem& item) { return item.name == name; });
    return found == pages_.end() ? nullptr : &*found;
}

void clsDialogOrder::NextDialog(const std::string& name) {
    Guarded("NextDialog", [&] {
        size_t next = 0;
        if (!name.empty()) {
            current_ = name;
            goingBack_ = false;
            const clsDialogOrderItem* item = Find(name);
            if (item == nullptr) {
                LogIfEnabled("Error in Modul clsDialogOrder Funktion NextDialog: no page " + name);
                return;
            }
            if (name != "frmInstallation") ClosePage();
            next = static_cast<size_t>(item->index);
        }
        if (next >= pages_.size()) return;
        current_ = pages_[next].name;
        ShowPage();
    });
}

void clsDialogOrder::PreviousDialog(const std::string& name) {
    Guarded("PreviousDialog", [&] {
        current_ = name;
        const clsDialogOrderItem* item = Find(name);
        if (item == nullptr) {
            LogIfEnabled("Error in Modul clsDialogOrder Funktion PreviousDialog: no page " + name);
            return;
        }
        if (item->index <= 1) return;
        goingBack_ = true;
        ClosePage();
        current_ = pages_[static_cast<size_t>(item->index - 2)].name;
        ShowPage();
    });
}

bool clsDialogOrder::ShowWhenReached(const std::string& page) {
    const clsSetupsIni& settings = *gSetupsIni;
    if (page == "frmWelcome2") {
        if (hooks_.environmentChecks && !hooks_.environmentChecks()) {
            LogIfEnabled("The start check failed: the setup ends.");
            ended_ = true;
            if (hooks_.endProgram) hooks_.endProgram();
            return false;
        }
        return settings.ShowSecondWelcomeForm();
    }
    if (page == "frmSearch") return !goingBack_;
    if (page == "frmOldVersion") return OldVersionCount > 0;
    if (page == "frmLanguages") return ProductLanguages.size() >= 2 && !settings.SetupLanguageIsProgramLanguage();
    if (page == "frmUpdateOrNew") return !InstalledProductsFound.empty() && settings.ShowUpdateForm();
    if (page == "frmSetupType") return !settings.ShowNoPackageFormWhenPackageExist() && gPackets.Count() > 0 && !UpdateMode;
    if (page == "frmBusSystem") {
        BusSystemNeeded = AnyBusEntry();
        return BusSystemNeeded && !UpdateMode;
    }
    return std::any_of(std::begin(kAlwaysShown), std::end(kAlwaysShown), [&](const char* name) { return page == name; });
}

void clsDialogOrder::ShowPage() {
    const std::string page = current_;
    if (ShowWhenReached(page)) {
        Show(page);
    } else if (!ended_) {
        Skip(page);
    }
}

void clsDialogOrder::Skip(const std::string& page) {
    LogIfEnabled("Page " + page + " skipped");
    if (goingBack_) {
        PreviousDialog(page);
        return;
    }
    if ((page == "frmWelcome2" || page == "frmLanguages") && hooks_.selectFromPackets) hooks_.selectFromPackets();
    if (page == "frmBusSystem" && hooks_.applyBusSystem) hooks_.applyBusSystem();
    NextDialog(page);
}

void clsDialogOrder::Show(const std::string& page) {
    if (page == "frmDone" && controller_) installation_ = std::move(controller_);   // the run's page stays until Done closes
    controller_ = hooks_.controllers ? hooks_.controllers(page) : nullptr;
    if (!controller_) {
        LogIfEnabled("Page " + page + " has no controller: passed");
        if (page != "frmDone") Skip(page);
        return;
    }
    shown_.push_back(page);
    LogIfEnabled("Page " + page);
    // The controller may be left (and a later page shown) before Initialize returns.
    clsPageController* controller = controller_.get();
    controller->Initialize();
}

void clsDialogOrder::ClosePage() {
    if (current_ == "frmDone" && installation_) {
        installation_->FormQueryUnload2();
        left_.push_back(std::move(installation_));
    }
    if (!controller_) return;
    controller_->FormQueryUnload2();
    left_.push_back(std::move(controller_));
}

void clsDialogOrder::EndOnDonePage() {
    current_ = "frmDone";
    Show("frmDone");
}

bool clsDialogOrder::ClickCancel() {
    bool cancelled = false;
    Guarded("ClickCancel", [&] {
        const std::string text = gLanguage ? gLanguage->LoadResString(TextNo::kCancelQuestion) : std::string();
        if (MsgBox(text, kYesNoQuestion, gSetupsIni->AppTitle()) != mb::kIdYes) return;
        cancelled = true;
        SetupCancelled = true;
        LogIfEnabled("Setup cancelled on page " + current_);
        ClosePage();
        EndOnDonePage();
    });
    return cancelled;
}

void clsDialogOrder::ClickCancel2(int textNumber, int style) {
    Guarded("ClickCancel2", [&] {
        std::string text = gLanguage ? gLanguage->LoadResString(textNumber) : std::string();
        if (gPlaceholder) text = gPlaceholder->CheckForPlaceholder(text);
        (void)MsgBox(text, style, gSetupsIni->AppTitle());
        SetupCancelled = true;
        LogIfEnabled("Setup ended on page " + current_);
        ClosePage();
        EndOnDonePage();
    });
}

} // namespace tovel
