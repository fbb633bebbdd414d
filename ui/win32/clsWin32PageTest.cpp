#include "ui/win32/clsWin32PageTest.h"

#include "configtool/clsPageTester.h"
#include "platform/clsPlatform.h"
#include "platform/clsWindowsPath.h"
#include "startup/Globals.h"
#include "startup/Main.h"
#include "startup/mdlLog.h"
#include "ui/win32/clsWin32LayoutCheck.h"
#include "ui/win32/clsWin32Screenshot.h"

namespace tovel {

namespace {

constexpr int kLanguages = 6;
// Long enough for Windows to paint the page and the background before the picture is taken.
constexpr DWORD kPaintMs = 300;

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
    renderer_.ShowBackground();
    renderer_.SetOnShown([this](clsForm& form, HWND window) { Look(form, window); });
    clsPageTester tester;
    const bool known = tester.Open(page_, language_ >= 0 ? language_ : DefaultLanguage);
    renderer_.SetOnShown({});
    if (!known) LogIfEnabled("Page test: " + page_ + " is no page of either form set.");
    if (known && !looked_) LogIfEnabled("Page test: " + page_ + " was not shown.");
    if (!looked_ || !written_) return 2;
    return faults_.empty() ? 0 : 1;
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
