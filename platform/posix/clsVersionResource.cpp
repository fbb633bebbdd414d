#include "platform/posix/clsVersionResource.h"

#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

constexpr std::string_view kMarker = "VS_VERSION_INFO";
// A real resource lies near the start of an image; the emulated one is looked for as far.
constexpr size_t kSearchedBytes = 65536;

std::string_view Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

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
    const std::string_view head = bytes.substr(0, kSearchedBytes);
    const size_t at = head.find(kMarker);
    if (at == std::string_view::npos) return std::nullopt;
    std::string_view rest = head.substr(at + kMarker.size());
    rest = rest.substr(0, rest.find_first_of("\r\n"));
    FileVersionInfo info;
    info.translation = "040904B0";
    while (!rest.empty()) {
        const size_t end = rest.find(';');
        const std::string_view pair = rest.substr(0, end);
        const size_t equals = pair.find('=');
        if (equals != std::string_view::npos) Assign(info, Trim(pair.substr(0, equals)), Trim(pair.substr(equals + 1)));
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return info;
}

} // namespace tovel
