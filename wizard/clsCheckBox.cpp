#include "wizard/clsCheckBox.h"

#include "catalogue/clsSIFApplication.h"
#include "common/clsString.h"

namespace tovel {

void clsCheckBox::SetLink(int16_t thisIndex, int32_t otherIndex, DependenceType type) {
    thisIndex_ = thisIndex;
    otherIndex_ = otherIndex;
    type_ = type;
}

bool clsCheckBox::LastActionIsDoNotInstall(const clsSIFApplicationItem& item) {
    return clsString::EqualNoCaseAscii(item.GetAction(item.VersionActionsCount()), "$DoNotInstall$");
}

void clsCheckBox::ApplyCheckEffect() {
    try {
        clsSIFApplicationItem* self = catalogue_.Item(thisIndex_);
        clsSIFApplicationItem* other = catalogue_.Item(otherIndex_);
        if (self != nullptr && other != nullptr) CheckEffect(*self, *other);
    } catch (...) {
        // A link that cannot be applied leaves the boxes as they are.
    }
}

void clsCheckBox::ApplyUncheckEffect() {
    try {
        clsSIFApplicationItem* self = catalogue_.Item(thisIndex_);
        clsSIFApplicationItem* other = catalogue_.Item(otherIndex_);
        if (self != nullptr && other != nullptr) UncheckEffect(*self, *other);
    } catch (...) {
        // A link that cannot be applied leaves the boxes as they are.
    }
}

void clsCheckBox::Check(clsSIFApplicationItem& item, int32_t code) {
    item.CheckBox = code;
    item.Selected = true;
}

void clsCheckBox::Clear(clsSIFApplicationItem& item, int32_t code) {
    item.CheckBox = code;
    item.Selected = false;
}

void clsCheckBox::CheckEffect(clsSIFApplicationItem& self, clsSIFApplicationItem& other) {
    if (!self.DependenceTypeOtherTrue) {
        other.CheckBox = self.DependenceTypeOtherTrueCheckBox;
        other.Selected = false;
        return;
    }
    if (other.AlwaysLocked || other.VersionType == 1) return;
    if (!self.DependenceTypeOther.empty()) Check(other, CheckBoxState::kChecked);
    switch (type_) {
    case DependenceType::Recommend:
        if (!countOnly_) Check(other, CheckBoxState::kChecked);
        other.AddSubjectToApp();
        return;
    case DependenceType::Force:
        if (!countOnly_) {
            Check(other, CheckBoxState::kCheckedLocked);
            if (other.LockedCheckboxApp.empty()) other.LockedCheckboxApp = self.ProductCode;
        }
        other.AddSubjectToApp();
        return;
    case DependenceType::SetReset:
        if (!countOnly_) {
            Check(other, CheckBoxState::kChecked);
            ++other.SharedCount;
            ++self.SharedCount;
        }
        other.AddSubjectToApp();
        return;
    case DependenceType::Toggle:
        if (!countOnly_ && !other.DoGrayChkBox) Clear(other, CheckBoxState::kUnchecked);
        other.ReduceSubjectToApp();
        return;
    case DependenceType::Dependend:
        if (LastActionIsDoNotInstall(other)) return;
        if (!countOnly_) Check(other, CheckBoxState::kChecked);
        other.AddSubjectToApp();
        return;
    case DependenceType::DependForce:
        if (LastActionIsDoNotInstall(self)) return;
        if (!countOnly_) Check(other, CheckBoxState::kCheckedLocked);
        other.AddSubjectToApp();
        return;
    default: return;
    }
}

void clsCheckBox::UncheckEffect(clsSIFApplicationItem& self, clsSIFApplicationItem& other) {
    if (!self.DependenceTypeOtherTrue) {
        Clear(other, CheckBoxState::kUncheckedLocked);
        return;
    }
    if (other.AlwaysLocked || other.VersionType == 1) return;
    if (!self.DependenceTypeOther.empty()) Clear(other, CheckBoxState::kUncheckedLocked);
    switch (type_) {
    case DependenceType::Force: ReleaseForce(self, other); return;
    case DependenceType::SetReset:
        ReleaseSetReset(other);
        ReleaseSetReset(self);
        return;
    case DependenceType::Dependend:
    case DependenceType::DependForce:
        if (LastActionIsDoNotInstall(self)) return;
        Clear(other, CheckBoxState::kUncheckedLocked);
        other.ReduceSubjectToApp();
        return;
    default: return;
    }
}

void clsCheckBox::ReleaseForce(const clsSIFApplicationItem& self, clsSIFApplicationItem& other) const {
    if (other.CheckBox == CheckBoxState::kChecked || other.AlwaysInstall) return;
    const bool lockedByOther = !other.LockedCheckboxApp.empty() && other.LockedCheckboxApp != self.ProductCode;
    if (lockedByOther && foreignLock_) return;
    if (!lockedByOther) other.LockedCheckboxApp.clear();
    other.ReduceSubjectToApp();
    if (other.SubjectToAppCount() != 0) return;
    // The other locker still holds the product.
    if (lockedByOther) {
        other.SetSubjectToAppCount(1);
        return;
    }
    Clear(other, CheckBoxState::kUnchecked);
}

void clsCheckBox::ReleaseSetReset(clsSIFApplicationItem& item) {
    if (item.SharedCount <= 0) return;
    --item.SharedCount;
    if (item.SharedCount != 0) return;
    Clear(item, CheckBoxState::kUnchecked);
    item.ReduceSubjectToApp();
}

} // namespace tovel
