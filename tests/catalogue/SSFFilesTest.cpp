// The versions section of a description file, both layouts: which section, where the
// installed version is found, which actions the product gets, and what the log says about it.
// Real description files and registry values on a fresh machine per test.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/clsSSFFilesOld.h"
#include "catalogue/clsSSFFilesV520.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

using Lines = std::vector<std::string>;

class SSFFiles : public test::CatalogueFixture {
protected:
    /// A product record as the reader gets it after the rest of the file was read.
    static clsSIFApplicationItem Product(const std::string& build) {
        clsSIFApplicationItem item;
        item.ProductCode = "P1";
        item.Description = "Prod A";
        item.Build = build;
        return item;
    }
    /// Reads the versions section of the bound file into the record, then applies it here.
    template <typename Reader>
    static void Check(clsIniFile& ini, clsSIFApplicationItem& item) {
        item.SIFFileName = ini.FullPath();
        item.VersionRules = Reader::ReadVersionsSection(ini);
        Reader::CheckVersionsSection(item);
    }
    /// The INI object bound to a description file, on GENERAL as the reader of the rest left it.
    clsIniFile Bind(const std::string& name, const std::string& text) {
        clsIniFile ini;
        ini.SetFullPath(WriteFile(name, text));
        ini.SetSectionName("GENERAL");
        return ini;
    }
    /// Lines as LogIfEnabled writes them: each with one blank behind.
    static Lines Expect(const Lines& lines) {
        Lines out;
        for (const auto& line : lines) out.push_back(line + " ");
        return out;
    }
    static Lines Actions(const clsSIFApplicationItem& item) {
        Lines out;
        for (int i = 1; i <= item.VersionActionsCount(); ++i) out.push_back(item.GetAction(i));
        return out;
    }
    static Lines FirstInstActions(const clsSIFApplicationItem& item) {
        Lines out;
        for (int i = 1; i <= item.FirstInstActionsCount(); ++i) out.push_back(item.GetFirstInstAction(i));
        return out;
    }
    /// Empties the log after the header, so each case of a table sees its own lines.
    void ClearLog() {
        ASSERT_TRUE(Platform().Files().WriteFileAtomic(gLog->LogfileFullPath(), header_));
    }
    void SetUp() override {
        CatalogueFixture::SetUp();
        header_ = Platform().Files().ReadFile(gLog->LogfileFullPath()).value_or("");
    }

private:
    std::string header_;
};

class SSFFilesV520 : public SSFFiles {};
class SSFFilesOld : public SSFFiles {};

TEST_F(SSFFilesV520, ChoosesTheActionsForTheInstalledVersion) {
    // RegPath1 names a key without the value, so every found version comes from RegPath2,
    // written with the backslashes around it that authors leave.
    const std::string file = "[GENERAL]\r\nSSFVersion=5.2\r\n[VERSIONS]\r\n"
                             "RegPath1=" + RegPath("Other") + "\r\nRegKey1=Version\r\n"
                             "RegPath2=\\" + RegPath("Prod") + "\\\r\nRegKey2=Version\r\n"
                             "Version1=4.0\r\nVersion1Action1=remove40.exe\r\n"
                             "Version2=5.1\r\nVersion2Action1=$ManualDeinstall$\r\nVersion2Action2=update51.exe\r\n"
                             "Version2Action4=after a gap, never read\r\n"
                             "DefaultAction1=$DoNotInstall$\r\n"
                             "FirstInstAction1=prepare.exe\r\nFirstInstAction2=$TryUpdate$\r\n";
    SetRegString("Other", "Unrelated", "9.9");
    const std::string foundAt = RegPath("Prod") + "\\Version";

    struct Case {
        const char* name;
        std::optional<std::string> installed;
        Lines actions;
        Lines firstInst;
        Lines log;
        const char* reasonHas;
    };
    const std::vector<Case> cases{
        {"nothing installed", std::nullopt, {}, {"prepare.exe", "$TryUpdate$"},
         {"VersionsSection Default", "No Installed Version Prod A",
          "Für das Produkt Prod A werden folgende FirstInstAction ausgeführt", "   FirstInstAction1=prepare.exe",
          "   FirstInstAction2=$TryUpdate$"},
         "first-install"},
        {"equal to Version2", "5.1", {"$ManualDeinstall$", "update51.exe"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 5.1", "Gleiche Version gefunden für Prod A",
          "Für das Produkt Prod A werden folgende Aktionen der Versionskey Version2 ausgeführt.",
          "   Version2Action1=$ManualDeinstall$", "   Version2Action2=update51.exe"},
         "Version2"},
        {"newer than the disc's", "6.0", {"$DoNotInstall$"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 6.0",
          "Die zu installierende Version ist älter als die installierte Version. Für das Produkt Prod A werden "
          "folgende DefaultAction ausgeführt.",
          "   DefaultAction1=$DoNotInstall$"},
         "newer"},
        // As numbers 5.10 is above 5.2; compared as text it would be below.
        {"newer part by part", "5.10", {"$DoNotInstall$"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 5.10",
          "Die zu installierende Version ist älter als die installierte Version. Für das Produkt Prod A werden "
          "folgende DefaultAction ausgeführt.",
          "   DefaultAction1=$DoNotInstall$"},
         "newer"},
        // This line ends in a blank of its own, before the one every line gets.
        {"above a listed one", "4.5", {}, {"prepare.exe", "$TryUpdate$"},
         {"VersionsSection Default", "Installed Version Prod A: 4.5",
          "Es ist die Version 4.5 gibt eine Version in der SSF-Files, die grösser ist als die Installierte abhandeln "
          "von FirstInstAction. ",
          "   FirstInstAction1=prepare.exe", "   FirstInstAction2=$TryUpdate$"},
         "Version1"},
        {"below every listed one", "3.0", {"$DoNotInstall$"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 3.0",
          "Installed version 3.0 of Prod A is not listed: DefaultAction", "   DefaultAction1=$DoNotInstall$"},
         "not listed"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        clsRegistry prod;
        ASSERT_TRUE(prod.InitWithRegPath(RegPath("Prod")));
        if (c.installed) {
            SetRegString("Prod", "Version", *c.installed);
        } else {
            (void)prod.DeleteValue("Version");
        }
        ClearLog();
        clsIniFile ini = Bind("prod.ssf", file);
        auto item = Product("5.2");
        Check<clsSSFFilesV520>(ini, item);

        EXPECT_EQ(Actions(item), c.actions);
        EXPECT_EQ(FirstInstActions(item), c.firstInst);
        EXPECT_EQ(LogLines(), Expect(c.log));
        EXPECT_EQ(item.InstalledVersion, c.installed.value_or(""));
        EXPECT_EQ(item.Versions.installedVersion, c.installed.value_or(""));
        EXPECT_EQ(item.Versions.foundAt, c.installed ? foundAt : "");
        EXPECT_EQ(item.Versions.versionsSection, "VERSIONS");
        EXPECT_NE(item.Versions.reason.find(c.reasonHas), std::string::npos) << item.Versions.reason;
        EXPECT_EQ(ini.SectionName(), "GENERAL");

        // Deciding again (a new search) replaces the actions instead of adding to them.
        Check<clsSSFFilesV520>(ini, item);
        EXPECT_EQ(Actions(item), c.actions);
        EXPECT_EQ(FirstInstActions(item), c.firstInst);
    }
}

TEST_F(SSFFilesV520, WarnsAboutAnUnlistedVersionOnlyWithoutDefaultAction) {
    const std::string file = "[GENERAL]\r\nSSFVersion=5.2\r\n[VERSIONS]\r\n"
                             "RegPath1=" + RegPath("Prod") + "\r\nRegKey1=Version\r\n"
                             "Version1=4.0\r\nVersion1Action1=remove40.exe\r\n"
                             "FirstInstAction1=prepare.exe\r\n";
    struct Case {
        const char* installed;
        Lines actions;
        Lines firstInst;
        Lines log;
    };
    const std::vector<Case> cases{
        // Unknown to the file and nothing to do: the run is told to warn.
        {"3.0", {"$Warning$"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 3.0",
          "Installed version 3.0 of Prod A is not listed and there is no DefaultAction: $Warning$"}},
        // Newer than the disc's and no DefaultAction: never over it unasked.
        {"6.0", {"$Warning$"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 6.0",
          "Installed version 6.0 of Prod A is newer than 5.2 and there is no DefaultAction: $Warning$"}},
        // Above a listed version: installed as if fresh, no warning.
        {"4.5", {}, {"prepare.exe"},
         {"VersionsSection Default", "Installed Version Prod A: 4.5",
          "Es ist die Version 4.5 gibt eine Version in der SSF-Files, die grösser ist als die Installierte abhandeln "
          "von FirstInstAction. ",
          "   FirstInstAction1=prepare.exe"}},
        {"4.0", {"remove40.exe"}, {},
         {"VersionsSection Default", "Installed Version Prod A: 4.0", "Gleiche Version gefunden für Prod A",
          "Für das Produkt Prod A werden folgende Aktionen der Versionskey Version1 ausgeführt.",
          "   Version1Action1=remove40.exe"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.installed);
        SetRegString("Prod", "Version", c.installed);
        ClearLog();
        clsIniFile ini = Bind("prod.ssf", file);
        auto item = Product("5.2");
        Check<clsSSFFilesV520>(ini, item);
        EXPECT_EQ(Actions(item), c.actions);
        EXPECT_EQ(FirstInstActions(item), c.firstInst);
        EXPECT_EQ(LogLines(), Expect(c.log));
    }
}

TEST_F(SSFFilesV520, PackageCheckChoosesTheVersionsSection) {
    // Each section tells itself apart by its first-install action; nothing is installed.
    const std::string sections = "[VERSIONS1]\r\nCheckPackageValue=Basic\r\nFirstInstAction1=basic\r\n"
                                 "[VERSIONS2]\r\nCheckPackageValue= Professional \r\nFirstInstAction1=pro\r\n"
                                 "[VERSIONS4]\r\nCheckPackageValue=Lite\r\nFirstInstAction1=after a gap\r\n";
    const std::string check = "CheckPackageKey=\\" + RegPath("Pack") + "\\\r\nCheckPackageName=Type\r\n";
    const std::string withCheck = "[VERSIONS]\r\n" + check + "FirstInstAction1=default\r\n" + sections;
    const std::string checkOnly = "[VERSIONS]\r\n" + check + "FirstInstAction1=default\r\n";
    const std::string noCheck = "[VERSIONS]\r\nFirstInstAction1=default\r\n" + sections;
    const std::string keyOnly = "[VERSIONS]\r\nCheckPackageKey=" + RegPath("Pack") + "\r\nFirstInstAction1=default\r\n" + sections;

    struct Case {
        const char* name;
        const std::string& file;
        const char* package;   // nullptr: no such value
        const char* section;
        const char* chosenLine;
        const char* action;
    };
    const std::vector<Case> cases{
        {"no package installed", withCheck, nullptr, "VERSIONS", "VersionsSection Default", "default"},
        {"empty package value", withCheck, "  ", "VERSIONS", "VersionsSection Default", "default"},
        {"match, other case", withCheck, "professional", "VERSIONS2", "VersionsSection gefunden: VERSIONS2", "pro"},
        {"first match", withCheck, "BASIC", "VERSIONS1", "VersionsSection gefunden: VERSIONS1", "basic"},
        {"no match", withCheck, "Lite", "VERSIONS1", "VersionsSection 1 als Default", "basic"},
        // A package that no section names is unmatched also when there are no sections to
        // name it: VERSIONS is then the first (and only) section.
        {"no candidate sections", checkOnly, "Basic", "VERSIONS", "VersionsSection 1 als Default", "default"},
        {"no package keys", noCheck, "Basic", "VERSIONS", "VersionsSection Default", "default"},
        {"package name missing", keyOnly, "Basic", "VERSIONS", "VersionsSection Default", "default"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        clsRegistry pack;
        ASSERT_TRUE(pack.InitWithRegPath(RegPath("Pack")));
        if (c.package) {
            SetRegString("Pack", "Type", c.package);
        } else {
            (void)pack.DeleteValue("Type");
        }
        ClearLog();
        clsIniFile ini = Bind("prod.ssf", "[GENERAL]\r\nSSFVersion=5.2\r\n" + c.file);
        auto item = Product("5.2");
        Check<clsSSFFilesV520>(ini, item);
        EXPECT_EQ(item.Versions.versionsSection, c.section);
        EXPECT_EQ(FirstInstActions(item), Lines{c.action});
        EXPECT_EQ(LogLines(), Expect({c.chosenLine, "No Installed Version Prod A",
                                      "Für das Produkt Prod A werden folgende FirstInstAction ausgeführt",
                                      std::string("   FirstInstAction1=") + c.action}));
    }
}

TEST_F(SSFFilesV520, UnreadableRegistryPlacesCountAsNotInstalled) {
    // A root the setup does not know, a key that is not there, a blank value, no value name:
    // each is passed over and the next RegPath is tried.
    SetRegString("Blank", "Version", "   ");
    SetRegString("Prod", "", "7.1");
    SetRegString("Late", "Version", "5.1");
    const std::string file = "[GENERAL]\r\nSSFVersion=5.2\r\n[VERSIONS]\r\n"
                             "RegPath1=HKEY_CLASSES_ROOT\\Software\\Prod\r\nRegKey1=Version\r\n"
                             "RegPath2=" + RegPath("Missing") + "\r\nRegKey2=Version\r\n"
                             "RegPath3=" + RegPath("Blank") + "\r\nRegKey3=Version\r\n"
                             "RegPath4=" + RegPath("Prod") + "\r\n"
                             "RegPath5=" + RegPath("Late") + "\r\nRegKey5=Version\r\n"
                             "Version1=7.1\r\nVersion1Action1=seven.exe\r\n";
    clsIniFile ini = Bind("prod.ssf", file);
    auto item = Product("8.0");
    Check<clsSSFFilesV520>(ini, item);
    // RegPath4 without RegKey4 reads the key's default value.
    EXPECT_EQ(item.InstalledVersion, "7.1");
    EXPECT_EQ(item.Versions.foundAt, RegPath("Prod") + "\\");
    EXPECT_EQ(Actions(item), Lines{"seven.exe"});

    // With no path giving a version the product counts as not installed.
    ClearLog();
    clsIniFile none = Bind("none.ssf", "[VERSIONS]\r\nRegPath1=HKEY_CLASSES_ROOT\\x\r\nRegKey1=V\r\n"
                                       "RegPath2=nothing at all\r\nFirstInstAction1=first.exe\r\n");
    auto fresh = Product("8.0");
    Check<clsSSFFilesV520>(none, fresh);
    EXPECT_EQ(fresh.InstalledVersion, "");
    EXPECT_EQ(FirstInstActions(fresh), Lines{"first.exe"});
    const auto logged = LogLines();
    EXPECT_NE(std::find(logged.begin(), logged.end(), "No Installed Version Prod A "), logged.end());
}

TEST_F(SSFFiles, MissingVersionsSectionGivesNoActions) {
    SetRegString("Prod", "Version", "5.1");
    // The file has numbered sections but no VERSIONS to say how to choose among them.
    const std::vector<std::string> files{
        "[GENERAL]\r\nSSFVersion=5.2\r\nRegPath1=" + RegPath("Prod") + "\r\nRegKey1=Version\r\nFirstInstAction1=x\r\n",
        "[GENERAL]\r\nSSFVersion=5.2\r\n[VERSIONS1]\r\nFirstInstAction1=x\r\n",
        "",
    };
    for (const auto& text : files) {
        SCOPED_TRACE(text);
        for (const bool old : {false, true}) {
            ClearLog();
            clsIniFile ini = Bind("prod.ssf", text);
            auto item = Product("5.2");
            item.AddAction("left from before");
            if (old) {
                Check<clsSSFFilesOld>(ini, item);
            } else {
                Check<clsSSFFilesV520>(ini, item);
            }
            EXPECT_EQ(item.VersionActionsCount(), 0);
            EXPECT_EQ(item.FirstInstActionsCount(), 0);
            EXPECT_EQ(item.InstalledVersion, "");
            EXPECT_EQ(item.Versions.versionsSection, "");
            EXPECT_EQ(LogLines(), Expect({"No versions section in " + ini.FullPath() + ": no version actions for Prod A"}));
            EXPECT_EQ(ini.SectionName(), "GENERAL");
        }
    }
}

TEST_F(SSFFilesOld, ChoosesTheActionsForTheInstalledVersion) {
    const std::string file = "[GENERAL]\r\nSSFVersion=\r\n[VERSIONS]\r\n"
                             "RegPath=\\" + RegPath("Old") + "\\\r\nRegKey=Version\r\n"
                             "Version1=4.0\r\nAction1_1=remove40.exe\r\n"
                             "Version2=5.1\r\nAction2_1=update51.exe\r\nAction2_2=$SSFMessageBox01\r\n"
                             "AddAction=close.exe\r\n"
                             "DefaultAction1=$ManualDeinstall$\r\n"
                             "FirstInstAction1=prepare.exe\r\n";
    struct Case {
        const char* name;
        std::optional<std::string> installed;
        Lines actions;
        Lines firstInst;
        Lines log;
    };
    const std::vector<Case> cases{
        {"nothing installed", std::nullopt, {}, {"prepare.exe"},
         {"Prod A: keine Version installiert", " Für Prod A wird mit FirstInstAction abgehandelt.",
          "   FirstInstAction1=prepare.exe"}},
        {"equal to Version2", "5.1", {"close.exe", "update51.exe", "$SSFMessageBox01"}, {},
         {"Installierte Version Prod A: 5.1", " Für Prod A wird die Version 5.1 abgehandelt.", "   AddAction=close.exe",
          "   Action2_1=update51.exe", "   Action2_2=$SSFMessageBox01"}},
        {"newer than the disc's", "6.0", {"close.exe", "$ManualDeinstall$"}, {},
         {"Installierte Version Prod A: 6.0",
          "Die zu installierende Version ist älter als die Version die installiert ist.",
          " Für Prod A wird mit DefaultAction abgehandelt.", "   AddAction=close.exe",
          "   DefaultAction1=$ManualDeinstall$"}},
        {"not listed", "4.5", {"close.exe", "$ManualDeinstall$"}, {},
         {"Installierte Version Prod A: 4.5", " Für Prod A wird mit DefaultAction abgehandelt.",
          "   AddAction=close.exe", "   DefaultAction1=$ManualDeinstall$"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        clsRegistry old;
        ASSERT_TRUE(old.InitWithRegPath(RegPath("Old")));
        if (c.installed) {
            SetRegString("Old", "Version", *c.installed);
        } else {
            (void)old.DeleteValue("Version");
        }
        ClearLog();
        clsIniFile ini = Bind("old.ssf", file);
        auto item = Product("5.2");
        Check<clsSSFFilesOld>(ini, item);
        EXPECT_EQ(Actions(item), c.actions);
        EXPECT_EQ(FirstInstActions(item), c.firstInst);
        EXPECT_EQ(LogLines(), Expect(c.log));
        EXPECT_EQ(item.InstalledVersion, c.installed.value_or(""));
        EXPECT_EQ(item.Versions.foundAt, c.installed ? RegPath("Old") + "\\Version" : "");
        EXPECT_EQ(item.Versions.versionsSection, "VERSIONS");
        EXPECT_EQ(ini.SectionName(), "GENERAL");
    }

    // No RegPath at all: not installed, and without a FirstInstAction nothing to do.
    ClearLog();
    clsIniFile bare = Bind("bare.ssf", "[VERSIONS]\r\nVersion1=5.1\r\nAction1_1=x\r\n");
    auto item = Product("5.2");
    Check<clsSSFFilesOld>(bare, item);
    EXPECT_EQ(item.VersionActionsCount(), 0);
    EXPECT_EQ(item.FirstInstActionsCount(), 0);
    EXPECT_EQ(LogLines(), Expect({"Prod A: keine Version installiert", " Für Prod A wird mit FirstInstAction abgehandelt."}));
}

} // namespace
} // namespace tovel
