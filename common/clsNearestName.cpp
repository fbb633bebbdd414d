#include "common/clsNearestName.h"

#include <algorithm>
#include <numeric>

#include "common/clsString.h"

namespace tovel {

size_t clsNearestName::Distance(std::string_view a, std::string_view b) {
    const std::string x = clsString::LowerAscii(a);
    const std::string y = clsString::LowerAscii(b);
    std::vector<size_t> row(y.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= x.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= y.size(); ++j) {
            const size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (x[i - 1] == y[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[y.size()];
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
