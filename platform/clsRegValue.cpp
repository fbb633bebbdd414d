#include "platform/clsRegValue.h"

#include <utility>

namespace tovel {

clsRegValue clsRegValue::String(std::string value) {
    clsRegValue v;
    v.type = RegType::Sz;
    v.text = std::move(value);
    return v;
}

clsRegValue clsRegValue::ExpandString(std::string value) {
    clsRegValue v;
    v.type = RegType::ExpandSz;
    v.text = std::move(value);
    return v;
}

clsRegValue clsRegValue::MultiString(std::vector<std::string> values) {
    clsRegValue v;
    v.type = RegType::MultiSz;
    v.strings = std::move(values);
    return v;
}

clsRegValue clsRegValue::Binary(std::string data) {
    return Raw(static_cast<uint32_t>(RegType::Binary), std::move(data));
}

clsRegValue clsRegValue::Dword(uint32_t value) {
    clsRegValue v;
    v.type = RegType::Dword;
    v.number = value;
    return v;
}

clsRegValue clsRegValue::Raw(uint32_t type, std::string data) {
    clsRegValue v;
    v.type = static_cast<RegType>(type);
    v.bytes = std::move(data);
    return v;
}

} // namespace tovel
