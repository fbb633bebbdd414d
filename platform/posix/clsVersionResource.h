#pragma once
// The version resource of a file on the emulated machine. Its files are no PE images, so a
// file carries its resource as one line of its own text, anywhere in its first 64 KiB:
//   VS_VERSION_INFO FileVersion=3.1.4000.2435; ProductName=Windows Installer; OriginalFilename=msiexec.exe; Translation=040904B0
// Pairs are separated by ";", blanks around keys and values are ignored, keys are matched
// without regard to case, unknown keys are left alone. Translation defaults to "040904B0".
// A script keeps the line in a comment ("# VS_VERSION_INFO FileVersion=1.0.0.1").
#include <optional>
#include <string_view>

#include "platform/clsPlatformFiles.h"

namespace tovel {

class clsVersionResource {
public:
    /// The resource the bytes carry; nullopt when they hold no "VS_VERSION_INFO" line.
    [[nodiscard]] static std::optional<FileVersionInfo> Parse(std::string_view bytes);
};

} // namespace tovel
