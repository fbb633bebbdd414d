// What every registry must do, emulated or real: the same tests run on an emulated machine
// and, in the Windows build, against the registry of Wine.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/TestBed.h"

namespace tovel {
namespace {

constexpr RegRoot kUser = RegRoot::CurrentUser;

std::vector<std::string> Sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

TEST(RegistryContract, CreatesNestedKeys) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string base = bed->registryKey + "\\Nest";
    const std::string deepest = base + "\\One\\Two\\Three";

    EXPECT_FALSE(reg.KeyExists(kUser, deepest));
    ASSERT_TRUE(reg.CreateKey(kUser, deepest));
    EXPECT_TRUE(reg.KeyExists(kUser, base + "\\One"));
    EXPECT_TRUE(reg.KeyExists(kUser, base + "\\One\\Two"));
    EXPECT_TRUE(reg.KeyExists(kUser, deepest));
    EXPECT_TRUE(reg.CreateKey(kUser, deepest)) << "creating an existing key succeeds";

    EXPECT_EQ(reg.EnumKeys(kUser, base), std::vector<std::string>{"One"});
    const auto leaf = reg.EnumKeys(kUser, deepest);
    ASSERT_TRUE(leaf.has_value());
    EXPECT_TRUE(leaf->empty());
    const auto noValues = reg.EnumValues(kUser, deepest);
    ASSERT_TRUE(noValues.has_value());
    EXPECT_TRUE(noValues->empty());

    // A key that is missing cannot be opened for anything.
    const std::string missing = base + "\\Missing";
    EXPECT_FALSE(reg.KeyExists(kUser, missing));
    EXPECT_FALSE(reg.EnumKeys(kUser, missing).has_value());
    EXPECT_FALSE(reg.EnumValues(kUser, missing).has_value());
    EXPECT_FALSE(reg.QueryValue(kUser, missing, "x").has_value());
    EXPECT_FALSE(reg.QueryValue(kUser, missing, "").has_value());
    EXPECT_FALSE(reg.DeleteValue(kUser, missing, "x"));
    EXPECT_FALSE(reg.DeleteKey(kUser, missing));
    EXPECT_FALSE(reg.KeyExists(kUser, missing)) << "reading must not create the key";
}

TEST(RegistryContract, StoresEveryType) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string key = bed->registryKey + "\\Types";

    const std::string binary("\x00\x01\x7f\x80\xfe\xff\x00", 7);
    const std::vector<std::pair<std::string, clsRegValue>> values = {
        {"", clsRegValue::String("the default")},
        {"Sz", clsRegValue::String("C:\\Program Files\\Tovel \"quoted\"")},
        {"EmptySz", clsRegValue::String("")},
        {"ExpandSz", clsRegValue::ExpandString("%SystemRoot%\\system32;%PATH%")},
        {"Binary", clsRegValue::Binary(binary)},
        {"EmptyBinary", clsRegValue::Binary("")},
        {"Dword", clsRegValue::Dword(0xDEADBEEF)},
        {"DwordZero", clsRegValue::Dword(0)},
        {"MultiSz", clsRegValue::MultiString({"first", "second value", "third\\x"})},
        {"Qword", clsRegValue::Raw(11, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8))},
    };
    for (const auto& [name, value] : values) ASSERT_TRUE(reg.SetValue(kUser, key, name, value)) << name;
    for (const auto& [name, value] : values) {
        const auto read = reg.QueryValue(kUser, key, name);
        ASSERT_TRUE(read.has_value()) << name;
        EXPECT_EQ(*read, value) << "value \"" << name << "\"";
    }
    // The expandable string is handed back as stored, not expanded.
    EXPECT_EQ(reg.QueryValue(kUser, key, "ExpandSz")->text, "%SystemRoot%\\system32;%PATH%");
    EXPECT_EQ(reg.QueryValue(kUser, key, "MultiSz")->strings.size(), 3u);

    std::vector<std::string> expectedNames;
    for (const auto& entry : values) expectedNames.push_back(entry.first);
    EXPECT_EQ(Sorted(*reg.EnumValues(kUser, key)), Sorted(expectedNames)) << "the default value is enumerated too";

    EXPECT_FALSE(reg.QueryValue(kUser, key, "NoSuchValue").has_value());
    ASSERT_TRUE(reg.CreateKey(kUser, key + "\\Bare"));
    EXPECT_FALSE(reg.QueryValue(kUser, key + "\\Bare", "").has_value()) << "a new key has no default value";
}

TEST(RegistryContract, NamesIgnoreCaseButKeepIt) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string base = bed->registryKey + "\\Case";

    ASSERT_TRUE(reg.CreateKey(kUser, base + "\\MixedCase"));
    EXPECT_TRUE(reg.KeyExists(kUser, base + "\\MIXEDCASE"));
    EXPECT_TRUE(reg.KeyExists(kUser, bed->registryKey + "\\case\\mixedcase"));
    ASSERT_TRUE(reg.CreateKey(kUser, base + "\\mixedCASE"));
    EXPECT_EQ(reg.EnumKeys(kUser, base), std::vector<std::string>{"MixedCase"}) << "the first spelling stays";

    ASSERT_TRUE(reg.SetValue(kUser, base + "\\MIXEDCASE", "ValueName", clsRegValue::String("one")));
    ASSERT_TRUE(reg.SetValue(kUser, base + "\\mixedcase", "VALUENAME", clsRegValue::String("two")));
    EXPECT_EQ(reg.EnumValues(kUser, base + "\\MixedCase"), std::vector<std::string>{"ValueName"});
    EXPECT_EQ(reg.QueryValue(kUser, base + "\\MixedCase", "valuename"), clsRegValue::String("two"));

    // Letters beyond ASCII fold as well.
    ASSERT_TRUE(reg.CreateKey(kUser, base + "\\\xC3\x84pfel"));       // Äpfel
    EXPECT_TRUE(reg.KeyExists(kUser, base + "\\\xC3\xA4PFEL"));      // äPFEL
    ASSERT_TRUE(reg.SetValue(kUser, base, "\xC3\x96l", clsRegValue::Dword(1)));  // Öl
    EXPECT_TRUE(reg.QueryValue(kUser, base, "\xC3\xB6L").has_value());          // öL

    // Deleting by another spelling deletes the one value and the one key.
    EXPECT_TRUE(reg.DeleteValue(kUser, base + "\\MIXEDcase", "valueNAME"));
    EXPECT_TRUE(reg.DeleteKey(kUser, base + "\\MIXEDCASE"));
    EXPECT_FALSE(reg.KeyExists(kUser, base + "\\MixedCase"));
}

TEST(RegistryContract, EnumeratesKeysInOrderAndLargeValues) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string base = bed->registryKey + "\\Enum";

    for (const char* name : {"Cherry", "apple", "Banana", "date"}) {
        ASSERT_TRUE(reg.CreateKey(kUser, base + "\\" + name));
    }
    EXPECT_EQ(reg.EnumKeys(kUser, base), (std::vector<std::string>{"apple", "Banana", "Cherry", "date"}));

    // Larger than any first buffer an implementation might try.
    std::string big(8192, '\0');
    for (size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 7 + 3);
    std::string bigText;
    while (bigText.size() < 8192) bigText += "0123456789abcdefghijklmnopqrstuvwxyz ";
    std::string longName;
    for (int i = 0; longName.size() < 200; ++i) longName += static_cast<char>('a' + i % 26);

    ASSERT_TRUE(reg.SetValue(kUser, base, "small", clsRegValue::Dword(7)));
    ASSERT_TRUE(reg.SetValue(kUser, base, "bigBinary", clsRegValue::Binary(big)));
    ASSERT_TRUE(reg.SetValue(kUser, base, "bigText", clsRegValue::String(bigText)));
    ASSERT_TRUE(reg.SetValue(kUser, base, longName, clsRegValue::String("long name")));

    EXPECT_EQ(Sorted(*reg.EnumValues(kUser, base)), Sorted({"small", "bigBinary", "bigText", longName}));
    EXPECT_EQ(reg.QueryValue(kUser, base, "bigBinary"), clsRegValue::Binary(big));
    EXPECT_EQ(reg.QueryValue(kUser, base, "bigText"), clsRegValue::String(bigText));
    EXPECT_EQ(reg.QueryValue(kUser, base, longName), clsRegValue::String("long name"));
}

TEST(RegistryContract, ReplacesAndDeletes) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string parent = bed->registryKey + "\\Del";
    const std::string child = parent + "\\Child";

    ASSERT_TRUE(reg.SetValue(kUser, parent, "v", clsRegValue::String("first")));
    ASSERT_TRUE(reg.SetValue(kUser, parent, "keep", clsRegValue::Dword(1)));
    ASSERT_TRUE(reg.SetValue(kUser, parent, "v", clsRegValue::Dword(2))) << "a value may change its type";
    EXPECT_EQ(reg.QueryValue(kUser, parent, "v"), clsRegValue::Dword(2));
    EXPECT_EQ(Sorted(*reg.EnumValues(kUser, parent)), (std::vector<std::string>{"keep", "v"}));

    EXPECT_TRUE(reg.DeleteValue(kUser, parent, "v"));
    EXPECT_FALSE(reg.QueryValue(kUser, parent, "v").has_value());
    EXPECT_FALSE(reg.DeleteValue(kUser, parent, "v")) << "already gone";
    EXPECT_EQ(reg.EnumValues(kUser, parent), std::vector<std::string>{"keep"});

    ASSERT_TRUE(reg.CreateKey(kUser, child));
    EXPECT_FALSE(reg.DeleteKey(kUser, parent)) << "a key with subkeys stays";
    EXPECT_TRUE(reg.KeyExists(kUser, child));
    EXPECT_TRUE(reg.DeleteKey(kUser, child));
    EXPECT_FALSE(reg.DeleteKey(kUser, child));
    EXPECT_TRUE(reg.DeleteKey(kUser, parent)) << "values do not keep a key";
    EXPECT_FALSE(reg.KeyExists(kUser, parent));
    EXPECT_FALSE(reg.QueryValue(kUser, parent, "keep").has_value());
}

TEST(RegistryContract, KeepsUtf8Text) {
    auto bed = test::MakeTestBed();
    clsPlatformRegistry& reg = bed->platform->Registry();
    const std::string key = bed->registryKey + "\\Schl\xC3\xBCssel";  // Schlüssel
    const std::string greeting = "Gr\xC3\xBC\xC3\x9F" "e";              // Grüße
    const std::string name = "Gr\xC3\xB6\xC3\x9F" "e";                  // Größe

    ASSERT_TRUE(reg.SetValue(kUser, key, name, clsRegValue::String(greeting)));
    ASSERT_TRUE(reg.SetValue(kUser, key, "Expand", clsRegValue::ExpandString("%TEMP%\\" + greeting)));
    ASSERT_TRUE(reg.SetValue(kUser, key, "Multi", clsRegValue::MultiString({greeting, "\xC3\x84", "plain"})));

    EXPECT_EQ(reg.QueryValue(kUser, key, name), clsRegValue::String(greeting));
    EXPECT_EQ(reg.QueryValue(kUser, key, "Expand"), clsRegValue::ExpandString("%TEMP%\\" + greeting));
    EXPECT_EQ(reg.QueryValue(kUser, key, "Multi"), clsRegValue::MultiString({greeting, "\xC3\x84", "plain"}));
    EXPECT_EQ(Sorted(*reg.EnumValues(kUser, key)), Sorted({name, "Expand", "Multi"}));
    EXPECT_EQ(reg.EnumKeys(kUser, bed->registryKey), std::vector<std::string>{"Schl\xC3\xBCssel"});
}

} // namespace
} // namespace tovel
