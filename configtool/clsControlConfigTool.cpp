#include "configtool/clsControlConfigTool.h"

#include "configtool/clsControlDiscCheck.h"
#include "configtool/clsControlPageTester.h"
#include "configtool/clsControlSettings.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

void clsControlConfigTool::OnLoad() {
    const std::string title = gSetupsIni->CDTitle();
    SetText("DiscLabel", "Disc: " + HomePath + (title.empty() ? "" : "  (" + title + ")") + "\r\nSetups.ini: " + gSetupsIni->FilePath());
}

void clsControlConfigTool::OnClick(const std::string& control, int) {
    if (control == "PageTesterBtn") clsControlPageTester().Show();
    else if (control == "DiscCheckBtn") clsControlDiscCheck(HomePath).Show();
    else if (control == "SettingsBtn") clsControlSettings(HomePath).Show();
}

void ShowConfigurationTool() {
    LogHeading("Configuration tool");
    clsControlConfigTool().Show();
    LogIfEnabled("Configuration tool closed.");
}

} // namespace tovel
