#include "wizard/pages/clsControlPage.h"

#include <algorithm>

#include "common/clsCodePage.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/WizardGlobals.h"
#include "wizard/clsRenderer.h"
#include "wizard/mdlFormLayouts.h"

namespace tovel {

void clsControlPage::Initialize() {
    const bool oldForms = oldForms_.value_or(gSetupsIni == nullptr || gSetupsIni->OldForms());
    form_ = CreateForm(FormName(oldForms));
    form_.SetCaption(ApplicationTitle);
    form_.SetEvents(this);
    Renderer().ShowModal(form_);
}

std::string clsControlPage::FormName(bool oldForms) const { return FormNameInSet(page_, oldForms); }

void clsControlPage::FormLoad() {
    ResolvePictures();
    SetTexts();
    OnLoad();
}

void clsControlPage::ResolvePictures() {
    if (gSetupsIni == nullptr) return;
    // The layouts name the Setups.ini key of each picture; the disc gives the file.
    const std::pair<const char*, const std::string*> keys[] = {{"WelcomeBmp", &gSetupsIni->WelcomeBmp()},
                                                               {"WelcomeBmp2", &gSetupsIni->WelcomeBmp2()},
                                                               {"LeftSideBmp", &gSetupsIni->LeftSideBmp()}};
    for (clsFormControl& control : form_.Controls()) {
        if (control.kind != ControlKind::Image) continue;
        for (const auto& [key, file] : keys) {
            if (control.picture == key) control.picture = *file;
        }
    }
}

void clsControlPage::FormActivate() {
    OnActivate();
    // Nobody answers a silent run: a page still in front goes on as Enter would take it.
    if (SilentMode && !test_ && form_.Shown()) PressDefaultButton();
}

void clsControlPage::PressDefaultButton() {
    const auto& controls = form_.Controls();
    const auto button = std::find_if(controls.begin(), controls.end(),
                                     [](const clsFormControl& c) { return c.isDefault && c.visible && c.enabled; });
    if (button == controls.end()) {
        LogIfEnabled("Silent run: " + form_.Name() + " has no default button to go on with; the setup is cancelled.");
        CancelBtnClick();
        return;
    }
    const std::string name = button->name;   // the click may change the controls
    const int index = button->index;
    LogIfEnabled("Silent run: " + form_.Name() + " goes on with " + name + ".");
    Click(name, index);
}

void clsControlPage::SetTexts() {
    if (!gLanguage) return;
    for (auto& control : form_.Controls()) {
        const std::string caption = gLanguage->Caption(form_.Name(), control.name, control.index);
        if (!caption.empty()) control.caption = caption;
    }
}

void clsControlPage::Click(const std::string& control, int index) {
    if (control == "ContinueBtn") return ContinueBtnClick();
    if (control == "BackBtn") return BackBtnClick();
    if (control == "CancelBtn") return CancelBtnClick();
    OnClick(control, index);
}

void clsControlPage::Change(const std::string& control, int index) { OnChange(control, index); }

void clsControlPage::ContinueBtnClick() {
    if (!OnContinue() || test_) return;
    gDialogOrder->NextDialog(page_);
}

void clsControlPage::BackBtnClick() {
    if (!test_) gDialogOrder->PreviousDialog(page_);
}

void clsControlPage::CancelBtnClick() {
    if (test_) {
        FormQueryUnload2();
        return;
    }
    (void)gDialogOrder->ClickCancel();
}

void clsControlPage::FormQueryUnload() { CancelBtnClick(); }

void clsControlPage::SetText(const std::string& control, const std::string& text, int index) {
    if (clsFormControl* c = form_.Control(control, index)) c->caption = text;
}

std::string clsControlPage::Text(const std::string& control, int index) const {
    const clsFormControl* c = form_.Control(control, index);
    return c != nullptr ? c->caption : std::string();
}

void clsControlPage::SetVisible(const std::string& control, bool visible, int index) {
    if (clsFormControl* c = form_.Control(control, index)) c->visible = visible;
}

void clsControlPage::SetEnabled(const std::string& control, bool enabled, int index) {
    if (clsFormControl* c = form_.Control(control, index)) c->enabled = enabled;
}

std::string clsControlPage::ReadDiscText(const std::string& path) {
    const auto bytes = Platform().Files().ReadFile(path);
    if (!bytes) {
        LogIfEnabled("The text file " + path + " cannot be read.");
        return {};
    }
    // A Japanese licence on a Western Windows is Shift-JIS: the file's own code page decides.
    const uint32_t codePage = clsLanguage::DetectCodePageFromFile(path);
    return clsCodePage::ToUtf8(*bytes, codePage != 0 ? codePage : Platform().System().AnsiCodePage()).value_or(*bytes);
}

} // namespace tovel
