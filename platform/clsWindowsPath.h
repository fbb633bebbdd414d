#pragma once
// The grammar of Windows paths and names, with no machine behind it:
//   path    = [root] component { "\" component } ["\"]
//   root    = letter ":" ["\"]  |  "\\" server "\" share ["\"]  |  "\"
// "/" counts as "\"; "." and ".." are resolved; names compare without regard to case.
#include <string>
#include <string_view>
#include <vector>

namespace tovel {

struct WindowsPathParts {
    std::string root;                    ///< "C:\" or "\\server\share\"; empty for a relative path
    std::vector<std::string> components; ///< the names below the root, "." and ".." resolved
};

class clsWindowsPath {
public:
    /// The drive letter of "X:..." in upper case; 0 for UNC and relative paths.
    [[nodiscard]] static char DriveLetter(std::string_view path);
    /// True for "\\server\share..." paths.
    [[nodiscard]] static bool IsUnc(std::string_view path);
    /// Makes a path absolute. currentOfDrive(letter) gives the current folder of a drive
    /// (for "X:name" and relative paths); currentDrive is the letter of the current drive,
    /// or 0 when the current folder is a UNC path given as currentUnc.
    template <typename CurrentOfDrive>
    [[nodiscard]] static WindowsPathParts Resolve(std::string_view path, char currentDrive, const std::string& currentUnc,
                                                  CurrentOfDrive currentOfDrive) {
        return ResolveWith(path, CurrentBase(path, currentDrive, currentUnc, currentOfDrive));
    }
    /// Joins a resolved path back into a string: "C:\A\B" (a bare root keeps its backslash).
    [[nodiscard]] static std::string Join(const WindowsPathParts& parts);
    /// The path with a backslash at its end, added only when missing.
    [[nodiscard]] static std::string AddBackslash(std::string path);
    /// Upper-cases letters the way Windows compares names (ASCII, Latin-1, Latin Extended-A,
    /// Greek and Cyrillic; other characters stay).
    [[nodiscard]] static std::string FoldCase(std::string_view text);
    [[nodiscard]] static bool EqualNoCase(std::string_view a, std::string_view b);
    /// "*" matches any run, "?" one character; letters without regard to case.
    [[nodiscard]] static bool MatchWildcard(std::string_view pattern, std::string_view text);

private:
    template <typename CurrentOfDrive>
    static std::string CurrentBase(std::string_view path, char currentDrive, const std::string& currentUnc,
                                   CurrentOfDrive currentOfDrive) {
        if (IsUnc(path)) return {};
        const char drive = DriveLetter(path);
        if (drive != 0) return currentOfDrive(drive);
        if (currentDrive == 0) return currentUnc;
        return currentOfDrive(currentDrive);
    }
    static WindowsPathParts ResolveWith(std::string_view path, const std::string& currentBase);
};

} // namespace tovel
