#pragma once
// The settings view's form (frmSettings): the disc's Setups.ini and description files in
// FileList, the chosen file's keys in KeyList (clsSettingsView::LineText), the chosen key's
// value in ValueText. Write writes the value typed, Use default removes the key; the list
// shows the file as read again afterwards.
#include <optional>
#include <string>
#include <vector>

#include "configtool/clsSettingsView.h"
#include "configtool/clsToolForm.h"

namespace tovel {

class clsControlSettings : public clsToolForm {
public:
    /// root: the disc's folder, a Windows path with a trailing "\"; file and line: what to
    /// show first (a file's Windows path, else Setups.ini; the key on that line, else none).
    clsControlSettings(std::string root, std::string file = {}, size_t line = 0)
        : clsToolForm("frmSettings"), root_(std::move(root)), firstFile_(std::move(file)), firstLine_(line) {}

    /// Setups.ini first, then the description files below the product folder in search order.
    [[nodiscard]] static std::vector<std::string> Files(const std::string& root);

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;

private:
    void OpenFile(int file);
    void ShowKeys(int chosen);
    void ShowKey();
    void Write(bool useDefault);

    std::string root_;
    std::string firstFile_;
    size_t firstLine_;
    std::vector<std::string> files_;
    std::optional<clsSettingsView> view_;
};

} // namespace tovel
