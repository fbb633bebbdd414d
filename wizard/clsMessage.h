#pragma once
// The program's own message box: every question and message of the setup is shown on the
// message form "frmMessage" through the renderer, with OK, Cancel, Yes and No in the setup
// language, and logged with its text, buttons and answer. The calling contract is the
// Windows message box's: the same style bits and results (clsMessageStyle). In silent mode a
// message is answered at once with its default button.
#include <string>
#include <vector>

#include "common/clsMessageStyle.h"
#include "wizard/clsForm.h"

namespace tovel {

class clsMessage : public clsFormEvents {
public:
    /// Reads the captions of OK, Cancel, Yes and No in the setup language.
    clsMessage();

    /// Shows the text and returns the result of the button pressed; 0 when the form could not
    /// be shown, which no caller takes for Yes or OK.
    int MsgBox(const std::string& text, int style, const std::string& caption);
    /// Shows an error with Close and Copy, and Help in front of them when asked for. Copy
    /// writes the text to TOVELSETUP-ERROR.TXT in the work folder, to attach to a support
    /// request; the form stays open.
    void DisplayError(const std::string& text, const std::string& caption, bool withHelp);

    /// The caption a button shows: the translated OK, Cancel, Yes and No, the fixed English
    /// words otherwise.
    [[nodiscard]] std::string ButtonCaption(MessageButton button) const;
    /// The message form laid out for a text and its buttons, inside the screen: the text at
    /// the top, the buttons in a row below, centred.
    [[nodiscard]] static clsForm LayOut(const std::string& text, const std::string& caption, const std::vector<std::string>& buttons,
                                        MessageIcon icon, size_t defaultButton);
    /// The path Copy writes to.
    [[nodiscard]] static std::string ErrorCopyPath();

    void Click(const std::string& control, int index) override;
    void FormQueryUnload() override;

private:
    struct Button {
        std::string caption;
        int result = 0;
        bool closes = true;
        bool copies = false;
    };
    /// Shows the form with the buttons; the 0-based index of the button that closed it, -1 for none.
    int Show(const std::string& text, const std::string& caption, const std::vector<Button>& buttons, MessageIcon icon,
             size_t defaultButton, bool topMost);
    static void Log(const std::string& caption, const std::string& text, const std::vector<Button>& buttons, const std::string& answer);

    std::string captions_[4];   ///< OK, Cancel, Yes, No
    std::vector<Button> buttons_;
    clsForm* form_ = nullptr;
    std::string text_;
    int selected_ = -1;
};

/// Installs clsMessage as the program's message box (MsgBox of common/mdlMessage).
void UseMessageForm();

} // namespace tovel
