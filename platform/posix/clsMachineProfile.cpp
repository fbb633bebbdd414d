#include "platform/posix/clsMachineProfile.h"

#include <charconv>

namespace tovel {

namespace {

struct SystemProfile {
    const char* name;
    OsVersion version;
    const char* windowsFolder;
    const char* systemFolder;
    const char* tempFolder;
    const char* versionText;  // "4.10.2222" as Windows 9x keeps it; unused on NT
};

const SystemProfile kSystems[] = {
    {"win95", {4, 0, 67109814, 1, "", 0, 0, 0, 0, "Microsoft Windows 95"},
     "C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM", "C:\\WINDOWS\\TEMP", "4.00.950"},
    {"win98", {4, 10, 67766446, 1, " A ", 0, 0, 0, 0, "Microsoft Windows 98"},
     "C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM", "C:\\WINDOWS\\TEMP", "4.10.2222"},
    {"winme", {4, 90, 73010104, 1, " ", 0, 0, 0, 0, "Microsoft Windows ME"},
     "C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM", "C:\\WINDOWS\\TEMP", "4.90.3000"},
    {"nt4", {4, 0, 1381, 2, "Service Pack 6", 6, 0, 0x100, 1, "Microsoft Windows NT Workstation"},
     "C:\\WINNT", "C:\\WINNT\\system32", "C:\\TEMP", ""},
    {"win2000", {5, 0, 2195, 2, "Service Pack 4", 4, 0, 0x100, 1, "Microsoft Windows 2000"},
     "C:\\WINNT", "C:\\WINNT\\system32", "C:\\WINNT\\TEMP", ""},
    {"xphome", {5, 1, 2600, 2, "Service Pack 2", 2, 0, 0x300, 1, "Microsoft Windows XP"},
     "C:\\WINDOWS", "C:\\WINDOWS\\system32", "C:\\WINDOWS\\TEMP", ""},
    {"xppro", {5, 1, 2600, 2, "Service Pack 2", 2, 0, 0x100, 1, "Microsoft Windows XP"},
     "C:\\WINDOWS", "C:\\WINDOWS\\system32", "C:\\WINDOWS\\TEMP", ""},
    {"win2003", {5, 2, 3790, 2, "Service Pack 1", 1, 0, 0x110, 3, "Microsoft Windows Server 2003"},
     "C:\\WINDOWS", "C:\\WINDOWS\\system32", "C:\\WINDOWS\\TEMP", ""},
};

struct LanguageProfile {
    const char* name;
    uint16_t id;
    uint32_t ansiCodePage;
    const char* programFiles;
    const char* commonFiles;
    const char* longDate;
    const char* time;
};

const LanguageProfile kLanguages[] = {
    {"de", 1031, 1252, "Programme", "Gemeinsame Dateien", "dddd, d. MMMM yyyy", "HH:mm:ss"},
    {"en", 2057, 1252, "Program Files", "Common Files", "dd MMMM yyyy", "HH:mm:ss"},
    {"fr", 1036, 1252, "Program Files", "Fichiers communs", "dddd d MMMM yyyy", "HH:mm:ss"},
    {"es", 3082, 1252, "Archivos de programa", "Archivos comunes", "dddd, d' de 'MMMM' de 'yyyy", "H:mm:ss"},
    {"it", 1040, 1252, "Programmi", "File comuni", "dddd d MMMM yyyy", "H.mm.ss"},
    {"ja", 1041, 932, "Program Files", "Common Files", "yyyy'\xE5\xB9\xB4'M'\xE6\x9C\x88'd'\xE6\x97\xA5'", "H:mm:ss"},
};

const SystemProfile* FindSystem(const std::string& name) {
    for (const auto& s : kSystems) {
        if (name == s.name) return &s;
    }
    return nullptr;
}

const LanguageProfile* FindLanguage(const std::string& name) {
    unsigned id = 0;
    std::from_chars(name.data(), name.data() + name.size(), id);
    for (const auto& l : kLanguages) {
        if (name == l.name || id == l.id) return &l;
    }
    return nullptr;
}

const LanguageProfile& LanguageOf(const MachineConfig& config) {
    for (const auto& l : kLanguages) {
        if (l.id == config.userLanguage) return l;
    }
    return kLanguages[1];
}

std::vector<std::string> FontsFor(const LanguageProfile& language) {
    std::vector<std::string> fonts = {"Arial", "Courier New", "MS Sans Serif", "Tahoma", "Times New Roman", "Verdana"};
    if (language.ansiCodePage == 932) {
        for (const char* f : {"MS Gothic", "MS PGothic", "MS UI Gothic", "MS Mincho"}) fonts.emplace_back(f);
    }
    return fonts;
}

bool SetString(clsPlatformRegistry& r, RegRoot root, const std::string& key, const std::string& name,
               const std::string& value) {
    return r.SetValue(root, key, name, clsRegValue::String(value));
}

char HexDigit(unsigned v) { return "0123456789ABCDEF"[v & 15]; }

} // namespace

MachineConfig clsMachineProfile::Default() { return *Make("xppro", "en"); }

std::optional<MachineConfig> clsMachineProfile::Make(const std::string& system, const std::string& language) {
    const SystemProfile* s = FindSystem(system);
    const LanguageProfile* l = FindLanguage(language);
    if (s == nullptr || l == nullptr) return std::nullopt;
    MachineConfig c;
    c.version = s->version;
    c.userLanguage = l->id;
    c.ansiCodePage = l->ansiCodePage;
    c.windowsFolder = s->windowsFolder;
    c.systemFolder = s->systemFolder;
    c.tempFolder = s->tempFolder;
    c.longDateFormat = l->longDate;
    c.timeFormat = l->time;
    c.fonts = FontsFor(*l);
    const std::string programFiles = std::string("C:\\") + l->programFiles;
    c.environment = {{"windir", c.windowsFolder}, {"TEMP", c.tempFolder}, {"TMP", c.tempFolder},
                     {"PATH", c.systemFolder + ";" + c.windowsFolder}};
    if (c.version.platformId == 2) {
        c.environment.emplace_back("SystemRoot", c.windowsFolder);
        c.environment.emplace_back("ProgramFiles", programFiles);
        c.environment.emplace_back("ComSpec", c.systemFolder + "\\cmd.exe");
    } else {
        c.environment.emplace_back("COMSPEC", c.windowsFolder + "\\COMMAND.COM");
    }
    c.associations = {{".txt", c.windowsFolder + "\\notepad.exe"}, {".ini", c.windowsFolder + "\\notepad.exe"}};
    c.drives = {{'A', DriveType::Removable, "drive_a", std::nullopt},
                {'C', DriveType::Fixed, "drive_c", std::nullopt}};
    return c;
}

std::vector<std::string> clsMachineProfile::SystemNames() {
    std::vector<std::string> out;
    for (const auto& s : kSystems) out.emplace_back(s.name);
    return out;
}

std::vector<std::string> clsMachineProfile::LanguageNames() {
    std::vector<std::string> out;
    for (const auto& l : kLanguages) out.emplace_back(l.name);
    return out;
}

std::string clsMachineProfile::ProgramFilesFolder(const MachineConfig& config) {
    return std::string("C:\\") + LanguageOf(config).programFiles;
}

std::vector<std::string> clsMachineProfile::FoldersToCreate(const MachineConfig& config) {
    const std::string programFiles = ProgramFilesFolder(config);
    return {config.windowsFolder, config.systemFolder, config.tempFolder, programFiles,
            programFiles + "\\" + LanguageOf(config).commonFiles};
}

bool clsMachineProfile::SeedRegistry(clsPlatformRegistry& r, const MachineConfig& c) {
    const LanguageProfile& l = LanguageOf(c);
    const std::string windows = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
    const std::string programFiles = ProgramFilesFolder(c);
    const RegRoot hklm = RegRoot::LocalMachine;
    bool ok = SetString(r, hklm, windows, "ProgramFilesDir", programFiles) &&
              SetString(r, hklm, windows, "CommonFilesDir", programFiles + "\\" + l.commonFiles) &&
              r.CreateKey(hklm, windows + "\\RunOnce") && r.CreateKey(hklm, windows + "\\Run") &&
              r.CreateKey(hklm, windows + "\\Uninstall") && r.CreateKey(RegRoot::CurrentUser, "Software");
    const std::string owner = "Setup Tester";
    const std::string organisation = "Tovel Test Lab";
    if (c.version.platformId == 2) {
        const std::string nt = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
        ok = ok && SetString(r, hklm, nt, "ProductName", c.version.productName) &&
             SetString(r, hklm, nt, "CurrentVersion", std::to_string(c.version.major) + "." + std::to_string(c.version.minor)) &&
             SetString(r, hklm, nt, "CurrentBuildNumber", std::to_string(c.version.build)) &&
             SetString(r, hklm, nt, "CSDVersion", c.version.csdVersion) &&
             SetString(r, hklm, nt, "RegisteredOwner", owner) &&
             SetString(r, hklm, nt, "RegisteredOrganization", organisation) &&
             SetString(r, hklm, nt, "SystemRoot", c.windowsFolder) &&
             r.CreateKey(hklm, "SYSTEM\\CurrentControlSet\\Control\\Session Manager");
    } else {
        const SystemProfile* s = nullptr;
        for (const auto& candidate : kSystems) {
            if (candidate.version.build == c.version.build) s = &candidate;
        }
        ok = ok && SetString(r, hklm, windows, "ProductName", c.version.productName) &&
             SetString(r, hklm, windows, "VersionNumber", s != nullptr ? s->versionText : "") &&
             SetString(r, hklm, windows, "RegisteredOwner", owner) &&
             SetString(r, hklm, windows, "RegisteredOrganization", organisation) &&
             SetString(r, hklm, windows, "SystemRoot", c.windowsFolder);
    }
    std::string locale = "0000";
    for (int shift = 12; shift >= 0; shift -= 4) locale += HexDigit(static_cast<unsigned>(l.id >> shift));
    return ok && SetString(r, RegRoot::CurrentUser, "Control Panel\\International", "Locale", locale);
}

} // namespace tovel
