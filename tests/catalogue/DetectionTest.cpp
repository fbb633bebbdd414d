// Detection apart from reading: one record read once and detected on two machines, the
// file's facts untouched by either, the same result when detected again, and the log lines
// in the order the search has always written them.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "catalogue/clsSIFDetection.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

class Detection : public test::CatalogueFixture {
protected:
    /// Everything Read takes from the file, as one text to compare.
    static std::string Facts(const clsSIFApplicationItem& item) {
        std::ostringstream out;
        out << item.ProductCode << '|' << item.Build << '|' << item.DefaultPathInFile << '|' << item.TermToInstall << '|'
            << item.DependenceTerm << '|' << item.SetupFile << '|' << item.AlwaysInstall << '|' << item.DependenceCount();
        for (const auto& entry : item.DeinstallTests()) {
            for (const auto& test : entry) out << '|' << test.regPath << '\\' << test.regKey << '=' << test.expectedValue;
        }
        out << '|' << item.VersionRules.checkPackageKey << '|' << item.VersionRules.checkPackageName;
        for (const auto& section : item.VersionRules.sections) {
            out << "|[" << section.name << ']' << section.places.size() << ',' << section.versions.size() << ','
                << section.defaultActions.size() << ',' << section.firstInstActions.size();
        }
        return out.str();
    }
    /// What detection decided, as one text to compare.
    static std::string Outcome(const clsSIFApplicationItem& item) {
        std::ostringstream out;
        out << item.CheckBox << '|' << item.Selected << '|' << item.TermToInstallOutcome.holds << '|'
            << item.DependenceTypeOtherTrue << '|' << item.DependenceTypeOtherTrueCheckBox << '|' << item.DefaultPath << '|'
            << item.RegDefaultDestPath << '|' << item.DeinstallEntryMatches(1) << item.DeinstallEntryMatches(2) << '|'
            << item.InstalledVersion << '|' << item.Versions.reason;
        for (int i = 1; i <= item.VersionActionsCount(); ++i) out << '|' << item.GetAction(i);
        for (int i = 1; i <= item.FirstInstActionsCount(); ++i) out << "|first " << item.GetFirstInstAction(i);
        return out.str();
    }
    /// Detects the record on another, fresh machine, then puts this test's machine back.
    static void DetectOnFreshMachine(const clsSIFDetection& detection, clsSIFApplicationItem& item) {
        auto other = test::MakeTestBed();
        auto mine = InstallPlatform(std::move(other->platform));
        detection.Detect(item);
        other->platform = InstallPlatform(std::move(mine));
    }
};

TEST_F(Detection, OneRecordReadOnceGivesEachMachineItsOwnOutcome) {
    const std::string version = RegPath("Prod") + "\\Version";
    const std::string term = "t;registry;" + version + ";regsz;NOTEXIST;;disableduncheckbox;uncheckbox";
    const std::string file = "[GENERAL]\r\nFileType=ssf\r\nProductCode=PROD\r\nBuild=6.0\r\nSSFVersion=5.2\r\n"
                             "DefaultPath=%AppSSFSourcePath%Prod\r\nDefaultPathRegPath=" + RegPath("Prod") +
                             "\r\nDefaultPathRegKey=Path\r\nTermToInstall=" + term + "\r\n"
                             "[LANGUAGES]\r\nLanguageX=E\r\n[E]\r\nDescription=Prod\r\n"
                             "DeinstallRegPath1_1=" + RegPath("Prod") + "\r\nDeinstallRegKey1_1=Version\r\n"
                             "DeinstallExpectedValue1_1=5.1\r\n"
                             "DeinstallRegPath2_1=" + RegPath("Prod") + "\r\nDeinstallRegKey2_1=Version\r\n"
                             "DeinstallExpectedValue2_1=4.0\r\n"
                             "[SETUP_DEPENDENCIES]\r\nProductCode1=OTHER\r\nDependenceTerm=" + term + "\r\n"
                             "[VERSIONS]\r\nRegPath1=" + RegPath("Prod") + "\r\nRegKey1=Version\r\n"
                             "Version1=5.1\r\nVersion1Action1=$TryUpdate$\r\nFirstInstAction1=prepare.exe\r\n";
    clsSIFApplicationItem item;
    item.Read(WriteFile("Prod\\prod.ssf", file), bed_->folder);
    const std::string facts = Facts(item);
    // Reading alone reads no registry and expands nothing.
    EXPECT_EQ(item.DefaultPath, "%AppSSFSourcePath%Prod");
    EXPECT_EQ(item.InstalledVersion, "");
    EXPECT_EQ(item.VersionActionsCount() + item.FirstInstActionsCount(), 0);
    EXPECT_EQ(LogLines(), std::vector<std::string>{});

    const clsSIFDetection detection(gPlaceholder.get());
    DetectOnFreshMachine(detection, item);
    const std::string fresh = Outcome(item);
    EXPECT_EQ(facts, Facts(item));
    EXPECT_EQ(item.CheckBox, CheckBoxState::kChecked);
    EXPECT_EQ(item.DefaultPath, bed_->folder + "Prod\\Prod");
    EXPECT_FALSE(item.DeinstallEntryMatches(1));
    EXPECT_EQ(item.GetFirstInstAction(1), "prepare.exe");
    EXPECT_EQ(gPlaceholder->AppSSFSourcePath(), "") << "the placeholders given are not rewritten";

    // This machine has 5.1 installed, with its path.
    SetRegString("Prod", "Version", "5.1");
    SetRegString("Prod", "Path", "E:\\Tovel\\Prod");
    detection.Detect(item);
    const std::string older = Outcome(item);
    EXPECT_NE(fresh, older);
    EXPECT_EQ(facts, Facts(item));
    EXPECT_EQ(item.CheckBox, CheckBoxState::kUncheckedLocked);
    EXPECT_FALSE(item.Selected);
    EXPECT_FALSE(item.DependenceTypeOtherTrue);
    EXPECT_EQ(item.DefaultPath, "E:\\Tovel\\Prod");
    EXPECT_TRUE(item.DeinstallEntryMatches(1));
    EXPECT_FALSE(item.DeinstallEntryMatches(2));
    EXPECT_EQ(item.InstalledVersion, "5.1");
    EXPECT_EQ(item.VersionActionsCount(), 1);
    EXPECT_EQ(item.FirstInstActionsCount(), 0);

    // Detected again on the same machine: the same, nothing added twice.
    detection.Detect(item);
    EXPECT_EQ(Outcome(item), older);
    // And without placeholders the default path stays as written.
    SetRegString("Prod", "Path", "");
    clsSIFDetection(nullptr).Detect(item);
    EXPECT_EQ(item.DefaultPath, "%AppSSFSourcePath%Prod");
}

TEST_F(Detection, LogsTheConditionsBeforeTheVersionsSection) {
    const std::string bad = "t;file;x;regsz;=;1;uncheckbox;uncheckbox";
    clsSIFApplicationItem item;
    item.Read(WriteFile("p.ssf", "[GENERAL]\r\nProductCode=P\r\nSSFVersion=5.2\r\nTermToInstall=" + bad + "A\r\n"
                                 "[SETUP_DEPENDENCIES]\r\nDependenceTerm=" + bad + "B\r\n[VERSIONS]\r\n"),
              bed_->folder);
    clsSIFDetection(gPlaceholder.get()).Detect(item);
    const auto lines = LogLines();
    std::vector<std::string> firstWords;
    for (const auto& line : lines) {
        if (line.find(bad) != std::string::npos) firstWords.push_back(line.substr(line.find(bad) + bad.size(), 1));
        if (line.rfind("VersionsSection", 0) == 0 || line.rfind("No Installed", 0) == 0) firstWords.push_back(line);
    }
    EXPECT_EQ(firstWords, (std::vector<std::string>{"A", "B", "VersionsSection Default ", "No Installed Version P "}));
}

} // namespace
} // namespace tovel
