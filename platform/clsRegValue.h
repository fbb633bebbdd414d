#pragma once
// One registry value as the registry stores it: its type and its data. Strings are UTF-8
// without their terminating NUL; a multi-string keeps its strings apart.
#include <cstdint>
#include <string>
#include <vector>

namespace tovel {

enum class RegType : uint32_t {
    None = 0,
    Sz = 1,
    ExpandSz = 2,
    Binary = 3,
    Dword = 4,
    MultiSz = 7,
};

class clsRegValue {
public:
    RegType type = RegType::None;
    std::string text;                 ///< REG_SZ, REG_EXPAND_SZ
    std::vector<std::string> strings; ///< REG_MULTI_SZ
    std::string bytes;                ///< REG_BINARY and any other type
    uint32_t number = 0;              ///< REG_DWORD

    static clsRegValue String(std::string value);
    static clsRegValue ExpandString(std::string value);
    static clsRegValue MultiString(std::vector<std::string> values);
    static clsRegValue Binary(std::string data);
    static clsRegValue Dword(uint32_t value);
    /// Any other type, kept as raw bytes.
    static clsRegValue Raw(uint32_t type, std::string data);

    bool operator==(const clsRegValue&) const = default;
};

} // namespace tovel
