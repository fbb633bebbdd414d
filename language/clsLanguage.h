#pragma once
// The setup language at work: its locale, code page and character set, its numbered texts
// and the captions of the pages' controls, and how a caption reaches a control when its code
// page is not the system's (a Japanese text on a Western Windows).
//
// Where a text comes from, first found wins:
//   1. the disc's language text file for the current language (IniFilePath),
//   2. the built-in texts of the current language (clsBuiltinTexts),
//   3. the built-in English text.
// For a caption each source is asked for the page's own section (for a "frmMSI" page first
// its own name, then its classic page's name) before [Common]. docs/LANGUAGE.md has the
// layout for disc authors.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "language/clsLanguageTextFile.h"

namespace tovel {

/// How a caption is put onto a control.
enum class CaptionPath : uint8_t {
    ByteCopy,       ///< caption set to a buffer of "Z"s as long as the bytes, the bytes copied over it, then Refresh
    WideSetText,    ///< WM_SETTEXT with the wide text through the wide default window procedure
    NarrowSetText,  ///< WM_SETTEXT with the bytes through the narrow default window procedure
    Direct,         ///< the caption property set as it is
};

/// What a renderer does to show a caption.
struct CaptionPlan {
    CaptionPath path = CaptionPath::Direct;
    std::string text;     ///< the caption as UTF-8 (every path)
    std::string bytes;    ///< the caption in its code page (ByteCopy, NarrowSetText)
    std::string buffer;   ///< ByteCopy: "Z" repeated as many times as bytes has bytes
    bool operator==(const CaptionPlan&) const = default;
};

class clsLanguage {
public:
    /// The current locale (a Windows locale identifier); 2057 (English) until set.
    [[nodiscard]] uint32_t LanguageID() const { return lcid_; }
    /// Makes a locale current; with a text folder its language text file is read anew.
    void SetLanguageID(uint32_t lcid);
    /// The column of the built-in texts: 0 German .. 5 Japanese, English for any other language.
    [[nodiscard]] size_t LanguageIndex() const { return LanguageIndexOf(lcid_); }
    /// The character set of the current language (ChsFromLocale).
    [[nodiscard]] uint8_t CharSet() const { return ChsFromLocale(lcid_); }
    /// The code page the current language's texts belong to (932 Japanese, 1252 Western).
    [[nodiscard]] uint32_t CodePage() const;
    /// The machine's ANSI code page.
    [[nodiscard]] static uint32_t SystemCodePage();

    /// The disc's root folder: the language text file is then TextFileName of the current
    /// locale in it ("D:\Lang\German.txt"), read now and whenever the language changes.
    void SetTextFolder(const std::string& folder);
    /// The language text file in use; empty when there is none.
    [[nodiscard]] const std::string& IniFilePath() const { return iniFilePath_; }
    /// Uses exactly this language text file (until the language or the text folder changes);
    /// an empty path means none.
    void SetIniFilePath(const std::string& path);
    /// The file the program was given as its language resource library ("Setup.ex_"). Kept
    /// for the log only: the numbered texts are built in and come from the disc's text files.
    [[nodiscard]] const std::string& Library() const { return library_; }
    void SetLibrary(const std::string& path) { library_ = path; }

    /// A key of a section of the current language text file, as written; "" when there is
    /// no file or no such key. The catalogue reads Japanese product texts this way.
    [[nodiscard]] std::string TextFileValue(const std::string& section, const std::string& key) const {
        return file_.LoadIniProperty2(section, key);
    }

    /// The numbered text in the current language, "%n" turned into line breaks; "" (and a log
    /// line) for a number no source knows.
    [[nodiscard]] std::string LoadResString(int id) const;
    /// The same with "%1" .. "%9" replaced by values[0] .. values[8].
    [[nodiscard]] std::string LoadResString(int id, const std::vector<std::string>& values) const;
    /// The caption of a control of a page; index is the element of a control array (-1: none).
    /// "" when no source has one (the control keeps what the form gave it).
    [[nodiscard]] std::string Caption(std::string_view form, std::string_view control, int index = -1) const;

    /// How a text of the current language reaches a control of this kind on this machine.
    [[nodiscard]] CaptionPlan CaptionEx(std::string_view controlKind, const std::string& text, int displayMode) const;
    /// The same for a numbered text.
    [[nodiscard]] CaptionPlan CaptionEx(std::string_view controlKind, int id, int displayMode) const;
    /// The decision itself. A text whose code page is not the system's goes onto a
    /// "CommandButton", "Frame", "CheckBox", "OptionButton", "Label" or the form
    /// "frmMessage" by ByteCopy; in its own code page it is set Direct. Every other control
    /// takes WideSetText in display mode 2, NarrowSetText in display mode 1, else Direct.
    [[nodiscard]] static CaptionPlan DecideCaption(const std::string& text, uint32_t textCodePage, uint32_t systemCodePage,
                                                   std::string_view controlKind, int displayMode);
    /// The display mode for a platform: 2 (wide window procedures) on the NT family, 1 on
    /// Windows 95, 98 and Me, whose wide functions do nothing.
    [[nodiscard]] static int DisplayModeFor(uint32_t platformId) { return platformId == 2 ? 2 : 1; }

    /// The text as bytes of a code page; characters it lacks become "?". "" (and a log line)
    /// for a code page the machine cannot convert to.
    [[nodiscard]] static std::string WToA(const std::string& text, uint32_t codePage);
    /// The GDI character set of a locale: ANSI_CHARSET 0 for the Western languages,
    /// SHIFTJIS_CHARSET 128 for Japanese, EASTEUROPE_CHARSET 238, RUSSIAN_CHARSET 204, ...
    [[nodiscard]] static uint8_t ChsFromLocale(uint32_t lcid);
    /// The code page of a language text file (clsLanguageTextFile::DetectCodePage); 0 when
    /// the file cannot be read.
    [[nodiscard]] static uint32_t DetectCodePageFromFile(const std::string& path);

    /// 0 German, 1 English, 2 French, 3 Spanish, 4 Italian, 5 Japanese by the primary
    /// language of a locale; English for any other.
    [[nodiscard]] static size_t LanguageIndexOf(uint32_t lcid);
    /// The disc-relative name of a locale's language text file: "Lang\" and the language's
    /// name ("German" .. "Japanese") and ".txt".
    [[nodiscard]] static std::string TextFileName(uint32_t lcid);
    /// The classic page whose captions a page uses: "frmMSILicense" gives "frmLicense";
    /// any other name is its own.
    [[nodiscard]] static std::string_view ClassicFormName(std::string_view form);
    /// A text as written in the files made ready to show: "%n" a line break (CR LF), "%1" ..
    /// "%9" the values (left as they are where no value is given), "%%" a percent sign; any
    /// other "%" stays, so placeholders such as "%AppTitleShort%" survive for their expansion.
    [[nodiscard]] static std::string FormatText(std::string_view text, const std::vector<std::string>& values = {});

private:
    void OpenTextFile(const std::string& path);

    uint32_t lcid_ = 2057;
    std::string textFolder_;
    std::string iniFilePath_;
    std::string library_;
    clsLanguageTextFile file_;
};

} // namespace tovel
