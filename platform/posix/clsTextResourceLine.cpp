#include "platform/posix/clsTextResourceLine.h"

namespace tovel {

namespace {

// A real resource lies near the start of an image; the emulated one is looked for as far.
constexpr size_t kSearchedBytes = 65536;

std::string_view Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

} // namespace

std::optional<clsTextResourceLine::Pairs> clsTextResourceLine::Parse(std::string_view bytes, std::string_view marker) {
    const std::string_view head = bytes.substr(0, kSearchedBytes);
    const size_t at = head.find(marker);
    if (at == std::string_view::npos) return std::nullopt;
    std::string_view rest = head.substr(at + marker.size());
    rest = rest.substr(0, rest.find_first_of("\r\n"));
    Pairs pairs;
    while (!rest.empty()) {
        const size_t end = rest.find(';');
        const std::string_view pair = rest.substr(0, end);
        const size_t equals = pair.find('=');
        if (equals != std::string_view::npos) {
            pairs.emplace_back(Trim(pair.substr(0, equals)), Trim(pair.substr(equals + 1)));
        }
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return pairs;
}

} // namespace tovel
