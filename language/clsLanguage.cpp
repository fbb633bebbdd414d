#include "language/clsLanguage.h"

#include <array>

#include "common/clsCodePage.h"
#include "language/clsBuiltinTexts.h"
#include "language/clsLanguageLcidCp.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"

namespace tovel {

namespace {

constexpr std::array<std::string_view, 6> kLanguageNames = {"German", "English", "French", "Spanish", "Italian", "Japanese"};

struct FormTwin {
    std::string_view msi;
    std::string_view classic;
};

// The "frmMSI" pages and the classic pages whose controls they share.
constexpr FormTwin kTwins[] = {
    {"frmMSIWelcome", "frmWelcome"},         {"frmMSIWelcome2", "frmWelcome2"},
    {"frmMSILicense", "frmLicense"},         {"frmMSIInformation", "frmInformation"},
    {"frmMSIReadMe", "frmReadme"},           {"frmMSIOldVersion", "frmOldVersion"},
    {"frmMSIDone", "frmDone"},               {"frmMSIBussystem", "frmBusSystem"},
    {"frmMSIUpdateOrNew", "frmUpdateOrNew"}, {"frmMSIIdentification", "frmIdentification"},
    {"frmMSIDestination", "frmDestination"}, {"frmMSICustomSetup", "frmCustomSetup"},
    {"frmMSICustomSetupGolden", "frmCustomSetup"}, {"frmMSILanguage", "frmLanguages"},
    {"frmMSISetupLanguage", "frmSetupLanguage"},   {"frmMSISetupType", "frmSetupType"},
    {"frmMSISearch", "frmSearch"},           {"frmMSIBrowseDir", "frmBrowseDir"},
};

bool IsByteCopyKind(std::string_view kind) {
    return kind == "CommandButton" || kind == "Frame" || kind == "CheckBox" || kind == "OptionButton" || kind == "Label" ||
           kind == "frmMessage";
}


} // namespace

void clsLanguage::SetLanguageID(uint32_t lcid) {
    lcid_ = lcid;
    if (!textFolder_.empty()) OpenTextFile(textFolder_ + TextFileName(lcid_));
}

uint32_t clsLanguage::CodePage() const { return clsLanguageLcidCp::AnsiCodePageFromLcid(lcid_); }

uint32_t clsLanguage::SystemCodePage() { return Platform().System().AnsiCodePage(); }

void clsLanguage::SetTextFolder(const std::string& folder) {
    textFolder_ = folder;
    if (!textFolder_.empty() && textFolder_.back() != '\\') textFolder_ += '\\';
    if (textFolder_.empty()) {
        OpenTextFile("");
        return;
    }
    OpenTextFile(textFolder_ + TextFileName(lcid_));
}

void clsLanguage::SetIniFilePath(const std::string& path) { OpenTextFile(path); }

void clsLanguage::OpenTextFile(const std::string& path) {
    file_.TerminateConnectionToText();
    iniFilePath_.clear();
    if (path.empty()) return;
    // A disc without its own texts is normal: the built-in ones serve.
    if (!Platform().Files().FileExists(path)) {
        clsLanguageTextFile::Report("No language text file " + path + "; the built-in texts are used.", false);
        return;
    }
    file_.SetCodePage("");
    if (file_.SetFileName(path)) iniFilePath_ = path;
}

std::string clsLanguage::LoadResString(int id) const { return LoadResString(id, {}); }

std::string clsLanguage::LoadResString(int id, const std::vector<std::string>& values) const {
    const std::string key = std::to_string(id);
    if (auto text = file_.FindIniProperty(clsBuiltinTexts::kTextsSection, key)) return FormatText(*text, values);
    for (const size_t language : {LanguageIndex(), clsBuiltinTexts::kEnglish}) {
        if (auto text = clsBuiltinTexts::Find(clsBuiltinTexts::kTextsSection, key, language)) return FormatText(*text, values);
    }
    clsLanguageTextFile::Report("Error in Modul clsLanguage Funktion LoadResString: no text number " + key, true);
    return {};
}

std::string clsLanguage::Caption(std::string_view form, std::string_view control, int index) const {
    const std::string key = index >= 0 ? std::string(control) + "(" + std::to_string(index) + ")" : std::string(control);
    const std::string_view classic = ClassicFormName(form);
    std::vector<std::string_view> sections = {form};
    if (classic != form) sections.push_back(classic);
    sections.push_back(clsBuiltinTexts::kCommonSection);
    for (const auto section : sections) {
        if (auto text = file_.FindIniProperty(section, key)) return FormatText(*text);
    }
    for (const size_t language : {LanguageIndex(), clsBuiltinTexts::kEnglish}) {
        for (const auto section : {classic, clsBuiltinTexts::kCommonSection}) {
            if (auto text = clsBuiltinTexts::Find(section, key, language)) return FormatText(*text);
        }
    }
    return {};
}

CaptionPlan clsLanguage::CaptionEx(std::string_view controlKind, const std::string& text, int displayMode) const {
    return DecideCaption(text, CodePage(), SystemCodePage(), controlKind, displayMode);
}

CaptionPlan clsLanguage::CaptionEx(std::string_view controlKind, int id, int displayMode) const {
    return CaptionEx(controlKind, LoadResString(id), displayMode);
}

CaptionPlan clsLanguage::DecideCaption(const std::string& text, uint32_t textCodePage, uint32_t systemCodePage,
                                       std::string_view controlKind, int displayMode) {
    CaptionPlan plan;
    plan.text = text;
    if (IsByteCopyKind(controlKind)) {
        if (textCodePage == systemCodePage) return plan;
        plan.path = CaptionPath::ByteCopy;
        plan.bytes = WToA(text, textCodePage);
        plan.buffer.assign(plan.bytes.size(), 'Z');
        return plan;
    }
    if (displayMode == 2) {
        plan.path = CaptionPath::WideSetText;
    } else if (displayMode == 1) {
        plan.path = CaptionPath::NarrowSetText;
        plan.bytes = WToA(text, textCodePage);
    }
    return plan;
}

std::string clsLanguage::WToA(const std::string& text, uint32_t codePage) {
    if (auto bytes = clsCodePage::FromUtf8(text, codePage)) return *bytes;
    clsLanguageTextFile::Report("Error in Modul clsLanguage Funktion WToA: no conversion to code page " +
                                    std::to_string(codePage),
                                true);
    return {};
}

uint8_t clsLanguage::ChsFromLocale(uint32_t lcid) {
    return clsLanguageLcidCp::CharsetFromCodePage(clsLanguageLcidCp::AnsiCodePageFromLcid(lcid));
}

uint32_t clsLanguage::DetectCodePageFromFile(const std::string& path) {
    const auto bytes = Platform().Files().ReadFile(path);
    if (!bytes) return 0;
    return clsLanguageTextFile::DetectCodePage(*bytes, SystemCodePage()).codePage;
}

size_t clsLanguage::LanguageIndexOf(uint32_t lcid) {
    switch (clsLanguageLcidCp::PrimaryLangId(clsLanguageLcidCp::LangIdFromLcid(lcid))) {
    case 0x07: return 0;
    case 0x09: return 1;
    case 0x0C: return 2;
    case 0x0A: return 3;
    case 0x10: return 4;
    case 0x11: return 5;
    default: return clsBuiltinTexts::kEnglish;
    }
}

std::string clsLanguage::TextFileName(uint32_t lcid) {
    return "Lang\\" + std::string(kLanguageNames[LanguageIndexOf(lcid)]) + ".txt";
}

std::string_view clsLanguage::ClassicFormName(std::string_view form) {
    for (const auto& twin : kTwins) {
        if (clsWindowsPath::EqualNoCase(twin.msi, form)) return twin.classic;
    }
    return form;
}

std::string clsLanguage::FormatText(std::string_view text, const std::vector<std::string>& values) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%' || i + 1 >= text.size()) {
            out += text[i];
            continue;
        }
        const char next = text[i + 1];
        if (next == 'n') {
            out += "\r\n";
        } else if (next == '%') {
            out += '%';
        } else if (next >= '1' && next <= '9' && static_cast<size_t>(next - '1') < values.size()) {
            out += values[static_cast<size_t>(next - '1')];
        } else {
            out += '%';
            continue;
        }
        ++i;
    }
    return out;
}

} // namespace tovel
