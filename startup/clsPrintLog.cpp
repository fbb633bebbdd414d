#include "startup/clsPrintLog.h"

#include "common/clsCodePage.h"
#include "common/clsFileDisk.h"
#include "platform/clsPlatform.h"
#include "platform/clsUtf8.h"

#define TOVEL_STRINGIFY2(x) #x
#define TOVEL_STRINGIFY(x) TOVEL_STRINGIFY2(x)

namespace tovel {

namespace {

constexpr const char* kBaseName = "TOVELSETUP";
constexpr const char* kExtension = ".LOG";
constexpr int kBackups = 5;

// The version the build gives the program ("0.1.0").
constexpr const char* kVersion =
    TOVEL_STRINGIFY(TOVEL_VERSION_MAJOR) "." TOVEL_STRINGIFY(TOVEL_VERSION_MINOR) "." TOVEL_STRINGIFY(TOVEL_VERSION_REVISION);

// Text that may carry stray bytes (a path read from a damaged file) still gets its line:
// each byte that does not start a UTF-8 sequence stands as "?".
std::string AsUtf8(const std::string& text) {
    if (clsUtf8::IsValid(text)) return text;
    std::string out;
    for (size_t i = 0; i < text.size();) {
        if (const auto codePoint = clsUtf8::Next(text, i)) {
            clsUtf8::Append(*codePoint, out);
        } else {
            out += '?';
            ++i;
        }
    }
    return out;
}

std::string InCodePage(const std::string& text, uint32_t codePage) {
    const std::string utf8 = AsUtf8(text);
    if (auto bytes = clsCodePage::FromUtf8(utf8, codePage)) return std::move(*bytes);
    // An unknown code page: ASCII is the same in all of them.
    std::string ascii;
    for (size_t i = 0; i < utf8.size();) {
        const size_t start = i;
        (void)clsUtf8::NextLenient(utf8, i);
        ascii += i - start == 1 && static_cast<unsigned char>(utf8[start]) < 0x80 ? utf8[start] : '?';
    }
    return ascii;
}

} // namespace

std::string clsPrintLog::Version() { return kVersion; }

const std::string& LogRule() {
    static const std::string rule(84, '-');
    return rule;
}

clsPrintLog::clsPrintLog(const std::string& folder, bool continuedAfterRestart) {
    if (folder.empty()) return;
    folder_ = clsFileDisk::AddBackslash(folder);
    path_ = folder_ + kBaseName + kExtension;
    if (continuedAfterRestart) return;
    BackUpOldLog();
    WriteHeader();
}

std::string clsPrintLog::BackupPath(int number) const {
    return folder_ + kBaseName + std::to_string(number) + kExtension;
}

void clsPrintLog::PrintLog(const std::string& text) const { Append(text + "\r\n"); }

void clsPrintLog::BackUpOldLog() const {
    auto& files = Platform().Files();
    if (!files.FileExists(path_)) return;
    int number = 1;
    while (number <= kBackups && files.FileExists(BackupPath(number))) ++number;
    if (number > kBackups) {
        for (int n = 2; n <= kBackups; ++n) {
            if (files.FileExists(BackupPath(n))) (void)files.CopyFile(BackupPath(n), BackupPath(n - 1), false);
        }
        number = kBackups;
    }
    // Emptying the log whose copy failed would lose the only record of the last run.
    if (!files.CopyFile(path_, BackupPath(number), false)) return;
    (void)files.WriteFileAtomic(path_, "\r\n");
}

void clsPrintLog::WriteHeader() const {
    auto& system = Platform().System();
    const LocalTime now = Platform().Clock().Now();
    std::string lines;
    for (const std::string& line : {LogRule(), std::string("Logfile Header:"),
                                    std::string(" TovelSetup (Version: ") + kVersion + ")",
                                    " Date created: " + system.LongDate(now), " Time created: " + system.LongTime(now)}) {
        lines += line + "\r\n";
    }
    Append(lines);
}

void clsPrintLog::Append(const std::string& lines) const {
    if (path_.empty()) return;
    (void)Platform().Files().AppendToFile(path_, InCodePage(lines, Platform().System().AnsiCodePage()));
}

} // namespace tovel
