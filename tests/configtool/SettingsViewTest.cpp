// The settings view: Setups.ini and a description file key by key as the setup reads them,
// and changes written back through the INI layer with the author's comments, blank lines,
// spacing and order kept, byte for byte where nothing changed.
#include <gtest/gtest.h>

#include <string>

#include "configtool/clsSettingsView.h"
#include "tests/configtool/ToolDisc.h"

namespace tovel {
namespace {

using State = SettingsEntry::State;

class SettingsView : public test::ToolDisc {
protected:
    size_t IndexOf(const clsSettingsView& view, const std::string& section, const std::string& key) {
        const SettingsEntry* entry = view.Find(section, key);
        EXPECT_NE(entry, nullptr) << section << " " << key;
        return entry != nullptr ? static_cast<size_t>(entry - view.Entries().data()) : view.Entries().size();
    }
};

TEST_F(SettingsView, SetupsIniKeyByKeyWithDefaults) {
    const auto view = clsSettingsView::SetupsIni(bed_->folder);
    const SettingsEntry* timeout = view.Find("SETTINGS", "WelcomeTimeout");
    ASSERT_NE(timeout, nullptr);
    EXPECT_EQ(timeout->line, 5U);
    EXPECT_EQ(timeout->written, "4");
    EXPECT_EQ(timeout->state, State::Set);
    EXPECT_TRUE(timeout->defaultValue.has_value());

    // "yes" is how the setup reads True, OldForms' default.
    const SettingsEntry* oldForms = view.Find("settings", "oldforms");
    ASSERT_NE(oldForms, nullptr);
    EXPECT_EQ(oldForms->value, "True");
    EXPECT_EQ(oldForms->state, State::SameAsDefault);

    // A key the file lacks: the default, listed with the keys of its section.
    const SettingsEntry* golden = view.Find("SETTINGS", "GoldenComponentDialog");
    ASSERT_NE(golden, nullptr);
    EXPECT_EQ(golden->state, State::Default);
    EXPECT_EQ(golden->line, 0U);
    EXPECT_EQ(golden->value, "False");
    EXPECT_EQ(view.Find("LANGUAGES", "German")->value, "enable");
    EXPECT_LT(golden - view.Entries().data(), view.Find("STARTERGENERAL", "Anything") - view.Entries().data());

    // A typing error is never read; the check's finding says what was meant.
    const SettingsEntry* typo = view.Find("SETTINGS", "CDTitel");
    ASSERT_NE(typo, nullptr);
    EXPECT_EQ(typo->state, State::NotRead);
    ASSERT_FALSE(typo->notes.empty());
    EXPECT_NE(typo->notes.front().find("CDTitle"), std::string::npos) << typo->notes.front();
    EXPECT_NE(clsSettingsView::LineText(*typo).find("never read"), std::string::npos);
    // The products' starter section is read by the products: no finding, it counts.
    EXPECT_EQ(view.Find("STARTERGENERAL", "Anything")->state, State::Set);
}

TEST_F(SettingsView, WritingBackKeepsTheAuthorsFile) {
    const std::string before = Read("Setups.ini");
    auto view = clsSettingsView::SetupsIni(bed_->folder);
    std::string error;

    // Nothing changed, nothing written: the same bytes.
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "WelcomeTimeout"), "4", error)) << error;
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "OldForms"), "yes", error)) << error;
    EXPECT_EQ(Read("Setups.ini"), before);

    // A changed value: only what follows its "=" on its own line.
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "WelcomeTimeout"), "3", error)) << error;
    std::string expected = before;
    expected.replace(expected.find("= 4   "), 6, "= 3");
    EXPECT_EQ(Read("Setups.ini"), expected);
    EXPECT_EQ(view.Find("SETTINGS", "WelcomeTimeout")->state, State::Set);

    // A key the file lacked: a line of its own after the section's last key, before the blank line.
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "GoldenComponentDialog"), "True", error)) << error;
    expected.insert(expected.find("\r\n\r\n[STARTERGENERAL]") + 2, "GoldenComponentDialog=True\r\n");
    EXPECT_EQ(Read("Setups.ini"), expected);
    EXPECT_EQ(view.Find("SETTINGS", "GoldenComponentDialog")->state, State::Set);

    // Back to the default: the key's line goes, the comments stay.
    ASSERT_TRUE(view.UseDefault(IndexOf(view, "SETTINGS", "GoldenComponentDialog"), error)) << error;
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "WelcomeTimeout"), "4", error)) << error;
    std::string restored = before;
    restored.replace(restored.find("= 4   "), 6, "= 4");
    EXPECT_EQ(Read("Setups.ini"), restored);

    // What would not read back is refused, and the file stays as it was.
    EXPECT_FALSE(view.Write(IndexOf(view, "SETTINGS", "CDTitle"), "two\r\nlines", error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(Read("Setups.ini"), restored);
}

TEST_F(SettingsView, DescriptionFileAsItsReadersAskForIt) {
    const std::string path = bed_->folder + "Products\\ToolA.ssf";
    const std::string before = Read("Products\\ToolA.ssf");
    auto view = clsSettingsView::Description(path, bed_->folder);
    const SettingsEntry* code = view.Find("GENERAL", "ProductCode");
    ASSERT_NE(code, nullptr);
    EXPECT_EQ(code->value, "TOOLA");
    EXPECT_EQ(code->state, State::Set);
    EXPECT_FALSE(code->defaultValue.has_value());
    // Keys the reader asks for and the file lacks; not the end of a numbered family.
    ASSERT_NE(view.Find("GENERAL", "AlwaysInstall"), nullptr);
    EXPECT_EQ(view.Find("GENERAL", "AlwaysInstall")->state, State::Default);
    EXPECT_EQ(view.Find("SETUP_DEPENDENCIES", "Dependence1"), nullptr);
    // Both languages' sections are read; a key no reader knows is marked.
    EXPECT_EQ(view.Find("German", "Description")->state, State::Set);
    EXPECT_EQ(view.Find("GENERAL", "Colour")->state, State::NotRead);

    std::string error;
    ASSERT_TRUE(view.Write(IndexOf(view, "English", "Description"), "Tool A 2", error)) << error;
    std::string expected = before;
    expected.replace(expected.find("Description=Tool A"), 18, "Description=Tool A 2");
    EXPECT_EQ(Read("Products\\ToolA.ssf"), expected);
}

TEST_F(SettingsView, MissingSetupsIniListsEveryDefault) {
    ASSERT_TRUE(Platform().Files().DeleteFile(bed_->folder + "Setups.ini"));
    auto view = clsSettingsView::SetupsIni(bed_->folder);
    ASSERT_FALSE(view.Entries().empty());
    for (const auto& entry : view.Entries()) EXPECT_EQ(entry.state, State::Default) << entry.key;
    // Setting a key makes the file, with its section.
    std::string error;
    ASSERT_TRUE(view.Write(IndexOf(view, "SETTINGS", "CDTitle"), "Disc 1", error)) << error;
    EXPECT_EQ(Read("Setups.ini"), "[SETTINGS]\r\nCDTitle=Disc 1\r\n");
}

} // namespace
} // namespace tovel
