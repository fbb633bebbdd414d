// The disc's Setups.ini through clsSetupsIni: every key under its name with its default, the
// Path rules and the fatal Path, the choice of the setup language, the language texts (the
// Japanese ones through a text reader), damaged files and the sample disc's own file.
// Runs on the emulated machine and under Wine; user languages other than the bed's and the
// sample disc are Linux-only.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "common/clsCodePage.h"
#include "common/clsFileDisk.h"
#include "common/mdlMessage.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsPlaceholder.h"
#include "settings/clsSetupsIni.h"
#include "tests/support/BedFixture.h"

#ifndef _WIN32
#include <fstream>

#include "platform/posix/clsMachinePlatform.h"
#endif

namespace tovel {
namespace {

class SetupsIni : public test::BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        SetMessageBoxHandler([this](const std::string& text, int style, const std::string&) {
            boxes_.push_back(text + "|" + std::to_string(style));
            return mb::kIdOk;
        });
    }
    void TearDown() override {
        SetMessageBoxHandler(nullptr);
        BedFixture::TearDown();
    }

    void Write(const std::string& text) {
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(bed_->folder + "Setups.ini", text));
    }
    void MakeFolder(const std::string& name) { ASSERT_TRUE(Platform().Files().CreateFolder(bed_->folder + name)); }
    clsSetupsIni::Hooks Hooks(bool expand = false) {
        clsSetupsIni::Hooks hooks;
        hooks.logLine = [this](const std::string& text) { lines_.push_back(text); };
        hooks.logHeading = [this](const std::string& text) { lines_.push_back("## " + text); };
        if (expand) hooks.expand = [this](const std::string& text) { return placeholder_.CheckForPlaceholder(text); };
        return hooks;
    }
    clsSetupsIni Read(bool expand = false) { return clsSetupsIni(Hooks(expand), bed_->folder); }
    // A file with the products' folder in place, so Path passes its check.
    void WriteWithProducts(const std::string& rest) {
        MakeFolder("Products");
        Write("[SETTINGS]\r\nPath=Products\r\n" + rest);
    }

    clsPlaceholder placeholder_;
    std::vector<std::string> lines_;
    std::vector<std::string> boxes_;
};

enum class Type { S, B, I };
struct KeyRow {
    std::string name;
    Type type;
    std::string defaultText;
};

// Every key of SETTINGS (but Path) and OS, in the order they are read, with its default:
// "=T" and "=F" Boolean, "=#n" a number, anything else a text.
std::vector<KeyRow> Keys() {
    static const char* const kTable[] = {
        "DiscID=", "PacketProductCodeIsOrder=F", "SetupMode=Batch", "InstType=", "Level=#3",
        "OnlyFixedDrivesAllowed=F", "AppTitleShort=", "BackgroundImage=", "CDTitle=", "CDTitleNotShow=F",
        "CheckPackageKey=", "CheckPackageName=", "CheckPackageValue=", "DeleteFileWhenReboot=", "DiscName=",
        "IEMinimumCondition=", "LeftSideBmp=", "LeftTopBackgroundImage=", "LeftBottomBackgroundImage=",
        "OnlyPacketProductCodeListIsVisible=F", "Packversion=", "PackversionKey=", "RightTopBackgroundImage=",
        "RightBottomBackgroundImage=", "UninstallKey=", "UPGrayCheckBox=F", "UserPackUPAllowed=F",
        "ValidIEVersion=99999", "WaitForApplicationTitle=", "WarningIE=F", "WarningValidIEVersion=",
        "WarningTermOSPlatform=#0", "WelcomeBmp=", "WelcomeBmp2=", "AskForDataDrive=T", "AutoResumeAfterRestart=T",
        "CheckForAdmin=T", "CheckMSI=F", "CheckDCOM=F", "CheckDotNet=F", "CDUpdateCheck=F", "CreateLogFile=F",
        "IfNoUpdateFormDoUpdate=F", "JumpOverParam=F", "OldForms=T", "PreCheckForIE=F", "SelectUpdate=F",
        "SetupLanguageIsProgramLanguage=F", "ShowDiskSpaceInComponentDialog=T", "ShowDriveSelectionForm=T",
        "ShowDriveSelectionInComponentDialog=T", "ShowNoPackageFormWhenPackageExist=F", "ShowIdentificationForm=T",
        "ShowSecondWelcomeForm=T", "ShowUpdateForm=F", "SoftSwitchIE=F", "WelcomeTimeout=#2",
        // OS
        "PlattformIDAllowed=", "Win95=F", "Win95Exclude=", "Win98=F", "Win98Exclude=", "WinMe=F", "WinNT4=F",
        "WinNT4Exclude=", "Win2k=F", "Win2kExclude=", "WinXP=F", "WinXPExclude=", "WinNETServer=F",
    };
    std::vector<KeyRow> rows;
    for (const std::string entry : kTable) {
        const size_t equals = entry.find('=');
        const std::string value = entry.substr(equals + 1);
        KeyRow row{entry.substr(0, equals), Type::S, value};
        if (value == "T" || value == "F") row = {row.name, Type::B, value == "T" ? "True" : "False"};
        if (value.starts_with('#')) row = {row.name, Type::I, value.substr(1)};
        rows.push_back(row);
    }
    return rows;
}
constexpr size_t kFirstOsKey = 57;

const char* const kTextKeys[] = {"AppTitle", "CheckPackageText", "VersionLabel",        "MsgSupportedOS",
                                 "MsgSupportedOS2", "Profibus", "Ethernet",         "Ethernet2",
                                 "KWT",      "NoNetwork",        "ReadMeStartMenuPath", "ReadMeCaption"};

TEST_F(SetupsIni, MissingFileKeepsEveryDefault) {
    const clsSetupsIni ini = Read();
    EXPECT_EQ(lines_, std::vector<std::string>{"SetupInifile existiert nicht."});
    EXPECT_FALSE(ini.PathFailed());
    EXPECT_EQ(ini.FilePath(), bed_->folder + "Setups.ini");
    EXPECT_EQ(ini.Path(), "");
    for (const auto& key : Keys()) EXPECT_EQ(ini.GetInfo(key.name), key.defaultText) << key.name;
    // No LANGUAGES section offers every language.
    for (int16_t language = 0; language < 6; ++language) {
        EXPECT_EQ(ini.LanguageSetting(language), "enable");
        EXPECT_EQ(ini.GetReadmeFile(language), "");
    }
    EXPECT_EQ(ini.SetupLanguageCount(), 5);
    EXPECT_TRUE(boxes_.empty());
}

TEST_F(SetupsIni, ReadsEveryKeyUnderItsName) {
    const auto keys = Keys();
    ASSERT_EQ(keys[kFirstOsKey].name, "PlattformIDAllowed");
    // Each key gets a value of its own: a text naming it, a number from its place, the
    // Boolean its default is not.
    const auto value = [&](size_t i, bool written) -> std::string {
        const KeyRow& key = keys[i];
        if (key.type == Type::I) return std::to_string(40 + i);
        if (key.type == Type::B) return key.defaultText == "True" ? (written ? " no " : "False") : (written ? "Yes" : "True");
        return "v-" + key.name;
    };
    std::string settings = "[SETTINGS]\r\nPath=Products\r\n";
    std::string os = "[OS]\r\n";
    for (size_t i = 0; i < keys.size(); ++i) {
        (i < kFirstOsKey ? settings : os) += keys[i].name + "=" + value(i, true) + "\r\n";
    }
    MakeFolder("Products");
    Write(settings + os);
    clsSetupsIni ini = Read();
    ASSERT_FALSE(ini.PathFailed());
    for (size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(ini.GetInfo(keys[i].name), value(i, false)) << keys[i].name;
    // The typed properties are the same members.
    EXPECT_EQ(ini.Level(), 44);
    EXPECT_TRUE(ini.CreateLogFile());
    EXPECT_EQ(ini.WelcomeBmp2(), "v-WelcomeBmp2");
    EXPECT_EQ(ini.GetInfo("setupmode"), "v-SetupMode");
    EXPECT_EQ(ini.GetInfo("path"), bed_->folder + "Products\\");
    EXPECT_EQ(ini.GetInfo("NoSuchKey"), "");

    // The level switch of the command line changes the level afterwards.
    ini.SetLevel(1);
    EXPECT_EQ(ini.GetInfo("Level"), "1");

    // Read again, everything starts from its default: a key gone is its default once more.
    Write("[SETTINGS]\r\nSetupMode=Single\r\n");
    ini.CheckINIFile();
    EXPECT_EQ(ini.SetupMode(), "Single");
    EXPECT_EQ(ini.Level(), 3);
    EXPECT_EQ(ini.Path(), "");
    EXPECT_FALSE(ini.Win95());
}

TEST_F(SetupsIni, PathRules) {
    struct Row {
        std::string written;
        std::string expected;
    };
    MakeFolder("Products");
    const std::string products = bed_->folder + "Products\\";
    const Row rows[] = {
        {"Products", products},
        {"Products\\", products},
        {"\"Products\"", products},
        {products.substr(0, products.size() - 1), products},
        {"%TempFolder%", clsFileDisk().TempFolder()},
        {"C", "C:\\"},
    };
    for (const auto& row : rows) {
        lines_.clear();
        Write("[SETTINGS]\r\nPath=" + row.written + "\r\n");
        const clsSetupsIni ini = Read(true);
        EXPECT_EQ(ini.Path(), row.expected) << row.written;
        EXPECT_FALSE(ini.PathFailed()) << row.written;
        EXPECT_TRUE(clsWindowsPath::EqualNoCase(clsFileDisk::AddBackslash(Platform().Files().CurrentFolder()),
                                                row.expected))
            << row.written;
    }
    // A lone letter is that drive's root, whether the drive exists or not.
    Write("[SETTINGS]\r\nPath=D\r\n");
    EXPECT_EQ(Read().Path(), "D:\\");

    // No Path, or an empty one: nothing to check, the current folder stays.
    auto& files = Platform().Files();
    ASSERT_TRUE(files.SetCurrentDrive(bed_->folder[0]));
    ASSERT_TRUE(files.SetCurrentFolder(bed_->folder));
    const std::string here = files.CurrentFolder();
    for (const std::string text : {"[SETTINGS]\r\nCDTitle=x\r\n", "[SETTINGS]\r\nPath=\r\n",
                                   "[SETTINGS]\r\nPath=  \r\n"}) {
        boxes_.clear();
        Write(text);
        const clsSetupsIni ini = Read();
        EXPECT_EQ(ini.Path(), "") << text;
        EXPECT_FALSE(ini.PathFailed()) << text;
        EXPECT_TRUE(boxes_.empty()) << text;
        EXPECT_EQ(files.CurrentFolder(), here) << text;
    }
}

TEST_F(SetupsIni, PathThatDoesNotExistEndsTheSetup) {
    Write("[SETTINGS]\r\nPath=Missing\r\nSetupMode=Single\r\n[OS]\r\nWin98=True\r\n[LANGUAGES]\r\nGerman=hide\r\n");
    const clsSetupsIni ini = Read();
    const std::string path = bed_->folder + "Missing\\";
    EXPECT_TRUE(ini.PathFailed());
    EXPECT_EQ(ini.Path(), path);
    EXPECT_EQ(lines_, (std::vector<std::string>{"Error in Modul clsSetupsIni Funktion CheckINIFile",
                                                "Der Parameter 'Path' stimmt nicht. Der Pfad existiert nicht!"}));
    ASSERT_EQ(boxes_.size(), 1u);
    EXPECT_EQ(boxes_[0], "Der Parameter in Setup.Ini 'Path'='" + path + "' stimmt nicht. Der Pfad existiert nicht!|" +
                             std::to_string(mb::kOk | mb::kIconError));
    // SETTINGS was read; the setup ends before the rest.
    EXPECT_EQ(ini.SetupMode(), "Single");
    EXPECT_FALSE(ini.Win98());
    EXPECT_EQ(ini.LanguageSetting(0), "enable");

    // A drive that does not exist fails the same way.
    Write("[SETTINGS]\r\nPath=Q:\\Products\r\n");
    EXPECT_TRUE(Read().PathFailed());
}

TEST_F(SetupsIni, PicturesFlagsAndExpandedFile) {
    WriteWithProducts("WelcomeBmp=Images\\Welcome.bmp\r\nDeleteFileWhenReboot=%TempFolder%old.tmp\r\nCDTitleNotShow=maybe\r\n");
    const clsSetupsIni ini = Read(true);
    EXPECT_EQ(ini.WelcomeBmp2(), "Images\\Welcome.bmp");
    EXPECT_TRUE(ini.OldForms());
    EXPECT_TRUE(ini.CheckForAdmin());
    EXPECT_FALSE(ini.CDTitleNotShow());   // a word GetTF does not know keeps the default
    EXPECT_EQ(ini.DeleteFileWhenReboot(), clsFileDisk().TempFolder() + "old.tmp");

    WriteWithProducts("WelcomeBmp=a.bmp\r\nWelcomeBmp2=b.bmp\r\nOldForms=no\r\nCheckForAdmin=0\r\n");
    const clsSetupsIni second = Read();
    EXPECT_EQ(second.WelcomeBmp2(), "b.bmp");
    EXPECT_FALSE(second.OldForms());
    EXPECT_FALSE(second.CheckForAdmin());
}

TEST_F(SetupsIni, GarbageLinesReadWithDefaults) {
    std::string text = "\x01\x02\xFF\xFE garbage\r\n[SETTINGS]\r\n";
    text += std::string("binary\0\x80\x81=\x9D\x90", 10) + "\r\n";
    text += "a line without equals\r\n";
    text += std::string(100000, 'k') + "\r\n";
    text += "CDTitle=" + std::string(100000, 't') + "\r\n";
    text += "=no key\r\n[\r\nSetupMode=Single\r\nLevel=abc\r\n[OS\r\nWin98=yes\r\n[]\r\nOldForms=no\r\n";
    text += "[LANGUAGES]\r\nGerman\r\nEnglish=\x01\r\n";
    Write(text);
    clsSetupsIni ini = Read();
    EXPECT_FALSE(ini.PathFailed());
    EXPECT_EQ(ini.SetupMode(), "Single");
    EXPECT_LE(ini.CDTitle().size(), clsIniText::kMaxValueChars);
    EXPECT_EQ(ini.CDTitle().find_first_not_of('t'), std::string::npos);
    EXPECT_EQ(ini.Level(), 0);            // read as the profile functions read a number
    EXPECT_EQ(ini.ValidIEVersion(), "99999");
    EXPECT_TRUE(ini.OldForms());          // "[]" opened a section without a name
    EXPECT_FALSE(ini.Win98());            // "[OS" without "]" opens no section
    EXPECT_EQ(ini.LanguageSetting(0), "enable");
    // English is not offered by a control character, so another language is chosen.
    EXPECT_NE(ini.LanguageSetting(1), "enable");
    EXPECT_EQ(ini.GetDefaultLanguage(), 0);
}

TEST_F(SetupsIni, LanguageOfTheWindowsUserWhenOffered) {
    // The bed's user speaks English.
    ASSERT_EQ(bed_->expectedLanguage & 0xFF, 9);
    WriteWithProducts("[LANGUAGES]\r\nGerman=enable\r\nEnglish=Enable\r\n");
    {
        clsSetupsIni ini = Read();
        lines_.clear();
        EXPECT_EQ(ini.GetDefaultLanguage(), 1);
        EXPECT_EQ(lines_, (std::vector<std::string>{"## Sprache",
                                                    "WindowsUser LanguageID=" + std::to_string(bed_->expectedLanguage),
                                                    "Select DefaultLanguage=1"}));
    }
    // English not offered: the first offered in the order English, German, French, ...
    WriteWithProducts("[LANGUAGES]\r\nGerman=disable\r\nEnglish=hide\r\nFrench=hide\r\nSpanish=enable\r\nItalian=enable\r\n");
    {
        clsSetupsIni ini = Read();
        lines_.clear();
        EXPECT_EQ(ini.GetDefaultLanguage(), 3);
        ASSERT_EQ(lines_.size(), 4u);
        EXPECT_EQ(lines_[2], "Select DefaultLanguage=-1");
        EXPECT_EQ(lines_[3], "Keine Sprache gefunden. Die SpracheID=3 wurde gewählt.");
    }
    // Nothing offered at all: English.
    WriteWithProducts("[LANGUAGES]\r\nGerman=hide\r\nEnglish=hide\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\n"
                      "Japanese=disable\r\n");
    {
        clsSetupsIni ini = Read();
        EXPECT_EQ(ini.GetDefaultLanguage(), 1);
        EXPECT_EQ(lines_.back(), "Keine Sprache gefunden. Die SpracheID=1 wurde gewählt.");
        EXPECT_EQ(ini.HiddenLanguageCount(), 5);
        EXPECT_EQ(ini.SetupLanguageCount(), 0);
    }
}

#ifndef _WIN32
TEST_F(SetupsIni, LanguageOfOtherWindowsUsers) {
    auto& machine = dynamic_cast<clsMachinePlatform&>(Platform()).Machine();
    struct Row {
        uint16_t user;
        std::string languages;
        int16_t expected;
    };
    const Row rows[] = {
        {1031, "German=disable\r\nEnglish=enable\r\n", 1},   // German user, German not offered
        {1031, "German=enable\r\n", 0},
        {2055, "German=enable\r\n", 0},                      // Swiss German: primary language 7
        {1036, "French=enable\r\n", 2},
        {3082, "Spanish=enable\r\n", 3},
        {1040, "Italian=enable\r\n", 4},
        {1041, "Japanese=enable\r\n", 5},
        {1041, "Japanese=hide\r\nEnglish=hide\r\n", 0},
        {1049, "", 1},                                       // Russian: none of the six
    };
    for (const auto& row : rows) {
        machine.Config().userLanguage = row.user;
        WriteWithProducts("[LANGUAGES]\r\n" + row.languages);
        clsSetupsIni ini = Read();
        lines_.clear();
        EXPECT_EQ(ini.GetDefaultLanguage(), row.expected) << row.user << " " << row.languages;
        ASSERT_GE(lines_.size(), 3u);
        EXPECT_EQ(lines_[1], "WindowsUser LanguageID=" + std::to_string(row.user));
    }
}
#endif

TEST_F(SetupsIni, LanguageTextsOfTheSetupLanguage) {
    WriteWithProducts("[German]\r\nAppTitle=Installation\r\nMsgSupportedOS=Nicht unterst\xFCtzt\r\nKWT=KWT\r\n"
                      "[English]\r\nAppTitle=Setup\r\nReadMeCaption=Readme\r\n"
                      "[Japanese]\r\nAppTitle=\x83Z\x83" "b\x83g\r\n");
    clsSetupsIni ini = Read();
    ini.ReadLanguagePart(0);
    EXPECT_EQ(ini.AppTitle(), "Installation");
    EXPECT_EQ(ini.MsgSupportedOS(), "Nicht unterstützt");
    EXPECT_EQ(ini.GetInfo("KWT"), "KWT");
    // Another language replaces every text, also those its section lacks.
    ini.ReadLanguagePart(42);
    EXPECT_EQ(ini.AppTitle(), "Setup");
    EXPECT_EQ(ini.ReadMeCaption(), "Readme");
    EXPECT_EQ(ini.MsgSupportedOS(), "");

    // Japanese comes from the text reader only, under the section's name in capitals.
    std::vector<std::string> asked;
    ini.ReadLanguagePart(5, [&](const std::string& section, const std::string& key) {
        asked.push_back(section + "/" + key);
        return key == "Ethernet" ? std::string("イーサネット") : std::string();
    });
    ASSERT_EQ(asked.size(), std::size(kTextKeys));
    for (size_t i = 0; i < asked.size(); ++i) EXPECT_EQ(asked[i], std::string("JAPANESE/") + kTextKeys[i]);
    EXPECT_EQ(ini.Ethernet(), "イーサネット");
    EXPECT_EQ(ini.AppTitle(), "");
    ini.ReadLanguagePart(5);
    EXPECT_EQ(ini.Ethernet(), "");
}

TEST_F(SetupsIni, FilesAndHiddenLanguages) {
    WriteWithProducts("[LANGUAGES]\r\nGerman=disable\r\nFrench=hide\r\nItalian=HIDE\r\nJapanese=hide\r\n"
                      "[READMEFILES]\r\nGerman=Docs\\Readme_A.txt\r\nEnglish=Docs\\Readme_B.txt\r\nJapanese=Docs\\Readme_J.txt\r\n"
                      "[LICENSEFILES]\r\nSpanish=Docs\\License_D.txt\r\n"
                      "[INFORMATIONFILES]\r\nItalian=Docs\\Info_E.txt\r\n"
                      "[CD_2]\r\nDiscName=Second disc\r\n");
    const clsSetupsIni ini = Read();
    EXPECT_EQ(ini.GetReadmeFile(0), "Docs\\Readme_A.txt");
    EXPECT_EQ(ini.GetReadmeFile(5), "Docs\\Readme_J.txt");
    EXPECT_EQ(ini.GetReadmeFile(6), "Docs\\Readme_B.txt");   // any other index is English
    EXPECT_EQ(ini.GetReadmeFile(-1), "Docs\\Readme_B.txt");
    EXPECT_EQ(ini.GetLicenseFile(3), "Docs\\License_D.txt");
    EXPECT_EQ(ini.GetLicenseFile(1), "");
    EXPECT_EQ(ini.GetInformationFile(4), "Docs\\Info_E.txt");
    EXPECT_EQ(ini.LanguageSetting(0), "disable");
    // French and Italian are hidden; Japanese does not count.
    EXPECT_EQ(ini.HiddenLanguageCount(), 2);
    EXPECT_EQ(ini.SetupLanguageCount(), 3);

    EXPECT_EQ(ini.GetInfo("CD_2"), "Second disc");
    EXPECT_EQ(ini.GetInfo("cd_2"), "Second disc");
    EXPECT_EQ(ini.GetInfo("CD_3"), "");
    EXPECT_EQ(ini.GetInfo("CD_"), "");
    EXPECT_EQ(ini.GetInfo("CD_x"), "");
}

#ifndef _WIN32
// What the language text reader gives for the Shift-JIS section: each line in code page 932.
std::string JapaneseText(const std::string& bytes, const std::string& key) {
    bool inSection = false;
    size_t start = 0;
    while (start < bytes.size()) {
        size_t end = bytes.find("\r\n", start);
        if (end == std::string::npos) end = bytes.size();
        const std::string line = bytes.substr(start, end - start);
        start = end + 2;
        if (!line.empty() && line[0] == '[') {
            inSection = line == "[JAPANESE]";
            continue;
        }
        const size_t equals = line.find('=');
        if (inSection && equals != std::string::npos && line.substr(0, equals) == key) {
            return clsCodePage::ToUtf8(line.substr(equals + 1), 932).value_or("<not 932>");
        }
    }
    return {};
}

const char* const kLanguageNames[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};

TEST_F(SetupsIni, SampleDiscReadsCompletely) {
    std::ifstream in(std::string(TOVEL_SAMPLE_DISC) + "/Setups.ini", std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    ASSERT_FALSE(bytes.empty());
    Write(bytes);
    MakeFolder("Products");
    clsSetupsIni ini = Read(true);
    placeholder_.SetSettings(&ini);
    ASSERT_FALSE(ini.PathFailed());
    EXPECT_EQ(ini.Path(), bed_->folder + "Products\\");
    EXPECT_EQ(ini.CDTitle(), "Tovel Automation Suite 2026");
    EXPECT_EQ(ini.DeleteFileWhenReboot(), clsFileDisk().TempFolder() + "TovelSetup.tmp");
    EXPECT_TRUE(ini.CreateLogFile());
    EXPECT_TRUE(ini.WinXP());
    EXPECT_EQ(ini.SetupLanguageCount(), 5);
    EXPECT_EQ(ini.GetInfo("CD_1"), ini.DiscName());
    for (int16_t language = 0; language < 6; ++language) {
        EXPECT_EQ(ini.LanguageSetting(language), "enable");
        const std::string name = kLanguageNames[language];
        EXPECT_EQ(ini.GetReadmeFile(language), "Docs\\Readme_" + name + ".txt");
        EXPECT_EQ(ini.GetLicenseFile(language), "Docs\\License_" + name + ".txt");
        EXPECT_EQ(ini.GetInformationFile(language), "Docs\\Info_" + name + ".txt");
        // The texts the wizard shows lie on the disc.
        for (const std::string& file : {ini.GetReadmeFile(language), ini.GetLicenseFile(language),
                                        ini.GetInformationFile(language)}) {
            std::string host = file;
            std::replace(host.begin(), host.end(), '\\', '/');
            EXPECT_TRUE(std::ifstream(std::string(TOVEL_SAMPLE_DISC) + "/" + host).good()) << file;
        }
    }

    const auto lookup = [&](const std::string& section, const std::string& key) {
        EXPECT_EQ(section, "JAPANESE");
        return JapaneseText(bytes, key);
    };
    for (int16_t language = 0; language < 6; ++language) {
        ini.ReadLanguagePart(language, lookup);
        for (const char* key : kTextKeys) {
            const std::string text = ini.GetInfo(key);
            EXPECT_FALSE(text.empty()) << language << " " << key;
            EXPECT_TRUE(clsCodePage::IsUtf8(text)) << language << " " << key;
        }
        EXPECT_NE(ini.AppTitle().find("Tovel Automation Suite 2026"), std::string::npos) << language;
    }
    // Japanese: the Shift-JIS bytes read in 932; the INI reader would have given garbage.
    EXPECT_EQ(ini.NoNetwork(), "ネットワークなし");
    ini.ReadLanguagePart(0);
    EXPECT_EQ(ini.MsgSupportedOS(), "Dieses Betriebssystem wird von der Tovel Automation Suite 2026 nicht unterstützt.");
}
#endif

} // namespace
} // namespace tovel
