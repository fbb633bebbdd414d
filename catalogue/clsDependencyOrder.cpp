#include "catalogue/clsDependencyOrder.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <unordered_map>
#include <utility>

#include "common/clsString.h"

namespace tovel {

namespace {

struct Placing {
    size_t pass;
    size_t position;
    bool operator>(const Placing& other) const {
        return pass != other.pass ? pass > other.pass : position > other.position;
    }
};

} // namespace

OrderResult clsDependencyOrder::Order(const std::vector<OrderEntry>& entries) {
    OrderResult result;
    const size_t count = entries.size();
    std::unordered_map<std::string, std::vector<size_t>> holders;   // code -> entries of that code
    for (size_t i = 0; i < count; ++i) holders[clsString::UpperAscii(entries[i].code)].push_back(i);

    // waiting[code] lists the entries that wait for that code to be placed the first time.
    std::unordered_map<std::string, std::vector<size_t>> waiting;
    std::vector<size_t> unmet(count, 0);
    for (size_t i = 0; i < count; ++i) {
        std::vector<std::string> codes;
        for (const std::string& dependency : entries[i].dependencies) {
            std::string code = clsString::UpperAscii(dependency);
            if (std::find(codes.begin(), codes.end(), code) != codes.end()) continue;
            if (!holders.count(code)) {
                result.missing.emplace_back(i, dependency);
                continue;
            }
            codes.push_back(code);
        }
        unmet[i] = codes.size();
        for (auto& code : codes) waiting[std::move(code)].push_back(i);
    }

    std::priority_queue<Placing, std::vector<Placing>, std::greater<>> ready;
    for (size_t i = 0; i < count; ++i) {
        if (unmet[i] == 0) ready.push({1, i});
    }
    std::vector<bool> placed(count, false);
    while (!ready.empty()) {
        const Placing next = ready.top();
        ready.pop();
        placed[next.position] = true;
        result.order.push_back(next.position);
        const auto released = waiting.find(clsString::UpperAscii(entries[next.position].code));
        if (released == waiting.end()) continue;
        // The first entry of a code to be placed releases its waiters; later ones find none.
        for (size_t waiter : released->second) {
            if (--unmet[waiter] != 0) continue;
            ready.push({waiter > next.position ? next.pass : next.pass + 1, waiter});
        }
        waiting.erase(released);
    }
    result.placed = result.order.size();
    for (size_t i = 0; i < count; ++i) {
        if (!placed[i]) result.order.push_back(i);
    }
    return result;
}

} // namespace tovel
