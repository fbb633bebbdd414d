#pragma once
// Expands the placeholders that Setups.ini, SIF and SSF files may use in paths and texts,
// so a disc can name folders of the target machine, of the disc and of the current product.
//
//   text        = { other | placeholder }
//   placeholder = "%" name "%" | "[" name "]"      names compared exactly, case included
//
// The leftmost "%" or "[" opens a placeholder, the next "%" or "]" behind it closes it. A
// known one is replaced and the scan goes on behind the value (a value is never expanded
// again); an unknown one stays and the scan goes on behind it. An opening character with no
// closing one leaves the rest of the text as it stands.
//
// Folder values are joined: a value ending in "\" drops one "\" at the start of the text
// behind it, and a value without one gets one before a name that follows directly
// ("%ProgramPath%Tovel"). Nothing is put in before the end of the text, a blank, a quote,
// ";" or ",", so a quoted path stays a quoted path. The texts (%AppTitleShort%,
// %IEMinimumCondition%, %CD_%) and an empty value go in as they stand.
//
// Where the values come from: the registry (program files and the maker's shared folder),
// the settings (clsSetupsIni), the run's folders (SetFolders; a folder left empty is asked
// of the machine, so expansion works before start-up has fixed them), the current
// application's SSF folder and the disc number (set by the catalogue as it goes).
#include <string>
#include <string_view>
#include <vector>
#include <utility>

namespace tovel {

class clsSetupsIni;

/// The folders start-up fixes; each with a trailing backslash, or empty for the machine's own.
struct PlaceholderFolders {
    std::string systemFolder;   ///< SystemDir
    std::string windowsFolder;  ///< WindowsDir
    std::string workFolder;     ///< WorkFolder: the root of the Windows drive
    std::string programFolder;  ///< HomePath: the program's own folder
};

class clsPlaceholder {
public:
    /// The text with every known placeholder replaced. A value that cannot be found (a
    /// missing registry value) counts as empty.
    [[nodiscard]] std::string CheckForPlaceholder(const std::string& text) const;

    /// Every placeholder known, as it must be written ("%ProgramPath%", "[SystemFolder]").
    [[nodiscard]] static std::vector<std::string_view> KnownSpellings();

    void SetFolders(PlaceholderFolders folders) { folders_ = std::move(folders); }
    [[nodiscard]] const PlaceholderFolders& Folders() const { return folders_; }
    /// The settings behind %AppTitleShort%, %IEMinimumCondition%, %CD_% and the source
    /// folder; without them those are empty and the source folder is the program's folder.
    /// The object must outlive its use here.
    void SetSettings(const clsSetupsIni* settings) { settings_ = settings; }
    /// The folder of the current application's SSF file (%AppSSFSourcePath%).
    void SetAppSSFSourcePath(std::string folder) { appSSFSourcePath_ = std::move(folder); }
    [[nodiscard]] const std::string& AppSSFSourcePath() const { return appSSFSourcePath_; }
    /// The number of the current disc of a set (%CD_% reads the setting "CD_<number>"); 1 at first.
    void SetDiscNumber(int number) { discNumber_ = number; }
    [[nodiscard]] int DiscNumber() const { return discNumber_; }

    /// Where a placeholder's value comes from (clsPlaceholder.cpp).
    enum class Source;

private:
    struct Value {
        std::string text;
        bool join = false;
    };
    [[nodiscard]] Value Lookup(Source source) const;
    [[nodiscard]] std::string ProgramFolder() const;

    PlaceholderFolders folders_;
    const clsSetupsIni* settings_ = nullptr;
    std::string appSSFSourcePath_;
    int discNumber_ = 1;
};

} // namespace tovel
