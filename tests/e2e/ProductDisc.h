#pragma once
// A small disc written by the test: products PROD01, PROD02, ... installed in that order, all
// always installed, each the stand-in setup (docs/FAKESETUP.md) following its own section of
// one FAKESETUP.INI. Its wizard is short: Windows XP only, one language, no documents, no
// identification and no drive page.
#include <filesystem>
#include <map>
#include <string>

#include "tests/e2e/SetupRun.h"

namespace tovel::test {

/// From the welcome page to the installation page with every page's default; the search goes
/// on by itself, and the pages with nothing to choose skip themselves.
inline constexpr const char* kProductDiscToInstallation =
    "click ContinueBtn\n"   // welcome
    "click ContinueBtn\n";  // products

struct ProductDisc {
    int products = 10;
    std::map<std::string, std::string> behaviour;   ///< more FAKESETUP.INI lines, by product code
    std::map<std::string, std::string> general;     ///< more [GENERAL] lines of a description file
    std::map<std::string, std::string> sections;    ///< more text (lines, sections) at a file's end
    std::string settings;                           ///< more [SETTINGS] lines of Setups.ini
    bool createLog = true;                          ///< the disc asks for the log (else only /log does)
};

/// "PROD07" for 7.
inline std::string ProductCode(int number) {
    return std::string("PROD") + (number < 10 ? "0" : "") + std::to_string(number);
}

class ProductDiscRun : public SetupRun {
protected:
    void WriteProductDisc(const ProductDisc& disc) {
        WriteDisc("Setups.ini",
                  "[SETTINGS]\r\nPath=Products\r\nDiscID=PD-1\r\nDiscName=Product Disc\r\nCDTitle=Product Disc\r\n"
                  "CreateLogFile=" + std::string(disc.createLog ? "True" : "False") + "\r\nWelcomeTimeout=0\r\nAutoResumeAfterRestart=True\r\n"
                  "ShowIdentificationForm=False\r\nShowDriveSelectionForm=False\r\n" +
                      disc.settings +
                      "[OS]\r\nPlattformIDAllowed=2\r\nWinXP=True\r\n"
                      "[LANGUAGES]\r\nGerman=hide\r\nEnglish=enable\r\nFrench=hide\r\nSpanish=hide\r\nItalian=hide\r\n");
        std::string behaviour;
        for (int i = 1; i <= disc.products; ++i) {
            const std::string code = ProductCode(i);
            WriteDisc("Products/" + code + ".ssf",
                      "[GENERAL]\r\nFileType=ssf\r\nProductCode=" + code + "\r\nBuild=1.0\r\nAlwaysInstall=True\r\n" +
                          Extra(disc.general, code) + "[LANGUAGES]\r\nLanguageX=English\r\n[English]\r\nDescription=Product " +
                          code.substr(4) + "\r\nSetupFile=Setup\\Setup.exe\r\nSetupFileParameters=/fake=" + code + "\r\n" +
                          Extra(disc.sections, code));
            behaviour += "[" + code + "]\r\nName=" + code + "\r\n" + Extra(disc.behaviour, code);
        }
        WriteDisc("Products/Setup/FAKESETUP.INI", behaviour);
        WriteDisc("Products/Setup/Setup.exe", "#!/bin/sh\nexec tovelfakesetup \"$@\"\n");
        std::filesystem::permissions(Disc() / "Products/Setup/Setup.exe", std::filesystem::perms::owner_exec,
                                     std::filesystem::perm_options::add);
    }

    [[nodiscard]] std::string FakeLog() const { return ReadMachine("drive_c/FAKESETUP.LOG"); }
    /// How often the stand-in setup's log has this line's beginning ("PROD03: results").
    [[nodiscard]] size_t FakeLogCount(const std::string& begin) const {
        const std::string fake = FakeLog();
        size_t count = 0;
        for (size_t from = 0; (from = fake.find(begin, from)) != std::string::npos; ++from) ++count;
        return count;
    }

private:
    static std::string Extra(const std::map<std::string, std::string>& lines, const std::string& code) {
        const auto found = lines.find(code);
        return found == lines.end() ? std::string() : found->second;
    }
};

} // namespace tovel::test
