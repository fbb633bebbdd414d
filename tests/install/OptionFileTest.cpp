// OPFILE.TXT: where it lies, what the run writes for a product's setup and what it reads back.
#include <gtest/gtest.h>

#include "install/clsOptionFile.h"
#include "settings/clsIniFile.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

TEST(OptionFilePlaceTest, NamedPathsAndTheUnusableDriveRewrite) {
    const auto onlyC = [](const std::string& root) { return root == "C:\\" || root == "c:\\"; };
    struct Case {
        std::string parameters;
        std::string path;
        std::string rewrittenParameters;   // "" when the parameters stay
    };
    const Case cases[] = {
        {"/silent", "C:\\OPFILE.TXT", ""},
        {"/s OF:C:\\TEMP\\OPFILE.TXT /q", "C:\\TEMP\\OPFILE.TXT", ""},
        {"/s of:c:\\temp\\opfile.txt /q", "c:\\temp\\opfile.txt", ""},   // the marker in any case
        {"OPFILE=C:\\X\\OPFILE.TXT", "C:\\X\\OPFILE.TXT", ""},
        {"/s OF:D:\\TEMP\\OPFILE.TXT /q", "C:\\OPFILE.TXT", "/s OF:C:\\OPFILE.TXT /q"},
        {"OPFILE=E:\\OPFILE.TXT", "C:\\OPFILE.TXT", "OPFILE=C:\\OPFILE.TXT"},
        {"OF:C:\\TEMP\\RESULT.INI", "C:\\OPFILE.TXT", ""},                // no file name: the default
        {"OF:C:\\A\\OPFILE.TXT OPFILE=C:\\B\\OPFILE.TXT", "C:\\A\\OPFILE.TXT", ""},
    };
    for (const auto& c : cases) {
        const OptionFilePlace place = clsOptionFile::Place(c.parameters, "C:\\", onlyC);
        EXPECT_EQ(place.path, c.path) << c.parameters;
        EXPECT_EQ(place.parameters, c.rewrittenParameters.empty() ? c.parameters : c.rewrittenParameters) << c.parameters;
        EXPECT_EQ(place.rewritten, !c.rewrittenParameters.empty()) << c.parameters;
    }
}

TEST(OptionFileRequestsTest, SourcesOfTheRequestsAndTheirOrder) {
    clsSIFApplicationItem item;
    item.AvailableLanguages = "ABC";
    item.UserName = "Anna";
    item.CompanyName = "Werk";
    item.DestPath = "D:\\Tovel\\Base";
    item.TSInstallVersion = "5.2.0";
    InstallContext context;
    context.setupLanguage = "A";
    context.productLanguages = "CJB";
    context.discSetupMode = "Batch";
    context.instType = "Full";
    context.jumpOverParam = true;
    context.commonDrive = "E";
    const std::vector<OptionRequest> expected{
        {"SetupLanguage", "A"}, {"LanguagesToInstall", "CB"}, {"StartLanguage", "C"}, {"NameOfUser", "Anna"},
        {"NameOfCompany", "Werk"}, {"SetupMode", "Batch"}, {"DestinationDrive", "D"},
        {"DestinationPath", "\\Tovel\\Base"}, {"CommonDrive", "E"}, {"InstType", "Full"}, {"JumpOverParam", "1"},
        {"TSInstallVersion", "5.2.0"}, {"NoOSCheck", "0"}};
    EXPECT_EQ(clsOptionFile::Requests(item, context), expected);

    // The product's own mode wins; a one-letter destination has no path; nothing chosen
    // installs the setup language when the product offers it.
    item.SetupMode = "Silent";
    item.DestPath = "D";
    context.productLanguages.clear();
    const auto requests = clsOptionFile::Requests(item, context);
    ASSERT_EQ(requests.size(), 12u);
    EXPECT_EQ(requests[1].value, "A");
    EXPECT_EQ(requests[2].value, "A");
    EXPECT_EQ(requests[5].value, "Silent");
    EXPECT_EQ(requests[7].key, "CommonDrive");
}

class OptionFileTest : public CatalogueFixture {
protected:
    InstallStep Step() const {
        InstallStep step;
        step.description = "Base Services";
        step.setupFile = "D:\\Base\\Setup.exe";
        step.parameters = "/silent";
        step.optionFilePath = bed_->folder + "OPFILE.TXT";
        step.requests = {{"SetupLanguage", "B"}, {"SetupMode", "Batch"}};
        step.extraEntries = {{"SetupMode", "Expert"}, {"Licence", "42"}};
        return step;
    }
    std::string Read(const std::string& section, const std::string& key) {
        clsIniFile ini;
        ini.SetFullPath(bed_->folder + "OPFILE.TXT");
        ini.SetSectionName(section);
        return ini.GetString(key, "<missing>");
    }
};

TEST_F(OptionFileTest, CreateWritesTheSectionsInOrderAndLogsOverrides) {
    WriteFile("OPFILE.TXT", "[RESULTS]\r\nSetupSucceeded=0\r\nStale=1\r\n");
    clsOptionFile file;
    ASSERT_TRUE(file.CreateOptionFile(Step()));

    const std::string text = Platform().Files().ReadFile(bed_->folder + "OPFILE.TXT").value_or("");
    EXPECT_EQ(text.find("Stale"), std::string::npos) << "the old file is deleted first";
    const size_t description = text.find("[Description]");
    const size_t requests = text.find("[SETUPREQUESTS]");
    const size_t results = text.find("[RESULTS]");
    EXPECT_TRUE(description < requests && requests < results) << text;
    EXPECT_LT(text.find("SetupLanguage"), text.find("Licence"));
    EXPECT_EQ(Read("Description", "Note"), "Option File from TOVEL_SETUP");
    EXPECT_EQ(Read("Description", "FileName"), "D:\\Base\\Setup.exe");
    EXPECT_EQ(Read("SETUPREQUESTS", "SetupMode"), "Expert");
    EXPECT_EQ(Read("SETUPREQUESTS", "Licence"), "42");
    EXPECT_EQ(Read("RESULTS", "SetupSucceeded"), "");
    EXPECT_EQ(Read("RESULTS", "RebootRequested"), "");

    const std::vector<std::string> expected{
        "     [SETUPREQUESTS] ",
        "     SetupLanguage=B ",
        "     SetupMode=Batch ",
        "     KEY: SetupMode gefunden.      Wert: Batch ",
        "     KEY: SetupMode überschrieben. Wert: Expert ",
        "     KEY: Licence überschrieben. Wert: 42 ",
    };
    EXPECT_EQ(LogLines(), expected);
}

TEST_F(OptionFileTest, AFileThatCannotBeWrittenIsLogged) {
    InstallStep step = Step();
    step.optionFilePath = bed_->folder + "no such folder\\OPFILE.TXT";
    clsOptionFile file;
    EXPECT_FALSE(file.CreateOptionFile(step));
    EXPECT_EQ(LogLines().back(), "OPFile can not be created. ");
}

TEST_F(OptionFileTest, ResultsAreReadLowerCasedUpToTheFirstEmptyProgram) {
    WriteFile("OPFILE.TXT", "[RESULTS]\r\nSetupSucceeded=1\r\nRebootRequested=2\r\nParamAfterReboot=/resume\r\n"
                            "StartOnEnd1=C:\\Tools\\Viewer.EXE\r\nParaStartOnEnd1=/Open X\r\n"
                            "StartOnEnd2=C:\\Tools\\Second.exe\r\nStartOnEnd4=C:\\never.exe\r\n");
    clsOptionFile file;
    file.ReadOptionFileResults(bed_->folder + "OPFILE.TXT");
    EXPECT_EQ(file.SetupSucceeded(), "1");
    EXPECT_EQ(file.RebootRequested(), 2);
    EXPECT_EQ(file.ParamAfterReboot(), "/resume");
    ASSERT_EQ(file.StartOnEndProgramCount(), 2);
    EXPECT_EQ(file.StartOnEndProgram(1), "c:\\tools\\viewer.exe");
    EXPECT_EQ(file.StartOnEndParameter(1), "/open x");
    EXPECT_EQ(file.StartOnEndParameter(2), "");
    EXPECT_EQ(file.StartOnEndProgram(3), "");
    EXPECT_EQ(file.StartOnEndProgram(0), "");

    const auto lines = LogLines();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0].rfind("TimeStamp - End: ", 0), 0u);
    EXPECT_EQ(lines[0].substr(lines[0].size() - 12), " (hh:mm:ss) ");
    EXPECT_EQ(lines[1], "OPFILE.TXT Results: ");
    EXPECT_EQ(lines[2], "     [RESULTS] ");
    EXPECT_EQ(lines.back(), "End of OPFILE.TXT Results. ");
}

TEST_F(OptionFileTest, AnEmptyFirstProgramOrNoFileGivesNothing) {
    WriteFile("OPFILE.TXT", "[RESULTS]\r\nStartOnEnd1=\r\nStartOnEnd2=C:\\x.exe\r\nRebootRequested=junk\r\n");
    clsOptionFile file;
    file.ReadOptionFileResults(bed_->folder + "OPFILE.TXT");
    EXPECT_EQ(file.StartOnEndProgramCount(), 0);
    EXPECT_EQ(file.RebootRequested(), 0);

    file.ReadOptionFileResults(bed_->folder + "missing.txt");
    EXPECT_EQ(file.SetupSucceeded(), "");
    EXPECT_EQ(file.RebootRequested(), 0);
    EXPECT_EQ(file.StartOnEndProgramCount(), 0);
}

TEST_F(OptionFileTest, ExtraEntriesKeepOnlyKeysWithValues) {
    const std::string sif = WriteFile("p.ssf", "[OPFILEENTRIES_BEGIN]\r\nSetupMode=Expert\r\nEmpty=\r\nQuoted=\"a b\"\r\n");
    const std::vector<IniEntry> expected{{"SetupMode", "Expert"}, {"Quoted", "a b"}};
    EXPECT_EQ(clsOptionFile::ExtraEntries(sif), expected);
    EXPECT_TRUE(clsOptionFile::ExtraEntries(bed_->folder + "none.ssf").empty());
}

} // namespace
} // namespace tovel::test
