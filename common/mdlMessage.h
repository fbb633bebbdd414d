#pragma once
// The one way the program asks or tells the user something. The wizard installs the handler
// that shows its own message form; until then (and in tests) a message is answered at once
// with the result of its default button, as an unattended run answers it.
#include <functional>
#include <string>

namespace tovel {

/// Style bits and results as the Windows message box has them.
namespace mb {
inline constexpr int kOk = 0, kOkCancel = 1, kAbortRetryIgnore = 2, kYesNoCancel = 3, kYesNo = 4, kRetryCancel = 5;
inline constexpr int kIconError = 16, kIconQuestion = 32, kIconWarning = 48, kIconInformation = 64;
inline constexpr int kDefaultButton2 = 256, kDefaultButton3 = 512;
inline constexpr int kIdOk = 1, kIdCancel = 2, kIdAbort = 3, kIdRetry = 4, kIdIgnore = 5, kIdYes = 6, kIdNo = 7;
} // namespace mb

using MessageBoxHandler = std::function<int(const std::string& text, int style, const std::string& caption)>;

/// Shows a message and returns the button the user chose.
int MsgBox(const std::string& text, int style, const std::string& caption);
/// Installs the handler that shows messages; an empty handler restores the default.
void SetMessageBoxHandler(MessageBoxHandler handler);
/// The result of the default button of a style.
[[nodiscard]] int DefaultButtonResult(int style);

} // namespace tovel
