#include "platform/win32/MakeWin32Platform.h"

#include "platform/win32/clsWin32Clock.h"
#include "platform/win32/clsWin32Files.h"
#include "platform/win32/clsWin32Libraries.h"
#include "platform/win32/clsWin32Processes.h"
#include "platform/win32/clsWin32Registry.h"
#include "platform/win32/clsWin32System.h"
#include "platform/win32/clsWin32Windows.h"

namespace tovel {

std::unique_ptr<clsPlatform> MakeWin32Platform() {
    return std::make_unique<clsPlatform>(std::make_unique<clsWin32Files>(), std::make_unique<clsWin32Registry>(),
                                         std::make_unique<clsWin32Processes>(), std::make_unique<clsWin32Windows>(),
                                         std::make_unique<clsWin32System>(), std::make_unique<clsWin32Clock>(),
                                         std::make_unique<clsWin32Libraries>());
}

} // namespace tovel
