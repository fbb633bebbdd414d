#include "configtool/clsToolForm.h"

#include "configtool/mdlConfigForms.h"
#include "wizard/clsRenderer.h"

namespace tovel {

clsToolForm::clsToolForm(const std::string& name) : form_(CreateConfigForm(name)) { form_.SetEvents(this); }

void clsToolForm::Show() { Renderer().ShowModal(form_); }

void clsToolForm::Click(const std::string& control, int index) {
    if (control == "CloseBtn") return Close();
    OnClick(control, index);
}

void clsToolForm::SetText(const std::string& control, const std::string& text) {
    if (clsFormControl* c = form_.Control(control)) c->caption = text;
}

std::string clsToolForm::Text(const std::string& control) const {
    const clsFormControl* c = form_.Control(control);
    return c != nullptr ? c->caption : std::string();
}

void clsToolForm::SetLines(const std::string& list, std::vector<std::string> lines, int chosen) {
    clsFormControl* c = form_.Control(list);
    if (c == nullptr) return;
    c->value = chosen >= 0 && static_cast<size_t>(chosen) < lines.size() ? chosen : -1;
    c->items = std::move(lines);
}

int clsToolForm::ChosenLine(const std::string& list) const {
    const clsFormControl* c = form_.Control(list);
    if (c == nullptr || c->value < 0 || static_cast<size_t>(c->value) >= c->items.size()) return -1;
    return c->value;
}

} // namespace tovel
