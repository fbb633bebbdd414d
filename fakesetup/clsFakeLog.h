#pragma once
// The stand-in setup's own log: one line per action, appended to FAKESETUP.LOG in the folder
// of the result file, so that a test sees what every setup of a run did and in which order.
#include <string>

namespace tovel {

class clsFakeLog {
public:
    /// A log beside the result file; each line begins with the setup's name.
    clsFakeLog(const std::string& opFile, std::string name);

    void SetName(std::string name) { name_ = std::move(name); }
    /// Appends "<name>: <text>"; a log that cannot be written is left out.
    void Line(const std::string& text) const;
    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    std::string path_;
    std::string name_;
};

} // namespace tovel
