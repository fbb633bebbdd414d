#include "common/mdlEvents.h"

namespace tovel {

namespace {
std::function<void()>& Handler() {
    static std::function<void()> handler;
    return handler;
}
} // namespace

void DoEvents() {
    if (Handler()) Handler()();
}

void SetDoEventsHandler(std::function<void()> handler) { Handler() = std::move(handler); }

} // namespace tovel
