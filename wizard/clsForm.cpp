#include "wizard/clsForm.h"

namespace tovel {

clsFormControl& clsForm::Add(clsFormControl control) {
    controls_.push_back(std::move(control));
    return controls_.back();
}

clsFormControl* clsForm::Control(const std::string& name, int index) {
    for (auto& control : controls_) {
        if (control.name == name && control.index == index) return &control;
    }
    return nullptr;
}

const clsFormControl* clsForm::Control(const std::string& name, int index) const {
    return const_cast<clsForm*>(this)->Control(name, index);
}

clsFormTimer* clsForm::Timer(const std::string& name) {
    for (auto& timer : timers_) {
        if (timer.name == name) return &timer;
    }
    return nullptr;
}

void clsForm::ChooseOption(const std::string& name, int index) {
    const clsFormControl* chosen = Control(name, index);
    if (chosen == nullptr || chosen->kind != ControlKind::OptionButton) return;
    // An array's elements form one group; single options of a form form another.
    for (auto& control : controls_) {
        if (control.kind != ControlKind::OptionButton) continue;
        const bool sameGroup = index >= 0 ? control.name == name : control.index < 0;
        if (sameGroup) control.value = 0;
    }
    Control(name, index)->value = 1;
}

void clsForm::RaiseLoad() {
    if (events_ != nullptr) events_->FormLoad();
}

void clsForm::RaiseActivate() {
    if (events_ != nullptr) events_->FormActivate();
}

void clsForm::RaiseClick(const std::string& control, int index) {
    clsFormControl* target = Control(control, index);
    if (target == nullptr || !target->visible || !target->enabled) return;
    if (target->kind == ControlKind::OptionButton) ChooseOption(control, index);
    if (target->kind == ControlKind::CheckBox) target->value = target->value == 0 ? 1 : 0;
    if (events_ != nullptr) events_->Click(control, index);
}

void clsForm::RaiseChange(const std::string& control, int index, const std::string& text) {
    clsFormControl* target = Control(control, index);
    if (target == nullptr || target->kind != ControlKind::TextBox || target->locked || !target->enabled) return;
    target->caption = text;
    if (events_ != nullptr) events_->Change(control, index);
}

void clsForm::RaiseTimer(const std::string& timer) {
    clsFormTimer* target = Timer(timer);
    if (target == nullptr || !target->enabled) return;
    if (events_ != nullptr) events_->Timer(timer);
}

void clsForm::RaiseNodeCheck(const std::string& control, int node) {
    clsFormControl* target = Control(control);
    if (target == nullptr || target->kind != ControlKind::TreeListView || !target->visible || !target->enabled) return;
    if (node < 0 || static_cast<size_t>(node) >= target->nodes.size()) return;
    target->value = node;
    if (events_ != nullptr) events_->NodeCheck(control, node);
}

void clsForm::RaiseQueryUnload() {
    if (events_ != nullptr) events_->FormQueryUnload();
}

} // namespace tovel
