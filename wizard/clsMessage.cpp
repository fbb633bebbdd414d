#include "wizard/clsMessage.h"

#include <algorithm>
#include <exception>

#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"
#include "wizard/clsRenderer.h"

namespace tovel {

namespace {

// Twips of the message form: an average character, a line, the margins, a button.
constexpr int kCharWidth = 100;
constexpr int kLineHeight = 240;
constexpr int kMargin = 240;
constexpr int kIconSize = 480;
constexpr int kButtonWidth = 1215;
constexpr int kButtonHeight = 375;
constexpr int kButtonGap = 120;
constexpr int kMinTextWidth = 3600;
constexpr int kTwipsPerPixel = 15;

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\n' || text[i] == '\r') {
            lines.emplace_back();
            continue;
        }
        lines.back() += text[i];
    }
    return lines;
}

// Characters as a reader counts them: UTF-8 continuation bytes add none.
int Characters(const std::string& line) {
    return static_cast<int>(std::count_if(line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : "/") + part;
    return text;
}

} // namespace

clsMessage::clsMessage() {
    const int numbers[4] = {TextNo::kOk, TextNo::kCancel, TextNo::kYes, TextNo::kNo};
    const char* fallbacks[4] = {"OK", "Cancel", "Yes", "No"};
    for (int i = 0; i < 4; ++i) {
        captions_[i] = gLanguage ? gLanguage->LoadResString(numbers[i]) : std::string();
        if (captions_[i].empty()) captions_[i] = fallbacks[i];
    }
}

std::string clsMessage::ButtonCaption(MessageButton button) const {
    switch (button) {
        case MessageButton::Ok: return captions_[0];
        case MessageButton::Cancel: return captions_[1];
        case MessageButton::Yes: return captions_[2];
        case MessageButton::No: return captions_[3];
        default: return clsMessageStyle::ButtonWord(button);
    }
}

int clsMessage::MsgBox(const std::string& text, int style, const std::string& caption) {
    try {
        const clsMessageStyle parsed(style);
        std::vector<Button> buttons;
        for (const auto& wanted : parsed.Buttons()) buttons.push_back({ButtonCaption(wanted.button), wanted.result, wanted.closes, false});
        if (SilentMode) {
            const int answer = parsed.DefaultResult();
            const auto chosen = std::find_if(buttons.begin(), buttons.end(), [&](const Button& b) { return b.result == answer; });
            Log(caption, text, buttons, chosen->caption + " (silent)");
            return answer;
        }
        const int pressed = Show(text, caption, buttons, parsed.Icon(), parsed.DefaultButton(), parsed.TopMost());
        return pressed < 0 ? 0 : buttons[static_cast<size_t>(pressed)].result;
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsMessage Funktion MsgBox: ") + e.what());
    } catch (...) {
        LogIfEnabled("Error in Modul clsMessage Funktion MsgBox");
    }
    return 0;
}

void clsMessage::DisplayError(const std::string& text, const std::string& caption, bool withHelp) {
    std::vector<Button> buttons;
    if (withHelp) buttons.push_back({"Help", 0, false, false});
    buttons.push_back({"Close", 0, true, false});
    buttons.push_back({"Copy", 0, false, true});
    if (SilentMode) {
        Log(caption, text, buttons, "Close (silent)");
        return;
    }
    (void)Show(text, caption, buttons, MessageIcon::Stop, withHelp ? 1 : 0, true);
}

int clsMessage::Show(const std::string& text, const std::string& caption, const std::vector<Button>& buttons, MessageIcon icon,
                     size_t defaultButton, bool topMost) {
    std::vector<std::string> captions;
    for (const auto& b : buttons) captions.push_back(b.caption);
    clsForm form = LayOut(text, caption, captions, icon, defaultButton);
    (void)topMost;   // the form is modal over everything the program shows; the renderer keeps it in front
    buttons_ = buttons;
    text_ = text;
    selected_ = -1;
    form_ = &form;
    form.SetEvents(this);
    Renderer().ShowModal(form);
    form_ = nullptr;
    Log(caption, text, buttons, selected_ < 0 ? "(none)" : buttons[static_cast<size_t>(selected_)].caption);
    return selected_;
}

void clsMessage::Click(const std::string& control, int index) {
    if (form_ == nullptr || control != "MessageButton" || index < 0 || index >= static_cast<int>(buttons_.size())) return;
    const Button& button = buttons_[static_cast<size_t>(index)];
    if (button.copies) {
        const bool written = Platform().Files().WriteFileAtomic(ErrorCopyPath(), text_ + "\r\n");
        LogIfEnabled(written ? "Error text copied to " + ErrorCopyPath() : "Error text could not be copied to " + ErrorCopyPath());
    }
    if (!button.closes) return;   // Help opens the help of the window underneath; the message stays
    selected_ = index;
    form_->SetShown(false);
}

// The close box answers as the Windows message box does: Cancel where there is one, OK when
// it is the only button; otherwise it does nothing.
void clsMessage::FormQueryUnload() {
    for (size_t i = 0; i < buttons_.size(); ++i) {
        if (buttons_[i].result == mb::kIdCancel || (buttons_.size() == 1 && buttons_[i].closes)) {
            Click("MessageButton", static_cast<int>(i));
            return;
        }
    }
}

clsForm clsMessage::LayOut(const std::string& text, const std::string& caption, const std::vector<std::string>& buttons,
                           MessageIcon icon, size_t defaultButton) {
    const ScreenSize screen = Platform().System().Screen();
    const int screenWidth = screen.width > 0 ? screen.width * kTwipsPerPixel : 800 * kTwipsPerPixel;
    const auto lines = Lines(text);
    int longest = 0;
    for (const auto& line : lines) longest = std::max(longest, Characters(line));
    const int iconSpace = icon == MessageIcon::None ? 0 : kIconSize + kMargin;
    const int buttonsWidth = static_cast<int>(buttons.size()) * (kButtonWidth + kButtonGap) - kButtonGap;
    const int maxTextWidth = screenWidth * 3 / 4 - iconSpace - 2 * kMargin;
    const int textWidth = std::clamp(longest * kCharWidth, kMinTextWidth, std::max(kMinTextWidth, maxTextWidth));
    // Long lines wrap inside the width: count the lines they take.
    int rows = 0;
    const int perLine = std::max(1, textWidth / kCharWidth);
    for (const auto& line : lines) rows += std::max(1, (Characters(line) + perLine - 1) / perLine);
    const int textHeight = std::max(rows * kLineHeight, icon == MessageIcon::None ? 0 : kIconSize);
    const int width = std::max(iconSpace + textWidth, buttonsWidth) + 2 * kMargin;
    const int height = kMargin + textHeight + kMargin + kButtonHeight + kMargin;

    clsForm form("frmMessage", caption, width, height);
    if (icon != MessageIcon::None) {
        static const char* kIcons[] = {"", "stop", "question", "exclamation", "information"};
        form.Add({.name = "MessageIcon", .kind = ControlKind::Image, .left = kMargin, .top = kMargin, .width = kIconSize,
                  .height = kIconSize, .picture = kIcons[static_cast<int>(icon)]});
    }
    form.Add({.name = "MessageText", .kind = ControlKind::Label, .left = kMargin + iconSpace, .top = kMargin, .width = textWidth,
              .height = textHeight, .caption = text});
    int left = (width - buttonsWidth) / 2;
    for (size_t i = 0; i < buttons.size(); ++i) {
        form.Add({.name = "MessageButton", .kind = ControlKind::CommandButton, .index = static_cast<int>(i), .left = left,
                  .top = height - kMargin - kButtonHeight, .width = kButtonWidth, .height = kButtonHeight, .caption = buttons[i],
                  .isDefault = i == defaultButton});
        left += kButtonWidth + kButtonGap;
    }
    return form;
}

std::string clsMessage::ErrorCopyPath() { return WorkFolder + "TOVELSETUP-ERROR.TXT"; }

void clsMessage::Log(const std::string& caption, const std::string& text, const std::vector<Button>& buttons, const std::string& answer) {
    std::vector<std::string> captions;
    for (const auto& b : buttons) captions.push_back(b.caption);
    LogIfEnabled("Message [" + caption + "] " + text + " [" + Joined(captions) + "] answer: " + answer);
}

void UseMessageForm() {
    SetMessageBoxHandler([](const std::string& text, int style, const std::string& caption) {
        return clsMessage().MsgBox(text, style, caption);
    });
}

} // namespace tovel
