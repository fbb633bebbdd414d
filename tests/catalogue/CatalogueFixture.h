#pragma once
// A catalogue test on a fresh machine (emulated on Linux, Wine's on Windows): a Setups.ini
// that switches the log on, the log in the test's folder, English as the setup language.
// Description files and registry values are written for real; the log is read back.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "common/clsCodePage.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "settings/clsRegistry.h"
#include "startup/Globals.h"
#include "tests/support/BedFixture.h"

namespace tovel::test {

class CatalogueFixture : public BedFixture {
protected:
    void SetUp() override {
        BedFixture::SetUp();
        WriteFile("Setups.ini", "[SETTINGS]\r\nCreateLogFile=True\r\n");
        gSetupsIni = std::make_unique<clsSetupsIni>(clsSetupsIni::Hooks{}, bed_->folder);
        gPlaceholder = std::make_unique<clsPlaceholder>();
        gPlaceholder->SetSettings(gSetupsIni.get());
        gLanguageTextFile = std::make_unique<clsLanguageTextFile>();
        DefaultLanguage = 1;
        WorkFolder = bed_->folder;
        gLog = std::make_unique<clsPrintLog>(bed_->folder, false);
        headerSize_ = Platform().Files().ReadFile(gLog->LogfileFullPath()).value_or("").size();
    }
    void TearDown() override {
        gLog.reset();
        gLanguageTextFile.reset();
        gPlaceholder.reset();
        gSetupsIni.reset();
        DefaultLanguage = 1;
        BedFixture::TearDown();
    }

    /// Writes a file below the test's folder (parents made as needed); returns its full path.
    std::string WriteFile(const std::string& relative, const std::string& bytes) {
        auto& files = Platform().Files();
        const std::string path = bed_->folder + relative;
        for (size_t at = relative.find('\\'); at != std::string::npos; at = relative.find('\\', at + 1)) {
            (void)files.CreateFolder(bed_->folder + relative.substr(0, at));
        }
        EXPECT_TRUE(files.WriteFileAtomic(path, bytes)) << path;
        return path;
    }
    /// A registry path of the test's own key below HKEY_CURRENT_USER: "HKEY_CURRENT_USER\<key>\<below>".
    std::string RegPath(const std::string& below) const {
        return "HKEY_CURRENT_USER\\" + bed_->registryKey + (below.empty() ? "" : "\\" + below);
    }
    /// Writes a string value under RegPath(below).
    void SetRegString(const std::string& below, const std::string& name, const std::string& value) {
        clsRegistry reg;
        ASSERT_TRUE(reg.InitWithRegPath(RegPath(below)));
        ASSERT_TRUE(reg.SetKeyValue(name, value, RegType::Sz));
    }
    void SetRegDword(const std::string& below, const std::string& name, uint32_t value) {
        clsRegistry reg;
        ASSERT_TRUE(reg.InitWithRegPath(RegPath(below)));
        ASSERT_TRUE(reg.SetKeyValue(name, std::to_string(value), RegType::Dword));
    }
    /// What the run wrote to the log after its header, lines split at CR LF (the trailing
    /// blank LogIfEnabled adds is kept).
    std::vector<std::string> LogLines() const {
        auto lines = clsString::Split(LogText(), "\r\n");
        if (!lines.empty() && lines.back().empty()) lines.pop_back();
        return lines;
    }
    /// The log after its header as one text in UTF-8, CR LF kept.
    std::string LogText() const {
        std::string bytes = Platform().Files().ReadFile(gLog->LogfileFullPath()).value_or("");
        bytes.erase(0, headerSize_);
        return clsCodePage::ToUtf8(bytes, Platform().System().AnsiCodePage()).value_or(bytes);
    }

private:
    size_t headerSize_ = 0;
};

} // namespace tovel::test
