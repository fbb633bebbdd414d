#pragma once
// The program's own texts in its six languages: the numbered texts of message boxes and
// status lines, and the captions of the pages' controls. A disc's language text file may
// override each of them under the same section and key (docs/LANGUAGE.md); these are what
// the setup shows where the disc says nothing.
//
// Sections and keys are those of the language text files:
//   [Texts]     the numbered texts, key = the number ("104")
//   [Common]    captions every page shares (ContinueBtn, BackBtn, CancelBtn)
//   [frmXxx]    the captions of one page, key = control name, "Name(i)" for element i of a
//               control array; the "frmMSI" twin of a page uses the classic page's section
// Texts are written as in the files: "%n" is a line break, "%1" to "%9" values put in by
// the caller, "%%" a percent sign. Each text belongs to the code page of its language, but
// for the options of the setup-language page (LanguageOption(i)), which name each language
// in itself and so belong to the code page of language i.
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace tovel {

/// The numbers of the numbered texts. 1xx message box and wizard, 2xx start-up and checks,
/// 3xx pages, 4xx installation run.
namespace TextNo {
inline constexpr int kCancel = 103;
inline constexpr int kCancelQuestion = 104;
inline constexpr int kNo = 108;
inline constexpr int kOk = 109;
inline constexpr int kYes = 112;

inline constexpr int kRestartBeforeInstall = 201;
inline constexpr int kUnsupportedSystem = 202;
inline constexpr int kNoAdminRights = 203;
inline constexpr int kWrongDisc = 204;
inline constexpr int kIeOldAskContinue = 205;       ///< %1 the version needed
inline constexpr int kIeOldSetupEnds = 206;         ///< %1 the version needed
inline constexpr int kIeMissingContinue = 207;      ///< %1 the version needed
inline constexpr int kPackageMissing = 208;
inline constexpr int kPathMissing = 209;            ///< %1 the Path value

inline constexpr int kNotEnoughSpace = 301;         ///< %1 drive, %2 MB needed, %3 MB free
inline constexpr int kNoProductSelected = 302;
inline constexpr int kDriveNotAllowed = 303;        ///< %1 drive
inline constexpr int kInvalidPath = 304;            ///< %1 path
inline constexpr int kDoneTitleCancelled = 305;
inline constexpr int kDoneCancelled = 306;
inline constexpr int kDoneAborted = 307;
inline constexpr int kDoneSomeFailed = 308;         ///< %1 the log file
inline constexpr int kSearching = 309;              ///< %1 drive or server
inline constexpr int kFileNotOpened = 310;          ///< %1 file
inline constexpr int kComponentLockedBy = 320;      ///< %1 product, %2 the product that locked it
inline constexpr int kComponentLocked = 321;        ///< %1 product
inline constexpr int kTreeLegendFirst = 323;        ///< 323 to 326 the box states 1, 2, 4, 8; 327 a grey box
inline constexpr int kComponentNeeds = 328;         ///< %1 MB, %2 drive

inline constexpr int kCloseQuestion = 401;
inline constexpr int kInsertDisc = 402;             ///< followed by two line breaks and the disc name
inline constexpr int kSetupFileMissing = 403;       ///< preceded by the path and two line breaks
inline constexpr int kResumeInsertDisc = 404;       ///< %1 disc name
inline constexpr int kRestartResumes = 405;
inline constexpr int kRestartStartAgain = 406;
inline constexpr int kRemovingOldVersion = 407;
inline constexpr int kStatusWaiting = 408;
inline constexpr int kStatusInstalling = 409;
inline constexpr int kStatusInstalled = 410;
inline constexpr int kStatusSkipped = 411;
inline constexpr int kStatusFailed = 412;
inline constexpr int kCriticalFailed = 413;         ///< %1 product
} // namespace TextNo

/// One text in all six languages, in the order of the setup language index.
struct BuiltinText {
    std::string_view section;
    std::string_view key;
    std::array<std::string_view, 6> text;   ///< German, English, French, Spanish, Italian, Japanese
};

class clsBuiltinTexts {
public:
    static constexpr size_t kLanguageCount = 6;
    static constexpr size_t kEnglish = 1;
    static constexpr std::string_view kTextsSection = "Texts";
    static constexpr std::string_view kCommonSection = "Common";

    /// Every built-in text.
    [[nodiscard]] static std::span<const BuiltinText> All();
    /// The text of a section and key (compared without regard to case) in a language
    /// (0 German .. 5 Japanese); nullopt when there is none.
    [[nodiscard]] static std::optional<std::string_view> Find(std::string_view section, std::string_view key,
                                                              size_t language);
};

} // namespace tovel
