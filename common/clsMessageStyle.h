#pragma once
// What a message-box style asks for, by the calling contract of the Windows message box: the
// buttons and the result each gives, the icon, the default button and whether the box stays
// on top. The program's own message form and the unattended answer both read it from here.
#include <string>
#include <vector>

namespace tovel {

/// The buttons a message form can show. OK, Cancel, Yes and No are shown in the setup
/// language; Abort, Retry, Ignore and Help are fixed English words.
enum class MessageButton { Ok, Cancel, Yes, No, Abort, Retry, Ignore, Help };

enum class MessageIcon { None, Stop, Question, Exclamation, Information };

struct MessageButtonDef {
    MessageButton button;
    int result;      ///< what pressing it returns; 0 for Help, which returns nothing
    bool closes;     ///< false for Help: it opens the help and the form stays
    bool operator==(const MessageButtonDef&) const = default;
};

class clsMessageStyle {
public:
    static constexpr int kHelpButton = 16384;
    static constexpr int kSetForeground = 65536;

    explicit clsMessageStyle(int style);

    /// The buttons in order: style AND 7 picks the set (6 and 7 count as OK alone); the help
    /// bit appends Help to the sets 1 to 5.
    [[nodiscard]] const std::vector<MessageButtonDef>& Buttons() const { return buttons_; }
    /// style AND 112: 16 stop, 32 question, 48 exclamation, 64 information; anything else none.
    [[nodiscard]] MessageIcon Icon() const { return icon_; }
    /// 0-based: style AND 768 gives the first to the fourth button; a number beyond the
    /// buttons there are falls back to the first.
    [[nodiscard]] size_t DefaultButton() const { return defaultButton_; }
    /// The set-foreground bit makes the form top-most.
    [[nodiscard]] bool TopMost() const { return topMost_; }
    /// What the button at a 0-based index returns; 0 for an index outside or for Help.
    [[nodiscard]] int ResultOf(size_t index) const;
    /// What an unattended run answers: the default button's result (the first closing
    /// button's when the default is Help).
    [[nodiscard]] int DefaultResult() const;
    /// The English word of a button ("OK", "Cancel", "Yes", "No", "Abort", "Retry", "Ignore", "Help").
    [[nodiscard]] static std::string ButtonWord(MessageButton button);

private:
    std::vector<MessageButtonDef> buttons_;
    MessageIcon icon_ = MessageIcon::None;
    size_t defaultButton_ = 0;
    bool topMost_ = false;
};

} // namespace tovel
