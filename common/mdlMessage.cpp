#include "common/mdlMessage.h"

namespace tovel {

namespace {
MessageBoxHandler& Handler() {
    static MessageBoxHandler handler;
    return handler;
}
} // namespace

int DefaultButtonResult(int style) {
    static const int kButtons[][3] = {
        {mb::kIdOk, mb::kIdOk, mb::kIdOk},
        {mb::kIdOk, mb::kIdCancel, mb::kIdCancel},
        {mb::kIdAbort, mb::kIdRetry, mb::kIdIgnore},
        {mb::kIdYes, mb::kIdNo, mb::kIdCancel},
        {mb::kIdYes, mb::kIdNo, mb::kIdNo},
        {mb::kIdRetry, mb::kIdCancel, mb::kIdCancel},
    };
    const int set = style & 0xF;
    const int button = (style >> 8) & 0xF;
    if (set > 5 || button > 2) return mb::kIdOk;
    return kButtons[set][button];
}

int MsgBox(const std::string& text, int style, const std::string& caption) {
    if (Handler()) return Handler()(text, style, caption);
    return DefaultButtonResult(style);
}

void SetMessageBoxHandler(MessageBoxHandler handler) { Handler() = std::move(handler); }

} // namespace tovel
