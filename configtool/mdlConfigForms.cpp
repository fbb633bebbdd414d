#include "configtool/mdlConfigForms.h"

#include <string>

namespace tovel {

namespace {

constexpr int kWidth = 9600;   // twips: 640 x 440 pixels at 96 dots per inch
constexpr int kHeight = 6600;
constexpr int kMargin = 240;
constexpr int kRow = 300;
constexpr int kButtonWidth = 1800;
constexpr int kButtonHeight = 375;
constexpr int kButtonTop = kHeight - kMargin - kButtonHeight;

clsFormControl Make(ControlKind kind, std::string name, int left, int top, int width, int height, std::string caption = {}) {
    clsFormControl c;
    c.kind = kind;
    c.name = std::move(name);
    c.left = left;
    c.top = top;
    c.width = width;
    c.height = height;
    c.caption = std::move(caption);
    return c;
}

clsFormControl Label(std::string name, int top, std::string caption, int height = kRow) {
    return Make(ControlKind::Label, std::move(name), kMargin, top, kWidth - 2 * kMargin, height, std::move(caption));
}

/// A button of the row at the bottom, counted from the right (0 the rightmost).
clsFormControl RowButton(std::string name, int fromRight, std::string caption) {
    const int left = kWidth - kMargin - (fromRight + 1) * kButtonWidth - fromRight * 120;
    return Make(ControlKind::CommandButton, std::move(name), left, kButtonTop, kButtonWidth, kButtonHeight, std::move(caption));
}

clsFormControl CloseButton() {
    clsFormControl close = RowButton("CloseBtn", 0, "Close");
    close.isCancel = true;
    return close;
}

clsFormControl List(std::string name, int left, int top, int width, int height) {
    return Make(ControlKind::ListBox, std::move(name), left, top, width, height);
}

clsForm MainForm() {
    clsForm form("frmConfigTool", "TovelSetup configuration tool", kWidth, 4200);
    form.Add(Label("TitleLabel", kMargin, "Configuration tool for disc authors"));
    form.Add(Label("DiscLabel", kMargin + kRow, "", 2 * kRow));
    const char* parts[][3] = {
        {"PageTesterBtn", "Page tester", "Any page of either form set, in any language, filled from this disc."},
        {"DiscCheckBtn", "Disc check", "Every mistake on the disc, with file, line and what to do."},
        {"SettingsBtn", "Settings", "Setups.ini and the description files, key by key; change and write back."},
    };
    int top = kMargin + 4 * kRow;
    for (const auto& part : parts) {
        form.Add(Make(ControlKind::CommandButton, part[0], kMargin, top, kButtonWidth, kButtonHeight, part[1]));
        form.Add(Make(ControlKind::Label, std::string(part[0]) + "Label", kMargin + kButtonWidth + 240, top + 40,
                      kWidth - 3 * kMargin - kButtonWidth, kRow, part[2]));
        top += kButtonHeight + 180;
    }
    clsFormControl close = CloseButton();
    close.top = 4200 - kMargin - kButtonHeight;
    form.Add(close);
    return form;
}

clsForm PageTester() {
    clsForm form("frmPageTester", "Page tester", kWidth, kHeight);
    form.Add(Label("SetLabel", kMargin, "Form set:"));
    clsFormControl classic = Make(ControlKind::OptionButton, "FormSetOption", kMargin, kMargin + kRow, 4400, kRow, "Classic forms (OldForms=True)");
    classic.index = 0;
    clsFormControl msi = Make(ControlKind::OptionButton, "FormSetOption", kMargin + 4560, kMargin + kRow, 4560, kRow,
                              "Windows Installer look (OldForms=False)");
    msi.index = 1;
    form.Add(classic);
    form.Add(msi);
    const int listTop = kMargin + 3 * kRow;
    const int listHeight = kButtonTop - listTop - 3 * kRow;
    form.Add(Make(ControlKind::Label, "LanguageLabel", kMargin, listTop - kRow, 2400, kRow, "Language:"));
    form.Add(List("LanguageList", kMargin, listTop, 2400, listHeight));
    form.Add(Make(ControlKind::Label, "PageLabel", kMargin + 2640, listTop - kRow, 6480, kRow, "Page:"));
    form.Add(List("PageList", kMargin + 2640, listTop, kWidth - 3 * kMargin - 2400, listHeight));
    form.Add(Label("StatusLabel", kButtonTop - 2 * kRow - 60, "", 2 * kRow));
    clsFormControl show = RowButton("ShowBtn", 1, "Show page");
    show.isDefault = true;
    form.Add(show);
    form.Add(CloseButton());
    return form;
}

clsForm DiscCheck() {
    clsForm form("frmDiscCheck", "Disc check", kWidth, kHeight);
    form.Add(Label("SummaryLabel", kMargin, "", 2 * kRow));
    form.Add(List("FindingList", kMargin, kMargin + 2 * kRow + 60, kWidth - 2 * kMargin, kButtonTop - 3 * kRow - 2 * kMargin));
    form.Add(RowButton("SettingsBtn", 2, "Open in settings"));
    form.Add(RowButton("RecheckBtn", 1, "Check again"));
    form.Add(CloseButton());
    return form;
}

clsForm Settings() {
    clsForm form("frmSettings", "Settings", kWidth, kHeight);
    const int keysTop = kMargin + 5 * kRow;
    form.Add(Label("FileLabel", kMargin, "File:"));
    form.Add(List("FileList", kMargin, kMargin + kRow, kWidth - 2 * kMargin, 3 * kRow));
    form.Add(List("KeyList", kMargin, keysTop, kWidth - 2 * kMargin, kButtonTop - keysTop - 5 * kRow));
    form.Add(Label("KeyLabel", kButtonTop - 4 * kRow - 60, "", 2 * kRow));
    form.Add(Make(ControlKind::TextBox, "ValueText", kMargin, kButtonTop - 2 * kRow - 60, kWidth - 2 * kMargin, 315));
    form.Add(Make(ControlKind::Label, "StatusLabel", kMargin, kButtonTop, kWidth - 4 * kMargin - 3 * kButtonWidth, 2 * kRow));
    clsFormControl write = RowButton("WriteBtn", 2, "Write");
    write.isDefault = true;
    form.Add(write);
    form.Add(RowButton("DefaultBtn", 1, "Use default"));
    form.Add(CloseButton());
    return form;
}

} // namespace

clsForm CreateConfigForm(std::string_view name) {
    if (name == "frmConfigTool") return MainForm();
    if (name == "frmPageTester") return PageTester();
    if (name == "frmDiscCheck") return DiscCheck();
    if (name == "frmSettings") return Settings();
    return clsForm(std::string(name), "", 0, 0);
}

} // namespace tovel
