// The pages with a mind of their own, each in a real dialog order whose factory makes only
// the page under test (the others are passed): the setup language and its LANGUAGES values,
// the product languages, the search with its status line and Cancel, the setup type and its
// run flags, the destination with its drives, free space and folder dialog, and the two
// interim pages of the component tree and the installation.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "common/mdlMessage.h"
#include "startup/Globals.h"
#include "tests/catalogue/CatalogueFixture.h"
#include "tests/wizard/ScriptedRenderer.h"
#include "wizard/WizardGlobals.h"
#include "wizard/pages/clsControlCustomSetup.h"
#include "wizard/pages/clsControlCustomSetupGolden.h"
#include "wizard/pages/clsControlDestination.h"
#include "wizard/pages/clsControlInstall.h"
#include "wizard/pages/clsControlLanguage.h"
#include "wizard/pages/clsControlSearch.h"
#include "wizard/pages/clsControlSetupLanguage.h"
#include "wizard/pages/clsControlSetupType.h"
#include "wizard/pages/clsControlWelcome2.h"
#include "wizard/clsDialogOrder.h"
#include "install/clsDumpFile.h"
#include "wizard/mdlWizard.h"
#include "wizard/uscTreeListView.h"

#ifndef _WIN32
#include <filesystem>
#include <fstream>

#include "platform/posix/clsMachinePlatform.h"
#endif

namespace tovel {
namespace {

using test::ChooseLine;
using test::Click;
using test::Inspect;
using test::Type;
using Action = test::ScriptedRenderer::Action;
using Lines = std::vector<std::string>;

// Flips the box of a tree line named by its product code, as Space or a script does.
Action Toggle(const std::string& code) {
    return [code](clsForm& form) {
        clsFormControl* tree = form.Control("ProductTree");
        form.RaiseNodeCheck("ProductTree", tree != nullptr ? uscTreeListView::Find(*tree, code) : -1);
    };
}

Lines Keys(clsForm& form) {
    Lines keys;
    for (const auto& node : form.Control("ProductTree")->nodes) keys.push_back(node.key + "/" + std::to_string(node.state));
    return keys;
}


class Pages : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        gLanguage = std::make_unique<clsLanguage>();   // English, the built-in texts
        SetRenderer(&renderer_);
        SetMessageBoxHandler([this](const std::string& text, int, const std::string&) {
            messages_.push_back(text);
            return answer_;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler(nullptr);
        SetRenderer(nullptr);
        gDialogOrder.reset();
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        ProductLanguages.clear();
        InstalledProductsFound.clear();
        OldVersionCount = 0;
        for (bool* flag : {&UserPacketOnly, &UpdatePacketsAllowed, &SetupCancelled, &SilentMode, &InstallationAborted, &RestartNeeded}) *flag = false;
        FailedProducts.clear();
        WorkFolder = bed_->folder;
        SetupLanguageCount = 0;
        ApplicationTitle = "TovelSetup";
        gLanguage.reset();
        CatalogueFixture::TearDown();
    }

    // Setups.ini with the log switch, read again as at a start.
    void Settings(const std::string& settings, const std::string& sections = "") {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n" + settings + sections);
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder->SetSettings(gSetupsIni.get());
    }

    // Reaches the page as the wizard does (Next on the page before it), with the user's
    // actions; the page stays alive in the dialog order for the test to look at.
    template <typename Page>
    Page& Run(std::vector<Action> actions) {
        renderer_.actions = std::move(actions);
        renderer_.next = 0;
        reached_.clear();
        page_ = nullptr;
        const std::string name = Page().Page();
        clsDialogOrder::Hooks hooks;
        hooks.controllers = [this, name](const std::string& page) -> std::unique_ptr<clsPageController> {
            reached_.push_back(page);
            if (page != name || page_ != nullptr) return nullptr;
            auto controller = std::make_unique<Page>();
            page_ = controller.get();
            return controller;
        };
        gDialogOrder = std::make_unique<clsDialogOrder>(hooks);
        gDialogOrder->Initialize();
        const auto& pages = gDialogOrder->Pages();
        const auto at = std::find_if(pages.begin(), pages.end(), [&](const clsDialogOrderItem& item) { return item.name == name; });
        EXPECT_NE(at, pages.end()) << name << " is not in the page list";
        gDialogOrder->NextDialog(at == pages.begin() || at == pages.end() ? std::string() : (at - 1)->name);
        EXPECT_NE(page_, nullptr) << name << " was not shown";
        EXPECT_EQ(renderer_.next, renderer_.actions.size()) << "not every action of the script was played";
        return *static_cast<Page*>(page_);
    }
    // The page the wizard asked for after the page under test; "" when none.
    std::string After(const std::string& page) const {
        const auto at = std::find(reached_.begin(), reached_.end(), page);
        return at == reached_.end() || at + 1 == reached_.end() ? std::string() : *(at + 1);
    }
    bool Logged(const std::string& text) const { return LogText().find(text) != std::string::npos; }
    static std::string Caption(clsForm& form, const std::string& control, int index = -1) {
        const clsFormControl* c = form.Control(control, index);
        return c != nullptr ? c->caption : "<no " + control + ">";
    }
    static clsSIFApplicationItem Product(const std::string& code, bool selected, int32_t megabytes = 0) {
        clsSIFApplicationItem item;
        item.ProductCode = code;
        item.Description = code + " product";
        item.LongDescription = "All about " + code;
        item.Selected = selected;
        item.CheckBox = selected ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
        item.DiskSpaceDestDrv = megabytes;
        return item;
    }

    test::ScriptedRenderer renderer_;
    clsPageController* page_ = nullptr;
    std::vector<std::string> reached_;
    std::vector<std::string> messages_;
    int answer_ = mb::kIdNo;
};

// ---- Setup language --------------------------------------------------------------------

TEST_F(Pages, SetupLanguageOptionsFollowTheLanguagesSectionAndTheChoiceBecomesTheSetupLanguage) {
    SetupLanguageCount = 5;
    Settings("", "[LANGUAGES]\r\nGerman=enable\r\nEnglish=Enable\r\nFrench=hide\r\nSpanish=disable\r\nItalian=maybe\r\n"
                 "[German]\r\nAppTitle=Tovel Einrichtung\r\n[English]\r\nAppTitle=Tovel Setup\r\n");
    auto& page = Run<clsControlSetupLanguage>({
        Inspect([](clsForm& form) {
            const bool visible[] = {true, true, false, true, true, true};   // Japanese: no key, so offered
            const bool enabled[] = {true, true, false, false, true, true};
            for (int i = 0; i < 6; ++i) {
                EXPECT_EQ(form.Control("LanguageOption", i)->visible, visible[i]) << i;
                EXPECT_EQ(form.Control("LanguageOption", i)->enabled, enabled[i]) << i;
                EXPECT_EQ(form.Control("LanguageOption", i)->value, i == 1 ? 1 : 0) << i;   // the current language
            }
            EXPECT_TRUE(form.Control("SetupLanguageBottomLabel")->visible);
            EXPECT_EQ(Caption(form, "LanguageOption", 0), "Deutsch");
        }),
        Click("LanguageOption", 3),   // greyed: nothing happens
        Click("LanguageOption", 0),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(page.Form().Control("LanguageOption", 3)->value, 0);
    EXPECT_EQ(DefaultLanguage, 0);
    EXPECT_EQ(gLanguage->LanguageID(), 1031u);
    EXPECT_EQ(gSetupsIni->AppTitle(), "Tovel Einrichtung");
    EXPECT_EQ(ApplicationTitle, "Tovel Einrichtung");
    EXPECT_EQ(gLanguage->Caption("frmWelcome2", "ContinueBtn"), "Weiter >");   // what the next page shows
    EXPECT_EQ(After("frmSetupLanguage"), "frmWelcome2");
    EXPECT_TRUE(Logged("Setup language chosen: German"));
}

TEST_F(Pages, SetupLanguageHiddenCurrentLanguageAndJapanese) {
    SetupLanguageCount = 4;
    // The current language (English) is hidden: the first one offered is chosen instead. The
    // Japanese texts of Setups.ini are Shift-JIS and come through the language text reader.
    Settings("SetupLanguageIsProgramLanguage=True\r\n",
             "[LANGUAGES]\r\nGerman=disable\r\nEnglish=hide\r\n"
             "[JAPANESE]\r\nAppTitle=\x93\xfa\x96\x7b\x8c\xea\r\n");
    Run<clsControlSetupLanguage>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("LanguageOption", 2)->value, 1);   // French
            EXPECT_FALSE(form.Control("SetupLanguageBottomLabel")->visible);
        }),
        Click("LanguageOption", 5),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(DefaultLanguage, 5);
    EXPECT_EQ(gLanguage->LanguageID(), 1041u);
    EXPECT_EQ(gSetupsIni->AppTitle(), "日本語");
    EXPECT_EQ(ApplicationTitle, "日本語");
}

// ---- Pictures --------------------------------------------------------------------------

TEST_F(Pages, PicturesAreTheFilesTheDiscNamesAndStayEmptyWithoutOne) {
    Settings("WelcomeBmp=Images\\Welcome.bmp\r\nLeftSideBmp=Images\\Side.bmp\r\n");
    Run<clsControlWelcome2>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("Image1")->picture, "Images\\Welcome.bmp");   // WelcomeBmp2 falls back
            EXPECT_EQ(form.Control("Image2")->picture, "Images\\Side.bmp");
        }),
        Click("ContinueBtn"),
    });
    Settings("");
    Run<clsControlWelcome2>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("Image1")->picture, "");
            EXPECT_EQ(form.Control("Image2")->picture, "");
        }),
        Click("ContinueBtn"),
    });
}

// ---- Product languages -----------------------------------------------------------------

TEST_F(Pages, ProductLanguagesOfferWhatTheProductsOfferAndRefuseAnEmptyChoice) {
    auto viewer = Product("VIEWER", true);
    viewer.AvailableLanguages = "JB";
    auto base = Product("BASE", true);
    base.AvailableLanguages = "BA";
    gApplications.AddItem(viewer);
    gApplications.AddItem(base);
    ProductLanguages = "ABJ";   // as the search leaves it: the page is shown
    Run<clsControlLanguage>({
        Inspect([](clsForm& form) {
            for (int i = 0; i < 6; ++i) {
                const bool offered = i == 0 || i == 1 || i == 5;
                EXPECT_EQ(form.Control("LanguageCheckBox", i)->visible, offered) << i;
                EXPECT_EQ(form.Control("LanguageCheckBox", i)->value, i == 1 ? 1 : 0) << i;   // the setup language
            }
        }),
        Click("LanguageCheckBox", 1),
        Click("ContinueBtn"),   // nothing chosen: refused
        Click("LanguageCheckBox", 5),
        Click("LanguageCheckBox", 0),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(messages_, Lines{"Please choose at least one language."});
    EXPECT_EQ(ProductLanguages, "AJ");
    EXPECT_EQ(After("frmLanguages"), "frmCustomSetup");
    EXPECT_TRUE(Logged("Verfügbare Sprachen=ABJ \r\n"));
    EXPECT_TRUE(Logged("No product language chosen: the page stays."));
    EXPECT_TRUE(Logged("Gewählte Sprachen=AJ"));
}

TEST_F(Pages, ProductLanguagePresetIsTheSetupLanguageElseEnglishElseTheFirst) {
    const struct {
        int16_t setupLanguage;
        const char* available;
        const char* preset;
    } cases[] = {
        {0, "ABJ", "A"}, {2, "ABJ", "B"}, {2, "DJ", "D"}, {5, "CJ", "J"}, {1, "", ""},
    };
    for (const auto& c : cases) {
        DefaultLanguage = c.setupLanguage;
        EXPECT_EQ(clsControlLanguage::PresetLetter(c.available), c.preset) << c.setupLanguage << " " << c.available;
    }
}

// ---- Search ----------------------------------------------------------------------------

class SearchPage : public Pages {
protected:
    // A product installed in version 5.0 (German and English), one not installed (English and
    // Japanese), a packet and a file of another kind.
    void WriteDisc(const std::string& folder) {
        WriteFile(folder + "Base\\base.ssf",
                  "[GENERAL]\r\nFileType=ssf\r\nProductCode=BASE\r\nBuild=6.0\r\nSSFVersion=5.2\r\n"
                  "[LANGUAGES]\r\nLanguageA=German\r\nLanguageB=English\r\n[English]\r\nDescription=Tovel Base\r\n"
                  "[VERSIONS]\r\nRegPath1=" + RegPath("Base") + "\r\nRegKey1=Version\r\nVersion1=5.0\r\n"
                  "Version1Action1=$TryUpdate$\r\n");
        WriteFile(folder + "Viewer\\viewer.ssf",
                  "[GENERAL]\r\nFileType=ssf\r\nProductCode=VIEWER\r\n"
                  "[LANGUAGES]\r\nLanguageB=English\r\nLanguageJ=Japanese\r\n[English]\r\nDescription=Tovel Viewer\r\n");
        WriteFile(folder + "typical.ssf", "[GENERAL]\r\nFileType=Collection\r\nProductCode=TYPICAL\r\nProductCode1=BASE\r\n");
        WriteFile(folder + "notes.ssf", "[GENERAL]\r\nFileType=readme\r\n");
        SetRegString("Base", "Version", "5.0");
    }
    // Every status line the page showed while the search let window messages run.
    void RecordStatus() {
        renderer_.onDoEvents = [this](clsForm& form) { status_.push_back(Caption(form, "StatusLabel")); };
    }
    std::vector<std::string> status_;
};

TEST_F(SearchPage, FillsTheCatalogueAndWhatTheLaterPagesDecideOnThenGoesOn) {
    WriteDisc("Disc\\");
    Settings("Path=" + bed_->folder + "Disc\r\n");
    InstalledProductsFound = {"left from an earlier search"};
    RecordStatus();
    Run<clsControlSearch>({});
    EXPECT_EQ(gApplications.Count(), 2);
    EXPECT_EQ(gPackets.Count(), 1);
    EXPECT_EQ(InstalledProductsFound, Lines{"Tovel Base 5.0"});
    EXPECT_EQ(OldVersionCount, 1);
    EXPECT_EQ(ProductLanguages, "ABJ");
    EXPECT_EQ(After("frmSearch"), "frmOldVersion");   // shown because an old version was found
    ASSERT_EQ(status_.size(), 3u);                     // the product folder and its two sub-folders
    for (const auto& line : status_) EXPECT_EQ(line, "Searching " + bed_->folder.substr(0, 2) + " ...");
    EXPECT_TRUE(Logged("Installed products found: 1"));
}

TEST_F(SearchPage, CancelStopsTheSearchOnlyWhenAnsweredYes) {
    WriteDisc("Disc\\");
    Settings("Path=" + bed_->folder + "Disc\r\n");
    renderer_.playInDoEvents = true;
    answer_ = mb::kIdNo;
    Run<clsControlSearch>({Click("CancelBtn")});   // heard while the first folder is searched
    EXPECT_EQ(messages_, Lines{"Are you sure you want to cancel the setup?"});
    EXPECT_FALSE(SetupCancelled);
    EXPECT_EQ(gApplications.Count(), 2);
    EXPECT_EQ(After("frmSearch"), "frmOldVersion");

    messages_.clear();
    answer_ = mb::kIdYes;
    RecordStatus();
    Run<clsControlSearch>({Click("CancelBtn")});
    EXPECT_EQ(messages_.size(), 1u);
    EXPECT_TRUE(SetupCancelled);
    EXPECT_EQ(reached_, (Lines{"frmSearch", "frmDone"}));
    EXPECT_EQ(status_.size(), 1u);        // no folder after the answer
    EXPECT_EQ(gApplications.Count(), 0);  // stopped before any file was read
    EXPECT_TRUE(Logged("The search was stopped"));
}

TEST_F(SearchPage, TheStatusLineNamesTheDiscDriveOrAShortenedServer) {
#ifdef _WIN32
    GTEST_SKIP() << "needs a disc drive and a network share of the emulated machine";
#else
    auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
    std::filesystem::create_directories(machine.Folder() + "/disc/Base");
    std::filesystem::create_directories(machine.Folder() + "/server/Base");
    machine.Config().drives.push_back({'D', DriveType::CdRom, "disc", std::nullopt});
    machine.Config().shares.push_back({"\\\\averyverylongserver\\products", machine.Folder() + "/server"});
    RecordStatus();

    Settings("Path=D\r\n");
    Run<clsControlSearch>({});
    EXPECT_EQ(status_, (Lines{"Searching D: ...", "Searching D: ..."}));

    status_.clear();
    Settings("Path=\\\\averyverylongserver\\products\r\n");
    Run<clsControlSearch>({});
    EXPECT_EQ(status_, (Lines{"Searching \\\\averyver ... ...", "Searching \\\\averyver ... ..."}));
#endif
}

// ---- Setup type ------------------------------------------------------------------------

class SetupTypePage : public Pages {
protected:
    void SetUp() override {
        Pages::SetUp();
        gApplications.AddItem(Product("BASE", true));
        gApplications.AddItem(Product("VIEWER", true));
        AddPacket("USERDEF", "User defined", true, false, {});
        AddPacket("TYPICAL", "Typical", true, true, {"base", "MISSING"});
        AddPacket("HIDDEN", "Hidden", false, true, {"VIEWER"});   // preselected, but not offered
    }
    void AddPacket(const std::string& code, const std::string& description, bool visible, bool preselected,
                   const std::vector<std::string>& products) {
        clsSIFPacketItem packet;
        packet.ProductCode = code;
        packet.Description = description;
        packet.LongDescription = description + " setup";
        packet.Visible = visible;
        packet.PreSelect = preselected ? CheckBoxState::kChecked : CheckBoxState::kUnchecked;
        packet.Selected = preselected;
        for (const auto& product : products) packet.Add(product);
        gPackets.AddItem(packet);
    }
    Lines SelectedPackets() const {
        Lines codes;
        for (const auto& packet : gPackets.Items()) {
            if (packet.Selected) codes.push_back(packet.ProductCode);
        }
        return codes;
    }
};

TEST_F(SetupTypePage, UserDefinedAloneSetsTheFirstFlagAndTheSettingDecidesTheSecond) {
    for (const bool allowed : {true, false}) {
        Settings(std::string("UserPackUPAllowed=") + (allowed ? "True" : "False") + "\r\n");
        for (auto& packet : gPackets.Items()) packet.Selected = packet.PreSelect == CheckBoxState::kChecked;
        Run<clsControlSetupType>({
            Inspect([](clsForm& form) {
                EXPECT_EQ(form.Control("SetupTypeList")->items, (Lines{"User defined", "Typical"}));
                EXPECT_EQ(form.Control("SetupTypeList")->value, 1);   // the preselected packet
                EXPECT_EQ(Caption(form, "DescriptionLabel"), "Typical setup");
            }),
            ChooseLine("SetupTypeList", 0),
            Inspect([](clsForm& form) { EXPECT_EQ(Caption(form, "DescriptionLabel"), "User defined setup"); }),
            Click("ContinueBtn"),
        });
        EXPECT_EQ(SelectedPackets(), Lines{"USERDEF"}) << allowed;
        EXPECT_TRUE(UserPacketOnly) << allowed;
        EXPECT_EQ(UpdatePacketsAllowed, allowed);
        EXPECT_FALSE(gApplications.Item(1)->Selected);   // no packet selected brings them in
        EXPECT_EQ(After("frmSetupType"), "frmCustomSetup");
    }
}

TEST_F(SetupTypePage, AnotherPacketClearsTheFirstFlagSetsTheSecondAndSelectsItsProducts) {
    Settings("UserPackUPAllowed=False\r\n");
    UserPacketOnly = true;
    Run<clsControlSetupType>({Click("ContinueBtn")});   // the preselected "Typical"
    EXPECT_EQ(SelectedPackets(), Lines{"TYPICAL"});
    EXPECT_FALSE(UserPacketOnly);
    EXPECT_TRUE(UpdatePacketsAllowed);
    EXPECT_TRUE(gApplications.Item(1)->Selected);    // "base" names BASE in any case
    EXPECT_FALSE(gApplications.Item(2)->Selected);
    EXPECT_TRUE(Logged("I'm missing a product with the description 'MISSING'"));
    EXPECT_FALSE(Logged("description 'base'"));
}

// ---- Destination -----------------------------------------------------------------------

class DestinationPage : public Pages {
protected:
    void SetUp() override {
        Pages::SetUp();
        auto base = Product("BASE", true, 300);
        base.DefaultPath = "C:\\Program Files\\Tovel\\Base";
        gApplications.AddItem(base);
        gApplications.AddItem(Product("VIEWER", true, 400));
        gApplications.AddItem(Product("EXTRA", false, 10000));   // not selected: not counted
    }
#ifndef _WIN32
    // C: 500 MB free, E: 5000 MB, a CD-ROM, a removable and a network drive.
    void Drives() {
        auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
        auto& drives = machine.Config().drives;
        drives.erase(std::remove_if(drives.begin(), drives.end(), [](const DriveMapping& d) { return d.letter != 'C'; }),
                     drives.end());
        drives.front().freeBytes = 500ull << 20;
        for (const char* folder : {"drive_d", "drive_e", "drive_n", "drive_r"}) {
            std::filesystem::create_directories(machine.Folder() + "/" + folder);
        }
        drives.push_back({'D', DriveType::CdRom, "drive_d", std::nullopt});
        drives.push_back({'E', DriveType::Fixed, "drive_e", 5000ull << 20});
        drives.push_back({'N', DriveType::Remote, "drive_n", 7000ull << 20});
        drives.push_back({'R', DriveType::Removable, "drive_r", std::nullopt});
    }
#endif
    static Lines DriveLetters(clsForm& form, const std::string& list) {
        Lines letters;
        for (const auto& item : form.Control(list)->items) letters.push_back(item.substr(0, 2));
        return letters;
    }
};

TEST_F(DestinationPage, RefusesADriveTooSmallAndStoresTheChoiceInEveryRecord) {
#ifdef _WIN32
    GTEST_SKIP() << "needs drives whose free space the test sets";
#else
    Drives();
    Settings("OnlyFixedDrivesAllowed=True\r\n");
    Run<clsControlDestination>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("DestDriveList")->items, (Lines{"C:  500 MB", "E:  5000 MB"}));
            EXPECT_EQ(form.Control("DestDriveList")->value, 0);
            EXPECT_EQ(Caption(form, "DestPathText"), "C:\\Program Files\\Tovel\\Base");
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: 700 MB");
            EXPECT_EQ(Caption(form, "SpaceAvailableLabel"), "Space available: 500 MB");
            EXPECT_TRUE(form.Control("DataDriveList")->visible);
        }),
        Click("ContinueBtn"),
        ChooseLine("DestDriveList", 1),
        Inspect([](clsForm& form) {
            EXPECT_EQ(Caption(form, "DestPathText"), "E:\\Program Files\\Tovel\\Base");
            EXPECT_EQ(Caption(form, "SpaceAvailableLabel"), "Space available: 5000 MB");
        }),
        ChooseLine("DataDriveList", 0),
        Click("ContinueBtn"),
    });
    ASSERT_EQ(messages_.size(), 1u);
    EXPECT_EQ(messages_[0],
              "There is not enough free space on drive C:.\r\nRequired: 700 MB, available: 500 MB.\r\n"
              "Please free some space or choose another drive.");
    EXPECT_TRUE(Logged("Not enough free space on drive C: (required 700 MB, available 500 MB): the page stays."));
    for (const auto& item : gApplications.Items()) {
        EXPECT_EQ(item.DestDrive, "E:") << item.ProductCode;
        EXPECT_EQ(item.DestPath, "E:\\Program Files\\Tovel\\Base") << item.ProductCode;
        EXPECT_EQ(item.DataDrive, "C:") << item.ProductCode;
    }
    EXPECT_EQ(After("frmDestination"), "frmCustomSetup");
#endif
}

TEST_F(DestinationPage, OnlyFixedDrivesWhenTheSettingSaysSoAndNeverACdRom) {
#ifdef _WIN32
    GTEST_SKIP() << "needs drives of every type on the emulated machine";
#else
    Drives();
    Settings("AskForDataDrive=False\r\n");
    Run<clsControlDestination>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(DriveLetters(form, "DestDriveList"), (Lines{"C:", "E:", "N:", "R:"}));
            EXPECT_EQ(form.Control("DestDriveList")->items.back(), "R:");   // a removable drive is not asked
            EXPECT_FALSE(form.Control("DataDriveList")->visible);
            EXPECT_FALSE(form.Control("DataDriveLabel")->visible);
        }),
        Type("DestPathText", "N:\\Tovel"),
        Click("ContinueBtn"),
    });
    EXPECT_TRUE(messages_.empty());
    EXPECT_EQ(gApplications.Item(1)->DataDrive, "N:");   // without the question: the destination drive

    Settings("OnlyFixedDrivesAllowed=True\r\nAskForDataDrive=False\r\n");
    Run<clsControlDestination>({
        Inspect([](clsForm& form) { EXPECT_EQ(DriveLetters(form, "DestDriveList"), (Lines{"C:", "E:"})); }),
        Type("DestPathText", "N:\\Tovel"),
        Inspect([](clsForm& form) { EXPECT_EQ(form.Control("DestDriveList")->value, -1); }),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(messages_, Lines{"Drive N: cannot be used.\r\nPlease choose a local hard disk."});
    EXPECT_EQ(gApplications.Item(1)->DestPath, "N:\\Tovel");   // the earlier choice stays
#endif
}

TEST_F(DestinationPage, TheFolderDialogAndAPathThatIsNoFullPath) {
    for (auto& item : gApplications.Items()) item.DiskSpaceDestDrv = 0;   // any drive has room
    WriteFile("Target\\B\\keep.txt", "");
    WriteFile("Target\\A\\keep.txt", "");
    const std::string target = bed_->folder + "Target";
    Settings("");
    Run<clsControlDestination>({
        Type("DestPathText", "Program Files\\Tovel"),
        Click("ContinueBtn"),   // no drive: refused
        Type("DestPathText", target + "\\New\\"),
        Click("BrowseBtn"),
        // The folder dialog: the nearest folder that exists is listed.
        Inspect([&](clsForm& form) {
            EXPECT_EQ(form.Control("FolderList")->items, (Lines{"..", "A", "B"}));
            EXPECT_EQ(Caption(form, "PathText"), target + "\\New");
        }),
        Click("CancelBtn"),   // leaves the dialog only
        Inspect([&](clsForm& form) { EXPECT_EQ(Caption(form, "DestPathText"), target + "\\New\\"); }),
        Click("BrowseBtn"),
        ChooseLine("FolderList", 2),
        Inspect([&](clsForm& form) {
            EXPECT_EQ(Caption(form, "PathText"), target + "\\B");
            EXPECT_EQ(form.Control("FolderList")->items, (Lines{".."}));
        }),
        Click("OKBtn"),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(messages_, Lines{"The path \"Program Files\\Tovel\" is not valid.\r\nPlease enter a full path including the drive letter."});
    for (const auto& item : gApplications.Items()) {
        EXPECT_EQ(item.DestPath, target + "\\B");
        EXPECT_EQ(item.DestDrive, target.substr(0, 2));
    }
    EXPECT_EQ(After("frmDestination"), "frmCustomSetup");
}

TEST_F(DestinationPage, TheComponentPageRefusesASelectionTooBigForItsDrive) {
#ifdef _WIN32
    GTEST_SKIP() << "needs drives whose free space the test sets";
#else
    Drives();
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: C: 700 MB");
            EXPECT_EQ(Caption(form, "SpaceAvailableLabel"), "Space available: C: 500 MB");
        }),
        Click("ContinueBtn"),
        Toggle("VIEWER"),
        Click("ContinueBtn"),
    });
    EXPECT_EQ(messages_, (Lines{"There is not enough free space on drive C:.\r\nRequired: 700 MB, available: 500 MB.\r\n"
                                "Please free some space or choose another drive."}));
    EXPECT_TRUE(Logged("Not enough free space on drive C: (required 700 MB, available 500 MB): the page stays."));
    EXPECT_EQ(After("frmCustomSetup"), "frmInstallation");   // 300 MB fit
#endif
}

TEST_F(DestinationPage, TheComponentPageMovesAProductToAnotherDriveAndItsSpaceFollows) {
#ifdef _WIN32
    GTEST_SKIP() << "needs drives whose free space the test sets";
#else
    Drives();
    gApplications.Item(1)->DestPath = "C:\\Program Files\\Tovel\\Base";
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Name(), "frmCustomSetup");
            const clsFormControl& list = *form.Control("DriveList");
            EXPECT_TRUE(list.visible);
            EXPECT_EQ(list.items, (Lines{"C:", "E:", "R:"}));   // no CD-ROM, no network drive
            EXPECT_EQ(list.value, 0);                            // BASE, under the cursor, on C:
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: C: 700 MB");
        }),
        Click("ContinueBtn"),   // 700 MB do not fit C:
        ChooseLine("DriveList", 1),
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("ProductTree")->nodes[0].drive, "E:");
            EXPECT_EQ(form.Control("DriveList")->value, 1);
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: E: 300 MB, C: 400 MB");
            EXPECT_EQ(Caption(form, "SpaceAvailableLabel"), "Space available: E: 5000 MB, C: 500 MB");
        }),
        ChooseLine("ProductTree", 1),
        Inspect([](clsForm& form) { EXPECT_EQ(form.Control("DriveList")->value, 0); }),   // VIEWER stays on C:
        Click("ContinueBtn"),
    });
    EXPECT_EQ(messages_.size(), 1u);
    EXPECT_EQ(gApplications.Item(1)->DestDrive, "E:");
    EXPECT_EQ(gApplications.Item(1)->DestPath, "E:\\Program Files\\Tovel\\Base");
    EXPECT_EQ(gApplications.Item(2)->DestDrive, "");
    EXPECT_TRUE(Logged("Component BASE moved to drive E: (was not set)."));
    EXPECT_EQ(After("frmCustomSetup"), "frmInstallation");
#endif
}

TEST_F(DestinationPage, TheGoldenPageTellsWhatAProductNeedsAndMovesOnlyProductsThatMayMove) {
#ifdef _WIN32
    GTEST_SKIP() << "needs drives whose free space the test sets";
#else
    Drives();
    Settings("OldForms=False\r\nGoldenComponentDialog=True\r\nOnlyFixedDrivesAllowed=True\r\n");
    EXPECT_NE(dynamic_cast<clsControlCustomSetupGolden*>(MakePageController("frmCustomSetup").get()), nullptr);
    gApplications.Item(2)->ShowDriveSelectionInComponentDialog = false;
    Run<clsControlCustomSetupGolden>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Name(), "frmMSICustomSetupGolden");
            EXPECT_EQ(form.Control("DriveList")->items, (Lines{"C:", "E:"}));
            EXPECT_EQ(Caption(form, "DescriptionLabel"), "All about BASE\nNeeds 300 MB on drive C:.");
        }),
        ChooseLine("DriveList", 1),
        Inspect([](clsForm& form) { EXPECT_EQ(Caption(form, "DescriptionLabel"), "All about BASE\nNeeds 300 MB on drive E:."); }),
        ChooseLine("DriveList", 7),   // a line the list does not have: BASE stays on E:
        ChooseLine("ProductTree", 1),
        Inspect([](clsForm& form) {
            EXPECT_EQ(form.Control("ProductTree")->nodes[1].drive, "");   // VIEWER may not move
            EXPECT_FALSE(form.Control("DriveList")->enabled);
            EXPECT_EQ(form.Control("DriveList")->value, -1);
        }),
        ChooseLine("DriveList", 1),   // a script may still choose a line: nothing moves
        Click("ContinueBtn"),
    });
    EXPECT_EQ(gApplications.Item(1)->DestDrive, "E:");
    EXPECT_EQ(gApplications.Item(2)->DestDrive, "");
    EXPECT_TRUE(Logged("Component BASE: no drive offered on line 7, not moved."));
    EXPECT_EQ(After("frmCustomSetup"), "frmInstallation");
    // The classic set keeps the plain page, and without the disc's drive choice there is none.
    Settings("GoldenComponentDialog=True\r\nShowDriveSelectionInComponentDialog=False\r\n");
    EXPECT_EQ(dynamic_cast<clsControlCustomSetupGolden*>(MakePageController("frmCustomSetup").get()), nullptr);
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) {
            EXPECT_FALSE(form.Control("DriveList")->visible);
            EXPECT_FALSE(form.Control("DriveLabel")->visible);
        }),
        Click("ContinueBtn"),
    });
#endif
}

// ---- The interim component and installation pages ---------------------------------------

TEST_F(Pages, TheComponentTreeShowsPacketsAndProductsAndABoxChangesItsRecord) {
    clsSIFPacketItem packet;
    packet.ProductCode = "STATION";
    packet.Description = "Station";
    packet.Selected = true;
    for (const char* code : {"beta", "ALPHA", "GAMMA"}) packet.Add(code);   // codes as a packet file writes them
    gPackets.AddItem(packet);
    auto hidden = Product("GAMMA", true);
    hidden.HideInstall = true;
    auto invisible = Product("DELTA", false);
    invisible.Visible = false;
    auto grey = Product("EPSILON", true);
    grey.DoGrayChkBox = true;
    for (const auto& item : {Product("ALPHA", true, 120), Product("BETA", false, 30), hidden, invisible, grey}) gApplications.AddItem(item);
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(Keys(form), (Lines{"STATION/0", "BETA/2", "ALPHA/1", "EPSILON/1"}));
            const auto& tree = *form.Control("ProductTree");
            EXPECT_EQ(tree.nodes[1].level, 1);
            EXPECT_EQ(tree.nodes[3].level, 0);   // outside every packet
            EXPECT_TRUE(tree.nodes[3].grey);
            EXPECT_EQ(tree.items.size(), 5u);    // the legend's names
            EXPECT_EQ(tree.value, 1);            // the cursor starts on the first box
            EXPECT_EQ(Caption(form, "DescriptionLabel"), "All about BETA");
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: C: 120 MB");
        }),
        Toggle("BETA"),
        Inspect([](clsForm& form) {
            EXPECT_EQ(Keys(form)[1], "BETA/1");
            EXPECT_EQ(Caption(form, "SpaceRequiredLabel"), "Space required: C: 150 MB");
        }),
        ChooseLine("ProductTree", 2),
        Inspect([](clsForm& form) { EXPECT_EQ(Caption(form, "DescriptionLabel"), "All about ALPHA"); }),
        Click("ContinueBtn"),
    });
    EXPECT_TRUE(gApplications.Item(2)->Selected);
    EXPECT_TRUE(gApplications.Item(3)->Selected);    // hidden, installed all the same
    EXPECT_FALSE(gApplications.Item(4)->Selected);   // invisible, left as it was
    EXPECT_EQ(gApplications.Item(4)->CheckBox, CheckBoxState::kUnchecked);
    EXPECT_TRUE(Logged("Component BETA selected by the user."));
    EXPECT_TRUE(Logged("Selected products: ALPHA BETA GAMMA EPSILON"));
    EXPECT_EQ(After("frmCustomSetup"), "frmInstallation");
}

TEST_F(Pages, ALockedBoxStaysAndTheStatusLineSaysWhoLockedIt) {
    auto base = Product("BASE", true);
    base.AddSetupDependence("VIEWER", DependenceType::Force, "");   // BASE forces VIEWER in and locks it
    auto always = Product("LICENSE", false);
    always.AlwaysInstall = true;
    for (const auto& item : {base, Product("VIEWER", false), always}) gApplications.AddItem(item);
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) { EXPECT_EQ(Keys(form), (Lines{"BASE/1", "VIEWER/4", "LICENSE/4"})); }),
        Toggle("VIEWER"),
        Inspect([](clsForm& form) {
            EXPECT_EQ(Keys(form)[1], "VIEWER/4");
            EXPECT_EQ(Caption(form, "StatusLabel"), "VIEWER product is needed by BASE product and cannot be changed.");
        }),
        Toggle("LICENSE"),
        Inspect([](clsForm& form) {
            EXPECT_EQ(Caption(form, "StatusLabel"), "LICENSE product cannot be changed on this computer.");
        }),
        ChooseLine("ProductTree", 0),
        Inspect([](clsForm& form) { EXPECT_EQ(Caption(form, "StatusLabel"), ""); }),   // a move clears it
        Click("ContinueBtn"),
    });
    EXPECT_TRUE(gApplications.Item(2)->Selected);
    EXPECT_TRUE(gApplications.Item(3)->Selected);   // always installed
    EXPECT_TRUE(Logged("Component VIEWER is locked by BASE: not changed."));
}

TEST_F(Pages, AnEmptySelectionIsRefusedWithAMessage) {
    gApplications.AddItem(Product("BASE", true));
    Run<clsControlCustomSetup>({
        Toggle("BASE"),
        Click("ContinueBtn"),
        Inspect([this](clsForm& form) {
            EXPECT_TRUE(form.Shown());
            EXPECT_EQ(messages_, (Lines{"Please select at least one product."}));
        }),
        Toggle("BASE"),
        Click("ContinueBtn"),
    });
    EXPECT_TRUE(Logged("No product is selected: the page stays."));
    EXPECT_EQ(After("frmCustomSetup"), "frmInstallation");
}

TEST_F(Pages, OnlyTheChosenPacketsProductsShowAndInstalledOnesAreGreyWithUPGrayCheckBox) {
    Settings("OnlyPacketProductCodeListIsVisible=True\r\nUPGrayCheckBox=True\r\nShowDriveSelectionInComponentDialog=False\r\n"
             "ShowDiskSpaceInComponentDialog=False\r\n");
    clsSIFPacketItem packet;
    packet.ProductCode = "RUNTIME";
    packet.Selected = true;
    packet.Add("BASE");
    gPackets.AddItem(packet);
    auto base = Product("BASE", true, 100);
    base.InstalledVersion = "1.0";
    for (const auto& item : {base, Product("OTHER", false)}) gApplications.AddItem(item);
    Run<clsControlCustomSetup>({
        Inspect([](clsForm& form) {
            EXPECT_EQ(Keys(form), (Lines{"RUNTIME/0", "BASE/1"}));
            const TreeListNode& node = form.Control("ProductTree")->nodes[1];
            EXPECT_TRUE(node.grey);
            EXPECT_EQ(node.megabytes, -1);   // no space shown
            EXPECT_EQ(node.drive, "");       // no drive shown
            EXPECT_FALSE(form.Control("SpaceRequiredLabel")->visible);
        }),
        Click("ContinueBtn"),
    });
}

TEST_F(Pages, TheInstallationPageListsTheChoiceAndAsksBeforeItIsAborted) {
    for (int i = 1; i <= 30; ++i) gApplications.AddItem(Product("P" + std::to_string(i), i != 2));
    answer_ = mb::kIdNo;
    auto& page = Run<clsControlInstall>({Inspect([&](clsForm& form) {
                                             EXPECT_TRUE(form.Timer("JobTimer1")->enabled);
                                             answer_ = mb::kIdNo;
                                         }),
                                         Click("AbordBtn"),
                                         Inspect([&](clsForm& form) {
                                             // No: the run goes on.
                                             EXPECT_TRUE(form.Shown());
                                             EXPECT_TRUE(form.Timer("JobTimer1")->enabled);
                                             answer_ = mb::kIdYes;
                                         }),
                                         Click("AbordBtn")});
    clsForm& form = page.Form();
    EXPECT_EQ(Caption(form, "StatusLabel", 0), "P1 product");
    EXPECT_EQ(Caption(form, "StatusLabel", 1), "P3 product");   // P2 is not selected
    EXPECT_EQ(Caption(form, "StatusLabel2", 1), "Waiting");
    EXPECT_EQ(Caption(form, "ProgressLabel"), "0 / 29");
    for (const auto& c : form.Controls()) {
        if (c.name != "StatusLabel" || !c.visible) continue;
        EXPECT_LE(c.top + c.height, form.Control("ProgressLabel")->top) << c.index;
    }
    EXPECT_EQ(messages_.size(), 2U);
    EXPECT_TRUE(InstallationAborted);
    EXPECT_FALSE(form.Timer("JobTimer1")->enabled);
    EXPECT_EQ(After("frmInstallation"), "frmDone");
    EXPECT_TRUE(Logged("clsControlInstallation AbordBtn_Click vor  unload me \r\n"
                       "clsControlInstallation AbordBtn_Click nach unload me "));
    InstallationAborted = false;
}

TEST_F(Pages, TheInstallationPageLeavesWhenTheRunEnds) {
    gApplications.AddItem(Product("NONE", false));
    Run<clsControlInstall>({[](clsForm& form) { form.RaiseTimer("JobTimer1"); }});
    EXPECT_EQ(After("frmInstallation"), "frmDone");
    EXPECT_FALSE(InstallationAborted);
    EXPECT_TRUE(Logged("Installation:"));
}

#ifndef _WIN32
TEST_F(Pages, TheInstallationPageSavesTheRunWhenWindowsEndsIt) {
    WorkFolder = bed_->folder;
    gApplications.AddItem(Product("LATER", true));
    auto& page = Run<clsControlInstall>({[](clsForm&) {}});
    page.QueryUnload(clsControlInstall::kAppWindows);
    EXPECT_FALSE(page.Form().Shown());
    EXPECT_TRUE(Platform().Files().FileExists(bed_->folder + "INSTDUMP.TMP"));
    const auto runOnce = Platform().Registry().QueryValue(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce",
                                                          "ZZZ_TovelSetup");
    ASSERT_TRUE(runOnce.has_value());
    EXPECT_EQ(runOnce->text, clsDumpFile::ProgramPath());
}

TEST_F(Pages, AnUnattendedInstallationPageTicksByItself) {
    // Time on the machine moves only as the page waits for its ticks.
    auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
    std::filesystem::path clock = machine.Folder() + "/clock";
    { std::ofstream(clock) << "2026-11-22 12:00:00\n"; }
    gApplications.AddItem(Product("NONE", false));
    SilentMode = true;
    Run<clsControlInstall>({});
    EXPECT_EQ(After("frmInstallation"), "frmDone");
    std::ifstream in(clock);
    std::string now;
    std::getline(in, now);
    EXPECT_EQ(now, "2026-11-22 12:00:02.000");
}
#endif

} // namespace
} // namespace tovel
