#pragma once
// What every page controller does alike: it makes the page's form in the set the settings
// choose (OldForms: classic, else "frmMSI"), gives each control its text in the setup
// language, shows the form modally and answers the common buttons: Continue stores the
// page's answers and goes on, Back goes back, Cancel and the close box ask whether to cancel.
// A page adds only what is its own (OnLoad, OnActivate, OnContinue, OnClick, OnChange).
//
// In a silent run a page that is still in front after its Activate presses its default
// button itself, so that no page ever waits for a person.
//
// With the test flag (a page opened on its own, outside the wizard) the page never calls the
// dialog order: Cancel and the close box just unload the form. A page tester may also choose
// the form set itself, whatever OldForms says.
#include <optional>
#include <string>

#include "wizard/clsDialogOrder.h"
#include "wizard/clsForm.h"

namespace tovel {

class clsControlPage : public clsPageController, public clsFormEvents {
public:
    /// page: the classic form name ("frmLicense").
    explicit clsControlPage(std::string page) : page_(std::move(page)) {}

    void Initialize() override;
    void FormQueryUnload2() override { form_.SetShown(false); }

    void FormLoad() override;
    void FormActivate() override;
    void Click(const std::string& control, int index) override;
    void Change(const std::string& control, int index) override;
    void NodeCheck(const std::string& control, int node) override { OnNodeCheck(control, node); }
    void FormQueryUnload() override;

    void SetTestFlag(bool test) { test_ = test; }
    [[nodiscard]] bool TestFlag() const { return test_; }
    /// The form set to show (true: classic), in place of the disc's OldForms.
    void SetFormSet(bool oldForms) { oldForms_ = oldForms; }
    [[nodiscard]] clsForm& Form() { return form_; }
    [[nodiscard]] const std::string& Page() const { return page_; }

protected:
    virtual void OnLoad() {}
    virtual void OnActivate() {}
    /// Checks and stores the page's answers; false keeps the page open.
    virtual bool OnContinue() { return true; }
    virtual void OnClick(const std::string& /*control*/, int /*index*/) {}
    virtual void OnChange(const std::string& /*control*/, int /*index*/) {}
    virtual void OnNodeCheck(const std::string& /*control*/, int /*node*/) {}
    /// The form the page shows: its classic form, or the "frmMSI" twin without OldForms.
    [[nodiscard]] virtual std::string FormName(bool oldForms) const;

    void ContinueBtnClick();
    void BackBtnClick();
    void CancelBtnClick();
    /// Sets a control's text (nothing when the form has no such control).
    void SetText(const std::string& control, const std::string& text, int index = -1);
    /// A control's text; "" when there is none.
    [[nodiscard]] std::string Text(const std::string& control, int index = -1) const;
    void SetVisible(const std::string& control, bool visible, int index = -1);
    void SetEnabled(const std::string& control, bool enabled, int index = -1);
    /// The whole content of a text file of the disc as UTF-8, read in the code page the file
    /// is written in; "" (and a log line) when it cannot be read.
    [[nodiscard]] static std::string ReadDiscText(const std::string& path);

private:
    void SetTexts();
    /// Puts the disc's picture files in place of the Setups.ini keys the layouts name.
    void ResolvePictures();
    /// Silent run: presses the page's default button; with none, cancels the setup.
    void PressDefaultButton();

    std::string page_;
    clsForm form_;
    bool test_ = false;
    std::optional<bool> oldForms_;
};

} // namespace tovel
