#include "language/clsLanguageTextFile.h"

#include <algorithm>
#include <charconv>

#include "common/clsCodePage.h"
#include "common/clsString.h"
#include "common/clsTextDecoder.h"
#include "platform/clsPlatform.h"
#include "platform/clsUtf8.h"
#include "platform/clsWindowsPath.h"
#include "settings/clsIniText.h"

namespace tovel {

namespace {

clsLanguageTextFile::Reporter& TheReporter() {
    static clsLanguageTextFile::Reporter reporter;
    return reporter;
}

// The code page a byte-order mark names.
std::optional<DetectedCodePage> MarkedCodePage(std::string_view bytes) {
    const auto bom = clsTextDecoder::DetectBom(bytes);
    if (bom.length == 0) return std::nullopt;
    return DetectedCodePage{clsTextDecoder::CodePageOf(bom.encoding), bom.length};
}

bool IsMultiByte(uint32_t codePage) {
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 ||
           codePage == clsLanguageTextFile::kUtf8 || codePage == clsLanguageTextFile::kUtf16Le ||
           codePage == clsLanguageTextFile::kUtf16Be;
}

// Lead bytes of the JIS X 0208 characters that Japanese text uses: symbols, digits, kana,
// Greek and Cyrillic (81-84), NEC special characters (87) and the kanji (88-9F, E0-EA).
bool IsCommonLead(unsigned char b) { return (b >= 0x81 && b <= 0x84) || (b >= 0x87 && b <= 0x9F) || (b >= 0xE0 && b <= 0xEA); }

bool IsTrail(unsigned char b) { return (b >= 0x40 && b <= 0x7E) || (b >= 0x80 && b <= 0xFC); }

bool LooksShiftJis(std::string_view bytes) {
    size_t pairs = 0, highTrails = 0, halfWidth = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        if (b < 0x80) continue;
        if (b >= 0xA1 && b <= 0xDF) {
            ++halfWidth;
            continue;
        }
        if (!IsCommonLead(b) || i + 1 >= bytes.size()) return false;
        const auto trail = static_cast<unsigned char>(bytes[i + 1]);
        if (!IsTrail(trail)) return false;
        ++pairs;
        if (trail >= 0x80) ++highTrails;
        ++i;
    }
    return pairs > halfWidth && highTrails > 0;
}

// A file marked as UTF-16 stays UTF-16 where it is damaged: a lone surrogate reads as U+FFFD
// and a last odd byte is left out, with a log line, rather than the whole file being taken for
// another code page.
std::string ReadMarkedUtf16(std::string_view body, uint32_t codePage, const std::string& path) {
    auto decoded = clsTextDecoder::FromUtf16(body, codePage == kCodePageUtf16Be);
    if (decoded.replaced || decoded.oddByte) {
        clsLanguageTextFile::Report("Error in Modul clsLanguageTextFile Funktion FileName: " + path +
                                        " is damaged UTF-16 (a lone surrogate or half a character at the end); "
                                        "what cannot be read shows as U+FFFD or is left out.",
                                    true);
    }
    return std::move(decoded.text);
}

// The name of a "[name]" line, trimmed; nullopt for any other line.
std::optional<std::string_view> SectionOf(std::string_view line) {
    const size_t open = line.find_first_not_of(" \t");
    if (open == std::string_view::npos || line[open] != '[') return std::nullopt;
    const size_t close = line.find(']', open);
    if (close == std::string_view::npos) return std::nullopt;
    std::string_view name = line.substr(open + 1, close - open - 1);
    while (!name.empty() && (name.front() == ' ' || name.front() == '\t')) name.remove_prefix(1);
    while (!name.empty() && (name.back() == ' ' || name.back() == '\t')) name.remove_suffix(1);
    return name;
}

// A Shift-JIS file with lines of another code page (Setups.ini keeps its Japanese section in
// Shift-JIS among Western lines): each line of a section named "Japanese", and each other line
// that is Japanese text, is read in 932; every other line in the machine's code page. Inside
// the Japanese section the section decides: a line of katakana alone has no trail byte that
// would tell it from Western text. Only when some line really is Japanese; a file wholly in
// another code page is for the detection to judge.
std::optional<std::string> DecodeByLine(std::string_view body, uint32_t codePage, uint32_t otherCodePage) {
    if (codePage != 932) return std::nullopt;
    std::string text;
    bool statedPageUsed = false;
    bool inJapanese = false;
    for (size_t start = 0; start < body.size();) {
        const size_t end = std::min(body.find('\n', start), body.size() - 1) + 1;
        const std::string_view line = body.substr(start, end - start);
        if (const auto section = SectionOf(line)) inJapanese = clsString::EqualNoCaseAscii(*section, "Japanese");
        const bool japanese = inJapanese || LooksShiftJis(line);
        auto decoded = japanese ? clsCodePage::ToUtf8(line, codePage) : std::nullopt;
        statedPageUsed = statedPageUsed || decoded.has_value();
        if (!decoded) decoded = clsCodePage::ToUtf8(line, otherCodePage);
        if (!decoded) decoded = clsCodePage::ToUtf8(line, 1252);
        if (!decoded) return std::nullopt;
        text += *decoded;
        start = end;
    }
    return statedPageUsed ? std::optional<std::string>(text) : std::nullopt;
}

// U+0080..U+009F: a single-byte Windows code page gives them only for its few undefined bytes.
bool HasC1Controls(std::string_view text) {
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '\xC2' && static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
            static_cast<unsigned char>(text[i + 1]) <= 0x9F) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        lines.emplace_back(text.substr(start, i - start));
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < text.size()) lines.emplace_back(text.substr(start));
    return lines;
}


// "[name]" gives "name"; anything else is taken as it stands.
std::string_view SectionNameOf(std::string_view trimmedLine) {
    std::string_view name = trimmedLine.substr(1);
    const size_t close = name.rfind(']');
    if (close != std::string_view::npos) name = name.substr(0, close);
    return clsIniText::Trim(name);
}

std::optional<uint32_t> ParseNumber(std::string_view text) {
    uint32_t value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value == 0) return std::nullopt;
    return value;
}

} // namespace

void clsLanguageTextFile::SetReporter(Reporter reporter) { TheReporter() = std::move(reporter); }

void clsLanguageTextFile::Report(const std::string& line, bool problem) {
    if (TheReporter()) TheReporter()(line, problem);
}

std::string clsLanguageTextFile::CodePage() const { return open_ ? std::to_string(used_) : stated_; }

void clsLanguageTextFile::SetCodePage(const std::string& codePage) {
    const std::string_view text = clsIniText::Trim(codePage);
    if (text.empty() || ParseNumber(text)) {
        stated_ = std::string(text);
        return;
    }
    if (!clsWindowsPath::EqualNoCase(text, "Detect")) {
        Report("Error in Modul clsLanguageTextFile Funktion CodePage: \"" + codePage +
                   "\" is neither a code page number nor Detect; Detect is used.",
               true);
    }
    stated_ = "Detect";
}

std::string clsLanguageTextFile::CodePageDescription() const { return open_ ? DescribeCodePage(used_) : std::string(); }

bool clsLanguageTextFile::SetFileName(const std::string& path) {
    TerminateConnectionToText();
    fileName_ = path;
    const auto bytes = Platform().Files().ReadFile(path);
    if (!bytes) {
        Report("Error in Modul clsLanguageTextFile Funktion FileName: " + path + " cannot be read.", true);
        return false;
    }
    const uint32_t ansiCodePage = Platform().System().AnsiCodePage();
    const std::string stated = stated_.empty() ? DeclaredCodePage(*bytes) : stated_;
    const auto statedNumber = ParseNumber(stated);

    const auto bom = MarkedCodePage(*bytes);
    const std::string_view body = std::string_view(*bytes).substr(bom ? bom->bomLength : 0);
    uint32_t codePage = bom ? bom->codePage : statedNumber ? *statedNumber : DetectCodePage(body, ansiCodePage).codePage;
    if (bom && statedNumber && *statedNumber != codePage) {
        Report("Language text file " + path + ": its byte-order mark says code page " + std::to_string(codePage) +
                   ", not " + stated + "; the mark counts.",
               false);
    }
    const bool markedUtf16 = bom && (codePage == kUtf16Le || codePage == kUtf16Be);
    auto text = markedUtf16 ? ReadMarkedUtf16(body, codePage, path) : clsCodePage::ToUtf8(body, codePage);
    const bool fromStatement = !bom && statedNumber;
    if (!text && fromStatement) text = DecodeByLine(body, codePage, ansiCodePage);
    const uint32_t detected = DetectCodePage(body, ansiCodePage).codePage;
    if (detected != codePage && (!text || (fromStatement && !IsMultiByte(codePage) && HasC1Controls(*text)))) {
        Report("Error in Modul clsLanguageTextFile Funktion FileName: " + path + " is not written in code page " +
                   std::to_string(codePage) + "; it is read in code page " + std::to_string(detected) + " (" +
                   DescribeCodePage(detected) + ").",
               true);
        codePage = detected;
        text = clsCodePage::ToUtf8(body, codePage);
    }
    if (!text) {
        // Only a machine code page the converter does not know gets here; 1252 reads any byte.
        codePage = 1252;
        text = clsCodePage::ToUtf8(body, codePage);
    }
    if (!text) {
        Report("Error in Modul clsLanguageTextFile Funktion FileName: " + path + " cannot be decoded.", true);
        return false;
    }
    lines_ = SplitLines(*text);
    used_ = codePage;
    open_ = true;
    Report("Language text file " + path + " [" + TableName(path) + "]: code page " + std::to_string(used_) + " (" +
               DescribeCodePage(used_) + ")",
           false);
    return true;
}

std::optional<std::string> clsLanguageTextFile::FindIniProperty(std::string_view section, std::string_view key) const {
    std::string_view wantedSection = clsIniText::Trim(section);
    if (wantedSection.size() >= 2 && wantedSection.front() == '[' && wantedSection.back() == ']') {
        wantedSection = clsIniText::Trim(wantedSection.substr(1, wantedSection.size() - 2));
    }
    if (!open_ || wantedSection.empty() || clsIniText::Trim(key).empty()) return std::nullopt;
    const std::string foldedSection = clsIniText::FoldName(wantedSection);
    const std::string foldedKey = clsIniText::FoldName(key);
    bool inPart = false;
    for (const auto& line : lines_) {
        const std::string_view trimmed = clsIniText::Trim(line);
        if (trimmed.starts_with('[')) {
            inPart = clsIniText::FoldName(SectionNameOf(trimmed)) == foldedSection;
            continue;
        }
        if (!inPart || trimmed.starts_with(';')) continue;
        const size_t equals = trimmed.find('=');
        if (equals == std::string_view::npos) continue;
        if (clsIniText::FoldName(trimmed.substr(0, equals)) == foldedKey) {
            return std::string(clsIniText::Trim(trimmed.substr(equals + 1)));
        }
    }
    return std::nullopt;
}

std::string clsLanguageTextFile::LoadIniProperty() const { return LoadIniProperty2(section_, property_); }

std::string clsLanguageTextFile::LoadIniProperty2(const std::string& section, const std::string& key) const {
    return FindIniProperty(section, key).value_or(std::string());
}

std::string clsLanguageTextFile::LoadIniProperty3(const std::string& section, const std::string& key,
                                                  const std::string& defaultText) const {
    return FindIniProperty(section, key).value_or(defaultText);
}

void clsLanguageTextFile::TerminateConnectionToText() {
    lines_.clear();
    used_ = 0;
    open_ = false;
}

DetectedCodePage clsLanguageTextFile::DetectCodePage(std::string_view bytes, uint32_t ansiCodePage) {
    if (const auto bom = MarkedCodePage(bytes)) return *bom;
    if (clsUtf8::IsAscii(bytes)) return {ansiCodePage, 0};
    if (clsCodePage::IsUtf8(bytes)) return {kUtf8, 0};
    if (LooksShiftJis(bytes) && clsCodePage::ToUtf8(bytes, 932)) return {932, 0};
    return {IsMultiByte(ansiCodePage) ? 1252u : ansiCodePage, 0};
}

std::string clsLanguageTextFile::DescribeCodePage(uint32_t codePage) {
    switch (codePage) {
    case 437: return "OEM United States";
    case 850: return "Western European (DOS)";
    case 874: return "Thai (Windows)";
    case 932: return "Japanese (Shift-JIS)";
    case 936: return "Chinese Simplified (GB2312)";
    case 949: return "Korean";
    case 950: return "Chinese Traditional (Big5)";
    case 1200: return "Unicode";
    case 1201: return "Unicode (Big-Endian)";
    case 1250: return "Central European (Windows)";
    case 1251: return "Cyrillic (Windows)";
    case 1252: return "Western European (Windows)";
    case 1253: return "Greek (Windows)";
    case 1254: return "Turkish (Windows)";
    case 1255: return "Hebrew (Windows)";
    case 1256: return "Arabic (Windows)";
    case 1257: return "Baltic (Windows)";
    case 1258: return "Vietnamese (Windows)";
    case 65001: return "Unicode (UTF-8)";
    default: return "Code page " + std::to_string(codePage);
    }
}

std::string clsLanguageTextFile::TableName(const std::string& path) {
    const size_t slash = path.find_last_of("\\/");
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    for (char& c : name) {
        if (c == '.') c = '#';
    }
    return name;
}

std::string clsLanguageTextFile::DeclaredCodePage(std::string_view bytes) {
    bool inLanguage = false;
    size_t start = 0;
    while (start < bytes.size()) {
        size_t end = bytes.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = bytes.size();
        const std::string_view line = clsIniText::Trim(bytes.substr(start, end - start));
        start = end + 1;
        if (line.starts_with('[')) {
            inLanguage = clsWindowsPath::EqualNoCase(SectionNameOf(line), "Language");
            continue;
        }
        const size_t equals = line.find('=');
        if (inLanguage && equals != std::string_view::npos &&
            clsWindowsPath::EqualNoCase(clsIniText::Trim(line.substr(0, equals)), "CodePage")) {
            return std::string(clsIniText::Trim(line.substr(equals + 1)));
        }
    }
    return {};
}

} // namespace tovel
