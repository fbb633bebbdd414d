#pragma once
// The Windows system: version, language, folders, environment, rights, screen, fonts,
// restart and the formats of the user's locale.
#include "platform/clsPlatformSystem.h"

namespace tovel {

class clsWin32System : public clsPlatformSystem {
public:
    OsVersion Version() override;
    uint16_t UserDefaultLanguage() override;
    uint32_t AnsiCodePage() override;
    std::string WindowsFolder() override;
    std::string SystemFolder() override;
    std::string TempFolder() override;
    std::string ProgramFolder() override;
    std::string CommandLine() override;
    std::optional<std::string> Environment(const std::string& name) override;
    bool IsAdministrator() override;
    ScreenSize Screen() override;
    std::vector<std::string> Fonts() override;
    bool EnableShutdownPrivilege() override;
    bool Restart(uint32_t flags) override;
    [[noreturn]] void EndProcess(uint32_t exitCode) override;
    std::string LongDate(const LocalTime& time) override;
    std::string LongTime(const LocalTime& time) override;
};

} // namespace tovel
