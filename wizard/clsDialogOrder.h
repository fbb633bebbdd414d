#pragma once
// The wizard's sequencer: which pages the wizard has (fixed once by Initialize), which page
// comes next in the direction of travel, whether a page reached is shown or skipped, and the
// two ways of cancelling. Page controllers report Continue, Back and Cancel here under their
// form names; none of them knows which page comes next.
//
// Pages are modal and calls nest: a page's Continue runs NextDialog, which shows the next
// page from inside it. A controller that is left is therefore kept until the dialog order
// ends rather than destroyed while its own handler is still running.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tovel {

/// What the dialog order asks of a page's controller.
class clsPageController {
public:
    virtual ~clsPageController() = default;
    /// Creates the page's form, fills it and shows it modally.
    virtual void Initialize() = 0;
    /// Unloads the form.
    virtual void FormQueryUnload2() = 0;
};

struct clsDialogOrderItem {
    int16_t index = 0;   ///< 1-based position in the list
    std::string name;    ///< the page's classic form name
};

class clsDialogOrder {
public:
    /// Makes the controller of a page by its classic form name; nullptr for a page that has
    /// none yet (it is then passed in the direction of travel).
    using ControllerFactory = std::function<std::unique_ptr<clsPageController>(const std::string& page)>;
    /// The environment checks run on reaching "frmWelcome2", in their order; false ends the
    /// program (the start check failed).
    using EnvironmentChecks = std::function<bool()>;
    /// The product selection recomputed from the selected packets, and the bus system's
    /// selection, run before forward skips.
    using Recompute = std::function<void()>;

    struct Hooks {
        ControllerFactory controllers;
        EnvironmentChecks environmentChecks;
        Recompute selectFromPackets;
        Recompute applyBusSystem;
        std::function<void()> endProgram;   ///< when the start check fails
    };

    explicit clsDialogOrder(Hooks hooks);

    /// Builds the page list from the run state and the settings.
    void Initialize();
    /// Leaves the named page forwards; "" starts the wizard at the first page.
    void NextDialog(const std::string& name);
    /// Leaves the named page backwards; nothing on the first page.
    void PreviousDialog(const std::string& name);
    /// Asks whether to cancel (text 104, Yes and No); on Yes ends the wizard on the Done page.
    /// True when the setup was cancelled.
    bool ClickCancel();
    /// Shows the text of a number with a style, then always ends the wizard on the Done page.
    void ClickCancel2(int textNumber, int style);

    [[nodiscard]] const std::vector<clsDialogOrderItem>& Pages() const { return pages_; }
    [[nodiscard]] const std::string& CurrentPage() const { return current_; }
    [[nodiscard]] bool GoingBack() const { return goingBack_; }
    /// The pages shown, in order, for the log and the tests.
    [[nodiscard]] const std::vector<std::string>& Shown() const { return shown_; }

private:
    void Add(const std::string& name);
    [[nodiscard]] const clsDialogOrderItem* Find(const std::string& name) const;
    void ShowPage();
    void ClosePage();
    void Show(const std::string& page);
    void Skip(const std::string& page);
    /// Whether a page reached is shown; runs what must happen before the decision.
    [[nodiscard]] bool ShowWhenReached(const std::string& page);
    void EndOnDonePage();

    Hooks hooks_;
    std::vector<clsDialogOrderItem> pages_;
    std::string current_;
    bool goingBack_ = false;
    bool ended_ = false;   ///< the start check failed: nothing more is shown
    std::unique_ptr<clsPageController> controller_;       ///< of the page shown
    std::unique_ptr<clsPageController> installation_;     ///< kept while the Done page follows it
    std::vector<std::unique_ptr<clsPageController>> left_;   ///< pages left while their handlers run
    std::vector<std::string> shown_;
};

} // namespace tovel
