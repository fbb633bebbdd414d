#pragma once
// The window of a stand-in setup on an emulated machine: the file
// <machine>/run/windows/<pid>-fake.win (class, title), which counts while the process lives.
#include <string>

#include "fakesetup/clsFakeWindow.h"

namespace tovel {

class clsFakeWindowFile : public clsFakeWindow {
public:
    explicit clsFakeWindowFile(std::string machineFolder) : machineFolder_(std::move(machineFolder)) {}
    ~clsFakeWindowFile() override { Close(); }
    clsFakeWindowFile(const clsFakeWindowFile&) = delete;
    clsFakeWindowFile& operator=(const clsFakeWindowFile&) = delete;

    bool Open(const std::string& windowClass, const std::string& title) override;
    void Wait(uint32_t milliseconds) override;
    void Close() override;

private:
    std::string machineFolder_;
    std::string file_;   ///< the window's file while it is open
};

} // namespace tovel
