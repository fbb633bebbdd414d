#include "fakesetup/clsFakeLog.h"

#include "platform/clsPlatform.h"

namespace tovel {

clsFakeLog::clsFakeLog(const std::string& opFile, std::string name)
    : path_(opFile.substr(0, opFile.find_last_of("\\/") + 1) + "FAKESETUP.LOG"), name_(std::move(name)) {}

void clsFakeLog::Line(const std::string& text) const {
    (void)Platform().Files().AppendToFile(path_, name_ + ": " + text + "\r\n");
}

} // namespace tovel
