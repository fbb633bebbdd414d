#include "ui/win32/clsWin32Bitmap.h"

#include "platform/clsWindowsPath.h"
#include "platform/win32/clsWin32Text.h"
#include "startup/Globals.h"

namespace tovel {

std::string clsWin32Bitmap::Resolve(const std::string& picture) {
    const bool absolute = clsWindowsPath::IsUnc(picture) || (picture.size() > 1 && picture[1] == ':');
    return absolute ? picture : HomePath + picture;
}

HBITMAP clsWin32Bitmap::Load(const std::string& picture, int width, int height) {
    if (picture.empty()) return nullptr;
    const auto path = clsWin32Text::ToWide(Resolve(picture));
    if (!path) return nullptr;
    return static_cast<HBITMAP>(LoadImageW(nullptr, path->c_str(), IMAGE_BITMAP, width, height, LR_LOADFROMFILE));
}

} // namespace tovel
