// One link's select and clear effects, type by type, on records made in the test: this
// product P (index 1), the other product Q (index 2) and a third product R (index 3).
#include <gtest/gtest.h>

#include "tests/wizard/SelectionSupport.h"
#include "wizard/clsCheckBox.h"

namespace tovel::test {
namespace {

class CheckBoxTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* code : {"P", "Q", "R"}) catalogue_.AddItem(Product(code, kCleared));
    }
    static void SetState(clsSIFApplicationItem& item, int32_t code) {
        item.CheckBox = code;
        item.Selected = CheckBoxIsChecked(code);
    }
    clsSIFApplicationItem& P() { return *catalogue_.Item(1); }
    clsSIFApplicationItem& Q() { return *catalogue_.Item(2); }
    void Apply(DependenceType type, bool check, int thisIndex = 1, bool countOnly = false, bool foreignLock = false) {
        clsCheckBox link(catalogue_);
        link.SetLink(static_cast<int16_t>(thisIndex), 2, type);
        link.SetCountOnly(countOnly);
        link.SetForeignLock(foreignLock);
        if (check) {
            link.ApplyCheckEffect();
        } else {
            link.ApplyUncheckEffect();
        }
    }
    void ExpectQ(int32_t code, bool selected, int16_t subjects, const char* where) {
        EXPECT_EQ(Q().CheckBox, code) << where;
        EXPECT_EQ(Q().Selected, selected) << where;
        EXPECT_EQ(Q().SubjectToAppCount(), subjects) << where;
    }

    clsSIFApplication catalogue_;
};

TEST_F(CheckBoxTest, RecommendChecksAndCountsButIsNeverUndone) {
    Apply(DependenceType::Recommend, true);
    ExpectQ(kChecked, true, 1, "select");
    Apply(DependenceType::Recommend, false);
    ExpectQ(kChecked, true, 1, "deselect changes nothing");
    Apply(DependenceType::Recommend, true, 1, true);
    ExpectQ(kChecked, true, 2, "count only");
    SetState(Q(), kCleared);
    Apply(DependenceType::Recommend, true, 1, true);
    ExpectQ(kCleared, false, 3, "count only leaves a cleared box cleared");
}

TEST_F(CheckBoxTest, ForceLocksAndOnlyTheLockerReleases) {
    P().ProductCode = "P";
    Apply(DependenceType::Force, true);
    ExpectQ(kCheckedLocked, true, 1, "select locks");
    EXPECT_EQ(Q().LockedCheckboxApp, "P");
    Apply(DependenceType::Force, false);
    ExpectQ(kCleared, false, 0, "the locker releases");
    EXPECT_EQ(Q().LockedCheckboxApp, "");

    // Locked by R first: P's select keeps R as the locker; P's clear leaves Q checked.
    SetState(Q(), kCheckedLocked);
    Q().LockedCheckboxApp = "R";
    Q().SetSubjectToAppCount(1);
    Apply(DependenceType::Force, true);
    EXPECT_EQ(Q().LockedCheckboxApp, "R");
    ExpectQ(kCheckedLocked, true, 2, "second holder counted");
    Apply(DependenceType::Force, false);
    ExpectQ(kCheckedLocked, true, 1, "foreign lock: counted down, still checked");
    Apply(DependenceType::Force, false);
    ExpectQ(kCheckedLocked, true, 1, "foreign lock keeps a count of one");
    Apply(DependenceType::Force, false, 1, false, true);
    ExpectQ(kCheckedLocked, true, 1, "foreign-lock flag: not even counted");
    Q().SetSubjectToAppCount(2);
    Apply(DependenceType::Force, false, 1, false, true);
    EXPECT_EQ(Q().SubjectToAppCount(), 2) << "foreign-lock flag";

    // Unlocked but held by two: the first clear only counts down.
    SetState(Q(), kCheckedLocked);
    Q().LockedCheckboxApp.clear();
    Q().SetSubjectToAppCount(2);
    Apply(DependenceType::Force, false);
    ExpectQ(kCheckedLocked, true, 1, "still held by another");
    Apply(DependenceType::Force, false);
    ExpectQ(kCleared, false, 0, "last holder gone");

    // A plainly checked box, and an always-installed one, are not released.
    SetState(Q(), kChecked);
    Q().SetSubjectToAppCount(1);
    Apply(DependenceType::Force, false);
    ExpectQ(kChecked, true, 1, "plain check stays");
    SetState(Q(), kCheckedLocked);
    Q().AlwaysInstall = true;
    Apply(DependenceType::Force, false);
    ExpectQ(kCheckedLocked, true, 1, "always installed stays");

    Q().AlwaysInstall = false;
    SetState(Q(), kCleared);
    Q().SetSubjectToAppCount(0);
    Apply(DependenceType::Force, true, 1, true);
    ExpectQ(kCleared, false, 1, "count only");
    EXPECT_EQ(Q().LockedCheckboxApp, "");
}

TEST_F(CheckBoxTest, SetResetCountsBothEndsAndNeedsOneClearPerCheck) {
    Apply(DependenceType::SetReset, true);
    Apply(DependenceType::SetReset, true);
    ExpectQ(kChecked, true, 2, "checked twice");
    EXPECT_EQ(Q().SharedCount, 2);
    EXPECT_EQ(P().SharedCount, 2);
    SetState(P(), kChecked);
    Apply(DependenceType::SetReset, false);
    ExpectQ(kChecked, true, 2, "first clear");
    EXPECT_EQ(P().CheckBox, kChecked);
    EXPECT_EQ(P().SharedCount, 1);
    Apply(DependenceType::SetReset, false);
    ExpectQ(kCleared, false, 1, "second clear");
    EXPECT_EQ(P().CheckBox, kCleared);
    EXPECT_FALSE(P().Selected);
    EXPECT_EQ(P().SharedCount, 0);
    Apply(DependenceType::SetReset, false);
    ExpectQ(kCleared, false, 1, "nothing shared any more");

    Apply(DependenceType::SetReset, true, 1, true);
    ExpectQ(kCleared, false, 2, "count only shares nothing");
    EXPECT_EQ(Q().SharedCount, 0);
}

TEST_F(CheckBoxTest, ToggleClearsOnSelectOnlyAndSparesGreyBoxes) {
    SetState(Q(), kChecked);
    Q().SetSubjectToAppCount(2);
    Apply(DependenceType::Toggle, true);
    ExpectQ(kCleared, false, 1, "select clears and releases");
    Apply(DependenceType::Toggle, false);
    ExpectQ(kCleared, false, 1, "deselect does not check again");
    SetState(Q(), kChecked);
    Q().DoGrayChkBox = true;
    Apply(DependenceType::Toggle, true);
    ExpectQ(kChecked, true, 0, "grey box kept");
    Q().DoGrayChkBox = false;
    Apply(DependenceType::Toggle, true, 1, true);
    ExpectQ(kChecked, true, 0, "count only");
}

TEST_F(CheckBoxTest, DependendLooksAtTheOtherProductsLastAction) {
    Apply(DependenceType::Dependend, true);
    ExpectQ(kChecked, true, 1, "select");
    Apply(DependenceType::Dependend, false);
    ExpectQ(kClearedLocked, false, 0, "deselect clears and locks");

    SetState(Q(), kCleared);
    Q().AddAction("$TryUpdate$");
    Q().AddAction("$donotinstall$");
    Apply(DependenceType::Dependend, true);
    ExpectQ(kCleared, false, 0, "the other is not to be installed");

    // A do-not-install on this product stops the clear only.
    Q().ActionsClear();
    P().AddAction("$DoNotInstall$");
    Apply(DependenceType::Dependend, true);
    ExpectQ(kChecked, true, 1, "select despite this product's action");
    Apply(DependenceType::Dependend, false);
    ExpectQ(kChecked, true, 1, "no clear");
    P().ActionsClear();
    P().AddAction("$DoNotInstall$");
    P().AddAction("$Install$");
    Apply(DependenceType::Dependend, false);
    ExpectQ(kClearedLocked, false, 0, "only the last action counts");
}

TEST_F(CheckBoxTest, DependForceLooksAtThisProductsLastAction) {
    Apply(DependenceType::DependForce, true);
    ExpectQ(kCheckedLocked, true, 1, "select locks");
    EXPECT_EQ(Q().LockedCheckboxApp, "") << "no locker is noted";
    Apply(DependenceType::DependForce, false);
    ExpectQ(kClearedLocked, false, 0, "deselect clears and locks");

    SetState(Q(), kCleared);
    P().AddAction("$DONOTINSTALL$");
    Apply(DependenceType::DependForce, true);
    ExpectQ(kCleared, false, 0, "this product is not to be installed");
    SetState(Q(), kChecked);
    Apply(DependenceType::DependForce, false);
    ExpectQ(kChecked, true, 0, "nor cleared");

    P().ActionsClear();
    Q().AddAction("$DoNotInstall$");
    SetState(Q(), kCleared);
    Apply(DependenceType::DependForce, true, 1, true);
    ExpectQ(kCleared, false, 1, "count only; the other's action does not matter");
}

TEST_F(CheckBoxTest, OtherTypesHaveNoEffectOfTheirOwn) {
    Apply(DependenceType::Other, true);
    ExpectQ(kCleared, false, 0, "other");
    Apply(static_cast<DependenceType>(9), true);
    Apply(static_cast<DependenceType>(-1), false);
    ExpectQ(kCleared, false, 0, "unknown codes");

    // The other-type text acts before the type's rule, for every type.
    P().DependenceTypeOther = "companion";
    Apply(DependenceType::Other, true);
    ExpectQ(kChecked, true, 0, "other text checks");
    Apply(DependenceType::Recommend, false);
    ExpectQ(kClearedLocked, false, 0, "other text clears and locks");
    Apply(DependenceType::Toggle, true);
    ExpectQ(kCleared, false, 0, "checked, then the toggle clears");
}

TEST_F(CheckBoxTest, FailedConditionGivesFixedStates) {
    P().DependenceTypeOtherTrue = false;
    P().DependenceTypeOtherTrueCheckBox = kCleared;
    SetState(Q(), kChecked);
    Q().AlwaysLocked = true;   // the condition comes before every other rule
    Apply(DependenceType::Force, true);
    ExpectQ(kCleared, false, 0, "select gives the condition's state");
    EXPECT_EQ(Q().LockedCheckboxApp, "");
    Apply(DependenceType::Recommend, false);
    ExpectQ(kClearedLocked, false, 0, "deselect clears and locks");
}

TEST_F(CheckBoxTest, KeptProductsAndBadIndexesChangeNothing) {
    for (const bool versionType : {false, true}) {
        Q().AlwaysLocked = !versionType;
        Q().VersionType = versionType ? 1 : 0;
        for (const auto type : {DependenceType::Recommend, DependenceType::Force, DependenceType::SetReset,
                                DependenceType::Toggle, DependenceType::Dependend, DependenceType::DependForce}) {
            SetState(Q(), kChecked);
            Apply(type, true);
            Apply(type, false);
            ExpectQ(kChecked, true, 0, versionType ? "version type 1" : "always locked");
        }
    }
    Q().VersionType = 0;
    clsCheckBox link(catalogue_);
    for (const auto& [self, other] : {std::pair{0, 2}, {1, 0}, {4, 2}, {1, 99}, {-3, -3}}) {
        link.SetLink(static_cast<int16_t>(self), other, DependenceType::Force);
        link.ApplyCheckEffect();
        link.ApplyUncheckEffect();
    }
    ExpectQ(kChecked, true, 0, "indexes outside the catalogue");
    EXPECT_EQ(P().SharedCount, 0);
}

} // namespace
} // namespace tovel::test
