// The nearest known name to a misspelt one, as the disc check suggests it: the quick ways past
// candidates (their length, their letters) must never pass over the one a full count finds.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "common/clsNearestName.h"

using namespace tovel;

namespace {

// The first candidate with the fewest changes, if near enough, by counting every one.
std::string NearestByFullCount(const std::string& name, const std::vector<std::string>& candidates) {
    const size_t limit = std::max<size_t>(1, name.size() / 3);
    std::string best;
    size_t least = limit + 1;
    for (const auto& candidate : candidates) {
        const size_t distance = clsNearestName::Distance(name, candidate);
        if (distance < least) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace

TEST(NearestName, CountsChangesWithoutCaseAndStopsAtTheLimit) {
    EXPECT_EQ(clsNearestName::Distance("Build", "build"), 0u);
    EXPECT_EQ(clsNearestName::Distance("Bulid", "Build"), 1u);   // two neighbours swapped
    EXPECT_EQ(clsNearestName::Distance("Visibel", "Visible"), 1u);
    EXPECT_EQ(clsNearestName::Distance("Setup", "SetupFile"), 4u);
    EXPECT_EQ(clsNearestName::Distance("Setup", "SetupFile", 2), 3u);
    EXPECT_EQ(clsNearestName::Find("Dependance1", {"Dependence1", "Dependence2"}), "Dependence1");
    EXPECT_EQ(clsNearestName::Find("Tooltip", {"Description", "SetupFile"}), "");
}

TEST(NearestName, FindsWhatAFullCountFinds) {
    const std::vector<std::string> known = {"Description", "LongDescription", "AlternativeDescription", "SetupFile",
                                            "SetupFileParameters", "ShowReadMe", "DiskSpaceDestDrv", "StartOnBegin1",
                                            "ParaStartOnBegin1", "Tooltip", "BreakMessage1", "BreakMessage2", "SetupDiscID",
                                            "DefaultPathCriterium1", "WaitForApplicationTitle1", "ProductCode", "Build"};
    const std::string letters = "abcdeilnoprstuABCDEILNOPRSTU0123456789_";
    std::mt19937 random(20261125);
    for (int i = 0; i < 4000; ++i) {
        std::string name = known[random() % known.size()];
        for (int change = static_cast<int>(random() % 5); change > 0 && !name.empty(); --change) {
            const size_t at = random() % name.size();
            switch (random() % 4) {
            case 0: name.erase(at, 1); break;
            case 1: name.insert(at, 1, letters[random() % letters.size()]); break;
            case 2: name[at] = letters[random() % letters.size()]; break;
            default: if (at + 1 < name.size()) std::swap(name[at], name[at + 1]); break;
            }
        }
        ASSERT_EQ(clsNearestName::Find(name, known), NearestByFullCount(name, known)) << name;
    }
}
