#include "catalogue/mdlCatalogueCodes.h"

#include <array>
#include <string>
#include <utility>

#include "common/clsString.h"

namespace tovel {

namespace {
constexpr std::array<std::pair<std::string_view, DependenceType>, 6> kTypes{{
    {"recommend", DependenceType::Recommend},
    {"force", DependenceType::Force},
    {"setreset", DependenceType::SetReset},
    {"toggle", DependenceType::Toggle},
    {"dependend", DependenceType::Dependend},
    {"dependforce", DependenceType::DependForce},
}};

constexpr std::array<std::pair<std::string_view, int32_t>, 4> kStates{{
    {"checkbox", CheckBoxState::kChecked},
    {"uncheckbox", CheckBoxState::kUnchecked},
    {"disabledcheckbox", CheckBoxState::kCheckedLocked},
    {"disableduncheckbox", CheckBoxState::kUncheckedLocked},
}};
} // namespace

DependenceType DependenceTypeCode(std::string_view text) {
    const std::string lower = clsString::LowerAscii(text);
    for (const auto& [word, type] : kTypes) {
        if (lower == word) return type;
    }
    return DependenceType::Other;
}

std::string_view DependenceTypeText(DependenceType type) {
    for (const auto& [word, code] : kTypes) {
        if (code == type) return word;
    }
    return "other";
}

int32_t CheckBoxStateCode(std::string_view text) {
    const std::string lower = clsString::LowerAscii(text);
    for (const auto& [word, code] : kStates) {
        if (lower == word) return code;
    }
    return CheckBoxState::kUnchecked;
}

std::string_view CheckBoxStateText(int32_t code) {
    for (const auto& [word, state] : kStates) {
        if (state == code) return word;
    }
    return "";
}

} // namespace tovel
