// The setup language: its texts from the disc and built in, and how captions reach controls.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "common/clsCodePage.h"
#include "language/clsBuiltinTexts.h"
#include "language/clsLanguage.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {
namespace {

constexpr uint32_t kLocales[] = {1031, 2057, 1036, 3082, 1040, 1041};

// The values ("%1".."%9") a text expects.
std::set<char> ValuesOf(std::string_view text) {
    std::set<char> values;
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%') continue;
        if (text[i + 1] >= '1' && text[i + 1] <= '9') values.insert(text[i + 1]);
        ++i;
    }
    return values;
}

class LanguageTest : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        clsLanguageTextFile::SetReporter([this](const std::string& line, bool problem) {
            if (problem) problems_.push_back(line);
        });
    }
    void TearDown() override {
        clsLanguageTextFile::SetReporter(nullptr);
        BedFixture::TearDown();
    }
    void WriteDiscFile(const std::string& relative, const std::string& bytes) {
        ASSERT_TRUE(Platform().Files().CreateFolder(bed_->folder + "Lang"));
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + relative, bytes));
    }

    std::vector<std::string> problems_;
};

TEST(BuiltinTextsTest, EveryTextIsThereInAllSixLanguages) {
    std::set<std::string> seen;
    for (const auto& row : clsBuiltinTexts::All()) {
        const std::string name = std::string(row.section) + "/" + std::string(row.key);
        EXPECT_TRUE(seen.insert(name).second) << name << " is there twice";
        if (row.section == clsBuiltinTexts::kTextsSection) {
            EXPECT_EQ(row.key.find_first_not_of("0123456789"), std::string_view::npos) << name;
        }
        const auto english = row.text[clsBuiltinTexts::kEnglish];
        for (size_t language = 0; language < clsBuiltinTexts::kLanguageCount; ++language) {
            const auto text = row.text[language];
            EXPECT_FALSE(text.empty()) << name << " language " << language;
            EXPECT_EQ(ValuesOf(text), ValuesOf(english)) << name << " language " << language;
            EXPECT_EQ(clsBuiltinTexts::Find(row.section, row.key, language), text) << name;
            // Each text must survive its own code page: the byte-copy path and a Western
            // Windows carry nothing else. The setup-language page names each language in
            // itself, so its options are in the code page of the language they name.
            size_t codePageOf = language;
            if (row.section == "frmSetupLanguage" && row.key.starts_with("LanguageOption(")) {
                codePageOf = static_cast<size_t>(row.key[15] - '0');
            }
            const uint32_t codePage = codePageOf == 5 ? 932 : 1252;
            const auto bytes = clsCodePage::FromUtf8(text, codePage);
            ASSERT_TRUE(bytes) << name;
            EXPECT_EQ(clsCodePage::ToUtf8(*bytes, codePage), std::string(text)) << name << " language " << language;
        }
    }
    // The numbers the program asks for.
    for (const int id : {TextNo::kCancel, TextNo::kCancelQuestion, TextNo::kNo, TextNo::kOk, TextNo::kYes,
                         TextNo::kRestartBeforeInstall, TextNo::kUnsupportedSystem, TextNo::kNoAdminRights,
                         TextNo::kWrongDisc, TextNo::kIeOldAskContinue, TextNo::kIeOldSetupEnds,
                         TextNo::kIeMissingContinue, TextNo::kPackageMissing, TextNo::kPathMissing,
                         TextNo::kNotEnoughSpace, TextNo::kNoProductSelected, TextNo::kDriveNotAllowed,
                         TextNo::kInvalidPath, TextNo::kDoneTitleCancelled, TextNo::kDoneCancelled, TextNo::kDoneAborted,
                         TextNo::kDoneSomeFailed, TextNo::kSearching, TextNo::kFileNotOpened, TextNo::kCloseQuestion,
                         TextNo::kInsertDisc, TextNo::kSetupFileMissing, TextNo::kResumeInsertDisc,
                         TextNo::kRestartResumes, TextNo::kRestartStartAgain, TextNo::kRemovingOldVersion,
                         TextNo::kStatusWaiting, TextNo::kStatusInstalling, TextNo::kStatusInstalled,
                         TextNo::kStatusSkipped, TextNo::kStatusFailed, TextNo::kCriticalFailed}) {
        EXPECT_TRUE(clsBuiltinTexts::Find("Texts", std::to_string(id), 0)) << id;
    }
    // Every page of the wizard has its captions, and the pages' control arrays all their elements.
    for (const char* form : {"frmWelcome", "frmSetupLanguage", "frmWelcome2", "frmReadme", "frmSearch", "frmOldVersion",
                             "frmLicense", "frmInformation", "frmIdentification", "frmDestination", "frmLanguages",
                             "frmUpdateOrNew", "frmSetupType", "frmBusSystem", "frmCustomSetup", "frmInstallation",
                             "frmDone"}) {
        bool any = false;
        for (const auto& row : clsBuiltinTexts::All()) any = any || row.section == form;
        EXPECT_TRUE(any) << form;
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(clsBuiltinTexts::Find("frmSetupLanguage", "LanguageOption(" + std::to_string(i) + ")", 0)) << i;
        EXPECT_TRUE(clsBuiltinTexts::Find("frmLanguages", "LanguageCheckBox(" + std::to_string(i) + ")", 0)) << i;
    }
    EXPECT_FALSE(clsBuiltinTexts::Find("Texts", "104", 6));
    // The text the environment check shows when nothing else is there.
    EXPECT_EQ(clsBuiltinTexts::Find("Texts", "201", clsBuiltinTexts::kEnglish),
              "Please restart Windows before installing new programs!");
}

TEST_F(LanguageTest, NumberedTextsFollowTheLanguage) {
    clsLanguage language;
    EXPECT_EQ(language.LanguageID(), 2057u);
    const char* yes[] = {"Ja", "Yes", "Oui", "Sí", "Sì", "はい"};
    for (size_t i = 0; i < 6; ++i) {
        language.SetLanguageID(kLocales[i]);
        EXPECT_EQ(language.LanguageIndex(), i);
        EXPECT_EQ(language.LoadResString(TextNo::kYes), yes[i]) << kLocales[i];
    }
    // Other locales of the six languages, and languages the setup does not have.
    const struct {
        uint32_t lcid;
        const char* yes;
    } others[] = {{2055, "Ja"}, {1033, "Yes"}, {3084, "Oui"}, {1034, "Sí"}, {2064, "Sì"}, {1049, "Yes"}, {0, "Yes"}};
    for (const auto& o : others) {
        language.SetLanguageID(o.lcid);
        EXPECT_EQ(language.LoadResString(TextNo::kYes), o.yes) << o.lcid;
    }
    language.SetLanguageID(1031);
    EXPECT_EQ(language.LoadResString(TextNo::kNotEnoughSpace, {"D:", "1200", "800"}),
              "Auf Laufwerk D: ist nicht genügend Speicherplatz frei.\r\nBenötigt: 1200 MB, verfügbar: 800 MB.\r\n"
              "Bitte schaffen Sie Platz oder wählen Sie ein anderes Laufwerk.");
    EXPECT_TRUE(problems_.empty());
    EXPECT_EQ(language.LoadResString(9999), "");
    ASSERT_EQ(problems_.size(), 1u);
    EXPECT_NE(problems_[0].find("9999"), std::string::npos);
}

TEST(LanguageFormatTest, FormatTextKeepsWhatIsNotItsOwn) {
    EXPECT_EQ(clsLanguage::FormatText("one%ntwo"), "one\r\ntwo");
    EXPECT_EQ(clsLanguage::FormatText("%1 of %2", {"3", "7"}), "3 of 7");
    EXPECT_EQ(clsLanguage::FormatText("%1 and %2", {"only"}), "only and %2");
    EXPECT_EQ(clsLanguage::FormatText("100 %% sure, 50 %"), "100 % sure, 50 %");
    EXPECT_EQ(clsLanguage::FormatText("%AppTitleShort% in %WindowsFolder%"), "%AppTitleShort% in %WindowsFolder%");
    EXPECT_EQ(clsLanguage::FormatText("%1", {"%2"}), "%2");   // values are not read again
    EXPECT_EQ(clsLanguage::FormatText("%"), "%");
    EXPECT_EQ(clsLanguage::ClassicFormName("frmMSILicense"), "frmLicense");
    EXPECT_EQ(clsLanguage::ClassicFormName("frmMSILanguage"), "frmLanguages");
    EXPECT_EQ(clsLanguage::ClassicFormName("frmmsireadme"), "frmReadme");
    EXPECT_EQ(clsLanguage::ClassicFormName("frmLicense"), "frmLicense");
    EXPECT_EQ(clsLanguage::TextFileName(1041), "Lang\\Japanese.txt");
    EXPECT_EQ(clsLanguage::TextFileName(1049), "Lang\\English.txt");
}

TEST_F(LanguageTest, DiscTextFileOverridesTheBuiltInTexts) {
    WriteDiscFile("Lang\\German.txt",
                  "[Language]\r\nCodePage=1252\r\n"
                  "[Texts]\r\n104=Setup von Tovel wirklich abbrechen?\r\n9999=Nur auf dieser CD\r\n"
                  "[Common]\r\nBackBtn=<< Zur\xFC" "ck\r\n"
                  "[frmWelcome2]\r\nWelcomeLabel1=Willkommen bei Tovel%nAutomation\r\nWelcomeLabel5=\r\n"
                  "[frmMSILicense]\r\noptYes=Ja, ich stimme zu\r\n"
                  "[frmLanguages]\r\nLanguageCheckBox(2)=Franz\xF6" "sisch (Frankreich)\r\n");
    clsLanguage language;
    language.SetLanguageID(1031);
    language.SetTextFolder(bed_->folder);
    EXPECT_EQ(language.IniFilePath(), bed_->folder + "Lang\\German.txt");

    EXPECT_EQ(language.LoadResString(TextNo::kCancelQuestion), "Setup von Tovel wirklich abbrechen?");
    EXPECT_EQ(language.LoadResString(TextNo::kCancel), "Abbrechen");
    EXPECT_EQ(language.LoadResString(9999), "Nur auf dieser CD");
    EXPECT_EQ(language.Caption("frmWelcome2", "WelcomeLabel1"), "Willkommen bei Tovel\r\nAutomation");
    EXPECT_EQ(language.Caption("frmMSIWelcome2", "WelcomeLabel1"), "Willkommen bei Tovel\r\nAutomation");
    EXPECT_EQ(language.Caption("frmWelcome2", "WelcomeLabel5"), "");   // cleared on purpose
    EXPECT_EQ(language.Caption("frmWelcome2", "WelcomeLabel3"),
              "Es wird dringend empfohlen, alle anderen Programme zu beenden, bevor Sie fortfahren.");
    EXPECT_EQ(language.Caption("frmLicense", "BackBtn"), "<< Zurück");
    EXPECT_EQ(language.Caption("frmLicense", "ContinueBtn"), "Weiter >");
    EXPECT_EQ(language.Caption("frmCustomSetup", "ContinueBtn"), "Installieren");
    EXPECT_EQ(language.Caption("frmMSILicense", "optYes"), "Ja, ich stimme zu");
    EXPECT_EQ(language.Caption("frmLicense", "optYes"), "Ich akzeptiere die Bedingungen des Lizenzvertrags");
    EXPECT_EQ(language.Caption("frmLanguages", "LanguageCheckBox", 2), "Französisch (Frankreich)");
    EXPECT_EQ(language.Caption("frmMSILanguage", "LanguageCheckBox", 3), "Spanisch");
    EXPECT_EQ(language.Caption("frmLanguages", "LanguageCheckBox"), "");
    EXPECT_EQ(language.Caption("frmDone", "Image1"), "");

    // Another language has no file on this disc: its built-in texts serve.
    language.SetLanguageID(1036);
    EXPECT_EQ(language.IniFilePath(), "");
    EXPECT_EQ(language.LoadResString(TextNo::kCancelQuestion), "Voulez-vous vraiment annuler l'installation ?");
    EXPECT_EQ(language.Caption("frmLicense", "BackBtn"), "< Précédent");
    EXPECT_EQ(language.LoadResString(9999), "");

    // The Japanese file, in its own code page, detected.
    WriteDiscFile("Lang\\Japanese.txt", "[Texts]\r\n112=\x82\xCD\x82\xA2\x81\x41\x91\xB1\x8D\x73\r\n");
    language.SetLanguageID(1041);
    EXPECT_EQ(language.LoadResString(TextNo::kYes), "はい、続行");
    EXPECT_EQ(language.LoadResString(TextNo::kNo), "いいえ");
    EXPECT_EQ(language.Caption("frmDone", "DoneBtn"), "完了");

    // A file given by path stays until the language changes.
    language.SetIniFilePath(bed_->folder + "Lang\\German.txt");
    EXPECT_EQ(language.LoadResString(9999), "Nur auf dieser CD");
    language.SetTextFolder("");
    EXPECT_EQ(language.LoadResString(9999), "");
    EXPECT_EQ(problems_.size(), 2u);   // only the two unknown 9999s
}

TEST_F(LanguageTest, CaptionExChoosesHowTheTextReachesTheControl) {
    // "日本語" in code page 932.
    const std::string nihongo932 = "\x93\xFA\x96\x7B\x8C\xEA";
    for (const char* kind : {"Label", "CommandButton", "Frame", "CheckBox", "OptionButton", "frmMessage"}) {
        const auto plan = clsLanguage::DecideCaption("日本語", 932, 1252, kind, 2);
        EXPECT_EQ(plan.path, CaptionPath::ByteCopy) << kind;
        EXPECT_EQ(plan.bytes, nihongo932) << kind;
        EXPECT_EQ(plan.buffer, "ZZZZZZ") << kind;
        EXPECT_EQ(plan.text, "日本語") << kind;
    }
    // A text in the system's own code page is set as it is.
    EXPECT_EQ(clsLanguage::DecideCaption("Zurück", 1252, 1252, "Label", 2),
              (CaptionPlan{CaptionPath::Direct, "Zurück", "", ""}));
    EXPECT_EQ(clsLanguage::DecideCaption("日本語", 932, 932, "Label", 1).path, CaptionPath::Direct);
    EXPECT_EQ(clsLanguage::DecideCaption("Zurück", 1252, 932, "OptionButton", 1),
              (CaptionPlan{CaptionPath::ByteCopy, "Zurück", "Zur\xFC" "ck", "ZZZZZZ"}));
    // Other controls go by the display mode.
    EXPECT_EQ(clsLanguage::DecideCaption("日本語", 932, 1252, "TextBox", 2),
              (CaptionPlan{CaptionPath::WideSetText, "日本語", "", ""}));
    EXPECT_EQ(clsLanguage::DecideCaption("日本語", 932, 1252, "TextBox", 1),
              (CaptionPlan{CaptionPath::NarrowSetText, "日本語", nihongo932, ""}));
    EXPECT_EQ(clsLanguage::DecideCaption("日本語", 932, 1252, "ListBox", 0).path, CaptionPath::Direct);
    EXPECT_EQ(clsLanguage::DecideCaption("Zurück", 1252, 1252, "frmWelcome2", 2).path, CaptionPath::WideSetText);
    EXPECT_EQ(clsLanguage::DisplayModeFor(2), 2);
    EXPECT_EQ(clsLanguage::DisplayModeFor(1), 1);

    // The same for the language at work on this machine (code page 1252 on both beds).
    ASSERT_EQ(clsLanguage::SystemCodePage(), 1252u);
    clsLanguage language;
    language.SetLanguageID(1041);
    EXPECT_EQ(language.CodePage(), 932u);
    EXPECT_EQ(language.CharSet(), 128);
    const auto yes = language.CaptionEx("CommandButton", TextNo::kYes, 2);
    EXPECT_EQ(yes.path, CaptionPath::ByteCopy);
    EXPECT_EQ(yes.bytes, "\x82\xCD\x82\xA2");
    EXPECT_EQ(yes.buffer, "ZZZZ");
    language.SetLanguageID(1031);
    EXPECT_EQ(language.CaptionEx("Label", "Schließen", 2).path, CaptionPath::Direct);
}

TEST_F(LanguageTest, ConversionToCodePageBytes) {
    EXPECT_EQ(clsLanguage::WToA("Zurück", 1252), "Zur\xFC" "ck");
    EXPECT_EQ(clsLanguage::WToA("はい", 932), "\x82\xCD\x82\xA2");
    EXPECT_EQ(clsLanguage::WToA("はい", 1252), "??");
    EXPECT_EQ(clsLanguage::WToA("", 932), "");
    EXPECT_TRUE(problems_.empty());
    EXPECT_EQ(clsLanguage::WToA("x", 4242), "");
    EXPECT_EQ(problems_.size(), 1u);

    ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "jp.txt", "[A]\r\nK=\x82\xCD\x82\xA2\x81\x41\r\n"));
    EXPECT_EQ(clsLanguage::DetectCodePageFromFile(bed_->folder + "jp.txt"), 932u);
    EXPECT_EQ(clsLanguage::DetectCodePageFromFile(bed_->folder + "none.txt"), 0u);
}

} // namespace
} // namespace tovel::test
