#pragma once
// A stand-in for every product setup of a disc: it reads the run's requests in the result
// file, does what its behaviour file says (succeed, fail, take its time, show a window, hand
// over to a second process, install for real, ask for a restart) and answers in the result
// file. Its own uninstall command brings it back as the remover. docs/FAKESETUP.md is the
// contract.
#include <cstdint>
#include <string>
#include <vector>

#include "fakesetup/clsFakeArguments.h"
#include "fakesetup/clsFakeBehaviour.h"
#include "fakesetup/clsFakeLog.h"
#include "fakesetup/clsFakeWindow.h"

namespace tovel {

class clsFakeSetup {
public:
    /// selfPath: this program's Windows path; arguments: its arguments as split by the C runtime.
    clsFakeSetup(std::string selfPath, const std::vector<std::string>& arguments, clsFakeWindow& window);
    ~clsFakeSetup();
    clsFakeSetup(const clsFakeSetup&) = delete;
    clsFakeSetup& operator=(const clsFakeSetup&) = delete;

    /// Does it all; the exit code the program ends with.
    [[nodiscard]] uint32_t Run();

    /// The result file used when the arguments name none: "OPFILE.TXT" in the root of the
    /// Windows drive.
    [[nodiscard]] static std::string DefaultOpFile();

private:
    [[nodiscard]] std::string BehaviourFile() const;
    [[nodiscard]] uint32_t Remove();
    /// Starts this program again as the second process; the first one then ends.
    [[nodiscard]] uint32_t HandOver(const FakeBehaviour& behaviour);
    void Work(const FakeBehaviour& behaviour);
    void OpenWindow(const FakeBehaviour& behaviour);
    void Hold(const std::string& file);

    std::string selfPath_;
    clsFakeArguments arguments_;
    clsFakeLog log_;
    clsFakeWindow& window_;
};

} // namespace tovel
