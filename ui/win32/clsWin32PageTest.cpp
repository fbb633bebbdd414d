#include "ui/win32/clsWin32PageTest.h"

#include "catalogue/clsSSFSearch.h"
#include "common/mdlMessage.h"
#include "language/clsBuiltinTexts.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "ui/win32/clsWin32LayoutCheck.h"
#include "ui/win32/clsWin32Screenshot.h"
#include "wizard/mdlWizard.h"
#include "wizard/pages/clsControlPage.h"

namespace tovel {

namespace {

constexpr int kLanguages = 6;
// Long enough for Windows to paint the page and the background before the picture is taken.
constexpr DWORD kPaintMs = 300;

// The pages that show what the search found.
bool NeedsCatalogue(const std::string& page) {
    for (const char* listing : {"frmDestination", "frmInstallation", "frmCustomSetup", "frmSetupType", "frmLanguages"}) {
        if (clsWindowsPath::EqualNoCase(page, listing)) return true;
    }
    return false;
}

} // namespace

clsWin32PageTest::clsWin32PageTest(clsWin32Renderer& renderer, const std::string& request, std::string folder)
    : renderer_(renderer), page_(request.substr(0, request.find(':'))), folder_(clsWindowsPath::AddBackslash(folder.empty() ? WorkFolder : std::move(folder))) {
    const size_t colon = request.find(':');
    if (colon == std::string::npos) return;
    const std::string index = request.substr(colon + 1);
    if (index.size() == 1 && index[0] >= '0' && index[0] < '0' + kLanguages) language_ = index[0] - '0';
}

std::string clsWin32PageTest::FileStem() const { return folder_ + page_ + "-" + LanguageIndexToCode(DefaultLanguage, 1); }

int clsWin32PageTest::Run() {
    if (language_ >= 0 && language_ != DefaultLanguage) {
        UseSetupLanguage(static_cast<int16_t>(language_));
        if (gSetupsIni && !gSetupsIni->AppTitle().empty()) ApplicationTitle = gSetupsIni->AppTitle();
    }
    renderer_.ShowBackground();
    renderer_.SetOnShown([this](clsForm& form, HWND window) { Look(form, window); });
    Open();
    renderer_.SetOnShown({});
    if (!looked_) LogIfEnabled("Page test: " + page_ + " was not shown.");
    if (!looked_ || !written_) return 2;
    return faults_.empty() ? 0 : 1;
}

void clsWin32PageTest::Open() {
    if (clsWindowsPath::EqualNoCase(page_, "frmMessage")) {
        const std::string question = gLanguage ? gLanguage->LoadResString(TextNo::kCancelQuestion) : "Cancel?";
        (void)MsgBox(question, 36, ApplicationTitle);
        return;
    }
    if (NeedsCatalogue(page_)) (void)clsSSFSearch().Run();
    std::unique_ptr<clsPageController> controller = MakePageController(page_);
    auto* page = dynamic_cast<clsControlPage*>(controller.get());
    if (page == nullptr) return;
    page->SetTestFlag(true);
    page->Initialize();
}

void clsWin32PageTest::Look(clsForm& form, HWND window) {
    if (looked_) return;
    looked_ = true;
    for (int round = 0; round < 3; ++round) {
        renderer_.DoEvents();
        Sleep(kPaintMs / 3);
    }
    faults_ = clsWin32LayoutCheck::Check(form, window);
    std::string report;
    for (const auto& fault : faults_) report += "FAULT " + fault + "\r\n";
    for (const auto& line : clsWin32LayoutCheck::Describe(window)) report += line + "\r\n";
    auto& files = Platform().Files();
    written_ = files.WriteFileAtomic(FileStem() + ".txt", report) && files.WriteFileAtomic(FileStem() + ".png", clsWin32Screenshot::CapturePng());
    form.SetShown(false);
}

} // namespace tovel
