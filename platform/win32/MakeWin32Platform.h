#pragma once
// The platform of the Windows build: the real Win32 API.
#include <memory>

#include "platform/clsPlatform.h"

namespace tovel {

[[nodiscard]] std::unique_ptr<clsPlatform> MakeWin32Platform();

} // namespace tovel
