#include "catalogue/clsIniKeyCheck.h"

#include <algorithm>

#include "common/clsNearestName.h"

namespace tovel {

namespace {

DiscFinding Warning(const std::string& file, size_t line, std::string text) {
    return {file, line, FindingSeverity::Warning, std::move(text)};
}

std::string Quoted(std::string_view key) { return "\"" + std::string(key) + "\""; }

std::string Bracketed(std::string_view section) { return "[" + std::string(section) + "]"; }

// "Dependence4" -> "Dependence"; "" when the name does not end in a number.
std::string_view FamilyOf(std::string_view key) {
    size_t end = key.size();
    while (end > 0 && key[end - 1] >= '0' && key[end - 1] <= '9') --end;
    return end == key.size() ? std::string_view() : key.substr(0, end);
}

} // namespace

void clsIniKeyCheck::AddKnown(const std::string& section, const std::string& key) {
    // Readers ask for many keys of one section in a row: its entry is looked up once for them.
    if (last_ == nullptr || section != lastSection_) {
        last_ = &sections_[clsIniText::FoldName(section)];
        lastSection_ = section;
    }
    Known& known = *last_;
    if (known.name.empty()) known.name = section;
    // Most keys are asked for again and again: a known one costs a look-up and no copy.
    if (key.empty()) return;
    const size_t hash = clsIniText::NameHash(key);
    if (known.Has(key, hash)) return;
    known.names.push_back(key);
    known.hashes.push_back(hash);
}

bool clsIniKeyCheck::Known::Has(std::string_view key, size_t hash) const {
    for (size_t i = 0; i < hashes.size(); ++i) {
        if (hashes[i] == hash && clsIniText::SameName(names[i], key)) return true;
    }
    return false;
}

void clsIniKeyCheck::MarkRead(size_t line) {
    if (line >= read_.size()) read_.resize(std::max(line + 1, 2 * read_.size()), false);
    read_[line] = true;
}

std::vector<size_t> clsIniKeyCheck::HeadersRead(const std::vector<IniLine>& outline) const {
    std::vector<size_t> headers;
    size_t header = 0;
    for (const IniLine& line : outline) {
        if (line.header) header = line.number;
        if (!line.header && header != 0 && Read(line.number) && (headers.empty() || headers.back() != header)) headers.push_back(header);
    }
    return headers;
}

void clsIniKeyCheck::AllowAnyKey(const std::string& section) {
    Known& known = sections_[clsIniText::FoldName(section)];
    if (known.name.empty()) known.name = section;
    known.anyKey = true;
}

std::string clsIniKeyCheck::UnknownSectionText(const IniLine& line) const {
    std::vector<std::string> names;
    for (const auto& [folded, known] : sections_) names.push_back(known.name);
    const std::string nearest = clsNearestName::Find(line.section, names);
    return "section " + Bracketed(line.section) + " is never read" +
           (nearest.empty() ? "; remove it or correct its name" : "; did you mean [" + nearest + "]?");
}

std::string clsIniKeyCheck::UnknownKeyText(const Known& section, const IniLine& line) const {
    const std::string head = Quoted(line.key) + " in " + Bracketed(line.section) + " is never read";
    const std::string family(FamilyOf(line.key));
    if (!family.empty()) {
        for (const auto& name : section.names) {
            if (clsIniText::SameName(FamilyOf(name), family)) {
                return head + ": the numbered keys " + family + "1, " + family +
                       "2, ... end at the first missing or empty number; number them without a gap";
            }
        }
    }
    const std::string nearest = clsNearestName::Find(line.key, section.names);
    return head + (nearest.empty() ? "; remove it or correct its name" : "; did you mean \"" + nearest + "\"?");
}

std::vector<DiscFinding> clsIniKeyCheck::Check(const std::string& file, const std::vector<IniLine>& outline) const {
    std::vector<DiscFinding> findings;
    const std::vector<size_t> headersRead = HeadersRead(outline);
    const Known noKeyAskedInVain;
    const Known* section = nullptr;
    // The keys of the current block so far with their hashes: a block holds a few dozen, so a
    // search through them costs less than a map's nodes.
    std::vector<std::pair<size_t, const IniLine*>> seen;
    for (const IniLine& line : outline) {
        if (line.header) {
            seen.clear();
            const auto found = sections_.find(clsIniText::FoldName(line.section));
            section = found == sections_.end() ? nullptr : &found->second;
            if (section == nullptr && std::binary_search(headersRead.begin(), headersRead.end(), line.number)) section = &noKeyAskedInVain;
            if (!line.firstBlock) {
                findings.push_back(Warning(file, line.number, Bracketed(line.section) +
                                           " appears a second time and this block is never read; move its keys into the first"));
            } else if (section == nullptr) {
                findings.push_back(Warning(file, line.number, UnknownSectionText(line)));
            }
            continue;
        }
        if (line.key.empty()) continue;
        if (line.section.empty()) {
            findings.push_back(Warning(file, line.number, Quoted(line.key) + " stands before the first section and is never read"));
            continue;
        }
        if (section == nullptr || !line.firstBlock) continue;
        const size_t hash = clsIniText::NameHash(line.key);
        const auto first = std::find_if(seen.begin(), seen.end(), [&](const auto& earlier) {
            return earlier.first == hash && clsIniText::SameName(earlier.second->key, line.key);
        });
        if (first != seen.end()) {
            findings.push_back(Warning(file, line.number, Quoted(line.key) + " is given twice in " + Bracketed(line.section) +
                                       "; only the first, on line " + std::to_string(first->second->number) + ", counts"));
            continue;
        }
        seen.emplace_back(hash, &line);
        if (!section->anyKey && !Read(line.number) && !section->Has(line.key, hash)) findings.push_back(Warning(file, line.number, UnknownKeyText(*section, line)));
    }
    return findings;
}

} // namespace tovel
