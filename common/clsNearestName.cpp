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
    // Names are short: their table fits on the stack, and only a long one needs the heap.
    constexpr size_t kOnStack = 3 * 64;
    size_t stack[kOnStack];
    std::vector<size_t> heap(3 * width > kOnStack ? 3 * width : 0);
    size_t* before = heap.empty() ? stack : heap.data();
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

namespace {

// No fewer letters change than one name has that the other lacks: each insertion, removal or
// change alters the count of at most one letter on either side, and a swap none. Letters that
// share a bucket only make the bound lower, never wrong.
size_t LetterBound(std::string_view a, std::string_view b) {
    int counts[64] = {};
    const auto bucket = [](char c) { return static_cast<size_t>(static_cast<unsigned char>(c) | 0x20) & 63; };
    for (const char c : a) ++counts[bucket(c)];
    for (const char c : b) --counts[bucket(c)];
    size_t more = 0;
    size_t fewer = 0;
    for (const int count : counts) {
        if (count > 0) more += static_cast<size_t>(count);
        if (count < 0) fewer += static_cast<size_t>(-count);
    }
    return std::max(more, fewer);
}

} // namespace

std::string clsNearestName::Find(std::string_view name, const std::vector<std::string>& candidates) {
    const size_t limit = std::max<size_t>(1, name.size() / 3);
    std::string best;
    size_t bestDistance = limit + 1;
    for (const auto& candidate : candidates) {
        // A length difference alone costs that many letters: no need to compute more.
        const size_t longer = std::max(name.size(), candidate.size());
        if (longer - std::min(name.size(), candidate.size()) >= bestDistance) continue;
        if (LetterBound(name, candidate) >= bestDistance) continue;
        const size_t distance = Distance(name, candidate, bestDistance - 1);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace tovel
