#include "startup/clsIECheck.h"

#include "common/clsVersion.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

const char* const kExplorerKey = "SOFTWARE\\Microsoft\\Internet Explorer";
const std::string kNotExpected = "The installed internet explorer is not the expected version. ";

void LogOutcome(const std::string& text, const std::string& expected) {
    LogIfEnabled(text + "Expected version: " + expected);
}

bool EndWith(int32_t status) {
    ExitStatus = status;
    return false;
}

} // namespace

clsIECheck::Verdict clsIECheck::Judge(const std::string& build, const clsSetupsIni& settings) {
    if (build.empty()) return Verdict::NotFound;
    if (clsVersion::Compare(build, settings.ValidIEVersion()) >= 0) return Verdict::Valid;
    const std::string& minimum = settings.IEMinimumCondition();
    if (!minimum.empty() && clsVersion::Compare(build, minimum) < 0) return Verdict::Terminate;
    return settings.PreCheckForIE() && !settings.SoftSwitchIE() ? Verdict::Terminate : Verdict::Ask;
}

std::string clsIECheck::ExpectedVersion(const clsSetupsIni& settings) {
    return settings.WarningValidIEVersion().empty() ? settings.ValidIEVersion() : settings.WarningValidIEVersion();
}

bool clsIECheck::Run(const clsSetupsIni& settings) {
    if (!settings.PreCheckForIE() && !settings.WarningIE()) return true;
    LogHeading("Check Warning IE");
    const clsRegistry explorer(RegRoot::LocalMachine, kExplorerKey);
    const std::string build = explorer.QueryValue("Build");
    LogIfEnabled("Internet-Explorer Version: " + explorer.QueryValue("Version"));
    LogIfEnabled("  Installed version: " + build);
    const std::string expected = ExpectedVersion(settings);
    const std::string title = ApplicationTitle;
    switch (Judge(build, settings)) {
    case Verdict::Valid: return true;
    case Verdict::NotFound:
        LogOutcome("Internet Explorer not found. Setup continued. ", expected);
        MsgBox(gLanguage->LoadResString(TextNo::kIeMissingContinue, {expected}), mb::kOk | mb::kIconInformation, title);
        return true;
    case Verdict::Ask:
        if (MsgBox(gLanguage->LoadResString(TextNo::kIeOldAskContinue, {expected}), mb::kYesNo | mb::kIconQuestion,
                   title) == mb::kIdYes) {
            LogOutcome(kNotExpected + "Setup continued. ", expected);
            return true;
        }
        LogOutcome(kNotExpected + "Setup abort of user. ", expected);
        return EndWith(1602);
    case Verdict::Terminate: break;
    }
    LogOutcome(kNotExpected + "Setup is terminated. ", expected);
    MsgBox(gLanguage->LoadResString(TextNo::kIeOldSetupEnds, {expected}), mb::kOk | mb::kIconError, title);
    return EndWith(1603);
}

} // namespace tovel
