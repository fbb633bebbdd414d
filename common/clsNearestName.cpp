#include "common/clsNearestName.h"

#include <algorithm>
#include <numeric>
#include <utility>


namespace tovel {

size_t clsNearestName::Distance(std::string_view a, std::string_view b, size_t limit) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    const auto same = [&lower](char x, char y) { return lower(x) == lower(y); };
    // Three rows of the table: two letters swapped count as one change, the commonest slip.
    const size_t width = b.size() + 1;
    std::vector<size_t> table(3 * width);
    size_t* before = table.data();
    size_t* last = before + width;
    size_t* row = last + width;
    std::iota(last, last + width, size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        size_t least = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same(a[i - 1], b[j - 1]) ? 0 : 1)});
            if (i > 1 && j > 1 && same(a[i - 1], b[j - 2]) && same(a[i - 2], b[j - 1])) row[j] = std::min(row[j], before[j - 2] + 1);
            least = std::min(least, row[j]);
        }
        // No row costs less than the one before it: past the limit the rest need not be counted.
        if (least > limit) return limit + 1;
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()] > limit ? limit + 1 : last[b.size()];
}

std::string clsNearestName::Find(std::string_view name, const std::vector<std::string>& candidates) {
    const size_t limit = std::max<size_t>(1, name.size() / 3);
    std::string best;
    size_t bestDistance = limit + 1;
    for (const auto& candidate : candidates) {
        // A length difference alone costs that many letters: no need to compute more.
        const size_t longer = std::max(name.size(), candidate.size());
        if (longer - std::min(name.size(), candidate.size()) >= bestDistance) continue;
        const size_t distance = Distance(name, candidate, bestDistance - 1);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace tovel
