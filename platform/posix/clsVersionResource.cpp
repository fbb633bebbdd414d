#include "platform/posix/clsVersionResource.h"

#include "platform/clsWindowsPath.h"
#include "platform/posix/clsTextResourceLine.h"

namespace tovel {

namespace {

void Assign(FileVersionInfo& info, std::string_view key, std::string_view value) {
    const struct {
        std::string_view key;
        std::string FileVersionInfo::*field;
    } kFields[] = {{"FileVersion", &FileVersionInfo::fileVersion},
                   {"ProductName", &FileVersionInfo::productName},
                   {"OriginalFilename", &FileVersionInfo::originalFileName},
                   {"Translation", &FileVersionInfo::translation}};
    for (const auto& f : kFields) {
        if (clsWindowsPath::EqualNoCase(f.key, key)) info.*f.field = value;
    }
}

} // namespace

std::optional<FileVersionInfo> clsVersionResource::Parse(std::string_view bytes) {
    const auto pairs = clsTextResourceLine::Parse(bytes, "VS_VERSION_INFO");
    if (!pairs) return std::nullopt;
    FileVersionInfo info;
    info.translation = "040904B0";
    for (const auto& [key, value] : *pairs) Assign(info, key, value);
    return info;
}

} // namespace tovel
