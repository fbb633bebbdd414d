#include "platform/posix/clsHostFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace tovel {

std::optional<std::string> clsHostFile::Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    if (in.bad()) return std::nullopt;
    return buffer.str();
}

bool clsHostFile::WriteAtomic(const std::string& path, std::string_view bytes, std::string& error) {
    static std::atomic<unsigned> counter{0};
    const std::string temp = path + ".tmp" + std::to_string(getpid()) + "-" + std::to_string(counter++);
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        error = std::strerror(errno);
        return false;
    }
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        done += static_cast<size_t>(n);
    }
    const bool written = done == bytes.size() && ::fsync(fd) == 0;
    const int savedErrno = errno;
    ::close(fd);
    if (!written || ::rename(temp.c_str(), path.c_str()) != 0) {
        error = std::strerror(written ? errno : savedErrno);
        ::unlink(temp.c_str());
        return false;
    }
    return true;
}

} // namespace tovel
