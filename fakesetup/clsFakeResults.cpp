#include "fakesetup/clsFakeResults.h"

#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"

namespace tovel {

void clsFakeResults::Write(const FakeBehaviour& behaviour, const std::string& opFile) {
    if (behaviour.garbage) {
        WriteGarbage(opFile);
    } else if (behaviour.writeResults) {
        WriteGood(behaviour, opFile);
    } else {
        log_.Line("results left alone");
    }
}

void clsFakeResults::WriteGood(const FakeBehaviour& behaviour, const std::string& opFile) {
    clsIniFile ini;
    ini.SetFullPath(opFile);
    ini.SetSectionName("RESULTS");
    ini.PutString("SetupSucceeded", behaviour.setupSucceeded);
    ini.PutString("RebootRequested", behaviour.rebootRequested);
    if (!behaviour.paramAfterReboot.empty()) ini.PutString("ParamAfterReboot", behaviour.paramAfterReboot);
    std::string programs;
    for (size_t i = 0; i < behaviour.startOnEnd.size(); ++i) {
        const std::string n = std::to_string(i + 1);
        ini.PutString("StartOnEnd" + n, behaviour.startOnEnd[i].first);
        ini.PutString("ParaStartOnEnd" + n, behaviour.startOnEnd[i].second);
        programs += " StartOnEnd" + n + "=" + behaviour.startOnEnd[i].first;
    }
    log_.Line("results SetupSucceeded=" + behaviour.setupSucceeded + " RebootRequested=" + behaviour.rebootRequested +
              programs);
}

void clsFakeResults::WriteGarbage(const std::string& opFile) {
    clsIniFile ini;
    ini.SetFullPath(opFile);
    ini.SetSectionName("RESULTS");
    ini.PutString("SetupSucceeded", "\x7f\xfe\xff");
    ini.PutString("RebootRequested", "99999999999999999999");
    ini.PutString("StartOnEnd1", std::string(4000, 'X'));
    static constexpr char kJunk[] = "\r\n[RESULTS\r\n=\r\nRebootRequested\r\n\x01\x02\xff\xfe\r\n[]\r\nSetupSucceeded";
    (void)Platform().Files().AppendToFile(opFile, std::string(kJunk, sizeof kJunk - 1) + std::string(1, '\0') + "0\r\n");
    log_.Line("results garbage");
}

} // namespace tovel
