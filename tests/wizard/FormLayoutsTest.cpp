// The layout tables of both form sets: one controller serves a page and its "frmMSI" twin
// only if both carry the same controls, the captions of the language texts reach a control
// only if its name is spelt as the texts spell it, and a renderer can draw a form only if its
// controls lie inside it and do not cover each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "language/clsBuiltinTexts.h"
#include "language/clsLanguage.h"
#include "wizard/mdlFormLayouts.h"

namespace tovel {
namespace {

using ControlId = std::pair<std::string, int>;

std::set<ControlId> ControlIds(const clsForm& form) {
    std::set<ControlId> ids;
    for (const auto& c : form.Controls()) ids.emplace(c.name, c.index);
    return ids;
}

std::string Describe(const clsFormControl& c) {
    return c.name + (c.index >= 0 ? "(" + std::to_string(c.index) + ")" : "");
}

bool IsTwinName(const std::string& name) { return name.rfind("frmMSI", 0) == 0; }

// The classic form whose controls a form must carry (itself for a classic form).
std::string ClassicOf(const std::string& name) { return FormNameInSet(name, true); }

// The wizard's pages in their order, then the pages it reaches from there.
const std::vector<std::string> kPages = {
    "frmWelcome",       "frmSetupLanguage", "frmWelcome2",    "frmReadme",      "frmSearch",
    "frmOldVersion",    "frmLicense",       "frmInformation", "frmIdentification", "frmDestination",
    "frmLanguages",     "frmUpdateOrNew",   "frmSetupType",   "frmBusSystem",   "frmCustomSetup",
    "frmInstallation",  "frmDone",          "frmBrowseDir"};

TEST(FormLayouts, EveryNameBuildsItsOwnFreshForm) {
    const auto names = FormNames();
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size()) << "a name listed twice";
    // Classic first: no classic name after the first twin.
    const auto firstTwin = std::find_if(names.begin(), names.end(), IsTwinName);
    EXPECT_TRUE(std::all_of(firstTwin, names.end(), IsTwinName));
    for (const auto& page : kPages) EXPECT_NE(std::find(names.begin(), names.end(), page), names.end()) << page;

    for (const auto& name : names) {
        clsForm form = CreateForm(name);
        EXPECT_EQ(form.Name(), name);
        EXPECT_GT(form.Width(), 0) << name;
        EXPECT_GT(form.Height(), 0) << name;
        EXPECT_FALSE(form.Controls().empty()) << name;
        // A page shown twice starts afresh, whatever its controller did to it the first time.
        const auto before = ControlIds(form);
        form.Controls().front().caption = "changed";
        form.Add({.name = "Extra"});
        const clsForm again = CreateForm(name);
        EXPECT_EQ(ControlIds(again), before) << name;
        EXPECT_NE(again.Controls().front().caption, "changed") << name;
    }
    // Names are matched as the dialog order's collection matches them, without case.
    EXPECT_EQ(CreateForm("FRMmsiReadme").Name(), "frmMSIReadMe");
}

TEST(FormLayouts, UnknownNameGivesAnEmptyFormOfThatName) {
    for (const std::string name : {"frmNoSuchPage", "", "frmMSI", "frmWelcome3"}) {
        clsForm form = CreateForm(name);
        EXPECT_EQ(form.Name(), name);
        EXPECT_TRUE(form.Controls().empty()) << name;
        EXPECT_TRUE(form.Timers().empty()) << name;
        EXPECT_EQ(form.Control("ContinueBtn"), nullptr);
        EXPECT_EQ(FormNameInSet(name, false), name);
        EXPECT_EQ(FormNameInSet(name, true), name);
    }
}

TEST(FormLayouts, TwinsCarryTheControlsAndTimersOfTheirClassicPage) {
    int twins = 0;
    for (const auto& name : FormNames()) {
        if (!IsTwinName(name)) continue;
        ++twins;
        const std::string classic = ClassicOf(name);
        ASSERT_NE(classic, name) << name << " has no classic page";
        clsForm twin = CreateForm(name);
        clsForm page = CreateForm(classic);
        EXPECT_EQ(ControlIds(twin), ControlIds(page)) << name << " against " << classic;
        std::set<std::string> twinTimers, pageTimers;
        for (const auto& t : twin.Timers()) twinTimers.insert(t.name);
        for (const auto& t : page.Timers()) pageTimers.insert(t.name);
        EXPECT_EQ(twinTimers, pageTimers) << name;
        // Captions reach a twin through its classic page's section.
        EXPECT_EQ(clsLanguage::ClassicFormName(name), classic) << name;
        // The twins look different: a set that shared the classic geometry would be no set.
        EXPECT_NE(std::make_pair(twin.Width(), twin.Height()), std::make_pair(page.Width(), page.Height())) << name;
    }
    EXPECT_EQ(twins, 18);
    EXPECT_EQ(ClassicOf("frmMSICustomSetupGolden"), "frmCustomSetup");
}

TEST(FormLayouts, FormNameInSetMapsEveryPage) {
    const auto names = FormNames();
    for (const auto& page : kPages) {
        EXPECT_EQ(FormNameInSet(page, true), page);
        const std::string twin = FormNameInSet(page, false);
        EXPECT_NE(std::find(names.begin(), names.end(), twin), names.end()) << page << " -> " << twin;
        EXPECT_EQ(FormNameInSet(twin, true), page) << "a twin's name leads back to its page";
        EXPECT_EQ(FormNameInSet(twin, false), twin);
    }
    EXPECT_EQ(FormNameInSet("frmWelcome2", false), "frmMSIWelcome2");
    EXPECT_EQ(FormNameInSet("frmReadme", false), "frmMSIReadMe");
    EXPECT_EQ(FormNameInSet("frmBusSystem", false), "frmMSIBussystem");
    EXPECT_EQ(FormNameInSet("frmLanguages", false), "frmMSILanguage");
    EXPECT_EQ(FormNameInSet("frmCustomSetup", false), "frmMSICustomSetup");
    // One look in both sets.
    EXPECT_EQ(FormNameInSet("frmMessage", false), "frmMessage");
    EXPECT_EQ(FormNameInSet("frmInstallation", false), "frmInstallation");
    EXPECT_EQ(FormNameInSet("frmmessage", false), "frmMessage");
}

TEST(FormLayouts, ControlsLieInsideTheirFormAndDoNotCoverEachOther) {
    auto right = [](const clsFormControl& c) { return c.left + c.width; };
    auto bottom = [](const clsFormControl& c) { return c.top + c.height; };
    auto contains = [&](const clsFormControl& outer, const clsFormControl& inner) {
        return (outer.kind == ControlKind::Frame || outer.kind == ControlKind::Image) && outer.left <= inner.left &&
               outer.top <= inner.top && right(inner) <= right(outer) && bottom(inner) <= bottom(outer);
    };
    for (const auto& name : FormNames()) {
        const clsForm form = CreateForm(name);
        const auto& controls = form.Controls();
        for (const auto& c : controls) {
            EXPECT_TRUE(c.width > 0 && c.height > 0) << name << " " << Describe(c) << " has no size";
            EXPECT_TRUE(c.left >= 0 && c.top >= 0 && right(c) <= form.Width() && bottom(c) <= form.Height())
                << name << " " << Describe(c) << " lies outside the form";
        }
        for (size_t i = 0; i < controls.size(); ++i) {
            for (size_t j = i + 1; j < controls.size(); ++j) {
                const auto& a = controls[i];
                const auto& b = controls[j];
                if (!a.visible || !b.visible) continue;
                const bool overlap = a.left < right(b) && b.left < right(a) && a.top < bottom(b) && b.top < bottom(a);
                EXPECT_FALSE(overlap && !contains(a, b) && !contains(b, a))
                    << name << ": " << Describe(a) << " and " << Describe(b) << " cover each other";
            }
        }
    }
}

TEST(FormLayouts, EnterAndEscPressOneVisibleButtonAndPagesCanBeLeft) {
    // Pages that go on by themselves or end with a button of their own, and the dialogs.
    const std::set<std::string> noContinue = {"frmWelcome", "frmSearch", "frmOldVersion", "frmInstallation",
                                              "frmDone",    "frmMessage", "frmBrowseDir"};
    for (const auto& name : FormNames()) {
        const clsForm form = CreateForm(name);
        if (!noContinue.contains(ClassicOf(name))) {
            EXPECT_NE(form.Control("ContinueBtn"), nullptr) << name;
            EXPECT_NE(form.Control("CancelBtn"), nullptr) << name;
        }
        int defaults = 0, cancels = 0;
        for (const auto& c : form.Controls()) {
            if (!c.isDefault && !c.isCancel) continue;
            EXPECT_EQ(c.kind, ControlKind::CommandButton) << name << " " << Describe(c);
            // A renderer that sends Enter to a hidden button would strand the user.
            EXPECT_TRUE(c.visible) << name << " " << Describe(c);
            defaults += c.isDefault ? 1 : 0;
            cancels += c.isCancel ? 1 : 0;
        }
        EXPECT_LE(defaults, 1) << name;
        EXPECT_LE(cancels, 1) << name;
        const clsFormControl* next = form.Control("ContinueBtn");
        if (next != nullptr && next->visible) {
            EXPECT_TRUE(next->isDefault) << name;
        }
        const clsFormControl* cancel = form.Control("CancelBtn");
        if (cancel != nullptr && cancel->visible) {
            EXPECT_TRUE(cancel->isCancel) << name;
        }
        // Every form but the one that goes on by itself shows a button to leave it by.
        if (ClassicOf(name) != "frmWelcome") {
            EXPECT_TRUE(std::any_of(form.Controls().begin(), form.Controls().end(), [](const clsFormControl& c) {
                return c.kind == ControlKind::CommandButton && c.visible && c.enabled;
            })) << name << " cannot be left";
        }
    }
}

TEST(FormLayouts, BuiltinCaptionsReachTheirControlsInBothSets) {
    // The forms whose captions a classic page's section serves.
    std::map<std::string, std::vector<std::string>> served;
    for (const auto& name : FormNames()) served[ClassicOf(name)].push_back(name);

    // Texts a controller puts into another control instead of the usual one.
    const std::set<std::pair<std::string, std::string>> alternatives = {{"frmDone", "DoneInstructionsCancelled"}};
    int checked = 0;
    for (const auto& text : clsBuiltinTexts::All()) {
        const std::string section(text.section);
        if (section.rfind("frm", 0) != 0 || alternatives.contains({section, std::string(text.key)})) continue;
        std::string control(text.key);
        int index = -1;
        if (const auto open = control.find('('); open != std::string::npos) {
            index = std::stoi(control.substr(open + 1));
            control.erase(open);
        }
        ASSERT_TRUE(served.contains(section)) << "texts for a form no table lays out: " << section;
        for (const auto& name : served[section]) {
            EXPECT_NE(CreateForm(name).Control(control, index), nullptr) << name << " lacks " << text.key;
            ++checked;
        }
    }
    EXPECT_GT(checked, 100);
}

TEST(FormLayouts, StatesTheControllersStartFrom) {
    for (const bool oldForms : {true, false}) {
        SCOPED_TRACE(oldForms ? "classic" : "MSI");
        clsForm install = CreateForm(FormNameInSet("frmInstallation", oldForms));
        ASSERT_NE(install.Timer("JobTimer1"), nullptr);
        EXPECT_EQ(install.Timer("JobTimer1")->intervalMs, 2000);
        EXPECT_FALSE(install.Timer("JobTimer1")->enabled) << "the page starts the run once it is set up";

        clsForm done = CreateForm(FormNameInSet("frmDone", oldForms));
        EXPECT_FALSE(done.Control("RestartNote")->visible);
        EXPECT_FALSE(done.Control("RestartWindowsYes")->visible);
        EXPECT_FALSE(done.Control("RestartWindowsNo")->visible);
        EXPECT_FALSE(CreateForm(FormNameInSet("frmWelcome", oldForms)).Control("cmdClose")->visible);

        // The licence can be accepted in each set: by Yes in the classic one, by the option
        // and Next in the MSI one; never both ways at once.
        const clsForm licence = CreateForm(FormNameInSet("frmLicense", oldForms));
        const bool buttons = licence.Control("YesBtn")->visible && licence.Control("NoBtn")->visible;
        const bool options = licence.Control("optYes")->visible && licence.Control("optNo")->visible &&
                             licence.Control("ContinueBtn")->visible;
        EXPECT_NE(buttons, options);
        EXPECT_EQ(licence.Control("optYes")->value, 0) << "accepting is the user's choice";
        EXPECT_TRUE(licence.Control("LicenseText")->multiLine && licence.Control("LicenseText")->locked);
    }
    // An image names the Setups.ini key of its bitmap (the message form's icons are the
    // message class's own).
    const std::set<std::string> keys = {"WelcomeBmp", "WelcomeBmp2", "LeftSideBmp"};
    for (const auto& name : FormNames()) {
        if (name == "frmMessage") continue;
        const clsForm form = CreateForm(name);
        for (const auto& c : form.Controls()) {
            if (c.kind != ControlKind::Image) continue;
            EXPECT_TRUE(keys.contains(c.picture)) << name << " " << Describe(c) << ": " << c.picture;
        }
    }
}

} // namespace
} // namespace tovel
