// Removal of old versions, the disc's uninstall list and documents opened with their program,
// on a fresh machine.
#include <gtest/gtest.h>

#include "catalogue/clsSIFApplicationItem.h"
#include "install/clsCallFiles.h"
#include "install/clsDeinstall.h"
#include "install/clsDeinstallList.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

TEST(DeinstallCommandTest, AutomaticAnswersGoBeforeTheFirstF) {
    const std::pair<std::string, std::string> cases[] = {
        {"C:\\WINDOWS\\IsUninst.exe -f\"C:\\Program Files\\X\\Uninst.isu\"",
         "C:\\WINDOWS\\IsUninst.exe -a -y -f\"C:\\Program Files\\X\\Uninst.isu\""},
        {"C:\\WINDOWS\\IsUninst.exe -F\"x.isu\" -f\"y\"", "C:\\WINDOWS\\IsUninst.exe -a -y -F\"x.isu\" -f\"y\""},
        {"MsiExec.exe /X{1234}", "MsiExec.exe /X{1234}"},
        {"C:\\x-f.exe", "C:\\x-f.exe"},
        {"", ""},
    };
    for (const auto& [command, expected] : cases) EXPECT_EQ(clsDeinstall::WithAutoAnswers(command), expected) << command;
}

class DeinstallTest : public CatalogueFixture {};

TEST_F(DeinstallTest, TheListReusesAnEntryOrAddsOneWithThreeDigits) {
    const clsDeinstallList list(RegPath("Uninstall list"));
    EXPECT_EQ(list.Record("BASE", {"Base Key"}, ""), 1);
    EXPECT_EQ(list.Record("VIEW", {"View Key", "Old View"}, "/q"), 2);
    EXPECT_EQ(list.Record("VIEW2", {"Other", "view key"}, ""), 2) << "any of the keys, any case";
    for (int i = 3; i <= 10; ++i) (void)list.Record("P" + std::to_string(i), {"Key " + std::to_string(i)}, "");

    clsRegistry key;
    ASSERT_TRUE(key.InitWithRegPath(RegPath("Uninstall list")));
    const std::pair<const char*, const char*> values[] = {
        {"Count", "10"},    {"Prod001", "SKey=BASE DeinstallKey=Base Key"}, {"Param001", " "},
        {"Param002", " "},  {"Prod002", "SKey=VIEW2 DeinstallKey=Other"},   {"Prod010", "SKey=P10 DeinstallKey=Key 10"},
    };
    for (const auto& [name, value] : values) EXPECT_EQ(key.QueryValue(name), value) << name;

    EXPECT_EQ(list.Record("NONE", {}, ""), 0);
    EXPECT_EQ(clsDeinstallList("").Record("X", {"K"}, ""), 0);
    EXPECT_EQ(clsDeinstallList::EntryName("Prod", 7), "Prod007");
}

TEST_F(DeinstallTest, ADamagedCountStartsAFreshList) {
    SetRegString("Damaged", "Count", "lots");
    const clsDeinstallList list(RegPath("Damaged"));
    EXPECT_EQ(list.Record("BASE", {"Base Key"}, "-x"), 1);
    EXPECT_EQ(list.Find({"base key"}), 1);
}

TEST_F(DeinstallTest, AProductIsRecordedWithTheNumberedKeysOfItsFile) {
    clsSIFApplicationItem item;
    item.ProductCode = "HMIRT";
    item.DeinstallKey = "Plain";
    item.DeinstallParam = "-silent";
    item.SIFFileName = WriteFile("p.ssf", "[GENERAL]\r\nDeinstallKey1=First\r\nDeinstallKey2=Second\r\nDeinstallKey4=Never\r\n");
    EXPECT_EQ(clsDeinstallList::DeinstallKeysOf(item.SIFFileName), (std::vector<std::string>{"First", "Second"}));
    const clsDeinstallList list(RegPath("List"));
    EXPECT_EQ(list.RecordProduct(item), 1);
    item.SIFFileName = WriteFile("q.ssf", "[GENERAL]\r\n");
    EXPECT_EQ(list.RecordProduct(item), 2);
    clsRegistry key;
    ASSERT_TRUE(key.InitWithRegPath(RegPath("List")));
    EXPECT_EQ(key.QueryValue("Prod001"), "SKey=HMIRT DeinstallKey=First");
    EXPECT_EQ(key.QueryValue("Param001"), "-silent");
    EXPECT_EQ(key.QueryValue("Prod002"), "SKey=HMIRT DeinstallKey=Plain");
}

TEST_F(DeinstallTest, RemovalRunsTheCommandAndLogsBeginAndEnd) {
    const std::string name = "TovelTest " + bed_->registryKey;
    clsRegistry uninstall(RegRoot::LocalMachine, std::string(clsDeinstall::kUninstallPath) + name);
    ASSERT_TRUE(uninstall.SetKeyValue("UninstallString", "\"" + bed_->childProgram + "\" 0 10 -f\"x.isu\"", RegType::Sz));
    clsDeinstall::Run(" " + name + " ");
    clsDeinstall::Run("");
    (void)clsRegistry::DeleteKey2(clsDeinstall::KeyPath(name));
    const std::vector<std::string> expected{
        "-------------b e g i n D e i n s t a l l ------------ ",
        "Deinstalliere  : " + name + " ",
        "DeinstallAufruf: \"" + bed_->childProgram + "\" 0 10 -a -y -f\"x.isu\" ",
        "---------------e n d e D e i n s t a l l ------------ ",
    };
    EXPECT_EQ(LogLines(), expected);

    clsDeinstall::Run("No Such Product");
    EXPECT_EQ(LogLines().size(), 7u) << "begin and end with nothing between";
}

TEST_F(DeinstallTest, CallFileWaitsForTheProgramOrNamesTheShellError) {
    EXPECT_EQ(clsCallFiles::CallFile(bed_->childProgram, "0 10").number, 0);
    const CallFileError missing = clsCallFiles::CallFile(bed_->folder + "missing.txt");
    EXPECT_EQ(missing.number, 5);
    EXPECT_EQ(missing.source, "ShellExecuteEx");
    EXPECT_EQ(missing.description, "File not found.");
    const CallFileError unknown = clsCallFiles::CallFile(WriteFile("notes.tovelunknown", "x"));
    EXPECT_EQ(unknown.description, "Could not find associated Exe.");
    EXPECT_EQ(clsCallFiles::ErrorOf(5).description, "Access denied.");
    EXPECT_EQ(clsCallFiles::ErrorOf(8).number, 0);
    EXPECT_EQ(LogLines().front(), "Readme Call: " + bed_->childProgram + " 0 10 ");
}

} // namespace
} // namespace tovel::test
