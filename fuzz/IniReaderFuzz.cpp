// libFuzzer target for the INI reader: any bytes as a file, in one of four code pages (the
// first byte chooses, and picks the section the changes go to). Besides not crashing, the
// reader must keep what it promises:
//   - an unchanged file is written back byte for byte;
//   - every listed section is found, every key of its entries answers;
//   - a key that was set reads back, also after the written bytes are read again;
//   - a removed section or key is gone, also after the written bytes are read again.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "settings/clsIniText.h"

using tovel::clsIniText;

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

clsIniText Reread(const clsIniText& text, uint32_t codePage) {
    std::vector<std::string> warnings;
    return clsIniText::Parse(text.Bytes(), codePage, warnings);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const uint8_t control = data[0];
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    static constexpr uint32_t kCodePages[] = {1252, 932, 65001, 1250};
    const uint32_t codePage = kCodePages[control & 3];

    std::vector<std::string> warnings;
    const clsIniText text = clsIniText::Parse(bytes, codePage, warnings);
    Require(text.Bytes() == bytes);

    const auto names = text.SectionNames();
    for (size_t i = 0; i < names.size() && i < 32; ++i) {
        Require(text.HasSection(names[i]));
        for (const auto& entry : text.Entries(names[i])) {
            const auto value = text.Value(names[i], entry.key);
            if (value) (void)clsIniText::ProfileInt(*value);
        }
    }

    const std::string section = names.empty() ? std::string("Fuzz") : names[(control >> 2) % names.size()];
    const std::string value = "v=1 \"x\" \xC3\xA4";
    std::string error;
    clsIniText set = text;
    if (set.SetValue(section, "FuzzKey", value, error)) {
        // A code page without "ä" writes "?" for it, and reads that back.
        const auto written = set.Value(section, "fuzzkey");
        Require(written.has_value());
        const clsIniText again = Reread(set, codePage);
        Require(again.Value(section, "FUZZKEY") == written);
        Require(again.SectionNames() == set.SectionNames());
        Require(again.Entries(section) == set.Entries(section));
    } else {
        Require(!error.empty() || set.Bytes() == bytes);
    }

    clsIniText removed = text;
    if (removed.RemoveSection(section)) {
        Require(!removed.HasSection(section));
        Require(!Reread(removed, codePage).HasSection(section));
    }
    if (!names.empty()) {
        const auto entries = text.Entries(section);
        if (!entries.empty()) {
            const std::string key = entries[control % entries.size()].key;
            clsIniText withoutKey = text;
            if (withoutKey.RemoveKey(section, key)) {
                Require(!withoutKey.Value(section, key).has_value());
                Require(!Reread(withoutKey, codePage).Value(section, key).has_value());
            }
        }
    }
    return 0;
}
