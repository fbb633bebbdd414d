#include "catalogue/clsDependencyCycles.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "common/clsString.h"

namespace tovel {

namespace {

constexpr size_t kUnvisited = static_cast<size_t>(-1);

// Tarjan's strongly connected components, with an explicit stack: a chain of ten thousand
// products must not run out of call stack.
class Components {
public:
    explicit Components(const std::vector<std::vector<size_t>>& edges)
        : edges_(edges), index_(edges.size(), kUnvisited), low_(edges.size(), 0), onStack_(edges.size(), false) {}

    std::vector<std::vector<size_t>> Circles() {
        for (size_t start = 0; start < edges_.size(); ++start) {
            if (index_[start] == kUnvisited) Visit(start);
        }
        std::sort(circles_.begin(), circles_.end());
        return std::move(circles_);
    }

private:
    struct Frame {
        size_t node;
        size_t next;   ///< the next edge to follow
    };

    void Open(size_t node, std::vector<Frame>& frames) {
        index_[node] = low_[node] = counter_++;
        stack_.push_back(node);
        onStack_[node] = true;
        frames.push_back({node, 0});
    }

    void Visit(size_t start) {
        std::vector<Frame> frames;
        Open(start, frames);
        while (!frames.empty()) {
            Frame& frame = frames.back();
            const size_t node = frame.node;
            if (frame.next < edges_[node].size()) {
                const size_t target = edges_[node][frame.next++];
                if (index_[target] == kUnvisited) {
                    Open(target, frames);
                } else if (onStack_[target]) {
                    low_[node] = std::min(low_[node], index_[target]);
                }
                continue;
            }
            frames.pop_back();
            if (!frames.empty()) low_[frames.back().node] = std::min(low_[frames.back().node], low_[node]);
            if (low_[node] == index_[node]) Close(node);
        }
    }

    void Close(size_t root) {
        std::vector<size_t> component;
        size_t member = kUnvisited;
        do {
            member = stack_.back();
            stack_.pop_back();
            onStack_[member] = false;
            component.push_back(member);
        } while (member != root);
        const bool selfLoop = std::find(edges_[root].begin(), edges_[root].end(), root) != edges_[root].end();
        if (component.size() < 2 && !selfLoop) return;
        std::sort(component.begin(), component.end());
        circles_.push_back(std::move(component));
    }

    const std::vector<std::vector<size_t>>& edges_;
    std::vector<size_t> index_;
    std::vector<size_t> low_;
    std::vector<bool> onStack_;
    std::vector<size_t> stack_;
    size_t counter_ = 0;
    std::vector<std::vector<size_t>> circles_;
};

} // namespace

std::vector<std::vector<size_t>> clsDependencyCycles::Find(const std::vector<OrderEntry>& entries) {
    std::unordered_map<std::string, size_t> byCode;
    byCode.reserve(entries.size());
    for (size_t i = 0; i < entries.size(); ++i) byCode.try_emplace(clsString::UpperAscii(entries[i].code), i);
    std::vector<std::vector<size_t>> edges(entries.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        for (const auto& code : entries[i].dependencies) {
            const auto found = byCode.find(clsString::UpperAscii(code));
            if (found != byCode.end()) edges[i].push_back(found->second);
        }
    }
    return Components(edges).Circles();
}

} // namespace tovel
