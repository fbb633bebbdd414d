// The registry as text: path splitting, value texts of each type, writing texts back, and
// every failure giving an empty answer. Runs on the emulated machine and on Wine's registry.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "settings/clsRegistry.h"
#include "tests/support/BedFixture.h"

namespace tovel {
namespace {

constexpr RegRoot kUser = RegRoot::CurrentUser;

class Registry : public test::BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        clsRegistry::SetReporter([this](const std::string& message) { reports_.push_back(message); });
    }
    void TearDown() override {
        clsRegistry::SetReporter(nullptr);
        BedFixture::TearDown();
    }

    clsPlatformRegistry& Raw() { return Platform().Registry(); }
    std::string FullPath(const std::string& below = "") const {
        return "HKEY_CURRENT_USER\\" + bed_->registryKey + (below.empty() ? "" : "\\" + below);
    }
    clsRegistry At(const std::string& below) const { return clsRegistry(kUser, bed_->registryKey + "\\" + below); }

    std::vector<std::string> reports_;
};

TEST_F(Registry, SplitsFullPathsAtAKnownRootOnly) {
    clsRegistry reg;
    ASSERT_TRUE(reg.InitWithRegPath("\\HKEY_CURRENT_USER\\Software\\X\\"));
    EXPECT_EQ(reg.RootKey(), kUser);
    EXPECT_EQ(reg.KeyPath(), "Software\\X");
    EXPECT_TRUE(clsRegistry::ExistRootKeyInPath("\\HKEY_CURRENT_USER\\Software\\X\\"));
    EXPECT_EQ(clsRegistry::GetRootKey("HKEY_LOCAL_MACHINE\\SOFTWARE"), RegRoot::LocalMachine);
    EXPECT_EQ(clsRegistry::GetRootKey("hkey_users\\.DEFAULT"), RegRoot::Users);
    EXPECT_EQ(clsRegistry::GetOnlyRegistryPath("HKEY_USERS\\.DEFAULT\\Control Panel"), ".DEFAULT\\Control Panel");
    EXPECT_EQ(clsRegistry::GetOnlyRegistryPath("HKEY_LOCAL_MACHINE\\"), "");
    EXPECT_EQ(clsRegistry::GetRootKey("HKEY_LOCAL_MACHINE"), RegRoot::LocalMachine);

    // A root name inside the key path is part of it, not the root.
    ASSERT_TRUE(reg.InitWithRegPath("HKEY_CURRENT_USER\\Software\\HKEY_LOCAL_MACHINE\\x"));
    EXPECT_EQ(reg.RootKey(), kUser);
    EXPECT_EQ(reg.KeyPath(), "Software\\HKEY_LOCAL_MACHINE\\x");

    // Something before the root: the root is found, but the path does not begin with it.
    EXPECT_FALSE(clsRegistry::ExistRootKeyInPath("Computer\\HKEY_USERS\\.DEFAULT"));
    EXPECT_EQ(clsRegistry::GetRootKey("Computer\\HKEY_USERS\\.DEFAULT"), RegRoot::Users);
    EXPECT_EQ(clsRegistry::GetOnlyRegistryPath("Computer\\HKEY_USERS\\.DEFAULT"), ".DEFAULT");

    // Unknown roots: nothing recognised, the object keeps its key, and the caller learns why.
    for (const std::string path : {"HKEY_CLASSES_ROOT\\.txt", "Software\\HKEY_CURRENT_USERS\\x", "HKEY_USERSX\\a",
                                   "HKLM\\SOFTWARE", ""}) {
        EXPECT_FALSE(clsRegistry::ExistRootKeyInPath(path)) << path;
        EXPECT_FALSE(clsRegistry::GetRootKey(path).has_value()) << path;
        EXPECT_EQ(clsRegistry::GetOnlyRegistryPath(path), "") << path;
        EXPECT_FALSE(reg.InitWithRegPath(path)) << path;
        EXPECT_EQ(reg.KeyPath(), "Software\\HKEY_LOCAL_MACHINE\\x") << path;
    }
    EXPECT_EQ(reports_.size(), 5u);

    reg.SetKeyPath("\\Software\\Y\\");
    EXPECT_EQ(reg.KeyPath(), "Software\\Y");
}

TEST_F(Registry, ReadsEachTypeAsText) {
    const std::string key = bed_->registryKey + "\\Types";
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Sz", clsRegValue::String(std::string("before\0after", 12))));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Binary", clsRegValue::Binary(std::string("\x05\x00\xff\x0a\x64", 5))));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "EmptyBinary", clsRegValue::Binary("")));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Dword", clsRegValue::Dword(42)));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "DwordMax", clsRegValue::Dword(0xFFFFFFFF)));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Multi", clsRegValue::MultiString({"one", "two words", "three"})));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Qword", clsRegValue::Raw(11, std::string(8, '\x01'))));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "ShortDword", clsRegValue::Raw(4, "\x01\x02")));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "", clsRegValue::String("default")));

    clsRegistry reg;
    ASSERT_TRUE(reg.InitWithRegPath(FullPath("Types")));
    EXPECT_EQ(reg.QueryValueEx("Sz"), "before");
    EXPECT_EQ(reg.QueryValueEx("Binary"), "05 00 255 10 100");
    EXPECT_EQ(reg.QueryValueEx("EmptyBinary"), "");
    EXPECT_EQ(reg.QueryValueEx("Dword"), "42");
    EXPECT_EQ(reg.QueryValueEx("DwordMax"), "4294967295");
    EXPECT_EQ(reg.QueryValueEx("Multi"), "one,two words,three");
    EXPECT_EQ(reg.GetMultiSZ("Multi"), (std::vector<std::string>{"one", "two words", "three"}));
    EXPECT_TRUE(reg.GetMultiSZ("Sz").empty()) << "only a multi-string is a list";
    EXPECT_EQ(reg.QueryValueEx("Qword"), "");
    EXPECT_EQ(reg.QueryValueEx("ShortDword"), "");
    EXPECT_EQ(reg.QueryValueEx(""), "default");
    EXPECT_TRUE(reg.ValueExist("Qword")) << "unreadable as text, but there";
}

TEST_F(Registry, ReadsValuesOfSeveralKilobytesWhole) {
    std::string text;
    while (text.size() < 9000) text += "C:\\Program Files\\Tovel\\component;";
    std::string bytes(3000, '\0');
    std::string expected;
    for (size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i % 256);
        if (i > 0) expected += ' ';
        expected += (i % 256 < 10 ? "0" : "") + std::to_string(i % 256);
    }
    const std::string key = bed_->registryKey + "\\Big";
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Text", clsRegValue::String(text)));
    ASSERT_TRUE(Raw().SetValue(kUser, key, "Bytes", clsRegValue::Binary(bytes)));

    const clsRegistry reg = At("Big");
    EXPECT_EQ(reg.QueryValueEx("Text"), text);
    EXPECT_EQ(reg.QueryValueEx("Bytes"), expected);
}

TEST_F(Registry, WritesTextsAsEachType) {
    const clsRegistry reg = At("Write\\Deep");
    ASSERT_FALSE(reg.KeyExists());
    const std::string key = bed_->registryKey + "\\Write\\Deep";

    ASSERT_TRUE(reg.SetKeyValue("Path", "C:\\Tovel", RegType::Sz)) << "the key is created";
    EXPECT_EQ(Raw().QueryValue(kUser, key, "Path"), clsRegValue::String("C:\\Tovel"));
    ASSERT_TRUE(reg.SetKeyValue("Cut", std::string("kept\0lost", 9), RegType::Sz));
    EXPECT_EQ(Raw().QueryValue(kUser, key, "Cut"), clsRegValue::String("kept"));
    ASSERT_TRUE(reg.SetKeyValue("Expand", "%TEMP%\\x", RegType::ExpandSz));
    EXPECT_EQ(Raw().QueryValue(kUser, key, "Expand"), clsRegValue::ExpandString("%TEMP%\\x"));
    ASSERT_TRUE(reg.SetKeyValue("Dword", " 4294967295 ", RegType::Dword));
    EXPECT_EQ(Raw().QueryValue(kUser, key, "Dword"), clsRegValue::Dword(0xFFFFFFFF));
    ASSERT_TRUE(reg.SetKeyValue("Binary", "05 00  255", RegType::Binary));
    EXPECT_EQ(Raw().QueryValue(kUser, key, "Binary"), clsRegValue::Binary(std::string("\x05\x00\xff", 3)));
    ASSERT_TRUE(reg.SetKeyValue("Multi", "a,,b c,", RegType::MultiSz));
    EXPECT_EQ(reg.GetMultiSZ("Multi"), (std::vector<std::string>{"a", "b c"}));

    // What was read can be written back unchanged.
    for (const char* name : {"Dword", "Binary", "Multi"}) {
        const auto type = Raw().QueryValue(kUser, key, name)->type;
        ASSERT_TRUE(reg.SetKeyValue(std::string(name) + "Copy", reg.QueryValueEx(name), type)) << name;
        EXPECT_EQ(Raw().QueryValue(kUser, key, std::string(name) + "Copy"), Raw().QueryValue(kUser, key, name)) << name;
    }

    // Texts a type cannot take write nothing, keep the old value, and are reported.
    const std::vector<std::pair<std::string, RegType>> bad = {
        {"4294967296", RegType::Dword}, {"-1", RegType::Dword},   {"12abc", RegType::Dword},
        {"", RegType::Dword},           {"1 2", RegType::Dword},  {"256", RegType::Binary},
        {"1,2", RegType::Binary},       {"0x10", RegType::Binary}, {"x", RegType::None},
    };
    for (const auto& [text, type] : bad) {
        const auto before = Raw().QueryValue(kUser, key, "Dword");
        EXPECT_FALSE(reg.SetKeyValue("Dword", text, type)) << text;
        EXPECT_EQ(Raw().QueryValue(kUser, key, "Dword"), before) << text;
    }
    EXPECT_EQ(reports_.size(), bad.size());
}

TEST_F(Registry, CreatesEnumeratesAndDeletesKeys) {
    const clsRegistry reg = At("Uninstall");
    ASSERT_TRUE(reg.CreateNewKey(""));
    EXPECT_TRUE(reg.KeyExists());
    ASSERT_TRUE(reg.CreateNewKey("ProductA\\Sub"));
    ASSERT_TRUE(reg.CreateNewKey("\\ProductB\\"));
    EXPECT_EQ(reg.EnumerateSubKeys(), (std::vector<std::string>{"ProductA", "ProductB"}));
    EXPECT_FALSE(reg.ExistValues());

    // A key with subkeys stays; the empty path never deletes the object's own key.
    EXPECT_FALSE(reg.DeleteKey("ProductA"));
    EXPECT_FALSE(reg.DeleteKey(""));
    EXPECT_FALSE(reg.DeleteKey("\\"));
    EXPECT_TRUE(reg.KeyExists());
    EXPECT_TRUE(reg.DeleteKey("ProductA\\Sub"));
    EXPECT_TRUE(reg.DeleteKey("ProductA"));
    EXPECT_TRUE(clsRegistry::DeleteKey2(FullPath("Uninstall\\ProductB") + "\\"));
    EXPECT_TRUE(reg.EnumerateSubKeys().empty());

    ASSERT_TRUE(reg.SetKeyValue("DisplayName", "Tovel", RegType::Sz));
    ASSERT_TRUE(reg.SetKeyValue("Size", "12", RegType::Dword));
    auto values = reg.EnumerateValues();
    std::sort(values.begin(), values.end());
    EXPECT_EQ(values, (std::vector<std::pair<std::string, std::string>>{{"DisplayName", "Tovel"}, {"Size", "12"}}));
    EXPECT_TRUE(reg.DeleteValue("DisplayName"));
    EXPECT_FALSE(reg.ValueExist("DisplayName"));
    EXPECT_FALSE(reg.DeleteValue("DisplayName"));

    // Values do not keep a key; subkeys do.
    EXPECT_TRUE(clsRegistry::DeleteKey2(FullPath("Uninstall")));
    EXPECT_FALSE(reg.KeyExists());
}

TEST_F(Registry, EveryFailureGivesAnEmptyAnswer) {
    const clsRegistry missing = At("Missing\\Key");
    EXPECT_FALSE(missing.KeyExists());
    EXPECT_FALSE(missing.ValueExist(""));
    EXPECT_FALSE(missing.ExistValues());
    EXPECT_EQ(missing.QueryValueEx("x"), "");
    EXPECT_TRUE(missing.GetMultiSZ("x").empty());
    EXPECT_TRUE(missing.EnumerateSubKeys().empty());
    EXPECT_TRUE(missing.EnumerateValues().empty());
    EXPECT_FALSE(missing.DeleteValue("x"));
    EXPECT_FALSE(missing.DeleteKey("x"));
    EXPECT_FALSE(missing.KeyExists()) << "reading must not create the key";

    // An existing key without the value.
    ASSERT_TRUE(Raw().CreateKey(kUser, bed_->registryKey + "\\Empty"));
    const clsRegistry empty = At("Empty");
    EXPECT_TRUE(empty.KeyExists());
    EXPECT_FALSE(empty.ExistValues());
    EXPECT_EQ(empty.QueryValueEx("x"), "");

    // Full paths that name no key to delete.
    EXPECT_FALSE(clsRegistry::DeleteKey2(FullPath("Missing")));
    EXPECT_FALSE(clsRegistry::DeleteKey2("HKEY_CLASSES_ROOT\\" + bed_->registryKey + "\\Empty"));
    EXPECT_FALSE(clsRegistry::DeleteKey2("\\HKEY_CURRENT_USER\\"));
    EXPECT_TRUE(empty.KeyExists());
    EXPECT_TRUE(reports_.empty()) << "a probe that finds nothing is no fault";
}

} // namespace
} // namespace tovel
