#pragma once
// One control of a form as a native child window: made from the control's data (kind,
// place in twips, caption, state), and brought up to date with it after every event, only
// where it changed, so that a page that sets its texts from a timer does not flicker.
#include <memory>
#include <optional>
#include <string>

#include "platform/win32/Win32Headers.h"
#include "ui/win32/clsMetrics.h"
#include "ui/win32/clsWin32TreeList.h"
#include "wizard/clsForm.h"

namespace tovel {

class clsWin32Control {
public:
    /// Makes the window; a kind this renderer does not know shows as an empty etched frame.
    /// The component tree is a tree view (clsWin32TreeList).
    /// onBanner: the control lies on the white banner strip and takes its colour.
    clsWin32Control(HWND parent, const clsFormControl& data, int id, const clsMetrics& metrics, HFONT font, bool onBanner);
    clsWin32Control(const clsWin32Control&) = delete;
    clsWin32Control& operator=(const clsWin32Control&) = delete;
    ~clsWin32Control();

    /// Applies what differs from the state last applied.
    void Sync(const clsFormControl& data);
    /// The caption the user typed into a text box.
    [[nodiscard]] std::string ReadText() const;
    /// The line the user chose in a list box; -1 for none.
    [[nodiscard]] int ReadSelection() const;
    /// The user's action a tree's notification stands for; none for other controls.
    [[nodiscard]] std::optional<TreeListAction> TreeAction(const NMHDR& header) const;
    /// Takes the user's edit as applied, so that Sync does not write it back.
    void Accept(const clsFormControl& data) { shown_ = data; }

    [[nodiscard]] HWND Handle() const { return hwnd_; }
    [[nodiscard]] int Id() const { return id_; }
    /// True when the control lies on the white banner strip.
    [[nodiscard]] bool OnBanner() const { return onBanner_; }
    /// True for a frame without a caption: a rule or a plain box, which the form paints
    /// itself (a window of its own would paint over the controls inside it).
    [[nodiscard]] static bool IsDecoration(const clsFormControl& data) {
        return data.kind == ControlKind::Frame && data.caption.empty();
    }

    /// The caption as the window shows it: lone line feeds as CR LF.
    [[nodiscard]] static std::wstring WindowText(const std::string& caption);

private:
    void ApplyCaption(const std::string& caption);
    void ApplyItems(const clsFormControl& data);
    void ApplyPicture(const std::string& picture);
    void ApplyValue(const clsFormControl& data);
    /// Visible in the data, and for a picture only with something to show.
    [[nodiscard]] bool Showing(const clsFormControl& data) const;

    HWND hwnd_ = nullptr;
    int id_;
    ControlKind kind_;
    bool onBanner_ = false;
    int width_ = 0;    ///< pixels, for a bitmap stretched to the control
    int height_ = 0;
    HBITMAP bitmap_ = nullptr;
    bool icon_ = false;
    bool showing_ = false;
    clsFormControl shown_;
    std::unique_ptr<clsWin32TreeList> tree_;   ///< only for the component tree
};

} // namespace tovel
