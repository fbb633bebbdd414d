#pragma once
// The terminal the text wizard runs in: raw keys, its size, and output. Raw mode is always
// given back: when the wizard leaves, when the program exits from inside a page, and on
// SIGINT, SIGTERM, SIGHUP and SIGQUIT, so a person is never left with a broken shell.
#include <string>
#include <vector>

namespace tovel {

enum class KeyCode { Char, Enter, Tab, BackTab, Escape, Up, Down, Left, Right, PageUp, PageDown, Home, End, Backspace,
                     Delete, Redraw };

struct Key {
    KeyCode code = KeyCode::Char;
    std::string text{};   ///< the UTF-8 character of a Char key
    bool operator==(const Key&) const = default;
};

class clsTerminal {
public:
    clsTerminal(int inFd, int outFd);
    ~clsTerminal();
    clsTerminal(const clsTerminal&) = delete;
    clsTerminal& operator=(const clsTerminal&) = delete;

    /// Raw keys, the alternate screen, no cursor; false if the input is no terminal.
    bool Enter();
    /// Back to the terminal as it was; harmless when not entered.
    void Leave();
    [[nodiscard]] bool Entered() const { return entered_; }

    /// Columns and rows; 80x24 when the terminal does not say.
    void Size(int& cols, int& rows) const;
    /// True once after the terminal changed its size.
    [[nodiscard]] bool Resized();

    /// Waits at most timeoutMs (0: only what is there) for keys and returns those complete.
    [[nodiscard]] std::vector<Key> Read(int timeoutMs);
    /// True once the input has ended (the terminal hung up): no key will come any more.
    [[nodiscard]] bool Closed() const { return closed_; }
    void Write(const std::string& text) const;

    /// Splits bytes read from a terminal into keys. Bytes of an unfinished sequence stay in
    /// `pending`; with `final` a lone Escape counts as the Escape key. Unknown sequences
    /// and other control bytes are dropped.
    [[nodiscard]] static std::vector<Key> Decode(std::string& pending, bool final);

private:
    int in_;
    int out_;
    bool entered_ = false;
    bool closed_ = false;
    std::string pending_;
};

} // namespace tovel
