#pragma once
// Windows command lines as the C runtime splits them into arguments:
//   line      = program { blanks argument }
//   program   = '"' chars-without-quote '"' | chars-without-blank
//   argument  = { plain | '"' quoted '"' }    (blanks end an argument only outside quotes)
//   2n backslashes before '"' give n backslashes and the quote opens or closes;
//   2n+1 backslashes before '"' give n backslashes and a literal '"'; '""' inside quotes is a '"'.
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

class clsWindowsCommandLine {
public:
    /// The program part of a line and the rest after the blanks that follow it.
    struct ProgramAndRest {
        std::string program;
        std::string rest;
    };
    [[nodiscard]] static ProgramAndRest SplitProgram(std::string_view line);
    /// The arguments of the part after the program.
    [[nodiscard]] static std::vector<std::string> SplitArguments(std::string_view rest);
    /// One argument written so that SplitArguments gives it back unchanged.
    [[nodiscard]] static std::string Quote(std::string_view argument);
    /// Arguments joined with blanks, each quoted when needed.
    [[nodiscard]] static std::string Join(const std::vector<std::string>& arguments);
};

} // namespace tovel
