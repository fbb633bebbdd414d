#pragma once
// The codes the catalogue stores for dependency types and check-box states, and the texts
// description files write them as.
#include <cstdint>
#include <string_view>

namespace tovel {

/// How a setup dependency links two products (SETUP_DEPENDENCIES, Type<n>).
enum class DependenceType : int16_t {
    Recommend = 0,
    Force = 1,
    SetReset = 2,
    Toggle = 3,
    Dependend = 4,
    DependForce = 5,
    Other = 6,
};

/// The state of a product's check box in the component tree.
namespace CheckBoxState {
inline constexpr int32_t kChecked = 1;           ///< "checkbox"
inline constexpr int32_t kUnchecked = 2;         ///< "uncheckbox"
inline constexpr int32_t kCheckedLocked = 4;     ///< "disabledcheckbox"
inline constexpr int32_t kUncheckedLocked = 8;   ///< "disableduncheckbox"
} // namespace CheckBoxState

/// The code of a type text, compared in lower case; any text but the six words is Other.
[[nodiscard]] DependenceType DependenceTypeCode(std::string_view text);
/// The word a type code is written as ("other" for Other).
[[nodiscard]] std::string_view DependenceTypeText(DependenceType type);
/// The code of a state text, compared in lower case; any other text is kUnchecked.
[[nodiscard]] int32_t CheckBoxStateCode(std::string_view text);
/// The word of a state code; "" for a code that is none of the four.
[[nodiscard]] std::string_view CheckBoxStateText(int32_t code);
/// True for the two checked states.
[[nodiscard]] constexpr bool CheckBoxIsChecked(int32_t code) {
    return code == CheckBoxState::kChecked || code == CheckBoxState::kCheckedLocked;
}

} // namespace tovel
