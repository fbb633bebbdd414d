#include "ui/console/clsTerminalTimers.h"

#include <algorithm>
#include <utility>

namespace tovel {

clsTerminalTimers::Entry* clsTerminalTimers::Find(long shownId, const std::string& name) {
    const auto it = std::find_if(entries_.begin(), entries_.end(),
                                 [&](const Entry& e) { return e.shownId == shownId && e.name == name; });
    return it != entries_.end() ? &*it : nullptr;
}

void clsTerminalTimers::Sync() {
    const auto now = Clock::now();
    std::vector<Entry> kept;
    for (ConsoleShown* s : stack_.OnScreen()) {
        for (const auto& t : s->form->Timers()) {
            if (!t.enabled || t.intervalMs <= 0) continue;
            const Entry* old = Find(s->id, t.name);
            if (old != nullptr && old->intervalMs == t.intervalMs) {
                kept.push_back(*old);
                continue;
            }
            kept.push_back({s->id, t.name, t.intervalMs, now + std::chrono::milliseconds(t.intervalMs),
                            old != nullptr && old->running});
        }
    }
    entries_ = std::move(kept);
}

int clsTerminalTimers::MsUntilNext(int longest) {
    Sync();
    const auto now = Clock::now();
    long wait = longest;
    for (const auto& e : entries_) {
        if (e.running) continue;
        const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(e.due - now).count();
        wait = std::min<long>(wait, std::max<long>(ms, 0));
    }
    return static_cast<int>(wait);
}

void clsTerminalTimers::FireDue() {
    Sync();
    const auto now = Clock::now();
    std::vector<std::pair<long, std::string>> due;
    for (const auto& e : entries_) {
        if (!e.running && e.due <= now) due.emplace_back(e.shownId, e.name);
    }
    for (const auto& [id, name] : due) {
        Entry* entry = Find(id, name);
        const ConsoleShown* owner = stack_.ById(id);
        if (entry == nullptr || owner == nullptr || !owner->form->Shown()) continue;
        entry->due = Clock::now() + std::chrono::milliseconds(entry->intervalMs);
        entry->running = true;
        owner->form->RaiseTimer(name);
        entry = Find(id, name);   // the tick may have changed the list
        if (entry != nullptr) entry->running = false;
    }
}

void clsTerminalTimers::Forget(long shownId) {
    std::erase_if(entries_, [&](const Entry& e) { return e.shownId == shownId; });
}

} // namespace tovel
