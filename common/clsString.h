#pragma once
// String helpers the description files need everywhere: ASCII case (the files' key words and
// codes are ASCII), splitting at a separator, trimming.
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

class clsString {
public:
    [[nodiscard]] static std::string LowerAscii(std::string_view text);
    [[nodiscard]] static std::string UpperAscii(std::string_view text);
    [[nodiscard]] static bool EqualNoCaseAscii(std::string_view a, std::string_view b);
    /// The parts between the separators; "" gives one empty part, "a;" gives "a" and "".
    [[nodiscard]] static std::vector<std::string> Split(std::string_view text, std::string_view separator);
    /// The text without blanks and tabs at either end.
    [[nodiscard]] static std::string Trim(std::string_view text);
};

} // namespace tovel
