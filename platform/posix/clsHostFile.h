#pragma once
// Small helpers for files of the host (Linux) side of the emulated machine.
#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

namespace tovel {

class clsHostFile {
public:
    /// The whole file; nullopt if it cannot be read.
    [[nodiscard]] static std::optional<std::string> Read(const std::string& path);
    /// Writes through a temporary file in the same folder, flushed, then renamed over the
    /// target, keeping the target's permissions. Its modification time always moves forward,
    /// so readers that compare size and time see every change. False with the reason in
    /// error; the target is then untouched. written, when given, receives the new file's data.
    [[nodiscard]] static bool WriteAtomic(const std::string& path, std::string_view bytes, std::string& error,
                                          struct stat* written = nullptr);
};

} // namespace tovel
