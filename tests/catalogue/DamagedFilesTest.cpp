// Damaged description files on a disc, each read through the real search: truncated files,
// garbage, missing sections, thousands of numbered keys, huge values, duplicate codes, cycles,
// broken condition terms, unknown file types and other encodings. Each case must be logged as
// the readers log it and read with its defaults, and the search must go on: a good file read
// after the damaged one is still in the catalogue.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/clsSSFSearch.h"
#include "common/clsCodePage.h"
#include "language/clsLanguageTextFile.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "startup/mdlLog.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kGood =
    "[GENERAL]\r\nFileType=ssf\r\nProductCode=GOOD\r\n[LANGUAGES]\r\nLanguageX=English\r\n"
    "[English]\r\nDescription=Good product\r\nSetupFile=Setup.exe\r\n";

// Bytes that no INI reader makes sense of: NULs, lone CRs, high bytes. Without "=" and "["
// no line of it is a key or a section, so what it is read as does not depend on chance.
std::string Garbage(size_t size, uint32_t seed) {
    std::string bytes;
    bytes.reserve(size);
    for (size_t i = 0; i < size; ++i) {
        seed = seed * 1664525u + 1013904223u;
        char c = static_cast<char>(seed >> 24);
        if (c == '=' || c == '[') c = '\0';
        bytes += c;
    }
    return bytes;
}

std::string Utf16(const std::string& utf8, bool bigEndian) {
    std::string units = clsCodePage::FromUtf8(utf8, kCodePageUtf16Le).value_or("");
    if (bigEndian) {
        for (size_t i = 0; i + 1 < units.size(); i += 2) std::swap(units[i], units[i + 1]);
    }
    return (bigEndian ? std::string("\xFE\xFF") : std::string("\xFF\xFE")) + units;
}

std::string Numbered(const std::string& key, int count, const std::function<std::string(int)>& value) {
    std::string lines;
    for (int n = 1; n <= count; ++n) lines += key + std::to_string(n) + "=" + value(n) + "\r\n";
    return lines;
}

class DamagedFiles : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        // The log as a run has it: the readers' reports of bad input go to it too.
        StartLog();
    }
    void TearDown() override {
        clsIniFile::SetReporter({});
        clsRegistry::SetReporter({});
        clsLanguageTextFile::SetReporter({});
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        CatalogueFixture::TearDown();
    }

    /// Writes the files into a folder of their own, names it as the product folder in
    /// Setups.ini (read again, as at a start) and searches it. Returns what the search logged.
    std::string Search(const std::string& folder, const Files& files) {
        for (const auto& [name, bytes] : files) WriteFile(folder + "\\" + name, bytes);
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\nPath=" + bed_->folder + folder + "\r\n");
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder->SetSettings(gSetupsIni.get());
        const size_t before = RawLog().size();
        EXPECT_TRUE(clsSSFSearch().Run());
        const std::string bytes = RawLog().substr(before);
        return clsCodePage::ToUtf8(bytes, Platform().System().AnsiCodePage()).value_or(bytes);
    }
    std::string Path(const std::string& folder, const std::string& name) const { return bed_->folder + folder + "\\" + name; }

    static const clsSIFApplicationItem* ProductFrom(const std::string& path) {
        for (const auto& item : gApplications.Items()) {
            if (item.SIFFileName == path) return &item;
        }
        return nullptr;
    }
    static const clsSIFPacketItem* PacketFrom(const std::string& path) {
        for (const auto& packet : gPackets.Items()) {
            if (packet.SIFFileName == path) return &packet;
        }
        return nullptr;
    }
    static std::vector<std::string> Codes() {
        std::vector<std::string> codes;
        for (const auto& item : gApplications.Items()) codes.push_back(item.ProductCode + "/" + item.Description);
        return codes;
    }

private:
    std::string RawLog() const { return Platform().Files().ReadFile(gLog->LogfileFullPath()).value_or(""); }
};

// What one damaged file became: the product or packet read from it (nullptr when it was
// skipped) and what the search logged.
struct Outcome {
    const clsSIFApplicationItem* product;
    const clsSIFPacketItem* packet;
    const std::string& log;
};

struct Case {
    const char* name;
    std::string bytes;
    std::function<void(const Outcome&)> check;
};

void Skipped(const Outcome& o) {
    EXPECT_EQ(o.product, nullptr);
    EXPECT_EQ(o.packet, nullptr);
}

bool Logged(const std::string& log, const std::string& text) { return log.find(text) != std::string::npos; }

TEST_F(DamagedFiles, EachIsLoggedReadWithItsDefaultsAndTheSearchGoesOn) {
    const std::string full =
        "[GENERAL]\r\nFileType=ssf\r\nProductCode=CUT\r\nBuild=2.0\r\nAlwaysInstall=True\r\n"
        "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=Cut product\r\nSetupFile=Setup.exe\r\n";
    const std::string longValue(100000, 'D');
    const std::string unicode = "[GENERAL]\r\nFileType=ssf\r\nProductCode=UNI\r\n[LANGUAGES]\r\nLanguageX=Texts\r\n"
                                "[Texts]\r\nDescription=\xC3\x9C" "berblick \xE6\x97\xA5\xE6\x9C\xAC\r\n";
    const std::vector<Case> cases{
        {"cut inside a section name", full.substr(0, full.find("[LANGUAGES]") + 4),
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "CUT");
             EXPECT_EQ(o.product->Build, "2.0");
             EXPECT_EQ(o.product->CheckBox, CheckBoxState::kCheckedLocked);
             EXPECT_EQ(o.product->ProdInfoSection, "");
             EXPECT_EQ(o.product->Description, "");
             EXPECT_EQ(o.product->SetupFile, "");
         }},
        {"cut inside the last value", full.substr(0, full.find("Setup.exe") + 5),
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->Description, "Cut product");
             EXPECT_EQ(o.product->SetupFile.substr(o.product->SetupFile.size() - 6), "\\Setup");
         }},
        {"cut inside a key name", "[GENERAL]\r\nFileType=ssf\r\nProductCode=CUT3\r\nVisible=False\r\nHideIns",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_FALSE(o.product->Visible);
             EXPECT_FALSE(o.product->HideInstall);
         }},
        {"cut inside a UTF-16 character", Utf16("[GENERAL]\r\nFileType=ssf\r\nProductCode=HALF\r\n", false) + "\x41",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "HALF");
             EXPECT_TRUE(Logged(o.log, "ends in half a UTF-16 character"));
         }},
        {"binary garbage", Garbage(4096, 7), Skipped},
        {"garbage after a good GENERAL", "[GENERAL]\r\nFileType=ssf\r\nProductCode=GARBLED\r\n" + Garbage(4096, 11),
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "GARBLED");
             EXPECT_TRUE(o.product->Visible);
             EXPECT_EQ(o.product->DependenceCount(), 0);
             EXPECT_TRUE(Logged(o.log, "a_damaged.ssf: line"));
             EXPECT_TRUE(Logged(o.log, "holds a NUL byte"));
         }},
        {"empty file", "", Skipped},
        {"no GENERAL", "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=Lost\r\n", Skipped},
        {"GENERAL without its bracket", "[GENERAL\r\nFileType=ssf\r\nProductCode=NOBRACKET\r\n", Skipped},
        {"FileType missing", "[GENERAL]\r\nProductCode=NOTYPE\r\n", Skipped},
        {"FileType unknown", "[GENERAL]\r\nFileType=setup\r\nProductCode=SETUP\r\n", Skipped},
        {"FileType with a comment behind", "[GENERAL]\r\nFileType=ssf ; product\r\nProductCode=COMMENT\r\n", Skipped},
        {"FileType quoted", "[GENERAL]\r\nFileType=\"SSF\"\r\nProductCode=QUOTED\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "QUOTED");
         }},
        {"no LANGUAGES", "[GENERAL]\r\nFileType=ssf\r\nProductCode=NOLANG\r\n[English]\r\nDescription=Unused\r\nSetupFile=x.exe\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProdInfoSection, "");
             EXPECT_EQ(o.product->AvailableLanguages, "");
             EXPECT_EQ(o.product->Description, "");
             EXPECT_EQ(o.product->SetupFile, "");
             EXPECT_EQ(o.product->BreakMessage, "\r\n\r\n");
             EXPECT_TRUE(Logged(o.log, "Created new p_objSIFApplication Entry with ProductCode: NOLANG \r\n"
                                       "                                            and SetupFile:  \r\n"));
         }},
        {"LANGUAGES naming a section that is not there",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=NOSECTION\r\n[LANGUAGES]\r\nLanguageB=Englisch\r\n[English]\r\nDescription=Other\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProdInfoSection, "Englisch");
             EXPECT_EQ(o.product->AvailableLanguages, "B");
             EXPECT_EQ(o.product->Description, "");
         }},
        {"LANGUAGES with every language Error and no LanguageX",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=ALLERROR\r\n[LANGUAGES]\r\nLanguageA=Error\r\nLanguageB=Error\r\n"
         "[Error]\r\nDescription=Never\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProdInfoSection, "");
             EXPECT_EQ(o.product->AvailableLanguages, "");
             EXPECT_EQ(o.product->Description, "");
         }},
        {"values of 100 kB",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=" + std::string(100000, 'P') + "\r\nDefaultPath=%ProgramPath%" + longValue +
             "\r\n[" + std::string(100000, 'S') + "]\r\n" + std::string(100000, 'k') + "\r\n[LANGUAGES]\r\nLanguageX=English\r\n"
             "[English]\r\nDescription=" + longValue + "\r\nSetupFile=" + longValue + "\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, std::string(clsIniText::kMaxValueChars, 'P'));
             EXPECT_EQ(o.product->Description, std::string(clsIniText::kMaxValueChars, 'D'));
             EXPECT_LT(o.product->DefaultPath.size(), 2 * clsIniText::kMaxValueChars);
             EXPECT_EQ(o.product->SetupFile.size(), o.product->SIFFileName.size() - 13 + clsIniText::kMaxValueChars);
             EXPECT_TRUE(Logged(o.log, "holds a value longer than 2047 characters; reads give its first 2047"));
             EXPECT_TRUE(Logged(o.log, "ProductCode: " + std::string(clsIniText::kMaxValueChars, 'P') + " \r\n"));
         }},
        {"keys and sections twice",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=FIRST\r\nProductCode=SECOND\r\n[GENERAL]\r\nVisible=False\r\n"
         "[DEPENDENCIES]\r\nDependence1=GOOD\r\nDependence1=BAD\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "FIRST");
             EXPECT_TRUE(o.product->Visible);
             EXPECT_EQ(o.product->Dependencies(), std::vector<std::string>{"GOOD"});
         }},
        {"numbers and Booleans that are none",
         "[GENERAL]\r\nFileType=ssf\r\nProductCode=NUMBERS\r\nEstimatedTime=soon\r\nRegisterInRunOnce=-1\r\n"
         "DiskSpaceDestDrv=99999999999\r\nVisible=maybe\r\nAlwaysInstall=2\r\nShowDialogWait=\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->EstimatedTime, 0);
             EXPECT_EQ(o.product->RegisterInRunOnce, -1);   // negative as the profile functions give it
             EXPECT_EQ(o.product->DiskSpaceDestDrv, 1215752191);   // wrapped at 2^32, as the profile functions do
             EXPECT_TRUE(o.product->Visible);
             EXPECT_FALSE(o.product->AlwaysInstall);
             EXPECT_FALSE(o.product->ShowDialogWait);
         }},
        {"UTF-8 with a byte-order mark", "\xEF\xBB\xBF" + unicode,
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "UNI");
             EXPECT_EQ(o.product->Description, "\xC3\x9C" "berblick \xE6\x97\xA5\xE6\x9C\xAC");
         }},
        {"UTF-8 with a byte-order mark and a bad byte", "\xEF\xBB\xBF" + unicode + "Tooltip=bad \xFF byte\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->Tooltip, "bad \xEF\xBF\xBD byte");
             EXPECT_TRUE(Logged(o.log, "is not valid text in UTF-8"));
         }},
        {"UTF-16 LE", Utf16(unicode, false),
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->Description, "\xC3\x9C" "berblick \xE6\x97\xA5\xE6\x9C\xAC");
         }},
        {"UTF-16 BE", Utf16(unicode, true),
         [](const Outcome& o) {
             ASSERT_NE(o.product, nullptr);
             EXPECT_EQ(o.product->ProductCode, "UNI");
         }},
        // Without its mark UTF-16 reads as ANSI text full of NULs: no key survives.
        {"UTF-16 without its mark", Utf16(unicode, false).substr(2),
         [](const Outcome& o) {
             Skipped(o);
             EXPECT_TRUE(Logged(o.log, "holds a NUL byte"));
         }},
        {"packet cut after its products", "[GENERAL]\r\nFileType=collection\r\nProductCode=cut\r\nProductCode1=A\r\nProductCode2=B\r\nPro",
         [](const Outcome& o) {
             ASSERT_NE(o.packet, nullptr);
             EXPECT_EQ(o.packet->ProductCode, "CUT");
             EXPECT_EQ(o.packet->ProductCodes(), (std::vector<std::string>{"A", "B"}));
             EXPECT_EQ(o.packet->Description, "");
         }},
        {"packet with a preselection of no known value", "[GENERAL]\r\nFileType=Collection\r\nProductCode=PK\r\nPreSelect=\x01\x02\r\n",
         [](const Outcome& o) {
             ASSERT_NE(o.packet, nullptr);
             EXPECT_EQ(o.packet->PreSelect, CheckBoxState::kUnchecked);
             EXPECT_FALSE(o.packet->Selected);
             EXPECT_TRUE(Logged(o.log, "Packet PK: PreSelect=\x01\x02 is no known value; the packet is not preselected."));
         }},
    };

    int number = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string folder = "Case" + std::to_string(++number);
        const std::string log = Search(folder, {{"a_damaged.ssf", c.bytes}, {"zz_good.ssf", kGood}});
        const std::string damaged = Path(folder, "a_damaged.ssf");
        EXPECT_TRUE(Logged(log, "Gefundene SSFFiles \r\n" + damaged + " \r\n" + Path(folder, "zz_good.ssf") + " \r\n"));
        c.check(Outcome{ProductFrom(damaged), PacketFrom(damaged), log});
        const auto* good = ProductFrom(Path(folder, "zz_good.ssf"));
        ASSERT_NE(good, nullptr);
        EXPECT_EQ(good->ProductCode, "GOOD");
        EXPECT_EQ(good->Description, "Good product");
        EXPECT_EQ(gApplications.Count() + gPackets.Count(), (ProductFrom(damaged) || PacketFrom(damaged)) ? 2 : 1);
    }
}

TEST_F(DamagedFiles, TenThousandNumberedKeysAreAllRead) {
    constexpr int kMany = 10000;
    const auto code = [](int n) { return "P" + std::to_string(n); };
    // The families of a product, each with a gap after it: what lies behind is never read.
    const std::string product =
        "[GENERAL]\r\nFileType=ssf\r\nProductCode=MANY\r\nSSFVersion=5.2\r\n[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\n" +
        Numbered("StartOnBegin", kMany, [](int n) { return "start" + std::to_string(n) + ".exe"; }) +
        Numbered("ParaStartOnBegin", kMany, [](int n) { return "/p" + std::to_string(n); }) +
        Numbered("NotStartOnEndProgram", kMany, [](int n) { return "end" + std::to_string(n) + ".exe"; }) +
        Numbered("WaitForApplicationTitle", kMany, [](int n) { return "Title " + std::to_string(n); }) +
        Numbered("DefaultPathCriterium", kMany, [](int n) { return "C" + std::to_string(n); }) +
        "StartOnBegin10002=after the gap\r\n[DEPENDENCIES]\r\n" + Numbered("Dependence", kMany, code) +
        "Dependence10002=AFTERGAP\r\n[SETUP_DEPENDENCIES]\r\nType1=force\r\n" + Numbered("ProductCode", kMany, code) +
        Numbered("ProductCode1AdditionalRequirement", kMany, code) + "[VERSIONS]\r\n" +
        Numbered("FirstInstAction", kMany, [](int n) { return "action" + std::to_string(n) + ".exe"; });
    const std::string packet = "[GENERAL]\r\nFileType=collection\r\nProductCode=ALL\r\n" + Numbered("ProductCode", kMany, code) +
                               "[DEPENDENCIES]\r\n" + Numbered("Dependence", kMany, code);
    const std::string log = Search("Many", {{"many.ssf", product}, {"packet.ssf", packet}, {"zz_good.ssf", kGood}});

    const auto* item = ProductFrom(Path("Many", "many.ssf"));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->StartOnBeginCount, kMany);
    EXPECT_EQ(item->GetStartOnBeginProgram(kMany), "start10000.exe");
    EXPECT_EQ(item->GetStartOnBeginParameter(kMany), "/p10000");
    EXPECT_EQ(item->NotStartOnEndProgramsCount, kMany);
    EXPECT_EQ(item->ApplicationTitleCount(), kMany);
    EXPECT_EQ(item->DefaultPathCriteriumCount(), kMany);
    EXPECT_EQ(item->DependenceCount(), kMany);
    EXPECT_EQ(item->GetDependence(kMany), "P10000");
    ASSERT_EQ(item->SetupDependenceCount(), kMany);
    EXPECT_EQ(item->GetSetupDependenceType(1), 1);
    EXPECT_EQ(item->GetSetupDependenceType(kMany), 0);
    EXPECT_EQ(item->GetSetupDependenceAR(1).size(), 58894u);   // "P1~" .. "P10000~"
    EXPECT_EQ(item->GetSetupDependenceAR(2), "");
    EXPECT_EQ(item->FirstInstActionsCount(), kMany);
    EXPECT_EQ(item->GetFirstInstAction(kMany), "action10000.exe");

    const auto* all = PacketFrom(Path("Many", "packet.ssf"));
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(all->Count(), kMany);
    EXPECT_EQ(all->DependenceCount(), kMany);

    // None of the 10,000 codes is on the disc: each is told once, and nothing is held back.
    EXPECT_TRUE(Logged(log, "Product MANY depends on P10000, which is not on this disc"));
    EXPECT_FALSE(Logged(log, "AFTERGAP"));
    EXPECT_FALSE(Logged(log, "Circularer"));
    EXPECT_EQ(gApplications.Count(), 2);
    EXPECT_NE(ProductFrom(Path("Many", "zz_good.ssf")), nullptr);
}

TEST_F(DamagedFiles, DuplicateCodesCyclesAndMissingProductsAreLoggedAndKept) {
    const auto product = [](const std::string& code, const std::string& description, const std::string& dependencies) {
        return "[GENERAL]\r\nFileType=ssf\r\nProductCode=" + code + "\r\n[LANGUAGES]\r\nLanguageX=Texts\r\n[Texts]\r\nDescription=" +
               description + "\r\n[DEPENDENCIES]\r\n" + dependencies;
    };
    const auto packet = [](const std::string& code, const std::string& description, const std::string& dependencies) {
        return "[GENERAL]\r\nFileType=collection\r\nProductCode=" + code + "\r\n[LANGUAGES]\r\nLanguageX=Texts\r\n[Texts]\r\n"
               "Description=" + description + "\r\n[DEPENDENCIES]\r\n" + dependencies;
    };
    const std::string log = Search("Links", {
        {"a.ssf", product("A", "a", "Dependence1=B\r\n")},        // A and B wait for each other
        {"b.ssf", product("B", "b", "Dependence1=a\r\n")},
        {"c.ssf", product("C", "c", "Dependence1=A\r\n")},        // waits for the cycle
        {"d1.ssf", product("DUP", "first", "")},
        {"d2.ssf", product("DUP", "second", "Dependence1=E\r\n")},
        {"e.ssf", product("E", "e", "")},
        {"f.ssf", product("F", "f", "Dependence1=dup\r\n")},
        {"m.ssf", product("M", "m", "Dependence1=NOWHERE\r\n")},
        {"p1.ssf", packet("pk", "first packet", "Dependence1=M\r\n")},
        {"p2.ssf", packet("PK", "second packet", "")},
        {"p3.ssf", packet("X", "x", "Dependence1=Y\r\n")},
        {"p4.ssf", packet("Y", "y", "Dependence1=X\r\n")},
        {"s.ssf", product("S", "s", "Dependence1=S\r\n")},        // itself
    });

    // Both products of one code are kept and ordered; the first placed lets F go. What a cycle
    // holds goes last in the order found, nothing is lost.
    EXPECT_EQ(Codes(), (std::vector<std::string>{"DUP/first", "E/e", "F/f", "M/m", "DUP/second", "A/a", "B/b", "C/c", "S/s"}));
    const std::string products =
        "Product M depends on NOWHERE, which is not on this disc: the dependency does not hold up the order. \r\n"
        "Error in Modul clsSIFApplication Funktion SortItemDependencies \r\n"
        "Error Message: eventuell Circularer Vorgang. \r\n"
        "Folgende Produkte werden in der Liste nicht aufgeführt: \r\n"
        "A \r\nB \r\nC \r\nS \r\n"
        "(These entries are installed last, in the order they were found.) \r\n";
    EXPECT_TRUE(Logged(log, products)) << log;

    // The second packet of a code is logged and left out; a packet may wait for a product.
    EXPECT_TRUE(Logged(log, "Multiple occurence of SIF Collection:  \r\n   ProductCode: PK \r\n   Description: second packet \r\n"));
    ASSERT_EQ(gPackets.Count(), 3);
    EXPECT_EQ(gPackets.Item(1)->ProductCode, "PK");
    EXPECT_EQ(gPackets.Item(1)->Description, "first packet");
    EXPECT_EQ(gPackets.Item(2)->ProductCode, "X");
    EXPECT_EQ(gPackets.Item(3)->ProductCode, "Y");
    EXPECT_TRUE(Logged(log, "Folgende Produkte werden in der Liste nicht aufgeführt: \r\nX \r\nY \r\n"));
    EXPECT_FALSE(Logged(log, "Packet PK depends on"));
}

TEST_F(DamagedFiles, BrokenConditionTermsAreLoggedAndTheProductsStillRead) {
    SetRegString("Terms", "Version", "1.5");
    SetRegString("Terms", "Text", "Standard");
    const std::string value = RegPath("Terms") + "\\Version";
    const std::string missing = RegPath("Terms") + "\\Missing";
    struct Term {
        std::string term;
        std::string entry;   ///< the log entry, CR LF inside; "" when the term holds
        int32_t state;
    };
    const auto format = [](const std::string& message, const std::string& term) {
        return "<Error Message> " + message + term + "\r\n</Error Message> ";
    };
    const auto compared = [](const std::string& message, const std::string& found, const std::string& term) {
        return "<Error Message> " + message + found + " \r\n" + term + "\r\n</Error Message> ";
    };
    std::vector<Term> terms{
        {"OS;file;C:\\x.dll;regsz;=;1;checkbox;uncheckbox", "", CheckBoxState::kChecked},
        {"only a label", "", CheckBoxState::kChecked},
        {";registry;HKEY_CLASSES_ROOT\\x\\v;regsz;=;1;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;HKEY_LOCAL_MACHINE;regsz;=;1;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + value + ";regbinary;=;1;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + value + ";regsz;==;1;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + value + ";regsz;=", "", CheckBoxState::kUnchecked},
        {";registry;" + value + ";regdword;=;one;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + missing + ";regsz;=;1.0;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + missing + ";regsz;=>;1.0;checkbox;disableduncheckbox", "", CheckBoxState::kUncheckedLocked},
        {";registry;" + value + ";regsz;=>;2.0;disabledcheckbox;uncheckbox", "", CheckBoxState::kCheckedLocked},
        {";registry;" + value + ";regsz;<=;1.2;disabledcheckbox;uncheckbox", "", CheckBoxState::kCheckedLocked},
        {";registry;" + value + ";regsz;=;1.0OR2.0;nonsense;uncheckbox", "", CheckBoxState::kUnchecked},
    };
    terms[0].entry = format("Wrong termkey format in Setupdependence section.", terms[0].term);
    terms[1].entry = format("Wrong termkey format in Setupdependence section.", terms[1].term);
    terms[2].entry = format("The Registrykey has a wrong format in Setupdependence section.", terms[2].term);
    terms[3].entry = format("The Registrykey has a wrong format in Setupdependence section.", terms[3].term);
    for (size_t i = 4; i <= 7; ++i) terms[i].entry = format("The Registrykey has a wrong format: ", terms[i].term);
    terms[8].entry = compared("No Value found in the Registry. ", "", terms[8].term);
    terms[9].entry = compared("No Version found in the Registry. ", "", terms[9].term);
    terms[10].entry = compared("Version found in the Registry is older. Registryvalue=", "1.5", terms[10].term);
    terms[11].entry = compared("Version found in the Registry is newer. Registryvalue=", "1.5", terms[11].term);
    terms[12].entry = compared("Version found in the Registry is not the same. Registryvalue=", "1.5", terms[12].term);

    Files files;
    for (size_t i = 0; i < terms.size(); ++i) {
        files.push_back({"t" + std::to_string(i + 10) + ".ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=T" + std::to_string(i) +
                                                                    "\r\nTermToInstall=" + terms[i].term + "\r\n"});
    }
    // The links' condition: its failure is kept for the links, the product's own box stays.
    files.push_back({"u.ssf", "[GENERAL]\r\nFileType=ssf\r\nProductCode=LINKS\r\n[SETUP_DEPENDENCIES]\r\nProductCode1=T0\r\n"
                              "DependenceTerm=" + terms[10].term + "\r\n"});
    files.push_back({"zz_good.ssf", kGood});
    const std::string log = Search("Terms", files);

    for (size_t i = 0; i < terms.size(); ++i) {
        SCOPED_TRACE(terms[i].term);
        const auto* item = ProductFrom(Path("Terms", "t" + std::to_string(i + 10) + ".ssf"));
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->ProductCode, "T" + std::to_string(i));
        EXPECT_EQ(item->CheckBox, terms[i].state);
        EXPECT_EQ(item->Selected, CheckBoxIsChecked(terms[i].state));
        EXPECT_TRUE(Logged(log, terms[i].entry)) << terms[i].entry;
    }
    const auto* links = ProductFrom(Path("Terms", "u.ssf"));
    ASSERT_NE(links, nullptr);
    EXPECT_EQ(links->CheckBox, CheckBoxState::kChecked);
    EXPECT_FALSE(links->DependenceTypeOtherTrue);
    EXPECT_EQ(links->DependenceTypeOtherTrueCheckBox, CheckBoxState::kCheckedLocked);
    EXPECT_NE(ProductFrom(Path("Terms", "zz_good.ssf")), nullptr);
}

} // namespace
} // namespace tovel
