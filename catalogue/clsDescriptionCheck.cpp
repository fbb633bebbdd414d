#include "catalogue/clsDescriptionCheck.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "catalogue/clsFolderListing.h"
#include "catalogue/clsIniKeyCheck.h"
#include "catalogue/clsPlaceholderScan.h"
#include "catalogue/clsSIFCommonSection.h"
#include "catalogue/clsSetupTerm.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniFile.h"
#include "startup/Globals.h"

namespace tovel {

namespace {

constexpr const char* kLanguageNames[] = {"German", "English", "French", "Spanish", "Italian", "Japanese"};
constexpr const char* kLetters[] = {"A", "B", "C", "D", "E", "J"};

// The first line number a parser warning names ("line 12 ..."); 0 when it names none.
size_t WarningLine(const std::string& warning) {
    const size_t at = warning.find("line ");
    if (at == std::string::npos) return 0;
    size_t line = 0;
    for (size_t i = at + 5; i < warning.size() && warning[i] >= '0' && warning[i] <= '9'; ++i) {
        line = line * 10 + static_cast<size_t>(warning[i] - '0');
    }
    return line;
}

std::string LanguageList(const std::vector<int>& languages) {
    std::string text;
    for (const int language : languages) text += (text.empty() ? "" : ", ") + std::string(kLanguageNames[language]);
    return text;
}

std::string TermProblemText(TermProblem problem) {
    switch (problem) {
    case TermProblem::Kind: return "its second field is not \"registry\"; the setup takes such a term as holding";
    case TermProblem::Root:
        return "its registry path must begin with HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or HKEY_USERS and end in a value name; the term fails";
    case TermProblem::Type: return "its fourth field must be regsz or regdword; the term fails";
    case TermProblem::Operator: return "its fifth field must be =, <>, =>, >, <=, EXIST or NOTEXIST; the term fails";
    case TermProblem::Value: return "its comparison value is missing, or is no plain number for regdword; the term fails";
    case TermProblem::None: break;
    }
    return {};
}

// The setup language is a global of the run: the check sets it for each text section and
// puts it back when done.
class LanguageGuard {
public:
    LanguageGuard() : saved_(DefaultLanguage) {}
    ~LanguageGuard() { DefaultLanguage = saved_; }
    LanguageGuard(const LanguageGuard&) = delete;
    LanguageGuard& operator=(const LanguageGuard&) = delete;

private:
    int16_t saved_;
};

} // namespace

bool clsDescriptionCheck::SetupPresence::Exists(const std::string& path) {
    const auto [at, fresh] = known_.try_emplace(path, false);
    if (!fresh) return at->second;
    const auto seen = listing_ != nullptr ? listing_->FileExists(path) : std::nullopt;
    at->second = seen ? *seen : Platform().Files().FileExists(path);
    return at->second;
}

clsDescriptionCheck::clsDescriptionCheck(std::vector<int> languages, std::string productFolder, const clsFolderListing* listing)
    : languages_(std::move(languages)), productFolder_(std::move(productFolder)), listing_(listing) {}

std::vector<clsDescriptionCheck::TextSection> clsDescriptionCheck::TextSections(const LanguageSections& named) const {
    std::vector<TextSection> sections;
    for (const int language : languages_) {
        const std::string& name = named.names[static_cast<size_t>(language)];
        bool placed = false;
        for (auto& section : sections) {
            if (!clsString::EqualNoCaseAscii(section.name, name)) continue;
            section.languages.push_back(language);
            placed = true;
        }
        if (!placed) sections.push_back({name, {language}});
    }
    return sections;
}

DescribedFile clsDescriptionCheck::Read(const std::string& path, std::vector<DiscFinding>& findings) const {
    DescribedFile file;
    file.path = path;
    const auto bytes = Platform().Files().ReadFile(path);
    if (!bytes) {
        findings.push_back({path, 0, FindingSeverity::Error, "cannot be read; the setup skips it"});
        return file;
    }
    std::vector<std::string> warnings;
    const clsIniText text = clsIniText::Parse(*bytes, Platform().System().AnsiCodePage(), warnings);
    for (const auto& warning : warnings) findings.push_back({path, WarningLine(warning), FindingSeverity::Warning, warning});
    const std::vector<IniLine> outline = text.Outline();
    const auto fileType = text.FindValue("GENERAL", "FileType");
    const std::string type = fileType ? clsString::LowerAscii(clsIniText::Trim(fileType->value)) : std::string();
    if (type != "ssf" && type != "collection") {
        findings.push_back({path, fileType ? fileType->line : 0, FindingSeverity::Warning,
                            "FileType in [GENERAL] is neither ssf (a product) nor collection (a packet); the setup skips this file"});
        return file;
    }
    const auto placeholders = clsPlaceholderScan::Check(path, outline);
    findings.insert(findings.end(), placeholders.begin(), placeholders.end());

    clsIniKeyCheck known;
    known.AddKnown("GENERAL", "FileType");   // the search reads it to tell products from packets
    clsIniFile ini;
    ini.SetFullPath(path);
    ini.SetKeyObserver([&known](const std::string& section, const std::string& key, size_t line) {
        // A key found is known by its line; only the names asked for in vain need keeping.
        if (line != 0) {
            known.MarkRead(line);
        } else {
            known.AddKnown(section, key);
        }
    });
    // A copy: the outline views the text, which stays here unchanged.
    ini.AdoptText(text);
    {
        const LanguageGuard guard;
        const LanguageSections named = clsSIFCommonSection::ProdInfoSections(ini);
        if (type == "ssf") {
            ReadProduct(ini, named, outline, known, file, findings);
        } else {
            ReadPacket(ini, named, file, findings);
        }
        AllowUnofferedSections(named, known);
    }
    const auto unread = known.Check(path, outline);
    findings.insert(findings.end(), unread.begin(), unread.end());
    return file;
}

// The text sections of languages the disc does not offer are never read on this disc, but
// would be on another: what they hold is not looked at.
void clsDescriptionCheck::AllowUnofferedSections(const LanguageSections& named, clsIniKeyCheck& known) const {
    for (int language = 0; language < 6; ++language) {
        if (std::find(languages_.begin(), languages_.end(), language) != languages_.end()) continue;
        const std::string& name = named.names[static_cast<size_t>(language)];
        if (!name.empty()) known.AllowAnyKey(name);
    }
}

namespace {

// The numbers of the "$SSFMessageBox<nn>" actions of a product: the run shows the text
// SSFMessageBox<n> of the product's text section for each.
std::vector<int> MessageNumbers(const clsSIFApplicationItem& item) {
    std::vector<int> numbers;
    const auto take = [&](const std::vector<VersionsEntry>& family) {
        for (const auto& entry : family) {
            const std::string& action = entry.value;
            if (action.rfind("$SSFMessageBox", 0) != 0 || action.size() < 16) continue;
            const std::string digits = action.substr(action.size() - 2);
            if (digits.find_first_not_of("0123456789") == std::string::npos) numbers.push_back(std::stoi(digits));
        }
    };
    for (const auto& section : item.VersionRules.sections) {
        for (const auto& version : section.versions) take(version.actions);
        take(section.defaultActions);
        take(section.firstInstActions);
    }
    return numbers;
}

} // namespace

void clsDescriptionCheck::ReadProduct(clsIniFile& ini, const LanguageSections& named, const std::vector<IniLine>& outline,
                                      clsIniKeyCheck& known, DescribedFile& file, std::vector<DiscFinding>& findings) const {
    file.kind = DescribedFile::Kind::Product;
    const auto sections = TextSections(named);
    // The sections other than the text section read the same in every language: the record
    // is read whole once, then only the text section of each further language.
    clsSIFApplicationItem product;
    clsSIFApplicationItem further;   // each reading of a text section sets all it reads
    std::vector<std::string> textSections;
    SetupPresence present(listing_);
    for (const auto& section : sections) {
        DefaultLanguage = static_cast<int16_t>(section.languages.front());
        const bool first = product.SIFFileName.empty();
        clsSIFApplicationItem& item = first ? product : further;
        if (first) {
            item.Read(ini, productFolder_);
        } else {
            item.ReadTextSection(ini, productFolder_, named);
        }
        CheckTextSection(item, section, {ini, outline}, file, present, findings);
        if (!section.name.empty()) textSections.push_back(section.name);
    }
    if (sections.empty()) product.Read(ini, productFolder_);
    CheckTerm(file, ini, "GENERAL", "TermToInstall", product.TermToInstall, findings);
    CheckTerm(file, ini, "SETUP_DEPENDENCIES", "DependenceTerm", product.DependenceTerm, findings);
    MessageTexts(file.path, product, textSections, ini, known, findings);
    file.code = product.ProductCode;
    file.dependencies = product.Dependencies();
    file.setupDependencies = product.SetupDependencies();
}

void clsDescriptionCheck::MessageTexts(const std::string& path, const clsSIFApplicationItem& product, const std::vector<std::string>& textSections,
                                       clsIniFile& ini, clsIniKeyCheck& known, std::vector<DiscFinding>& findings) {
    for (const int number : MessageNumbers(product)) {
        const std::string key = "SSFMessageBox" + std::to_string(number);
        for (const auto& section : textSections) {
            known.AddKnown(section, key);
            if (ini.KeyLine(section, key) != 0 || clsString::EqualNoCaseAscii(section, "Japanese")) continue;
            findings.push_back({path, ini.KeyLine(section, "Description"), FindingSeverity::Warning,
                                "an action $SSFMessageBox shows " + key + ", which [" + section + "] lacks; the message reads \"Error\""});
        }
    }
}

void clsDescriptionCheck::ReadPacket(clsIniFile& ini, const LanguageSections& named, DescribedFile& file,
                                     std::vector<DiscFinding>& findings) const {
    file.kind = DescribedFile::Kind::Packet;
    const auto sections = TextSections(named);
    clsSIFPacketItem packet;
    if (sections.empty()) packet.Read(ini);
    for (const auto& section : sections) {
        DefaultLanguage = static_cast<int16_t>(section.languages.front());
        packet.Read(ini);
        if (packet.Description.empty() && !clsString::EqualNoCaseAscii(section.name, "Japanese")) {
            findings.push_back({file.path, ini.KeyLine("LANGUAGES", "LanguageX"), FindingSeverity::Warning,
                                "no Description for " + LanguageList(section.languages) +
                                    (section.name.empty() ? "" : " in [" + section.name + "]") + "; the setup-type page shows an empty name"});
        }
    }
    const std::string& preselect = packet.PreSelectText;
    if (!preselect.empty() && !clsIniFile::ParseBoolean(preselect) && !clsString::EqualNoCaseAscii(preselect, "uncheckbox") &&
        packet.PreSelect == CheckBoxState::kUnchecked) {
        findings.push_back({file.path, ini.KeyLine("GENERAL", "PreSelect"), FindingSeverity::Warning,
                            "PreSelect=" + preselect + " is neither a check-box state nor a yes/no word; the packet is not preselected"});
    }
    file.code = packet.ProductCode;
    file.dependencies = packet.Dependencies();
    file.members = packet.ProductCodes();
    for (int bus = 0; bus < kBusSystemCount; ++bus) file.busActions[static_cast<size_t>(bus)] = packet.BusActions(static_cast<BusSystem>(bus));
}

namespace {

size_t HeaderLine(const std::vector<IniLine>& outline, const std::string& section) {
    for (const IniLine& line : outline) {
        if (line.header && line.firstBlock && clsIniText::SameName(line.section, section)) return line.number;
    }
    return 0;
}

} // namespace

void clsDescriptionCheck::CheckTextSection(const clsSIFApplicationItem& item, const TextSection& section, FileLines lines,
                                           const DescribedFile& file, SetupPresence& present, std::vector<DiscFinding>& findings) const {
    const std::vector<IniLine>& outline = lines.outline;
    const std::string languages = LanguageList(section.languages);
    const auto add = [&](size_t line, FindingSeverity severity, const std::string& text) {
        findings.push_back({file.path, line, severity, text});
    };
    if (section.name.empty()) {
        add(HeaderLine(outline, "LANGUAGES"), FindingSeverity::Error,
            "no text section for " + languages + ", which the disc offers: name one with Language" +
                kLetters[section.languages.front()] + "= or LanguageX= in [LANGUAGES]");
        return;
    }
    const size_t header = HeaderLine(outline, section.name);
    if (header == 0) {
        add(HeaderLine(outline, "LANGUAGES"), FindingSeverity::Error,
            "[" + section.name + "], the text section for " + languages + ", is missing: the product has no setup program in " + languages);
        return;
    }
    if (item.SetupFile.empty()) {
        add(header, FindingSeverity::Error, "no SetupFile in [" + section.name + "]: the product cannot be installed in " + languages);
    } else if (clsString::LowerAscii(item.SetupFile).find("msiexec.exe") == std::string::npos &&
               !present.Exists(item.SetupFile)) {
        add(lines.ini.KeyLine(section.name, "SetupFile"), FindingSeverity::Error, "the setup program " + item.SetupFile + " is not on the disc");
    }
    if (item.Description.empty() && !clsString::EqualNoCaseAscii(section.name, "Japanese")) {
        add(header, FindingSeverity::Warning, "no Description in [" + section.name + "]: the product's name is empty in " + languages);
    }
}

void clsDescriptionCheck::CheckTerm(const DescribedFile& file, clsIniFile& ini, const char* section, const char* key, const std::string& term,
                                    std::vector<DiscFinding>& findings) {
    const TermProblem problem = clsSetupTerm::Check(term);
    if (problem == TermProblem::None) return;
    findings.push_back({file.path, ini.KeyLine(section, key), problem == TermProblem::Kind ? FindingSeverity::Warning : FindingSeverity::Error,
                        std::string(key) + " cannot be read: " + TermProblemText(problem)});
}

} // namespace tovel
