#include "catalogue/clsDiscCheck.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "catalogue/clsDependencyCycles.h"
#include "catalogue/clsFolderListing.h"
#include "catalogue/clsLanguageFilesCheck.h"
#include "catalogue/clsSSFSearch.h"
#include "catalogue/clsSetupsIniCheck.h"
#include "common/clsFileDisk.h"
#include "common/clsString.h"
#include "platform/clsPlatform.h"
#include "settings/clsIniText.h"

namespace tovel {

namespace {

constexpr const char* kBusKeys[kBusSystemCount] = {"ProfibusAction", "EthernetAction", "Ethernet2Action", "KWTAction", "NoBusAction"};

// The files of one kind by code (upper case); the first file of a code owns it.
class CodeIndex {
public:
    void Add(const std::string& code, const DescribedFile* file) {
        if (!code.empty()) byCode_.try_emplace(clsString::UpperAscii(code), file);
    }
    [[nodiscard]] const DescribedFile* Find(const std::string& code) const {
        const auto found = byCode_.find(clsString::UpperAscii(code));
        return found == byCode_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::string, const DescribedFile*> byCode_;
};

class Across {
public:
    explicit Across(const std::vector<DescribedFile>& files) {
        for (const auto& file : files) {
            if (file.kind == DescribedFile::Kind::Product) products_.push_back(&file);
            if (file.kind == DescribedFile::Kind::Packet) packets_.push_back(&file);
        }
    }

    std::vector<DiscFinding> Run() {
        Codes();
        for (const DescribedFile* file : products_) ProductLinks(*file);
        for (const DescribedFile* file : packets_) PacketLinks(*file);
        Circles();
        return std::move(findings_);
    }

private:
    // A disc of a thousand files keeps no lines in memory: the few files a finding across files
    // names are read again, each once. Their parser warnings are among the file's own findings.
    size_t LineOf(const DescribedFile& file, const std::string& section, const std::string& key) {
        const auto [at, fresh] = reread_.try_emplace(file.path);
        if (fresh) {
            std::vector<std::string> warnings;
            const auto bytes = Platform().Files().ReadFile(file.path);
            if (bytes) at->second = clsIniText::Parse(*bytes, Platform().System().AnsiCodePage(), warnings);
        }
        const auto found = at->second ? at->second->FindValue(section, key) : std::nullopt;
        return found ? found->line : 0;
    }

    void Add(const DescribedFile& file, size_t line, FindingSeverity severity, std::string text) {
        findings_.push_back({file.path, line, severity, std::move(text)});
    }

    void Codes() {
        std::unordered_map<std::string, const DescribedFile*> first;
        for (const DescribedFile* file : products_) {
            const std::string& code = file->code;
            if (code.empty()) {
                Add(*file, LineOf(*file, "GENERAL", "ProductCode"), FindingSeverity::Error, "no ProductCode in [GENERAL]: nothing can name this product");
                continue;
            }
            // Products compare their codes exactly; the first file's record is the one found.
            if (const auto [at, fresh] = first.try_emplace(code, file); !fresh) {
                Add(*file, LineOf(*file, "GENERAL", "ProductCode"), FindingSeverity::Error,
                    "ProductCode " + code + " is also the code of " + at->second->path + ", which wins; give this product its own code");
            }
            productCodes_.Add(code, file);
        }
        for (const DescribedFile* file : packets_) {
            const std::string& code = file->code;
            if (const DescribedFile* owner = packetCodes_.Find(code); owner != nullptr) {
                Add(*file, LineOf(*file, "GENERAL", "ProductCode"), FindingSeverity::Error,
                    "packet code " + code + " is also the code of " + owner->path + " (letters compared without case); this packet is ignored");
                continue;
            }
            packetCodes_.Add(code, file);
        }
    }

    void Missing(const DescribedFile& file, const std::string& section, const std::string& key, const std::string& code,
                 FindingSeverity severity, const std::string& effect) {
        Add(file, LineOf(file, section, key), severity, key + "=" + code + " names no product on this disc" + effect);
    }

    void ProductLinks(const DescribedFile& file) {
        for (size_t i = 0; i < file.dependencies.size(); ++i) {
            const std::string& code = file.dependencies[i];
            if (productCodes_.Find(code) == nullptr) {
                Missing(file, "DEPENDENCIES", "Dependence" + std::to_string(i + 1), code, FindingSeverity::Warning,
                        "; the order ignores it (fine if it comes from another disc or is installed already)");
            }
        }
        for (size_t n = 0; n < file.setupDependencies.size(); ++n) {
            const auto& link = file.setupDependencies[n];
            const std::string key = "ProductCode" + std::to_string(n + 1);
            if (productCodes_.Find(link.productCode) == nullptr) {
                Missing(file, "SETUP_DEPENDENCIES", key, link.productCode, FindingSeverity::Warning, "; the link does nothing");
            }
            const auto required = clsString::Split(link.additionalRequirements, "~");
            for (size_t m = 0; m < required.size(); ++m) {
                if (required[m].empty() || productCodes_.Find(required[m]) != nullptr) continue;
                Missing(file, "SETUP_DEPENDENCIES", key + "AdditionalRequirement" + std::to_string(m + 1), required[m],
                        FindingSeverity::Warning, "; it cannot come along");
            }
        }
    }

    void PacketLinks(const DescribedFile& file) {
        for (size_t i = 0; i < file.members.size(); ++i) {
            const std::string& code = file.members[i];
            if (productCodes_.Find(code) == nullptr) {
                Missing(file, "GENERAL", "ProductCode" + std::to_string(i + 1), code, FindingSeverity::Error,
                        "; the setup type cannot install it");
            }
        }
        for (int bus = 0; bus < kBusSystemCount; ++bus) {
            for (const auto& action : file.busActions[static_cast<size_t>(bus)]) {
                if (productCodes_.Find(action.productCode) != nullptr) continue;
                Add(file, LineOf(file, "GENERAL", kBusKeys[bus]), FindingSeverity::Error,
                    std::string(kBusKeys[bus]) + " names " + action.productCode + ", which is no product on this disc");
            }
        }
        for (size_t i = 0; i < file.dependencies.size(); ++i) {
            const std::string& code = file.dependencies[i];
            if (packetCodes_.Find(code) == nullptr && productCodes_.Find(code) == nullptr) {
                Add(file, LineOf(file, "DEPENDENCIES", "Dependence" + std::to_string(i + 1)), FindingSeverity::Warning,
                    "Dependence" + std::to_string(i + 1) + "=" + code + " names no packet or product on this disc; the order ignores it");
            }
        }
    }

    void CirclesOf(const std::vector<const DescribedFile*>& list, const char* what) {
        std::vector<OrderEntry> entries;
        for (const DescribedFile* file : list) entries.push_back({file->code, file->dependencies});
        for (const auto& circle : clsDependencyCycles::Find(entries)) {
            std::string codes;
            for (const size_t index : circle) codes += (codes.empty() ? "" : ", ") + entries[index].code;
            const DescribedFile& first = *list[circle.front()];
            Add(first, LineOf(first, "DEPENDENCIES", "Dependence1"), FindingSeverity::Error,
                std::string(what) + " depending on each other in a circle: " + codes +
                    "; they are installed last, in the order found. Remove one Dependence of the circle");
        }
    }

    void Circles() {
        CirclesOf(products_, "products");
        CirclesOf(packets_, "packets");
    }

    std::vector<const DescribedFile*> products_;
    std::vector<const DescribedFile*> packets_;
    CodeIndex productCodes_;
    CodeIndex packetCodes_;
    std::vector<DiscFinding> findings_;
    std::unordered_map<std::string, std::optional<clsIniText>> reread_;   ///< by path
};

} // namespace

std::vector<DiscFinding> clsDiscCheck::CheckAcross(const std::vector<DescribedFile>& files) { return Across(files).Run(); }

std::vector<DiscFinding> clsDiscCheck::Run(const std::string& root) {
    const std::string folder = clsFileDisk::AddBackslash(root);
    clsSetupsIniCheck setups(folder);
    std::vector<DiscFinding> findings = setups.Run();
    const auto languages = clsLanguageFilesCheck::Run(folder, setups.Languages());
    findings.insert(findings.end(), languages.begin(), languages.end());
    bool stopped = false;
    clsFolderListing listing;
    const auto paths = clsSSFSearch::FindSSFFiles(setups.ProductFolder(), {}, stopped, &listing);
    const clsDescriptionCheck check(setups.Languages(), setups.ProductFolder(), &listing);
    std::vector<DescribedFile> files;
    files.reserve(paths.size());
    for (const auto& path : paths) files.push_back(check.Read(path, findings));
    const auto across = CheckAcross(files);
    findings.insert(findings.end(), across.begin(), across.end());
    return findings;
}

int clsDiscCheck::ExitStatus(const std::vector<DiscFinding>& findings) {
    int status = 0;
    for (const auto& finding : findings) status = std::max(status, finding.severity == FindingSeverity::Error ? 2 : 1);
    return status;
}

} // namespace tovel
