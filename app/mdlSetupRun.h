#pragma once
// The run of the setup after main() has built its platform and user interface: the same on
// both builds, so that both end their runs alike.
#include <functional>

namespace tovel {

class clsRenderer;

/// Installs the renderer and the message form on it (a null renderer leaves the message
/// handler main() set), runs Main, in configuration mode shows the configuration tool and
/// ends when it is closed; else calls started (when given)
/// and hands over to the wizard. Input that ends before the Done page cancels the setup
/// (1602). Never returns: the process ends through EndProgram with ExitStatus.
[[noreturn]] void RunSetup(clsRenderer* renderer, const std::function<void()>& started);

} // namespace tovel
