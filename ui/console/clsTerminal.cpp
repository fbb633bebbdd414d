#include "ui/console/clsTerminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "ui/console/clsTextWidth.h"

namespace tovel {

namespace {

constexpr const char* kEnterScreen = "\x1b[?1049h\x1b[?25l\x1b[2J";
constexpr const char* kLeaveScreen = "\x1b[0m\x1b[?25h\x1b[?1049l";
// How long the bytes after an Escape may take to arrive before it counts as the key.
constexpr int kEscapeWaitMs = 40;

// What a signal handler needs to give the terminal back: plain data, set before the
// handlers are installed.
struct SavedTerminal {
    struct termios mode {};
    int in = -1;
    int out = -1;
    volatile sig_atomic_t active = 0;
};
SavedTerminal gSaved;
volatile sig_atomic_t gResized = 0;

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
struct sigaction gPrevious[sizeof(kSignals) / sizeof(kSignals[0])];
struct sigaction gPreviousWinch;

void WriteAll(int fd, const char* data, size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return;
        data += n;
        size -= static_cast<size_t>(n);
    }
}

// Async-signal-safe: only tcsetattr and write.
void Restore() {
    if (gSaved.active == 0) return;
    gSaved.active = 0;
    ::tcsetattr(gSaved.in, TCSAFLUSH, &gSaved.mode);
    WriteAll(gSaved.out, kLeaveScreen, std::strlen(kLeaveScreen));
}

void OnSignal(int signal) {
    Restore();
    // Then die of the signal as the program would have without us.
    struct sigaction fallback {};
    fallback.sa_handler = SIG_DFL;
    sigemptyset(&fallback.sa_mask);
    ::sigaction(signal, &fallback, nullptr);
    ::raise(signal);
}

void OnResize(int) { gResized = 1; }

void RestoreAtExit() { Restore(); }

} // namespace

clsTerminal::clsTerminal(int inFd, int outFd) : in_(inFd), out_(outFd) {}

clsTerminal::~clsTerminal() { Leave(); }

bool clsTerminal::Enter() {
    if (entered_) return true;
    struct termios mode {};
    if (::isatty(in_) == 0 || ::tcgetattr(in_, &mode) != 0) return false;
    gSaved.mode = mode;
    gSaved.in = in_;
    gSaved.out = out_;
    static bool atExitRegistered = false;
    if (!atExitRegistered) {
        // The program ends from inside a page (the Done button): exit() must still give
        // the terminal back.
        std::atexit(RestoreAtExit);
        atExitRegistered = true;
    }
    struct sigaction action {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < sizeof(kSignals) / sizeof(kSignals[0]); ++i) ::sigaction(kSignals[i], &action, &gPrevious[i]);
    struct sigaction winch {};
    winch.sa_handler = OnResize;   // no SA_RESTART: the wait for keys wakes up and redraws
    sigemptyset(&winch.sa_mask);
    ::sigaction(SIGWINCH, &winch, &gPreviousWinch);

    // Keys one by one without echo; Ctrl-C still interrupts. Ctrl-Z is switched off: a
    // stopped wizard would leave the shell in raw mode.
    mode.c_iflag &= static_cast<tcflag_t>(~(IXON | ICRNL | INLCR | IGNCR | BRKINT | INPCK | ISTRIP));
    mode.c_lflag &= static_cast<tcflag_t>(~(ICANON | ECHO | IEXTEN));
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    mode.c_cc[VSUSP] = _POSIX_VDISABLE;
    gSaved.active = 1;
    ::tcsetattr(in_, TCSANOW, &mode);   // keys typed ahead are kept
    Write(kEnterScreen);
    entered_ = true;
    return true;
}

void clsTerminal::Leave() {
    if (!entered_) return;
    entered_ = false;
    Restore();
    for (size_t i = 0; i < sizeof(kSignals) / sizeof(kSignals[0]); ++i) ::sigaction(kSignals[i], &gPrevious[i], nullptr);
    ::sigaction(SIGWINCH, &gPreviousWinch, nullptr);
    pending_.clear();
}

void clsTerminal::Size(int& cols, int& rows) const {
    struct winsize size {};
    if (::ioctl(out_, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
        cols = size.ws_col;
        rows = size.ws_row;
        return;
    }
    cols = 80;
    rows = 24;
}

bool clsTerminal::Resized() {
    if (gResized == 0) return false;
    gResized = 0;
    return true;
}

void clsTerminal::Write(const std::string& text) const { WriteAll(out_, text.data(), text.size()); }

std::vector<Key> clsTerminal::Read(int timeoutMs) {
    std::vector<Key> keys;
    if (closed_) return keys;
    int wait = timeoutMs;
    while (true) {
        struct pollfd fd {in_, POLLIN, 0};
        const int ready = ::poll(&fd, 1, wait);
        bool got = false;
        if (ready > 0 && (fd.revents & POLLIN) != 0) {
            char buffer[256];
            const ssize_t n = ::read(in_, buffer, sizeof buffer);
            if (n > 0) {
                pending_.append(buffer, static_cast<size_t>(n));
                got = true;
            } else if (n == 0 || (errno != EINTR && errno != EAGAIN)) {
                closed_ = true;
            }
        } else if (ready > 0) {
            closed_ = true;   // hung up
        }
        auto more = Decode(pending_, false);
        keys.insert(keys.end(), more.begin(), more.end());
        if (pending_.empty() || closed_) return keys;
        if (!got) {   // nothing followed in time: a lone Escape, or a cut-off sequence
            auto rest = Decode(pending_, true);
            keys.insert(keys.end(), rest.begin(), rest.end());
            return keys;
        }
        wait = kEscapeWaitMs;   // part of a sequence came: the rest is on its way
    }
}

std::vector<Key> clsTerminal::Decode(std::string& pending, bool final) {
    std::vector<Key> keys;
    size_t at = 0;
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(pending[i]); };
    while (at < pending.size()) {
        const unsigned char b = byte(at);
        if (b == 0x1b) {
            if (at + 1 >= pending.size()) {
                if (!final) break;
                keys.push_back({KeyCode::Escape});
                ++at;
                continue;
            }
            const char kind = pending[at + 1];
            if (kind != '[' && kind != 'O') {   // Alt+key or a second Escape: Escape alone
                keys.push_back({KeyCode::Escape});
                ++at;
                continue;
            }
            size_t end = at + 2;
            while (end < pending.size() && (byte(end) < 0x40 || byte(end) > 0x7E)) ++end;
            if (end >= pending.size()) {
                if (!final) break;
                at = pending.size();   // a cut-off sequence: dropped
                continue;
            }
            const std::string params = pending.substr(at + 2, end - at - 2);
            const char code = pending[end];
            at = end + 1;
            switch (code) {
            case 'A': keys.push_back({KeyCode::Up}); break;
            case 'B': keys.push_back({KeyCode::Down}); break;
            case 'C': keys.push_back({KeyCode::Right}); break;
            case 'D': keys.push_back({KeyCode::Left}); break;
            case 'H': keys.push_back({KeyCode::Home}); break;
            case 'F': keys.push_back({KeyCode::End}); break;
            case 'Z': keys.push_back({KeyCode::BackTab}); break;
            case '~': {
                const int n = std::atoi(params.c_str());
                if (n == 1 || n == 7) keys.push_back({KeyCode::Home});
                else if (n == 4 || n == 8) keys.push_back({KeyCode::End});
                else if (n == 3) keys.push_back({KeyCode::Delete});
                else if (n == 5) keys.push_back({KeyCode::PageUp});
                else if (n == 6) keys.push_back({KeyCode::PageDown});
                break;
            }
            default: break;
            }
            continue;
        }
        if (b == '\r' || b == '\n') {
            keys.push_back({KeyCode::Enter});
            // A terminal that sends CR LF for Enter gives one key.
            at += (b == '\r' && at + 1 < pending.size() && pending[at + 1] == '\n') ? 2 : 1;
            continue;
        }
        if (b == '\t') keys.push_back({KeyCode::Tab});
        else if (b == 0x7F || b == 0x08) keys.push_back({KeyCode::Backspace});
        else if (b == 0x0C) keys.push_back({KeyCode::Redraw});
        if (b < 0x20 || b == 0x7F) {
            ++at;
            continue;
        }
        if (b < 0x80) {
            keys.push_back({KeyCode::Char, std::string(1, static_cast<char>(b))});
            ++at;
            continue;
        }
        // A UTF-8 character may arrive in pieces.
        const size_t length = (b & 0xE0) == 0xC0 ? 2 : (b & 0xF0) == 0xE0 ? 3 : (b & 0xF8) == 0xF0 ? 4 : 1;
        if (at + length > pending.size() && !final) break;
        size_t next = 0;
        const auto c = clsTextWidth::At(pending, at, next);
        if (c.code != 0xFFFD || c.bytes.size() > 1) keys.push_back({KeyCode::Char, std::string(c.bytes)});
        at = next;
    }
    pending.erase(0, at);
    return keys;
}

} // namespace tovel
