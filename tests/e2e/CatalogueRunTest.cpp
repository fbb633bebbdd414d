// The sample disc's catalogue as a disc author sees it: `--plan` on Windows XP and Windows 98
// machines, fresh and with older versions installed, compared with the expected plan and the
// expected "SSFFiles Infos" section of the setup log (tests/e2e/expected/). After a deliberate
// change of the disc or the reader, TOVEL_UPDATE_EXPECTED=1 writes the files anew; read the
// difference before committing it.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/e2e/SetupRun.h"

namespace tovel {
namespace {

// Older versions of some sample products, as an earlier disc would have left them.
constexpr const char* kOlderVersions =
    "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\BaseServices]\r\n\"Version\"=\"5.1\"\r\n"
    "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\Designer]\r\n\"Version\"=\"5.0\"\r\n"
    "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\HMIRuntime]\r\n\"Version\"=\"7.0\"\r\n"
    "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\DocViewer]\r\n\"Version\"=\"4.0\"\r\n"
    "\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\OPCServer]\r\n\"Version\"=\"3.2\"\r\n";

class CatalogueRun : public test::SetupRun {
protected:
    // The plan from its first line on; what the binary says about the host before it differs.
    std::string Plan() const {
        const std::string& out = Output();
        const size_t start = out.find("Catalogue of ");
        return start == std::string::npos ? out : out.substr(start);
    }
    // The log section of the search, up to the next section.
    std::string SearchSection() const {
        const auto lines = LogLines();
        std::string section;
        bool inside = false;
        for (size_t i = 0; i < lines.size(); ++i) {
            if (lines[i] == "SSFFiles Infos:") inside = true;
            else if (inside && lines[i] == std::string(84, '-')) break;
            if (inside) section += lines[i] + "\n";
        }
        return section;
    }
    void ExpectFile(const std::string& name, const std::string& actual) const {
        const std::filesystem::path path = std::filesystem::path(TOVEL_SOURCE_DIR) / "tests/e2e/expected" / name;
        if (std::getenv("TOVEL_UPDATE_EXPECTED") != nullptr) {
            std::filesystem::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << actual;
            return;
        }
        std::ifstream in(path, std::ios::binary);
        std::ostringstream expected;
        expected << in.rdbuf();
        EXPECT_EQ(actual, expected.str()) << "differs from " << path;
    }
    void CheckPlan(const std::string& profile, const std::string& name) {
        UseSampleDisc();
        ASSERT_EQ(Run({}, {"--create=" + profile, "--plan"}), 0) << Output();
        ExpectFile(name + ".plan.txt", Plan());
        ExpectFile(name + ".log.txt", SearchSection());
        // The same machine after an older disc installed some of the products.
        WriteMachine("registry.reg", ReadMachine("registry.reg") + kOlderVersions);
        ASSERT_EQ(Run({}, {"--plan"}), 0) << Output();
        ExpectFile(name + "-older.plan.txt", Plan());
        ExpectFile(name + "-older.log.txt", SearchSection());
    }
};

TEST_F(CatalogueRun, SampleDiscOnWindowsXP) { CheckPlan("xppro", "xp"); }

TEST_F(CatalogueRun, SampleDiscOnWindows98InGerman) { CheckPlan("win98,de", "98-de"); }

TEST_F(CatalogueRun, SampleDiscInJapanese) {
    UseSampleDisc();
    ASSERT_EQ(Run({}, {"--create=xppro,ja", "--plan"}), 0) << Output();
    ExpectFile("xp-ja.plan.txt", Plan());
}

} // namespace
} // namespace tovel

namespace tovel {
namespace {

// The check as editors and scripts see it: the sample disc is clean, and a broken file is
// told as file:line: severity: text with the exit status of the worst finding.
class DiscCheckRun : public test::SetupRun {};

TEST_F(DiscCheckRun, SampleDiscIsCleanAndABrokenFileIsToldByLine) {
    UseSampleDisc();
    EXPECT_EQ(Run({}, {"--check"}), 0) << Output();
    EXPECT_EQ(Output(), "");

    WriteDisc("Products/Packets/Broken.ssf",
              "[GENERAL]\r\nFileType=collection\r\nProductCode=BROKEN\r\nProductCode1=NOSUCH\r\nVisibel=True\r\n"
              "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=Broken\r\n");
    EXPECT_EQ(Run({}, {"--check"}), 2);
    const std::string file = (Disc() / "Products/Packets/Broken.ssf").string();
    EXPECT_EQ(Output(), file + ":5: warning: \"Visibel\" in [GENERAL] is never read; did you mean \"Visible\"?\n" + file +
                            ":4: error: ProductCode1=NOSUCH names no product on this disc; the setup type cannot install it\n");
}

} // namespace
} // namespace tovel
