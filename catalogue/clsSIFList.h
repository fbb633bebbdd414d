#pragma once
// What the catalogue and the packet list share: an ordered list of records addressed from 1,
// where an index outside the list finds nothing and changes nothing.
#include <string>
#include <vector>

namespace tovel {

template <typename Record>
class clsSIFList {
public:
    void AddItem(Record item) { items_.push_back(std::move(item)); }
    [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
    /// The record at a 1-based index; nullptr outside 1..Count.
    [[nodiscard]] Record* Item(int index) { return InRange(index) ? &items_[static_cast<size_t>(index - 1)] : nullptr; }
    [[nodiscard]] const Record* Item(int index) const {
        return InRange(index) ? &items_[static_cast<size_t>(index - 1)] : nullptr;
    }
    [[nodiscard]] std::vector<Record>& Items() { return items_; }
    [[nodiscard]] const std::vector<Record>& Items() const { return items_; }
    /// The index of the first record with exactly this description; 0 when none has it.
    [[nodiscard]] int IndexOfDescription(const std::string& description) const {
        return FirstIndex([&](const Record& item) { return item.Description == description; });
    }
    /// Removes the record at a 1-based index; nothing outside 1..Count.
    void Remove(int index) {
        if (InRange(index)) items_.erase(items_.begin() + (index - 1));
    }
    void RemoveAllItem() { items_.clear(); }

protected:
    [[nodiscard]] bool InRange(int index) const { return index >= 1 && index <= Count(); }
    template <typename Predicate>
    [[nodiscard]] int FirstIndex(Predicate matches) const {
        for (size_t i = 0; i < items_.size(); ++i) {
            if (matches(items_[i])) return static_cast<int>(i + 1);
        }
        return 0;
    }

    std::vector<Record> items_;
};

} // namespace tovel
