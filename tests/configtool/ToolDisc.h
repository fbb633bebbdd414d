#pragma once
// A small disc for the configuration tool's tests on a fresh machine: Setups.ini with the
// author's comments, one product in two languages, one packet; the run's globals as start-up
// leaves them (English, the log on, the disc's folder as the program's).
#include <memory>
#include <string>

#include "catalogue/CatalogueGlobals.h"
#include "startup/Globals.h"
#include "tests/catalogue/CatalogueFixture.h"
#include "wizard/WizardGlobals.h"

namespace tovel::test {

/// The disc's Setups.ini, its products in the folder given.
inline std::string ToolSetupsIni(const std::string& products) {
    return "; Setups.ini of the test disc\r\n"
           "[SETTINGS]\r\n"
           "Path=" + products + "\r\n"
           "CreateLogFile=True\r\n"
           "  WelcomeTimeout = 4   \r\n"
           "; the classic look\r\n"
           "OldForms=yes\r\n"
           "CDTitel=Typo\r\n"
           "\r\n"
           "[STARTERGENERAL]\r\n"
           "Anything=1\r\n";
}

inline constexpr const char* kToolProduct =
    "; the one product\r\n"
    "[GENERAL]\r\n"
    "FileType=ssf\r\n"
    "ProductCode=TOOLA\r\n"
    "DiskSpaceDestDrv=10\r\n"
    "DefaultPath=C:\\Tool A\r\n"
    "Colour=blue\r\n"
    "\r\n"
    "[LANGUAGES]\r\n"
    "LanguageA=German\r\n"
    "LanguageX=English\r\n"
    "\r\n"
    "[German]\r\n"
    "Description=Werkzeug A\r\n"
    "SetupFile=setup.exe\r\n"
    "\r\n"
    "[English]\r\n"
    "Description=Tool A\r\n"
    "SetupFile=setup.exe\r\n";

inline constexpr const char* kToolPacket =
    "[GENERAL]\r\n"
    "FileType=collection\r\n"
    "ProductCode=PACK1\r\n"
    "ProductCodeList=TOOLA\r\n"
    "[LANGUAGES]\r\n"
    "LanguageX=English\r\n"
    "[English]\r\n"
    "Description=Everything\r\n";

class ToolDisc : public CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        WriteFile("Setups.ini", ToolSetupsIni(bed_->folder + "Products"));
        WriteFile("Products\\ToolA.ssf", kToolProduct);
        WriteFile("Products\\setup.exe", "MZ");
        WriteFile("Products\\Pack.ssf", kToolPacket);
        ReadSettings();
        gLanguage = std::make_unique<clsLanguage>();
        HomePath = bed_->folder;
    }
    void TearDown() override {
        gApplications.RemoveAllItem();
        gPackets.RemoveAllItem();
        gLanguage.reset();
        InstalledProductsFound.clear();
        HomePath.clear();
        CatalogueFixture::TearDown();
    }
    void ReadSettings() {
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder->SetSettings(gSetupsIni.get());
    }
    [[nodiscard]] std::string Read(const std::string& relative) const {
        return Platform().Files().ReadFile(bed_->folder + relative).value_or("");
    }
};

} // namespace tovel::test
