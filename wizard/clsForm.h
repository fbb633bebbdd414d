#pragma once
// A wizard page or the message form as data: its controls with their positions in twips,
// their texts and states, and its timers. A renderer draws it and raises the user's actions
// on it; the form only forwards them to its controller (clsFormEvents), which holds all the
// page's logic. Both form sets ("frmWelcome2" and "frmMSIWelcome2") are forms of this kind
// with the same control names.
#include <cstdint>
#include <string>
#include <vector>

#include "wizard/TreeListNode.h"

namespace tovel {

/// TreeListView is the component tree (uscTreeListView): its lines are `nodes`, its cursor
/// is `value`, and `items` holds the names of the four box states for its legend.
enum class ControlKind : uint8_t { Label, CommandButton, OptionButton, CheckBox, TextBox, ListBox, Image, Frame, TreeListView };

struct clsFormControl {
    std::string name{};
    ControlKind kind = ControlKind::Label;
    int index = -1;                ///< element of a control array; -1 for a single control
    int left = 0, top = 0, width = 0, height = 0;   ///< twips
    std::string caption{};         ///< label, button and option texts; a text box's text
    bool visible = true;
    bool enabled = true;
    int value = 0;                 ///< option and check box: 1 chosen, 0 not; list and tree: the line chosen
    bool multiLine = false;        ///< text box with several lines (licence, readme)
    bool locked = false;           ///< text box the user cannot change
    std::string picture{};         ///< image: the bitmap file shown
    std::vector<std::string> items{}; ///< list box lines; a tree's legend: the states 1, 2, 4, 8 named
    std::vector<TreeListNode> nodes{}; ///< tree list lines
    bool isDefault = false;        ///< Enter presses it
    bool isCancel = false;         ///< Esc presses it
};

struct clsFormTimer {
    std::string name{};
    int intervalMs = 0;
    bool enabled = false;
};

/// What a form tells its controller. Names are the controls' names; index is the element of
/// a control array (-1 for a single control).
class clsFormEvents {
public:
    virtual ~clsFormEvents() = default;
    virtual void FormLoad() {}
    virtual void FormActivate() {}
    virtual void Click(const std::string& /*control*/, int /*index*/) {}
    virtual void Change(const std::string& /*control*/, int /*index*/) {}
    virtual void Timer(const std::string& /*timer*/) {}
    /// The user asks to flip the box of a tree's line; the controller decides what changes.
    virtual void NodeCheck(const std::string& /*control*/, int /*node*/) {}
    /// The close box: the controller decides; the form stays unless it unloads itself.
    virtual void FormQueryUnload() {}
};

class clsForm {
public:
    clsForm() = default;
    clsForm(std::string name, std::string caption, int width, int height)
        : name_(std::move(name)), caption_(std::move(caption)), width_(width), height_(height) {}

    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string caption) { caption_ = std::move(caption); }
    [[nodiscard]] int Width() const { return width_; }
    [[nodiscard]] int Height() const { return height_; }

    clsFormControl& Add(clsFormControl control);
    void AddTimer(clsFormTimer timer) { timers_.push_back(std::move(timer)); }
    /// The control of a name (and array index); nullptr when the form has none.
    [[nodiscard]] clsFormControl* Control(const std::string& name, int index = -1);
    [[nodiscard]] const clsFormControl* Control(const std::string& name, int index = -1) const;
    [[nodiscard]] std::vector<clsFormControl>& Controls() { return controls_; }
    [[nodiscard]] const std::vector<clsFormControl>& Controls() const { return controls_; }
    [[nodiscard]] clsFormTimer* Timer(const std::string& name);
    [[nodiscard]] std::vector<clsFormTimer>& Timers() { return timers_; }

    /// Chooses one option of a group (the options of one control array, or the single
    /// options of the form): it gets 1, the others of its group 0.
    void ChooseOption(const std::string& name, int index = -1);

    void SetEvents(clsFormEvents* events) { events_ = events; }
    [[nodiscard]] clsFormEvents* Events() const { return events_; }
    /// True from Show until Hide or Unload: the renderer's modal loop runs while it is.
    [[nodiscard]] bool Shown() const { return shown_; }
    void SetShown(bool shown) { shown_ = shown; }

    // The user's actions, as a renderer raises them: state first, then the controller hears.
    void RaiseLoad();
    void RaiseActivate();
    void RaiseClick(const std::string& control, int index = -1);
    void RaiseChange(const std::string& control, int index, const std::string& text);
    void RaiseTimer(const std::string& timer);
    /// A tree line's box: the cursor moves to the line, then the controller hears. Nothing
    /// for a hidden or disabled tree or a line it does not have.
    void RaiseNodeCheck(const std::string& control, int node);
    void RaiseQueryUnload();

private:
    std::string name_;
    std::string caption_;
    int width_ = 0;
    int height_ = 0;
    std::vector<clsFormControl> controls_;
    std::vector<clsFormTimer> timers_;
    clsFormEvents* events_ = nullptr;
    bool shown_ = false;
};

} // namespace tovel
