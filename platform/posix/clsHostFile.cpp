#include "platform/posix/clsHostFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace tovel {

namespace {

bool IsAfter(const timespec& a, const timespec& b) {
    return a.tv_sec > b.tv_sec || (a.tv_sec == b.tv_sec && a.tv_nsec > b.tv_nsec);
}

// Timestamps move once a clock tick: two writes within one tick would otherwise leave a file
// that another process takes for the version it already holds.
bool MoveTimePast(int fd, const timespec& previous) {
    struct stat st {};
    if (::fstat(fd, &st) != 0) return false;
    if (IsAfter(st.st_mtim, previous)) return true;
    timespec times[2] = {{0, UTIME_OMIT}, previous};
    if (++times[1].tv_nsec >= 1000000000) {
        times[1].tv_nsec = 0;
        ++times[1].tv_sec;
    }
    return ::futimens(fd, times) == 0;
}

bool WriteAll(int fd, std::string_view bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            if (n == 0) errno = EIO;
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return true;
}

void SyncFolderOf(const std::string& path) {
    const size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir < 0) return;
    (void)::fsync(dir);
    ::close(dir);
}

} // namespace

std::optional<std::string> clsHostFile::Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    if (in.bad()) return std::nullopt;
    return buffer.str();
}

bool clsHostFile::WriteAtomic(const std::string& path, std::string_view bytes, std::string& error,
                              struct stat* written) {
    static std::atomic<unsigned> counter{0};
    const std::string temp = path + ".tmp" + std::to_string(getpid()) + "-" + std::to_string(counter++);
    struct stat previous {};
    const bool hadFile = ::stat(path.c_str(), &previous) == 0;
    const mode_t mode = hadFile ? (previous.st_mode & 07777) : 0644;
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
    if (fd < 0) {
        error = std::strerror(errno);
        return false;
    }
    struct stat st {};
    const bool ok = (!hadFile || ::fchmod(fd, mode) == 0) && WriteAll(fd, bytes) &&
                    (!hadFile || MoveTimePast(fd, previous.st_mtim)) && ::fsync(fd) == 0 && ::fstat(fd, &st) == 0;
    const int failure = errno;
    if (::close(fd) != 0 || !ok || ::rename(temp.c_str(), path.c_str()) != 0) {
        error = std::strerror(ok ? errno : failure);
        ::unlink(temp.c_str());
        return false;
    }
    // The rename is durable only once the folder is flushed; the file is whole either way.
    SyncFolderOf(path);
    if (written != nullptr) *written = st;
    return true;
}

} // namespace tovel
