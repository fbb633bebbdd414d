#pragma once
// The answer file "Tovel_Auto.ini": record mode writes the person's answers to it when the
// component page is left, so the same installation can be repeated without dialogs. What the
// wizard knows (language, identification, drive, languages, bus, new or update) comes in as
// AutoIniAnswers, filled by the page, because this layer sits below the wizard's globals; a
// silent run reads the file back the same way: the catalogue here, AutoIniAnswers for the wizard.
#include <cstdint>
#include <string>

namespace tovel {

class clsIniFile;
class clsPlaceholder;
class clsSIFApplication;
class clsSIFApplicationItem;

/// The GENERAL answers of an answer file, in the order they are written.
struct AutoIniAnswers {
    std::string createdWith;       ///< the disc's title
    std::string setupVersion;      ///< the program's version: "major.minor.revision"
    int16_t setupLanguage = 1;     ///< setup language index 0..5
    std::string idName;
    std::string idCompany;
    std::string generalDrive;      ///< "C:"
    std::string installLanguage;   ///< the chosen product languages' letters: "AB"
    std::string bus;               ///< the chosen bus system's number
    bool newInstallation = true;   ///< false for an update
};

class clsSilentMode {
public:
    static constexpr const char* kFileName = "Tovel_Auto.ini";
    /// Shown after recording; names "Tovel_AutoFile.ini" although the file written is
    /// "Tovel_Auto.ini", as deployment scripts of existing discs expect.
    static constexpr const char* kRecordedMessage =
        "The recording is finished. The file Tovel_AutoFile.ini was created in the windowsfolder.";

    /// Recording: the folder the file goes to (with a trailing backslash). Reading: the whole
    /// path of the file. "" means the default places.
    [[nodiscard]] const std::string& TargetPath() const { return targetPath_; }
    void SetTargetPath(const std::string& path) { targetPath_ = path; }
    /// Where CreateAutoIni writes: TargetPath followed by "Tovel_Auto.ini", else the file in
    /// the Windows folder.
    [[nodiscard]] std::string RecordPath() const;

    /// Deletes an earlier answer file and writes GENERAL, DIALOGS and one section per
    /// product of the catalogue (DestinationDrive, Selected, DestinationPath). Returns false
    /// and logs when the file cannot be written.
    bool CreateAutoIni(const AutoIniAnswers& answers, const clsSIFApplication& catalogue);
    /// The same as CreateAutoIni.
    bool CreateAutoIni2(const AutoIniAnswers& answers, const clsSIFApplication& catalogue);
    /// Tells the person that the recording is finished (a message box with OK).
    static void ShowRecordedMessage();

    /// The file ReadAutoIni reads: TargetPath when set, else "Tovel_Auto.ini" in the program's
    /// folder when it is there, else the one in the Windows folder.
    [[nodiscard]] std::string ReadPath() const;
    /// Reads the answer file: GENERAL into `answers` and every product's user, company and
    /// drive, then each product's section (ReadApplications). A key that is missing or empty
    /// keeps the value `answers` (or the product) came with; a value that cannot be meant
    /// (a language index beyond 5, a bus beyond 4, "Maybe") keeps it too, with a log line.
    /// False, with nothing changed, when the file is not there.
    bool ReadAutoIni(clsSIFApplication& catalogue, AutoIniAnswers& answers);
    /// Logs the path, makes it TargetPath and reads the file as ReadAutoIni does.
    bool ReadAutoIni2(const std::string& path, clsSIFApplication& catalogue, AutoIniAnswers& answers);
    /// CreatedWith of the file read: the title of the disc it was recorded on.
    [[nodiscard]] const std::string& CDTitle() const { return cdTitle_; }
    /// TovelSetupVersion of the file read: the version of the setup that recorded it.
    [[nodiscard]] const std::string& TovelSetupVersion() const { return setupVersion_; }

    /// Reads the per-product sections of an answer file into the catalogue: a non-empty
    /// DestinationDrive sets drive and path (placeholders expanded when placeholders are
    /// given), then Selected: False clears the mark; True marks the product by the code of its
    /// box (1, 2, 4: installed unless DoNotInstall; 3, 5: not; any other, the cleared and
    /// locked box, leaves it), and a value that is no Boolean reads as False with a log line.
    /// A product without a section
    /// (a missing file has none) keeps its record as it is.
    static void ReadApplications(clsIniFile& answers, clsSIFApplication& catalogue, const clsPlaceholder* placeholders);
    /// True when one of the product's version actions is exactly "$DoNotInstall$".
    [[nodiscard]] static bool DoNotInstall(const clsSIFApplicationItem& item);

private:
    void WriteGeneral(clsIniFile& ini, const AutoIniAnswers& answers) const;
    static void WriteApplication(clsIniFile& ini, const clsSIFApplicationItem& item);
    void ReadGeneral(clsIniFile& ini, AutoIniAnswers& answers);
    static void ReadApplication(clsIniFile& ini, clsSIFApplicationItem& item, const clsPlaceholder* placeholders);
    static void MarkSelected(clsSIFApplicationItem& item, bool selectedInFile);

    std::string targetPath_;
    std::string cdTitle_;
    std::string setupVersion_;
};

} // namespace tovel
