#include "startup/clsCommandLine.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <string>

#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "startup/mdlLog.h"

namespace tovel {

namespace {

constexpr std::string_view kAnswerFile = "Tovel_Auto.ini";

std::string LowerAscii(std::string_view text) { return clsString::LowerAscii(text); }

bool ContainsNoCase(std::string_view text, std::string_view part) {
    return LowerAscii(text).find(LowerAscii(part)) != std::string::npos;
}

const char* BoolText(bool value) { return value ? "True" : "False"; }

bool IsDriveLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The answer-file path behind "silent=", as far as the next "/". A quote can never be part of
// a Windows file name, so quotes are dropped wherever the shell left them
// (/silent="C:\My Answers\Tovel_Auto.ini", "/silent=C:\My Answers\Tovel_Auto.ini"), and so are
// the blanks that separate it from the next switch.
std::string AnswerFilePath(std::string_view value) {
    std::string path;
    for (char c : value) {
        if (c != '"') path += c;
    }
    const auto first = path.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    const auto last = path.find_last_not_of(" \t");
    return path.substr(first, last - first + 1);
}

} // namespace

CommandLineSwitches clsCommandLine::Start() {
    found_ = {};
    lower_ = LowerAscii(commandLine_);
    // The order is fixed: where two switches set the same flag the later one wins. "/test" has
    // no test of its own: it is part of "/testmode" and must stay without effect.
    Trap("CheckShowConfig", &clsCommandLine::CheckShowConfig);
    Trap("CheckDrive", &clsCommandLine::CheckDrive);
    Trap("CheckLevel", &clsCommandLine::CheckLevel);
    Trap("CheckComplete", &clsCommandLine::CheckComplete);
    Trap("CheckBeginEnd", &clsCommandLine::CheckBeginEnd);
    Trap("CheckReg", &clsCommandLine::CheckReg);
    Trap("CheckNoReg", &clsCommandLine::CheckNoReg);
    Trap("CheckLog", &clsCommandLine::CheckLog);
    Trap("CheckNoVersionCheck", &clsCommandLine::CheckNoVersionCheck);
    Trap("CheckTestmode", &clsCommandLine::CheckTestmode);
    Trap("CheckNoOSCheck", &clsCommandLine::CheckNoOSCheck);
    Trap("CheckRecord", &clsCommandLine::CheckRecord);
    Trap("CheckSilent", &clsCommandLine::CheckSilent);
    return found_;
}

void clsCommandLine::CheckShowConfig() {
    if (!Has("/showconfig")) return;
    found_.showConfig = true;
    AddLine("ShowConfig=True");
}

void clsCommandLine::CheckDrive() {
    constexpr std::string_view kSwitch = "/drive=";
    const auto at = lower_.find(kSwitch);
    if (at == std::string::npos) return;
    const auto valueAt = at + kSwitch.size();
    const char letter = valueAt < commandLine_.size() ? commandLine_[valueAt] : '\0';
    if (letter == '\\') {
        AddLine("UNC Pfad wird nicht unterstützt!");
        return;
    }
    if (!IsDriveLetter(letter)) {
        AddError("CheckDrive", "no drive letter behind /drive=");
        return;
    }
    // A drive that is not there is refused here, in its place among the lines.
    const std::string root = std::string(1, letter) + ":\\";
    if (!Platform().Files().FolderExists(root)) {
        AddError("CheckDrive", "cannot change to " + root);
        return;
    }
    found_.drive = letter;
    AddLine("Drive=" + std::string(1, letter));
}

void clsCommandLine::CheckLevel() {
    constexpr std::string_view kSwitch = "/level=";
    const auto at = lower_.find(kSwitch);
    if (at == std::string::npos) return;
    const auto valueAt = at + kSwitch.size();
    const char digit = valueAt < commandLine_.size() ? commandLine_[valueAt] : '\0';
    const int32_t level = digit >= '0' && digit <= '9' ? digit - '0' : 0;
    found_.level = level;
    AddLine("Level=" + std::to_string(level));
}

void clsCommandLine::CheckComplete() {
    if (!Has("/complete")) return;
    found_.lorvexScanComplete = true;
    AddLine("Lorvex Scanmode=-1");
}

void clsCommandLine::CheckBeginEnd() {
    if (!Has("/beginend")) return;
    found_.lorvexScanComplete = false;
    AddLine("Lorvex Scanmode=0");
}

void clsCommandLine::CheckReg() {
    if (!Has("/reg")) return;
    found_.lorvexAdditionalCommand = "-reg";
    AddLine("Lorvex AdditionalCommandLine=" + *found_.lorvexAdditionalCommand);
}

void clsCommandLine::CheckNoReg() {
    if (!Has("/noreg")) return;
    found_.lorvexAdditionalCommand = "";
    AddLine("Lorvex AdditionalCommandLine=" + *found_.lorvexAdditionalCommand);
}

void clsCommandLine::CheckLog() {
    if (!Has("/log")) return;
    found_.log = true;
    AddLine(std::string("Log=") + BoolText(found_.log));
}

void clsCommandLine::CheckNoVersionCheck() {
    if (!Has("/noversioncheck")) return;
    found_.noVersionCheck = true;
    AddLine("NoVersionCheck=True");
}

void clsCommandLine::CheckTestmode() {
    if (!Has("/testmode")) return;
    found_.testmode = true;
    AddLine("Testmode=True");
}

void clsCommandLine::CheckNoOSCheck() {
    // The one switch whose absence is a decision too.
    found_.noOSCheck = Has("/nooscheck");
    if (found_.noOSCheck) AddLine("NoOSCheck=True");
}

void clsCommandLine::CheckRecord() {
    if (!Has("/record")) return;
    found_.recordMode = true;
    AddLine("Record=True");
}

void clsCommandLine::CheckSilent() {
    found_.silentPath = FindAnswerFile();
    const std::string path = found_.silentPath.value_or("");
    // Only a file of the answer file's own name is taken; any other name is refused on purpose.
    found_.silentMode = !path.empty() && ContainsNoCase(path, kAnswerFile) && Platform().Files().FileExists(path);
    if (!found_.silentMode) return;
    AddLine(std::string("Silent=") + BoolText(found_.silentMode));
    AddLine("Silentpath=" + path);
}

std::optional<std::string> clsCommandLine::FindAnswerFile() const {
    auto& system = Platform().System();
    // An answer file on the disc starts silent mode by itself, switch or not.
    std::string programFolder = system.ProgramFolder();
    if (!programFolder.empty() && programFolder.back() == '\\') programFolder.pop_back();
    const std::string besideProgram = programFolder + "\\" + std::string(kAnswerFile);
    if (!programFolder.empty() && Platform().Files().FileExists(besideProgram)) return besideProgram;
    std::optional<std::string> found;
    size_t start = 0;
    while (start <= commandLine_.size()) {
        const auto end = std::min(commandLine_.find('/', start), commandLine_.size());
        const std::string_view piece = std::string_view(commandLine_).substr(start, end - start);
        start = end + 1;
        if (!ContainsNoCase(piece, "silent")) continue;
        const auto equals = piece.find('=');
        // A bare switch looks in the Windows folder, not on the disc.
        found = equals != std::string_view::npos ? AnswerFilePath(piece.substr(equals + 1))
                                                 : system.WindowsFolder() + std::string(kAnswerFile);
    }
    return found;
}

// The analysis goes to the log as one conditional line, as it was collected; only its last
// CR LF is left to the log, so that the blank the conditional log appends ends the last
// switch line instead of standing on a line of its own.
void clsCommandLine::WriteAnalysis(const std::string& analysis) {
    if (analysis.empty()) return;
    try {
        LogHeading("Commandline analyse");
        std::string_view text = analysis;
        if (text.ends_with("\r\n")) text.remove_suffix(2);
        LogIfEnabled(std::string(text));
    } catch (...) {
        // A log that cannot be written never stops the setup.
    }
}

bool clsCommandLine::Has(std::string_view switchText) const { return lower_.find(switchText) != std::string::npos; }

void clsCommandLine::AddLine(const std::string& line) { found_.analysis += line + "\r\n"; }

void clsCommandLine::AddError(const char* function, const std::string& why) {
    AddLine(std::string("Error in Modul clsCommandLine Funktion ") + function + ": " + why);
}

void clsCommandLine::Trap(const char* function, void (clsCommandLine::*check)()) {
    try {
        (this->*check)();
    } catch (const std::exception& error) {
        try {
            AddError(function, error.what());
        } catch (...) {
            // Out of memory even for the error line: the switches after it still run.
        }
    } catch (...) {
        try {
            AddError(function, "unknown error");
        } catch (...) {
        }
    }
}

} // namespace tovel
