#pragma once
// Bitmaps from the disc: a path as Setups.ini writes it (relative to the setup's folder, or
// absolute, or on a share), loaded from its file. A missing or damaged file gives nothing,
// and the place it was meant for stays empty.
#include <string>

#include "platform/win32/Win32Headers.h"

namespace tovel {

class clsWin32Bitmap {
public:
    /// The bitmap, stretched to width x height pixels (its own size where they are 0);
    /// null when there is none. The caller deletes it.
    [[nodiscard]] static HBITMAP Load(const std::string& picture, int width = 0, int height = 0);
    /// The file a picture names: relative names lie in the setup's folder (HomePath).
    [[nodiscard]] static std::string Resolve(const std::string& picture);
};

} // namespace tovel
