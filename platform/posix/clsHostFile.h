#pragma once
// Small helpers for files of the host (Linux) side of the emulated machine.
#include <optional>
#include <string>
#include <string_view>

namespace tovel {

class clsHostFile {
public:
    /// The whole file; nullopt if it cannot be read.
    [[nodiscard]] static std::optional<std::string> Read(const std::string& path);
    /// Writes through a temporary file in the same folder, flushed, then renamed over the
    /// target. False with the reason in error; the target is then untouched.
    [[nodiscard]] static bool WriteAtomic(const std::string& path, std::string_view bytes, std::string& error);
};

} // namespace tovel
