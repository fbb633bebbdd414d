#include "common/clsMessageStyle.h"

#include "common/mdlMessage.h"

namespace tovel {

namespace {

std::vector<MessageButtonDef> ButtonSet(int set) {
    using B = MessageButton;
    switch (set) {
        case 1: return {{B::Ok, mb::kIdOk, true}, {B::Cancel, mb::kIdCancel, true}};
        case 2: return {{B::Abort, mb::kIdAbort, true}, {B::Retry, mb::kIdRetry, true}, {B::Ignore, mb::kIdIgnore, true}};
        case 3: return {{B::Yes, mb::kIdYes, true}, {B::No, mb::kIdNo, true}, {B::Cancel, mb::kIdCancel, true}};
        case 4: return {{B::Yes, mb::kIdYes, true}, {B::No, mb::kIdNo, true}};
        case 5: return {{B::Retry, mb::kIdRetry, true}, {B::Cancel, mb::kIdCancel, true}};
        default: return {{B::Ok, mb::kIdOk, true}};
    }
}

MessageIcon IconOf(int bits) {
    switch (bits) {
        case 16: return MessageIcon::Stop;
        case 32: return MessageIcon::Question;
        case 48: return MessageIcon::Exclamation;
        case 64: return MessageIcon::Information;
        default: return MessageIcon::None;
    }
}

} // namespace

clsMessageStyle::clsMessageStyle(int style)
    : buttons_(ButtonSet(style & 7)), icon_(IconOf(style & 112)), topMost_((style & kSetForeground) != 0) {
    const int set = style & 7;
    if ((style & kHelpButton) != 0 && set >= 1 && set <= 5) buttons_.push_back({MessageButton::Help, 0, false});
    const auto requested = static_cast<size_t>((style & 768) >> 8);
    defaultButton_ = requested < buttons_.size() ? requested : 0;
}

int clsMessageStyle::ResultOf(size_t index) const { return index < buttons_.size() ? buttons_[index].result : 0; }

int clsMessageStyle::DefaultResult() const {
    if (buttons_[defaultButton_].closes) return buttons_[defaultButton_].result;
    return buttons_.front().result;
}

std::string clsMessageStyle::ButtonWord(MessageButton button) {
    switch (button) {
        case MessageButton::Ok: return "OK";
        case MessageButton::Cancel: return "Cancel";
        case MessageButton::Yes: return "Yes";
        case MessageButton::No: return "No";
        case MessageButton::Abort: return "Abort";
        case MessageButton::Retry: return "Retry";
        case MessageButton::Ignore: return "Ignore";
        case MessageButton::Help: return "Help";
    }
    return "";
}

} // namespace tovel
