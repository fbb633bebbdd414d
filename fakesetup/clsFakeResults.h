#pragma once
// The stand-in setup's answer to the run: section RESULTS of the result file.
#include <string>

#include "fakesetup/clsFakeBehaviour.h"
#include "fakesetup/clsFakeLog.h"

namespace tovel {

class clsFakeResults {
public:
    explicit clsFakeResults(const clsFakeLog& log) : log_(log) {}

    /// Writes the results the behaviour asks for (or the damaged ones it asks for).
    void Write(const FakeBehaviour& behaviour, const std::string& opFile);

private:
    void WriteGood(const FakeBehaviour& behaviour, const std::string& opFile);
    /// Values no setup should write, then bytes that are no INI lines at all.
    void WriteGarbage(const std::string& opFile);

    const clsFakeLog& log_;
};

} // namespace tovel
