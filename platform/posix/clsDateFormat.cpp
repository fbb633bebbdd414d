#include "platform/posix/clsDateFormat.h"

#include <array>

namespace tovel {

namespace {

struct Names {
    uint16_t language;
    std::array<const char*, 7> days;
    std::array<const char*, 12> months;
};

const Names kNames[] = {
    {1031,
     {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"},
     {"Januar", "Februar", "M\xC3\xA4rz", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober", "November",
      "Dezember"}},
    {2057,
     {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
     {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
      "December"}},
    {1036,
     {"dimanche", "lundi", "mardi", "mercredi", "jeudi", "vendredi", "samedi"},
     {"janvier", "f\xC3\xA9vrier", "mars", "avril", "mai", "juin", "juillet", "ao\xC3\xBBt", "septembre", "octobre",
      "novembre", "d\xC3\xA9" "cembre"}},
    {3082,
     {"domingo", "lunes", "martes", "mi\xC3\xA9rcoles", "jueves", "viernes", "s\xC3\xA1" "bado"},
     {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre", "octubre", "noviembre",
      "diciembre"}},
    {1040,
     {"domenica", "luned\xC3\xAC", "marted\xC3\xAC", "mercoled\xC3\xAC", "gioved\xC3\xAC", "venerd\xC3\xAC", "sabato"},
     {"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre", "ottobre",
      "novembre", "dicembre"}},
    {1041,
     {"\xE6\x97\xA5\xE6\x9B\x9C\xE6\x97\xA5", "\xE6\x9C\x88\xE6\x9B\x9C\xE6\x97\xA5", "\xE7\x81\xAB\xE6\x9B\x9C\xE6\x97\xA5",
      "\xE6\xB0\xB4\xE6\x9B\x9C\xE6\x97\xA5", "\xE6\x9C\xA8\xE6\x9B\x9C\xE6\x97\xA5", "\xE9\x87\x91\xE6\x9B\x9C\xE6\x97\xA5",
      "\xE5\x9C\x9F\xE6\x9B\x9C\xE6\x97\xA5"},
     {"1\xE6\x9C\x88", "2\xE6\x9C\x88", "3\xE6\x9C\x88", "4\xE6\x9C\x88", "5\xE6\x9C\x88", "6\xE6\x9C\x88",
      "7\xE6\x9C\x88", "8\xE6\x9C\x88", "9\xE6\x9C\x88", "10\xE6\x9C\x88", "11\xE6\x9C\x88", "12\xE6\x9C\x88"}},
};

const Names& NamesOf(uint16_t language) {
    for (const auto& n : kNames) {
        if (n.language == language) return n;
    }
    return kNames[1];
}

// The first three characters (UTF-8 aware) of a name: the short form Windows shows.
std::string Short(const std::string& name) {
    size_t i = 0;
    for (int chars = 0; i < name.size() && chars < 3; ++chars) {
        ++i;
        while (i < name.size() && (static_cast<unsigned char>(name[i]) & 0xC0) == 0x80) ++i;
    }
    return name.substr(0, i);
}

std::string Number(int value, size_t width) {
    const std::string digits = std::to_string(value);
    return digits.size() >= width ? digits : std::string(width - digits.size(), '0') + digits;
}

} // namespace

std::string clsDateFormat::Format(const std::string& picture, const LocalTime& t, uint16_t language) {
    const Names& names = NamesOf(language);
    std::string out;
    for (size_t i = 0; i < picture.size();) {
        const char c = picture[i];
        if (c == '\'') {
            const size_t close = picture.find('\'', i + 1);
            if (close == i + 1) out += '\'';
            out += picture.substr(i + 1, (close == std::string::npos ? picture.size() : close) - i - 1);
            i = close == std::string::npos ? picture.size() : close + 1;
            continue;
        }
        size_t run = 1;
        while (i + run < picture.size() && picture[i + run] == c) ++run;
        i += run;
        const int hour12 = t.hour % 12 == 0 ? 12 : t.hour % 12;
        switch (c) {
        case 'd':
            out += run >= 4 ? names.days[t.dayOfWeek % 7] : run == 3 ? Short(names.days[t.dayOfWeek % 7]) : Number(t.day, run);
            break;
        case 'M':
            out += run >= 4 ? names.months[(t.month + 11) % 12]
                   : run == 3 ? Short(names.months[(t.month + 11) % 12]) : Number(t.month, run);
            break;
        case 'y': out += run <= 2 ? Number(t.year % 100, run) : Number(t.year, 4); break;
        case 'H': out += Number(t.hour, run > 2 ? 2 : run); break;
        case 'h': out += Number(hour12, run > 2 ? 2 : run); break;
        case 'm': out += Number(t.minute, run > 2 ? 2 : run); break;
        case 's': out += Number(t.second, run > 2 ? 2 : run); break;
        case 't': out += run == 1 ? (t.hour < 12 ? "A" : "P") : (t.hour < 12 ? "AM" : "PM"); break;
        default: out.append(run, c);
        }
    }
    return out;
}

} // namespace tovel
