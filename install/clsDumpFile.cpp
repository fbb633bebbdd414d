#include "install/clsDumpFile.h"

#include "catalogue/CatalogueGlobals.h"
#include "common/clsCodePage.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniWriter.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"

namespace tovel {
namespace {

constexpr const char* kFileName = "INSTDUMP.TMP";
constexpr const char* kInfo = "Info";

// A value must stay on its line to read back: line breaks and NUL become blanks, and bytes
// that are no UTF-8 text "?".
std::string OneLine(const std::string& value) {
    bool ascii = true;
    bool breaks = false;
    for (const char c : value) {
        ascii = ascii && static_cast<unsigned char>(c) < 0x80;
        breaks = breaks || c == '\r' || c == '\n' || c == '\0';
    }
    if (!breaks && (ascii || clsCodePage::IsUtf8(value))) return value;
    std::string line = value;
    const bool utf8 = clsCodePage::IsUtf8(line);
    for (char& c : line) {
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
        else if (!utf8 && static_cast<unsigned char>(c) >= 0x80) c = '?';
    }
    return line;
}

std::string Now() {
    auto& system = Platform().System();
    const LocalTime now = Platform().Clock().Now();
    return system.LongDate(now) + " " + system.LongTime(now);
}

// The program's file name without its extension: the disc's TOVELSETUP.EXE (Windows finds it
// without regard to case). The command line the platform gives holds only the arguments, so
// it cannot name the program: a silent start would register its answer file as the program.
constexpr const char* kProgramName = "TovelSetup";

// The disc's name in Setups.ini of the source folder; nullopt when that file is missing.
std::optional<std::string> SourceDiscName() {
    const std::string path = HomePath + "Setups.ini";
    if (!Platform().Files().FileExists(path)) return std::nullopt;
    clsIniFile ini;
    ini.SetFullPath(path);
    ini.SetSectionName("SETTINGS");
    return ini.GetString("DiscName", "");
}

// A value as clsIniFile gives it: without blanks and tabs around it.
void TrimInPlace(std::string& value) {
    const std::string_view trimmed = clsIniText::Trim(value);
    if (trimmed.size() != value.size()) value = std::string(trimmed);
}

// The run state's values as text, to put them back when a resume is given up.
std::vector<std::string> Snapshot(const RunProgress& progress) {
    std::vector<std::string> texts;
    for (const auto& key : RunStateKeys()) texts.push_back(key.Text(progress));
    return texts;
}

void PutBack(const std::vector<std::string>& texts, RunProgress& progress) {
    for (size_t i = 0; i < texts.size(); ++i) (void)RunStateKeys()[i].Restore(progress, texts[i]);
}

// Sets the run state from the file; on a value that cannot be read, every value is put back.
bool RestoreRunState(const clsDumpCatalogue::KeySource& get, RunProgress& progress, std::string& problem) {
    const auto before = Snapshot(progress);
    for (const auto& key : RunStateKeys()) {
        const auto value = get(key.section, key.key);
        if (value && key.Restore(progress, *value)) continue;
        problem = std::string(key.section) + " " + key.key + (value ? " unreadable" : " missing");
        PutBack(before, progress);
        return false;
    }
    return true;
}

void ApplyLanguage() {
    if (gLanguage) gLanguage->SetLanguageID(static_cast<uint32_t>(std::stoul(LanguageIndexToCode(DefaultLanguage, 2))));
}

} // namespace

clsDumpFile::clsDumpFile() : clsDumpFile(gApplications, gPacketItem) {}

clsDumpFile::clsDumpFile(clsSIFApplication& applications, clsSIFPacketItem& packet)
    : applications_(applications), packet_(packet) {}

std::string clsDumpFile::DumpFilePath() { return WorkFolder + kFileName; }

std::string clsDumpFile::ProgramPath() {
    const bool ends = !HomePath.empty() && (HomePath.back() == '\\' || HomePath.back() == '/');
    return HomePath + (ends ? "" : "\\") + kProgramName + ".EXE";
}

void clsDumpFile::WriteKeys(const KeySink& put) const {
    const KeySink line = [&](const std::string& section, const std::string& key, const std::string& value) {
        put(section, key, OneLine(value));
    };
    const std::string discName = gSetupsIni ? gSetupsIni->DiscName() : std::string();
    const std::string version = gSetupsIni ? gSetupsIni->DiscID() + " " + gSetupsIni->Packversion() : std::string(" ");
    line(kInfo, "Tovelsetuppath", ProgramPath());
    line(kInfo, "Version", version);
    line(kInfo, "Discname", discName);
    line(kInfo, "Interrupted", Now());
    for (const auto& key : RunStateKeys()) line(key.section, key.key, key.Text(progress_));
    clsDumpCatalogue::WritePacket(packet_, line);
    clsDumpCatalogue::WriteApplications(applications_, line);
}

void clsDumpFile::CreateDumpFile() {
    try {
        const std::string path = DumpFilePath();
        LogIfEnabled("Create Dumpfile Path = " + path);
        clsIniWriter writer(Platform().System().AnsiCodePage());
        std::string refused;
        WriteKeys([&](const std::string& section, const std::string& key, const std::string& value) {
            std::string error;
            if (!writer.Put(section, key, value, error) && refused.empty()) refused = key + ": " + error;
        });
        if (!refused.empty()) LogIfEnabled("Create Dumpfile: key not written, " + refused);
        if (!Platform().Files().WriteFileAtomic(path, writer.Bytes())) {
            LogIfEnabled("Create Dumpfile: " + path + " could not be written; the run cannot resume after the restart.");
            return;
        }
        LogIfEnabled("-------------------------------------------------------");
        LogIfEnabled("Installation Status Saved. Prepared for System Restart.");
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsDumpFile Funktion CreateDumpFile: ") + e.what());
    }
}

std::optional<clsIniText> clsDumpFile::Load() {
    const auto bytes = Platform().Files().ReadFile(DumpFilePath());
    if (!bytes) {
        LogIfEnabled("Read Dumpfile: " + DumpFilePath() + " cannot be read; the run starts afresh.");
        return std::nullopt;
    }
    std::vector<std::string> warnings;
    auto text = clsIniText::Parse(*bytes, Platform().System().AnsiCodePage(), warnings);
    for (const auto& warning : warnings) LogIfEnabled("Read Dumpfile: " + warning);
    return text;
}

bool clsDumpFile::ReadDumpFile() {
    try {
        LogIfEnabled("Read Dumpfile Path = " + DumpFilePath());
        const auto text = Load();
        if (!text) return false;
        const clsDumpCatalogue::KeySource get = [&](const std::string& section, const std::string& key) {
            auto value = text->Value(section, key);
            if (value) TrimInPlace(*value);
            return value;
        };
        std::string problem;
        clsSIFPacketItem packet;
        std::vector<clsSIFApplicationItem> items;
        RunProgress progress = progress_;
        const auto before = Snapshot(progress);
        const auto discName = get(kInfo, "Discname");
        const bool complete = discName && clsDumpCatalogue::ReadPacket(get, packet, problem) &&
                              clsDumpCatalogue::ReadApplications(get, items, problem) &&
                              RestoreRunState(get, progress, problem);
        if (!complete) {
            LogIfEnabled("Read Dumpfile: the file is incomplete or damaged (" +
                         (problem.empty() ? std::string("Info Discname missing") : problem) + "); the run starts afresh.");
            return false;
        }
        // The globals hold the file's values now; a refused disc puts them back.
        if (!AskForDisc(*discName)) {
            PutBack(before, progress);
            return false;
        }
        progress_ = std::move(progress);
        packet_ = std::move(packet);
        applications_.RemoveAllItem();
        for (auto& item : items) applications_.AddItem(std::move(item));
        ApplyLanguage();
        return true;
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsDumpFile Funktion ReadDumpFile: ") + e.what());
    }
    return false;
}

bool clsDumpFile::CheckDumpDisc() {
    try {
        clsIniFile dump;
        dump.SetFullPath(DumpFilePath());
        dump.SetSectionName(kInfo);
        return AskForDisc(dump.GetString("Discname", ""));
    } catch (const std::exception& e) {
        LogIfEnabled(std::string("Error in Modul clsDumpFile Funktion CheckDumpDisc: ") + e.what());
    }
    return false;
}

bool clsDumpFile::AskForDisc(const std::string& wanted) {
    // Cancel is the default button, so an unattended run gives up instead of asking forever.
    while (SourceDiscName() != wanted) {
        const std::string text = gLanguage ? gLanguage->LoadResString(TextNo::kResumeInsertDisc, {wanted}) : wanted;
        if (MsgBox(text, mb::kOkCancel | mb::kIconQuestion | mb::kDefaultButton2, ApplicationTitle) != mb::kIdOk) {
            LogIfEnabled("Read Dumpfile: the disc \"" + wanted + "\" was not inserted; the run starts afresh.");
            return false;
        }
    }
    return true;
}

} // namespace tovel
