#pragma once
// The version resource of a file, as the file-version check and the version-display tool's
// log need it.
#include <string>

namespace tovel {

class clsVersionInfo {
public:
    /// Reads the resource of a file. False when the file has none (or is missing): then
    /// FileVersion is "0" and the other values are empty.
    bool GetFileInfo(const std::string& path);

    /// "FileVersion" of "\StringFileInfo\"; "0" for a file without a resource.
    [[nodiscard]] const std::string& FileVersion() const { return fileVersion_; }
    /// FileVersion without the build label Windows' own files add behind a blank
    /// ("5.1.2600.2180 (xpsp_sp2_rtm.040803-2158)" gives "5.1.2600.2180"); "0.0.0.0" for a
    /// file without a resource. This is the text versions are compared by.
    [[nodiscard]] std::string NumericVersion() const;
    /// "OriginalFilename".
    [[nodiscard]] const std::string& OriginalFileName() const { return originalFileName_; }
    /// "ProductName".
    [[nodiscard]] const std::string& ProductName() const { return productName_; }
    /// Language and code page of "\VarFileInfo\Translation" as eight hex digits.
    [[nodiscard]] const std::string& Translation() const { return translation_; }

private:
    std::string fileVersion_ = "0";
    std::string originalFileName_;
    std::string productName_;
    std::string translation_;
};

} // namespace tovel
