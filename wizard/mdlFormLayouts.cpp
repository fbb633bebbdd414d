#include "wizard/mdlFormLayouts.h"

#include <array>
#include <utility>

#include "common/clsString.h"

namespace tovel {

namespace {

// ---- Geometry ---------------------------------------------------------------------------

struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// A region of a form. The page tables place their controls by offsets inside it, so one
/// table serves both sets although their frames differ.
struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    [[nodiscard]] Rect At(int x, int y, int w, int h) const { return {left + x, top + y, w, h}; }
    /// From x to the right edge.
    [[nodiscard]] Rect Rest(int x, int y, int h) const { return At(x, y, width - x, h); }
    [[nodiscard]] Rect Row(int y, int h) const { return At(0, y, width, h); }
};

/// The frame a set puts around every page: size, title, picture strip, button row.
struct Look {
    bool msi = false;
    int width = 0;
    int height = 0;
    Rect banner{};        ///< the white strip at the top of an MSI page
    Rect bannerImage{};   ///< the small picture at the right of the banner
    Rect title{};
    Rect bannerLine{};    ///< the rule under the title
    Area content{};       ///< a page's own controls, between title and button row
    Rect strip{};         ///< the picture strip of the welcome and done pages
    Area beside{};        ///< the texts beside the strip
    Rect buttonLine{};    ///< the rule over the buttons
    int buttonTop = 0;
    int buttonWidth = 0;
    int buttonHeight = 0;
    int backLeft = 0;
    int continueLeft = 0;
    int cancelLeft = 0;    ///< also where a page's only button stands
    [[nodiscard]] Rect Button(int left) const { return {left, buttonTop, buttonWidth, buttonHeight}; }
};

// Classic pages: a title over a rule, Back and Next side by side, Cancel apart at the right.
constexpr Look kClassic{
    .msi = false, .width = 7200, .height = 5400,
    .banner = {0, 0, 7200, 600}, .bannerImage = {6360, 60, 720, 480},
    .title = {240, 150, 6720, 375}, .bannerLine = {120, 630, 6960, 30},
    .content = {240, 780, 6720, 3780},
    .strip = {120, 120, 2280, 4440}, .beside = {2640, 240, 4320, 4320},
    .buttonLine = {120, 4680, 6960, 30},
    .buttonTop = 4860, .buttonWidth = 1215, .buttonHeight = 375,
    .backLeft = 3195, .continueLeft = 4410, .cancelLeft = 5745,
};

// The look of Windows Installer dialogs, 370 x 270 dialog units: a white banner with the
// title and a small picture, rules under the banner and over the buttons, the welcome and
// done pictures down the whole left side.
constexpr Look kMsi{
    .msi = true, .width = 7485, .height = 5385,
    .banner = {0, 0, 7485, 870}, .bannerImage = {6585, 75, 780, 720},
    .title = {300, 180, 6135, 375}, .bannerLine = {0, 870, 7485, 30},
    .content = {300, 1020, 6885, 3540},
    .strip = {0, 0, 2490, 4665}, .beside = {2730, 300, 4455, 4260},
    .buttonLine = {0, 4665, 7485, 30},
    .buttonTop = 4845, .buttonWidth = 1133, .buttonHeight = 340,
    .backLeft = 3640, .continueLeft = 4773, .cancelLeft = 6150,
};

// ---- Controls ---------------------------------------------------------------------------

/// A control under construction; the tables chain only what differs from the defaults.
class Ctl {
public:
    Ctl(ControlKind kind, std::string_view name, Rect r, std::string_view caption) {
        c_.name = std::string(name);
        c_.kind = kind;
        c_.left = r.left;
        c_.top = r.top;
        c_.width = r.width;
        c_.height = r.height;
        c_.caption = std::string(caption);
    }
    Ctl Elem(int index) && { c_.index = index; return std::move(*this); }
    Ctl Shown(bool shown) && { c_.visible = shown; return std::move(*this); }
    Ctl Hidden() && { c_.visible = false; return std::move(*this); }
    Ctl Chosen() && { c_.value = 1; return std::move(*this); }
    Ctl Default(bool on = true) && { c_.isDefault = on; return std::move(*this); }
    Ctl Cancel(bool on = true) && { c_.isCancel = on; return std::move(*this); }
    Ctl ReadOnlyLines() && { c_.multiLine = c_.locked = true; return std::move(*this); }
    Ctl Shows(std::string_view bitmapKey) && { c_.picture = std::string(bitmapKey); return std::move(*this); }
    // Implicit, so that the tables hand a Ctl straight to clsForm::Add.
    operator clsFormControl() && { return std::move(c_); }

private:
    clsFormControl c_;
};

Ctl Label(std::string_view name, Rect r, std::string_view caption) { return {ControlKind::Label, name, r, caption}; }
Ctl Button(std::string_view name, Rect r, std::string_view caption) {
    return {ControlKind::CommandButton, name, r, caption};
}
Ctl Option(std::string_view name, Rect r, std::string_view caption) {
    return {ControlKind::OptionButton, name, r, caption};
}
Ctl Check(std::string_view name, Rect r, std::string_view caption) { return {ControlKind::CheckBox, name, r, caption}; }
Ctl Frame(std::string_view name, Rect r, std::string_view caption) { return {ControlKind::Frame, name, r, caption}; }
Ctl Edit(std::string_view name, Rect r) { return {ControlKind::TextBox, name, r, ""}; }
/// The text of a file the user reads and cannot change (licence, readme).
Ctl Memo(std::string_view name, Rect r) { return Ctl(ControlKind::TextBox, name, r, "").ReadOnlyLines(); }
Ctl List(std::string_view name, Rect r) { return {ControlKind::ListBox, name, r, ""}; }
/// The component tree (uscTreeListView); its lines come from the controller.
Ctl Tree(std::string_view name, Rect r) { return {ControlKind::TreeListView, name, r, ""}; }
/// The picture names the Setups.ini key of its bitmap; the controller resolves it.
Ctl Image(std::string_view name, Rect r, std::string_view bitmapKey) {
    return Ctl(ControlKind::Image, name, r, "").Shows(bitmapKey);
}

// ---- What the pages share ---------------------------------------------------------------

constexpr std::array<std::string_view, 6> kLanguageNames{"German", "English", "French", "Spanish", "Italian", "Japanese"};

// The caption of every form is the disc's application title, which the controller sets.
clsForm NewForm(std::string_view name, const Look& look) {
    return clsForm(std::string(name), "Setup", look.width, look.height);
}

// The classic set keeps the banner and its picture, hidden, so that both sets carry the same
// controls. A few pages title themselves with a control of their own name.
void AddTitle(clsForm& form, const Look& look, std::string_view titleName, std::string_view caption) {
    form.Add(Frame("BannerFrame", look.banner, "").Shown(look.msi));
    form.Add(Label(titleName, look.title, caption));
    form.Add(Image("BannerImage", look.bannerImage, "LeftSideBmp").Shown(look.msi));
    form.Add(Frame("BannerLine", look.bannerLine, ""));
}

enum ButtonSet : unsigned { kBack = 1, kContinue = 2, kCancel = 4, kAllButtons = 7 };

// The rule and, in this order, Back, Next and Cancel: Enter goes on, Esc asks to cancel.
void AddButtons(clsForm& form, const Look& look, unsigned which) {
    form.Add(Frame("ButtonLine", look.buttonLine, ""));
    if ((which & kBack) != 0) form.Add(Button("BackBtn", look.Button(look.backLeft), "< Back"));
    if ((which & kContinue) != 0) form.Add(Button("ContinueBtn", look.Button(look.continueLeft), "Next >").Default());
    if ((which & kCancel) != 0) form.Add(Button("CancelBtn", look.Button(look.cancelLeft), "Cancel").Cancel());
}

// A page whose only button ends it: Enter and Esc both press it.
void AddOnlyButton(clsForm& form, const Look& look, std::string_view name, std::string_view caption) {
    form.Add(Frame("ButtonLine", look.buttonLine, ""));
    form.Add(Button(name, look.Button(look.cancelLeft), caption).Default().Cancel());
}

// ---- The pages --------------------------------------------------------------------------

clsForm Welcome(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& b = look.beside;
    form.Add(Image("Image1", look.strip, "WelcomeBmp"));
    form.Add(Label("TitleLabel", b.Row(0, 600), "Welcome"));
    form.Add(Label("WelcomeLabel", b.Row(840, 720), "Preparing the setup. Please wait ..."));
    // The page goes on by itself; only the page tester closes it by hand.
    form.Add(Button("cmdClose", look.Button(look.cancelLeft), "Close").Hidden());
    return form;
}

clsForm SetupLanguage(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Setup language");
    form.Add(Label("SetupLanguageLabel", c.Row(0, 480), "Choose the language of the setup:"));
    for (int i = 0; i < 6; ++i) {
        form.Add(Option("LanguageOption", c.At(480, 600 + i * 375, 3000, 300), kLanguageNames[i]).Elem(i));
    }
    form.Add(Label("SetupLanguageBottomLabel", c.Row(2940, 600), "This choice applies to the setup only."));
    AddButtons(form, look, kContinue | kCancel);   // the first page the user answers: nothing to go back to
    return form;
}

clsForm Welcome2(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& b = look.beside;
    const Rect& s = look.strip;
    form.Add(Image("Image1", s, "WelcomeBmp2"));
    // The pages' own picture at the foot of the strip, over the welcome picture.
    form.Add(Image("Image2", {s.left + 240, s.top + s.height - 960, s.width - 480, 720}, "LeftSideBmp"));
    form.Add(Label("WelcomeLabel1", b.Row(0, 600), "Welcome to the setup"));
    form.Add(Label("WelcomeLabel2", b.Row(720, 960), "This program installs the products on this disc."));
    form.Add(Label("WelcomeLabel3", b.Row(1800, 720), "Please close all other programs first."));
    form.Add(Label("WelcomeLabel4", b.Row(2640, 480), "Click Next to continue."));
    form.Add(Label("WelcomeLabel5", b.Row(3360, 720), "This program is protected by copyright law."));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm Readme(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Readme");
    form.Add(Label("ReadmeLabel", c.Row(0, 480), "Please read the following notes."));
    form.Add(Memo("ReadmeText", c.Row(540, 2520)));
    form.Add(Button("ReadmeFormBtn", c.At(0, 3165, 1800, 375), "Open readme"));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm Search(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Searching for products");
    form.Add(Label("SearchLabel1", c.Row(0, 720), "Please wait while the products are found."));
    form.Add(Label("StatusLabel", c.Row(960, 255), "Searching ..."));
    AddButtons(form, look, kCancel);
    return form;
}

clsForm OldVersion(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Installed versions");
    form.Add(Label("OldVersionLabel", c.Row(0, 480), "These products are installed in an older version:"));
    form.Add(Memo("OldVersionText", c.Row(540, 3000)));
    AddOnlyButton(form, look, "OKBtn", "OK");
    return form;
}

clsForm License(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    const bool msi = look.msi;
    AddTitle(form, look, "License1Label", "Licence agreement");
    form.Add(Label("License2Label", c.Row(0, 255), "Please read the licence agreement."));
    form.Add(Label("LicenseInstructionLabel", c.Row(285, 255), "Press Page Down to see the rest."));
    form.Add(Memo("LicenseText", c.Row(600, 1800)));
    form.Add(Label("LicenseInstructionLabel2", c.Row(2460, 480), "Do you accept the licence agreement?"));
    // The classic page answers with Yes and No in the button row; the MSI page with the two
    // options and Next, starting from "do not accept" so that accepting is a choice.
    form.Add(Option("optYes", c.Row(2985, 255), "I accept the agreement").Shown(msi));
    form.Add(Option("optNo", c.Row(3285, 255), "I do not accept the agreement").Shown(msi).Chosen());
    AddButtons(form, look, kAllButtons);
    for (const char* hiddenInClassic : {"ContinueBtn", "CancelBtn"}) {
        clsFormControl* button = form.Control(hiddenInClassic);
        button->visible = msi;
        button->isDefault = button->isDefault && msi;
        button->isCancel = button->isCancel && msi;
    }
    form.Add(Button("YesBtn", look.Button(look.continueLeft), "Yes").Shown(!msi).Default(!msi));
    form.Add(Button("NoBtn", look.Button(look.cancelLeft), "No").Shown(!msi).Cancel(!msi));
    return form;
}

clsForm Information(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Information");
    form.Add(Label("InformationLabel", c.Row(0, 480), "Please read the following information."));
    form.Add(Memo("InformationText", c.Row(540, 3000)));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm Identification(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Customer information");
    form.Add(Label("IdentificationLabel", c.Row(0, 720), "Please enter your name and your company."));
    form.Add(Label("NameLabel", c.At(0, 960, 4800, 255), "Name:"));
    form.Add(Edit("NameText", c.At(0, 1230, 4800, 315)));
    form.Add(Label("CompanyLabel", c.At(0, 1800, 4800, 255), "Company:"));
    form.Add(Edit("CompanyText", c.At(0, 2070, 4800, 315)));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm Destination(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Destination drive");
    form.Add(Label("DestinationLabel", c.Row(0, 480), "Choose the drive for the products."));
    form.Add(Label("DestDriveLabel", c.Row(600, 255), "Drive for programs:"));
    form.Add(Edit("DestPathText", c.At(0, 900, c.width - 1335, 315)));
    form.Add(Button("BrowseBtn", c.At(c.width - 1215, 870, 1215, 375), "Change ..."));
    form.Add(List("DestDriveList", c.At(0, 1320, 2880, 960)));
    form.Add(Label("SpaceRequiredLabel", c.Rest(3240, 1320, 255), "Space required:"));
    form.Add(Label("SpaceAvailableLabel", c.Rest(3240, 1635, 255), "Space available:"));
    form.Add(Label("DataDriveLabel", c.Row(2400, 255), "Drive for project data:"));
    form.Add(List("DataDriveList", c.At(0, 2700, 2880, 840)));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm Languages(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Product languages");
    form.Add(Label("LanguagesLabel", c.Row(0, 480), "Choose the languages of the products."));
    // Elements 0 to 5 stand for the language letters A, B, C, D, E and J.
    for (int i = 0; i < 6; ++i) {
        form.Add(Check("LanguageCheckBox", c.At(480, 600 + i * 375, 3000, 300), kLanguageNames[i]).Elem(i));
    }
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm UpdateOrNew(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Update or new installation");
    form.Add(Label("UpdateOrNewLabel", c.Row(0, 720), "A version of the products is already installed."));
    form.Add(Option("UpdateOption", c.Rest(480, 960, 300), "Update the installed version"));
    form.Add(Option("NewInstOption", c.Rest(480, 1380, 300), "New installation"));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm SetupType(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Setup type");
    form.Add(Label("SetupTypeLabel", c.Row(0, 480), "Choose the setup type."));
    form.Add(List("SetupTypeList", c.At(0, 600, 3000, 2940)));
    form.Add(Frame("DescriptionFrame", c.Rest(3240, 540, 3000), "Description"));
    form.Add(Label("DescriptionLabel", c.At(3360, 840, c.width - 3480, 2580), ""));
    AddButtons(form, look, kAllButtons);
    return form;
}

clsForm BusSystem(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Bus system");
    form.Add(Label("BusSystemInstructions", c.Row(0, 720), "Choose the bus system of your devices."));
    form.Add(Image("Image1", c.At(0, 960, 1560, 2580), "LeftSideBmp"));
    constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kBuses{{
        {"Profibus", "PROFIBUS"}, {"Ethernet", "Ethernet"}, {"Ethernet2", "Ethernet (second variant)"},
        {"KWT", "KWT"}, {"NoNetwork", "No network"}}};
    for (int i = 0; i < 5; ++i) form.Add(Option(kBuses[i].first, c.Rest(1920, 960 + i * 420, 300), kBuses[i].second));
    AddButtons(form, look, kAllButtons);
    return form;
}

// The component page in two arrangements: the tree beside its description (both sets) or,
// in the MSI set's alternative page, over it. The status line under the tree says why a box
// did not move.
void AddComponentButtons(clsForm& form, const Look& look) {
    AddButtons(form, look, kAllButtons);
    form.Control("ContinueBtn")->caption = "Install";   // Next on this page starts the installation
}

// The drive of the product under the cursor, beside its label, from (x, y) of the content to
// its right edge; shown only when the disc lets products choose their drive on this page.
void AddDriveChoice(clsForm& form, const Area& c, int x, int y) {
    form.Add(Label("DriveLabel", c.At(x, y + 30, 900, 255), "Drive:").Hidden());
    form.Add(List("DriveList", c.Rest(x + 960, y, 360)).Hidden());
}

// The tree with the status line under it; the description of the line under the cursor and
// its drive beside it; the space the selection needs across the whole width at the foot, so
// that the longer captions of other languages fit.
clsForm CustomSetup(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Select components");
    form.Add(Label("CustomSetupLabel", c.Row(0, 480), "Select the products to install."));
    form.Add(Tree("ProductTree", c.At(0, 600, 3960, 2280)));
    form.Add(Label("StatusLabel", c.At(0, 2940, 3960, 255), ""));
    form.Add(Frame("DescriptionFrame", c.Rest(4200, 540, 2280), "Description"));
    form.Add(Label("DescriptionLabel", c.At(4320, 840, c.width - 4440, 1860), ""));
    AddDriveChoice(form, c, 4200, 2880);
    form.Add(Label("SpaceRequiredLabel", c.At(0, 3285, 3300, 255), "Space required:"));
    form.Add(Label("SpaceAvailableLabel", c.Rest(3360, 3285, 255), "Space available:"));
    AddComponentButtons(form, look);
    return form;
}

// The tree with the drive and the space beside it (two lines each, for the longer captions
// of other languages); under it the description across the whole width, as a product's text
// can be long.
clsForm CustomSetupGolden(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    const int column = c.width - 2760;
    AddTitle(form, look, "TitleLabel", "Select components");
    form.Add(Label("CustomSetupLabel", c.Row(0, 480), "Select the products to install."));
    form.Add(Tree("ProductTree", c.At(0, 600, column - 120, 1440)));
    AddDriveChoice(form, c, column, 600);
    form.Add(Label("SpaceRequiredLabel", c.Rest(column, 1080, 480), "Space required:"));
    form.Add(Label("SpaceAvailableLabel", c.Rest(column, 1560, 480), "Space available:"));
    form.Add(Label("StatusLabel", c.Row(2070, 255), ""));
    form.Add(Frame("DescriptionFrame", c.Row(2340, 1200), "Description"));
    form.Add(Label("DescriptionLabel", c.At(120, 2580, c.width - 240, 900), ""));
    AddComponentButtons(form, look);
    return form;
}

clsForm Installation(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Installation");
    form.Add(Label("InstallationLabel", c.Row(0, 480), "The selected products are being installed."));
    // Shown only when programs run before the products; the product lines then move down.
    form.Add(Label("StartOnBeginStatusLabel", c.At(0, 600, 3600, 255), "Preparatory programs").Hidden());
    form.Add(Label("StartOnBeginStatusLabel2", c.Rest(3720, 600, 255), "").Hidden());
    // Element 0 of the product lines (caption, status); the run adds one pair per product.
    form.Add(Label("StatusLabel", c.At(0, 600, 3600, 255), "Product").Elem(0).Hidden());
    form.Add(Label("StatusLabel2", c.Rest(3720, 600, 255), "Waiting").Elem(0).Hidden());
    form.Add(Label("ProgressLabel", c.Row(c.height - 255, 255), "0 / 0"));
    form.Add(Frame("ButtonLine", look.buttonLine, ""));
    // Frame1 goes and comes with the abort button, so it only surrounds it.
    const Rect abort = look.Button(look.cancelLeft);
    form.Add(Frame("Frame1", {abort.left - 120, abort.top - 90, abort.width + 240, abort.height + 180}, ""));
    form.Add(Button("AbordBtn", abort, "Abort"));
    // Each tick polls the running product setup; the page enables the timer once it is set up.
    form.AddTimer({"JobTimer1", 2000, false});
    return form;
}

clsForm Done(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& b = look.beside;
    form.Add(Image("Image1", look.strip, "WelcomeBmp"));   // the end mirrors the welcome
    form.Add(Label("TitleLabel", b.Row(0, 600), "Setup complete"));
    form.Add(Label("DoneInstructions", b.Row(720, 960), "Click Finish to close the setup."));
    // Shown only when a restart is needed.
    form.Add(Label("RestartNote", b.Row(1800, 480), "Some products need a restart of Windows.").Hidden());
    form.Add(Option("RestartWindowsYes", b.Rest(240, 2400, 300), "Yes, restart the computer now.").Hidden().Chosen());
    form.Add(Option("RestartWindowsNo", b.Rest(240, 2760, 300), "No, I will restart later.").Hidden());
    form.Add(Label("ReadmeRebootInstructions", b.Row(3240, 720), "Notes are in the readme files."));
    AddOnlyButton(form, look, "DoneBtn", "Finish");
    return form;
}

// The folder dialog of the destination page.
clsForm BrowseDir(std::string_view name, const Look& look) {
    clsForm form = NewForm(name, look);
    const Area& c = look.content;
    AddTitle(form, look, "TitleLabel", "Change folder");
    form.Add(Label("PathLabel", c.Row(0, 255), "Path:"));
    form.Add(Edit("PathText", c.Row(300, 315)));
    form.Add(Label("FolderLabel", c.Row(720, 255), "Folders:"));
    form.Add(List("FolderList", c.At(0, 1020, c.width, 1800)));
    form.Add(Label("DriveLabel", c.Row(2940, 255), "Drive:"));
    form.Add(List("DriveList", c.At(0, 3240, 3000, 300)));
    form.Add(Frame("ButtonLine", look.buttonLine, ""));
    form.Add(Button("OKBtn", look.Button(look.continueLeft), "OK").Default());
    form.Add(Button("CancelBtn", look.Button(look.cancelLeft), "Cancel").Cancel());
    return form;
}

// The message class sizes the form to its text and buttons and shows the icon and buttons
// that a style asks for; these are the sizes of a short message with one OK button.
clsForm Message(std::string_view name, const Look&) {
    clsForm form(std::string(name), "Setup", 6000, 2400);
    form.Add(Image("MessageIcon", {240, 240, 480, 480}, "").Hidden());
    form.Add(Label("MessageText", {960, 240, 4800, 1200}, "Message"));
    constexpr std::array<std::string_view, 4> kCaptions{"OK", "Cancel", "Retry", "Help"};
    for (int i = 0; i < 4; ++i) {
        form.Add(Button("MessageButton", {390 + i * 1335, 1800, 1215, 375}, kCaptions[i]).Elem(i).Shown(i == 0).Default(i == 0));
    }
    return form;
}

// ---- The tables -------------------------------------------------------------------------

using Builder = clsForm (*)(std::string_view name, const Look& look);

struct Page {
    std::string_view classic;
    std::string_view twin;   ///< "" when the form looks the same in both sets
    Builder build;
};

// In the order of the wizard, then the forms beside it. The twins keep their historical
// names, irregular spelling included.
constexpr Page kPages[] = {
    {"frmWelcome", "frmMSIWelcome", Welcome},
    {"frmSetupLanguage", "frmMSISetupLanguage", SetupLanguage},
    {"frmWelcome2", "frmMSIWelcome2", Welcome2},
    {"frmReadme", "frmMSIReadMe", Readme},
    {"frmSearch", "frmMSISearch", Search},
    {"frmOldVersion", "frmMSIOldVersion", OldVersion},
    {"frmLicense", "frmMSILicense", License},
    {"frmInformation", "frmMSIInformation", Information},
    {"frmIdentification", "frmMSIIdentification", Identification},
    {"frmDestination", "frmMSIDestination", Destination},
    {"frmLanguages", "frmMSILanguage", Languages},
    {"frmUpdateOrNew", "frmMSIUpdateOrNew", UpdateOrNew},
    {"frmSetupType", "frmMSISetupType", SetupType},
    {"frmBusSystem", "frmMSIBussystem", BusSystem},
    {"frmCustomSetup", "frmMSICustomSetup", CustomSetup},
    // The installation page has one look for both sets (and its captions one section).
    {"frmInstallation", "", Installation},
    {"frmDone", "frmMSIDone", Done},
    {"frmBrowseDir", "frmMSIBrowseDir", BrowseDir},
    {"frmMessage", "", Message},
};

// MSI forms beyond the twins: alternative pages with the controls of a classic one.
struct Variant {
    std::string_view name;
    std::string_view classic;
    Builder build;
};
constexpr Variant kVariants[] = {
    {"frmMSICustomSetupGolden", "frmCustomSetup", CustomSetupGolden},
};

bool Same(std::string_view a, std::string_view b) { return clsString::EqualNoCaseAscii(a, b); }

} // namespace

clsForm CreateForm(std::string_view name) {
    for (const Page& page : kPages) {
        if (Same(name, page.classic)) return page.build(page.classic, kClassic);
        if (!page.twin.empty() && Same(name, page.twin)) return page.build(page.twin, kMsi);
    }
    for (const Variant& variant : kVariants) {
        if (Same(name, variant.name)) return variant.build(variant.name, kMsi);
    }
    return clsForm(std::string(name), "", 0, 0);
}

std::vector<std::string> FormNames() {
    std::vector<std::string> names;
    for (const Page& page : kPages) names.emplace_back(page.classic);
    for (const Page& page : kPages) {
        if (!page.twin.empty()) names.emplace_back(page.twin);
    }
    for (const Variant& variant : kVariants) names.emplace_back(variant.name);
    return names;
}

std::string FormNameInSet(std::string_view classicName, bool oldForms) {
    for (const Page& page : kPages) {
        if (Same(classicName, page.classic) || (!page.twin.empty() && Same(classicName, page.twin))) {
            return std::string(oldForms || page.twin.empty() ? page.classic : page.twin);
        }
    }
    for (const Variant& variant : kVariants) {
        if (Same(classicName, variant.name)) return std::string(oldForms ? variant.classic : variant.name);
    }
    return std::string(classicName);
}

} // namespace tovel
