// The disc check on small discs written onto a fresh machine: a clean disc gives nothing,
// and each broken disc gives exactly the one finding of its kind.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "catalogue/clsDependencyCycles.h"
#include "catalogue/clsDiscCheck.h"
#include "platform/clsPlatform.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {
namespace {

using Files = std::map<std::string, std::string>;

const Files& CleanDisc() {
    static const Files files{
        {"Setups.ini",
         "[SETTINGS]\r\nPath=Products\r\nCheckForAdmin=True\r\nLevel=3\r\n"
         "[LANGUAGES]\r\nGerman=disable\r\nEnglish=enable\r\nFrench=disable\r\nSpanish=disable\r\nItalian=disable\r\nJapanese=disable\r\n"
         "[English]\r\nAppTitle=Test\r\n"},
        {"Products\\A.ssf",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=A\r\nDefaultPath=%ProgramPath%A\r\n"
         "TermToInstall=t;registry;HKEY_LOCAL_MACHINE\\SOFTWARE\\A\\Version;regsz;=>;1.0;uncheckbox;uncheckbox\r\n"
         "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=A\r\nSetupFile=a.exe\r\n"
         "[OPFILEENTRIES_BEGIN]\r\nLicence=42\r\n"},
        {"Products\\a.exe", "MZ"},
        {"Products\\B.ssf",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=B\r\n[LANGUAGES]\r\nLanguageX=English\r\n"
         "[English]\r\nDescription=B\r\nSetupFile=a.exe\r\n[DEPENDENCIES]\r\nDependence1=A\r\n"},
        {"Products\\K.ssf",
         "[GENERAL]\r\nFileType=collection\r\nProductCode=K\r\nProductCode1=A\r\nEthernetAction=+B\r\n"
         "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=K\r\n"},
    };
    return files;
}

struct BrokenDisc {
    const char* name;
    Files change;                 ///< files replaced or added
    const char* file;             ///< the finding's file, below the disc
    size_t line;
    FindingSeverity severity;
    const char* says;             ///< part of the finding's text
};

std::string Product(const std::string& code, const std::string& more = "", const std::string& general = "") {
    return "[GENERAL]\r\nFileType=ssf\r\nProductCode=" + code + "\r\n" + general + "[LANGUAGES]\r\nLanguageX=English\r\n"
           "[English]\r\nDescription=" + code + "\r\nSetupFile=a.exe\r\n" + more;
}

const std::vector<BrokenDisc>& BrokenDiscs() {
    using S = FindingSeverity;
    static const std::vector<BrokenDisc> discs{
        {"unknown key", {{"Products\\C.ssf", Product("C", "", "Bulid=1.0\r\n")}}, "Products\\C.ssf", 4, S::Warning, "did you mean \"Build\"?"},
        {"unknown section", {{"Products\\C.ssf", Product("C", "[DEPENDENCES]\r\nDependence1=A\r\n")}}, "Products\\C.ssf", 9, S::Warning, "did you mean [DEPENDENCIES]?"},
        {"gap in a family", {{"Products\\C.ssf", Product("C", "[DEPENDENCIES]\r\nDependence1=A\r\nDependence3=B\r\n")}}, "Products\\C.ssf", 11, S::Warning, "without a gap"},
        {"key twice", {{"Products\\C.ssf", Product("C", "", "Build=1\r\nBuild=2\r\n")}}, "Products\\C.ssf", 5, S::Warning, "only the first, on line 4"},
        {"code twice", {{"Products\\C.ssf", Product("A")}}, "Products\\C.ssf", 3, S::Error, "also the code of"},
        {"packet code twice", {{"Products\\L.ssf", "[GENERAL]\r\nFileType=Collection\r\nProductCode=k\r\n[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=L\r\n"}},
         "Products\\L.ssf", 3, S::Error, "this packet is ignored"},
        {"dependency on nothing", {{"Products\\C.ssf", Product("C", "[DEPENDENCIES]\r\nDependence1=NOPE\r\n")}}, "Products\\C.ssf", 10, S::Warning, "Dependence1=NOPE names no product"},
        {"circle", {{"Products\\C.ssf", Product("C", "[DEPENDENCIES]\r\nDependence1=D\r\n")}, {"Products\\D.ssf", Product("D", "[DEPENDENCIES]\r\nDependence1=C\r\n")}},
         "Products\\C.ssf", 10, S::Error, "in a circle: C, D"},
        {"setup file missing", {{"Products\\C.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=C\r\n[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=C\r\nSetupFile=gone.exe\r\n"}},
         "Products\\C.ssf", 8, S::Error, "gone.exe is not on the disc"},
        {"language without section", {{"Products\\C.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=C\r\n[LANGUAGES]\r\nLanguageA=German\r\n[German]\r\nDescription=C\r\nSetupFile=a.exe\r\n"}},
         "Products\\C.ssf", 4, S::Error, "no text section for English"},
        {"language section missing in Setups.ini", {{"Setups.ini", "[SETTINGS]\r\nPath=Products\r\n[LANGUAGES]\r\nGerman=hide\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n"}},
         "Setups.ini", 0, S::Warning, "[English] with its texts"},
        {"unknown placeholder", {{"Products\\C.ssf", Product("C", "", "DefaultPath=%Programpath%C\r\n")}}, "Products\\C.ssf", 4, S::Warning, "did you mean %ProgramPath%?"},
        {"term that does not parse", {{"Products\\C.ssf", Product("C", "", "TermToInstall=t;registry;HKEY_LOCAL_MASHINE\\x\\v;regsz;=;1\r\n")}}, "Products\\C.ssf", 4, S::Error, "TermToInstall cannot be read"},
        {"packet naming no product", {{"Products\\K.ssf", "[GENERAL]\r\nFileType=collection\r\nProductCode=K\r\nProductCode1=Z\r\n[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=K\r\n"}},
         "Products\\K.ssf", 4, S::Error, "ProductCode1=Z names no product"},
        {"bus entry naming no product", {{"Products\\K.ssf", "[GENERAL]\r\nFileType=collection\r\nProductCode=K\r\nProductCode1=A\r\nKWTAction=-Q\r\n[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=K\r\n"}},
         "Products\\K.ssf", 5, S::Error, "KWTAction names Q"},
        {"unknown section in Setups.ini", {{"Setups.ini", CleanDisc().at("Setups.ini") + "[x]\r\n"}}, "Setups.ini", 14, S::Warning, "[x] is never read"},
        {"numbered text missing", {{"Setups.ini", "[SETTINGS]\r\nPath=Products\r\n[LANGUAGES]\r\nGerman=enable\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n[German]\r\nAppTitle=T\r\n[English]\r\nAppTitle=T\r\n"},
                                   {"Lang\\English.txt", "[Texts]\r\n901=Own\r\n104=Cancel?\r\n"}}, "Lang\\English.txt", 2, S::Warning, "text 901"},
        {"Boolean out of its domain", {{"Setups.ini", "[SETTINGS]\r\nPath=Products\r\nCheckForAdmin=maybe\r\n[LANGUAGES]\r\nGerman=hide\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n[English]\r\nAppTitle=T\r\n"}},
         "Setups.ini", 3, S::Error, "CheckForAdmin=maybe is no yes/no word"},
        {"number out of its domain", {{"Setups.ini", "[SETTINGS]\r\nPath=Products\r\nLevel=high\r\n[LANGUAGES]\r\nGerman=hide\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n[English]\r\nAppTitle=T\r\n"}},
         "Setups.ini", 3, S::Error, "Level=high is no number; the setup reads 0"},
        {"Path naming no folder", {{"Setups.ini", "[SETTINGS]\r\nPath=Q\r\n[LANGUAGES]\r\nGerman=hide\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n[English]\r\nAppTitle=T\r\n"}},
         "Setups.ini", 2, S::Error, "names no folder"},
        {"setup file missing in the second language",
         {{"Setups.ini", "[SETTINGS]\r\nPath=Products\r\n[LANGUAGES]\r\nGerman=enable\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\nJapanese=hide\r\n[German]\r\nAppTitle=T\r\n[English]\r\nAppTitle=T\r\n"},
          {"Products\\C.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=C\r\n[LANGUAGES]\r\nLanguageA=German\r\nLanguageB=English\r\n"
                              "[German]\r\nDescription=C\r\nSetupFile=a.exe\r\nStartOnBegin1=a.exe\r\n"
                              "[English]\r\nDescription=C\r\nSetupFile=gone.exe\r\nStartOnBegin1=a.exe\r\n"}},
         "Products\\C.ssf", 13, S::Error, "gone.exe is not on the disc"},
        {"no FileType", {{"Products\\C.ssf", "[GENERAL]\r\nProductCode=C\r\n"}}, "Products\\C.ssf", 0, S::Warning, "the setup skips this file"},
        {"NUL byte", {{"Products\\C.ssf", Product("C", "", std::string("Build=1\0x\r\n", 11))}}, "Products\\C.ssf", 4, S::Warning, "holds a NUL byte"},
    };
    return discs;
}

class DiscCheckTest : public BedFixture {
protected:
    std::string WriteDisc(const std::string& name, const Files& change) {
        Files files = CleanDisc();
        for (const auto& [path, bytes] : change) files[path] = bytes;
        const std::string root = bed_->folder + name + "\\";
        auto& platform = Platform().Files();
        for (const auto& [relative, bytes] : files) {
            const std::string path = root + relative;
            for (size_t at = path.find('\\', bed_->folder.size()); at != std::string::npos; at = path.find('\\', at + 1)) {
                (void)platform.CreateFolder(path.substr(0, at));
            }
            EXPECT_TRUE(platform.WriteFileAtomic(path, bytes)) << path;
        }
        return root;
    }
};

std::string Listed(const std::vector<DiscFinding>& findings) {
    std::string text;
    for (const auto& f : findings) text += f.file + ":" + std::to_string(f.line) + ": " + std::string(SeverityText(f.severity)) + ": " + f.text + "\n";
    return text;
}

TEST_F(DiscCheckTest, CleanDiscHasNoFindingAndEachBrokenDiscItsOwn) {
    const auto clean = clsDiscCheck::Run(WriteDisc("clean", {}));
    EXPECT_TRUE(clean.empty()) << Listed(clean);
    EXPECT_EQ(clsDiscCheck::ExitStatus(clean), 0);

    for (size_t i = 0; i < BrokenDiscs().size(); ++i) {
        const BrokenDisc& disc = BrokenDiscs()[i];
        SCOPED_TRACE(disc.name);
        const std::string root = WriteDisc("disc" + std::to_string(i), disc.change);
        const auto findings = clsDiscCheck::Run(root);
        ASSERT_EQ(findings.size(), 1u) << Listed(findings);
        EXPECT_EQ(findings[0].file, root + disc.file);
        EXPECT_EQ(findings[0].line, disc.line) << Listed(findings);
        EXPECT_EQ(findings[0].severity, disc.severity);
        EXPECT_NE(findings[0].text.find(disc.says), std::string::npos) << findings[0].text;
        EXPECT_EQ(clsDiscCheck::ExitStatus(findings), disc.severity == FindingSeverity::Error ? 2 : 1);
    }
}

TEST(DependencyCyclesTest, OnlyTheEntriesOnACircleAndSelfLoopsAreFound) {
    // C waits on the circle A-B but is not on it; D depends on itself; E on a code not listed.
    const std::vector<OrderEntry> entries{{"A", {"b"}}, {"B", {"A"}}, {"C", {"A"}}, {"D", {"D"}}, {"E", {"X"}}};
    EXPECT_EQ(clsDependencyCycles::Find(entries), (std::vector<std::vector<size_t>>{{0, 1}, {3}}));

    // A chain of 20,000 closed into one circle: no call stack runs out.
    std::vector<OrderEntry> chain;
    for (int i = 0; i < 20000; ++i) chain.push_back({std::to_string(i), {std::to_string((i + 1) % 20000)}});
    const auto circles = clsDependencyCycles::Find(chain);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].size(), 20000u);
}

} // namespace
} // namespace tovel::test
