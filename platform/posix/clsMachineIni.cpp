#include "platform/posix/clsMachineIni.h"

#include <charconv>
#include <functional>
#include <sstream>

#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

std::string Trim(std::string_view s) {
    const size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string_view::npos) return {};
    const size_t e = s.find_last_not_of(" \t\r");
    return std::string(s.substr(b, e - b + 1));
}

template <typename T>
bool ParseNumber(const std::string& text, T& out) {
    const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), out);
    return ec == std::errc() && ptr == text.data() + text.size();
}

// One [System] key: how to read it from text and write it back.
struct SystemKey {
    const char* name;
    std::function<bool(MachineConfig&, const std::string&)> read;
    std::function<std::string(const MachineConfig&)> write;
};

SystemKey Text(const char* name, std::string MachineConfig::*field) {
    return {name, [field](MachineConfig& c, const std::string& v) { c.*field = v; return true; },
            [field](const MachineConfig& c) { return c.*field; }};
}

SystemKey VersionText(const char* name, std::string OsVersion::*field) {
    return {name, [field](MachineConfig& c, const std::string& v) { c.version.*field = v; return true; },
            [field](const MachineConfig& c) { return c.version.*field; }};
}

template <typename T>
SystemKey VersionNumber(const char* name, T OsVersion::*field) {
    return {name, [field](MachineConfig& c, const std::string& v) { return ParseNumber(v, c.version.*field); },
            [field](const MachineConfig& c) { return std::to_string(c.version.*field); }};
}

template <typename T>
SystemKey Number(const char* name, T MachineConfig::*field) {
    return {name, [field](MachineConfig& c, const std::string& v) { return ParseNumber(v, c.*field); },
            [field](const MachineConfig& c) { return std::to_string(c.*field); }};
}

SystemKey ScreenNumber(const char* name, int ScreenSize::*field) {
    return {name, [field](MachineConfig& c, const std::string& v) { return ParseNumber(v, c.screen.*field); },
            [field](const MachineConfig& c) { return std::to_string(c.screen.*field); }};
}

const std::vector<SystemKey>& SystemKeys() {
    static const std::vector<SystemKey> keys = {
        VersionText("ProductName", &OsVersion::productName),
        VersionNumber("MajorVersion", &OsVersion::major),
        VersionNumber("MinorVersion", &OsVersion::minor),
        VersionNumber("BuildNumber", &OsVersion::build),
        VersionNumber("PlatformId", &OsVersion::platformId),
        VersionText("CSDVersion", &OsVersion::csdVersion),
        VersionNumber("ServicePackMajor", &OsVersion::servicePackMajor),
        VersionNumber("ServicePackMinor", &OsVersion::servicePackMinor),
        VersionNumber("SuiteMask", &OsVersion::suiteMask),
        VersionNumber("ProductType", &OsVersion::productType),
        Number("UserLanguage", &MachineConfig::userLanguage),
        Number("AnsiCodePage", &MachineConfig::ansiCodePage),
        {"Administrator",
         [](MachineConfig& c, const std::string& v) {
             if (v != "0" && v != "1") return false;
             c.administrator = v == "1";
             return true;
         },
         [](const MachineConfig& c) { return std::string(c.administrator ? "1" : "0"); }},
        ScreenNumber("ScreenWidth", &ScreenSize::width),
        ScreenNumber("ScreenHeight", &ScreenSize::height),
        Text("WindowsFolder", &MachineConfig::windowsFolder),
        Text("SystemFolder", &MachineConfig::systemFolder),
        Text("TempFolder", &MachineConfig::tempFolder),
        Text("LongDateFormat", &MachineConfig::longDateFormat),
        Text("TimeFormat", &MachineConfig::timeFormat),
        {"Power",
         [](MachineConfig& c, const std::string& v) {
             if (v != "on" && v != "off") return false;
             c.powerState = v;
             return true;
         },
         [](const MachineConfig& c) { return c.powerState; }},
    };
    return keys;
}

const std::pair<const char*, DriveType> kDriveTypes[] = {
    {"fixed", DriveType::Fixed},     {"cdrom", DriveType::CdRom},     {"removable", DriveType::Removable},
    {"network", DriveType::Remote},  {"ramdisk", DriveType::RamDisk},
};

std::vector<std::string> SplitList(const std::string& text, char separator) {
    std::vector<std::string> out;
    std::stringstream in(text);
    std::string item;
    while (std::getline(in, item, separator)) {
        item = Trim(item);
        if (!item.empty()) out.push_back(item);
    }
    return out;
}

// Reads one "key=value" line of a section into the configuration; an error text if it does not fit.
std::string ReadEntry(const std::string& section, const std::string& key, const std::string& value,
                      MachineConfig& c) {
    if (section == "SYSTEM") {
        for (const auto& k : SystemKeys()) {
            if (!clsWindowsPath::EqualNoCase(k.name, key)) continue;
            return k.read(c, value) ? std::string() : "bad value for " + key + ": \"" + value + "\"";
        }
        return "unknown key " + key + " in [System]";
    }
    if (section == "FONTS") {
        if (!clsWindowsPath::EqualNoCase(key, "Fonts")) return "unknown key " + key + " in [Fonts]";
        c.fonts = SplitList(value, ';');
        return {};
    }
    if (section == "ENVIRONMENT") {
        c.environment.emplace_back(key, value);
        return {};
    }
    if (section == "ASSOCIATIONS") {
        if (key.empty() || key[0] != '.') return "an association needs an extension like .txt, not " + key;
        c.associations.emplace_back(key, value);
        return {};
    }
    if (section == "SHARES") {
        if (!clsWindowsPath::IsUnc(key)) return "a share must be named \\\\server\\share, not " + key;
        c.shares.push_back({key, value});
        return {};
    }
    const char letter = key.size() == 1 ? clsWindowsPath::DriveLetter(key + ":") : 0;
    if (letter == 0) return "a drive must be a letter A..Z, not " + key;
    if (section == "FREESPACE") {
        uint64_t bytes = 0;
        if (!ParseNumber(value, bytes)) return "bad number of free bytes: \"" + value + "\"";
        for (auto& d : c.drives) {
            if (d.letter != letter) continue;
            d.freeBytes = bytes;
            return {};
        }
        return "free space for drive " + key + ", which [Drives] does not name";
    }
    const size_t comma = value.find(',');
    const std::string type = Trim(value.substr(0, comma));
    for (const auto& [name, driveType] : kDriveTypes) {
        if (type != name) continue;
        if (comma == std::string::npos || Trim(value.substr(comma + 1)).empty()) return "drive " + key + " needs a host folder";
        for (const auto& d : c.drives) {
            if (d.letter == letter) return "drive " + key + " is given twice";
        }
        c.drives.push_back({letter, driveType, Trim(value.substr(comma + 1)), std::nullopt});
        return {};
    }
    return "unknown drive type \"" + type + "\" (fixed, cdrom, removable, network, ramdisk)";
}

const char* const kSections[] = {"SYSTEM", "FONTS", "ENVIRONMENT", "DRIVES", "FREESPACE", "SHARES", "ASSOCIATIONS"};

} // namespace

std::string clsMachineIni::DriveTypeName(DriveType type) {
    for (const auto& [name, driveType] : kDriveTypes) {
        if (driveType == type) return name;
    }
    return {};
}

bool clsMachineIni::Parse(const std::string& text, const std::string& file, MachineConfig& config,
                          std::string& error) {
    MachineConfig c;
    c.drives.clear();
    std::string section;
    std::istringstream in(text);
    std::string raw;
    int lineNo = 0;
    auto fail = [&](const std::string& what) {
        error = file + ":" + std::to_string(lineNo) + ": " + what;
        return false;
    };
    while (std::getline(in, raw)) {
        ++lineNo;
        const std::string line = Trim(raw);
        if (line.empty() || line[0] == ';') continue;
        if (line.front() == '[') {
            if (line.back() != ']') return fail("a section line must end with ]");
            section = clsWindowsPath::FoldCase(Trim(line.substr(1, line.size() - 2)));
            bool known = false;
            for (const char* s : kSections) known = known || section == s;
            if (!known) return fail("unknown section [" + line.substr(1, line.size() - 2) + "]");
            continue;
        }
        const size_t eq = line.find('=');
        if (eq == std::string::npos) return fail("expected Key=Value, found \"" + line + "\"");
        if (section.empty()) return fail("a value before the first section");
        const std::string problem = ReadEntry(section, Trim(line.substr(0, eq)), Trim(line.substr(eq + 1)), c);
        if (!problem.empty()) return fail(problem);
    }
    if (c.drives.empty()) {
        lineNo = 0;
        return fail("no drive in [Drives]; at least C=fixed,drive_c is needed");
    }
    config = std::move(c);
    return true;
}

std::string clsMachineIni::Write(const MachineConfig& c) {
    std::ostringstream out;
    out << "; An emulated Windows machine for the Linux build of TovelSetup.\n"
           "; Drives: X=fixed|cdrom|removable|network|ramdisk,host folder (relative to this folder or absolute)\n\n"
           "[System]\n";
    for (const auto& k : SystemKeys()) out << k.name << '=' << k.write(c) << '\n';
    out << "\n[Fonts]\nFonts=";
    for (size_t i = 0; i < c.fonts.size(); ++i) out << (i ? ";" : "") << c.fonts[i];
    out << "\n\n[Environment]\n";
    for (const auto& [name, value] : c.environment) out << name << '=' << value << '\n';
    out << "\n[Drives]\n";
    for (const auto& d : c.drives) out << d.letter << '=' << DriveTypeName(d.type) << ',' << d.hostFolder << '\n';
    out << "\n[FreeSpace]\n";
    for (const auto& d : c.drives) {
        if (d.freeBytes) out << d.letter << '=' << *d.freeBytes << '\n';
    }
    out << "\n[Shares]\n";
    for (const auto& s : c.shares) out << s.unc << '=' << s.hostFolder << '\n';
    out << "\n[Associations]\n";
    for (const auto& [ext, program] : c.associations) out << ext << '=' << program << '\n';
    return out.str();
}

} // namespace tovel
