// Product records read from real description files: defaults, every key family, the language
// section, setup paths on a set of discs, setup dependencies, conditions, and the catalogue's
// look-ups.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFCommonSection.h"
#include "catalogue/clsSIFDetection.h"
#include "common/clsFileDisk.h"
#include "settings/clsIniFile.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

using Lines = std::vector<std::string>;

class SIFApplication : public test::CatalogueFixture {
protected:
    /// A record as the search makes it: read, then detected on the test's machine.
    clsSIFApplicationItem ReadProduct(const std::string& relative, const std::string& text) {
        clsSIFApplicationItem item;
        item.Read(WriteFile(relative, text), bed_->folder);
        clsSIFDetection(gPlaceholder.get()).Detect(item);
        return item;
    }
};

TEST_F(SIFApplication, AFileWithOnlyItsCodeTakesEveryDefault) {
    const auto item = ReadProduct("p.ssf", "[GENERAL]\r\nProductCode=P1\r\n");
    EXPECT_EQ(item.ProductCode, "P1");
    EXPECT_TRUE(item.Visible);
    EXPECT_TRUE(item.ShowDriveSelectionInComponentDialog);
    EXPECT_TRUE(item.VelmarProduct);
    EXPECT_FALSE(item.AlwaysInstall);
    EXPECT_FALSE(item.HideInstall);
    EXPECT_FALSE(item.IsCriticalComponent);
    EXPECT_FALSE(item.ShowDialogWait);
    EXPECT_FALSE(item.DontChangeExistPath);
    EXPECT_EQ(item.RegisterInRunOnce, 1);
    EXPECT_EQ(item.AutoDeinstall, "0");
    EXPECT_EQ(item.SetupFile, "");
    EXPECT_EQ(item.CheckBox, CheckBoxState::kChecked);
    EXPECT_TRUE(item.Selected);
    EXPECT_EQ(item.SIFFileName, bed_->folder + "p.ssf");

    // No GENERAL at all: an empty code tells the caller.
    EXPECT_EQ(ReadProduct("q.ssf", "[LANGUAGES]\r\nLanguageX=English\r\n").ProductCode, "");
    // A file that is not there reads like an empty one.
    clsSIFApplicationItem missing;
    missing.Read(bed_->folder + "none.ssf", bed_->folder);
    EXPECT_EQ(missing.ProductCode, "");
    EXPECT_TRUE(missing.Visible);
}

TEST_F(SIFApplication, ReadsEveryKeyAndNumberedFamily) {
    SetRegString("Install", "Path", "E:\\Found\\There");
    const std::string file =
        "[GENERAL]\r\nFileType=ssf\r\nProductCode=BASE\r\nBuild=6.0.1\r\nAlwaysInstall=yes\r\nAutoDeinstall=1\r\n"
        "DefaultPath=%AppSSFSourcePath%Base\r\nDeinstallKey={BASE}\r\nDeinstallParam=\r\nDeinstallParam1=/x /q\r\n"
        "EstimatedTime=12\r\nHideInstall=1\r\nIsCriticalComponent=on\r\nRegisterInRunOnce=0\r\nTSInstallVersion=5.2\r\n"
        "SetupMode=silent\r\nShowDialogWait=T\r\nDontChangeExistPath=Y\r\nShowDriveSelectionInComponentDialog=no\r\n"
        "SSFVersion=5.2\r\nVisible=false\r\nDiskSpaceDestDrv=300\r\nDefaultPathRegKey=Path\r\n"
        "[LANGUAGES]\r\nLanguageX=English\r\nLanguageB=English\r\n"
        "[English]\r\nDescription=Base Runtime\r\nLongDescription=The runtime\r\nAlternativeDescription=Runtime\r\n"
        "SetupDiscID=DISC-1\r\nBreakMessage1=one\r\nBreakMessage2=two\r\nBreakMessage3=three\r\nTooltip=tip\r\n"
        "SetupFile=setup\\setup.exe\r\nSetupFileParameters=/s\r\nShowReadMe=readme.txt\r\nDiskSpaceDestDrv=350\r\n"
        "StartOnBegin1=a.exe\r\nParaStartOnBegin1=-x\r\nStartOnBegin2=b.exe\r\nStartOnBegin4=never.exe\r\n"
        "NotStartOnEndProgram1=n.exe\r\nWaitForApplicationTitle1=Title*\r\nWaitForApplicationTitle2=Other\r\n"
        "DefaultPathCriterium1=crit\r\nDefaultPathCriterium1Path=C:\\Crit\r\n"
        "DeinstallRegPath1_1=" + RegPath("Old") + "\r\nDeinstallRegKey1_1=Kind\r\nDeinstallExpectedValue1_1=full\r\n"
        "DeinstallRegPath2_1=" + RegPath("Old") + "\r\nDeinstallRegKey2_1=Kind\r\nDeinstallExpectedValue2_1=lite\r\n"
        "[DEPENDENCIES]\r\nDependence1=CORE\r\nDependence2=DRV\r\nDependence4=LOST\r\n"
        "[PRODUCTTYP]\r\nVelmarProduct=False\r\nLogFile=C:\\base.log\r\n";
    SetRegString("Old", "Kind", "FULL");
    auto item = ReadProduct("Products\\Base\\base.ssf", file);
    const std::string folder = bed_->folder + "Products\\Base\\";
    EXPECT_EQ(item.Build, "6.0.1");
    EXPECT_TRUE(item.AlwaysInstall);
    EXPECT_EQ(item.CheckBox, CheckBoxState::kCheckedLocked);
    EXPECT_EQ(item.AutoDeinstall, "1");
    EXPECT_EQ(item.DefaultPath, folder + "Base");   // no registry path given: the expanded default stays
    EXPECT_EQ(item.DeinstallParam, "/x /q");
    EXPECT_EQ(item.EstimatedTime, 12);
    EXPECT_TRUE(item.HideInstall);
    EXPECT_TRUE(item.IsCriticalComponent);
    EXPECT_EQ(item.RegisterInRunOnce, 0);
    EXPECT_EQ(item.TSInstallVersion, "5.2");
    EXPECT_EQ(item.SetupMode, "silent");
    EXPECT_TRUE(item.ShowDialogWait);
    EXPECT_TRUE(item.DontChangeExistPath);
    EXPECT_FALSE(item.ShowDriveSelectionInComponentDialog);
    EXPECT_FALSE(item.Visible);
    EXPECT_EQ(item.DiskSpaceDestDrv, 350);   // the language's own figure wins
    EXPECT_EQ(item.Description, "Base Runtime");
    EXPECT_EQ(item.BreakMessage, "one\r\ntwo\r\nthree");
    EXPECT_EQ(item.Tooltip, "tip");
    EXPECT_EQ(item.SetupDiscID, "DISC-1");
    EXPECT_EQ(item.SetupFile, folder + "setup\\setup.exe");
    EXPECT_EQ(item.SetupFileParameters, "/s");
    EXPECT_EQ(item.ShowReadMe, folder + "readme.txt");
    EXPECT_EQ(item.AvailableLanguages, "B");
    ASSERT_EQ(item.StartOnBeginCount(), 2);   // the gap at 3 ends the family
    EXPECT_EQ(item.GetStartOnBeginProgram(1), "a.exe");
    EXPECT_EQ(item.GetStartOnBeginParameter(1), "-x");
    EXPECT_EQ(item.GetStartOnBeginParameter(2), "");
    EXPECT_EQ(item.GetStartOnBeginProgram(3), "");
    EXPECT_EQ(item.NotStartOnEndProgramsCount(), 1);
    EXPECT_EQ(item.GetApplicationTitle(2), "Other");
    EXPECT_EQ(item.GetDefaultPathCriterium(1), "crit");
    EXPECT_EQ(item.GetDefaultPathCriteriumPath(1), "C:\\Crit");
    ASSERT_EQ(item.DeinstallEntryCount(), 2);
    EXPECT_TRUE(item.DeinstallEntryMatches(1));    // FULL against full: upper case on both sides
    EXPECT_FALSE(item.DeinstallEntryMatches(2));
    EXPECT_FALSE(item.DeinstallEntryMatches(3));
    ASSERT_EQ(item.DependenceCount(), 2);
    EXPECT_EQ(item.GetDependence(2), "DRV");
    EXPECT_FALSE(item.VelmarProduct);
    EXPECT_EQ(item.LogFile, "C:\\base.log");

    // With the registry path given, the installation found there replaces the default.
    std::string withRegistry = file;
    withRegistry.replace(withRegistry.find("DefaultPathRegKey=Path"), 22, "DefaultPathRegKey=Path\r\nDefaultPathRegPath=" + RegPath("Install"));
    item = ReadProduct("Products\\Base\\base.ssf", withRegistry);
    EXPECT_EQ(item.DefaultPath, "E:\\Found\\There");
    EXPECT_EQ(item.RegDefaultDestPath, "E:\\Found\\There");
}

TEST_F(SIFApplication, TheSetupLanguagePicksTheTextSection) {
    const std::string onlyFallback = "[GENERAL]\r\nProductCode=P\r\n[LANGUAGES]\r\nLanguageX=Neutral\r\n[Neutral]\r\nDescription=Neutral text\r\n";
    for (int16_t language = 0; language < 6; ++language) {
        DefaultLanguage = language;
        const auto item = ReadProduct("p.ssf", onlyFallback);
        EXPECT_EQ(item.ProdInfoSection, "Neutral") << language;
        EXPECT_EQ(item.Description, "Neutral text");
        EXPECT_EQ(item.AvailableLanguages, "");
    }
    const std::string several =
        "[GENERAL]\r\nProductCode=P\r\n[LANGUAGES]\r\nLanguageX=English\r\nLanguageA=Deutsch\r\nLanguageB=Error\r\n"
        "LanguageJ=Nihongo\r\n[Deutsch]\r\nDescription=Basis\r\n[English]\r\nDescription=Base\r\n[Nihongo]\r\nDescription=Base J\r\n";
    const struct {
        int16_t language;
        const char* section;
        const char* description;
    } cases[] = {{0, "Deutsch", "Basis"}, {1, "English", "Base"}, {2, "English", "Base"}, {5, "Nihongo", "Base J"}, {9, "", ""}};
    for (const auto& c : cases) {
        DefaultLanguage = c.language;
        const auto item = ReadProduct("p.ssf", several);
        EXPECT_EQ(item.ProdInfoSection, c.section) << c.language;
        EXPECT_EQ(item.Description, c.description) << c.language;
        EXPECT_EQ(item.AvailableLanguages, "AJ");   // "Error" counts as absent
    }
}

TEST_F(SIFApplication, ATextSectionReadAgainGivesWhatAWholeReadInThatLanguageGives) {
    const std::string file =
        "[GENERAL]\r\nProductCode=P\r\nBuild=2\r\n[LANGUAGES]\r\nLanguageA=Deutsch\r\nLanguageB=English\r\n"
        "[Deutsch]\r\nDescription=Basis\r\nSetupFile=de\\setup.exe\r\nStartOnBegin1=a.exe\r\nStartOnBegin2=b.exe\r\n"
        "[English]\r\nDescription=Base\r\nSetupFile=en\\setup.exe\r\nStartOnBegin1=c.exe\r\n"
        "[OPFILEENTRIES_BEGIN]\r\nSetupMode=Expert\r\nEmpty=\r\nQuoted=\"a b\"\r\n";
    DefaultLanguage = 0;
    auto again = ReadProduct("p.ssf", file);
    EXPECT_EQ(again.OptionFileEntries, (std::vector<IniEntry>{{"SetupMode", "Expert"}, {"Quoted", "a b"}}));
    DefaultLanguage = 1;
    const auto whole = ReadProduct("p.ssf", file);
    clsIniFile ini;
    ini.SetFullPath(bed_->folder + "p.ssf");
    again.ReadTextSection(ini, bed_->folder, clsSIFCommonSection::ProdInfoSections(ini));
    EXPECT_EQ(again.ProdInfoSection, "English");
    EXPECT_EQ(again.Description, whole.Description);
    EXPECT_EQ(again.SetupFile, whole.SetupFile);
    EXPECT_EQ(again.StartOnBeginCount(), 1);   // the lists of the first language are gone
    EXPECT_EQ(again.GetStartOnBeginProgram(1), whole.GetStartOnBeginProgram(1));
    EXPECT_EQ(again.Build, "2");               // the rest stays
}

TEST_F(SIFApplication, JapaneseTextsComeFromTheLanguageTextFile) {
    // The product's INI section holds Western bytes only; the language text file is read in
    // Shift-JIS. "セットアップ" in Shift-JIS:
    const std::string setup = "\x83\x5A\x83\x62\x83\x67\x83\x41\x83\x62\x83\x76";
    WriteFile("Lang\\Japanese.txt", "[Language]\r\nCodePage=932\r\n[Japanese]\r\nDescription=" + setup + "\r\nTooltip=" + setup + "!\r\n");
    gLanguage = std::make_unique<clsLanguage>();
    gLanguage->SetTextFolder(bed_->folder);
    gLanguage->SetLanguageID(1041);
    DefaultLanguage = 5;
    const auto item = ReadProduct("p.ssf", "[GENERAL]\r\nProductCode=P\r\n[LANGUAGES]\r\nLanguageX=English\r\nLanguageJ=Japanese\r\n"
                                           "[Japanese]\r\nDescription=wrong\r\nSetupFile=s.exe\r\n");
    gLanguage.reset();
    EXPECT_EQ(item.Description, "\u30bb\u30c3\u30c8\u30a2\u30c3\u30d7");
    EXPECT_EQ(item.Tooltip, "\u30bb\u30c3\u30c8\u30a2\u30c3\u30d7!");
    EXPECT_EQ(item.SetupFile, bed_->folder + "s.exe");   // paths still come from the INI file
}

TEST(SetupFileBase, DiscFoldersAndTheBaseOfSetupPaths) {
    const struct {
        const char* sifFolder;
        const char* productFolder;
        const char* root;
        int disc;
    } bases[] = {
        {"D:\\Cd_2\\Prod", "D:\\Products\\", "D:\\Cd_2", 2},
        {"D:\\Products\\Cd_1\\x\\Cd_12\\Prod\\", "D:\\Products\\", "D:\\Products\\Cd_1\\x\\Cd_12", 12},   // the last one counts
        {"D:\\Products\\cd_3", "D:\\Products\\", "D:\\Products\\cd_3", 3},
        {"D:\\Products\\MyCd_2\\Prod", "D:\\Products\\", "D:\\Products", 1},   // only a whole folder name
        {"D:\\Products\\Cd_\\Prod", "D:\\Products", "D:\\Products", 1},
        {"D:\\Products\\Cd_2a\\Prod", "D:\\Products", "D:\\Products", 1},
        {"E:\\Elsewhere\\Prod", "D:\\Products\\", "E:", 1},
        {"\\\\server\\share\\disc\\Prod", "D:\\", "\\\\server\\share", 1},
        {"", "", "", 1},
    };
    for (const auto& b : bases) {
        const SetupFileBase base = clsFileDisk::SetupFileBaseOf(b.sifFolder, b.productFolder);
        EXPECT_EQ(base.discRoot, b.root) << b.sifFolder;
        EXPECT_EQ(base.discNumber, b.disc) << b.sifFolder;
    }
    const SetupFileBase disc2{"D:\\Cd_2", 2};
    const struct {
        const char* file;
        const char* full;
        const char* onDisc;
    } files[] = {
        {"setup\\setup.exe", "D:\\Cd_2\\Prod\\setup\\setup.exe", "Prod\\setup\\setup.exe"},
        {"C:\\x\\setup.exe", "C:\\x\\setup.exe", ""},
        {"\\Common\\setup.exe", "D:\\Cd_2\\Common\\setup.exe", "Common\\setup.exe"},
        {"\\\\srv\\s\\setup.exe", "\\\\srv\\s\\setup.exe", ""},
        {"", "", ""},
    };
    for (const auto& f : files) {
        const std::string full = clsFileDisk::ResolveSetupFile(f.file, "D:\\Cd_2\\Prod", disc2);
        EXPECT_EQ(full, f.full) << f.file;
        EXPECT_EQ(clsFileDisk::DiscRelativePath(full, disc2), f.onDisc) << f.file;
    }
}

TEST_F(SIFApplication, SetupDependenciesWithTypesAndRequirements) {
    const auto item = ReadProduct("p.ssf",
                                  "[GENERAL]\r\nProductCode=P\r\n[SETUP_DEPENDENCIES]\r\n"
                                  "ProductCode1=A\r\n"
                                  "Type2=Force\r\nProductCode2=B\r\nProductCode2AdditionalRequirement1=P1\r\nProductCode2AdditionalRequirement2=P2\r\n"
                                  "ProductCode2AdditionalRequirement4=P4\r\n"
                                  "Type3=FORCE\r\nProductCode3=C\r\nType4=setreset\r\nProductCode4=D\r\nType5=Toggle\r\nProductCode5=E\r\n"
                                  "Type6=dependend\r\nProductCode6=F\r\nType7=dependforce\r\nProductCode7=G\r\n"
                                  "Type8=Exclusive\r\nProductCode8=H\r\nProductCode8AdditionalRequirement1=Q\r\n"
                                  "Type9=force\r\nProductCode9=\r\nType10=force\r\nProductCode10=NEVER\r\n");
    ASSERT_EQ(item.SetupDependenceCount(), 8);
    const int16_t types[] = {0, 1, 1, 2, 3, 4, 5, 6};
    const char* codes[] = {"A", "B", "C", "D", "E", "F", "G", "H"};
    for (int i = 1; i <= 8; ++i) {
        EXPECT_EQ(item.GetSetupDependenceType(i), types[i - 1]) << i;
        EXPECT_EQ(item.GetSetupDependence(i), codes[i - 1]) << i;
    }
    EXPECT_EQ(item.GetSetupDependenceAR(2), "P1~P2~");
    EXPECT_EQ(item.GetSetupDependenceAR(1), "");
    EXPECT_EQ(item.GetSetupDependenceAllAR(), "P1~P2~Q~");
    EXPECT_EQ(item.DependenceTypeOther, "exclusive");
    EXPECT_EQ(item.GetSetupDependence(9), "");
    EXPECT_EQ(item.GetSetupDependenceType(0), 0);
}

TEST_F(SIFApplication, ConditionTermsDecideTheCheckBoxAndTheLinks) {
    SetRegString("Probe", "Version", "5.0");
    const std::string fails = "t;registry;" + RegPath("Probe\\Version") + ";regsz;=>;6.0;disableduncheckbox;uncheckbox";
    const std::string holds = "t;registry;" + RegPath("Probe\\Version") + ";regsz;=>;4.0;disableduncheckbox;uncheckbox";
    auto item = ReadProduct("p.ssf", "[GENERAL]\r\nProductCode=P\r\nTermToInstall=" + fails + "\r\n");
    EXPECT_FALSE(item.TermToInstallOutcome.holds);
    EXPECT_EQ(item.CheckBox, CheckBoxState::kUncheckedLocked);
    EXPECT_FALSE(item.Selected);
    EXPECT_TRUE(item.DependenceTypeOtherTrue);

    item = ReadProduct("p.ssf", "[GENERAL]\r\nProductCode=P\r\nAlwaysInstall=1\r\nTermToInstall=" + holds +
                                    "\r\n[SETUP_DEPENDENCIES]\r\nProductCode1=Q\r\nDependenceTerm=" + fails + "\r\n");
    EXPECT_TRUE(item.TermToInstallOutcome.holds);
    EXPECT_EQ(item.CheckBox, CheckBoxState::kCheckedLocked);
    EXPECT_TRUE(item.Selected);
    EXPECT_FALSE(item.DependenceTypeOtherTrue);
    EXPECT_EQ(item.DependenceTypeOtherTrueCheckBox, CheckBoxState::kUncheckedLocked);
}

TEST_F(SIFApplication, TheCatalogueFindsRemovesAndLogsWhatItAdds) {
    clsSIFApplication catalogue;
    catalogue.Add(ReadProduct("a.ssf", "[GENERAL]\r\nProductCode=A\r\n[LANGUAGES]\r\nLanguageX=E\r\n[E]\r\nDescription=Alpha\r\nSetupFile=C:\\a.exe\r\n"));
    catalogue.Add(ReadProduct("b.ssf", "[GENERAL]\r\nProductCode=b\r\n[LANGUAGES]\r\nLanguageX=E\r\n[E]\r\nDescription=Beta\r\n"));
    catalogue.Add(ReadProduct("sub\\c.ssf", "[GENERAL]\r\nProductCode=A\r\n"));
    catalogue.Add(ReadProduct("d.ssf", "[GENERAL]\r\nProductCode=\r\n"));
    catalogue.Add(ReadProduct("e.ssf", "[GENERAL]\r\n"));
    const auto lines = LogLines();
    // A code found twice is logged once, with both files and the one look-ups find; files
    // without a code are no duplicates of each other.
    const std::string a = bed_->folder + "a.ssf";
    const Lines twice{"Produktcode A doppelt: " + a + " und " + bed_->folder + "sub\\c.ssf, " + a + " gilt. "};
    Lines doubles;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(doubles), [](const std::string& line) { return line.find("doppelt") != std::string::npos; });
    EXPECT_EQ(doubles, twice);
    EXPECT_EQ(lines.back(), "                                            and SetupFile:  ");
    const auto created = std::find(lines.begin(), lines.end(), "         Created new p_objSIFApplication Entry with ProductCode: A ");
    ASSERT_NE(created, lines.end());
    ASSERT_NE(created + 1, lines.end());
    EXPECT_EQ(created[1], "                                            and SetupFile: C:\\a.exe ");
    ASSERT_EQ(catalogue.Count(), 5);
    EXPECT_EQ(catalogue.IndexOfProductCode("A"), 1);   // the first of two
    EXPECT_EQ(catalogue.IndexOfProductCode("B"), 0);   // exact comparison
    EXPECT_EQ(catalogue.IndexOfProductCode("b"), 2);
    EXPECT_EQ(catalogue.IndexOfDescription("Beta"), 2);
    EXPECT_EQ(catalogue.IndexOfDescription("Gamma"), 0);
    EXPECT_EQ(catalogue.Item(0), nullptr);
    EXPECT_EQ(catalogue.Item(6), nullptr);
    catalogue.SetSelectAllApp(false);
    EXPECT_FALSE(catalogue.Item(3)->Selected);
    catalogue.Remove(7);
    catalogue.Remove(1);
    ASSERT_EQ(catalogue.Count(), 4);
    EXPECT_EQ(catalogue.Item(1)->ProductCode, "b");
    catalogue.RemoveAllItem();
    EXPECT_EQ(catalogue.Count(), 0);
}

} // namespace
} // namespace tovel
