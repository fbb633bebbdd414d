#include "common/mdlMessage.h"

#include "common/clsMessageStyle.h"

namespace tovel {

namespace {
MessageBoxHandler& Handler() {
    static MessageBoxHandler handler;
    return handler;
}
} // namespace

int DefaultButtonResult(int style) { return clsMessageStyle(style).DefaultResult(); }

int MsgBox(const std::string& text, int style, const std::string& caption) {
    if (Handler()) return Handler()(text, style, caption);
    return DefaultButtonResult(style);
}

void SetMessageBoxHandler(MessageBoxHandler handler) { Handler() = std::move(handler); }

} // namespace tovel
