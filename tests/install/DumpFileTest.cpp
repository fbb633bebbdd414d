// The state file on a fresh machine: what CreateDumpFile writes, that ReadDumpFile gives back
// every saved value, and that a file cut short, damaged or from another disc is refused whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "catalogue/clsSIFApplication.h"
#include "catalogue/clsSIFPacketItem.h"
#include "common/mdlMessage.h"
#include "install/clsDumpFile.h"
#include "settings/clsIniFile.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

constexpr int32_t kAccessViolation = -1073741819;

struct Written {
    std::string section, key, value;
};

class DumpFile : public CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        SetDisc("Disc One");
        HomePath = bed_->folder;
    }
    void TearDown() override {
        SetMessageBoxHandler({});
        HomePath.clear();
        NoOSCheck = false;
        CatalogueFixture::TearDown();
    }

    void SetDisc(const std::string& name) {
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\nDiscName=" + name + "\r\nDiscID=D1\r\nPackversion=7.1\r\n");
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
    }

    /// A product with every saved field set apart from its default and n entries in each list.
    static clsSIFApplicationItem Product(int i, int n) {
        clsSIFApplicationItem item;
        const std::string s = std::to_string(i);
        int k = 0;
        for (std::string* text : {&item.SIFFileName, &item.ProductCode, &item.Build, &item.Description, &item.LongDescription,
                                  &item.AlternativeDescription, &item.DeinstallName, &item.DeinstallKey, &item.DeinstallParam,
                                  &item.DisplayName, &item.LogFile, &item.InstStatusSection, &item.InstStatus, &item.SetupDiscID,
                                  &item.SetupFile, &item.SetupFileParameters, &item.ShowReadMe, &item.AvailableLanguages,
                                  &item.UserName, &item.CompanyName, &item.SetupMode, &item.DestDrive, &item.DestPath,
                                  &item.RegDefaultDestPath, &item.DataDrive, &item.Languages, &item.InstallationComment,
                                  &item.InstalledVersion, &item.TSInstallVersion}) {
            *text = "v" + s + "-" + std::to_string(++k);
        }
        item.SetupFile = "D:\\Prod" + s + "\\setup.exe";
        item.AutoDeinstall = "1";
        item.VelmarProduct = false;
        item.IsCriticalComponent = item.AlwaysInstall = item.HideInstall = item.ShowDialogWait = true;
        item.Visible = item.Selected = false;
        item.DiskSpaceDestDrv = 100 + i;
        item.DestDrvSpace_A = 1, item.DestDrvSpace_B = 2, item.DestDrvSpace_C = 3, item.DestDrvSpace_D = 4, item.DestDrvSpace_E = 5;
        item.EstimatedTime = 30;
        item.RegisterInRunOnce = 0;
        for (int j = 1; j <= n; ++j) {
            const std::string e = s + "." + std::to_string(j);
            item.AddDependence("DEP" + e);
            item.AddStartOnBegin("start" + e + ".exe", "/p " + e);
            item.AddSetupDependence("SD" + e, static_cast<DependenceType>(j % 7), "R" + e + "~");
            item.AddAction("action" + e);
            item.AddApplicationTitle("Title " + e);
            item.AddNotStartOnEndProgram("noend" + e);
            item.AddFirstinstAction("first" + e);
        }
        return item;
    }

    std::string DumpText() const { return Platform().Files().ReadFile(clsDumpFile::DumpFilePath()).value_or(""); }

    static std::vector<Written> Keys(const clsDumpFile& dump) {
        std::vector<Written> keys;
        dump.WriteKeys([&](const std::string& s, const std::string& k, const std::string& v) { keys.push_back({s, k, v}); });
        return keys;
    }
    bool LogHas(const std::string& part) const { return LogText().find(part) != std::string::npos; }
};

TEST_F(DumpFile, WritesEverySectionAndKeyInOrder) {
    clsSIFApplication apps;
    for (int i = 1; i <= 12; ++i) apps.AddItem(Product(i, i == 12 ? 2 : i == 3 ? 0 : 1));
    clsSIFPacketItem packet;   // a packet without products
    clsDumpFile dump(apps, packet);
    dump.CreateDumpFile();
    const std::string text = DumpText();

    EXPECT_NE(text.find("[InstallPacketItem]\r\nProductCode=\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\nProductCount=0\r\n[SIFApplication]\r\nCount=12\r\nSIFFileName1="), std::string::npos);
    EXPECT_NE(text.find("\r\ngetAction12\\2=action12.2\r\n"), std::string::npos);
    // Product 3 has empty lists: every count 0, no entry keys.
    for (const char* count : {"DependenciesCount3=0", "StartOnBeginCount3=0", "SetupDependenciesCount3=0", "VersionActionsCount3=0",
                              "ApplicationTitlesCount3=0", "NotStartOnEndProgramsCount3=0", "FirstInstActionsCount3=0"}) {
        EXPECT_NE(text.find(std::string("\r\n") + count + "\r\n"), std::string::npos) << count;
    }
    EXPECT_EQ(text.find("3\\1="), std::string::npos);
    EXPECT_TRUE(text.ends_with("ShowDialogWait12=True\r\n"));

    // The key names of product 1 in the order written.
    std::vector<std::string> names;
    for (const auto& key : Keys(dump)) {
        if (key.section != "SIFApplication" || key.key == "Count") continue;
        names.push_back(key.key);
        if (key.key == "ShowDialogWait1") break;
    }
    const std::vector<std::string> expected{
        "SIFFileName1", "ProductCode1", "Build1", "Description1", "LongDescript1", "AlternativeDescription1", "AutoDeinstall1",
        "DeinstallName1", "DeinstallKey1", "DeinstallParam1", "DisplayName1", "VelmarProduct1", "LogFile1", "InstStatusSection1",
        "InstStatus1", "SetupDiscID1", "SetupFile1", "SetupFileParameters1", "ReadMePath1", "DestDrvSpace1", "AvailableLanguages1",
        "DestDrvSpace_A1", "DestDrvSpace_B1", "DestDrvSpace_C1", "DestDrvSpace_D1", "DestDrvSpace_E1", "isCriticalComponent1",
        "Visible1", "AlwaysInstall1", "HideInstall1", "EstimatedTime1", "UserName1", "CompanyName1", "SetupMode1",
        "RegisterInRunOnce1", "DestDrive1", "DestPath1", "RegDefaultDestPath1", "DataDrive1", "Languages1", "Selected1",
        "InstallationComment1", "InstalledVersion1", "TSInstallVersion1", "StartOnBeginCount1", "Dependencies1\\1",
        "DependenciesCount1", "getStartOnBeginProgram1\\1", "getStartOnBeginParameter1\\1", "SetupDependenciesCount1",
        "getSetupDependence1\\1", "getSetupDependenceType1\\1", "getSetupDependenceAllAR1\\1", "VersionActionsCount1",
        "getAction1\\1", "ApplicationTitlesCount1", "getApplicationTitle1\\1", "NotStartOnEndProgramsCount1",
        "GetNotStartOnEndProgram1\\1", "FirstInstActionsCount1", "getFirstInstAction1\\1", "ShowDialogWait1"};
    EXPECT_EQ(names, expected);

    EXPECT_NE(text.find("[Info]\r\nTovelsetuppath=" + bed_->folder), std::string::npos);
    EXPECT_NE(text.find("\r\nVersion=D1 7.1\r\nDiscname=Disc One\r\n"), std::string::npos);
    HomePath = "C:\\Disc";
    EXPECT_TRUE(clsDumpFile::ProgramPath().starts_with("C:\\Disc\\") && clsDumpFile::ProgramPath().ends_with(".EXE"));
    HomePath = "C:\\Disc/";
    EXPECT_EQ(clsDumpFile::ProgramPath().find("C:\\Disc/\\"), std::string::npos);

    const auto lines = LogLines();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[lines.size() - 3], "Create Dumpfile Path = " + bed_->folder + "INSTDUMP.TMP ");
    EXPECT_EQ(lines[lines.size() - 2], "------------------------------------------------------- ");
    EXPECT_EQ(lines.back(), "Installation Status Saved. Prepared for System Restart. ");
}

TEST_F(DumpFile, ReadsBackEveryValueIntoFreshObjects) {
    clsSIFApplication apps;
    for (int i = 1; i <= 4; ++i) apps.AddItem(Product(i, i));
    clsSIFPacketItem packet;
    packet.ProductCode = "PACK";
    packet.Description = "Gro\xC3\x9F und klein";   // written in the code page, read back as UTF-8
    packet.LongDescription = "long";
    packet.AlternativeDescription = "alt";
    packet.Selected = true;
    packet.AddDependence("P1");
    packet.AddDependence("P2");
    for (const char* code : {"B", "A", "C"}) packet.Add(code);
    clsDumpFile dump(apps, packet);
    dump.SetRunningSetupIndex(3);
    dump.SetSetupStatus(kAccessViolation);
    dump.SetRunningSetupFileName("\"D:\\Prod 3\\setup.exe\" /s");
    dump.SetSetupFailed("Product A\r\nProduct \\B\r\n");
    DefaultLanguage = 2;
    NoOSCheck = true;
    dump.CreateDumpFile();
    EXPECT_NE(DumpText().find("\r\nSetupStatus=-1073741819\r\n"), std::string::npos);

    DefaultLanguage = 1;
    NoOSCheck = false;
    clsSIFApplication readApps;
    clsSIFPacketItem readPacket;
    clsDumpFile read(readApps, readPacket);
    ASSERT_TRUE(read.ReadDumpFile()) << LogText();
    EXPECT_EQ(read.RunningSetupIndex(), 3);
    EXPECT_EQ(read.SetupStatus(), kAccessViolation);
    EXPECT_EQ(read.RunningSetupFileName(), dump.RunningSetupFileName());
    EXPECT_EQ(read.SetupFailed(), "Product A\r\nProduct \\B\r\n");
    EXPECT_EQ(DefaultLanguage, 2);
    EXPECT_TRUE(NoOSCheck);
    EXPECT_EQ(readPacket.ProductCodes(), (std::vector<std::string>{"B", "A", "C"}));
    EXPECT_EQ(readPacket.Dependencies(), packet.Dependencies());
    EXPECT_EQ(readPacket.Description, packet.Description);
    ASSERT_EQ(readApps.Count(), 4);
    EXPECT_EQ(readApps.Item(4)->GetSetupDependenceType(4), 4);
    // Every key but the time of writing is the same when written again from what was read.
    auto before = Keys(dump), after = Keys(read);
    ASSERT_EQ(before.size(), after.size());
    for (size_t i = 0; i < before.size(); ++i) {
        if (before[i].key == "Interrupted") continue;
        EXPECT_EQ(before[i].key + "=" + before[i].value, after[i].key + "=" + after[i].value);
    }
}

TEST_F(DumpFile, OnePassGivesTheBytesOfWritingKeyByKey) {
    clsSIFApplication apps;
    apps.AddItem(Product(1, 2));
    apps.AddItem(Product(2, 0));
    apps.Item(2)->Description = "Stra\xC3\x9F" "e \xE2\x82\xAC \xE6\x97\xA5";   // the euro sign and a kanji 1252 lacks
    apps.Item(2)->UserName = "two\r\nlines";
    clsSIFPacketItem packet;
    packet.Add("P1");
    clsDumpFile dump(apps, packet);
    dump.CreateDumpFile();
    const std::string onePass = DumpText();
    clsIniFile check;
    check.SetFullPath(clsDumpFile::DumpFilePath());
    check.SetSectionName("Info");
    const std::string interrupted = check.GetString("Interrupted", "");

    clsIniFile ini;
    ini.SetFullPath(bed_->folder + "keybykey.ini");
    dump.WriteKeys([&](const std::string& section, const std::string& key, const std::string& value) {
        ini.SetSectionName(section);
        ini.PutString(key, key == "Interrupted" ? interrupted : value);
    });
    EXPECT_EQ(onePass, Platform().Files().ReadFile(bed_->folder + "keybykey.ini").value_or("?"));
    EXPECT_NE(onePass.find("UserName2=two  lines\r\n"), std::string::npos);
}

TEST_F(DumpFile, RefusesAFileCutShortDamagedOrFromAnotherDisc) {
    clsSIFApplication apps;
    for (int i = 1; i <= 3; ++i) apps.AddItem(Product(i, 2));
    clsSIFPacketItem packet;
    packet.Add("P1");
    clsDumpFile dump(apps, packet);
    dump.SetSetupStatus(5);
    DefaultLanguage = 0;
    dump.CreateDumpFile();
    const std::string good = DumpText();

    // What a refused file must leave alone.
    clsSIFApplication kept;
    kept.AddItem(Product(9, 1));
    clsSIFPacketItem keptPacket;
    keptPacket.ProductCode = "KEPT";
    auto refused = [&](const std::string& bytes, const std::string& logPart) {
        WriteFile("INSTDUMP.TMP", bytes);
        DefaultLanguage = 1;
        clsDumpFile read(kept, keptPacket);
        read.SetSetupStatus(77);
        EXPECT_FALSE(read.ReadDumpFile());
        EXPECT_EQ(read.SetupStatus(), 77);
        EXPECT_EQ(DefaultLanguage, 1);
        EXPECT_EQ(kept.Count(), 1);
        EXPECT_EQ(keptPacket.ProductCode, "KEPT");
        EXPECT_TRUE(LogHas(logPart)) << logPart;
    };
    const std::string damaged = "the file is incomplete or damaged (";
    refused(good.substr(0, good.size() - 4), damaged + "SIFApplication ShowDialogWait3 unreadable");   // "Tr" of True left
    refused(good.substr(0, good.rfind("ShowDialogWait3")), damaged + "SIFApplication ShowDialogWait3 missing");
    refused(good.substr(0, good.size() / 2), damaged);
    refused(good.substr(0, 40), damaged);
    refused("", damaged + "Info Discname missing");
    constexpr char kGarbage[] = "\x00\xFF\x13garbage\r\n[[[\x80\x81";
    refused(std::string(kGarbage, sizeof kGarbage - 1), damaged);
    std::string badStatus = good;
    badStatus.replace(badStatus.find("SetupStatus=5"), 13, "SetupStatus=x5");
    refused(badStatus, damaged + "Parameters SetupStatus unreadable");
    std::string shortCount = good;
    shortCount.replace(shortCount.find("Count=3"), 7, "Count=2");
    refused(shortCount, damaged + "SIFApplication Count smaller");
    ASSERT_TRUE(Platform().Files().DeleteFile(clsDumpFile::DumpFilePath()));
    {
        clsDumpFile read(kept, keptPacket);
        EXPECT_FALSE(read.ReadDumpFile());
        EXPECT_TRUE(LogHas("INSTDUMP.TMP cannot be read"));
    }

    // Another disc in the drive: the prompt until the user cancels, or until the disc is right.
    WriteFile("INSTDUMP.TMP", good);
    SetDisc("Disc Two");
    std::vector<int> styles;
    SetMessageBoxHandler([&](const std::string&, int style, const std::string&) {
        styles.push_back(style);
        if (styles.size() == 2) SetDisc("Disc One");
        return styles.size() == 1 ? mb::kIdOk : mb::kIdCancel;
    });
    refused(good, "the disc \"Disc One\" was not inserted");
    EXPECT_EQ(styles.size(), 2u);
    EXPECT_EQ(styles[0] & 7, mb::kOkCancel);
    styles.clear();
    SetDisc("Disc Two");
    SetMessageBoxHandler([&](const std::string&, int, const std::string&) {
        styles.push_back(0);
        SetDisc("Disc One");
        return mb::kIdOk;
    });
    clsDumpFile read(kept, keptPacket);
    EXPECT_TRUE(read.ReadDumpFile());
    EXPECT_EQ(styles.size(), 1u);
    EXPECT_EQ(kept.Count(), 3);
    EXPECT_EQ(read.SetupStatus(), 5);
    EXPECT_EQ(DefaultLanguage, 0);
}

} // namespace
} // namespace tovel::test
