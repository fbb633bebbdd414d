#pragma once
// Opening a document (a readme, an information text) with the program its type is associated
// with, and waiting until that program ends while the user interface goes on.
#include <cstdint>
#include <string>

namespace tovel {

/// Why a file could not be opened.
struct CallFileError {
    int number = 0;             ///< 5 when the shell refused, 0 when the file was opened
    std::string source;         ///< "ShellExecuteEx"
    std::string description;    ///< "File not found.", "Access denied.", "Could not find associated Exe."
};

class clsCallFiles {
public:
    /// Opens the file ("open", maximised) and waits for the program to end, letting events
    /// run between polls. A shell error 2, 5 or 31 gives its error; any other refusal none.
    static CallFileError CallFile(const std::string& file, const std::string& parameters = "");
    /// The error for a shell error code; number 0 for a code that raises nothing.
    [[nodiscard]] static CallFileError ErrorOf(uint32_t shellError);
};

} // namespace tovel
