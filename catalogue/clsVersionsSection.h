#pragma once
// What both layouts of the versions section read alike: numbered action families, the
// installed version from the registry, the actions added with their log lines, and reading
// steps that end alone when they fail.
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/clsSIFApplicationItem.h"
#include "settings/clsIniFile.h"

namespace tovel {

class clsVersionsSection {
public:
    struct Entry {
        std::string key;
        std::string value;
    };
    struct RegistryText {
        std::string text;
        std::string at;   ///< "HKEY_...\path\value"
    };

    /// The name support staff know the product by: its description, else its code.
    [[nodiscard]] static std::string ProductName(const clsSIFApplicationItem& item);
    /// prefix1, prefix2, ... of the current section up to the first empty value.
    [[nodiscard]] static std::vector<Entry> ReadFamily(clsIniFile& ini, const std::string& prefix);
    /// A registry value that exists and is not blank (one leading and one trailing backslash
    /// of the path dropped); nothing for anything else.
    [[nodiscard]] static std::optional<RegistryText> ReadRegistryText(const std::string& fullPath, const std::string& name);
    /// Adds the family to the version actions, or to the first-install actions, each logged
    /// as "   Key=value".
    static void AddActions(clsSIFApplicationItem& item, const std::vector<Entry>& family);
    static void AddFirstInstActions(clsSIFApplicationItem& item, const std::vector<Entry>& family);
    static void LogEntry(const Entry& entry);
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
