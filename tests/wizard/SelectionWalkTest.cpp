// The walk of the links when a box on the component page changes: worked cases, then
// properties on seeded random catalogues and click sequences.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/wizard/SelectionSupport.h"
#include "wizard/clsSelectionWalk.h"

namespace tovel::test {
namespace {

int32_t State(clsSIFApplication& catalogue, int index) { return catalogue.Item(index)->CheckBox; }

TEST(SelectionWalkTest, CascadesReportTheirCauseAndUndoOnClear) {
    // 1 force 2, 2 setreset 3, 3 dependend 4; 5 is left alone.
    clsSIFApplication catalogue;
    for (const char* code : {"A", "B", "C", "D", "E"}) catalogue.AddItem(Product(code, kCleared));
    Link(catalogue, 1, "B", DependenceType::Force);
    Link(catalogue, 2, "C", DependenceType::SetReset);
    Link(catalogue, 3, "D", DependenceType::Dependend);
    Link(catalogue, 3, "NOWHERE", DependenceType::Force);
    Link(catalogue, 3, "C", DependenceType::Force);
    clsSelectionWalk walk(catalogue);

    const auto changes = walk.Toggle(1);
    ASSERT_EQ(changes.size(), 4U);
    EXPECT_EQ(changes[0].index, 1);
    EXPECT_EQ(changes[0].causeIndex, 1);
    EXPECT_EQ(changes[1].index, 2);
    EXPECT_EQ(changes[1].causeIndex, 1);
    EXPECT_EQ(changes[1].newCheckBox, kCheckedLocked);
    EXPECT_EQ(changes[2].index, 3);
    EXPECT_EQ(changes[2].causeIndex, 2);
    EXPECT_EQ(changes[3].index, 4);
    EXPECT_EQ(changes[3].causeIndex, 3);
    EXPECT_EQ(walk.LockedBy(2), "A");
    EXPECT_FALSE(walk.CanToggle(2));
    EXPECT_TRUE(walk.Toggle(2).empty()) << "a locked box cannot be clicked";

    walk.Toggle(1);
    EXPECT_EQ(State(catalogue, 1), kCleared);
    EXPECT_EQ(State(catalogue, 2), kCleared);
    EXPECT_EQ(State(catalogue, 3), kCleared);
    EXPECT_EQ(State(catalogue, 4), kClearedLocked) << "a dependend target is cleared and locked";
    EXPECT_EQ(State(catalogue, 5), kCleared);
    EXPECT_TRUE(walk.SetChecked(5, false).empty());
    EXPECT_EQ(walk.SetChecked(5, true).size(), 1U);
    EXPECT_TRUE(walk.Toggle(0).empty());
    EXPECT_TRUE(walk.Toggle(6).empty());
}

// Checks the first of two products, expects the second in a state, clears the first again.
void CheckAndClearFirst(clsSIFApplication& catalogue, int32_t secondWhenChecked) {
    clsSelectionWalk walk(catalogue);
    walk.Toggle(1);
    EXPECT_EQ(State(catalogue, 1), kChecked);
    EXPECT_EQ(State(catalogue, 2), secondWhenChecked);
    walk.Toggle(1);
    EXPECT_EQ(State(catalogue, 1), kCleared) << "not changed by a link back";
    EXPECT_EQ(State(catalogue, 2), kCleared);
    EXPECT_TRUE(walk.CanToggle(1));
}

TEST(SelectionWalkTest, TheClickedBoxKeepsItsStateAgainstLinksBack) {
    // A setreset pair that also depends back: clearing the first must not lock it.
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("HMI", kCleared));
    catalogue.AddItem(Product("ALARM", kCleared));
    Link(catalogue, 1, "ALARM", DependenceType::SetReset);
    Link(catalogue, 2, "HMI", DependenceType::SetReset);
    Link(catalogue, 2, "HMI", DependenceType::Dependend);
    CheckAndClearFirst(catalogue, kChecked);

    // Mutual force: the clicked box is not locked, and the pair does not hold itself up.
    clsSIFApplication pair;
    pair.AddItem(Product("A", kCleared));
    pair.AddItem(Product("B", kCleared));
    Link(pair, 1, "B", DependenceType::Force);
    Link(pair, 2, "A", DependenceType::Force);
    CheckAndClearFirst(pair, kCheckedLocked);
}

TEST(SelectionWalkTest, ForceLocksStandAgainstToggleAndOtherClears) {
    // 1 force 3; 2 toggles 3 and depends on it; 4 is locked by its condition.
    clsSIFApplication catalogue;
    for (const char* code : {"WEB", "PANEL", "ETH", "SER"}) catalogue.AddItem(Product(code, kCleared));
    catalogue.Item(4)->CheckBox = kClearedLocked;
    Link(catalogue, 1, "ETH", DependenceType::Force);
    Link(catalogue, 2, "ETH", DependenceType::Toggle);
    Link(catalogue, 2, "ETH", DependenceType::Dependend);
    Link(catalogue, 2, "SER", DependenceType::Toggle);
    clsSelectionWalk walk(catalogue);
    walk.Toggle(1);
    walk.Toggle(2);
    EXPECT_EQ(State(catalogue, 3), kCheckedLocked) << "the toggle passes a locked box";
    EXPECT_EQ(State(catalogue, 4), kClearedLocked) << "and a box locked cleared";
    walk.Toggle(2);
    EXPECT_EQ(State(catalogue, 3), kCheckedLocked) << "the dependend clear only counts";
    walk.Toggle(1);
    EXPECT_FALSE(catalogue.Item(3)->Selected);
}

TEST(SelectionWalkTest, EstablishIsTheSameOnEveryVisit) {
    clsSIFApplication catalogue;
    catalogue.AddItem(Product("DESIGNER", kChecked));
    catalogue.AddItem(Product("LICMGR", kChecked));
    catalogue.AddItem(Product("HMIRT", kChecked));
    catalogue.AddItem(Product("ALARM", kCleared));
    Link(catalogue, 1, "LICMGR", DependenceType::Force);
    Link(catalogue, 3, "LICMGR", DependenceType::Force);
    Link(catalogue, 3, "ALARM", DependenceType::SetReset);
    clsSelectionWalk walk(catalogue);
    const auto first = walk.Establish();
    EXPECT_EQ(first.size(), 2U);
    EXPECT_EQ(State(catalogue, 2), kCheckedLocked);
    EXPECT_EQ(walk.LockedBy(2), "DESIGNER");
    EXPECT_EQ(catalogue.Item(2)->SubjectToAppCount(), 2);
    EXPECT_EQ(State(catalogue, 4), kChecked);
    EXPECT_TRUE(walk.Establish().empty());
    EXPECT_EQ(catalogue.Item(2)->SubjectToAppCount(), 2) << "counts are not doubled";
    EXPECT_EQ(catalogue.Item(4)->SharedCount, 1);
    walk.Toggle(1);
    EXPECT_EQ(State(catalogue, 2), kCheckedLocked) << "HMIRT still holds the licence manager";
    walk.Toggle(3);
    EXPECT_EQ(State(catalogue, 2), kCleared);
    EXPECT_EQ(State(catalogue, 4), kCleared);
}

// Random catalogues: every rule and flag of the records in play.
struct RandomDisc {
    std::mt19937 random;
    explicit RandomDisc(unsigned seed) : random(seed) {}

    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }
    bool Chance(int percent) { return Below(100) < percent; }

    clsSIFApplication Make(bool allRules) {
        clsSIFApplication catalogue;
        const int count = 5 + Below(46);
        const int32_t states[] = {kChecked, kCleared, kCheckedLocked, kClearedLocked};
        for (int i = 1; i <= count; ++i) {
            auto item = Product("P" + std::to_string(i), states[Below(allRules ? 4 : 2)]);
            if (allRules) AddOddities(item);
            catalogue.AddItem(item);
        }
        for (int i = 1; i <= count; ++i) {
            for (int links = Below(4); links > 0; --links) AddLink(catalogue, i, count, allRules);
        }
        return catalogue;
    }
    void AddOddities(clsSIFApplicationItem& item) {
        item.AlwaysInstall = item.CheckBox == kCheckedLocked;
        item.AlwaysLocked = Chance(4);
        item.VersionType = Chance(4) ? 1 : 0;
        item.DoGrayChkBox = Chance(10);
        item.DependenceTypeOtherTrue = !Chance(10);
        item.DependenceTypeOtherTrueCheckBox = Chance(50) ? kCleared : kClearedLocked;
        if (Chance(5)) item.DependenceTypeOther = "companion";
        if (Chance(10)) item.AddAction("$DoNotInstall$");
    }
    // Without all rules: only the types a clear undoes, and no setreset chains (a product
    // that shares through setreset links of its own keeps a share for each of them, so it
    // stays checked when the product that checked it is cleared).
    void AddLink(clsSIFApplication& catalogue, int from, int count, bool allRules) {
        if (allRules) {
            const std::string to = Chance(5) ? "UNKNOWN" : "P" + std::to_string(1 + Below(count));
            Link(catalogue, from, to, static_cast<DependenceType>(Below(8)));
            return;
        }
        const DependenceType undone[] = {DependenceType::Force, DependenceType::SetReset, DependenceType::Dependend,
                                         DependenceType::DependForce};
        const auto type = undone[Below(4)];
        const int half = count / 2;
        if (type == DependenceType::SetReset && from > half) return;
        const int to = type == DependenceType::SetReset ? half + 1 + Below(count - half) : 1 + Below(count);
        Link(catalogue, from, "P" + std::to_string(to), type);
    }
};

struct Before {
    std::vector<int32_t> state;
    std::vector<std::string> locker;
};

Before Take(const clsSIFApplication& catalogue) {
    Before before;
    for (const auto& item : catalogue.Items()) {
        before.state.push_back(item.CheckBox);
        before.locker.push_back(item.LockedCheckboxApp);
    }
    return before;
}

void ExpectSound(const clsSIFApplication& catalogue, const Before& before, const std::string& where) {
    for (size_t i = 0; i < catalogue.Items().size(); ++i) {
        const auto& item = catalogue.Items()[i];
        const bool cleared = item.CheckBox == kCleared || item.CheckBox == kClearedLocked;
        EXPECT_FALSE(item.Selected && cleared) << where << " P" << i + 1;
        if (before.state[i] != kCheckedLocked || before.locker[i].empty()) continue;
        const int locker = catalogue.IndexOfProductCode(before.locker[i]);
        if (locker == 0 || !CheckBoxIsChecked(catalogue.Item(locker)->CheckBox)) continue;
        EXPECT_TRUE(CheckBoxIsChecked(item.CheckBox))
            << where << " P" << i + 1 << " left its lock while " << before.locker[i] << " is checked";
    }
}

TEST(SelectionWalkPropertyTest, RandomClicksKeepTheStateExplainable) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomDisc disc(seed);
        clsSIFApplication catalogue = disc.Make(true);
        clsSelectionWalk walk(catalogue);
        walk.Establish();
        for (int click = 0; click < 40; ++click) {
            const Before before = Take(catalogue);
            const int index = disc.Below(catalogue.Count() + 2);   // now and then outside
            const bool could = walk.CanToggle(index);
            const auto changes = walk.Toggle(index);
            EXPECT_EQ(could, !changes.empty()) << "seed " << seed;
            ExpectSound(catalogue, before, "seed " + std::to_string(seed) + " click " + std::to_string(click));
            for (const auto& change : changes) {
                EXPECT_TRUE(change.index >= 1 && change.index <= catalogue.Count());
                EXPECT_TRUE(change.causeIndex >= 1 && change.causeIndex <= catalogue.Count());
            }
        }
    }
}

TEST(SelectionWalkPropertyTest, CheckThenClearRestoresWhatStartedCleared) {
    int tried = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomDisc disc(seed);
        clsSIFApplication catalogue = disc.Make(false);
        clsSelectionWalk walk(catalogue);
        walk.Establish();
        const int index = 1 + disc.Below(catalogue.Count());
        if (!walk.CanToggle(index) || CheckBoxIsChecked(State(catalogue, index))) continue;
        const Before before = Take(catalogue);
        const auto checked = walk.Toggle(index);
        ASSERT_TRUE(walk.CanToggle(index)) << "seed " << seed << ": the clicked box was locked by its own links";
        walk.Toggle(index);
        ++tried;
        for (int other = 1; other <= catalogue.Count(); ++other) {
            const int32_t was = before.state[static_cast<size_t>(other - 1)];
            if (other == index || CheckBoxIsChecked(was)) continue;
            EXPECT_FALSE(catalogue.Item(other)->Selected) << "seed " << seed << " P" << other;
            bool touched = false;
            for (const auto& change : checked) touched = touched || change.index == other;
            if (!touched) {
                EXPECT_EQ(State(catalogue, other), was) << "seed " << seed << " P" << other;
            }
        }
    }
    EXPECT_GT(tried, 50);
}

} // namespace
} // namespace tovel::test
