#include "common/clsNearestName.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "common/clsString.h"

namespace tovel {

size_t clsNearestName::Distance(std::string_view a, std::string_view b) {
    const std::string x = clsString::LowerAscii(a);
    const std::string y = clsString::LowerAscii(b);
    // Three rows of the table: two letters swapped count as one change, the commonest slip.
    std::vector<size_t> before(y.size() + 1), last(y.size() + 1), row(y.size() + 1);
    std::iota(last.begin(), last.end(), size_t{0});
    for (size_t i = 1; i <= x.size(); ++i) {
        row[0] = i;
        for (size_t j = 1; j <= y.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (x[i - 1] == y[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && x[i - 1] == y[j - 2] && x[i - 2] == y[j - 1]) row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[y.size()];
}

std::string clsNearestName::Find(std::string_view name, const std::vector<std::string>& candidates) {
    const size_t limit = std::max<size_t>(1, name.size() / 3);
    std::string best;
    size_t bestDistance = limit + 1;
    for (const auto& candidate : candidates) {
        // A length difference alone costs that many letters: no need to compute more.
        const size_t longer = std::max(name.size(), candidate.size());
        if (longer - std::min(name.size(), candidate.size()) >= bestDistance) continue;
        const size_t distance = Distance(name, candidate);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace tovel
