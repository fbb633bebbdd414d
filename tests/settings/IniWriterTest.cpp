// The one-pass writer against clsIniText filled key by key: the same bytes, and the same
// keys refused, for ASCII, text of the code page, text it lacks, and what cannot read back.
#include <gtest/gtest.h>

#include <string>

#include "settings/clsIniText.h"
#include "settings/clsIniWriter.h"

namespace tovel {
namespace {

struct Put {
    const char* section;
    const char* key;
    const char* value;
    bool written;
};

TEST(IniWriter, GivesTheBytesAndRefusalsOfWritingKeyByKey) {
    const Put puts[] = {
        {"Info", "Plain", "C:\\Program Files\\x=y", true},
        {" Info ", " Padded ", "  kept blanks  ", true},
        {"INFO", "Umlaut", "Gr\xC3\xB6\xC3\x9F" "e \xE2\x82\xAC", true},   // in code page 1252
        {"Info", "Kanji", "\xE6\x97\xA5\xE6\x9C\xAC", true},               // written as "??"
        {"Info", "Break", "two\r\nlines", false},
        {"Info", "a=b", "x", false},
        {"Info", ";comment", "x", false},
        {"Info", "Bad", "\xFF\xFE", false},
        {"Info", "\xC3\x84nderung", "key name in the code page", true},
        {"Info", "\xE6\x97\xA5", "key name the code page lacks", false},
        {"", "NoSection", "x", false},
        {"Second", "Empty", "", true},
        {"Info", "Again", "a section closed before", false},
        {"Third", "Last", "end", true},
    };
    clsIniWriter writer(1252);
    clsIniText keyByKey(1252);
    for (const auto& put : puts) {
        std::string writerError, textError;
        const bool written = writer.Put(put.section, put.key, put.value, writerError);
        EXPECT_EQ(written, put.written) << put.key << ": " << writerError;
        // The writer refuses to reopen a section; the key-by-key text would reopen it.
        if (std::string(put.key) == "Again") continue;
        EXPECT_EQ(keyByKey.SetValue(put.section, put.key, put.value, textError), written) << put.key << ": " << textError;
    }
    EXPECT_EQ(writer.Bytes(), keyByKey.Bytes());
    EXPECT_NE(writer.Bytes().find("Kanji=??\r\n"), std::string::npos);
}

} // namespace
} // namespace tovel
