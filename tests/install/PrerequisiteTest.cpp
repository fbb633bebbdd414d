// The .NET and Windows Installer probes mark their catalogue entries from the machine.
#include <gtest/gtest.h>

#include "catalogue/CatalogueGlobals.h"
#include "catalogue/mdlCatalogueCodes.h"
#include "install/clsMSISetup.h"
#include "install/clsdotnet.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel::test {
namespace {

class PrerequisiteTest : public CatalogueFixture {
protected:
    static clsSIFApplication Catalogue(const std::string& code, const std::string& build) {
        clsSIFApplication catalogue;
        clsSIFApplicationItem item;
        item.ProductCode = code;
        item.Build = build;
        item.CheckBox = CheckBoxState::kUnchecked;
        item.Selected = false;
        catalogue.AddItem(item);
        return catalogue;
    }
    static bool MarkedForInstall(const clsSIFApplication& catalogue) {
        return catalogue.Item(1)->CheckBox == CheckBoxState::kCheckedLocked && catalogue.Item(1)->Selected;
    }
};

#ifndef _WIN32   // writes the machine-wide .NET keys: the emulated machine only
TEST_F(PrerequisiteTest, DotNetVersionFromTheRegistry) {
    clsSIFApplication catalogue = Catalogue("DOTNETFRAMEWORK", "1.1");
    EXPECT_FALSE(clsdotnet::InstalledVersion().has_value());
    clsdotnet::CheckDotNet(catalogue);
    EXPECT_TRUE(MarkedForInstall(catalogue));
    // Only the product key of v1.0.3705: "1.0", still lower than 1.1.
    const clsRegistry product(RegRoot::LocalMachine,
                              "SOFTWARE\\Microsoft\\NET Framework Setup\\Product\\Microsoft .NET Framework Full v1.0.3705 (1033)");
    ASSERT_TRUE(product.CreateNewKey(""));
    EXPECT_EQ(clsdotnet::InstalledVersion().value_or(""), "1.0");
    clsdotnet::CheckDotNet(catalogue);
    EXPECT_TRUE(MarkedForInstall(catalogue));
    // 1.1 installed and required: not installed.
    const clsRegistry v11(RegRoot::LocalMachine, "SOFTWARE\\Microsoft\\NET Framework Setup\\NDP\\v1.1.4322");
    ASSERT_TRUE(v11.SetKeyValue("Install", "1", RegType::Dword));
    clsdotnet::CheckDotNet(catalogue);
    EXPECT_EQ(catalogue.Item(1)->CheckBox, CheckBoxState::kUncheckedLocked);
    EXPECT_FALSE(catalogue.Item(1)->Selected);
    const auto lines = LogLines();
    EXPECT_NE(std::find(lines.begin(), lines.end(), "Instaled DotNet Version=1.1 "), lines.end());
}
#endif

TEST_F(PrerequisiteTest, WindowsInstallerByTheVersionOfMSIExec) {
    SystemDir = bed_->folder;
    OSPlatformId = 2;
    WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\nCheckMSI=True\r\n");
    gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
    // The NT family's entry; the 9x one is left alone.
    clsSIFApplication catalogue = Catalogue("MSIINSTW", "3.1.4000.2435");
    clsSIFApplication other = Catalogue("MSIINSTA", "2.0");
    clsMSISetup::CheckMSI(catalogue);
    clsMSISetup::CheckMSI(other);
    EXPECT_TRUE(MarkedForInstall(catalogue));
    EXPECT_EQ(other.Item(1)->CheckBox, CheckBoxState::kUnchecked);
#ifndef _WIN32   // the emulated machine's own form of a version resource
    WriteFile("MSIExec.exe", "#!/bin/sh\n# VS_VERSION_INFO FileVersion=2.0.2600.2\n");
    clsMSISetup::CheckMSI(catalogue);
    EXPECT_TRUE(MarkedForInstall(catalogue));
    WriteFile("msiexec.exe", "#!/bin/sh\n# VS_VERSION_INFO FileVersion=3.1.4000.2435\n");
    clsMSISetup::CheckMSI(catalogue);
    EXPECT_EQ(catalogue.Item(1)->CheckBox, CheckBoxState::kUncheckedLocked);
#endif
    // The check off: nothing is marked.
    WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n");
    gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
    clsSIFApplication untouched = Catalogue("MSIINSTW", "9.0");
    clsMSISetup::CheckMSI(untouched);
    EXPECT_EQ(untouched.Item(1)->CheckBox, CheckBoxState::kUnchecked);
    SystemDir.clear();
    OSPlatformId = 0;
}

} // namespace
} // namespace tovel::test
