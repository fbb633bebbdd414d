#pragma once
// Records and links made in a test, for the component page's check-box logic.
#include <string>

#include "catalogue/clsSIFApplication.h"

namespace tovel::test {

inline constexpr int32_t kChecked = CheckBoxState::kChecked;
inline constexpr int32_t kCleared = CheckBoxState::kUnchecked;
inline constexpr int32_t kCheckedLocked = CheckBoxState::kCheckedLocked;
inline constexpr int32_t kClearedLocked = CheckBoxState::kUncheckedLocked;

/// A record with a product code and a box state; selected exactly when the state is checked.
inline clsSIFApplicationItem Product(const std::string& code, int32_t state) {
    clsSIFApplicationItem item;
    item.ProductCode = code;
    item.CheckBox = state;
    item.Selected = CheckBoxIsChecked(state);
    return item;
}

/// Adds a setup dependency from the product at index from to the product code to.
inline void Link(clsSIFApplication& catalogue, int from, const std::string& to, DependenceType type) {
    catalogue.Item(from)->AddSetupDependence(to, type, "");
}

} // namespace tovel::test
