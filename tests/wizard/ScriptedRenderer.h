#pragma once
// A renderer for tests: it plays what the test says the user did, one action per round of
// the modal loop of the form on top, and keeps a copy of each form as it was shown (laid
// out, before Load). Letting window messages run (DoEvents) shows the form on top to
// onDoEvents and, with playInDoEvents, plays the next action on it as a pending one, so a
// page that works while it is shown (the search) can be interrupted.
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "wizard/clsForm.h"
#include "wizard/clsRenderer.h"

namespace tovel::test {

class ScriptedRenderer : public clsRenderer {
public:
    using Action = std::function<void(clsForm&)>;

    void ShowModal(clsForm& form) override {
        shown.push_back(form);
        open_.push_back(&form);
        form.SetShown(true);
        form.RaiseLoad();
        form.RaiseActivate();
        while (form.Shown() && next < actions.size()) actions[next++](form);
        if (form.Shown()) form.SetShown(false);
        open_.pop_back();
    }
    void DoEvents() override {
        if (open_.empty()) return;
        clsForm& top = *open_.back();
        if (onDoEvents) onDoEvents(top);
        if (playInDoEvents && top.Shown() && next < actions.size()) actions[next++](top);
    }
    void SetHourglass(bool) override {}
    void Refresh(const clsForm&) override {}

    std::vector<Action> actions;
    size_t next = 0;
    std::vector<clsForm> shown;
    std::function<void(clsForm&)> onDoEvents;
    bool playInDoEvents = false;

private:
    std::vector<clsForm*> open_;
};

/// Clicks a control (an element of a control array with its index).
inline ScriptedRenderer::Action Click(std::string control, int index = -1) {
    return [control = std::move(control), index](clsForm& form) { form.RaiseClick(control, index); };
}
/// Chooses a line of a list box (its value is the line's index) and clicks the list.
inline ScriptedRenderer::Action ChooseLine(std::string list, int line) {
    return [list = std::move(list), line](clsForm& form) {
        if (clsFormControl* c = form.Control(list)) c->value = line;
        form.RaiseClick(list);
    };
}
/// Types a text into a text box.
inline ScriptedRenderer::Action Type(std::string control, std::string text) {
    return [control = std::move(control), text = std::move(text)](clsForm& form) { form.RaiseChange(control, -1, text); };
}
/// Looks at the form as it is now, without acting.
inline ScriptedRenderer::Action Inspect(std::function<void(clsForm&)> look) { return look; }

} // namespace tovel::test
