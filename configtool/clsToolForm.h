#pragma once
// What every form of the configuration tool does alike: it makes its form from the tool's
// layouts, shows it modally, and closes it with Close or the close box. It never touches the
// wizard's dialog order: the tool is no part of the wizard.
#include <string>
#include <vector>

#include "wizard/clsForm.h"

namespace tovel {

class clsToolForm : public clsFormEvents {
public:
    explicit clsToolForm(const std::string& name);
    ~clsToolForm() override = default;
    clsToolForm(const clsToolForm&) = delete;
    clsToolForm& operator=(const clsToolForm&) = delete;

    /// Shows the form modally; returns once it is closed.
    void Show();
    [[nodiscard]] clsForm& Form() { return form_; }
    [[nodiscard]] const clsForm& Form() const { return form_; }

    void FormLoad() override { OnLoad(); }
    void Click(const std::string& control, int index) override;
    void FormQueryUnload() override { Close(); }

protected:
    virtual void OnLoad() {}
    virtual void OnClick(const std::string& /*control*/, int /*index*/) {}
    void Close() { form_.SetShown(false); }

    void SetText(const std::string& control, const std::string& text);
    [[nodiscard]] std::string Text(const std::string& control) const;
    /// Fills a list box and chooses a line (-1: none).
    void SetLines(const std::string& list, std::vector<std::string> lines, int chosen);
    /// The line chosen in a list box; -1 when none.
    [[nodiscard]] int ChosenLine(const std::string& list) const;

private:
    clsForm form_;
};

} // namespace tovel
