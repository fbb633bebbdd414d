#pragma once
// The registry through the wide Reg* API; every key opened is closed again before returning.
#include "platform/clsPlatformRegistry.h"

namespace tovel {

class clsWin32Registry : public clsPlatformRegistry {
public:
    bool KeyExists(RegRoot root, const std::string& key) override;
    bool CreateKey(RegRoot root, const std::string& key) override;
    std::optional<clsRegValue> QueryValue(RegRoot root, const std::string& key, const std::string& name) override;
    bool SetValue(RegRoot root, const std::string& key, const std::string& name, const clsRegValue& value) override;
    std::optional<std::vector<std::string>> EnumKeys(RegRoot root, const std::string& key) override;
    std::optional<std::vector<std::string>> EnumValues(RegRoot root, const std::string& key) override;
    bool DeleteKey(RegRoot root, const std::string& key) override;
    bool DeleteValue(RegRoot root, const std::string& key, const std::string& name) override;
};

} // namespace tovel
