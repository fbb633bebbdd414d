#pragma once
// "Let pending window messages run once": the user interface installs what that means (the
// Win32 message pump, the text wizard's input); without one it does nothing.
#include <functional>

namespace tovel {

void DoEvents();
void SetDoEventsHandler(std::function<void()> handler);

} // namespace tovel
