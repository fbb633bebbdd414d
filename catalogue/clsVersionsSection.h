#pragma once
// What both layouts of the versions section read alike: numbered action families, the
// listed versions, the installed version from the registry, the actions added with their log
// lines, and steps that end alone when they fail.
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/VersionsRules.h"
#include "catalogue/clsSIFApplicationItem.h"
#include "settings/clsIniFile.h"

namespace tovel {

class clsVersionsSection {
public:
    using Entry = VersionsEntry;
    struct RegistryText {
        std::string text;
        std::string at;   ///< "HKEY_...\path\value"
    };

    /// The name support staff know the product by: its description, else its code.
    [[nodiscard]] static std::string ProductName(const clsSIFApplicationItem& item);
    /// prefix1, prefix2, ... of the current section up to the first empty value.
    [[nodiscard]] static std::vector<Entry> ReadFamily(clsIniFile& ini, const std::string& prefix);
    /// Version1, Version2, ... of the current section up to the first empty one, each with
    /// the action family that actionPrefix names for its number.
    [[nodiscard]] static std::vector<ListedVersion> ReadListed(clsIniFile& ini,
                                                               const std::function<std::string(int)>& actionPrefix);
    /// Runs a reader's read on the file from [VERSIONS], trapped, keeping the file's current
    /// section; an empty result when the file has no [VERSIONS].
    [[nodiscard]] static VersionsRules ReadRules(clsIniFile& ini, const char* module,
                                                 const std::function<void(VersionsRules&)>& read);
    /// The section's DefaultAction and FirstInstAction families.
    static void ReadDefaultAndFirstInst(clsIniFile& ini, VersionsSectionRules& section);
    /// A registry value that exists and is not blank (one leading and one trailing backslash
    /// of the path dropped); nothing for anything else.
    [[nodiscard]] static std::optional<RegistryText> ReadRegistryText(const std::string& fullPath, const std::string& name);
    /// Adds the family to the version actions, or to the first-install actions, each logged
    /// as "   Key=value".
    static void AddActions(clsSIFApplicationItem& item, const std::vector<Entry>& family);
    static void AddFirstInstActions(clsSIFApplicationItem& item, const std::vector<Entry>& family);
    static void LogEntry(const Entry& entry);
    /// "No versions section in <file>: ..." and the reason in the record.
    static void NoSection(clsSIFApplicationItem& item);
    /// Starts a product afresh: no installed version, no decision, no actions.
    static void Clear(clsSIFApplicationItem& item);

    /// Runs one reading step of a reader; an error ends that step only, with a log line
    /// naming the reader and the step.
    template <typename Step>
    static void Trapped(const char* module, const char* function, Step&& step) {
        try {
            step();
        } catch (const std::exception& e) {
            LogError(module, function, e.what());
        } catch (...) {
            LogError(module, function, "unknown error");
        }
    }
    static void LogError(const char* module, const char* function, const std::string& why);
};

} // namespace tovel
