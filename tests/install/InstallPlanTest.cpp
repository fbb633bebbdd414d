// The plan of the installation: which product is installed in which order, what is removed
// first, what is started and what the option file asks for. Records are made in the test.
#include <gtest/gtest.h>

#include "install/clsInstallPlan.h"

namespace tovel::test {
namespace {

clsSIFApplicationItem Product(const std::string& code) {
    clsSIFApplicationItem item;
    item.ProductCode = code;
    item.Description = code + " product";
    item.SetupFile = "D:\\" + code + "\\Setup.exe";
    item.SetupFileParameters = "/lang=[Lang]";
    item.SIFFileName = "D:\\" + code + "\\p.ssf";
    return item;
}

InstallContext Context() {
    InstallContext context;
    context.expand = [](const std::string& text) {
        std::string out = text;
        for (const auto& [from, to] : {std::pair<std::string, std::string>{"[Lang]", "2057"}, {"[SystemFolder]", "C:\\WINDOWS\\system32\\"}}) {
            for (size_t at = out.find(from); at != std::string::npos; at = out.find(from)) out.replace(at, from.size(), to);
        }
        return out;
    };
    context.uninstallString = [](const std::string& key) {
        return key == "Old" ? std::string("C:\\WINDOWS\\IsUninst.exe -f\"C:\\Program Files\\Old\\Uninst.isu\"") : std::string();
    };
    context.extraEntries = [](const std::string& sif) {
        return sif == "D:\\EXTRA\\p.ssf" ? std::vector<IniEntry>{{"SetupMode", "Expert"}} : std::vector<IniEntry>{};
    };
    context.driveUsable = [](const std::string& root) { return root != "Z:\\"; };
    return context;
}

TEST(InstallPlanTest, OrderSkipsAndReasons) {
    clsSIFApplication catalogue;
    auto unselected = Product("UNSEL");
    unselected.Selected = false;
    auto kept = Product("KEPT");
    kept.InstalledVersion = "5.0";
    kept.AddAction("$DoNotInstall$");
    auto fresh = Product("FRESH");
    fresh.AddFirstinstAction("prepare.exe");
    auto manual = Product("MANUAL");
    manual.AddAction("$manualdeinstall$");
    for (auto* item : {&unselected, &kept, &fresh, &manual}) catalogue.AddItem(*item);

    const auto steps = clsInstallPlan::Make(catalogue, {"FRESH", "GONE", "KEPT", "UNSEL", "MANUAL"}, Context());
    ASSERT_EQ(steps.size(), 5u);
    const std::vector<std::pair<std::string, std::string>> expected{
        {"FRESH", ""},
        {"GONE", "the disc has no product with this code"},
        {"KEPT", "the version action $DoNotInstall$ says so for the installed version 5.0"},
        {"UNSEL", "not selected"},
        {"MANUAL", "the version action $ManualDeinstall$ says so"},
    };
    for (size_t i = 0; i < steps.size(); ++i) {
        EXPECT_EQ(steps[i].position, static_cast<int>(i) + 1);
        EXPECT_EQ(steps[i].productCode, expected[i].first);
        EXPECT_EQ(steps[i].skipReason, expected[i].second) << steps[i].productCode;
        EXPECT_EQ(steps[i].skip, !expected[i].second.empty()) << steps[i].productCode;
    }
    EXPECT_EQ(steps[0].catalogueIndex, 3);
    EXPECT_EQ(steps[1].catalogueIndex, 0);
    EXPECT_EQ(steps[0].actions, std::vector<std::string>{"prepare.exe"});
    EXPECT_EQ(clsInstallPlan::CatalogueOrder(catalogue), (std::vector<std::string>{"UNSEL", "KEPT", "FRESH", "MANUAL"}));
}

TEST(InstallPlanTest, RemovalCommandAndRecordFlags) {
    auto item = Product("OLDER");
    item.AutoDeinstall = "1";
    item.DeinstallKey = " Old ";
    item.IsCriticalComponent = true;
    item.RegisterInRunOnce = 0;
    InstallStep step = clsInstallPlan::Step(item, 4, 2, Context());
    EXPECT_TRUE(step.removal.wanted);
    EXPECT_EQ(step.removal.deinstallKey, "Old");
    EXPECT_EQ(step.removal.uninstallKeyPath, "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Old");
    EXPECT_EQ(step.removal.command, "C:\\WINDOWS\\IsUninst.exe -a -y -f\"C:\\Program Files\\Old\\Uninst.isu\"");
    EXPECT_EQ(step.commandLine, "D:\\OLDER\\Setup.exe /lang=2057");
    EXPECT_EQ(step.startFolder, "D:\\OLDER");
    EXPECT_TRUE(step.critical);
    EXPECT_FALSE(step.registerInRunOnce);
    EXPECT_FALSE(step.deinstallListEntry);

    // Unknown at plan time: the run reads the command; "2" asks for the uninstall list only.
    InstallContext unknown = Context();
    unknown.uninstallString = nullptr;
    step = clsInstallPlan::Step(item, 4, 2, unknown);
    EXPECT_FALSE(step.removal.commandKnown);
    EXPECT_NE(step.Text().find("UninstallString read when the run gets there"), std::string::npos);
    item.AutoDeinstall = "2";
    step = clsInstallPlan::Step(item, 4, 2, Context());
    EXPECT_FALSE(step.removal.wanted);
    EXPECT_TRUE(step.deinstallListEntry);
    item.AutoDeinstall = "1";
    item.DeinstallKey = "  ";
    EXPECT_FALSE(clsInstallPlan::Step(item, 4, 2, Context()).removal.wanted);
}

TEST(InstallPlanTest, InstallerPackagesOptionFileAndExtraEntries) {
    auto msi = Product("EXTRA");
    msi.SetupFile = "D:\\EXTRA\\MSIEXEC.EXE";
    msi.SetupFileParameters = "/i \"D:\\EXTRA\\x.msi\" OPFILE=Z:\\tmp\\OPFILE.TXT";
    const InstallStep step = clsInstallPlan::Step(msi, 1, 1, Context());
    EXPECT_TRUE(step.msi);
    EXPECT_EQ(step.program, "C:\\WINDOWS\\system32\\msiexec.exe");
    EXPECT_EQ(step.startFolder, "C:\\WINDOWS\\system32");
    EXPECT_TRUE(step.optionPathRewritten);
    EXPECT_EQ(step.optionFilePath, "C:\\OPFILE.TXT");
    EXPECT_EQ(step.commandLine, "C:\\WINDOWS\\system32\\msiexec.exe /i \"D:\\EXTRA\\x.msi\" OPFILE=C:\\OPFILE.TXT");
    EXPECT_EQ(step.extraEntries, (std::vector<OptionRequest>{{"SetupMode", "Expert"}}));
    EXPECT_NE(step.Text().find("SetupMode=Expert"), std::string::npos);
    EXPECT_EQ(step.Text().find("SetupMode=Batch"), std::string::npos);

    auto root = Product("ROOT");
    root.SetupFile = "D:\\Setup.exe";
    EXPECT_EQ(clsInstallPlan::Step(root, 1, 1, Context()).startFolder, "D:\\");
}

} // namespace
} // namespace tovel::test
